/* Every function is declared to C, with the type of its row in the list: that this compiles and links is the test, and
   there is nothing to run. What C++ finds, tests/cpp sees. */
#include "kelvm/kelvm.h"

#define TYPES(type, T)                                                                                                 \
  typedef kelStatus Unary_##type(const T*, T*, int);                                                                   \
  typedef kelStatus Binary_##type(const T*, const T*, T*, int);                                                        \
  typedef kelStatus ScalarPower_##type(const T*, T, T*, int);                                                          \
  typedef kelStatus TwoOutputs_##type(const T*, T*, T*, int);
#define COMPLEX_TYPES(type, T, Part)                                                                                   \
  TYPES(type, T)                                                                                                       \
  typedef kelStatus RealToComplex_##type(const Part*, T*, int);                                                        \
  typedef kelStatus ComplexToReal_##type(const T*, Part*, int);
TYPES(32f, float)
TYPES(64f, double)
COMPLEX_TYPES(32fc, Complex32f, float)
COMPLEX_TYPES(64fc, Complex64f, double)

#define KELVM_MEMBER(name, family, type, suffix, shape, order) shape##_##type* const pointer_to_##name = name;
#include "members.def"
const VersionRecord* (*const pointer_to_version)(void) = kelvmGetLibVersion;

int main(void) { return 0; }
