// Inverse error functions and inverse normal distribution, double (erf/erf_inverse.hpp).
//
// Exceptional inputs: the poles give an infinity, what lies beyond them a domain error, a NaN comes back quiet. erfinv
// keeps zeros, and below 2^-53 is x sqrt(pi) / 2, rounded once also where that is subnormal. The zeros of the others
// are +0.
#include "erf/erf_inverse.hpp"
#include "frame/edges.hpp"
#include "frame/export.hpp"
#include "kelvm/special.h"

namespace kelvm::inline KELVM_BUILD::special_inverse_64f {
namespace {

template <Accuracy A> struct Inverse64 : KernelDefaults {
  using Element = double;
  static constexpr int vectors_in_flight = A == Accuracy::bits27 ? few_vectors_in_flight : 4;
  static constexpr float safe_input = 0.25f;
};

template <Accuracy A> struct ErfInv64 : Inverse64<A> {
  template <class V> static SignMask<V> special(V x) { return ErfInv::special(x); }
  template <class V> static V formula(V x) { return inverse<ErfInv, A>(x); }
  static double element(double x, kelStatus& status) {
    const double size = abs(x);
    if (is_nan(x)) return x + x;
    if (size > 1) return domain_error<double>(status);
    if (size == 1) return pole(status, x);
    if (x == 0) return x;
    if (size < first_regular<double>) return tiny_product(x, 0.88623046875, -3.543297241986351e-6);
    return formula(x);
  }
};

template <class F, Accuracy A> struct BetweenPoles64 : Inverse64<A>, PoleAtZero<int(F::sign_at_zero)> {
  template <class V> static SignMask<V> special(V x) { return F::special(x); }
  template <class V> static V formula(V x) { return inverse<F, A>(x); }
  static double element(double x, kelStatus& status) {
    if (is_nan(x)) return x + x;
    if (x < 0 || x > F::end) return domain_error<double>(status);
    if (x == 0) return pole(status, double(F::sign_at_zero));
    if (x == F::end) return pole(status, double(-F::sign_at_zero));
    const double unit = F::unit(x);
    if (unit == 1) return 0.0;
    if (unit >= first_regular<double>) return formula(x);
    const DoubleWord<double> result = inverse_tail<F>(unit);
    return rounded(result);
  }
};

} // namespace

using enum Accuracy;

KELVM_UNARY(kelsErfInv_64f_A26, ErfInv64<bits27>)
KELVM_UNARY(kelsErfInv_64f_A50, ErfInv64<bits50>)
KELVM_UNARY(kelsErfInv_64f_A53, ErfInv64<full>)
KELVM_UNARY(kelsErfcInv_64f_A26, BetweenPoles64<ErfcInv, bits27>)
KELVM_UNARY(kelsErfcInv_64f_A50, BetweenPoles64<ErfcInv, bits50>)
KELVM_UNARY(kelsErfcInv_64f_A53, BetweenPoles64<ErfcInv, full>)
KELVM_UNARY(kelsCdfNormInv_64f_A26, BetweenPoles64<CdfNormInv, bits27>)
KELVM_UNARY(kelsCdfNormInv_64f_A50, BetweenPoles64<CdfNormInv, bits50>)
KELVM_UNARY(kelsCdfNormInv_64f_A53, BetweenPoles64<CdfNormInv, full>)

} // namespace kelvm::inline KELVM_BUILD::special_inverse_64f
