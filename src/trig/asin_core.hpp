// Arc sine and arc cosine in double, for any width, from one series:
//
//   |x| <= 1/2    asin |x| = A(s),           s = |x|
//   |x| > 1/2     asin |x| = pi/2 - 2 A(s),  s = sqrt((1 - |x|) / 2)
//   A(s) = asin s = s + s z P(z),   z = s^2 <= 1/4
//
// acos x is pi/2 - asin x, and 2 A(s) or pi - 2 A(s) where |x| > 1/2: nothing cancels, and no result is beyond pi/2 or
// pi. 1 - |x| is exact. As head and tail: s has a head of 26 bits and a tail, (z - head^2) / (s + head) for a square
// root; the term z/6 has an exact head, and the rest of the series, below 2^-7 of it, is rounded.
#pragma once

#include "exact/exact.hpp"
#include "exact/polynomial.hpp"
#include "trig/inverse_trig_tables.hpp"

namespace kelvm::inline KELVM_BUILD {

/// A(s), and the lanes where |x| > 1/2.
template <class V, class Series> struct AsinParts {
  Mask<V> large;
  Series series;
};

/// Which multiple of pi/2 the series is added to, and with which sign and factor: asin |x| and acos x.
struct Asin {
  static constexpr bool odd = true;
};
struct Acos {
  static constexpr bool odd = false;
};

/// pi/2 and pi in the type of the lanes: as rounded toward zero.
template <class T>
inline constexpr T half_pi_in = sizeof(T) == 8 ? T(inverse_trig::half_pi_head) : T(inverse_trig::half_pi_below);
template <class T> inline constexpr T pi_in = sizeof(T) == 8 ? T(inverse_trig::pi_head) : T(inverse_trig::pi_below);

/// A(s) with a series P given by its coefficients.
template <class V, int N> inline AsinParts<V, V> asin_parts(V x, const Lane<V> (&coefficients)[N]) {
  using T = Lane<V>;
  const V t = abs(x);
  const auto large = t > splat<V>(T(0.5));
  const V half_rest = T(0.5) - T(0.5) * t;
  const V z = select(large, half_rest, t * t), s = select(large, sqrt(half_rest), t);
  return {large, s + (s * z) * estrin(z, coefficients)};
}

template <class F, class V> inline V inverse_of(V x, const AsinParts<V, V>& p) {
  using T = Lane<V>;
  const V twice = p.series + p.series;
  if constexpr (F::odd) {
    return flip_sign(select(p.large, half_pi_in<T> - twice, p.series), sign_of(x));
  } else {
    const V base = select(p.large, keep(x < V{}, splat<V>(pi_in<T>)), splat<V>(half_pi_in<T>));
    const V turned = flip_sign(select(p.large, twice, -p.series), sign_of(x));
    return base + turned;
  }
}

/// A(s) as head and tail, |x| < 1; relative error 2^-59.
template <class V> inline AsinParts<V, HeadTail<V>> asin_parts_a53(V x) {
  const V t = abs(x);
  const auto large = t > splat<V>(0.5);
  const V half_rest = 0.5 - 0.5 * t, root = sqrt(half_rest);
  const V root_head = head_of(root), root_tail = (half_rest - root_head * root_head) / (root + root_head);
  const V t_head = head_of(t);
  const V s = select(large, root_head, t_head), s_tail = select(large, root_tail, t - t_head);
  // z/6 = sixth + the second term of `rest`
  const V z_head = s * s, z_tail = (s + (s + s_tail)) * s_tail, z = z_head + z_tail;
  const V sixth = head_of(z * 0x1.5555555555555p-3);
  const V rest = ((z_head - 6.0 * sixth) + z_tail) * 0x1.5555555555555p-3 + (z * z) * estrin(z, inverse_trig::asin_a53);
  const HeadTail<V> sum = fast_two_sum(s, s * sixth);
  return {large, {sum.head, sum.tail + (s_tail + (s_tail * sixth + (s + s_tail) * rest))}};
}

template <class F, class V> inline HeadTail<V> inverse_of(V x, const AsinParts<V, HeadTail<V>>& p) {
  using namespace inverse_trig;
  const V head = p.series.head + keep(p.large, p.series.head), tail = p.series.tail + keep(p.large, p.series.tail);
  V base, base_tail;
  Bits<V> sign;
  if constexpr (F::odd) {
    base = keep(p.large, splat<V>(half_pi_head));
    base_tail = keep(p.large, splat<V>(half_pi_tail));
    sign = sign_of(keep(p.large, splat<V>(-0.0)));
  } else {
    const auto left = x < V{};
    base = select(p.large, keep(left, splat<V>(pi_head)), splat<V>(half_pi_head));
    base_tail = select(p.large, keep(left, splat<V>(pi_tail)), splat<V>(half_pi_tail));
    sign = sign_of(select(p.large, x, -x));
  }
  const HeadTail<V> sum = fast_two_sum(base, flip_sign(head, sign));
  const V sum_tail = sum.tail + (base_tail + flip_sign(tail, sign));
  if constexpr (F::odd) return {flip_sign(sum.head, sign_of(x)), flip_sign(sum_tail, sign_of(x))};
  return {sum.head, sum_tail};
}

/// The results for what is not within -1 .. 1, and for +-1.
template <class F, class T> inline T inverse_of_border(T x, kelStatus& status) {
  if (is_nan(x)) return x + x;
  if (abs(x) > 1) return domain_error<T>(status);
  if constexpr (F::odd) return with_sign(T(inverse_trig::half_pi_head), sign_of(x));
  return x < 0 ? T(inverse_trig::pi_head) : T(0);
}

} // namespace kelvm::inline KELVM_BUILD
