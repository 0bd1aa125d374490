// Complex hyperbolic tangent and, by rotation, tangent:
//
//   tanh(x + iy) = (sinh x cosh x + i sin y cos y) / (sinh^2 x + cos^2 y)      tan z = -i tanh(iz)
//
// Kahan, "Branch cuts for complex elementary functions", 1987, has the tangent of y in the place of its sine and
// cosine. Nothing cancels: products of factors, and a sum of two squares, which is as small as it should be next to the
// poles, since the cosine is accurate next to its zeros. One reciprocal serves both parts.
//
//          factors                    sum of squares, quotient   error
//   A53    head of 26 bits, rest      head and rest              0.52 ulp a part
//   A50    rounded                    rounded                    2^-50.3 by norm
//   A26    2^-33                      rounded                    2^-31 by norm
//   A24    2^-33, in double           in double, rounded once    0.51 ulp a part
//   A21    2^-22 in float             rounded                    2^-21.2 by norm
//   A11    2^-15 in float             rounded                    2^-13 by norm
//
// element() computes beyond |x| = 200, 350 or 43, where the real part has long been 1 and the squares would overflow;
// large and tiny angles; infinities and NaNs.
#include "complex/plane.hpp"
#include "frame/export.hpp"
#include "kelvm/complex.h"

namespace kelvm::inline KELVM_BUILD::complex_tanh_tan {
namespace {

struct Tanh {
  /// The square of a hyperbolic factor is far from overflow; with Full, quotients are far from underflow too.
  template <class P> static constexpr double last = P::splits ? 200 : P::largest_exponent / 2.02;

  template <class P, Angles A, class V> static Pair<V> formula(V x, V y) {
    const auto h = P::hyperbolic(abs(x)), c = P::template circular<A>(abs(y));
    const typename P::template SumOfSquares<V> norm(h.odd, c.even);
    return {flip_sign(norm.divides(h.odd, h.even), sign_of(x)), flip_sign(norm.divides(c.odd, c.even), sign_of(y))};
  }

  static Pair<double> any(double x, double y) {
    const EvenOdd<ScaledSum> h = any_hyperbolic(x), c = any_circular(y);
    if (is_infinite(x))
      return {with_sign(1.0, sign_of(x)), with_sign(0.0, sign_of(c.odd.value.hi) ^ sign_of(c.even.value.hi))};
    if (is_nan(x)) return {default_nan<double>(), y == 0 ? y : default_nan<double>()};
    if (!is_finite(y)) return {x == 0 ? x : default_nan<double>(), default_nan<double>()};
    const ScaledSum norm = sum(product(h.odd, h.odd), product(c.even, c.even));
    const auto part = [&](const EvenOdd<ScaledSum>& f) {
      return f.odd.value.hi == 0 ? f.odd.value.hi : quotient(product(f.odd, f.even), norm).rounded();
    };
    return {part(h), part(c)};
  }
};

template <class P> using Tanh32 = PlaneFunction<Tanh, float, P>;
template <class P> using Tanh64 = PlaneFunction<Tanh, double, P>;
template <class P> using Tan32 = Rotated<Tanh32<P>>;
template <class P> using Tan64 = Rotated<Tanh64<P>>;

} // namespace

KELVM_UNARY(kelsTanh_32fc_A11, Tanh32<SingleA11>)
KELVM_UNARY(kelsTanh_32fc_A21, Tanh32<SingleA21>)
KELVM_UNARY(kelsTanh_32fc_A24, Tanh32<ShortA24>)
KELVM_UNARY(kelsTanh_64fc_A26, Tanh64<ShortA26>)
KELVM_UNARY(kelsTanh_64fc_A50, Tanh64<Middle>)
KELVM_UNARY(kelsTanh_64fc_A53, Tanh64<Full>)
KELVM_UNARY(kelsTan_32fc_A11, Tan32<SingleA11>)
KELVM_UNARY(kelsTan_32fc_A21, Tan32<SingleA21>)
KELVM_UNARY(kelsTan_32fc_A24, Tan32<ShortA24>)
KELVM_UNARY(kelsTan_64fc_A26, Tan64<ShortA26>)
KELVM_UNARY(kelsTan_64fc_A50, Tan64<Middle>)
KELVM_UNARY(kelsTan_64fc_A53, Tan64<Full>)

} // namespace kelvm::inline KELVM_BUILD::complex_tanh_tan
