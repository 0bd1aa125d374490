// e^x - 1 of floats (exp/exp_core.hpp). A24 is correctly rounded: double arithmetic, and a second evaluation to 2^-58
// for the results that lie within 2^-42 of a midpoint between two floats. A21 and A11 stay in float arithmetic. The
// result has the sign of x, -0 included.
//
// The error of A24 before it is rounded: with k = +-1, |x| from ln 2 / 64 on, the table value's 2^-53 is 2^-46.5 of the
// result, the fit's 2^-46, and other roundings are four of the result: 2^-45.2. From there on the two fall, and the
// reduction's 2^-52 |x| rises to 2^-45.5.
//
// Exceptional inputs: an overflow beyond 88.72; -inf gives -1, +inf stays, NaN is quieted.
#include "exact/rounding_test.hpp"
#include "exp/exp_core.hpp"
#include "frame/edges.hpp"
#include "frame/export.hpp"
#include "kelvm/exp.h"

namespace kelvm::inline KELVM_BUILD::expm1_32f {
namespace {

constexpr float covered = 87;

float correctly_rounded(float x, kelStatus& status) {
  if (is_nan(x)) return x + x;
  if (x < -covered) return -1;
  if (x == infinity<float>) return x;
  if (x > 89) return overflow(status, x);
  const Expm1Parts<double> y = expm1_full(double(x));
  const DoubleWord<double> sum = fast_two_sum(y.hi, y.lo);
  const float result = round_to_float(DoubleWord<double>{sum.hi * y.scale, sum.lo * y.scale});
  return result == infinity<float> ? overflow(status, x) : result;
}

struct Expm1A24 : KernelDefaults, ExponentialOfInfinities<-1> {
  using Element = float;
  static constexpr bool spurious_underflow = true; // a subnormal result, which is x
  template <class V> using ResultTest = RoundingTest;
  template <class V> static SignMask<V> special(V x) { return above(abs(x), covered); }
  template <class V> static V formula(V x, RoundingTest& test) {
    const V y = in_double_decided<42>(
        test, [](auto d) { return exp_minus_1<Accuracy::bits40>(d); }, x);
    return with_sign(y, sign_of(x));
  }
  static float element(float x, kelStatus& status) { return correctly_rounded(x, status); }
};

template <Accuracy A> struct Expm1Single : KernelDefaults, ExponentialOfInfinities<-1> {
  using Element = float;
  static constexpr bool spurious_underflow = true; // x^2 of a tiny x
  static constexpr Magnitudes ordinary{0x1p-28, covered};
  template <class V> static SignMask<V> special(V x) { return above(abs(x), covered); }
  template <class V> static V formula(V x) {
    // Products with small scales would underflow, and the result is -1 from -18 on.
    const V not_small = has_fused ? x : larger_of(x, splat<V>(-32));
    return with_sign(float_exp_minus_1<A>(not_small), sign_of(x));
  }
  static float element(float x, kelStatus& status) { return correctly_rounded(x, status); }
};

} // namespace

KELVM_UNARY(kelsExpm1_32f_A11, Expm1Single<Accuracy::bits11>)
KELVM_UNARY(kelsExpm1_32f_A21, Expm1Single<Accuracy::bits21>)
KELVM_UNARY(kelsExpm1_32f_A24, Expm1A24)

} // namespace kelvm::inline KELVM_BUILD::expm1_32f
