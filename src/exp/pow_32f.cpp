// Powers of floats: x^y = e^(y ln x) or 2^(y log2 x), with the cores of exp/log_core.hpp and exp/exp_core.hpp.
//
//          arithmetic   log x     power    error
//   A24    double       2^-49     2^-42    0.5001 ulp: y ln x, below 2^7, costs seven bits of the logarithm
//   A21    double       2^-31     2^-22.5  2^-21.9: y log2 x is rounded to a multiple of 2^-23, the power is in float
//   A11    float        2^-21     2^-13    2^-11
//
// The vector formula covers positive normal x and results in the normal range; the rest goes element by element, in
// double. Powx is the same with one y; an integer y lets negative x into the vector formula, which differs in the sign.
#include "exp/pow_core.hpp"
#include "frame/export.hpp"
#include "kelvm/exp.h"

namespace kelvm::inline KELVM_BUILD::pow_32f {
namespace {

/// Exponents y for which powers of y ln x may be too small, or which are no numbers.
template <class P, class V> inline SignMask<V> noisy_exponent(V y) {
  return outside_but_zero(abs(y), P::smallest_y, 0x1p100f);
}

template <class P> struct Pow32f : P {
  using Element = float;
  static constexpr bool spurious_underflow = !flags_stay; // y ln x of a tiny y
  template <class V> static SignMask<V> special(V x, V y) { return not_normal_positive(x) | P::special_exponent(y); }
  template <class V> static SignMask<V> noisy(V, V y) { return noisy_exponent<P>(y); }
  template <class V> static V formula(V x, V y, typename P::template ResultTest<V>& test) {
    return P::positive(x, y, test);
  }
  template <class V> static SignMask<V> nan_lanes(V x, V y) { return nan_powers(x, y); }
  template <class V> static V nan_result(V x, V y) { return first_nan(x, y); }
  static constexpr kelStatus edge_code = kelStatusOk;
  template <class V> static SignMask<V> edge_lanes(V x, V y) { return zero_powers(x, y); }
  template <class V> static V edge_result(V, V) { return V{}; }
  static float element(float x, float y, kelStatus& status) { return power_of_any<P>(x, y, status); }
};

template <class P> struct Powx32f : P {
  using Element = float;
  template <class V> SignMask<V> noisy(V) const { return noisy_exponent<P>(splat<V>(y.safe)); }
  static constexpr bool spurious_underflow = true;
  Exponent<float> y;

  explicit Powx32f(float exponent) : y(exponent, P::largest_y) {}
  template <class V> SignMask<V> special(V x) const {
    return y.ordinary ? not_normal_positive(y.base(x)) : ~SignMask<V>{};
  }
  template <class V> V formula(V x, typename P::template ResultTest<V>& test) const {
    return y.result(P::positive(y.base(x), splat<V>(y.safe), test), x);
  }
  template <class V> SignMask<V> nan_lanes(V x) const { return y.nan_lanes(x); }
  static constexpr kelStatus edge_code = kelStatusOk;
  template <class V> SignMask<V> edge_lanes(V x) const { return y.edge_lanes(x); }
  template <class V> V edge_result(V x) const { return y.result(V{}, x); }
  float element(float x, kelStatus& status) const { return power_of_any<P>(x, y.value, status); }
};

} // namespace

KELVM_BINARY(kelsPow_32f_A11, Pow32f<PowA11>)
KELVM_BINARY(kelsPow_32f_A21, Pow32f<PowA21>)
KELVM_BINARY(kelsPow_32f_A24, Pow32f<PowA24>)
KELVM_SCALAR_POWER(kelsPowx_32f_A11, Powx32f<PowA11>)
KELVM_SCALAR_POWER(kelsPowx_32f_A21, Powx32f<PowA21>)
KELVM_SCALAR_POWER(kelsPowx_32f_A24, Powx32f<PowA24>)

} // namespace kelvm::inline KELVM_BUILD::pow_32f
