// Atanh and Atan of complex numbers. For z = x + iy in the first quadrant
//
//   Re atanh z = log1p(4 x / ((1 - x)^2 + y^2)) / 4
//   Im atanh z = the angle of (1 - |z|^2, 2 y) / 2
//
// Kahan, "Branch cuts for complex elementary functions", 1987. The quotient has no cancellation once 1 - x is exact.
// 1 - |z|^2 = 2 (1 - x) - |1 - z|^2 cancels only where 2 y is large beside its error.
//
//   A53   double-words: 0.53 ulp a component, next to the poles +-1 and the cuts too
//   A24   in double, rounded once: 0.501 ulp
//   A50 and A26 in double, A21 and A11 in float, with ever shorter logarithms and angles
//
// The other quadrants by symmetry, on the axes by the signs of zeros. Atan is Atanh rotated. element() takes the poles,
// infinities and NaNs (C's Annex G), and scales what is out of the formula's range.
#include "complex/inverse_elementary.hpp"
#include "frame/export.hpp"
#include "kelvm/complex.h"

namespace kelvm::inline KELVM_BUILD::complex_atan_atanh {
namespace {

/// atanh (x + iy) for x, y >= 0.
template <class P, class V> auto arc_tangent(V x, V y) {
  using T = Lane<V>;
  const auto less = P::one_minus(x);
  const auto distance = normalised(square_plus(less, square(P::number(y))));
  const auto re = T(0.25) * P::log1p(quotient(T(4) * x, distance));
  const auto im = T(0.5) * P::angle(P::number(twice(y)), -norm_minus_one_by_distance(less, distance));
  return Pair<decltype(P::number(x))>{re, im};
}

/// One finite element but the pole, from where the formula holds. A small x makes the real part smaller in proportion,
/// a small y the imaginary part where x < 1; at x = 1 the real part is ln(2 / y) / 2.
Pair<double> arc_tangent_element(double x, double y) {
  const InRange z(x, y);
  Pair<DoubleWord<double>> w = arc_tangent<InExtended>(z.x.value, z.y.value);
  if (x == 1) w.first = plus_ln2(w.first, 0.5 * z.y.boost);
  return {scaled_back(w.first, z.down - z.x.boost), scaled_back(w.second, x < 1 ? -z.y.boost : 0)};
}

template <class T, class P> struct Atanh : InverseKernel<T, P> {
  using Base = InverseKernel<T, P>;

  template <class V> static SignMask<V> special(V x, V y) { return Base::uncovered(abs(x), abs(y)); }
  template <class V> static Pair<V> formula(V x, V y) {
    return Base::evaluate(
        [](auto x, auto y) {
          const auto w = arc_tangent<P>(abs(x), abs(y));
          return Pair<decltype(x)>{with_sign(rounded(w.first), sign_of(x)), with_sign(rounded(w.second), sign_of(y))};
        },
        x, y);
  }
  static Pair<T> element(T x, T y, kelStatus& status) {
    if (abs(x) == 1 && y == 0) return {pole(status, x), y};
    const Pair<double> w = first_quadrant(abs(x), abs(y));
    return {odd_part(w.first, x), odd_part(w.second, y)};
  }

private:
  static Pair<double> first_quadrant(double x, double y) {
    constexpr double nan = __builtin_nan("");
    if (is_infinite(y)) return {0, pi / 2};
    if (is_infinite(x)) return {0, is_nan(y) ? nan : pi / 2};
    if (is_nan(x) || is_nan(y)) return {x == 0 ? 0 : nan, nan};
    return arc_tangent_element(x, y);
  }
};

template <class T, class P> using Atan = Rotated<Atanh<T, P>>;

} // namespace

KELVM_UNARY(kelsAtanh_32fc_A11, Atanh<float, A11>)
KELVM_UNARY(kelsAtanh_32fc_A21, Atanh<float, A21>)
KELVM_UNARY(kelsAtanh_32fc_A24, Atanh<float, A24>)
KELVM_UNARY(kelsAtanh_64fc_A26, Atanh<double, A26>)
KELVM_UNARY(kelsAtanh_64fc_A50, Atanh<double, A50>)
KELVM_UNARY(kelsAtanh_64fc_A53, Atanh<double, A53>)
KELVM_UNARY(kelsAtan_32fc_A11, Atan<float, A11>)
KELVM_UNARY(kelsAtan_32fc_A21, Atan<float, A21>)
KELVM_UNARY(kelsAtan_32fc_A24, Atan<float, A24>)
KELVM_UNARY(kelsAtan_64fc_A26, Atan<double, A26>)
KELVM_UNARY(kelsAtan_64fc_A50, Atan<double, A50>)
KELVM_UNARY(kelsAtan_64fc_A53, Atan<double, A53>)

} // namespace kelvm::inline KELVM_BUILD::complex_atan_atanh
