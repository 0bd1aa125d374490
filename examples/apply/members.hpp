// The members of the library by name, each callable on arrays whose type is known at run time only.
#pragma once

#include <kelvm/kelvm.h>

#include <span>
#include <string_view>

struct Arguments {
  const void* sources[2];
  const void* exponent; // one source element, for members that take it
  void* destinations[2];
  int length;
};

struct Member {
  const char* name;
  bool is_double;            // the numbers are doubles, else floats
  int sources, source_parts; // arrays, and numbers an element in each: two where it is complex
  int destinations, destination_parts;
  bool takes_exponent;
  kelStatus (*call)(const Arguments&);
};

std::span<const Member> members();
/// The member of that name, or null.
const Member* find_member(std::string_view name);
