// asinh, acosh and atanh of floats (hyperbolic/inverse_hyperbolic.hpp). A24 is correctly rounded: double arithmetic,
// and a second evaluation as double-words for the results within 2^-42 of a midpoint between two floats. A21 and A11
// stay in float arithmetic where x^3 does. Signs are put back at the end.
//
// Exceptional inputs: acosh below 1 and atanh beyond +-1 are domain errors, atanh has poles at +-1; infinities of asinh
// and acosh stay; NaNs are quieted.
#include "exact/rounding_test.hpp"
#include "frame/export.hpp"
#include "hyperbolic/inverse_hyperbolic.hpp"
#include "kelvm/hyperbolic.h"

namespace kelvm::inline KELVM_BUILD::hyperbolic_inverse_32f {
namespace {

constexpr float below_one = 0x1.fffffep-1f;
constexpr float largest_cube_root = 0x1p42f;

/// What the functions differ in: the domain, given the largest argument of which the arithmetic can take the cube.
struct OfAsinh {
  template <class V> static SignMask<V> outside_of(V x, float last) { return above(abs(x), last); }
  template <class V> static V even_part(V x) { return abs(x); }
  template <class V> static V with_its_sign(V y, V x) { return with_sign(y, sign_of(x)); }
  static float element(float x, kelStatus&) {
    if (is_nan(x) || abs(x) == infinity<float>) return x + x;
    return with_its_sign(round_sum_to_float(asinh_double_word(double(abs(x)))), x);
  }
  template <Accuracy A, class V> static V in_double(V x) { return asinh_positive<A>(x); }
  template <Accuracy A, class V> static V in_float(V x) { return float_asinh_positive<A>(x); }
};
struct OfAcosh {
  template <class V> static SignMask<V> outside_of(V x, float last) { return outside(x, 1.0f, last); }
  template <class V> static V even_part(V x) { return x; }
  template <class V> static V with_its_sign(V y, V) { return y; }
  static float element(float x, kelStatus& status) {
    if (is_nan(x)) return x + x;
    if (x < 1) return domain_error<float>(status);
    return x == infinity<float> ? x : round_sum_to_float(acosh_double_word(double(x)));
  }
  template <Accuracy A, class V> static V in_double(V x) { return acosh<A>(x); }
  template <Accuracy A, class V> static V in_float(V x) { return float_acosh<A>(x); }
};
struct OfAtanh {
  template <class V> static SignMask<V> outside_of(V x, float) { return above(abs(x), below_one); }
  template <class V> static V even_part(V x) { return abs(x); }
  template <class V> static V with_its_sign(V y, V x) { return with_sign(y, sign_of(x)); }
  static float element(float x, kelStatus& status) {
    if (is_nan(x)) return x + x;
    if (abs(x) == 1) return pole(status, x);
    if (abs(x) > 1) return domain_error<float>(status);
    return with_its_sign(round_sum_to_float(atanh_double_word(double(abs(x)))), x);
  }
  template <Accuracy A, class V> static V in_double(V x) { return atanh_positive<A>(x); }
  template <Accuracy A, class V> static V in_float(V x) { return float_atanh_positive<A>(x); }
};

template <class F> struct A24 : KernelDefaults {
  using Element = float;
  template <class V> using ResultTest = RoundingTest;
  static constexpr bool spurious_underflow = true; // a subnormal result, which is x
  static constexpr float safe_input = std::is_same_v<F, OfAtanh> ? 0.5f : 1.0f;
  template <class V> static SignMask<V> special(V x) { return F::outside_of(x, largest_finite<float>); }
  template <class V> static V formula(V x, RoundingTest& test) {
    const V y = in_double_decided<42>(
        test, [](auto d) { return F::template in_double<Accuracy::bits40>(d); }, F::even_part(x));
    return F::with_its_sign(y, x);
  }
  static float element(float x, kelStatus& status) { return F::element(x, status); }
};

template <class F, Accuracy A> struct InFloat : KernelDefaults {
  using Element = float;
  static constexpr bool spurious_underflow = true; // x^2 of a tiny x
  static constexpr float safe_input = std::is_same_v<F, OfAtanh> ? 0.5f : 1.0f;
  template <class V> static SignMask<V> special(V x) { return F::outside_of(x, largest_cube_root); }
  template <class V> static V formula(V x) { return F::with_its_sign(F::template in_float<A>(F::even_part(x)), x); }
  static float element(float x, kelStatus& status) { return F::element(x, status); }
};

} // namespace

KELVM_UNARY(kelsAsinh_32f_A11, InFloat<OfAsinh, Accuracy::bits11>)
KELVM_UNARY(kelsAsinh_32f_A21, InFloat<OfAsinh, Accuracy::bits21>)
KELVM_UNARY(kelsAsinh_32f_A24, A24<OfAsinh>)
KELVM_UNARY(kelsAcosh_32f_A11, InFloat<OfAcosh, Accuracy::bits11>)
KELVM_UNARY(kelsAcosh_32f_A21, InFloat<OfAcosh, Accuracy::bits21>)
KELVM_UNARY(kelsAcosh_32f_A24, A24<OfAcosh>)
KELVM_UNARY(kelsAtanh_32f_A11, InFloat<OfAtanh, Accuracy::bits11>)
KELVM_UNARY(kelsAtanh_32f_A21, InFloat<OfAtanh, Accuracy::bits21>)
KELVM_UNARY(kelsAtanh_32f_A24, A24<OfAtanh>)

} // namespace kelvm::inline KELVM_BUILD::hyperbolic_inverse_32f
