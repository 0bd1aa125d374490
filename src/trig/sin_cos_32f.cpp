// Sine and cosine, float. k = round(x / pi) and r = x - k pi in parts, |r| <= pi/2; sin x = (-1)^k sin r, an odd
// polynomial. The cosine has the half-integer h = round(x / pi + 1/2) - 1/2 in the place of k.
//
//          computed in   |x| up to   pi in parts   polynomial   error
//   A24    double        10000       2             degree 9     0.81 ulp (cosine 0.6)
//   A21    float         10000       4             degree 9     2^-22
//   A11    float         10000       2 or 4        degree 7     1.6e-4 absolute (cosine 2^-19 relative)
//
// The constants up to 10000 are prescribed values, and so is the order of operations: all builds promise these bits. No
// fit replaces them.
//
// Larger elements are computed in double and rounded to float as the results of the double functions are: by vectors
// (trig/large_floats.hpp), where that decides. Zeros keep their sign, and tiny elements are their own sines, by the
// formulas themselves.
#include "exact/polynomial.hpp"
#include "kelvm/trig.h"
#include "trig/circular.hpp"
#include "trig/large_floats.hpp"

namespace kelvm::inline KELVM_BUILD::sin_cos_32f {
namespace {

/// A multiple of pi to be subtracted: k, or h for the cosine, and the sign (-1)^k or (-1)^(h + 1/2).
template <class V> struct HalfTurns {
  V count;
  Bits<V> sign;
};
constexpr float one_over_pi = 0x1.45f306p-2f;
template <class V> inline HalfTurns<V> half_turns(V x) {
  const V shifted = x * one_over_pi + rounding_constant<float>;
  return {shifted - rounding_constant<float>, bits(shifted) << 31};
}
template <class V> inline HalfTurns<V> odd_quarter_turns(V x) {
  const V shifted = (x * one_over_pi + 0.5f) + rounding_constant<float>;
  return {(shifted - rounding_constant<float>)-0.5f, bits(shifted) << 31};
}

/// Arguments of any size, with the test of their results.
template <class V> struct AnySize {
  V x;
  RoundingTest& test;
};

template <class P> struct SinCos32 {
  using Element = float;
  static constexpr int vectors_in_flight = 4;
  template <class V> using WideResultTest = RoundingTest;

  template <class V> static V reduce(V x) { return x; }
  template <class V> static AnySize<V> reduce_any(V x, RoundingTest& test) { return {x, test}; }

  template <class V> static V sine(V x) {
    const HalfTurns<V> k = half_turns(x);
    return flip_sign(P::sine(x, k.count), k.sign);
  }
  /// Of |x|, so that rounding cannot make it other than even.
  template <class V> static V cosine(V x) {
    const V magnitude = abs(x);
    const HalfTurns<V> h = odd_quarter_turns(magnitude);
    return flip_sign(P::cosine(magnitude, h.count), h.sign);
  }
  template <class V> static Pair<V> sine_cosine(V x) { return {sine(x), cosine(x)}; }

  template <class V> static V sine(const AnySize<V>& a) {
    return of_any_size(
        a.x, P::last, a.test, [](auto x) { return sine_of_large(HalfTurnsOfLarge(x)); }, [](V x) { return sine(x); });
  }
  template <class V> static V cosine(const AnySize<V>& a) {
    return of_any_size(
        a.x, P::last, a.test, [](auto x) { return cosine_of_large(HalfTurnsOfLarge(x)); },
        [](V x) { return cosine(x); });
  }
  template <class V> static Pair<V> sine_cosine(const AnySize<V>& a) {
    return of_any_size(
        a.x, P::last, a.test,
        [](auto x) {
          const HalfTurnsOfLarge turns(x);
          return Pair<decltype(x)>{sine_of_large(turns), cosine_of_large(turns)};
        },
        [](V x) { return sine_cosine(x); });
  }
};

struct A24 : SinCos32<A24> {
  static constexpr float last = 10000;

