// Arc sine and arc cosine, double (trig/asin_core.hpp).
//
//          series                        s, z/6, sums
//   A53    rational 4/4, 2^-61.9         double-word
//   A50    11 coefficients, 2^-51.9      rounded
//   A26    5 coefficients, 2^-27.8       rounded
//
// Exceptional inputs: |x| > 1 and infinities are domain errors, +-1 gives +-pi/2 and 0 or pi, NaN is quieted.
#include "frame/export.hpp"
#include "kelvm/trig.h"
#include "trig/asin_core.hpp"

namespace kelvm::inline KELVM_BUILD::asin_acos_64f {
namespace {

template <class F> struct InverseDouble : KernelDefaults {
  static constexpr int vectors_in_flight = few_vectors_in_flight;
  using Element = double;
  static constexpr bool spurious_underflow = true; // powers of tiny arguments
  static constexpr float safe_input = 0.5f;

  template <class V> static SignMask<V> special(V x) { return above(abs(x), 0x1.fffffffffffffp-1); }
  static double element(double x, kelStatus& status) { return inverse_of_border<F>(x, status); }
};

template <class F> struct InverseLong : InverseDouble<F> {
  template <class V> static V formula(V x) {
    const DoubleWord<V> y = inverse_full<F>(x);
    const V sum = y.hi + y.lo;
    return F::odd ? flip_sign(sum, sign_of(x)) : sum;
  }
};

template <class F, auto& Series> struct InverseShort : InverseDouble<F> {
  template <class V> static V formula(V x) { return inverse_short<F>(x, Series); }
};

} // namespace

KELVM_UNARY(kelsAsin_64f_A26, InverseShort<Asin, inverse_trig::asin_bits27>)
KELVM_UNARY(kelsAsin_64f_A50, InverseShort<Asin, inverse_trig::asin_bits50>)
KELVM_UNARY(kelsAsin_64f_A53, InverseLong<Asin>)
KELVM_UNARY(kelsAcos_64f_A26, InverseShort<Acos, inverse_trig::asin_bits27>)
KELVM_UNARY(kelsAcos_64f_A50, InverseShort<Acos, inverse_trig::asin_bits50>)
KELVM_UNARY(kelsAcos_64f_A53, InverseLong<Acos>)

} // namespace kelvm::inline KELVM_BUILD::asin_acos_64f
