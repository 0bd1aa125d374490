// Cube root, its reciprocal, and x^(2/3), from an approximation r of |x|^(-1/3) (root/root.hpp).
//
// Full precision: a factor of the result is rounded to 17 bits, so that its cube is exact, or to 13, so that its square
// times a part of x is.
//   Cbrt      c near x^(1/3): u = (x - c^3) / x, the difference exact; c (1 - u)^(-1/3)
//   Pow2o3    the same c: c^2 (1 - u)^(-2/3), c^2 exact
//   InvCbrt   r near x^(-1/3), of 13 bits: d = 1 - x r^3 by exact products of parts; r (1 - d)^(-1/3)
// u and d are below 2^-14.8 and 2^-10.9, the polynomials for the powers err by 2^-60, and the last sum rounds: 0.502
// ulp.
//
// A24: r in single precision, refined once in double, and rounded where 2^-50 decides. r has errors of 2^-18.9 of the
// fit and 2^-22.4 of rounding (the residual's, at most 3.1 2^-24, counts by a third), so that |d| < 2^-17.1. Left out
// of the series are 40/81 d^3 of the cube root and 14/81 d^3 of the others, 2^-52.3 and 2^-53.8. What c or r lost by
// rounding counts by a third, the product in d where it is rounded by 2/3 or a third, and the last sum: 2 2^-53 at
// most. Together 2^-51.1.
//
//             r           then                                                          before rounding
//   A50       to 2^-18.9  one step: residual d, 1 + d/3 + 2/9 d^2 or its square         2^-53
//   A26 A21   the guess   r or x r^2 times a polynomial                                 2^-27.8, 2^-23.3
//   A11                                                                                 2^-12.8
#include "exact/double_word.hpp"
#include "exact/rounding_test.hpp"
#include "frame/edges.hpp"
#include "frame/export.hpp"
#include "kelvm/root.h"
#include "root/root.hpp"
#include "root/scaled.hpp"

