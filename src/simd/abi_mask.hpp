// Masks as the vector function ABI passes them to functions for loops with conditions: with AVX-512 an integer, lane 0
// lowest; otherwise a vector of the arguments' type, all bits of a lane set or none.
#pragma once

#include "simd/mask.hpp"

namespace kelvm::inline KELVM_BUILD {

/// x in the lanes of the mask, `elsewhere` in the others.
#if KELVM_AVX512
template <class V> using AbiMask = unsigned;
template <class V> inline V in_lanes_of(unsigned mask, V x, V elsewhere) {
  if constexpr (sizeof(Lane<V>) == 8)
    return (V)_mm512_mask_mov_pd((__m512d)elsewhere, __mmask8(mask), (__m512d)x);
  else
    return (V)_mm512_mask_mov_ps((__m512)elsewhere, __mmask16(mask), (__m512)x);
}
#else
template <class V> using AbiMask = V;
template <class V> inline V in_lanes_of(V mask, V x, V elsewhere) { return select(int_bits(mask), x, elsewhere); }
#endif

} // namespace kelvm::inline KELVM_BUILD
