// Scalar functions: one lane of the kernels, for what a compiler does not vectorise and for the ends of loops. On a
// processor with AVX2 their results are those of the functions of 32 and 64 bytes, elsewhere those of 16 bytes; the
// dynamic loader decides.
#include "registers/accuracy.hpp"

#define KERNEL(family, type, build) KELVM_KERNEL(family, type, one_, build)

namespace {
using Lane_64f = double;
using Lane_32f = float;

/// What the build for AVX2 needs. Called before this library is relocated: nothing but the compiler's own query.
inline bool has_avx2_build() {
  __builtin_cpu_init();
  return __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma") && __builtin_cpu_supports("bmi2");
}
} // namespace

#define DEFINE(result, type, name, family, parameters)                                                                 \
  extern "C" result KERNEL(family, type, sse41) parameters;                                                            \
  extern "C" result KERNEL(family, type, avx2) parameters;                                                             \
  extern "C" auto kelvm_resolve_##name()->result(*) parameters {                                                       \
    return has_avx2_build() ? &KERNEL(family, type, avx2) : &KERNEL(family, type, sse41);                              \
  }                                                                                                                    \
  KELVM_EXPORTED result kelvm_##name parameters __attribute__((ifunc("kelvm_resolve_" #name)));
#define DEFINE_UNARY(type, name, family) DEFINE(Lane_##type, type, name, family, (Lane_##type))
#define DEFINE_BINARY(type, name, family) DEFINE(Lane_##type, type, name, family, (Lane_##type, Lane_##type))
#define DEFINE_TWO_OUTPUTS(type, name, family)                                                                         \
  DEFINE(void, type, name, family, (Lane_##type, Lane_##type*, Lane_##type*))

#define KELVM_REGISTERS(name, family, shape) DEFINE_##shape(64f, name, family) DEFINE_##shape(32f, name##f, family)
#define KELVM_REGISTERS_LIBM KELVM_REGISTERS
#include "registers/functions.def"
