// e^x - 1 of doubles (exp/exp_core.hpp). The result has the sign of x, -0 included.
//
// Exceptional inputs: an overflow beyond 709.78; -inf gives -1, +inf stays, NaN is quieted.
#include "exp/exp_core.hpp"
#include "frame/edges.hpp"
#include "frame/export.hpp"
#include "kelvm/exp.h"

namespace kelvm::inline KELVM_BUILD::expm1_64f {
namespace {

template <Accuracy A> struct Expm164f : KernelDefaults, ExponentialOfInfinities<-1> {
  using Element = double;
  static constexpr int vectors_in_flight = 3;
  static constexpr bool spurious_underflow = true; // x^2 of a tiny x
  static constexpr double covered = 708;
  /// Beyond are products with small scales.
  static constexpr bool scales_products = A == Accuracy::bits27 && !has_fused;
  static constexpr Magnitudes ordinary{0x1p-60, scales_products ? 600 : covered};
  template <class V> static SignMask<V> special(V x) { return above(abs(x), covered); }
  template <class V> static V formula(V x) { return with_sign(exp_minus_1<A>(x), sign_of(x)); }
  static double element(double x, kelStatus& status) {
    if (is_nan(x)) return x + x;
    if (x < 0) return -1;
    if (x == infinity<double>) return x;
    // e^x is beyond 2^1000.
    const double y = exp_any(x, 0);
    return y == infinity<double> ? overflow(status, 1.0) : y;
  }
};

} // namespace

KELVM_UNARY(kelsExpm1_64f_A26, Expm164f<Accuracy::bits27>)
KELVM_UNARY(kelsExpm1_64f_A50, Expm164f<Accuracy::bits50>)
KELVM_UNARY(kelsExpm1_64f_A53, Expm164f<Accuracy::full>)

} // namespace kelvm::inline KELVM_BUILD::expm1_64f
