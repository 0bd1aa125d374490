// The functions of the library by name, each callable on arrays whose type is known at run time only.
#pragma once

#include <kelvm/kelvm.h>

#include <span>
#include <string_view>

struct Arguments {
  const void* sources[2];
  const void* exponent; // one source element, for functions that take it
  void* destinations[2];
  int length;
};

struct Function {
  const char* name;
  bool is_double;            // the numbers are doubles, else floats
  int sources, source_parts; // arrays, and numbers an element in each: two where it is complex
  int destinations, destination_parts;
  bool takes_exponent;
  kelStatus (*call)(const Arguments&);

  int results() const { return destinations * destination_parts; } // numbers an element
};

std::span<const Function> functions();
/// The function of that name, or null.
const Function* find_function(std::string_view name);
