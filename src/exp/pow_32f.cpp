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

/// Tells by the largest |y ln x|, for a block by the upper words of doubles, whether results may leave the range.
struct RangeDoubt {
  /// half: which half of a float vector the exponents belong to.
  template <class D> void add(D exponent, int half) {
    constexpr int words = int(sizeof(D) / 4);
    const D magnitude = abs(exponent);
    if constexpr (sizeof(D) > sizeof(double)) {
      const auto upper = bit_cast<Vec<std::uint32_t, words>>(magnitude);
      largest = upper > largest ? upper : largest;
    }
    undecided |= lane_bits(above(magnitude, limit)) << half * kelvm::lanes<D>;
  }
  bool any() const { return kelvm::any(above(bit_cast<Native<double>>(largest), limit)); }
  LaneBits lanes() const { return undecided; }

  static constexpr double limit = 87; // within, the result is a normal float

private:
  Vec<std::uint32_t, vector_bytes / 4> largest{};
  LaneBits undecided = 0;
};

/// A power evaluated in double.
template <class P> struct InDouble : KernelDefaults {
  static constexpr bool stray_exceptions = true;
  template <class V> using Doubt = RangeDoubt;

  /// An infinite or NaN y shows in y ln x.
  template <class V> static Marks<V> special_exponent(V) { return Marks<V>{}; }
  static constexpr float largest_y = 0x1.fffffep127f;

  template <class V> static V positive(V x, V y, RangeDoubt& doubt) {
    const auto reduced = log_reduce_floats<ShortRows>(x);
    return narrow(within<0>(reduced, y, doubt), within<1>(reduced, y, doubt));
  }
  static float any(float x, float y) {
    const double exponent = double(y) * logarithm<Natural, P::natural_logarithm>(log_reduce<ShortRows>(double(x)));
    if (exponent > 100) return infinity<float>;
    if (exponent < -110) return 0;
    return float(exp_normal<P::exponential>(exponent));
  }

private:
  template <int Half, class V>
  static Native<double> within(const LogReducedFloats<ShortRows>& x, V y, RangeDoubt& doubt) {
    const Native<double> exponent = widen<Half>(y) * logarithm<Natural, P::natural_logarithm>(x.half<Half>());
    doubt.add(exponent, Half);
    return exp_normal<P::exponential>(exponent);
  }
};
struct PowA24 : InDouble<PowA24> {
  static constexpr LogAccuracy natural_logarithm = LogAccuracy::a50_of_float;
  static constexpr ExpAccuracy exponential = ExpAccuracy::a24;
};
struct PowA21 : InDouble<PowA21> {
  static constexpr LogAccuracy natural_logarithm = LogAccuracy::a26;
  static constexpr ExpAccuracy exponential = ExpAccuracy::a26;
};
struct PowA11 : KernelDefaults {
  static constexpr float largest_exponent = 87, largest_y = 0x1p100;
  template <class V> using Doubt = LaneBits;
  template <class V> static Marks<V> special_exponent(V y) { return above(abs(y), largest_y); }

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
  template <class V> static Marks<V> special(V x, V y) { return not_normal_positive(x) | P::special_exponent(y); }
  template <class V> static V formula(V x, V y, typename P::template Doubt<V>& doubt) {
    return P::positive(x, y, doubt);
  }
  static float element(float x, float y, kelStatus& status) { return power_of_any<P>(x, y, status); }
};

template <class P> struct Powx32f : P {
  using Element = float;
  static constexpr bool doubts = true;
  static constexpr bool stray_underflow = true;
  Exponent<float> y;

  explicit Powx32f(float exponent) : y(exponent, P::largest_y) {}
  template <class V> Marks<V> special(V x) const { return y.ordinary ? not_normal_positive(y.base(x)) : ~Marks<V>{}; }
  template <class V> V formula(V x, typename P::template Doubt<V>& doubt) const {
    return y.result(P::positive(y.base(x), splat<V>(y.value), doubt), x);
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
