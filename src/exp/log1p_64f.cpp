// ln(1 + x) of doubles (exp/log_core.hpp): the logarithm of the rounded sum, whose rounding error joins the reduced
// argument. The result has the sign of x, -0 included.
//
// Exceptional inputs: -1 is a pole, what is below a domain error, +inf stays, NaN is quieted. From 2^1000 on ln x is
// ln(1 + x).
#include "exp/log_core.hpp"
#include "frame/export.hpp"
#include "kelvm/exp.h"
#include "simd/magnitude_test.hpp"

namespace kelvm::inline KELVM_BUILD::log1p_64f {
namespace {

template <Accuracy A> struct Log1p64f : KernelDefaults {
  using Element = double;
  static constexpr bool spurious_underflow = true; // x^2 of a tiny x, 1 / x of a large one
  template <class V> static SignMask<V> special(V x) {
    const V sum = 1.0 + x;
    return bit_cast<SignMask<V>>((bits(sum) - 1u) | (0x7E70000000000000u - bits(sum)));
  }
  template <class V> static bool may_be_unusual(V x) { return any_sum_with_1_outside(0x1p-53, 0x1p60, x); }
  template <class V> static V formula(V x) { return with_sign(logarithm_1p<A>(x), sign_of(x)); }
  static double element(double x, kelStatus& status) {
    if (is_nan(x)) return x + x;
    if (x == -1) return pole(status, -1.0);
    if (x < -1) return domain_error<double>(status);
    if (x == infinity<double>) return x;
    return logarithm<Natural, A>(log_reduce<LogRows<A>>(x));
  }
};

} // namespace

KELVM_UNARY(kelsLog1p_64f_A26, Log1p64f<Accuracy::bits27>)
KELVM_UNARY(kelsLog1p_64f_A50, Log1p64f<Accuracy::bits50>)
KELVM_UNARY(kelsLog1p_64f_A53, Log1p64f<Accuracy::full>)

} // namespace kelvm::inline KELVM_BUILD::log1p_64f
