// The arithmetic of real powers at every accuracy, as the rooms pow_64f.cpp and pow_32f.cpp describe it. The complex
// powers take it for real operands.
#pragma once

#include "exp/exp_core.hpp"
#include "exp/log_core.hpp"
#include "exp/pow_special.hpp"
#include "frame/frame.hpp"

namespace kelvm::inline KELVM_BUILD {

// --- doubles --------------------------------------------------------------------------------------------------------

/// y (head + tail) with an exact head, |tail| < 2^-24 |head|, so that it stays small against a step of the exponential.
template <class V> inline HeadTail<V> times(V y, HeadTail<V> unnormalised) {
  const HeadTail<V> logarithm = fast_two_sum(unnormalised.head, unnormalised.tail);
  const V y_head = head_of(y), log_head = head_of(logarithm.head);
  const V log_rest = (logarithm.head - log_head) + logarithm.tail;
  return {y_head * log_head, y * log_rest + (y - y_head) * log_head};
}

struct PowA53 {
  using Rows = ExactRows;
  static constexpr ExpAccuracy exponential = ExpAccuracy::pow;
  template <class V> static HeadTail<V> exponent(const LogReduced<V>& x, V y) { return times(y, ln_pow(x)); }
};
struct PowA50 {
  using Rows = ExactRows;
  static constexpr ExpAccuracy exponential = ExpAccuracy::a50;
  template <class V> static HeadTail<V> exponent(const LogReduced<V>& x, V y) { return times(y, ln_a53(x)); }
};
struct PowA26 {
  using Rows = ShortRows;
  static constexpr ExpAccuracy exponential = ExpAccuracy::a26;
  template <class V> static HeadTail<V> exponent(const LogReduced<V>& x, V y) {
    return {y * logarithm<Natural, LogAccuracy::a24>(x), V{}};
  }
};

template <class P> struct Power : KernelDefaults {
  using Element = double;
  template <class V> using Doubt = LaneBits;
  static constexpr bool stray_underflow = true; // y ln x of a tiny y
  static constexpr double largest_y = 0x1p100;
  static constexpr double largest_exponent = 708; // results are normal up to there

  template <class V> static V positive(V x, V y, LaneBits& doubtful) {
    const HeadTail<V> exponent = P::exponent(log_reduce<typename P::Rows>(x), y);
    doubtful |= lane_bits(above(abs(exponent.head), largest_exponent));
    return exp_normal<P::exponential>(exponent.head, exponent.tail);
  }
  static double any(double x, double y, kelStatus& status) {
    return power(x, y, status, [](double x, double y) {
      const LogReduced<double> reduced = log_reduce_any<typename P::Rows>(x);
      // Beyond, the power is out of range for every x.
      if (y > largest_y) y = largest_y;
      if (y < -largest_y) y = -largest_y;
      const HeadTail<double> exponent = P::exponent(reduced, y);
      return exp_any<P::exponential>(exponent.head, exponent.tail);
    });
  }
};

// --- floats ---------------------------------------------------------------------------------------------------------

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
template <class P> struct PowInDouble : KernelDefaults {
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
struct PowA24 : PowInDouble<PowA24> {
  static constexpr LogAccuracy natural_logarithm = LogAccuracy::a50_of_float;
  static constexpr ExpAccuracy exponential = ExpAccuracy::a24;
};
struct PowA21 : PowInDouble<PowA21> {
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

template <class P> inline float power_of_any(float x, float y, kelStatus& status) {
  return power(x, y, status, [](float x, float y) { return P::any(x, y); });
}

} // namespace kelvm::inline KELVM_BUILD
