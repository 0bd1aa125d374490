// e^x - 1 of floats (exp/exp_core.hpp). A24 is correctly rounded: double arithmetic, and a second evaluation to 2^-62
// for the results that lie within 2^-42 of a midpoint between two floats. A21 and A11 stay in float arithmetic. The
// result has the sign of x, -0 included.
//
// Exceptional inputs: an overflow beyond 88.72; -inf gives -1, +inf stays, NaN is quieted.
#include "exact/decided.hpp"
#include "exp/exp_core.hpp"
#include "frame/member.hpp"
#include "kelvm/exp.h"

namespace kelvm::inline KELVM_BUILD::expm1_32f {
namespace {

constexpr float covered = 87;

float correctly_rounded(float x, kelStatus& status) {
  if (is_nan(x)) return x + x;
  if (x < -covered) return -1;
  if (x == infinity<float>) return x;
  if (x > 89) return overflow(status, x);
  const Expm1Parts<double> y = expm1_a53(double(x));
  const HeadTail<double> sum = fast_two_sum(y.head, y.tail);
  const float result = round_to_float(HeadTail<double>{sum.head * y.scale, sum.tail * y.scale});
  return result == infinity<float> ? overflow(status, x) : result;
}

struct Expm1A24 : KernelDefaults {
  using Element = float;
  static constexpr bool stray_underflow = true; // a subnormal result, which is x
  template <class V> using Doubt = MidpointDoubt;
  template <class V> static Marks<V> special(V x) { return above(abs(x), covered); }
  template <class V> static V formula(V x, MidpointDoubt& doubt) {
    const V y = in_double_decided<42>(
        doubt, [](auto d) { return exp_minus_1<Expm1Accuracy::a24>(d); }, x);
    return with_sign(y, sign_of(x));
  }
  static float element(float x, kelStatus& status) { return correctly_rounded(x, status); }
};

template <FloatExpm1Accuracy A> struct Expm1Single : KernelDefaults {
  using Element = float;
  static constexpr bool stray_underflow = true; // x^2 of a tiny x
  template <class V> static Marks<V> special(V x) { return above(abs(x), covered); }
  template <class V> static V formula(V x) { return with_sign(float_exp_minus_1<A>(x), sign_of(x)); }
  static float element(float x, kelStatus& status) { return correctly_rounded(x, status); }
};

} // namespace

KELVM_UNARY(kelsExpm1_32f_A11, Expm1Single<FloatExpm1Accuracy::a11>)
KELVM_UNARY(kelsExpm1_32f_A21, Expm1Single<FloatExpm1Accuracy::a21>)
KELVM_UNARY(kelsExpm1_32f_A24, Expm1A24)

} // namespace kelvm::inline KELVM_BUILD::expm1_32f
