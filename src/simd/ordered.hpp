// Sum and product whose first operand is fixed. IEEE leaves open which NaN comes out of two; the processor takes the
// first operand's, and a compiler is free to exchange the operands. Where that choice shows in a result (the plain sum
// and product of the caller's two arrays) it must be the same in every loop and every build.
#pragma once

#include "simd/vec.hpp"

namespace kelvm::inline KELVM_BUILD {

#if KELVM_SSE41
#  define KELVM_ORDERED(op, suffix)                                                                                    \
    asm(op suffix " %1, %0" : "+x"(x) : "x"(y));                                                                       \
    return x
#else
#  ifdef __clang__ // stores a register to take it from memory, given the choice
#    define KELVM_REGISTER_OR_MEMORY "v"
#  else
#    define KELVM_REGISTER_OR_MEMORY "vm"
#  endif
#  define KELVM_ORDERED(op, suffix)                                                                                    \
    V result;                                                                                                          \
    asm("v" op suffix " %2, %1, %0" : "=v"(result) : "v"(x), KELVM_REGISTER_OR_MEMORY(y));                             \
    return result
#endif
#define KELVM_ORDERED_FOR_LANES(op)                                                                                    \
  if constexpr (lanes<V> == 1) {                                                                                       \
    if constexpr (sizeof(V) == 8) {                                                                                    \
      KELVM_ORDERED(op, "sd");                                                                                         \
    } else {                                                                                                           \
      KELVM_ORDERED(op, "ss");                                                                                         \
    }                                                                                                                  \
  } else if constexpr (sizeof(Lane<V>) == 8) {                                                                         \
    KELVM_ORDERED(op, "pd");                                                                                           \
  } else {                                                                                                             \
    KELVM_ORDERED(op, "ps");                                                                                           \
  }

template <class V> inline V ordered_sum(V x, V y) { KELVM_ORDERED_FOR_LANES("add") }
template <class V> inline V ordered_product(V x, V y) { KELVM_ORDERED_FOR_LANES("mul") }

#undef KELVM_ORDERED_FOR_LANES
#undef KELVM_ORDERED
#undef KELVM_REGISTER_OR_MEMORY

} // namespace kelvm::inline KELVM_BUILD
