// What Exp, Sinh, Cosh, Tanh and their rotations Sin, Cos, Tan of x + iy are made of: a real exponential of x, a cosine
// and a sine of y, and their products, at every accuracy; and the kernel that makes a member of a function F and an
// accuracy P. F has
//
//   template <class P, class V> static Pair<V> formula(V x, V y)   for |x| <= last<P>, |y| <= last_angle
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
#include "exp/exp_core.hpp"
#include "trig/sine_cosine.hpp"
#include "trig/tangent.hpp"

namespace kelvm::inline KELVM_BUILD {

template <class F> struct CosSin { F cos, sin; };

constexpr double last_angle = 0x1.5ffffffffffffp+16; // below 90112

// --- accuracies -----------------------------------------------------------------------------------------------------

/// A factor for products to 2^-59 without an exact product: its head has at most 26 bits, so that the product of two
/// heads is exact, and the rest is below 2^-7 of it.
template <class V> struct Split { V head, rest; };

template <class V> inline Split<V> split(HeadTail<V> a) {
  const V head = head_of(a.head);
  return {head, (a.head - head) + a.tail};
}

/// Head and tail throughout, one rounding at the end: 0.52 ulp.
struct Full {
  static constexpr bool splits = true;            // products of tiny factors lose bits below the range
  static constexpr double largest_exponent = 650; // no product with a cosine or sine is subnormal but a negligible one
  template <class V> using Factor = Split<V>;

  template <class V> static V product(const Split<V>& a, const Split<V>& b) {
    return a.head * b.head + (a.head * b.rest + a.rest * (b.head + b.rest));
  }
  template <class V> static CosSin<Split<V>> cos_sin(V y) {
    const Remainder<V> r = reduce(y);
    const SmallAngle<V> small(r.head);
    return {split(sine<1>(r, small)), split(sine<0>(r, small))};
  }
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

/// Factors are numbers; an exponential of accuracy A.
template <ExpAccuracy A> struct Rounded {
  static constexpr bool splits = false;
  static constexpr double largest_exponent = 708;
  template <class V> using Factor = V;

  template <class V> static V product(V a, V b) { return a * b; }
  template <class V> struct Exponential {
    V value;
    V times(V factor) const { return value * factor; }
  };
  template <class V> static Exponential<V> exponential(V x) { return {exp_normal<A>(x, V{})}; }
};

/// Each factor within an ulp or so: by norm 2^-51.
struct Middle : Rounded<ExpAccuracy::a50> {
  template <class V> static CosSin<V> cos_sin(V y) {
    const Remainder<V> r = reduce(y);
    const SmallAngle<V> small(r.head);
    const HeadTail<V> cos = sine<1>(r, small), sin = sine<0>(r, small);
    return {cos.head + cos.tail, sin.head + sin.tail};
  }
};

/// Sine and cosine to 2^-35, next to their zeros too: the same table of angles, and with r = y - k pi/32
///   sin r = r (1 - r^2/6 + r^4/120), cos r = 1 - r^2/2 + r^4/24.
template <ExpAccuracy A> struct Short : Rounded<A> {
  template <class V> static CosSin<V> cos_sin(V y) {
    const V shifted = y * thirty_two_over_pi + 0x1.8p52;
    const V r = remainder(y, shifted - 0x1.8p52), z = r * r;
    const auto [cos_a, sin_a] = lookup_pair<cosine_sine>(int_bits(shifted) & 63);
    const V cos_r = 1.0 + z * (-0.5 + z * 0x1.5555555555555p-5);
    const V sin_r = r + (r * z) * (-0x1.5555555555555p-3 + z * 0x1.1111111111111p-7);
    return {cos_a * cos_r - sin_a * sin_r, sin_a * cos_r + cos_a * sin_r};
  }
};

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
  static constexpr T last = sizeof(T) == 4 && F::template last<P> > 88 ? T(88) : T(F::template last<P>);

  template <class V> static Marks<V> special(V x, V y) {
    const Marks<V> large = above(abs(x), last) | above(abs(y), T(last_angle));
    if constexpr (P::splits)
      return large | tiny(x) | tiny(y);
    else
      return large;
  }
  template <class V> static Pair<V> formula(V x, V y) {
    const auto f = [](auto x, auto y) { return F::template formula<P>(x, y); };
    if constexpr (sizeof(T) == 4)
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
