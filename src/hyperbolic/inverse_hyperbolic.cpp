// asinh, acosh and atanh (hyperbolic/inverse_hyperbolic.hpp). asinh and atanh are computed of |x|; signs are put back
// at the end.
//
// Double: A53 rounds a double-word once; A50 and A26 compute in double numbers. From 2^340 on asinh and acosh are ln
// 2x, one element at a time.
//
// Float: A24 is correctly rounded: double arithmetic, and a second evaluation as double-words for the results within
// 2^-42 of a midpoint between two floats. Before, asinh has the error of its series, 2^-45, or of the logarithm,
// 2^-44.1, and of the sum of x and the root, 5/2 2^-53, which is 2^-45.7 of the result next to 2^-6: 2^-43.6; acosh and
// atanh have that of ln(1 + y) and three roundings of y: 2^-44. A21 and A11 stay in float arithmetic where x^3 does.
//
// Exceptional inputs: acosh below 1 and atanh beyond +-1 are domain errors, atanh has poles at +-1; infinities of asinh
// and acosh stay; NaNs are quieted.
#include "hyperbolic/inverse_hyperbolic.hpp"
#include "exact/rounding_test.hpp"
#include "frame/export.hpp"
#include "kelvm/hyperbolic.h"

namespace kelvm::inline KELVM_BUILD::inverse_hyperbolic {
namespace {

/// What the functions differ in. outside_of: the lanes outside the domain or above `last`. ordinary: the magnitudes
/// from `tiny` on for which there are none. element: the complete function, where scalar(x) computes it of a positive
/// ordinary x.
struct OfAsinh {
  static constexpr float safe_input = 1;
  static constexpr Magnitudes ordinary(double tiny, double last) { return {tiny, last}; }
  template <class V> static SignMask<V> outside_of(V x, Lane<V> last) { return above(abs(x), last); }
  template <class V> static V even_part(V x) { return abs(x); }
  template <class V> static V with_its_sign(V y, V x) { return with_sign(y, sign_of(x)); }
  template <class T, class F> static T element(T x, kelStatus&, F scalar) {
    if (is_nan(x) || abs(x) == infinity<T>) return x + x;
    return with_its_sign(scalar(abs(x)), x);
  }
  template <Accuracy A, class V> static V of(V x) { return asinh_positive<A>(x); }
  static DoubleWord<double> double_word(double x) { return asinh_double_word(x); }
};
struct OfAcosh {
  static constexpr float safe_input = 1;
  static constexpr Magnitudes ordinary(double, double last) { return {1, last, false}; }
  template <class V> static SignMask<V> outside_of(V x, Lane<V> last) { return outside(x, Lane<V>(1), last); }
  template <class V> static V even_part(V x) { return x; }
  template <class V> static V with_its_sign(V y, V) { return y; }
  template <class T, class F> static T element(T x, kelStatus& status, F scalar) {
    if (is_nan(x)) return x + x;
    if (x < 1) return domain_error<T>(status);
    return x == infinity<T> ? x : scalar(x);
  }
  template <Accuracy A, class V> static V of(V x) { return acosh<A>(x); }
  static DoubleWord<double> double_word(double x) { return acosh_double_word(x); }
};
struct OfAtanh {
  static constexpr float safe_input = 0.5f;
  static constexpr Magnitudes ordinary(double tiny, double) { return {tiny, below_one<float>}; }
  template <class V> static SignMask<V> outside_of(V x, Lane<V>) { return above(abs(x), below_one<Lane<V>>); }
  template <class V> static V even_part(V x) { return abs(x); }
  template <class V> static V with_its_sign(V y, V x) { return with_sign(y, sign_of(x)); }
  template <class T, class F> static T element(T x, kelStatus& status, F scalar) {
    if (is_nan(x)) return x + x;
    if (abs(x) == 1) return pole(status, x);
    if (abs(x) > 1) return domain_error<T>(status);
    return with_its_sign(scalar(abs(x)), x);
  }
  template <Accuracy A, class V> static V of(V x) { return atanh_positive<A>(x); }
  static DoubleWord<double> double_word(double x) { return atanh_double_word(x); }
};

template <class F, class T> struct Inverse : KernelDefaults {
  using Element = T;
  static constexpr bool spurious_underflow = true; // x^2 of a tiny x, a subnormal result
  static constexpr float safe_input = F::safe_input;
};

/// Up to the largest argument of which the arithmetic can take the cube.
template <class F, Accuracy A> struct Double : Inverse<F, double> {
  static constexpr Magnitudes ordinary = F::ordinary(0x1p-60, 0x1p340);
  template <class V> static SignMask<V> special(V x) { return F::outside_of(x, 0x1p340); }
  template <class V> static V formula(V x) { return F::with_its_sign(F::template of<A>(F::even_part(x)), x); }
  static double element(double x, kelStatus& status) { return F::element(x, status, ln_of_twice<A>); }
};

template <class F> struct Float : Inverse<F, float> {
  static float element(float x, kelStatus& status) {
    return F::element(x, status, [](float x) { return round_sum_to_float(F::double_word(double(x))); });
  }
};
template <class F> struct A24 : Float<F> {
  template <class V> using ResultTest = RoundingTest;
  static constexpr Magnitudes ordinary = F::ordinary(smallest_normal<float>, largest_finite<float>);
  template <class V> static SignMask<V> special(V x) { return F::outside_of(x, largest_finite<float>); }
  template <class V> static V formula(V x, RoundingTest& test) {
    const V y = in_double_decided<42>(
        test, [](auto d) { return F::template of<Accuracy::bits40>(d); }, F::even_part(x));
    return F::with_its_sign(y, x);
  }
};
/// Up to such an argument again.
template <class F, Accuracy A> struct InFloat : Float<F> {
  static constexpr Magnitudes ordinary = F::ordinary(0x1p-28, 0x1p42);
  template <class V> static SignMask<V> special(V x) { return F::outside_of(x, 0x1p42f); }
  template <class V> static V formula(V x) { return F::with_its_sign(F::template of<A>(F::even_part(x)), x); }
};

} // namespace

KELVM_UNARY(kelsAsinh_32f_A11, InFloat<OfAsinh, Accuracy::bits11>)
KELVM_UNARY(kelsAsinh_32f_A21, InFloat<OfAsinh, Accuracy::bits21>)
KELVM_UNARY(kelsAsinh_32f_A24, A24<OfAsinh>)
KELVM_UNARY(kelsAsinh_64f_A26, Double<OfAsinh, Accuracy::bits27>)
KELVM_UNARY(kelsAsinh_64f_A50, Double<OfAsinh, Accuracy::bits50>)
KELVM_UNARY(kelsAsinh_64f_A53, Double<OfAsinh, Accuracy::full>)
KELVM_UNARY(kelsAcosh_32f_A11, InFloat<OfAcosh, Accuracy::bits11>)
KELVM_UNARY(kelsAcosh_32f_A21, InFloat<OfAcosh, Accuracy::bits21>)
KELVM_UNARY(kelsAcosh_32f_A24, A24<OfAcosh>)
KELVM_UNARY(kelsAcosh_64f_A26, Double<OfAcosh, Accuracy::bits27>)
KELVM_UNARY(kelsAcosh_64f_A50, Double<OfAcosh, Accuracy::bits50>)
KELVM_UNARY(kelsAcosh_64f_A53, Double<OfAcosh, Accuracy::full>)
KELVM_UNARY(kelsAtanh_32f_A11, InFloat<OfAtanh, Accuracy::bits11>)
KELVM_UNARY(kelsAtanh_32f_A21, InFloat<OfAtanh, Accuracy::bits21>)
KELVM_UNARY(kelsAtanh_32f_A24, A24<OfAtanh>)
KELVM_UNARY(kelsAtanh_64f_A26, Double<OfAtanh, Accuracy::bits27>)
KELVM_UNARY(kelsAtanh_64f_A50, Double<OfAtanh, Accuracy::bits50>)
KELVM_UNARY(kelsAtanh_64f_A53, Double<OfAtanh, Accuracy::full>)

} // namespace kelvm::inline KELVM_BUILD::inverse_hyperbolic
