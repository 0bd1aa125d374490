#include "declarations.h"

#include <cstddef>
#include <cstdio>

extern "C" int compare_with_c(const void* pointers, std::size_t size);

int main() {
  const Functions here = functions();
  if (compare_with_c(&here, sizeof here)) return 0;
  std::puts("C and C++ do not find the same functions");
  return 1;
}
