// Sine, cosine and tangent of floats of any size, in double, with relative errors below 2^-46: enough to round all but
// one in a million to float as the most accurate double functions would be rounded.
//
// x = (n + t) pi, modulo 2 pi. x / pi is x times the bits of 1/pi that matter at the magnitude of x: two parts of 29
// bits, whose products with a float are exact, and the rest, whose product is below 2^-25 and has an error of 2^-78 by
// the rest and of 2^-79 by its own rounding. No float from 2^10 on is nearer to a multiple of pi/2 than 2^-31 pi, so t
// has a relative error of 2^-46.4 at most, to which fits and roundings add less than 2^-49. Payne and Hanek, "Radian
// reduction for trigonometric functions", 1983.
#pragma once

#include "exact/polynomial.hpp"
#include "exact/rounding_test.hpp"
#include "simd/table.hpp"
#include "trig/trig_fits.hpp"
#include "trig/trig_tables.hpp"

namespace kelvm::inline KELVM_BUILD {

/// What decides the rounding to float: the bound above, and as much again for the formula behind (the tangent's has
/// 2^-46.8).
inline constexpr int large_float_bits = 45;
inline constexpr float some_large_float = 0x1p20f;

/// x / pi modulo 2 as a sum of three; x is a float, widened, |x| >= 2.
template <class V> class HalfTurnsOfLarge {
  V first_, second_, third_;

public:
  explicit HalfTurnsOfLarge(V x) {
    const Int<V> row = (int_bits(x) >> 55) & 15; // of the exponent
    const auto [first, second] = lookup_pair<one_over_pi_parts>(row);
    first_ = x * first;
    second_ = x * second;
    third_ = x * lookup<one_over_pi_rest>(row);
  }

  V rounded() const { return first_ + second_; }
  /// The sum less `whole`, which is near it: the first difference is exact, and so is the sum where it is small.
  V less(V whole) const { return ((first_ - whole) + second_) + third_; }
};

/// sin x, and cos x = -sin(x - (n + 1/2) pi) (-1)^n
template <class V> inline V sine_of_large(const HalfTurnsOfLarge<V>& turns) {
  const V shifted = turns.rounded() + rounding_constant<double>;
  const V t = turns.less(shifted - rounding_constant<double>);
  return flip_sign(t * estrin(t * t, sine_half_turn), bits(shifted) << 63);
}
template <class V> inline V cosine_of_large(const HalfTurnsOfLarge<V>& turns) {
  const V shifted = (turns.rounded() + 0.5) + rounding_constant<double>;
  const V t = turns.less((shifted - rounding_constant<double>)-0.5);
  return flip_sign(t * estrin(t * t, sine_half_turn), bits(shifted) << 63);
}

/// Results in double, one or a pair of them, rounded to float, and chosen by a mask.
inline Native<float> narrow_large(RoundingTest& test, Native<double> low, Native<double> high) {
  return narrow_decided<large_float_bits>(test, low, high);
}
inline Pair<Native<float>> narrow_large(RoundingTest& test, Pair<Native<double>> low, Pair<Native<double>> high) {
  return {narrow_large(test, low.first, high.first), narrow_large(test, low.second, high.second)};
}
template <class M, class V> inline V chosen(M mask, V a, V b) { return select(mask, a, b); }
template <class M, class V> inline Pair<V> chosen(M mask, Pair<V> a, Pair<V> b) {
  return {select(mask, a.first, b.first), select(mask, a.second, b.second)};
}

/// Lanes of `x` beyond `last` by `large`, a function of this file, with the lanes that it leaves undecided; the others
/// by `ordinary`.
template <class V, class Large, class Ordinary>
inline auto of_any_size(V x, float last, RoundingTest& test, Large large, Ordinary ordinary) {
  const SignMask<V> far = above(abs(x), last);
  const V far_x = select(far, x, splat<V>(some_large_float));
  const auto y = narrow_large(test, large(widen<0>(far_x)), large(widen<1>(far_x)));
  if (movemask(far) == all_lanes<V>) return y;
  return chosen(far, y, ordinary(select(far, splat<V>(1), x)));
}

} // namespace kelvm::inline KELVM_BUILD
