// Complex powers: z^w = e^(w ln z). For ln z = l + i t and w = c + id, the exponent is p = c l - d t and the angle
// q = c t + d l; the result e^p cos q + i e^p sin q.
//
//          arithmetic   ln z               w ln z           e^p                cos q, sin q
//   A53    double       double-word        double-word      double-word        double-word        0.52 ulp a part
//   A50    double       double-word        double-word      32 steps, 2^-52    double-word        2^-50 by norm
//   A26    double       2^-43              one double       2^-28              2^-40              2^-28 by norm
//   A24    double       2^-50              one double       2^-42              2^-50              0.51 ulp a part
//   A21    double       2^-31              one double       2^-22.5, float     2^-23, float       2^-21.5 by norm
//   A11    float        2^-21              one float        2^-13              2^-16              2^-11 by norm
//
// An error of ln z counts w ln z times: A53 and A50 need its tail. Where cos q or sin q is next to zero, an error of q
// is one of the result: at full precision such lanes, and those with ln z next to 0, go to element(), which computes
// with as many bits as they need. So do parts of z and w outside a window, results that may leave the range, and real
// operands, which have the bits of the real functions.
#include "complex/log.hpp"
#include "complex/power_element.hpp"
#include "frame/export.hpp"
#include "hyperbolic/factors.hpp"
#include "kelvm/complex.h"

namespace kelvm::inline KELVM_BUILD::complex_power {
namespace {

/// The lanes with x below the limit, by their sign bits, and the larger of two: of numbers that are not negative.
template <class V> SignMask<V> less(V x, V limit) { return int_bits(x) - int_bits(limit); }
template <class V> V larger(V a, V b) { return select(less(a, b), b, a); }

/// Below, an angle goes to element(): a real power has none, and tiny ones lose bits.
constexpr double tiny_angle = 0x1p-900;

// --- with tails ------------------------------------------------------------------------------------------------------

struct A53 {
  using RealPower = Power<PowA53>;
  /// Angles this many times their terms from a multiple of pi/2 are not exact enough.
  static constexpr double near_zero = 0x1p-13;

  template <class V> static DoubleWord<V> logarithm(const NormParts<Natural, V>& h) { return ln_extended(h.joined()); }

  /// Cosine and sine of q, but for the sign of the sine.
  template <class V> static EvenOdd<DoubleWord<V>> direction(DoubleWord<V> q) {
    Remainder<V> r = Full::long_reduce(abs(q.hi));
    const DoubleWord<V> sum = fast_two_sum(r.hi, r.lo + flip_sign(q.lo, sign_of(q.hi)));
    r.hi = sum.hi;
    r.lo = sum.lo;
    return Full::circular(r);
  }
  template <class V> static V head(const DoubleWord<V>& x) { return x.hi; }

  template <class V> static Full::Exponential<V> exponential(DoubleWord<V> p) {
    const ExpReduced<V> reduced = exp_reduce(p.hi);
    return {exp_unscaled(reduced, p.lo), reduced.scaled(splat<V>(1))};
  }
};

struct A50 {
  using RealPower = Power<PowA50>;
  static constexpr double near_zero = 0;

