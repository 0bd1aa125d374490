// What the inverse circular and hyperbolic functions of complex numbers share: their arithmetic, of single numbers,
// each operation rounded once, or of double-words, each with an error below 2^-74; the accuracies, as types that
// say in which of these a function computes and which logarithm and angle it takes; the lanes that its formula covers;
// and how element() brings the others there. A formula is a template over the two arithmetics.
#pragma once

#include "complex/complex.hpp"
#include "exp/log_core.hpp"
#include "trig/atan_core.hpp"

namespace kelvm::inline KELVM_BUILD {

inline constexpr double pi = pi_hi;

// --- single numbers -------------------------------------------------------------------------------------------------

template <class V> inline V twice(V x) { return x + x; }
template <class V> inline V square(V x) { return x * x; }
template <class V> inline V product(V x, V y) { return x * y; }
template <class V> inline V quotient(V x, V y) { return x / y; }
template <class V> inline V sum(V x, V y) { return x + y; }
/// x^2 + y
template <class V> inline V square_plus(V x, V y) { return mul_add(x, x, y); }
template <class V> inline V one_plus(V x) { return Lane<V>(1) + x; }
/// |x| >= |y|.
template <class V> inline V descending_sum(V x, V y) { return x + y; }
template <class V> inline V normalised(V x) { return x; }
template <class V> inline V settled(V x) { return x; }
template <class V> inline auto is_negative(V x) { return int_bits(x); }

// --- double-words ----------------------------------------------------------------------------------------------------

/// The same for a sum that may have cancelled.
template <class V> inline DoubleWord<V> settled(DoubleWord<V> x) { return two_sum(x.hi, x.lo); }
template <class V> inline auto is_negative(DoubleWord<V> x) { return int_bits(x.hi); }
template <class V> inline DoubleWord<V> abs(DoubleWord<V> x) { return {abs(x.hi), flip_sign(x.lo, sign_of(x.hi))}; }
template <class M, class V> inline DoubleWord<V> select(M mask, DoubleWord<V> a, DoubleWord<V> b) {
  return {select(mask, a.hi, b.hi), select(mask, a.lo, b.lo)};
}
template <class V> inline DoubleWord<V> twice(DoubleWord<V> x) { return 2 * x; }
template <class V> inline DoubleWord<V> square(DoubleWord<V> x) {
  const DoubleWord<V> s = square_in_parts(x.hi);
  return {s.hi, mul_add(2 * x.hi, x.lo, s.lo)};
}
template <class V> inline DoubleWord<V> product(DoubleWord<V> x, DoubleWord<V> y) {
  const DoubleWord<V> p = product_in_parts(x.hi, y.hi);
  return {p.hi, p.lo + mul_add(x.hi, y.lo, x.lo * y.hi)};
}
template <class V> inline DoubleWord<V> sum(DoubleWord<V> x, DoubleWord<V> y) {
  const DoubleWord<V> heads = two_sum(x.hi, y.hi);
  return {heads.hi, heads.lo + (x.lo + y.lo)};
}
template <class V> inline DoubleWord<V> square_plus(DoubleWord<V> x, DoubleWord<V> y) { return sum(square(x), y); }
template <class V> inline DoubleWord<V> one_plus(DoubleWord<V> x) {
  const DoubleWord<V> heads = two_sum(splat<V>(1), x.hi);
  return {heads.hi, heads.lo + x.lo};
}
template <class V> inline DoubleWord<V> descending_sum(DoubleWord<V> x, DoubleWord<V> y) {
  const DoubleWord<V> heads = fast_two_sum(x.hi, y.hi);
  return {heads.hi, heads.lo + (x.lo + y.lo)};
}
/// y is normalised.
template <class V> inline DoubleWord<V> quotient(V x, DoubleWord<V> y) {
  const V inverse = 1.0 / y.hi, q = x * inverse;
  const DoubleWord<V> back = product_in_parts(q, y.hi);
  return {q, sub_mul((x - back.hi) - back.lo, q, y.lo) * inverse};
}
/// The root is normalised.
template <class V> inline DoubleWord<V> sqrt(DoubleWord<V> x) {
  const V root = sqrt(x.hi + x.lo), inverse = 1.0 / root;
  const DoubleWord<V> back = square_in_parts(root);
  return {root, 0.5 * (((x.hi - back.hi) - back.lo) + x.lo) * inverse};
}

// --- accuracies -----------------------------------------------------------------------------------------------------

/// Double numbers, each operation rounded.
template <Accuracy Log, Accuracy Angle> struct InverseInDouble {
  using Working = double;
  template <class V> static V number(V x) { return x; }
  template <class V> static V one_minus(V x) { return 1.0 - x; }
  template <class V> static V log1p(V x) { return logarithm_1p<Log>(x); }
  /// The argument whose hyperbolic sine and cosine these are.
  template <class V> static V asinh(V sinh, V cosh) { return log1p(mul_add(sinh, sinh / (1.0 + cosh), sinh)); }
  /// The angle of (x, y), y >= 0; an acute one has x >= 0 too.
  template <class V> static V angle(V y, V x) { return kelvm::angle<Angle>(y, x); }
  template <class V> static V acute_angle(V y, V x) { return kelvm::angle<Angle>(y, x); }
};
/// Float numbers. The angle is pi/2 or pi less one in the first octant, its arc tangent a polynomial.
template <Accuracy A> struct InFloat {
  using Working = float;
  template <class V> static V number(V x) { return x; }
  template <class V> static V one_minus(V x) { return 1.0f - x; }
  template <class V> static V log1p(V x) { return float_logarithm_1p<A>(x); }
  template <class V> static V asinh(V sinh, V cosh) { return log1p(mul_add(sinh, sinh / (1.0f + cosh), sinh)); }
  template <class V> static V acute_angle(V y, V x) {
    const auto steep = x < y;
    const V r = select(steep, x, y) / select(steep, y, x), z = r * r;
    const V series = [z] {
      if constexpr (A == Accuracy::bits21)
        return estrin<1>(z, inverse_trig::atan_bits21);
      else
        return estrin<1>(z, inverse_trig::atan_bits11);
    }();
    const V t = mul_add(r * z, series, r);
    return select(steep, float(0.5 * pi) - t, t);
  }
  template <class V> static V angle(V y, V x) {
    const V t = acute_angle(y, abs(x));
    return select(int_bits(x), float(pi) - t, t);
  }
};
/// Double-words; the angle leaves 2^-57.
struct InExtended {
  using Working = double;
  template <class V> static DoubleWord<V> number(V x) { return {x, V{}}; }
  template <class V> static DoubleWord<V> one_minus(V x) { return two_sum(splat<V>(1), -x); }
  template <class V> static DoubleWord<V> log1p(DoubleWord<V> x) { return logarithm_1p_double_word(x); }
  template <class V> static DoubleWord<V> asinh(DoubleWord<V> sinh, DoubleWord<V> cosh) {
    return 0.5 * log1p(2 * normalised(product(sinh, descending_sum(cosh, sinh))));
  }
  template <class V> static DoubleWord<V> angle(DoubleWord<V> y, DoubleWord<V> x) {
    return kelvm::angle<Accuracy::full>(y, x);
  }
  template <class V> static DoubleWord<V> acute_angle(DoubleWord<V> y, DoubleWord<V> x) {
    return detail::first_quadrant_angle<Accuracy::full, true>(y, x);
  }
};

using A53 = InExtended;
using A50 = InverseInDouble<Accuracy::bits50, Accuracy::bits50>;
using A26 = InverseInDouble<Accuracy::bits27, Accuracy::bits27>;
using A24 = InverseInDouble<Accuracy::bits40, Accuracy::bits49>;
using A21 = InFloat<Accuracy::bits21>;
using A11 = InFloat<Accuracy::bits11>;

/// N = |z|^2 - 1 from 1 - x and the squared distance |z - 1|^2, x >= 0. What cancels is exact or small beside
/// |z - 1| |z + 1|.
template <class Number> inline Number norm_minus_one_by_distance(Number one_minus_x, Number distance) {
  return settled(sum(distance, -twice(one_minus_x)));
}

// --- which lanes ----------------------------------------------------------------------------------------------------

/// The lanes with x = 1, y = 0.
template <class V> inline SignMask<V> is_one(V x, V y) {
  return ((int_bits(x) ^ int_bits(splat<V>(1))) - 1) & (int_bits(y) - 1);
}

/// What the kernels of element type T and accuracy P have in common.
template <class T, class P> struct InverseKernel : ComplexDefaults {
  using Element = T;
  static constexpr bool spurious_underflow = true;
  /// Floats evaluated in double are all in range.
  static constexpr bool floats_in_double = sizeof(T) < sizeof(typename P::Working);
  /// Next to poles and zeros squares of floats are too small.
  static constexpr Magnitudes ordinary = sizeof(typename P::Working) == 4 ? no_magnitudes : everyday<T>;
  static constexpr int vectors_in_flight = floats_in_double ? 2 : 4;

  /// Where the formulas neither overflow nor lose a small number: parts are zero or from low to high.
  static constexpr T low = sizeof(T) == 8 ? T(0x1p-200) : T(0x1p-50);
  static constexpr T high = sizeof(T) == 8 ? T(0x1p200) : T(0x1p30);

  /// The lanes that the formulas do not cover, for x, y >= 0: the point 1, parts out of range, infinities, NaNs.
  template <class V> static SignMask<V> uncovered(V x, V y) {
    if constexpr (floats_in_double)
      return is_one(x, y) | above(x, largest_finite<float>) | above(y, largest_finite<float>);
    else
      return is_one(x, y) | outside_but_zero(x, low, high) | outside_but_zero(y, low, high);
  }
  template <class F, class V> static Pair<V> evaluate(F f, V x, V y) {
    if constexpr (floats_in_double)
      return pair_in_double(f, x, y);
    else
      return f(x, y);
  }
};

// --- elements out of range ------------------------------------------------------------------------------------------

/// z = x + iy, x, y >= 0, brought into the range of the formulas: both parts times 2^down if one is large, a part that
/// is (then) small further up by 2^boost, boost even.
struct InRange {
  struct Part {
    double value;
    int boost;
  };
  int down;
  Part x, y;

  InRange(double re, double im) : down(down_for(re > im ? re : im)), x(part(re)), y(part(im)) {}

private:
  static int down_for(double larger) { return larger > 0x1p200 ? 100 - scaled(larger).exponent : 0; }
  Part part(double value) const {
    const Scaled s = scaled(value);
    const int exponent = s.exponent + down;
    const int boost = value != 0 && exponent < -200 ? (-120 - exponent) & ~1 : 0;
    return {s.fraction * power_of_two(exponent + boost), boost};
  }
};

/// x + k ln 2.
inline DoubleWord<double> plus_ln2(DoubleWord<double> x, double k) {
  return settled(sum(DoubleWord<double>{k * Natural::log_of_2_hi, k * Natural::log_of_2_lo}, x));
}
/// x 2^exponent, rounded once more where it is subnormal.
inline double scaled_back(DoubleWord<double> x, int exponent) { return ScaledSum{x, exponent}.rounded(); }

/// A part of a result from its absolute value, with the sign of x; a NaN is the default one.
template <class T> inline T odd_part(double magnitude, T x) {
  return is_nan(magnitude) ? default_nan<T>() : with_sign(T(magnitude), sign_of(x));
}

} // namespace kelvm::inline KELVM_BUILD