namespace kelvm::inline KELVM_BUILD::cube_roots {
namespace {

/// c0 + c1 d
template <class V> V two_terms(double c0, double c1, V d) { return mul_add(splat<V>(c1), d, splat<V>(c0)); }

// The three functions of a positive x, the first and last for zero as well.

struct RefinedOnce {
  using Element = double;
  template <class V> static V cbrt(V x, V r) {
    const V c = (x * r) * r, d = sub_mul(splat<V>(1), c, r);
    return mul_add(c, d * two_terms(2.0 / 3, 5.0 / 9, d), c);
  }
  template <class V> static V inverse(V x, V r) {
    const V d = residual<3>(x, r);
    return mul_add(r, d * two_terms(1.0 / 3, 2.0 / 9, d), r);
  }
  template <class V> static V power_2_3(V x, V r) {
    const V y = x * r, d = sub_mul(splat<V>(1), y, r * r);
    return mul_add(y, d * two_terms(1.0 / 3, 2.0 / 9, d), y);
  }
};

struct A50 : RefinedOnce {
  template <class V> static V cbrt(V x) { return RefinedOnce::cbrt(x, inverse_root<3>(x, inverse_cbrt_19)); }
  template <class V> static V inverse(V x) { return RefinedOnce::inverse(x, inverse_root<3>(x, inverse_cbrt_19)); }
  template <class V> static V power_2_3(V x) { return RefinedOnce::power_2_3(x, inverse_root<3>(x, inverse_cbrt_19)); }
};

template <class T, const auto& Cbrt, const auto& InverseCbrt> struct OneStep {
  using Element = T;
  template <class V> static V cbrt(V x) {
    const V r = first_guess<3>(x);
    const V c = (x * r) * r;
    return c * by_pairs(sub_mul(splat<V>(1), c, r), Cbrt);
  }
  template <class V> static V inverse(V x) { return inverse_root<3>(x, InverseCbrt); }
  template <class V> static V power_2_3(V x) {
    const V r = first_guess<3>(x);
    const V y = x * r;
    return y * by_pairs(sub_mul(splat<V>(1), y, r * r), InverseCbrt);
  }
};
using A26 = OneStep<double, cbrt_26, inverse_cbrt_26>;
using A21 = OneStep<float, cbrt_21, inverse_cbrt_21>;
using A11 = OneStep<float, cbrt_11, inverse_cbrt_11>;

struct A53 {
  using Element = double;
  struct Near { // for any width, so that c and u travel together
    template <class V> static Pair<V> of(V x) {
      const V r = inverse_root<3>(x, inverse_cbrt_19);
      const V approximation = (x * r) * r, d = 1 - approximation * r;
      const V c = rounded_to_bits<17>(approximation);
      const V difference = x - c * (c * c);
      return {c, (((difference * r) * r) * r) * (1 + d * (1 + d))}; // 1 / x = r^3 (1 + d + d^2), to 2^-52
    }
  };
  template <class V> static DoubleWord<V> cbrt_parts(V x) {
    const auto [c, u] = Near::of(x);
    return {c, c * (u * (1.0 / 3 + u * (2.0 / 9 + u * (14.0 / 81))))};
  }
  template <class V> static DoubleWord<V> power_2_3_parts(V x) {
    const auto [c, u] = Near::of(x);
    const V square = c * c;
    return {square, square * (u * (2.0 / 3 + u * (5.0 / 9 + u * (40.0 / 81))))};
  }
  template <class V> static DoubleWord<V> inverse_parts(V x) {
    const V r = rounded_to_bits<13>(inverse_root<3>(x, inverse_cbrt_14));
    const V square = r * r, x_head = head_of(x);
    const V product = x_head * square, product_head = head_of(product);
    const V d = ((1 - product_head * r) - (product - product_head) * r) - ((x - x_head) * square) * r;
    constexpr double c[] = {1.0 / 3, 2.0 / 9, 14.0 / 81, 35.0 / 243, 91.0 / 729};
    return {r, r * (d * estrin(d, c))};
  }
  template <class V> static V sum(DoubleWord<V> y) { return y.hi + y.lo; }
  template <class V> static V cbrt(V x) { return sum(cbrt_parts(x)); }
  template <class V> static V inverse(V x) { return sum(inverse_parts(x)); }
  template <class V> static V power_2_3(V x) { return sum(power_2_3_parts(x)); }
};

/// The cube of the scale moves a subnormal x to where the formulas hold.
template <class T> inline constexpr T scale = sizeof(T) == 8 ? T(0x1p100) : T(0x1p10);

/// f(x) of a subnormal or zero x by way of f(x scale^3), where f(x) ~ x^(power / 3).
template <class T, class F> T by_scaling(T x, int power, F f) {
  const T y = f(((x * scale<T>)*scale<T>)*scale<T>);
  return power < 0 ? y * scale<T> : power == 1 ? y / scale<T> : y / scale<T> / scale<T>;
}

/// No square or cube of a scale is subnormal.
template <class T>
inline constexpr Magnitudes away_from_subnormals{sizeof(T) == 8 ? 0x1p-960 : 0x1p-100, largest_finite<T>};

// --- cube root -----------------------------------------------------------------------------------------------------

template <class P> struct Cbrt : KernelDefaults {
  using Element = typename P::Element;
  static constexpr Magnitudes ordinary = away_from_subnormals<Element>;
  template <class V> static SignMask<V> special(V x) {
    return outside_but_zero(abs(x), smallest_normal<Element>, largest_finite<Element>);
  }
  template <class V> static V formula(V x) { return with_sign(P::cbrt(abs(x)), sign_of(x)); }
  static Element element(Element x, kelStatus&) {
    if (is_nan(x) || is_infinite(x)) return x + x;
    return with_sign(by_scaling(abs(x), 1, [](Element m) { return P::cbrt(m); }), sign_of(x));
  }
};

struct Cbrt32A24 : Cbrt<A21> {
  template <class V> using ResultTest = RoundingTest;
  template <class V> static V formula(V x, RoundingTest& test) {
    const V m = abs(x);
    const V y = in_double_decided<50>(
        test, [](auto m, auto r) { return RefinedOnce::cbrt(m, r); }, m, inverse_root<3>(m, inverse_cbrt_19_float));
    return with_sign(y, sign_of(x));
  }
  static float element(float x, kelStatus&) {
    if (is_nan(x) || is_infinite(x)) return x + x;
    return with_sign(round_sum_to_float(A53::cbrt_parts(double(abs(x)))), sign_of(x));
  }
};

// --- reciprocal cube root ------------------------------------------------------------------------------------------

/// The elements that have no ordinary result; ordinary(|x|) is called for the others.
template <class T, class F> T inverse_cbrt_element(T x, kelStatus& status, F ordinary) {
  if (is_nan(x)) return x + x;
  if (x == 0) return pole(status, x);
  if (is_infinite(x)) return with_sign(T(0), sign_of(x));
  return with_sign(ordinary(abs(x)), sign_of(x));
}

template <class P> struct InvCbrt : KernelDefaults, PoleAtZero<0> {
  using Element = typename P::Element;
  static constexpr Magnitudes ordinary = away_from_subnormals<Element>;
  template <class V> static SignMask<V> special(V x) {
    return outside(abs(x), smallest_normal<Element>, largest_finite<Element>);
  }
  template <class V> static V formula(V x) { return with_sign(P::inverse(abs(x)), sign_of(x)); }
  static Element element(Element x, kelStatus& status) {
    return inverse_cbrt_element(x, status, [](Element magnitude) {
      return by_scaling(magnitude, -1, [](Element m) { return P::inverse(m); });
    });
  }
};

struct InvCbrt32A24 : InvCbrt<A21> {
  template <class V> using ResultTest = RoundingTest;
  template <class V> static V formula(V x, RoundingTest& test) {
    const V m = abs(x);
    const V y = in_double_decided<50>(
        test, [](auto m, auto r) { return RefinedOnce::inverse(m, r); }, m, inverse_root<3>(m, inverse_cbrt_19_float));
    return with_sign(y, sign_of(x));
  }
  static float element(float x, kelStatus& status) {
    return inverse_cbrt_element(
        x, status, [](float magnitude) { return round_sum_to_float(A53::inverse_parts(double(magnitude))); });
  }
};

// --- x^(2/3) -------------------------------------------------------------------------------------------------------

template <class P> struct Pow2o3 : KernelDefaults {
  using Element = typename P::Element;
  static constexpr Magnitudes ordinary = away_from_subnormals<Element>;
  template <class V> static SignMask<V> special(V x) {
    return outside_but_zero(abs(x), smallest_normal<Element>, largest_finite<Element>);
  }
  template <class V> static V formula(V x) { return P::power_2_3(abs(x)); }
  static Element element(Element x, kelStatus&) {
    if (is_nan(x)) return x + x;
    if (is_infinite(x)) return abs(x);
    return by_scaling(abs(x), 2, [](Element m) { return P::power_2_3(m); });
  }
};

struct Pow2o3_32A24 : Pow2o3<A21> {
  template <class V> using ResultTest = RoundingTest;
  template <class V> static V formula(V x, RoundingTest& test) {
    const V m = abs(x);
    return in_double_decided<50>(
        test, [](auto m, auto r) { return RefinedOnce::power_2_3(m, r); }, m,
        inverse_root<3>(m, inverse_cbrt_19_float));
  }
  static float element(float x, kelStatus&) {
    if (is_nan(x)) return x + x;
    if (is_infinite(x)) return abs(x);
    return round_sum_to_float(A53::power_2_3_parts(double(abs(x))));
  }
};

} // namespace

KELVM_UNARY(kelsCbrt_32f_A11, Cbrt<A11>)
KELVM_UNARY(kelsCbrt_32f_A21, Cbrt<A21>)
KELVM_UNARY(kelsCbrt_32f_A24, Cbrt32A24)
KELVM_UNARY(kelsCbrt_64f_A26, Cbrt<A26>)
KELVM_UNARY(kelsCbrt_64f_A50, Cbrt<A50>)
KELVM_UNARY(kelsCbrt_64f_A53, Cbrt<A53>)

KELVM_UNARY(kelsInvCbrt_32f_A11, InvCbrt<A11>)
KELVM_UNARY(kelsInvCbrt_32f_A21, InvCbrt<A21>)
KELVM_UNARY(kelsInvCbrt_32f_A24, InvCbrt32A24)
KELVM_UNARY(kelsInvCbrt_64f_A26, InvCbrt<A26>)
KELVM_UNARY(kelsInvCbrt_64f_A50, InvCbrt<A50>)
KELVM_UNARY(kelsInvCbrt_64f_A53, InvCbrt<A53>)

KELVM_UNARY(kelsPow2o3_32f_A11, Pow2o3<A11>)
KELVM_UNARY(kelsPow2o3_32f_A21, Pow2o3<A21>)
KELVM_UNARY(kelsPow2o3_32f_A24, Pow2o3_32A24)
KELVM_UNARY(kelsPow2o3_64f_A26, Pow2o3<A26>)
KELVM_UNARY(kelsPow2o3_64f_A50, Pow2o3<A50>)
KELVM_UNARY(kelsPow2o3_64f_A53, Pow2o3<A53>)

} // namespace kelvm::inline KELVM_BUILD::cube_roots
