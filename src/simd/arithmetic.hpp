// Arithmetic that operators do not say: signs, roots, rounding, fused operations, exponents.
#pragma once

#include "simd/register.hpp"

namespace kelvm::inline KELVM_BUILD {

template <class V> inline constexpr Lane<Bits<V>> sign_bit = Lane<Bits<V>>(1) << (8 * sizeof(Lane<V>) - 1);

template <class V> inline V abs(V v) { return from_bits<V>(bits(v) & ~sign_bit<V>); }
/// The sign bit of v alone, as bits to be or-ed or xor-ed into a value.
template <class V> inline Bits<V> sign_of(V v) { return bits(v) & sign_bit<V>; }
template <class V> inline V with_sign(V v, Bits<V> sign) { return from_bits<V>(bits(v) | sign); }
template <class V> inline V flip_sign(V v, Bits<V> sign) { return from_bits<V>(bits(v) ^ sign); }

/// a < b ? a : b, and a > b ? a : b: b where one is a NaN, which raises invalid.
template <class V> inline V smaller_of(V a, V b) {
  if constexpr (lanes<V> == 1)
    return a < b ? a : b;
  else
    return Register<V>::smaller_of(a, b);
}
template <class V> inline V larger_of(V a, V b) {
  if constexpr (lanes<V> == 1)
    return a > b ? a : b;
  else
    return Register<V>::larger_of(a, b);
}

template <class V> inline V sqrt(V v) {
  if constexpr (lanes < V >> 1)
    return Register<V>::sqrt(v);
  else if constexpr (sizeof v == 8)
    return __builtin_sqrt(v);
  else
    return __builtin_sqrtf(v);
}

/// a * b + c, a * b - c and c - a * b: fused, with one rounding, where the build has that (`has_fused`), with two
/// elsewhere.
template <class V> inline V mul_add(V a, V b, V c) {
  if constexpr (!has_fused)
    return a * b + c;
  else if constexpr (lanes<V> > 1)
    return Register<V>::mul_add(a, b, c);
  else if constexpr (sizeof a == 8)
    return __builtin_fma(a, b, c);
  else
    return __builtin_fmaf(a, b, c);
}
template <class V> inline V mul_sub(V a, V b, V c) {
  if constexpr (!has_fused)
    return a * b - c;
  else if constexpr (lanes < V >> 1)
    return Register<V>::mul_sub(a, b, c);
  else
    return mul_add(a, b, -c);
}
template <class V> inline V sub_mul(V c, V a, V b) {
  if constexpr (!has_fused)
    return c - a * b;
  else if constexpr (lanes < V >> 1)
    return Register<V>::sub_mul(c, a, b);
  else
    return mul_add(-a, b, c);
}

/// floor(log2 v) for a positive normal v; for any positive bits, their exponent field less the bias.
template <class V> inline V exponent_of(V v) {
  if constexpr (sizeof(Lane<V>) == 8) // the exponent as the low bits of a double in [2^52, 2^53)
    return from_bits<V>((bits(v) >> 52) | 0x4330000000000000u) - (0x1p52 + 1023);
  else
    return convert<V>(bit_cast<Int<V>>(bits(v) >> 23)) - 127.0f;
}

/// How round() rounds. Quiet raises no inexact.
enum class Rounding : int {
  nearest_even = 0,
  down = 1,
  up = 2,
  to_zero = 3,
  current = 4,
  to_zero_quiet = 11,
  current_quiet = 12
};

template <Rounding How, class V> inline V round(V v) {
  constexpr int control = int(How);
  if constexpr (lanes < V >> 1)
    return Register<V>::template round<control>(v);
  else if constexpr (sizeof v == 8)
    return _mm_cvtsd_f64(_mm_round_sd(_mm_set_sd(v), _mm_set_sd(v), control));
  else
    return _mm_cvtss_f32(_mm_round_ss(_mm_set_ss(v), _mm_set_ss(v), control));
}

/// The products of the low 32 bits of 64-bit lanes.
template <class B> inline B multiply_low_halves(B a, B b) {
  static_assert(sizeof(Lane<B>) == 8);
  if constexpr (lanes<B> == 1) {
    return B(std::uint32_t(a)) * std::uint32_t(b);
#if KELVM_AVX512
  } else if constexpr (sizeof a == 64) {
    return (B)_mm512_maskz_mul_epu32(__mmask8(-1), (__m512i)a, (__m512i)b);
#endif
#if KELVM_AVX512 || KELVM_AVX2
  } else if constexpr (sizeof a == 32) {
    return (B)_mm256_mul_epu32((__m256i)a, (__m256i)b);
#endif
  } else {
    static_assert(sizeof a == 16);
    return (B)_mm_mul_epu32((__m128i)a, (__m128i)b);
  }
}

} // namespace kelvm::inline KELVM_BUILD
