// Arc sine and arc cosine, for any width, from one series:
//
//   |x| <= 1/2    asin |x| = A(s),           s = |x|
//   |x| > 1/2     asin |x| = pi/2 - 2 A(s),  s = sqrt((1 - |x|) / 2)
//   A(s) = asin s = s + s z P(z),   z = s^2 <= 1/4
//
// acos x is pi/2 - asin x, and 2 A(s) or pi - 2 A(s) where |x| > 1/2: nothing cancels, and no result is beyond pi/2 or
// pi. 1 - |x| is exact.
//
// Full precision: pi/2 or pi less a multiple of the upper bits of s is exact. What is left, s's other bits and the
// series, is below 2^-4 of the result and rounded once: 2^-5 ulp. The leading coefficient, near 1/6, is 3/16, so that
// the other terms are below 2^-9 of the result; the product s z 3/16 has its rounding error with fused operations,
// without them the upper bits of s have an exact cube. Where s is a square root, it is followed by its tail.
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
  const V terms = N <= 5 ? horner(z, coefficients) : estrin(z, coefficients); // not later than the square root
  const V series = mul_add(s * z, terms, s);
  const V two = splat<V>(2);
  if constexpr (F::odd) {
    return select(large, sub_mul(splat<V>(pi_below<T> / 2), two, series), series);
  } else {
    const V twice = two * series;
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

/// The polynomial, four coefficients at a time: fewer powers than by halves, a chain of N / 4 + 2 steps.
template <class V, int N> inline V by_fours(V x, const Lane<V> (&c)[N]) {
  static_assert(N % 4 == 1);
  const V x2 = x * x, x4 = x2 * x2;
  V sum = splat<V>(c[N - 1]);
#pragma GCC unroll 8
  for (int i = N - 5; i >= 0; i -= 4) {
    const V low = mul_add(splat<V>(c[i + 1]), x, splat<V>(c[i]));
    const V high = mul_add(splat<V>(c[i + 3]), x, splat<V>(c[i + 2]));
    sum = mul_add(sum, x4, mul_add(high, x2, low));
  }
  return sum;
}

/// base + factor rest, |factor rest| < |base| / 8 where base is not 0; factor is a power of two.
template <class V> struct FactoredSum {
  V base, factor, rest;

  V rounded() const { return mul_add(factor, rest, base); }
  DoubleWord<V> double_word() const { return {base, factor * rest}; }
};

/// The function, of |x| where it is odd, to 2^-56.5 of it: rounded, it is within 0.55 ulp. |x| < 1.
template <class F, class V> inline FactoredSum<V> inverse_full(V x) {
  using namespace inverse_trig;
  const V t = abs(x);
  const auto large = t > splat<V>(0.5);
  // (1 - t) / 2, exact where it counts; without fused operations multiplications are what there is most of
  const V half_rest = has_fused ? half_rest_of(t) : from_bits<V>(bits(1.0 - t) - 0x10000000000000u);
  const V z = smaller_of(half_rest, t * t), root = sqrt(half_rest), s = select(large, root, t);
  const V series = by_fours(z, asin_full);

  // base + factor s_head is exact: s_head has 26 bits or 17, and so much of s as lies above 2^-52
  V s_head = has_fused ? head_of(s) : from_bits<V>(bits(s) & 0xFFFFFFF000000000u);
  V base, base_tail, factor; // the tail over the factor
  if constexpr (F::odd) {
    base = zero_unless(large, splat<V>(pi_hi / 2));
    base_tail = zero_unless(large, splat<V>(-pi_lo / 4));
    factor = select(large, splat<V>(-2), splat<V>(1));
  } else {
    const auto left_half = x < V{};
    const V quarter_tail = splat<V>(-pi_lo / 2);
    base = select(large, zero_unless(left_half, splat<V>(pi_hi)), splat<V>(pi_hi / 2));
    base_tail = select(large, zero_unless(left_half, quarter_tail), flip_sign(quarter_tail, sign_of(x)));
    factor = flip_sign(select(large, splat<V>(2), splat<V>(-1)), sign_of(x));
    s_head = zero_unless(s >= splat<V>(0x1p-27), s_head);
  }

  constexpr double leading = 0.1875;
  V rest;
  if constexpr (has_fused) {
    // z - s^2: z is a rounded square, or what s should be the root of. The root's tail is this over 2 s; that and what
    // it adds to the leading term, (1 + 3 z leading) / 2 s, is estimated from the bits of z and z to 4 %.
    const V error = sub_mul(z, s, s);
    const V slope = mul_add(z, splat<V>(0.75), from_bits<V>(0x5FD6666666666666u - (bits(half_rest) >> 1)));
    const V cube = s * z, cube_tail = sub_mul(mul_sub(s, z, cube), s, error);
    rest = mul_add(cube, series, (s - s_head) + base_tail);
    rest = mul_add(error, zero_unless(large, slope), rest);
    rest = mul_add(splat<V>(leading), cube_tail, rest);
    rest = mul_add(splat<V>(leading), cube, rest);
  } else {
    const V square = s_head * s_head, sum = s + s_head;
    const V s_tail = select(large, (half_rest - square) / (root + s_head), s - s_head);
    rest = s_tail * (leading * (z + s_head * sum) + 1.0) + ((s * z) * series + base_tail);
    rest = rest + (leading * square) * s_head;
  }
  return {mul_add(factor, s_head, base), factor, rest};
}

/// The results for what is not within -1 .. 1, and for +-1.
template <class F, class T> inline T inverse_of_border(T x, kelStatus& status) {
  if (is_nan(x)) return x + x;
  if (abs(x) > 1) return domain_error<T>(status);
  if constexpr (F::odd) return with_sign(T(pi_hi / 2), sign_of(x));
  return x < 0 ? T(pi_hi) : T(0);
}

} // namespace kelvm::inline KELVM_BUILD
