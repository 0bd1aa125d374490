// Inverse error functions and inverse normal distribution, float (special/inverse.hpp).
//
// A24 is correctly rounded: double arithmetic, and the evaluation of the 64f_A53 member for the results that lie within
// 2^-44 of a midpoint between two floats. A21 and A11 stay in float arithmetic.
//
// Exceptional inputs as in double. erfinv below 2^-24 is x sqrt(pi) / 2, in double, rounded once.
#include "frame/member.hpp"
#include "kelvm/special.h"
#include "special/inverse.hpp"

namespace kelvm::inline KELVM_BUILD::special_inverse_32f {
namespace {

template <class F, InverseAccuracy A> struct Formula32 : KernelDefaults {
  using Element = float;
  static constexpr float harmless = 0.25f;
  template <class V> static Marks<V> special(V x) { return F::special(x); }
  template <class V> static V formula(V x) { return inverse<F, A>(x); }
  /// For one lane in the fast range.
  static float regular(float x) { return formula(x); }
};
template <class F> struct Formula32<F, InverseAccuracy::a24> : KernelDefaults {
  using Element = float;
  static constexpr float harmless = 0.25f;
  template <class V> using Doubt = MidpointDoubt;
  template <class V> static Marks<V> special(V x) { return F::special(x); }
  template <class V> static V formula(V x, MidpointDoubt& doubt) {
    return in_double_decided<inverse_a24_bits>(
        doubt, [](auto d) { return inverse<F, InverseAccuracy::a24>(d); }, x);
  }
  static float regular(float x) {
    const HeadTail<double> result = inverse_head_tail<F>(double(x));
    return round_sum_to_float(result);
  }
};

template <InverseAccuracy A> struct ErfInv32 : Formula32<ErfInv, A> {
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

template <class F, InverseAccuracy A> struct BetweenPoles32 : Formula32<F, A> {
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

using enum InverseAccuracy;

KELVM_UNARY(kelsErfInv_32f_A11, ErfInv32<a11>)
KELVM_UNARY(kelsErfInv_32f_A21, ErfInv32<a21>)
KELVM_UNARY(kelsErfInv_32f_A24, ErfInv32<a24>)
KELVM_UNARY(kelsErfcInv_32f_A11, BetweenPoles32<ErfcInv, a11>)
KELVM_UNARY(kelsErfcInv_32f_A21, BetweenPoles32<ErfcInv, a21>)
KELVM_UNARY(kelsErfcInv_32f_A24, BetweenPoles32<ErfcInv, a24>)
KELVM_UNARY(kelsCdfNormInv_32f_A11, BetweenPoles32<CdfNormInv, a11>)
KELVM_UNARY(kelsCdfNormInv_32f_A21, BetweenPoles32<CdfNormInv, a21>)
KELVM_UNARY(kelsCdfNormInv_32f_A24, BetweenPoles32<CdfNormInv, a24>)

} // namespace kelvm::inline KELVM_BUILD::special_inverse_32f
