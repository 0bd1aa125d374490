// What Exp, Sinh, Cosh, Tanh and their rotations Sin, Cos, Tan of x + iy are made of: a real exponential of x, a cosine
// and a sine of y, and their products, at every accuracy; and the kernel that makes a member of a function F and an
// accuracy P. F has
//
//   template <class P, class V> static Pair<V> formula(V x, V y)   for |x| <= last<P>, |y| <= P::last_angle
//   template <class P> static constexpr double last                 the largest |x| of formula
//   static Pair<double> any(double x, double y)                     any x and y, correct but for the last rounding
//
// P, an accuracy, has
//
//   template <class V> using Factor                  a number with what it has beyond V
//   template <class V> static CosSin<Factor<V>> cos_sin(V y)        0 <= y <= last_angle
//   template <class V> static Exponential<P, V> exponential(V x)    with exp_normal's range
//   template <class V> static V product(Factor<V> a, Factor<V> b)
//
// Each part of a result is one product of two factors, which never cancel: relative errors add up, and that is all.
#pragma once

#include "complex/complex.hpp"
#include "complex/factors_tables.hpp"
#include "exact/polynomial.hpp"
#include "exp/exp_core.hpp"
#include "trig/sine_cosine.hpp"
#include "trig/tangent.hpp"

namespace kelvm::inline KELVM_BUILD {

template <class F> struct CosSin { F cos, sin; };

// --- accuracies -----------------------------------------------------------------------------------------------------

/// A factor for products to 2^-59 without an exact product: its head has at most 26 bits, so that the product of two
/// heads is exact, and the rest is below 2^-7 of it.
template <class V> struct Split { V head, rest; };

template <class V> inline Split<V> split(HeadTail<V> a) {
  const V head = head_of(a.head);
  return {head, (a.head - head) + a.tail};
}

/// y = index pi/32 + head + tail, |head| <= pi/64, for |y| < 2^17; the error is below 2^-120, which matters where y
/// is a multiple of pi/2 but for 2^-53.
template <class V> inline Remainder<V> long_reduce(V y) {
  using namespace factors_tables;
  const V shifted = y * thirty_two_over_pi + 0x1.8p52;
  const V k = shifted - 0x1.8p52;
  const V t = y - k * pi_32_0;
  const V first = t - k * pi_32_1;
  const V second = ((t - first) - k * pi_32_1) - k * pi_32_2;
  const V head = first + second;
  return {head, ((first - head) + second) - k * pi_32_3, int_bits(shifted)};
}

/// What the accuracies in double share: angles below 90112.
struct InDouble {
  using Arithmetic = double;
  static constexpr double last_angle = 0x1.5ffffffffffffp+16;
};

/// Head and tail throughout, one rounding at the end: 0.52 ulp.
struct Full : InDouble {
  static constexpr bool splits = true;            // products of tiny factors lose bits below the range
  static constexpr double largest_exponent = 650; // no product with a cosine or sine is subnormal but a negligible one
  template <class V> using Factor = Split<V>;

  template <class V> static V product(const Split<V>& a, const Split<V>& b) {
    return a.head * b.head + (a.head * b.rest + a.rest * (b.head + b.rest));
  }
  /// With a = index pi/32, sin r = head + beyond and cos r = 1 + c, where head has 26 bits:
  ///   sin(a + r) = sin a + cos a head + (cos a beyond + sin a c), cos(a + r) = cos a - sin a head + (...).
  /// sin a and cos a are 26 bits and a rest, so that the products with head are exact. Error 2^-59 relative, next to
  /// the zeros too.
  template <class V> static CosSin<Split<V>> cos_sin(const Remainder<V>& r) {
    const auto [sin_head, sin_rest, cos_head, cos_rest] = lookup_row<factors_tables::sine_cosine>(r.index & 63);
    const V sin = sin_head + sin_rest, cos = cos_head + cos_rest;
    const V z = r.head * r.head, head = head_of(r.head);
    const V beyond = ((r.head - head) + r.tail) + (r.head * z) * horner(z, factors_tables::sine_full);
    const V c = z * horner(z, factors_tables::cosine_full);
    // The sum's upper 26 bits, and exactly what is left of it.
    const auto sum = [](V a, V product, V rest) {
      const V upper = head_of(a + product);
      return Split<V>{upper, ((a - upper) + product) + rest};
    };
    return {sum(cos_head, -(sin_head * head), (cos_rest - sin_rest * head) + (cos * c - sin * beyond)),
            sum(sin_head, cos_head * head, (sin_rest + cos_rest * head) + (cos * beyond + sin * c))};
  }
  template <class V> static CosSin<Split<V>> cos_sin(V y) { return cos_sin(long_reduce(y)); }

