// tanh (hyperbolic/tanh.hpp). Double A53: 2^-57 before the one rounding. Float A24 is correctly rounded: double
// arithmetic, with the error of e^2x - 1 (2^-45.2, see exp/expm1_32f.cpp) and two roundings, and a second evaluation to
// 2^-57 for the results that lie within 2^-42 of a midpoint between two floats. A21 and A11 stay in float arithmetic,
// as x times a rational function of x^2 up to 7.9 or 6 and 1 from there on, within 2^-21.7 or 2^-16. Exceptional
// inputs: NaNs, quieted.
#include "hyperbolic/tanh.hpp"
#include "exact/rounding_test.hpp"
#include "frame/export.hpp"
#include "hyperbolic/tanh_tables.hpp"
#include "kelvm/hyperbolic.h"

namespace kelvm::inline KELVM_BUILD::tanh {
namespace {

/// 1 - tanh 10 is below 2^-27.
constexpr float saturated = 10;

template <class T> struct Tanh : KernelDefaults {
  using Element = T;
  static constexpr bool spurious_underflow = true; // x^2 of a tiny x, a subnormal result
  static constexpr Magnitudes ordinary{sizeof(T) == 8 ? 0x1p-60 : 0x1p-28, largest_finite<T>};
  template <class V> static SignMask<V> special(V x) { return above(abs(x), infinity<T>); }
  static T element(T x, kelStatus&) { return x + x; }
};

template <Accuracy A> struct TanhDouble : Tanh<double> {
  template <class V> static V formula(V x) {
    return with_sign(tanh_positive<A>(tanh_clamped(x, tanh_saturated)), sign_of(x));
  }
};

struct TanhA24 : Tanh<float> {
  template <class V> using ResultTest = RoundingTest;
  template <class V> static V formula(V x, RoundingTest& test) {
    const V y = in_double_decided<42>(
        test, [](auto d) { return tanh_positive<Accuracy::bits40>(d); }, tanh_clamped(x, saturated));
    return with_sign(y, sign_of(x));
  }
  static float element(float x, kelStatus&) {
    if (is_nan(x)) return x + x;
    const Quotient<double> y = tanh_quotient(double(tanh_clamped(x, saturated)));
    return with_sign(round_sum_to_float(y.double_word()), sign_of(x));
  }
};
template <auto& Numerator, auto& Denominator> struct TanhSingle : Tanh<float> {
  static constexpr float limit = std::size(Numerator) > 3 ? 7.9f : 6.0f;
  template <class V> static V formula(V x) {
    const V t = tanh_clamped(x, limit), z = t * t;
    const V y = t * horner(z, Numerator) / horner(z, Denominator);
    return with_sign(select(t < splat<V>(limit), y, splat<V>(1)), sign_of(x));
  }
};
using TanhA21 = TanhSingle<tanh_tables::numerator_bits21, tanh_tables::denominator_bits21>;
using TanhA11 = TanhSingle<tanh_tables::numerator_bits11, tanh_tables::denominator_bits11>;

} // namespace

KELVM_UNARY(kelsTanh_32f_A11, TanhA11)
KELVM_UNARY(kelsTanh_32f_A21, TanhA21)
KELVM_UNARY(kelsTanh_32f_A24, TanhA24)
KELVM_UNARY(kelsTanh_64f_A26, TanhDouble<Accuracy::bits27>)
KELVM_UNARY(kelsTanh_64f_A50, TanhDouble<Accuracy::bits50>)
KELVM_UNARY(kelsTanh_64f_A53, TanhDouble<Accuracy::full>)

} // namespace kelvm::inline KELVM_BUILD::tanh