  template <class V> static DoubleWord<V> logarithm(const NormParts<Natural, V>& h) { return ln_full(h.joined()); }
  template <class V> static EvenOdd<V> direction(DoubleWord<V> q) {
    const EvenOdd<V> head = Middle::circular(abs(q.hi));
    const V tail = flip_sign(q.lo, sign_of(q.hi));
    return {sub_mul(head.even, tail, head.odd), mul_add(tail, head.even, head.odd)};
  }
  template <class V> static V head(V x) { return x; }
  template <class V> static Middle::Exponential<V> exponential(DoubleWord<V> p) {
    return {exp_normal<Accuracy::bits50>(p.hi, p.lo, p.hi)};
  }
};

/// a u + b v with an error of 2^-78 of the larger product: those of the upper words are exact, without a fused
/// operation those of their heads.
template <class V> DoubleWord<V> sum_of_products(V a, DoubleWord<V> u, V b, DoubleWord<V> v) {
  DoubleWord<V> sum;
  V rest;
  if constexpr (has_fused) {
    const DoubleWord<V> au = two_product(a, u.hi), bv = two_product(b, v.hi);
    sum = two_sum(au.hi, bv.hi);
    rest = mul_add(a, u.lo, au.lo) + mul_add(b, v.lo, bv.lo);
  } else {
    const SplitFactor<V> as(a), us(u), bs(b), vs(v);
    sum = two_sum(as.hi * us.hi, bs.hi * vs.hi);
    rest = (as.hi * us.lo + as.lo * us.value) + (bs.hi * vs.lo + bs.lo * vs.value);
  }
  return fast_two_sum(sum.hi, sum.lo + rest);
}

template <class P> struct WithTails {
  using Element = double;
  using RealPower = typename P::RealPower;
  static constexpr int vectors_in_flight = 3;

  template <class V> static SignMask<V> special(V x, V y, V c, V d) {
    return outside_window(x, y, 0x1p-400, 0x1p400) | any_above(c, d, 0x1p60);
  }
  template <class V> static Pair<V> formula(V x, V y, V c, V d, BitMask& undecided) {
    const DoubleWord<V> log = P::logarithm(NormParts<Natural, V>(norm_double_word(x, y)));
    const DoubleWord<V> l = normalised(0.5 * log);
    const DoubleWord<V> theta = angle<Accuracy::extended>(y, x);
    const DoubleWord<V> t = normalised(theta);

    const DoubleWord<V> p = sum_of_products(c, l, -d, t), q = sum_of_products(c, t, d, l);
    const SignMask<V> beyond = above(larger(abs(p.hi), 0.25 * abs(q.hi)), 690.0);
    const SignMask<V> next_to_one = less(abs(l.hi), splat<V>(0x1p-10)) & less(abs(t.hi), splat<V>(0x1p-10));

    const auto direction = P::direction(q);
    V near = splat<V>(tiny_angle);
    if constexpr (P::near_zero != 0) // the error of q is 2^-68 of its terms, of d l at least 2^-78 d
      near += P::near_zero * (abs(c * t.hi) + abs(d) * larger(abs(l.hi), splat<V>(0x1p-10)));
    SignMask<V> at_zero = less(abs(P::head(direction.odd)), near);
    if constexpr (P::near_zero != 0) at_zero |= less(abs(P::head(direction.even)), near);
    undecided |= movemask(beyond | next_to_one | at_zero);

    const auto size = P::exponential(DoubleWord<V>{select(beyond, V{}, p.hi), select(beyond, V{}, p.lo)});
    return {size.times(direction.even), flip_sign(size.times(direction.odd), sign_of(q.hi))};
  }
};

// --- plain doubles --------------------------------------------------------------------------------------------------

/// C: the factors of hyperbolic/factors.hpp.
template <Accuracy L, Accuracy A, class C> struct Short {
  template <class V>
  static Pair<V> formula(V x, V y, V c, V d, double largest_exponent, double near_zero, BitMask& undecided) {
    const auto [larger_part, smaller_part] = by_size(x, y);
    const V l = log_abs<Natural, L>(larger_part, smaller_part);
    const V t = angle<A>(y, x);
    const V ct = c * t, dl = d * l;
    const V p = mul_sub(c, l, d * t), q = ct + dl;
    const SignMask<V> beyond = above(abs(p), largest_exponent) | above(abs(q), 0x1p12);
    const EvenOdd<V> direction = C::circular(select(beyond, V{}, abs(q)));
    const V near = near_zero * (abs(ct) + abs(dl)) + tiny_angle;
    undecided |= movemask(beyond | less(abs(direction.even), near) | less(abs(direction.odd), near));
    const auto size = C::exponential(select(beyond, V{}, p));
    return {size.times(direction.even), flip_sign(size.times(direction.odd), sign_of(q))};
  }
};

struct A26 {
  using Element = double;
  using RealPower = Power<PowA26>;
  static constexpr int vectors_in_flight = 3;
  template <class V> static SignMask<V> special(V x, V y, V c, V d) {
    return outside_window(x, y, 0x1p-440, 0x1p440) | any_above(c, d, 0x1p60);
  }
  template <class V> static Pair<V> formula(V x, V y, V c, V d, BitMask& undecided) {
    return Short<Accuracy::bits40, Accuracy::bits49, ShortA26>::formula(x, y, c, d, 690, 0, undecided);
  }
};

template <class R, Accuracy L, Accuracy A, class C> struct FloatInDouble {
  using Element = float;
  using RealPower = R;
  static constexpr int vectors_in_flight = 2;
  static constexpr double near_zero = L == Accuracy::bits50 ? 0x1p-20 : 0;

  template <class V> static SignMask<V> special(V x, V y, V c, V d) {
    const SignMask<V> zero = int_bits(abs(from_bits<V>(bits(x) | bits(y)))) - 1;
    return any_above(x, y, largest_finite<float>) | any_above(c, d, largest_finite<float>) | zero;
  }
  template <class V> static Pair<V> formula(V x, V y, V c, V d, BitMask& undecided) {
    const auto f = [](auto x, auto y, auto c, auto d, BitMask& undecided) {
      return Short<L, A, C>::formula(x, y, c, d, 86, near_zero, undecided);
    };
    if constexpr (lanes<V> == 1) {
      const Pair<double> z = f(double(x), double(y), double(c), double(d), undecided);
      return {float(z.first), float(z.second)};
    } else {
      BitMask low_tests = 0, high_tests = 0;
      const auto low = f(widen<0>(x), widen<0>(y), widen<0>(c), widen<0>(d), low_tests);
      const auto high = f(widen<1>(x), widen<1>(y), widen<1>(c), widen<1>(d), high_tests);
      undecided |= low_tests | high_tests << lanes<Native<double>>;
      return {narrow(low.first, high.first), narrow(low.second, high.second)};
    }
  }
};

struct RealA24 {
  static float any(float x, float y, kelStatus& status) { return power_of_any<PowA24>(x, y, status); }
};
struct RealA21 {
  static float any(float x, float y, kelStatus& status) { return power_of_any<PowA21>(x, y, status); }
};
struct RealA11 {
  static float any(float x, float y, kelStatus& status) { return power_of_any<PowA11>(x, y, status); }
};
using A24 = FloatInDouble<RealA24, Accuracy::bits50, Accuracy::bits50, Middle>;

/// The size and the angle in double; what they are reduced to in float. Larger angles, whose error the logarithm's
/// would dominate, are those of A24.
struct A21 {
  using Element = float;
  using RealPower = RealA21;
  using Wider = A24;
  static constexpr int vectors_in_flight = 2;
  static constexpr double largest_size = 86, largest_angle = 128;

