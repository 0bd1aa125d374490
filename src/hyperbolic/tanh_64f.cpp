// tanh of doubles (hyperbolic/tanh.hpp). A53: 2^-60 before the one rounding. Exceptional inputs: NaNs, quieted.
#include "frame/export.hpp"
#include "hyperbolic/tanh.hpp"
#include "kelvm/hyperbolic.h"

namespace kelvm::inline KELVM_BUILD::tanh_64f {
namespace {

template <Accuracy A> struct Tanh64f : KernelDefaults {
  using Element = double;
  static constexpr bool spurious_underflow = true; // x^2 of a tiny x
  template <class V> static SignMask<V> special(V x) { return above(abs(x), infinity<double>); }
  template <class V> static V formula(V x) {
    return with_sign(tanh_positive<A>(tanh_clamped(x, tanh_saturated)), sign_of(x));
  }
  static double element(double x, kelStatus&) { return x + x; }
};

} // namespace

KELVM_UNARY(kelsTanh_64f_A26, Tanh64f<Accuracy::bits27>)
KELVM_UNARY(kelsTanh_64f_A50, Tanh64f<Accuracy::bits50>)
KELVM_UNARY(kelsTanh_64f_A53, Tanh64f<Accuracy::full>)

} // namespace kelvm::inline KELVM_BUILD::tanh_64f
