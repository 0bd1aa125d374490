// Calls of functions of registers from memory, one Caller a letter of the vector function ABI.
#pragma once

#include "functions.hpp"

struct Caller {
  char letter;
  int lanes_64f, lanes_32f;
  /// Of the lanes of each source into as many of each destination.
  void (*call)(void* function, const harness::Function& of, const harness::Arguments& arguments);
  /// The form for loops with conditions, for functions with one result.
  void (*call_masked)(void* function, const harness::Function& of, const harness::Arguments& arguments, unsigned mask);
  /// The form of two results with as many pointers as lanes: to the elements of the destinations in reverse order.
  void (*call_scattered)(void* function, const harness::Function& of, const harness::Arguments& arguments);

  int lanes(const harness::Function& of) const { return of.is_float() ? lanes_32f : lanes_64f; }
};

extern const Caller caller_b, caller_c, caller_d, caller_e;
