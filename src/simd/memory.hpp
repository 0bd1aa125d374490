// Between arrays and vectors.
#pragma once

#include "simd/types.hpp"

#include <cstring>

namespace kelvm::inline KELVM_BUILD {

template <class V> inline V load(const Lane<V>* from) {
  V v;
  std::memcpy(&v, from, sizeof v);
  return v;
}
template <class V> inline void store(Lane<V>* to, V v) { std::memcpy(to, &v, sizeof v); }

template <class V> inline V splat(Lane<V> x) {
#if KELVM_SSE41 && KELVM_IN_REGISTERS && !defined(__clang__)
  // A constant that is read once, whole: g++ reads one float and spreads it.
  if constexpr (std::is_same_v<V, Vec<float, 4>>)
    if (__builtin_constant_p(x)) {
      Int<V> whole = splat<Int<V>>(__builtin_bit_cast(std::int32_t, x));
      asm("" : "+x"(whole));
      return bit_cast<V>(whole);
    }
#endif
  return [x]<int... I>(std::integer_sequence<int, I...>) { return V{((void)I, x)...}; }
  (std::make_integer_sequence<int, lanes<V>>{});
}

/// The two values at `from`, over and over.
template <class V> inline V splat_pair(const Lane<V>* from) {
  static_assert(std::is_same_v<V, Native<Lane<V>>>);
  if constexpr (sizeof(Lane<V>) == 4) {
    double both;
    std::memcpy(&both, from, sizeof both);
    return (V)splat<Vec<double, lanes<V> / 2>>(both);
  } else {
    const __m128d both = _mm_loadu_pd(from);
#if KELVM_AVX512
    return (V)_mm512_maskz_broadcast_f64x2(__mmask8(-1), both);
#elif KELVM_AVX2
    return (V)_mm256_set_m128d(both, both);
#else
    return (V)both;
#endif
  }
}

namespace detail {
/// Lanes 0 .. n-1 set, as a vector mask (builds without mask registers).
template <class V> inline Int<V> first_lanes(int n) {
  return [n]<int... I>(std::integer_sequence<int, I...>) { return splat<Int<V>>(n) > Int<V>{I...}; }
  (std::make_integer_sequence<int, lanes<V>>{});
}
} // namespace detail

/// The first n lanes from memory, the others from fill; nothing beyond the n is touched. 0 <= n < lanes.
template <class V> inline V load_first(const Lane<V>* from, int n, V fill) {
  static_assert(std::is_same_v<V, Native<Lane<V>>>);
#if KELVM_AVX512
  const unsigned mask = (1u << n) - 1u;
  if constexpr (sizeof(Lane<V>) == 8)
    return (V)_mm512_mask_loadu_pd((__m512d)fill, __mmask8(mask), from);
  else
    return (V)_mm512_mask_loadu_ps((__m512)fill, __mmask16(mask), from);
#elif KELVM_AVX2
  const __m256i mask = (__m256i)detail::first_lanes<V>(n);
  if constexpr (sizeof(Lane<V>) == 8)
    return (V)_mm256_blendv_pd((__m256d)fill, _mm256_maskload_pd(from, mask), (__m256d)mask);
  else
    return (V)_mm256_blendv_ps((__m256)fill, _mm256_maskload_ps(from, mask), (__m256)mask);
#else
  for (int i = 0; i < lanes<V> - 1; ++i)
    if (i < n) fill[i] = load<Lane<V>>(from + i);
  return fill;
#endif
}
template <class V> inline void store_first(Lane<V>* to, int n, V v) {
  static_assert(std::is_same_v<V, Native<Lane<V>>>);
#if KELVM_AVX512
  const unsigned mask = (1u << n) - 1u;
  if constexpr (sizeof(Lane<V>) == 8)
    _mm512_mask_storeu_pd(to, __mmask8(mask), (__m512d)v);
  else
    _mm512_mask_storeu_ps(to, __mmask16(mask), (__m512)v);
#elif KELVM_AVX2
  const __m256i mask = (__m256i)detail::first_lanes<V>(n);
  if constexpr (sizeof(Lane<V>) == 8)
    _mm256_maskstore_pd(to, mask, (__m256d)v);
  else
    _mm256_maskstore_ps(to, mask, (__m256)v);
#else
  for (int i = 0; i < lanes<V> - 1; ++i)
    if (i < n) store<Lane<V>>(to + i, v[i]);
#endif
}

} // namespace kelvm::inline KELVM_BUILD