  template <class V> struct Exponential {
    Split<V> value;
    V scale;
    V times(const Split<V>& factor) const { return product(value, factor) * scale; }
  };
  template <class V> static Exponential<V> exponential(V x) {
    const ExpReduced<128, V> reduced = exp_reduce<128>(x);
    const HeadTail<V> e = exp_unscaled<ExpAccuracy::pow>(reduced, V{});
    return {{e.head, e.tail}, reduced.scaled(splat<V>(1))};
  }
};

/// Factors are numbers: an exponential of accuracy A, a cosine and sine of the same angles with
///   sin r = r + r^3 (...), cos r = 1 + r^2 (...)
/// from the coefficients of P; relative errors stay small next to the zeros.
template <ExpAccuracy A, class P> struct Rounded : InDouble {
  static constexpr bool splits = false;
  static constexpr double largest_exponent = 708;
  template <class V> using Factor = V;

  template <class V> static V product(V a, V b) { return a * b; }
  template <class V> static CosSin<V> cos_sin(V y) {
    const V shifted = y * thirty_two_over_pi + 0x1.8p52;
    const V r = remainder(y, shifted - 0x1.8p52), z = r * r;
    const auto [cos_a, sin_a] = lookup_pair<cosine_sine>(int_bits(shifted) & 63);
    const V c = z * horner(z, P::cosine), sin_r = r + (r * z) * horner(z, P::sine);
    return {cos_a + (cos_a * c - sin_a * sin_r), sin_a + (sin_a * c + cos_a * sin_r)};
  }
  template <class V> struct Exponential {
    V value;
    V times(V factor) const { return value * factor; }
  };
  template <class V> static Exponential<V> exponential(V x) { return {exp_normal<A>(x, V{})}; }
};

struct LongSeries {
  static constexpr const auto &sine = factors_tables::sine_full, &cosine = factors_tables::cosine_full;
};
struct ShortSeries {
  static constexpr const auto &sine = factors_tables::sine_short, &cosine = factors_tables::cosine_short;
};
/// About an ulp a factor.
using Middle = Rounded<ExpAccuracy::a50, LongSeries>;
/// Cosine and sine to 2^-40; the exponential to 2^-42 for results that are rounded to float, to 2^-33 for A26.
using ShortA24 = Rounded<ExpAccuracy::a24, ShortSeries>;
using ShortA26 = Rounded<ExpAccuracy::a26, ShortSeries>;

/// In float arithmetic, angles reduced by pi/2. What is subtracted first is exact, so that relative errors stay small
/// next to the zeros.
template <class P> struct Single {
  using Arithmetic = float;
  static constexpr bool splits = false;
  static constexpr float largest_exponent = 87, last_angle = 10000;
  template <class V> using Factor = V;

  template <class V> static V product(V a, V b) { return a * b; }
  template <class V> static CosSin<V> cos_sin(V y) {
    const V shifted = y * 0x1.45f306p-1f + 0x1.8p23f;
    const V k = shifted - 0x1.8p23f;
    const V r = y - k * 1.5703125f - k * 0x1.fb4p-12f - k * 0x1.444p-24f - k * 0x1.68c234p-39f, z = r * r;
    const V cos_r = 1.0f + z * horner(z, P::cosine), sin_r = r + (r * z) * horner(z, P::sine);
    const Bits<V> quadrant = bits(shifted);
    const Marks<V> odd = bit_cast<Marks<V>>(quadrant << 31);
    return {flip_sign(select(odd, sin_r, cos_r), ((quadrant + 1) << 30) & sign_bit<V>),
            flip_sign(select(odd, cos_r, sin_r), (quadrant << 30) & sign_bit<V>)};
  }
  template <class V> struct Exponential {
    V value;
    V times(V factor) const { return value * factor; }
  };
  template <class V> static Exponential<V> exponential(V x) {
    const FloatExpReduced<V> reduced = float_exp_reduce(x);
    const V r = reduced.r;
    return {reduced.scaled(1.0f + (r + (r * r) * estrin(r, P::exponential)))};
  }
};
struct SeriesA21 {
  static constexpr const auto &sine = factors_tables::sine_single_a21, &cosine = factors_tables::cosine_single_a21;
  static constexpr const auto& exponential = exp_core_tables::float_expm1_a21;
};
struct SeriesA11 {
  static constexpr const auto &sine = factors_tables::sine_single_a11, &cosine = factors_tables::cosine_single_a11;
  static constexpr const auto& exponential = exp_core_tables::float_exp_a11;
};
using SingleA21 = Single<SeriesA21>;
using SingleA11 = Single<SeriesA11>;

// --- one element, any operands --------------------------------------------------------------------------------------

/// Factors to about 2^-58 with their power of two apart. Zero, infinite or NaN by their heads; not normalised.
/// e^x.
ScaledSum any_exponential(double x);
/// Of infinities and NaNs: NaNs, the sine with the sign of y.
CosSin<ScaledSum> any_cos_sin(double y);
/// One part of a result: the product of an exponential or hyperbolic factor and a cosine or sine. As Annex G has it for
/// all of these functions, a zero stays a zero whatever the other factor, and the real part stays infinite where the
/// angle is no number.
enum class Part { real, imaginary };
double any_product(Part part, const ScaledSum& hyperbolic, const ScaledSum& circular);

// --- kernels --------------------------------------------------------------------------------------------------------

template <class F, class T, class P> struct PlaneFunction : KernelDefaults {
  using Element = T;
  static constexpr bool stray_underflow = true;

  /// A quotient or product that overflows float does so in element().
  static constexpr T last = sizeof(T) == 4 && F::template last<P> > 88 ? 88 : F::template last<P>;

  template <class V> static Marks<V> special(V x, V y) {
    const Marks<V> large = above(abs(x), last) | above(abs(y), T(P::last_angle));
    if constexpr (P::splits)
      return large | tiny(x) | tiny(y);
    else
      return large;
  }
  template <class V> static Pair<V> formula(V x, V y) {
    const auto f = [](auto x, auto y) { return F::template formula<P>(x, y); };
    if constexpr (sizeof(T) < sizeof(typename P::Arithmetic))
      return pair_in_double(f, x, y);
    else
      return f(x, y);
  }
  static Pair<T> element(T x, T y, kelStatus& status) {
    const Operand z{quiet(x), quiet(y)};
    const Pair<double> result = F::any(z.x, z.y);
    return with_code<T>(z, result.first, result.second, status);
  }

private:
  /// Marks 0 < |x| < 2^-900.
  template <class V> static Marks<V> tiny(V x) {
    const Int<V> magnitude = int_bits(abs(x));
    return (magnitude - int_bits(splat<V>(0x1p-900))) & -magnitude;
  }
  /// x as a double; raises nothing for a signalling NaN.
  static double quiet(T x) {
    return is_nan(x) ? flip_sign(default_nan<double>(), ~std::uint64_t(sign_of(x) != 0) << 63) : double(x);
  }
};

} // namespace kelvm::inline KELVM_BUILD
