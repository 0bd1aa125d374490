// Powers of doubles: x^y = e^(y ln x), with the cores of exp/log_core.hpp and exp/exp_core.hpp.
//
//          ln x                           y ln x              e^                     error
//   A53    double-word, 2^-69             double-word         32 steps, two parts    0.53 ulp
//   A50    double-word, 2^-61             double-word         32 steps               2^-50
//   A26    one double, 2^-42, no table    one double          no table, 2^-28        2^-26
//
// y ln x may reach 745: the logarithm needs ten bits more than the result. The product's upper word is exact, and so is
// its reduction in the exponential, by the multiple of ln 2 / 32 next to both words: a fused multiply-add gives the
// lower word, or the upper halves of y and ln x are multiplied, of 26 bits each.
//
// The vector formula covers positive normal x and results in the normal range; the rest goes element by element. Powx
// is the same with one y; an integer y lets negative x into the vector formula, which differs in the sign.
#include "exp/pow_core.hpp"
#include "frame/export.hpp"
#include "kelvm/exp.h"

namespace kelvm::inline KELVM_BUILD::pow_64f {
namespace {

template <class P> struct Pow64f : Power<P> {
  static constexpr int vectors_in_flight = vector_bytes == 16 ? 8 : 4; // the longest of chains
  template <class V> using Test = typename Power<P>::template ResultTest<V>;
  template <class V> static SignMask<V> special(V x, V) { return not_normal_positive(x); }
  template <class V> static V formula(V x, V y, Test<V>& undecided) { return Power<P>::positive(x, y, undecided); }
  template <class V> static SignMask<V> nan_lanes(V x, V y) { return nan_powers(x, y); }
  template <class V> static V nan_result(V x, V y) { return first_nan(x, y); }
  static constexpr kelStatus edge_code = kelStatusOk;
  template <class V> static SignMask<V> edge_lanes(V x, V y) { return zero_powers(x, y); }
  template <class V> static V edge_result(V, V) { return V{}; }
  static double element(double x, double y, kelStatus& status) { return Power<P>::any(x, y, status); }
};

template <class P> struct Powx64f : Power<P> {
  template <class V> SignMask<V> noisy(V x) const { return Power<P>::noisy(x, splat<V>(y.safe)); }
  template <class V> using Test = typename Power<P>::template ResultTest<V>;
  Exponent<double> y;

  explicit Powx64f(double exponent) : y(exponent, Power<P>::largest_y) {}
  template <class V> SignMask<V> special(V x) const {
    return y.ordinary ? not_normal_positive(y.base(x)) : ~SignMask<V>{};
  }
  template <class V> V formula(V x, Test<V>& undecided) const {
    return y.result(Power<P>::positive(y.base(x), splat<V>(y.safe), undecided), x);
  }
  template <class V> SignMask<V> nan_lanes(V x) const { return y.nan_lanes(x); }
  static constexpr kelStatus edge_code = kelStatusOk;
  template <class V> SignMask<V> edge_lanes(V x) const { return y.edge_lanes(x); }
  template <class V> V edge_result(V x) const { return y.result(V{}, x); }
  double element(double x, kelStatus& status) const { return Power<P>::any(x, y.value, status); }
};

} // namespace

KELVM_BINARY(kelsPow_64f_A26, Pow64f<PowA26>)
KELVM_BINARY(kelsPow_64f_A50, Pow64f<PowA50>)
KELVM_BINARY(kelsPow_64f_A53, Pow64f<PowA53>)
KELVM_SCALAR_POWER(kelsPowx_64f_A26, Powx64f<PowA26>)
KELVM_SCALAR_POWER(kelsPowx_64f_A50, Powx64f<PowA50>)
KELVM_SCALAR_POWER(kelsPowx_64f_A53, Powx64f<PowA53>)

} // namespace kelvm::inline KELVM_BUILD::pow_64f
