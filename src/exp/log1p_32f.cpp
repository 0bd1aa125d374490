// ln(1 + x) of floats (exp/log_core.hpp). A24 is correctly rounded as the logarithm is, whose error grows by one
// rounding, that of c / 2^k - 1. The result has the sign of x, -0 included.
//
// Exceptional inputs: -1 is a pole, what is below a domain error, +inf stays, NaN is quieted.
#include "exact/rounding_test.hpp"
#include "exp/log_core.hpp"
#include "frame/export.hpp"
#include "kelvm/exp.h"
#include "simd/magnitude_test.hpp"

namespace kelvm::inline KELVM_BUILD::log1p_32f {
namespace {

/// The lanes of all but -1 < x < 2^127.
template <class V> SignMask<V> out_of_domain(V x) { return not_normal_positive(1.0f + x); }
template <class F> float in_domain(float x, kelStatus& status, F inside) {
  if (is_nan(x)) return x + x;
  if (x == -1) return pole(status, -1.0f);
  if (x < -1) return domain_error<float>(status);
  if (x == infinity<float>) return x;
  return inside(double(x));
}

struct Log1p : KernelDefaults {
  using Element = float;
  template <class V> static bool may_be_unusual(V x) { return any_sum_with_1_outside(0x1p-24f, 0x1p60f, x); }
};

struct Log1pA24 : Log1p {
  static constexpr bool spurious_underflow = true; // a subnormal result, which is x
  template <class V> using ResultTest = RoundingTest;
  /// The lanes of all but -1 < x < 2^126: 2^-k is a normal float.
  template <class V> static SignMask<V> special(V x) {
    const V sum = 1.0f + x;
    return bit_cast<SignMask<V>>((bits(sum) - 0x00800000u) | (0x7E7FFFFFu - bits(sum)));
  }
  template <class V> static V formula(V x, RoundingTest& test) {
    const auto sum = log_reduce_floats<CorrectRows>(1.0f + x); // its row is near enough
    const V inverse_power = bit_cast<V>((127 - sum.k) << 23);
    return with_sign(narrow_decided<42>(test, of_half<0>(x, sum, inverse_power), of_half<1>(x, sum, inverse_power)),
                     sign_of(x));
  }
  static float element(float x, kelStatus& status) {
    return in_domain(x, status, [](double d) { return round_sum_to_float(logarithm_1p_double_word(d)); });
  }

private:
  template <int Half, class V>
  static Native<double> of_half(V x, const LogReducedFloats<CorrectRows>& sum, V inverse_power) {
    const auto reduced = sum.template half<Half>();
    return logarithm_1p_of<Accuracy::bits40, CorrectRows>(widen<Half>(x), reduced.k, reduced.row,
                                                          widen<Half>(inverse_power));
  }
};

template <Accuracy A> struct Log1pSingle : Log1p {
  static constexpr bool spurious_underflow = true; // x^2 of a tiny x
  template <class V> static SignMask<V> special(V x) { return out_of_domain(x); }
  template <class V> static V formula(V x) { return with_sign(float_logarithm_1p<A>(x), sign_of(x)); }
  static float element(float x, kelStatus& status) {
    return in_domain(x, status, [](double d) { return float(logarithm_1p<Accuracy::bits40>(d)); });
  }
};

} // namespace

KELVM_UNARY(kelsLog1p_32f_A11, Log1pSingle<Accuracy::bits11>)
KELVM_UNARY(kelsLog1p_32f_A21, Log1pSingle<Accuracy::bits21>)
KELVM_UNARY(kelsLog1p_32f_A24, Log1pA24)

} // namespace kelvm::inline KELVM_BUILD::log1p_32f
