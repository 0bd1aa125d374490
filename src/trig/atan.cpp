// Arc tangent, but for A21 and A11 computed of |x|.
//
// Double (trig/atan_core.hpp): for A53 atan c has a tail, and r is below 2^-7 of the result, so that its three
// roundings cost 0.03 ulp together. Where c = 0 nothing but the final sum and a term below 2^-9 of it is rounded. A50
// and A26 do without tails, with five coefficients (four without fused operations) and two.
//
// Float A24: in double with the fit's error, 2^-42.3, and at most eight roundings (four of r, which is no larger than
// the result; the table, three operations): 2^-42.2. 2^-40 decides the rounding to float of all but one element in
// 30000; the others are computed to 2^-56 and rounded once: correctly rounded everywhere. A21 and A11: in float
// arithmetic, without a table: atan x = pi/2 - atan(1/x) where |x| > 1, and an odd polynomial on [-1, 1]. The pi/2 is
// the float below pi/2, so that no finite x gives more. Errors 2^-21.2 and 2^-11.9.
//
// Exceptional inputs: infinities give pi/2 rounded, which is what doubles from 2^900 on are rounded to as well; NaN is
// quieted.
#include "exact/rounding_test.hpp"
#include "frame/export.hpp"
#include "kelvm/trig.h"
#include "trig/atan_core.hpp"

namespace kelvm::inline KELVM_BUILD::atan {
namespace {

template <class T> struct Atan : KernelDefaults {
  using Element = T;
  static constexpr bool spurious_underflow = true; // powers and reciprocals
  template <class V> static SignMask<V> special(V x) {
    return above(abs(x), sizeof(T) == 8 ? T(0x1p900) : largest_finite<T>);
  }
  static T element(T x, kelStatus&) { return is_nan(x) ? x + x : with_sign(T(pi_hi / 2), sign_of(x)); }
};

template <Accuracy A> struct AtanDouble : Atan<double> {
  static constexpr Magnitudes ordinary{0x1p-60, 0x1p900};
  template <class V> static V formula(V x) { return flip_sign(arc_tangent<A>(abs(x)), sign_of(x)); }
};

struct AtanA24 : Atan<float> {
  static constexpr int vectors_in_flight = 3;
  static constexpr bool spurious_underflow = false;
  template <class V> using ResultTest = RoundingTest;
  template <class V> static V formula(V x, RoundingTest& test) {
    const V y = in_double_decided<40>(
        test, [](auto t) { return arc_tangent<Accuracy::bits40>(t); }, abs(x));
    return flip_sign(y, sign_of(x));
  }
  static float element(float x, kelStatus& status) {
    if (any(special(x))) return Atan::element(x, status);
    const DoubleWord<double> y = angle<Accuracy::full>(double(x), 1.0);
    return round_sum_to_float(y);
  }
};

template <auto& Series> struct AtanSingle : Atan<float> {
  static constexpr Magnitudes ordinary{0x1p-28, 0x1p28};
  template <class V> static V formula(V x) {
    const V one = splat<V>(1);
    const auto steep = abs(x) > one;
    const V q = select(steep, splat<V>(-1), x) / select(steep, x, one);
    const V turn = with_sign(zero_unless(steep, splat<V>(pi_below<float> / 2)), sign_of(x));
    return mul_add(q, atan_ratio<Series>(q * q), turn);
  }
};

} // namespace

KELVM_UNARY(kelsAtan_32f_A11, AtanSingle<inverse_trig::atan_bits11>)
KELVM_UNARY(kelsAtan_32f_A21, AtanSingle<inverse_trig::atan_bits21>)
KELVM_UNARY(kelsAtan_32f_A24, AtanA24)
KELVM_UNARY(kelsAtan_64f_A26, AtanDouble<Accuracy::bits27>)
KELVM_UNARY(kelsAtan_64f_A50, AtanDouble<Accuracy::bits50>)
KELVM_UNARY(kelsAtan_64f_A53, AtanDouble<Accuracy::full>)

} // namespace kelvm::inline KELVM_BUILD::atan
