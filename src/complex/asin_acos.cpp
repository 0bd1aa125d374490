// Asin, Asinh, Acos, Acosh of complex numbers, all from one formula. For z = x + iy in the first quadrant and
// asin z = alpha + i beta,
//
//   (sinh beta + i cos alpha)^2 = N + 2 i y,   N = |z|^2 - 1 = |z - 1|^2 - 2 (1 - x),
//
// a square root without cancellation once N is known well:
//
//   M = sqrt(N^2 + 4 y^2),   larger = sqrt((M + |N|) / 2),   smaller = y / larger,   cosh beta = sqrt(1 + (M + N) / 2)
//
// the larger one being sinh beta where N >= 0 and cos alpha elsewhere. Then
//
//   beta  = log1p(sinh beta + sinh^2 beta / (1 + cosh beta)) = log1p(2 sinh beta (sinh beta + cosh beta)) / 2
//   alpha = the angle of (cos alpha cosh beta, x), and acos's real part that of (x, cos alpha cosh beta).
//
// Every step keeps the relative accuracy, next to the branch points +-1 and the cuts too. The quantities are those of
// Hull, Fairgrieve, Tang, "Implementing the complex arcsine and arccosine functions using exception handling", 1997
// (their a is cosh beta, their b sin alpha); the square root takes the place of their cases.
//
//   A53   double-words, 2^-70 before the logarithm and the angle: 0.53 ulp a component
//   A24   in double, rounded once: 0.501 ulp
//   A50 and A26 in double, A21 and A11 in float, with ever shorter logarithms and angles
//
// The other quadrants by symmetry, on the axes by the signs of zeros. Asinh is Asin rotated, Acosh is Acos rotated.
// element() takes the branch points, infinities and NaNs (C's Annex G), and scales what is out of the formula's range.
#include "complex/inverse_elementary.hpp"
#include "frame/export.hpp"
#include "kelvm/complex.h"

namespace kelvm::inline KELVM_BUILD::complex_asin_acos {
namespace {

/// beta and cos alpha cosh beta for x, y >= 0.
template <class Number> struct ArcSine { Number beta, cosine; };

template <class P, class V> auto arc_sine(V x, V y) {
  using Number = decltype(P::number(x));
  using T = Lane<V>;
  const Number less = P::one_minus(x), y_squared = square(P::number(y));
  const Number n = norm_minus_one_by_distance(less, square_plus(less, y_squared));
  const Number m = sqrt(square_plus(n, T(4) * y_squared));
  const Number larger = sqrt(T(0.5) * descending_sum(m, abs(n)));
  const Number cosh_beta = sqrt(one_plus(T(0.5) * descending_sum(m, n)));
  const Number smaller = quotient(y, larger);
  const auto inside = is_negative(n);
  const Number sinh_beta = select(inside, smaller, larger), cos_alpha = select(inside, larger, smaller);
  return ArcSine<Number>{P::asinh(sinh_beta, cosh_beta), normalised(product(cos_alpha, cosh_beta))};
}

/// The parts of one finite element but the branch point, from where the formula holds. A small x makes alpha smaller in
/// proportion, a small y beta where x < 1 and acos where x > 1; at x = 1 both go with the square root of y.
struct ArcSineElement {
  double x;
  InRange z;
  ArcSine<DoubleWord<double>> parts;

  ArcSineElement(double x, double y) : x(x), z(x, y), parts(arc_sine<InExtended>(z.x.value, z.y.value)) {}

