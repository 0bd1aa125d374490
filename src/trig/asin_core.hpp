// Arc sine and arc cosine, for any width, from one series:
//
//   |x| <= 1/2    asin |x| = A(s),           s = |x|
//   |x| > 1/2     asin |x| = pi/2 - 2 A(s),  s = sqrt((1 - |x|) / 2)
//   A(s) = asin s = s + s z P(z),   z = s^2 <= 1/4
//
// acos x is pi/2 - asin x, and 2 A(s) or pi - 2 A(s) where |x| > 1/2: nothing cancels, and no result is beyond pi/2 or
// pi. 1 - |x| is exact.
//
// Full precision: the sum of the multiple of pi/2 and s is exact, s^2 has a tail, from which follows the tail of a
// square root (its factor 1 / (2 s) to 4 %, from the bits of z); the term s z/6 has an exact head, and the rest of the
// series, below 2^-7 of the result, is rounded.
#pragma once

#include "exact/double_word.hpp"
#include "exact/polynomial.hpp"
#include "frame/status.hpp"
#include "trig/inverse_trig_tables.hpp"

namespace kelvm::inline KELVM_BUILD {

/// Which function: its value is base + factor A(s), for |x| where it is odd.
struct Asin {
  static constexpr bool odd = true;
};
struct Acos {
  static constexpr bool odd = false;
};

/// (1 - |x|) / 2, exact where |x| >= 1/2.
template <class V> inline V half_rest_of(V t) {
  const V half = splat<V>(Lane<V>(0.5));
  return sub_mul(half, half, t);
}

/// The function, of |x| where it is odd, with a series P given by its coefficients, in the arithmetic of the lanes.
/// |x| <= 1.
template <class F, class V, int N> inline V inverse_short(V x, V half_rest, const Lane<V> (&coefficients)[N]) {
  using T = Lane<V>;
  const V t = F::odd ? x : abs(x);
  const auto large = t > splat<V>(T(0.5));
  const V z = smaller_of(half_rest, t * t), s = select(large, sqrt(half_rest), t);
  const V series = mul_add(s * z, estrin(z, coefficients), s);
  const V twice = series + series;
  if constexpr (F::odd) {
    return select(large, pi_below<T> / 2 - twice, series);
  } else {
    const V base = select(large, zero_unless(x < V{}, splat<V>(pi_below<T>)), splat<V>(pi_below<T> / 2));
    return base + flip_sign(select(large, twice, -series), sign_of(x));
  }
}

template <class F, class V, int N> inline V inverse_short(V x, const Lane<V> (&coefficients)[N]) {
  const V t = abs(x);
  if constexpr (F::odd)
    return flip_sign(inverse_short<F>(t, half_rest_of(t), coefficients), sign_of(x));
  else
    return inverse_short<F>(x, half_rest_of(t), coefficients);
}

/// The function, of |x| where it is odd, as a double-word, |lo| < 2^-7 |hi|; relative error 2^-57. |x| < 1.
template <class F, class V> inline DoubleWord<V> inverse_full(V x) {
  using namespace inverse_trig;
  const V t = abs(x);
  const auto large = t > splat<V>(0.5);
  const V half_rest = half_rest_of(t);
  const V z = smaller_of(half_rest, t * t), s = select(large, sqrt(half_rest), t);

  const V half_inverse_root = from_bits<V>(0x5FD6E8EABBE35593u - (bits(half_rest) >> 1));
  const V higher_terms = ((z * z) * estrin(z, asin_numerator)) / estrin(z, asin_denominator);

  // A(s) = s + cubic + rest, cubic in place of s z/6: what it lacks is in the rest
  V cubic, rest;
  if constexpr (has_fused) {
    // s^2 - z is the tail of a square, or what a root is short of.
    const V error = mul_sub(s, s, z);
    const V root_tail = zero_unless(large, -error * half_inverse_root);
    const V sixth = z * 0x1.5555555555555p-3;
    const V z_left = sub_mul(z, splat<V>(6), sixth);
    const V sixth_tail = select(large, z_left, z_left + error) * 0x1.5555555555555p-3;
    cubic = s * sixth;
    const V beyond = mul_sub(s, sixth, cubic) + mul_add(root_tail, sixth, root_tail);
    rest = mul_add(s, sixth_tail + higher_terms, beyond);
  } else {
    // s^2 = square + below. Where s is a root, half_rest - square is exact.
    const V s_head = head_of(s), s_tail = s - s_head;
    const V square = s_head * s_head, below = (s + s_head) * s_tail;
    const V left = half_rest - square;
    const V root_tail = zero_unless(large, (left - below) * half_inverse_root);
    const V sixth = head_of(z * 0x1.5555555555555p-3);
    const V sixth_tail = ((square - 6.0 * sixth) + select(large, left, below)) * 0x1.5555555555555p-3;
    cubic = s_head * sixth;
    rest = ((s_tail + root_tail) * sixth + root_tail) + s * (sixth_tail + higher_terms);
  }

  V base, base_tail, factor;
  if constexpr (F::odd) {
    base = zero_unless(large, splat<V>(pi_hi / 2));
    base_tail = zero_unless(large, splat<V>(pi_lo / 2));
    factor = select(large, splat<V>(-2), splat<V>(1));
  } else {
    const auto left_half = x < V{};
    base = select(large, zero_unless(left_half, splat<V>(pi_hi)), splat<V>(pi_hi / 2));
    base_tail = select(large, zero_unless(left_half, splat<V>(pi_lo)), splat<V>(pi_lo / 2));
    factor = flip_sign(select(large, splat<V>(2), splat<V>(-1)), sign_of(x));
  }
  const DoubleWord<V> linear = fast_two_sum(base, factor * s);
  const DoubleWord<V> sum = fast_two_sum(linear.hi, factor * cubic);
  const V tail = (sum.lo + linear.lo) + mul_add(factor, rest, base_tail);
  return {sum.hi, tail};
}

/// The results for what is not within -1 .. 1, and for +-1.
template <class F, class T> inline T inverse_of_border(T x, kelStatus& status) {
  if (is_nan(x)) return x + x;
  if (abs(x) > 1) return domain_error<T>(status);
  if constexpr (F::odd) return with_sign(T(pi_hi / 2), sign_of(x));
  return x < 0 ? T(pi_hi) : T(0);
}

} // namespace kelvm::inline KELVM_BUILD
