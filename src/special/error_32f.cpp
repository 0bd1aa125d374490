// Error function, its complement and the normal distribution function, float (special/error.hpp).
//
// A24 is correctly rounded: double arithmetic, and the evaluation of the 64f_A53 member for the results that lie within
// 2^-40 of a midpoint between two floats. A21 and A11 stay in float arithmetic.
//
// Exceptional inputs as in double.
#include "frame/member.hpp"
#include "kelvm/special.h"
#include "special/error.hpp"

namespace kelvm::inline KELVM_BUILD::error_32f {
namespace {

struct ErfSpecial : KernelDefaults {
  using Element = float;
  template <class V> static Marks<V> special(V x) { return nan_or_tiny(x); }
  /// The complete function, correctly rounded.
  static float element(float x, kelStatus&) {
    if (is_nan(x)) return x + x;
    const HeadTail<double> y = erf_head_tail(at_most(double(abs(x)), erf_saturated<double>));
    return with_sign(round_sum_to_float(y), sign_of(x));
  }
};
template <ErrorAccuracy A> struct Erf32 : ErfSpecial {
  static constexpr bool stray_underflow = true; // squares of tiny arguments
  template <class V> static Marks<V> special(V x) { return above(abs(x), infinity<float>); }
  template <class V> static V formula(V x) { return with_sign(erf_positive<A>(abs(x)), sign_of(x)); }
};
template <> struct Erf32<ErrorAccuracy::a24> : ErfSpecial {
  static constexpr int vectors_in_flight = 2;
  template <class V> using Doubt = MidpointDoubt;
  template <class V> static V formula(V x, MidpointDoubt& doubt) {
    const auto f = [](auto d) { return erf_positive<ErrorAccuracy::a24>(d); };
    return with_sign(in_double_decided<erf_a24_bits>(doubt, f, abs(x)), sign_of(x));
  }
};

struct Single : KernelDefaults {
  using Element = float;
  static constexpr bool stray_underflow = true;
};

template <class F> struct ComplementSpecial : Single {
  template <class V> static Marks<V> special(V x) { return beyond_tail<F>(x); }
  /// The complete function, correctly rounded.
  static float element(float x, kelStatus& status) {
    if (is_nan(x)) return x + x;
    const float a = abs(x);
    const bool opposite = is_opposite<F>(x) != 0;
    if (a >= F::template first_zero<float>) {
      if (opposite) return float(F::whole);
      return a == infinity<float> ? 0.0f : underflow(status, 0.0f);
    }
    const ErrorTail<double> tail = error_tail<F>(double(a));
    const double scale = tail.power.scaled(1.0);
    HeadTail<double> y = fast_two_sum(tail.value.head * scale, tail.value.tail * scale);
    if (opposite) {
      const HeadTail<double> rest = fast_two_sum(double(F::whole), -y.head);
      y = fast_two_sum(rest.head, rest.tail - y.tail);
    } else if (a > F::template last_normal<float>) {
      return underflow(status, round_to_float(y));
    }
    return round_to_float(y);
  }
};
template <class F, ErrorAccuracy A> struct Complement32 : ComplementSpecial<F> {
  template <class V> static V formula(V x) { return error_complement<F, A>(x); }
};
template <class F> struct Complement32<F, ErrorAccuracy::a24> : ComplementSpecial<F> {
  static constexpr int vectors_in_flight = 2;
  template <class V> using Doubt = MidpointDoubt;
  template <class V> static V formula(V x, MidpointDoubt& doubt) {
    const auto f = [](auto d) { return error_complement<F, ErrorAccuracy::a24>(d); };
    return in_double_decided<error_complement_a24_bits>(doubt, f, x);
  }
};

} // namespace

using enum ErrorAccuracy;

KELVM_UNARY(kelsErf_32f_A11, Erf32<a11>)
KELVM_UNARY(kelsErf_32f_A21, Erf32<a21>)
KELVM_UNARY(kelsErf_32f_A24, Erf32<a24>)
KELVM_UNARY(kelsErfc_32f_A11, Complement32<Erfc, a11>)
KELVM_UNARY(kelsErfc_32f_A21, Complement32<Erfc, a21>)
KELVM_UNARY(kelsErfc_32f_A24, Complement32<Erfc, a24>)
KELVM_UNARY(kelsCdfNorm_32f_A11, Complement32<CdfNorm, a11>)
KELVM_UNARY(kelsCdfNorm_32f_A21, Complement32<CdfNorm, a21>)
KELVM_UNARY(kelsCdfNorm_32f_A24, Complement32<CdfNorm, a24>)

} // namespace kelvm::inline KELVM_BUILD::error_32f
