// Complex exponential: e^(x + iy) = e^x cos y + i e^x sin y.
//
//          e^x                    cos y, sin y            products         error
//   A53    head of 26 bits, rest  head of 26 bits, rest   one rounding     0.52 ulp a part
//   A50    rounded                rounded                 rounded          2^-51 by norm
//   A26    2^-28                  2^-33                   rounded          2^-28 by norm
//   A24    2^-33, in double       2^-33, in double        rounded once     0.51 ulp a part
//   A21    2^-22.5 in float       2^-23 in float          rounded          2^-22 by norm
//   A11    2^-13 in float         2^-16 in float          rounded          2^-12.6 by norm
//
// At full precision e^x is unscaled until the product is made.
//
// element() computes what is beyond |x| = 708 (650 at full precision, 87 or 88 for floats) with the power of two apart,
// so that e^x may overflow where its product with a small sine does not; large angles; tiny ones, whose product with a
// rest would underflow; infinities and NaNs.
#include "complex/plane.hpp"
#include "frame/export.hpp"
#include "kelvm/complex.h"

namespace kelvm::inline KELVM_BUILD::complex_exponential {
namespace {

struct Exp {
  template <class P> static constexpr double last = P::largest_exponent;

  template <class P, Angles A, class V> static Pair<V> formula(V x, V y) {
    const auto e = P::exponential(x);
    const auto c = P::template circular<A>(abs(y));
    return {e.times(c.even), flip_sign(e.times(c.odd), sign_of(y))};
  }
  static Pair<double> any(double x, double y) {
    const ScaledSum e = any_exponential(x);
    const EvenOdd<ScaledSum> c = any_circular(y);
    return {any_product(Part::real, e, c.even), any_product(Part::imaginary, e, c.odd)};
  }
};

template <class P> using Exp32 = PlaneFunction<Exp, float, P>;
template <class P> using Exp64 = PlaneFunction<Exp, double, P>;

} // namespace

KELVM_UNARY(kelsExp_32fc_A11, Exp32<SingleA11>)
KELVM_UNARY(kelsExp_32fc_A21, Exp32<SingleA21>)
KELVM_UNARY(kelsExp_32fc_A24, Exp32<ShortA24>)
KELVM_UNARY(kelsExp_64fc_A26, Exp64<ShortA26>)
KELVM_UNARY(kelsExp_64fc_A50, Exp64<Middle>)
KELVM_UNARY(kelsExp_64fc_A53, Exp64<Full>)

} // namespace kelvm::inline KELVM_BUILD::complex_exponential
