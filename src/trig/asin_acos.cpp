// Arc sine and arc cosine (trig/asin_core.hpp).
//
//              arithmetic   series                        s, z/6, sums
//   64f A53    double       13 coefficients, 2^-59.5      in two parts
//   64f A50    double       11 coefficients, 2^-51.6      rounded
//   64f A26    double       5 coefficients, 2^-27.3       rounded
//   32f A24    double       8 coefficients, 2^-39.5       rounded: 2^-39, correctly rounded to float
//   32f A21    float        4 coefficients, 2^-23.1       rounded: 2^-21.2
//   32f A11    float        2 coefficients, 2^-14.3       rounded: 2^-13
//
// A24 decides the rounding to float of all but one element in 10000; the others are computed as for A53, to 2^-57, and
// rounded once. Its error before is the fit's and at most seven roundings, those of 2 A(s) counted twice: 2^-39.4.
// Acos_32f_A11 is sqrt(1 - |x|) times a polynomial. The float functions' pi and pi/2 are the floats below them, so that
// no result is beyond.
//
// Exceptional inputs: |x| > 1 and infinities are domain errors, +-1 gives +-pi/2 and 0 or pi, NaN is quieted.
#include "exact/rounding_test.hpp"
#include "frame/export.hpp"
#include "kelvm/trig.h"
#include "trig/asin_core.hpp"

namespace kelvm::inline KELVM_BUILD::asin_acos {
namespace {

template <class F, class T> struct Inverse : KernelDefaults {
  using Element = T;
  static constexpr int vectors_in_flight = sizeof(T) == 8 ? few_vectors_in_flight : 4;
  static constexpr float safe_input = 0.5f;
  static constexpr bool spurious_underflow = true; // powers of tiny arguments

  static constexpr Magnitudes ordinary{sizeof(T) == 8 ? 0x1p-60 : 0x1p-28, below_one<T>};
  template <class V> static SignMask<V> special(V x) { return above(abs(x), below_one<T>); }
  static T element(T x, kelStatus& status) { return inverse_of_border<F>(x, status); }
};

template <class F> struct InverseA53 : Inverse<F, double> {
  static constexpr int vectors_in_flight = 2;
  template <class V> static V formula(V x) {
    const V sum = inverse_full<F>(x).rounded();
    return F::odd ? flip_sign(sum, sign_of(x)) : sum;
  }
};

template <class F> struct InverseA24 : Inverse<F, float> {
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
    if (any(InverseA24::special(x))) return inverse_of_border<F>(x, status);
    const float sum = round_sum_to_float(inverse_full<F>(double(x)).double_word());
    return F::odd ? flip_sign(sum, sign_of(x)) : sum;
  }
};

/// In the arithmetic of the series.
template <class F, auto& Series> struct InverseShort : Inverse<F, std::remove_cvref_t<decltype(Series[0])>> {
  template <class V> static V formula(V x) { return inverse_short<F>(x, Series); }
};

struct AcosA11 : Inverse<Acos, float> {
  static constexpr int vectors_in_flight = 4;
  template <class V> static V formula(V x) {
    const V t = abs(x);
    const V y = sqrt(1.0f - t) * estrin(t, inverse_trig::acos_bits11);
    return select(x < V{}, pi_below<float> - y, y);
  }
};

} // namespace

KELVM_UNARY(kelsAsin_32f_A11, InverseShort<Asin, inverse_trig::asin_bits11>)
KELVM_UNARY(kelsAsin_32f_A21, InverseShort<Asin, inverse_trig::asin_bits21>)
KELVM_UNARY(kelsAsin_32f_A24, InverseA24<Asin>)
KELVM_UNARY(kelsAsin_64f_A26, InverseShort<Asin, inverse_trig::asin_bits27>)
KELVM_UNARY(kelsAsin_64f_A50, InverseShort<Asin, inverse_trig::asin_bits50>)
KELVM_UNARY(kelsAsin_64f_A53, InverseA53<Asin>)
KELVM_UNARY(kelsAcos_32f_A11, AcosA11)
KELVM_UNARY(kelsAcos_32f_A21, InverseShort<Acos, inverse_trig::asin_bits21>)
KELVM_UNARY(kelsAcos_32f_A24, InverseA24<Acos>)
KELVM_UNARY(kelsAcos_64f_A26, InverseShort<Acos, inverse_trig::asin_bits27>)
KELVM_UNARY(kelsAcos_64f_A50, InverseShort<Acos, inverse_trig::asin_bits50>)
KELVM_UNARY(kelsAcos_64f_A53, InverseA53<Acos>)

} // namespace kelvm::inline KELVM_BUILD::asin_acos
