// Masks as the vector function ABI passes them to functions for loops with conditions: with AVX-512 an integer, lane 0
// lowest; otherwise a vector of the arguments' type, all bits of a lane set or none.
#pragma once

#include "simd/mask.hpp"

namespace kelvm::inline KELVM_BUILD {

#if KELVM_AVX512
template <class V> using AbiMask = unsigned;
template <class V> inline SignMask<V> lanes_of_mask(unsigned mask) {
  if constexpr (sizeof(Lane<V>) == 8)
    return (SignMask<V>)_mm512_movm_epi64(__mmask8(mask));
  else
    return (SignMask<V>)_mm512_movm_epi32(__mmask16(mask));
}
#else
template <class V> using AbiMask = V;
template <class V> inline SignMask<V> lanes_of_mask(V mask) { return int_bits(mask); }
#endif

} // namespace kelvm::inline KELVM_BUILD
