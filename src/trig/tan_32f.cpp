// Tangent, float.
//
// A24: in double as the short forms of tangent.hpp, with the fit's error, 2^-47, and less than eight roundings (of r,
// t, sum, difference and quotient, and the table's, which counts twice where t is half of T): 2^-46.8. 2^-46 decides
// the rounding to float of all but one element in two million; the others are computed to 2^-58 and rounded once:
// correctly rounded everywhere. |x| >= 90112 likewise, by another reduction (trig/large_floats.hpp). Computed of |x|,
// so that rounding cannot make it other than odd.
//
// A21, A11: in single precision as a quotient of polynomials of r, of degrees 3 and 4, or 3 and 2; pi/2 in four parts,
// or in three where products are fused. Error 2^-21.7 and 2^-17, next to zeros and poles as well. |x| > 10000 as at
// A24.
#include "exact/rounding_test.hpp"
#include "frame/export.hpp"
#include "kelvm/trig.h"
#include "trig/large_floats.hpp"
#include "trig/tangent.hpp"

namespace kelvm::inline KELVM_BUILD::tan_32f {
namespace {

/// tan x of a large float: a multiple of pi/32, in the last bits of a sum, and a remainder.
template <class V> inline V tangent_of_large(V x) {
  constexpr double round_to_32nds = rounding_constant<double> / 32;
  const HalfTurnsOfLarge<V> turns(x);
  const V shifted = turns.rounded() + round_to_32nds;
  return short_tangent(turns.less(shifted - round_to_32nds) * pi_hi, int_bits(shifted), tangent_4);
}

struct Tan32 : KernelDefaults {
  using Element = float;
  static constexpr bool spurious_underflow = true; // powers of small remainders
  static constexpr bool has_wide_formula = true;
  template <class V> using WideResultTest = RoundingTest;

  template <class V> static V nan_result(V) { return splat<V>(default_nan<float>()); }
  static float element(float x, kelStatus& status) {
    if (is_nan(x)) return nan_result(x);
    if (is_infinite(x)) return domain_error<float>(status);
    return round_to_float(tangent_of(x));
  }
};

struct TanA24 : Tan32 {
  static constexpr int vectors_in_flight = few_vectors_in_flight;
  template <class V> using ResultTest = RoundingTest;

  static constexpr float last = 0x1.5ffffep+16f; // below 90112
  static constexpr Magnitudes ordinary{0x1p-28, last};
  template <class V> static SignMask<V> special(V x) { return above(abs(x), last); }
  template <class V> static V wide_formula(V x, RoundingTest& test) {
    return of_any_size(
        x, last, test, [](auto x) { return tangent_of_large(x); }, [&](V x) { return formula(x, test); });
  }
  template <class V> static V formula(V x, RoundingTest& test) {
    const V y = in_double_decided<46>(
        test,
        [](auto x) {
          const auto shifted = x * thirty_two_over_pi + rounding_constant<double>;
          return short_tangent(remainder_of_float(x, shifted - rounding_constant<double>), int_bits(shifted),
                               tangent_3);
        },
        abs(x));
    return flip_sign(y, sign_of(x));
  }
};

template <auto& Numerator, auto& Denominator> struct TanSingle : Tan32 {
  static constexpr int vectors_in_flight = 3;
  static constexpr float last = 10000;
  static constexpr Magnitudes ordinary{0x1p-28, last};
  template <class V> static SignMask<V> special(V x) { return above(abs(x), last); }
  template <class V> static V wide_formula(V x, RoundingTest& test) {
    return of_any_size(
        x, last, test, [](auto x) { return tangent_of_large(x); }, [](V x) { return formula(x); });
  }
  template <class V> static V formula(V x) { return tangent_quotient(quarter_turns(x), Numerator, Denominator); }
};

} // namespace

KELVM_UNARY(kelsTan_32f_A11, TanSingle<tangent_11_numerator, tangent_11_denominator>)
KELVM_UNARY(kelsTan_32f_A21, TanSingle<tangent_21_numerator, tangent_21_denominator>)
KELVM_UNARY(kelsTan_32f_A24, TanA24)

} // namespace kelvm::inline KELVM_BUILD::tan_32f
