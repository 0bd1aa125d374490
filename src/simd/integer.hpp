// 64-bit unsigned lanes: what neither operators nor all instruction sets say.
#pragma once

#include "simd/mask.hpp"

namespace kelvm::inline KELVM_BUILD {

/// The double nearest to each lane.
template <class B> inline Floating<B> to_double(B b) {
  static_assert(sizeof(Lane<B>) == 8);
#if KELVM_AVX512
  if constexpr (sizeof b == 64) return (Floating<B>)_mm512_maskz_cvtepu64_pd(0xFF, (__m512i)b);
#endif
  // Both halves as the low bits of doubles: of 2^84 and of 2^52.
  const auto upper = bit_cast<Floating<B>>((b >> 32) | 0x4530000000000000u);
  const auto lower = bit_cast<Floating<B>>((b & 0xFFFFFFFFu) | 0x4330000000000000u);
  return (upper - (0x1p84 + 0x1p52)) + lower;
}

/// How many bits are 0 above the first 1 of each lane, none of which is 0.
template <class B> inline B leading_zeros(B b) {
#if KELVM_AVX512
  if constexpr (sizeof b == 64) return (B)_mm512_maskz_lzcnt_epi64(0xFF, (__m512i)b);
#endif
  const auto first_bits = to_double(b & ~(b >> 1)); // which are not rounded up to a power of two
  return (1023 + 63) - (bit_cast<B>(first_bits) >> 52);
}

} // namespace kelvm::inline KELVM_BUILD
