// Powers of floats: x^y = e^(y ln x), with the cores of exp/log_core.hpp and exp/exp_core.hpp.
//
//          arithmetic   ln x      e^       error
//   A24    double       2^-51     2^-42    0.5001 ulp: y ln x, below 2^7, costs seven bits of the logarithm
//   A21    double       2^-29     2^-33    2^-21.9
//   A11    float        2^-21     2^-13    2^-11
//
// The vector formula covers positive normal x and results in the normal range; the rest goes element by element, in
// double. Powx is the same with one y; an integer y lets negative x into the vector formula, which differs in the sign.
#include "exp/exp_core.hpp"
#include "exp/log_core.hpp"
#include "exp/pow_special.hpp"
#include "frame/member.hpp"
#include "kelvm/exp.h"

namespace kelvm::inline KELVM_BUILD {
namespace {

/// A power evaluated in double: within |y ln x| < 87 the result is a normal float.
template <class P> struct InDouble : KernelDefaults {
  static constexpr double largest_exponent = 87;
  static constexpr float largest_y = 0x1.fffffep127f;

  template <class V> static V positive(V x, V y, LaneBits& doubtful) {
    if constexpr (lanes<V> == 1) {
      return float(within(double(x), double(y), doubtful));
    } else {
      LaneBits low = 0, high = 0;
      const V result = narrow(within(widen<0>(x), widen<0>(y), low), within(widen<1>(x), widen<1>(y), high));
      doubtful |= low | high << lanes<Native<double>>;
      return result;
    }
  }
  static float any(float x, float y) {
    const double exponent = double(y) * logarithm<Natural, P::natural_logarithm>(log_reduce<ShortRows>(double(x)));
    if (exponent > 100) return infinity<float>;
    if (exponent < -110) return 0;
    return float(exp_normal<P::exponential>(exponent, 0.0));
  }

private:
  template <class D> static D within(D x, D y, LaneBits& doubtful) {
    const D exponent = y * logarithm<Natural, P::natural_logarithm>(log_reduce<ShortRows>(x));
    const Marks<D> out_of_range = above(abs(exponent), largest_exponent);
    doubtful |= lane_bits(out_of_range);
    return exp_normal<P::exponential>(select(out_of_range, D{}, exponent), D{});
  }
};
struct PowA24 : InDouble<PowA24> {
  static constexpr LogAccuracy natural_logarithm = LogAccuracy::a50;
  static constexpr ExpAccuracy exponential = ExpAccuracy::a24;
};
struct PowA21 : InDouble<PowA21> {
  static constexpr LogAccuracy natural_logarithm = LogAccuracy::a26;
  static constexpr ExpAccuracy exponential = ExpAccuracy::a26;
};
struct PowA11 : KernelDefaults {
  static constexpr float largest_exponent = 87, largest_y = 0x1p100;

  template <class V> static V positive(V x, V y, LaneBits& doubtful) {
    const V exponent = y * float_logarithm<Natural, FloatLogAccuracy::a21>(x);
    const Marks<V> out_of_range = above(abs(exponent), largest_exponent);
    doubtful |= lane_bits(out_of_range);
    return float_exp_a11(select(out_of_range, V{}, exponent));
  }
  static float any(float x, float y) {
    if (!kelvm::any(not_normal_positive(x) | above(abs(y), largest_y))) {
      LaneBits doubtful = 0;
      const float result = positive(x, y, doubtful);
      if (doubtful == 0) return result;
    }
    return PowA21::any(x, y);
  }
};

template <class P> float power_of_any(float x, float y, kelStatus& status) {
  return power(x, y, status, [](float x, float y) { return P::any(x, y); });
}

template <class P> struct Pow32f : P {
  using Element = float;
  static constexpr bool doubts = true;
  static constexpr bool stray_underflow = true; // y ln x of a tiny y
  template <class V> static Marks<V> special(V x, V y) { return not_normal_positive(x) | above(abs(y), P::largest_y); }
  template <class V> static V formula(V x, V y, LaneBits& doubtful) { return P::positive(x, y, doubtful); }
  static float element(float x, float y, kelStatus& status) { return power_of_any<P>(x, y, status); }
};

template <class P> struct Powx32f : P {
  using Element = float;
  static constexpr bool doubts = true;
  static constexpr bool stray_underflow = true;
  Exponent<float> y;

  explicit Powx32f(float exponent) : y(exponent, P::largest_y) {}
  template <class V> Marks<V> special(V x) const { return y.ordinary ? not_normal_positive(y.base(x)) : ~Marks<V>{}; }
  template <class V> V formula(V x, LaneBits& doubtful) const {
    return y.result(P::positive(y.base(x), splat<V>(y.value), doubtful), x);
  }
  float element(float x, kelStatus& status) const { return power_of_any<P>(x, y.value, status); }
};

} // namespace
} // namespace kelvm::inline KELVM_BUILD

KELVM_BINARY(kelsPow_32f_A11, kelvm::Pow32f<kelvm::PowA11>)
KELVM_BINARY(kelsPow_32f_A21, kelvm::Pow32f<kelvm::PowA21>)
KELVM_BINARY(kelsPow_32f_A24, kelvm::Pow32f<kelvm::PowA24>)
KELVM_SCALAR_POWER(kelsPowx_32f_A11, kelvm::Powx32f<kelvm::PowA11>)
KELVM_SCALAR_POWER(kelsPowx_32f_A21, kelvm::Powx32f<kelvm::PowA21>)
KELVM_SCALAR_POWER(kelsPowx_32f_A24, kelvm::Powx32f<kelvm::PowA24>)
