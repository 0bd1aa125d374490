// Complex hyperbolic sine and cosine and, by rotation, sine and cosine:
//
//   sinh(x + iy) = sinh x cos y + i cosh x sin y      sin z = -i sinh(iz)
//   cosh(x + iy) = cosh x cos y + i sinh x sin y      cos z = cosh(iz)
//
//          sinh x, cosh x; cos y, sin y   products         error
//   A53    head of 26 bits, rest          one rounding     0.52 ulp a part
//   A50    rounded                        rounded          2^-51 by norm
//   A26    2^-33                          rounded          2^-32 by norm
//   A24    2^-33, in double               rounded once     0.51 ulp a part
//   A21    2^-22 in float                 rounded          2^-21.5 by norm
//   A11    2^-15 in float                 rounded          2^-14 by norm
//
// element() computes as for the exponential: see exp.cpp.
#include "complex/plane.hpp"
#include "frame/export.hpp"
#include "kelvm/complex.h"

namespace kelvm::inline KELVM_BUILD::complex_sinh_cosh {
namespace {

struct Sinh {
  template <class P> static constexpr double last = P::largest_exponent;

  template <class P, Angles A, class V> static Pair<V> formula(V x, V y) {
    const auto h = P::hyperbolic(abs(x)), c = P::template circular<A>(abs(y));
    return {flip_sign(P::product(h.odd, c.even), sign_of(x)), flip_sign(P::product(h.even, c.odd), sign_of(y))};
  }
  static Pair<double> any(double x, double y) {
    const EvenOdd<ScaledSum> h = any_hyperbolic(x), c = any_circular(y);
    return {any_product(Part::real, h.odd, c.even), any_product(Part::imaginary, h.even, c.odd)};
  }
};

struct Cosh {
  template <class P> static constexpr double last = P::largest_exponent;

  template <class P, Angles A, class V> static Pair<V> formula(V x, V y) {
    const auto h = P::hyperbolic(abs(x)), c = P::template circular<A>(abs(y));
    return {P::product(h.even, c.even), flip_sign(P::product(h.odd, c.odd), sign_of(x) ^ sign_of(y))};
  }
  static Pair<double> any(double x, double y) {
    const EvenOdd<ScaledSum> h = any_hyperbolic(x), c = any_circular(y);
    return {any_product(Part::real, h.even, c.even), any_product(Part::imaginary, h.odd, c.odd)};
  }
};

template <class P> using Sinh32 = PlaneFunction<Sinh, float, P>;
template <class P> using Sinh64 = PlaneFunction<Sinh, double, P>;
template <class P> using Cosh32 = PlaneFunction<Cosh, float, P>;
template <class P> using Cosh64 = PlaneFunction<Cosh, double, P>;
template <class P> using Sin32 = Rotated<Sinh32<P>>;
template <class P> using Sin64 = Rotated<Sinh64<P>>;
template <class P> using Cos32 = OfRotated<Cosh32<P>>;
template <class P> using Cos64 = OfRotated<Cosh64<P>>;

} // namespace

KELVM_UNARY(kelsSinh_32fc_A11, Sinh32<SingleA11>)
KELVM_UNARY(kelsSinh_32fc_A21, Sinh32<SingleA21>)
KELVM_UNARY(kelsSinh_32fc_A24, Sinh32<ShortA24>)
KELVM_UNARY(kelsSinh_64fc_A26, Sinh64<ShortA26>)
KELVM_UNARY(kelsSinh_64fc_A50, Sinh64<Middle>)
KELVM_UNARY(kelsSinh_64fc_A53, Sinh64<Full>)
KELVM_UNARY(kelsCosh_32fc_A11, Cosh32<SingleA11>)
KELVM_UNARY(kelsCosh_32fc_A21, Cosh32<SingleA21>)
KELVM_UNARY(kelsCosh_32fc_A24, Cosh32<ShortA24>)
KELVM_UNARY(kelsCosh_64fc_A26, Cosh64<ShortA26>)
KELVM_UNARY(kelsCosh_64fc_A50, Cosh64<Middle>)
KELVM_UNARY(kelsCosh_64fc_A53, Cosh64<Full>)
KELVM_UNARY(kelsSin_32fc_A11, Sin32<SingleA11>)
KELVM_UNARY(kelsSin_32fc_A21, Sin32<SingleA21>)
KELVM_UNARY(kelsSin_32fc_A24, Sin32<ShortA24>)
KELVM_UNARY(kelsSin_64fc_A26, Sin64<ShortA26>)
KELVM_UNARY(kelsSin_64fc_A50, Sin64<Middle>)
KELVM_UNARY(kelsSin_64fc_A53, Sin64<Full>)
KELVM_UNARY(kelsCos_32fc_A11, Cos32<SingleA11>)
KELVM_UNARY(kelsCos_32fc_A21, Cos32<SingleA21>)
KELVM_UNARY(kelsCos_32fc_A24, Cos32<ShortA24>)
KELVM_UNARY(kelsCos_64fc_A26, Cos64<ShortA26>)
KELVM_UNARY(kelsCos_64fc_A50, Cos64<Middle>)
KELVM_UNARY(kelsCos_64fc_A53, Cos64<Full>)

} // namespace kelvm::inline KELVM_BUILD::complex_sinh_cosh
