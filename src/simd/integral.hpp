// What the rounding functions need around round(): a result's zeros and infinities, and fractional parts.
#pragma once

#include "simd/arithmetic.hpp"

namespace kelvm::inline KELVM_BUILD {

/// v, its zeros made positive. An infinity raises invalid.
template <class V> inline V with_positive_zeros(V v) {
#if KELVM_AVX512
  // By class of number: a zero becomes +0, infinities raise invalid, and nothing else is changed.
  constexpr int zeros_positive = 0x800, infinities_invalid = 0xA0;
  if constexpr (sizeof(Lane<V>) == 8)
    return (V)_mm512_fixupimm_pd((__m512d)v, (__m512d)v, _mm512_set1_epi64(zeros_positive), infinities_invalid);
  else
    return (V)_mm512_fixupimm_ps((__m512)v, (__m512)v, _mm512_set1_epi32(zeros_positive), infinities_invalid);
#else
  const V unused = v * V{};
  asm volatile("" : : "x"(unused)); // for its flag alone
  return v + V{};
#endif
}

/// Whether there is fraction().
inline constexpr bool has_fraction = vector_bytes == 64;
/// The fractional part of v, less its integral part; +0 for an infinity.
template <class V> inline V fraction(V v, V integral) {
  static_assert(has_fraction && sizeof v == vector_bytes);
  const V difference = v - integral;
#if KELVM_AVX512
  constexpr int infinities_zero = 0x880000;
  if constexpr (sizeof(Lane<V>) == 8)
    return (V)_mm512_fixupimm_pd((__m512d)difference, (__m512d)v, _mm512_set1_epi64(infinities_zero), 0);
  else
    return (V)_mm512_fixupimm_ps((__m512)difference, (__m512)v, _mm512_set1_epi32(infinities_zero), 0);
#else
  return difference;
#endif
}

} // namespace kelvm::inline KELVM_BUILD
