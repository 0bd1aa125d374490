/* Every built function is declared, with the type of its row in the functions list: compiled as C and as C++. */
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

/* A struct with one pointer a function. */
struct Functions {
  const VersionRecord* (*version)(void);
#define KELVM_MEMBER(name, family, type, suffix, shape, order) shape##_##type* name;
#include "members.def"
};

static struct Functions functions(void) {
  struct Functions all = {
      kelvmGetLibVersion,
#define KELVM_MEMBER(name, family, type, suffix, shape, order) name,
#include "members.def"
  };
  return all;
}
