// What the roots share: an approximation r of x^(-1/n), n = 2, 3, without divider and square root.
//
// First guess: the bits of a positive number, as an integer, are a piecewise linear logarithm, so that a constant minus
// an n-th of them is the logarithm of about x^(-1/n). The constants balance the residual d = 1 - x r^n: at most 0.0682
// and 0.1021. Refinement: r (1 - d)^(-1/n) with a polynomial for the power; each further coefficient gains about five
// bits. Where more is wanted, the step is repeated with the residual of the better r.
//
// Blinn, "Floating-point tricks", 1997; Householder, "The numerical treatment of a single nonlinear equation", 1970.
#pragma once

#include "exact/double_word.hpp"
#include "exact/polynomial.hpp"
#include "root/root_tables.hpp"
#include "simd/vec.hpp"

namespace kelvm::inline KELVM_BUILD {

/// About x^(-1/N) for a positive normal x, where that is normal as well: residual within the bounds above.
template <int N, class V> inline V first_guess(V x) {
  constexpr bool wide = sizeof(Lane<V>) == 8;
  using B = Lane<Bits<V>>;
  if constexpr (N == 2) {
    return from_bits<V>(B(wide ? 0x5FE6E8EABBE35593 : 0x5F374756) - (bits(x) >> 1));
  } else if constexpr (wide) {
    return from_bits<V>(B(0x553EE96222F32195) - multiply_low_halves(bits(x) >> 32, splat<Bits<V>>(0x55555556)));
  } else {
    constexpr float third = 0x1.555556p-2f;
    return bit_cast<V>(convert<Int<V>>(sub_mul(splat<V>(float(0x54A1F5BB)), convert<V>(int_bits(x)), splat<V>(third))));
  }
}

/// The residual 1 - x r^N, its error about the rounding errors of 1.
template <int N, class V> inline V residual(V x, V r) {
  if constexpr (N == 2)
    return sub_mul(splat<V>(1), x * r, r);
  else
    return sub_mul(splat<V>(1), x * r, r * r);
}

/// x^(-1/N) as refined by the coefficients, which name their accuracy.
template <int N, class V, int M> inline V inverse_root(V x, const Lane<V> (&c)[M]) {
  const V r = first_guess<N>(x);
  return r * by_pairs(residual<N>(x, r), c);
}

/// The bits of s and 1 / s add up to about this, as above: within 2^-9.6 everywhere after a step of Newton's, or
/// exactly at powers of two, 2^-6 between them.
enum class Reciprocal : std::uint64_t { even = 0x7FDE6238502484C6, exact_at_one = 0x7FE0000000000000 };

/// sqrt(a + b + rest), a and b not negative, the rest below 2^-24 of their sum h: with the processor's s = sqrt(h), the
/// residual h - s^2 and s + (h - s^2) / (2 s) with a reciprocal as above: 2^-62. Taken from the larger of a and b
/// first, the square of s's upper bits leaves no rounding error that counts. 2^-900 < h < 2^1000, or 0.
template <Reciprocal R = Reciprocal::even, class V> inline DoubleWord<V> square_root(V a, V b, V rest) {
  const V small = smaller_of(a, b), large = from_bits<V>(bits(a) ^ bits(b) ^ bits(small));
  const V s = sqrt((a + b) + rest);
  const V s_head = head_of(s);
  const V residual = (((large - s_head * s_head) + small) - (s - s_head) * (s + s_head)) + rest;
  const V guess = from_bits<V>(std::uint64_t(R) - bits(s));
  return {s, (0.5 * residual) * (guess * (2 - s * guess))};
}

/// x rounded to that many significant bits, by its bits.
template <int Kept, class V> inline V rounded_to_bits(V x) {
  constexpr int cleared = 53 - Kept;
  return from_bits<V>((bits(x) + (Lane<Bits<V>>(1) << (cleared - 1))) & (~Lane<Bits<V>>(0) << cleared));
}

} // namespace kelvm::inline KELVM_BUILD