  double beta() const { return scaled_back(plus_ln2(parts.beta, -z.down), -boost_where(x < 1)); }
  double alpha() const {
    return scaled_back(InExtended::acute_angle(InExtended::number(z.x.value), parts.cosine), -z.x.boost);
  }
  double acos() const {
    return scaled_back(InExtended::angle(parts.cosine, InExtended::number(z.x.value)), -boost_where(x > 1));
  }
  double acos_of_negative() const { return rounded(InExtended::angle(parts.cosine, InExtended::number(-z.x.value))); }

private:
  int boost_where(bool proportional) const { return proportional ? z.y.boost : x == 1 ? z.y.boost / 2 : 0; }
};

template <class T, class P> struct Asin : InverseKernel<T, P> {
  using Base = InverseKernel<T, P>;

  template <class V> static SignMask<V> special(V x, V y) { return Base::uncovered(abs(x), abs(y)); }
  template <class V> static Pair<V> formula(V x, V y) {
    return Base::evaluate(
        [](auto x, auto y) {
          const auto parts = arc_sine<P>(abs(x), abs(y));
          const auto alpha = rounded(P::acute_angle(P::number(abs(x)), parts.cosine));
          return Pair<decltype(x)>{with_sign(alpha, sign_of(x)), with_sign(rounded(parts.beta), sign_of(y))};
        },
        x, y);
  }
  static Pair<T> element(T x, T y, kelStatus&) {
    const Pair<double> w = first_quadrant(abs(x), abs(y));
    return {odd_part(w.first, x), odd_part(w.second, y)};
  }

private:
  static Pair<double> first_quadrant(double x, double y) {
    constexpr double inf = infinity<double>, nan = __builtin_nan("");
    if (is_infinite(y)) return {is_nan(x) ? nan : is_infinite(x) ? pi / 4 : 0, inf};
    if (is_infinite(x)) return {is_nan(y) ? nan : pi / 2, inf};
    if (is_nan(x) || is_nan(y)) return {x == 0 ? 0 : nan, nan};
    if (x == 1 && y == 0) return {pi / 2, 0};
    const ArcSineElement parts(x, y);
    return {parts.alpha(), parts.beta()};
  }
};

template <class T, class P> struct Acos : InverseKernel<T, P> {
  using Base = InverseKernel<T, P>;

  template <class V> static SignMask<V> special(V x, V y) { return Base::uncovered(abs(x), abs(y)); }
  template <class V> static Pair<V> formula(V x, V y) {
    return Base::evaluate(
        [](auto x, auto y) {
          const auto parts = arc_sine<P>(abs(x), abs(y));
          const auto angle = rounded(P::angle(parts.cosine, P::number(x)));
          return Pair<decltype(x)>{angle, with_sign(rounded(parts.beta), sign_of(-y))};
        },
        x, y);
  }
  static Pair<T> element(T x, T y, kelStatus&) {
    const Pair<double> w = upper_half(x, abs(y));
    return {odd_part(w.first, T(1)), odd_part(w.second, -y)};
  }

private:
  /// The real part and the absolute value of the imaginary part.
  static Pair<double> upper_half(double x, double y) {
    constexpr double inf = infinity<double>, nan = __builtin_nan("");
    if (is_infinite(x)) return {is_nan(y) ? nan : is_infinite(y) ? (x < 0 ? 0.75 * pi : pi / 4) : x < 0 ? pi : 0, inf};
    if (is_infinite(y)) return {is_nan(x) ? nan : pi / 2, inf};
    if (is_nan(x) || is_nan(y)) return {x == 0 ? pi / 2 : nan, nan};
    if (abs(x) == 1 && y == 0) return {x < 0 ? pi : 0, 0};
    const ArcSineElement parts(abs(x), y);
    return {x < 0 ? parts.acos_of_negative() : parts.acos(), parts.beta()};
  }
};

/// acosh z from acos z: i acos z or -i acos z, the one with a real part that is not negative.
template <class K> struct AcoshFromAcos : K {
  using T = typename K::Element;
  template <class V> static Pair<V> formula(V x, V y) {
    const Pair<V> w = K::formula(x, y);
    return {abs(w.second), with_sign(w.first, sign_of(y))};
  }
  static Pair<T> element(T x, T y, kelStatus& status) {
    const Pair<T> w = K::element(x, y, status);
    return {is_nan(w.second) ? w.second : abs(w.second), odd_part(w.first, y)};
  }
};

template <class T, class P> using Asinh = Rotated<Asin<T, P>>;
template <class T, class P> using Acosh = AcoshFromAcos<Acos<T, P>>;

} // namespace

KELVM_UNARY(kelsAsinh_32fc_A11, Asinh<float, A11>)
KELVM_UNARY(kelsAsinh_32fc_A21, Asinh<float, A21>)
KELVM_UNARY(kelsAsinh_32fc_A24, Asinh<float, A24>)
KELVM_UNARY(kelsAsinh_64fc_A26, Asinh<double, A26>)
KELVM_UNARY(kelsAsinh_64fc_A50, Asinh<double, A50>)
KELVM_UNARY(kelsAsinh_64fc_A53, Asinh<double, A53>)
KELVM_UNARY(kelsAsin_32fc_A11, Asin<float, A11>)
KELVM_UNARY(kelsAsin_32fc_A21, Asin<float, A21>)
KELVM_UNARY(kelsAsin_32fc_A24, Asin<float, A24>)
KELVM_UNARY(kelsAsin_64fc_A26, Asin<double, A26>)
KELVM_UNARY(kelsAsin_64fc_A50, Asin<double, A50>)
KELVM_UNARY(kelsAsin_64fc_A53, Asin<double, A53>)
KELVM_UNARY(kelsAcosh_32fc_A11, Acosh<float, A11>)
KELVM_UNARY(kelsAcosh_32fc_A21, Acosh<float, A21>)
KELVM_UNARY(kelsAcosh_32fc_A24, Acosh<float, A24>)
KELVM_UNARY(kelsAcosh_64fc_A26, Acosh<double, A26>)
KELVM_UNARY(kelsAcosh_64fc_A50, Acosh<double, A50>)
KELVM_UNARY(kelsAcosh_64fc_A53, Acosh<double, A53>)
KELVM_UNARY(kelsAcos_32fc_A11, Acos<float, A11>)
KELVM_UNARY(kelsAcos_32fc_A21, Acos<float, A21>)
KELVM_UNARY(kelsAcos_32fc_A24, Acos<float, A24>)
KELVM_UNARY(kelsAcos_64fc_A26, Acos<double, A26>)
KELVM_UNARY(kelsAcos_64fc_A50, Acos<double, A50>)
KELVM_UNARY(kelsAcos_64fc_A53, Acos<double, A53>)

} // namespace kelvm::inline KELVM_BUILD::complex_asin_acos