  template <class V> static V remainder(V x, V k) { return x - k * 0x1.921fb54440000p+1 - k * 0x1.68c234c4c6629p-38; }
  template <class V> static V sine(V x, V k) {
    return in_double(
        [](auto x, auto k) {
          constexpr double c[] = {0x1.000000089705fp+0, -0x1.55554ae8ba1bdp-3, 0x1.110ee64cd0933p-7,
                                  -0x1.9f75e2c166f94p-13, 0x1.5e0a329a17541p-19};
          const auto r = remainder(x, k);
          return r * horner_unfused(r * r, c);
        },
        x, k);
  }
  template <class V> static V cosine(V x, V h) {
    return in_double(
        [](auto x, auto h) {
          const auto r = remainder(x, h);
          return r * horner_unfused(r * r, sine_half_pi);
        },
        x, h);
  }
  using SinCos32<A24>::sine;
  using SinCos32<A24>::cosine;
};

/// x - k pi, with pi in four parts.
template <class V> inline V accurate_remainder(V x, V k) {
  return x - k * 3.140625f - k * 0x1.fb4p-11f - k * 0x1.444p-23f - k * 0x1.68c234p-38f;
}

/// sin r = r + r z (q1 + z (...)), z = r^2, in single precision.
template <class V, int N> inline V sine_series(V r, const float (&q)[N]) {
  const V z = r * r;
  return r + r * z * horner_unfused(z, q);
}

template <class P> struct Single : SinCos32<P> {
  /// A zero has lost its sign in the sum r + 0, and gets it back here.
  template <class V> static V sine(V x, V k) {
    const V r = P::remainder(x, k);
    return with_sign(sine_series(r, P::q), sign_of(r));
  }
  template <class V> static V cosine(V x, V h) { return sine_series(accurate_remainder(x, h), P::cosine_q); }
  using SinCos32<P>::sine;
  using SinCos32<P>::cosine;
};

struct A21 : Single<A21> {
  static constexpr float last = 10000;
  static constexpr float q[] = {-0x1.55554ap-3f, 0x1.110ee6p-7f, -0x1.9f75e2p-13f, 0x1.5e0a32p-19f};
  static constexpr const auto& cosine_q = q;
  template <class V> static V remainder(V x, V k) { return accurate_remainder(x, k); }
};

struct A11 : Single<A11> {
  static constexpr float last = 10000;
  static constexpr float q[] = {-0x1.55554cp-3f, 0x1.110ed4p-7f, -0x1.9f6ffep-13f};
  static constexpr const auto& cosine_q = sine_half_pi_single;
  /// Two parts of pi up to 4000, four beyond.
  template <class V> static V remainder(V x, V k) {
    const V r = x - k * 3.140625f - k * 0x1.fb5444p-11f;
    const SignMask<V> far = above(abs(x), 4000.0f);
    return any(far) ? select(far, accurate_remainder(x, k), r) : r;
  }
};

} // namespace

KELVM_UNARY(kelsSin_32f_A11, Sin<A11>)
KELVM_UNARY(kelsSin_32f_A21, Sin<A21>)
KELVM_UNARY(kelsSin_32f_A24, Sin<A24>)
KELVM_UNARY(kelsCos_32f_A11, Cos<A11>)
KELVM_UNARY(kelsCos_32f_A21, Cos<A21>)
KELVM_UNARY(kelsCos_32f_A24, Cos<A24>)
KELVM_TWO_OUTPUTS(kelsSinCos_32f_A11, SinCos<A11>)
KELVM_TWO_OUTPUTS(kelsSinCos_32f_A21, SinCos<A21>)
KELVM_TWO_OUTPUTS(kelsSinCos_32f_A24, SinCos<A24>)
KELVM_UNARY(kelsCIS_32fc_A11, CIS<A11>)
KELVM_UNARY(kelsCIS_32fc_A21, CIS<A21>)
KELVM_UNARY(kelsCIS_32fc_A24, CIS<A24>)

} // namespace kelvm::inline KELVM_BUILD::sin_cos_32f
