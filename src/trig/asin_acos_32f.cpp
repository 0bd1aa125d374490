// Arc sine and arc cosine, float (trig/asin_core.hpp).
//
// A24: in double with an error of 2^-40, which decides the rounding to float of all but one element in 10000; the
// others are computed to 2^-58 and rounded once: correctly rounded everywhere.
//
// A21, A11: in float arithmetic, errors 2^-22 and 2^-13. Acos_32f_A11 is sqrt(1 - |x|) times a polynomial. pi and pi/2
// are the floats below them, so that no result is beyond.
//
// Exceptional inputs: |x| > 1 and infinities are domain errors, +-1 gives +-pi/2 and 0 or pi, NaN is quieted.
#include "exact/rounding_test.hpp"
#include "frame/export.hpp"
#include "kelvm/trig.h"
#include "trig/asin_core.hpp"

namespace kelvm::inline KELVM_BUILD::asin_acos_32f {
namespace {

template <class F> struct Inverse32f : KernelDefaults {
  using Element = float;
  static constexpr float safe_input = 0.5f;
  static constexpr bool spurious_underflow = true; // powers of tiny arguments
  template <class V> static SignMask<V> special(V x) { return above(abs(x), 0x1.fffffep-1f); }
  static float element(float x, kelStatus& status) { return inverse_of_border<F>(x, status); }
};

template <class F> struct InverseA24 : Inverse32f<F> {
  static constexpr int vectors_in_flight = vector_bytes == 64 ? 2 : 1; // of the registers
  template <class V> using ResultTest = RoundingTest;
  template <class V> static V formula(V x, RoundingTest& test) {
    const V t = abs(x);
    const V y = in_double_decided<39>(
        test, [](auto x, auto half_rest) { return inverse_short<F>(x, half_rest, inverse_trig::asin_bits40); },
        F::odd ? t : x, half_rest_of(t));
    return F::odd ? flip_sign(y, sign_of(x)) : y;
  }
  static float element(float x, kelStatus& status) {
    if (any(Inverse32f<F>::special(x))) return Inverse32f<F>::element(x, status);
    const DoubleWord<double> y = inverse_full<F>(double(x));
    const float sum = round_sum_to_float(y);
    return F::odd ? flip_sign(sum, sign_of(x)) : sum;
  }
};

template <class F, auto& Series> struct InverseSingle : Inverse32f<F> {
  static constexpr int vectors_in_flight = 3;
  template <class V> static V formula(V x) { return inverse_short<F>(x, Series); }
};

struct AcosA11 : Inverse32f<Acos> {
  template <class V> static V formula(V x) {
    const V t = abs(x);
    const V y = sqrt(1.0f - t) * estrin(t, inverse_trig::acos_bits11);
    return select(x < V{}, inverse_trig::pi_below - y, y);
  }
};

} // namespace

KELVM_UNARY(kelsAsin_32f_A11, InverseSingle<Asin, inverse_trig::asin_bits11>)
KELVM_UNARY(kelsAsin_32f_A21, InverseSingle<Asin, inverse_trig::asin_bits21>)
KELVM_UNARY(kelsAsin_32f_A24, InverseA24<Asin>)
KELVM_UNARY(kelsAcos_32f_A11, AcosA11)
KELVM_UNARY(kelsAcos_32f_A21, InverseSingle<Acos, inverse_trig::asin_bits21>)
KELVM_UNARY(kelsAcos_32f_A24, InverseA24<Acos>)

} // namespace kelvm::inline KELVM_BUILD::asin_acos_32f
