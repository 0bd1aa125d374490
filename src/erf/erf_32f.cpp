// Error function, its complement and the normal distribution function, float (erf/erf.hpp).
//
// A24 is correctly rounded: double arithmetic, and the evaluation of the 64f_A53 function for the results that lie
// within 2^-40 of a midpoint between two floats. A21 and A11 stay in float arithmetic.
//
// The errors of A24 before it is rounded come from the terms that the series of I / t leave out. For erf they are
// 2/15 w^4 and 2/5 w^2 t^2, largest near r = 1.4 and r = 1, 2^-43.5 and 2^-42.3 of the result; five roundings: 2^-41.7.
// For erfc and Phi, of which s t is 2 |w| at most and 8 % more after the step, they are 2/21 w^4 t^2, 1/6 w t^4 and
// 1/315 w^7, with |w| < 0.036 and |t| <= 2^-8: 2^-42.2, 2^-43 and 2^-45.5; the argument of Phi has two roundings, which
// count 168 times at its end, 2^-44.6; three roundings: 2^-41.3.
//
// Exceptional inputs as in double.
#include "erf/erf.hpp"
#include "frame/export.hpp"
#include "kelvm/special.h"

namespace kelvm::inline KELVM_BUILD::error_32f {
namespace {

struct ErfSpecial : KernelDefaults {
  using Element = float;
  static constexpr Magnitudes ordinary{0x1p-28, largest_finite<float>};
  template <class V> static SignMask<V> special(V x) { return nan_or_tiny(x); }
  /// The complete function, correctly rounded.
  static float element(float x, kelStatus&) {
    if (is_nan(x)) return x + x;
    const DoubleWord<double> y = erf_double_word(at_most(double(abs(x)), erf_saturated<double>));
    return with_sign(round_sum_to_float(y), sign_of(x));
  }
};
template <Accuracy A> struct Erf32 : ErfSpecial {
  static constexpr bool spurious_underflow = true; // powers of tiny arguments
  static constexpr Magnitudes ordinary{A == Accuracy::bits11 ? 0x1p-14 : 0x1p-28, largest_finite<float>};
  template <class V> static SignMask<V> special(V x) { return above(abs(x), infinity<float>); }
  template <class V> static V formula(V x) { return with_sign(erf_positive<A>(abs(x)), sign_of(x)); }
};
template <> struct Erf32<Accuracy::bits40> : ErfSpecial {
  static constexpr int vectors_in_flight = 2;
  template <class V> using ResultTest = RoundingTest;
  template <class V> static V formula(V x, RoundingTest& test) {
    const auto f = [](auto d) { return erf_positive<Accuracy::bits40>(d); };
    return with_sign(in_double_decided<erf_decided_bits>(test, f, abs(x)), sign_of(x));
  }
};

template <class F> struct ComplementSpecial : KernelDefaults {
  using Element = float;
  static constexpr Magnitudes ordinary{0x1p-28, F::template in_vectors<float>};
  template <class V> static SignMask<V> special(V x) { return beyond_tail<F>(x); }
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
    DoubleWord<double> y = normalised(scale * tail.value);
    if (opposite) {
      const DoubleWord<double> rest = fast_two_sum(double(F::whole), -y.hi);
      y = fast_two_sum(rest.hi, rest.lo - y.lo);
    } else if (a > F::template last_normal<float>) {
      return underflow(status, round_to_float(y));
    }
    return round_to_float(y);
  }
};
template <class F, Accuracy A> struct Complement32 : ComplementSpecial<F> {
  static constexpr int vectors_in_flight = vector_bytes == 32 ? 2 : 4; // 16 registers, and those of indices
  static constexpr bool spurious_underflow = true;                     // t^2 of a tiny t
  template <class V> static V formula(V x) { return error_complement<F, A>(x); }
};
template <class F> struct Complement32<F, Accuracy::bits40> : ComplementSpecial<F> {
  static constexpr int vectors_in_flight = 2;
  template <class V> using ResultTest = RoundingTest;
  template <class V> static V formula(V x, RoundingTest& test) {
    const auto f = [](auto d) { return error_complement<F, Accuracy::bits40>(d); };
    return in_double_decided<error_complement_decided_bits>(test, f, x);
  }
};

} // namespace

using enum Accuracy;

KELVM_UNARY(kelsErf_32f_A11, Erf32<bits11>)
KELVM_UNARY(kelsErf_32f_A21, Erf32<bits21>)
KELVM_UNARY(kelsErf_32f_A24, Erf32<bits40>)
KELVM_UNARY(kelsErfc_32f_A11, Complement32<Erfc, bits11>)
KELVM_UNARY(kelsErfc_32f_A21, Complement32<Erfc, bits21>)
KELVM_UNARY(kelsErfc_32f_A24, Complement32<Erfc, bits40>)
KELVM_UNARY(kelsCdfNorm_32f_A11, Complement32<CdfNorm, bits11>)
KELVM_UNARY(kelsCdfNorm_32f_A21, Complement32<CdfNorm, bits21>)
KELVM_UNARY(kelsCdfNorm_32f_A24, Complement32<CdfNorm, bits40>)

} // namespace kelvm::inline KELVM_BUILD::error_32f
