// Arc tangent, float, computed of |x|.
//
// A24: in double (trig/atan_core.hpp) with an error of 2^-41, which decides the rounding to float of all but one
// element in 30000; the others are computed to 2^-56 and rounded once: correctly rounded everywhere.
//
// A21, A11: in float arithmetic, without a table: atan x = pi/2 - atan(1/x) where |x| > 1, and an odd polynomial on
// [-1, 1]. The pi/2 is the float below pi/2, so that no finite x gives more. Errors 2^-22 and 2^-12.
//
// Exceptional inputs: infinities give pi/2 rounded to float; NaN is quieted.
#include "exact/rounding_test.hpp"
#include "frame/export.hpp"
#include "kelvm/trig.h"
#include "trig/atan_core.hpp"

namespace kelvm::inline KELVM_BUILD::atan_32f {
namespace {

struct Atan32f : KernelDefaults {
  using Element = float;
  template <class V> static SignMask<V> special(V x) { return above(abs(x), largest_finite<float>); }
  static float element(float x, kelStatus&) {
    return is_nan(x) ? x + x : with_sign(float(inverse_trig::half_pi_head), sign_of(x));
  }
};

struct AtanA24 : Atan32f {
  static constexpr int vectors_in_flight = 3;
  template <class V> using ResultTest = RoundingTest;
  template <class V> static V formula(V x, RoundingTest& test) {
    const V y = in_double_decided<40>(
        test, [](auto t) { return arc_tangent<Accuracy::bits40>(t); }, abs(x));
    return flip_sign(y, sign_of(x));
  }
  static float element(float x, kelStatus& status) {
    if (any(special(x))) return Atan32f::element(x, status);
    const DoubleWord<double> y = angle<Accuracy::full>(double(x), 1.0);
    return round_sum_to_float(y);
  }
};

template <auto& Series> struct AtanSingle : Atan32f {
  static constexpr bool spurious_underflow = true; // powers and reciprocals
  template <class V> static V formula(V x) {
    const V t = abs(x), one = splat<V>(1);
    const auto steep = t > one;
    const V q = select(steep, splat<V>(-1), t) / select(steep, t, one);
    const V z = q * q;
    return flip_sign(zero_unless(steep, splat<V>(inverse_trig::half_pi_below)) + (q + (q * z) * estrin(z, Series)),
                     sign_of(x));
  }
};

} // namespace

KELVM_UNARY(kelsAtan_32f_A11, AtanSingle<inverse_trig::atan_bits11>)
KELVM_UNARY(kelsAtan_32f_A21, AtanSingle<inverse_trig::atan_bits21>)
KELVM_UNARY(kelsAtan_32f_A24, AtanA24)

} // namespace kelvm::inline KELVM_BUILD::atan_32f
