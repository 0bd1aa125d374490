// Arc tangent, double (trig/atan_core.hpp), computed of |x|.
//
// A53: atan c has a tail, and r is below 2^-7 of the result, so that its three roundings cost 0.03 ulp together. Where
// c = 0 nothing but the final sum and a term below 2^-9 of it is rounded. A50 and A26 do without tails, A26 with two
// coefficients.
//
// Exceptional inputs: infinities give pi/2, which is what |x| >= 2^900 is rounded to as well; NaN is quieted.
#include "frame/export.hpp"
#include "kelvm/trig.h"
#include "trig/atan_core.hpp"

namespace kelvm::inline KELVM_BUILD::atan_64f {
namespace {

template <Accuracy A> struct Atan64f : KernelDefaults {
  using Element = double;
  static constexpr bool spurious_underflow = true; // powers of tiny arguments

  template <class V> static SignMask<V> special(V x) { return above(abs(x), 0x1p900); }
  template <class V> static V formula(V x) {
    const V t = abs(x);
    if constexpr (A == Accuracy::bits27)
      return flip_sign(arc_tangent_bits27(t), sign_of(x));
    else
      return flip_sign(arc_tangent<A>(t), sign_of(x));
  }
  static double element(double x, kelStatus&) {
    return is_nan(x) ? x + x : with_sign(inverse_trig::half_pi_head, sign_of(x));
  }
};

} // namespace

KELVM_UNARY(kelsAtan_64f_A26, Atan64f<Accuracy::bits27>)
KELVM_UNARY(kelsAtan_64f_A50, Atan64f<Accuracy::bits50>)
KELVM_UNARY(kelsAtan_64f_A53, Atan64f<Accuracy::full>)

} // namespace kelvm::inline KELVM_BUILD::atan_64f
