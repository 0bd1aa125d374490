// The names of the vector function ABI, for one instruction set. For a loop over exp(x[i]) a compiler calls, say,
// _ZGVdN4v_exp; with a mask, _ZGVdM4v_exp, where the loop has a condition. Every function also goes by kelvm's own
// name, _ZGVdN4v_kelvm_exp.
#include "simd/vector_abi.hpp"
#include "registers/accuracy.hpp"

#include <cstring>

#define KERNEL(family, type) KELVM_KERNEL(family, type, , KELVM_ABI_KERNELS)
#define MASKED_KERNEL(family, type) KELVM_KERNEL(family, type, masked_, KELVM_ABI_KERNELS)
/// kind: N, or M with a mask; arguments: v for each vector, l8 for a pointer that goes on by 8 bytes a lane.
#define NAME(type, kind, arguments, name)                                                                              \
  KELVM_JOINED(_ZGV, KELVM_ABI_LETTER, KELVM_JOINED(kind, KELVM_ABI_LANES_##type, arguments, _), name)

// The kernels, then what calls them.

#define DECLARE_UNARY(type, family)                                                                                    \
  extern "C" KernelVector_##type KERNEL(family, type)(KernelVector_##type);                                            \
  extern "C" KernelVector_##type MASKED_KERNEL(family, type)(KernelVector_##type, KernelMask_##type);
#define DECLARE_BINARY(type, family)                                                                                   \
  extern "C" KernelVector_##type KERNEL(family, type)(KernelVector_##type, KernelVector_##type);                       \
  extern "C" KernelVector_##type MASKED_KERNEL(family, type)(KernelVector_##type, KernelVector_##type,                 \
                                                             KernelMask_##type);
#define DECLARE_TWO_OUTPUTS(type, family)                                                                              \
  extern "C" void KERNEL(family, type)(KernelVector_##type, Lane_##type*, Lane_##type*);

#define KELVM_REGISTERS(name, family, shape) DECLARE_##shape(64f, family) DECLARE_##shape(32f, family)
#define KELVM_REGISTERS_LIBM KELVM_REGISTERS
#include "registers/functions.def"

#define DEFINE_UNARY(type, name, family)                                                                               \
  KELVM_EXPORTED Vector_##type NAME(type, N, v, name)(Vector_##type x) { return call(KERNEL(family, type), x); }       \
  KELVM_EXPORTED Vector_##type NAME(type, M, v, name)(Vector_##type x, Mask_##type mask) {                             \
    return call(MASKED_KERNEL(family, type), x, mask);                                                                 \
  }
#define DEFINE_BINARY(type, name, family)                                                                              \
  KELVM_EXPORTED Vector_##type NAME(type, N, vv, name)(Vector_##type x, Vector_##type y) {                             \
    return call(KERNEL(family, type), x, y);                                                                           \
  }                                                                                                                    \
  KELVM_EXPORTED Vector_##type NAME(type, M, vv, name)(Vector_##type x, Vector_##type y, Mask_##type mask) {           \
    return call(MASKED_KERNEL(family, type), x, y, mask);                                                              \
  }

// Two results: behind two pointers that go on lane by lane, or behind as many pointers as lanes, in vectors of
// integers.

template <class V, class T, class Kernel, class... Pointers>
inline void scatter(Kernel kernel, V x, T*, Pointers... pointers) {
  constexpr int lanes = sizeof(V) / sizeof(T);
  const Integers vectors[] = {pointers...};
  T* to[2 * lanes];
  static_assert(sizeof vectors == sizeof to);
  std::memcpy(to, vectors, sizeof to);
  T results[2 * lanes];
  call_two(kernel, x, results, results + lanes);
  for (int i = 0; i < 2 * lanes; ++i) *to[i] = results[i];
}

#define POINTERS_1(p) Integers p##0
#define POINTERS_2(p) POINTERS_1(p), Integers p##1
#define POINTERS_4(p) POINTERS_2(p), Integers p##2, Integers p##3
#define NAMES_1(p) p##0
#define NAMES_2(p) NAMES_1(p), p##1
#define NAMES_4(p) NAMES_2(p), p##2, p##3
#define REPEATED(what, type, p) KELVM_JOINED(what, _, KELVM_ABI_POINTERS_##type, )(p)

#define DEFINE_TWO_OUTPUTS(type, name, family)                                                                         \
  KELVM_EXPORTED void NAME(type, N, LINEAR_##type, name)(Vector_##type x, Lane_##type * first, Lane_##type * second) { \
    call_two(KERNEL(family, type), x, first, second);                                                                  \
  }                                                                                                                    \
  KELVM_EXPORTED void NAME(type, N, vvv, name)(Vector_##type x, REPEATED(POINTERS, type, first),                       \
                                               REPEATED(POINTERS, type, second)) {                                     \
    scatter(KERNEL(family, type), x, static_cast<Lane_##type*>(nullptr), REPEATED(NAMES, type, first),                 \
            REPEATED(NAMES, type, second));                                                                            \
  }
#define LINEAR_64f vl8l8
#define LINEAR_32f vl4l4

#define KELVM_REGISTERS(name, family, shape)                                                                           \
  DEFINE_##shape(64f, kelvm_##name, family) DEFINE_##shape(32f, kelvm_##name##f, family)
#define KELVM_REGISTERS_LIBM(name, family, shape)                                                                      \
  KELVM_REGISTERS(name, family, shape) DEFINE_##shape(64f, name, family) DEFINE_##shape(32f, name##f, family)
#include "registers/functions.def"
