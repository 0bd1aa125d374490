// Inverse error functions and inverse normal distribution, float (erf/erf_inverse.hpp).
//
// A24 is correctly rounded: double arithmetic, and the evaluation of the 64f_A53 function for the results that lie
// within 2^-44 of a midpoint between two floats. Before, the error is the fit's, 2^-44.5, and at most two roundings:
// the distance, the factor and t are exact. A21 and A11 stay in float arithmetic.
//
// Exceptional inputs as in double. erfinv below 2^-24 is x sqrt(pi) / 2, in double, rounded once.
#include "erf/erf_inverse.hpp"
#include "frame/edges.hpp"
#include "frame/export.hpp"
#include "kelvm/special.h"

namespace kelvm::inline KELVM_BUILD::special_inverse_32f {
namespace {

template <class F, Accuracy A> struct Formula32 : KernelDefaults {
  using Element = float;
  static constexpr float safe_input = 0.25f;
  template <class V> static SignMask<V> special(V x) { return F::special(x); }
  template <class V> static V formula(V x) { return inverse<F, A>(x); }
  /// For one lane in the fast range.
  static float regular(float x) { return formula(x); }
};
template <class F> struct Formula32<F, Accuracy::bits40> : KernelDefaults {
  using Element = float;
  static constexpr float safe_input = 0.25f;
  template <class V> using ResultTest = RoundingTest;
  template <class V> static SignMask<V> special(V x) { return F::special(x); }
  template <class V> static V formula(V x, RoundingTest& test) {
    return in_double_decided<inverse_decided_bits>(
        test, [](auto d) { return inverse<F, Accuracy::bits40>(d); }, x);
  }
  static float regular(float x) {
    const DoubleWord<double> result = inverse_double_word<F>(double(x));
    return round_sum_to_float(result);
  }
};

template <Accuracy A> struct ErfInv32 : Formula32<ErfInv, A> {
  static float element(float x, kelStatus& status) {
    const float size = abs(x);
    if (is_nan(x)) return x + x;
    if (size > 1) return domain_error<float>(status);
    if (size == 1) return pole(status, x);
    if (x == 0) return x;
    if (size < first_regular<float>) return float(double(x) * 0.886226925452758);
    return ErfInv32::regular(x);
  }
};

template <class F, Accuracy A> struct BetweenPoles32 : Formula32<F, A>, PoleAtZero<int(F::sign_at_zero)> {
  static float element(float x, kelStatus& status) {
    if (is_nan(x)) return x + x;
    if (x < 0 || x > F::end) return domain_error<float>(status);
    if (x == 0) return pole(status, F::sign_at_zero);
    if (x == F::end) return pole(status, -F::sign_at_zero);
    const double unit = F::unit(double(x));
    if (unit == 1) return 0.0f;
    if (unit >= first_regular<float>) return BetweenPoles32::regular(x);
    return round_to_float(inverse_tail<F>(unit));
  }
};

} // namespace

using enum Accuracy;

KELVM_UNARY(kelsErfInv_32f_A11, ErfInv32<bits11>)
KELVM_UNARY(kelsErfInv_32f_A21, ErfInv32<bits21>)
KELVM_UNARY(kelsErfInv_32f_A24, ErfInv32<bits40>)
KELVM_UNARY(kelsErfcInv_32f_A11, BetweenPoles32<ErfcInv, bits11>)
KELVM_UNARY(kelsErfcInv_32f_A21, BetweenPoles32<ErfcInv, bits21>)
KELVM_UNARY(kelsErfcInv_32f_A24, BetweenPoles32<ErfcInv, bits40>)
KELVM_UNARY(kelsCdfNormInv_32f_A11, BetweenPoles32<CdfNormInv, bits11>)
KELVM_UNARY(kelsCdfNormInv_32f_A21, BetweenPoles32<CdfNormInv, bits21>)
KELVM_UNARY(kelsCdfNormInv_32f_A24, BetweenPoles32<CdfNormInv, bits40>)

} // namespace kelvm::inline KELVM_BUILD::special_inverse_32f