  template <class V> static SignMask<V> special(V x, V y, V c, V d) { return A24::special(x, y, c, d); }
  template <class V> static Pair<V> formula(V x, V y, V c, V d, BitMask& undecided) {
    const auto low = exponent<0>(x, y, c, d), high = exponent<1>(x, y, c, d);
    const auto low_angle = quarters(low.angle), high_angle = quarters(high.angle);
    const V remainder = narrow(low_angle.remainder, high_angle.remainder);
    undecided |=
        movemask(int_bits(abs(remainder)) - 1) | movemask(low.beyond) | movemask(high.beyond) << lanes<Native<double>>;
    const auto direction = SingleA21::circular(low_words(low_angle.shifted, high_angle.shifted), remainder);
    const auto size = SingleA21::exponential(float_exp_reduce(low.size, high.size));
    return {size.times(direction.even), size.times(direction.odd)};
  }

private:
  /// w ln z; zero where it is `beyond` the formula.
  template <class D> struct Exponent {
    D size, angle;
    SignMask<D> beyond;
  };
  template <int Half, class V> static Exponent<Native<double>> exponent(V x, V y, V c, V d) {
    using D = Native<double>;
    const D re = widen<Half>(x), im = widen<Half>(y), p = widen<Half>(c), q = widen<Half>(d);
    const D l = log_abs<Natural, Accuracy::bits27>(re, im);
    const D t = angle_by_quotient<inverse_trig::atan_whole_bits27>(im, re);
    const D size = mul_sub(p, l, q * t), angle = mul_add(p, t, q * l);
    const SignMask<D> beyond = above(abs(size), largest_size) | above(abs(angle), largest_angle);
    return {select(beyond, D{}, size), select(beyond, D{}, angle), beyond};
  }
  /// angle = k pi/2 + remainder, k in the low bits of `shifted`.
  template <class D> struct Quarters { D shifted, remainder; };
  template <class D> static Quarters<D> quarters(D angle) {
    const D shifted = mul_add(angle, splat<D>(2 / pi_hi), splat<D>(rounding_constant<double>));
    return {shifted, sub_mul(angle, shifted - rounding_constant<double>, splat<D>(pi_hi / 2))};
  }
};

// --- floats ---------------------------------------------------------------------------------------------------------

struct A11 {
  using Element = float;
  using RealPower = RealA11;
  static constexpr int vectors_in_flight = 4;

