// Error function, its complement and the normal distribution function, double (erf/erf.hpp).
//
// Exceptional inputs: erf keeps zeros, is +-1 at the infinities, and x 2 / sqrt(pi), rounded once, below 2^-400. A
// result of erfc or Phi below the normal range, zero included, is an underflow; at the infinities the results are 0, 1
// and 2 without a code. A NaN comes back quiet. Far in a tail, remainders may raise an underflow that no result earns.
#include "erf/erf.hpp"
#include "frame/export.hpp"
#include "kelvm/special.h"

namespace kelvm::inline KELVM_BUILD::error_64f {
namespace {

template <Accuracy A> struct Erf64 : KernelDefaults {
  using Element = double;
  static constexpr int vectors_in_flight = A == Accuracy::bits27 ? 4 : 3;
  static constexpr Magnitudes ordinary{0x1p-60, largest_finite<double>};
  template <class V> static SignMask<V> special(V x) { return nan_or_tiny(x); }
  template <class V> static V formula(V x) { return with_sign(erf_positive<A>(abs(x)), sign_of(x)); }
  static double element(double x, kelStatus&) {
    if (is_nan(x)) return x + x;
    return tiny_product(x, 0x1.20dd75p+0, 0x1.0a6db446b8ea4p-30);
  }
};

template <class F, Accuracy A> struct Complement64 : KernelDefaults {
  using Element = double;
  static constexpr int vectors_in_flight = A == Accuracy::bits27 ? 4 : A == Accuracy::bits50 ? 2 : 3;
  static constexpr bool spurious_underflow = true;
  static constexpr Magnitudes ordinary{0x1p-60, 25}; // beyond are remainders of the tail
  template <class V> static SignMask<V> special(V x) { return beyond_tail<F>(x); }
  template <class V> static V formula(V x) { return error_complement<F, A>(x); }
  static double element(double x, kelStatus& status) {
    if (is_nan(x)) return x + x;
    const double a = abs(x);
    if (a == infinity<double>) return 0.0;
    if (a <= F::template last_normal<double>) return end_of_tail<F>(a);
    return underflow(status, a < F::template first_zero<double> ? end_of_tail<F>(a) : 0.0);
  }
};

} // namespace

using enum Accuracy;

KELVM_UNARY(kelsErf_64f_A26, Erf64<bits27>)
KELVM_UNARY(kelsErf_64f_A50, Erf64<bits50>)
KELVM_UNARY(kelsErf_64f_A53, Erf64<full>)
KELVM_UNARY(kelsErfc_64f_A26, Complement64<Erfc, bits27>)
KELVM_UNARY(kelsErfc_64f_A50, Complement64<Erfc, bits50>)
KELVM_UNARY(kelsErfc_64f_A53, Complement64<Erfc, full>)
KELVM_UNARY(kelsCdfNorm_64f_A26, Complement64<CdfNorm, bits27>)
KELVM_UNARY(kelsCdfNorm_64f_A50, Complement64<CdfNorm, bits50>)
KELVM_UNARY(kelsCdfNorm_64f_A53, Complement64<CdfNorm, full>)

} // namespace kelvm::inline KELVM_BUILD::error_64f