  template <class V> static SignMask<V> special(V x, V y, V c, V d) {
    return outside_window(x, y, 0x1p-60f, 0x1p60f) | any_above(c, d, 0x1p60f);
  }
  template <class V> static Pair<V> formula(V x, V y, V c, V d, BitMask& undecided) {
    const V l = float_log_abs<Natural, Accuracy::bits21>(x, y);
    const V t = angle_by_quotient<inverse_trig::atan_bits21>(y, x);
    const V p = mul_sub(c, l, d * t), q = mul_add(c, t, d * l);
    const SignMask<V> beyond = above(abs(p), 86.0f) | above(abs(q), 128.0f);
    undecided |= movemask(beyond | (int_bits(abs(q)) - 1));
    const EvenOdd<V> direction = SingleA11::circular(select(beyond, V{}, abs(q)));
    const auto size = SingleA11::exponential(select(beyond, V{}, p));
    return {size.times(direction.even), flip_sign(size.times(direction.odd), sign_of(q))};
  }
};

// --- kernels --------------------------------------------------------------------------------------------------------

template <class P> struct ComplexPow : ComplexDefaults {
  using Element = typename P::Element;
  using T = Element;
  static constexpr int vectors_in_flight = P::vectors_in_flight;
  template <class V> using ResultTest = BitMask;
  static constexpr bool spurious_underflow = true;
  static constexpr Magnitudes ordinary = no_magnitudes; // products with ln z next to 0

  template <class V> static SignMask<V> special(V x, V y, V c, V d) { return P::special(x, y, c, d); }
  template <class V> static Pair<V> formula(V x, V y, V c, V d, BitMask& undecided) {
    return P::formula(x, y, c, d, undecided);
  }
  static Pair<T> element(T x, T y, T c, T d, kelStatus& status) {
    if constexpr (requires { typename P::Wider; }) {
      if (!any(P::Wider::special(x, y, c, d))) {
        BitMask undecided = 0;
        const Pair<T> z = P::Wider::formula(x, y, c, d, undecided);
        if (undecided == 0) return z;
      }
    }
    return power_element<T>({quiet(x), quiet(y), quiet(c), quiet(d)}, status,
                            [](T x, T c, kelStatus& code) { return P::RealPower::any(x, c, code); });
  }

private:
  /// As a double; raises nothing for a signalling NaN.
  static double quiet(T x) { return is_nan(x) ? default_nan<double>() : double(x); }
};

/// The bits of Pow, with one exponent.
template <class P> struct ComplexPowx : ComplexDefaults {
  using Element = typename P::Element;
  using T = Element;
  static constexpr int vectors_in_flight = P::vectors_in_flight;
  template <class V> using ResultTest = BitMask;
  static constexpr bool spurious_underflow = true;
  static constexpr Magnitudes ordinary = no_magnitudes; // products with ln z next to 0
  Pair<T> w, safe; // 1 where no base has the vector formula: its flags count though no element has its results

  template <class E> explicit ComplexPowx(const E& exponent) : w{exponent.re, exponent.im}, safe(w) {
    if (any(P::special(T(1), T(1), w.first, w.second))) safe = {T(1), T(0)};
  }
  template <class V> SignMask<V> special(V x, V y) const {
    return ComplexPow<P>::special(x, y, splat<V>(w.first), splat<V>(w.second));
  }
  template <class V> Pair<V> formula(V x, V y, BitMask& undecided) const {
    return P::formula(x, y, splat<V>(safe.first), splat<V>(safe.second), undecided);
  }
  template <class V> SignMask<V> nan_lanes(V x, V y) const {
    return ComplexPow<P>::nan_lanes(x, y, splat<V>(w.first), splat<V>(w.second));
  }
  Pair<T> element(T x, T y, kelStatus& status) const { return ComplexPow<P>::element(x, y, w.first, w.second, status); }
};

} // namespace

KELVM_BINARY(kelsPow_32fc_A11, ComplexPow<A11>)
KELVM_BINARY(kelsPow_32fc_A21, ComplexPow<A21>)
KELVM_BINARY(kelsPow_32fc_A24, ComplexPow<A24>)
KELVM_BINARY(kelsPow_64fc_A26, ComplexPow<A26>)
KELVM_BINARY(kelsPow_64fc_A50, ComplexPow<WithTails<A50>>)
KELVM_BINARY(kelsPow_64fc_A53, ComplexPow<WithTails<A53>>)
KELVM_SCALAR_POWER(kelsPowx_32fc_A11, ComplexPowx<A11>)
KELVM_SCALAR_POWER(kelsPowx_32fc_A21, ComplexPowx<A21>)
KELVM_SCALAR_POWER(kelsPowx_32fc_A24, ComplexPowx<A24>)
KELVM_SCALAR_POWER(kelsPowx_64fc_A26, ComplexPowx<A26>)
KELVM_SCALAR_POWER(kelsPowx_64fc_A50, ComplexPowx<WithTails<A50>>)
KELVM_SCALAR_POWER(kelsPowx_64fc_A53, ComplexPowx<WithTails<A53>>)

} // namespace kelvm::inline KELVM_BUILD::complex_power
