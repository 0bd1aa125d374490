// Complex quotients.
//
//   32fc A24    in double, where the products are exact: one sum, one quotient and one rounding, a part below 0.51 ulp
//   64fc A53    the sum of products to 2^-62 of itself where it loses less than 12 bits, else from exact products, and
//               the quotient corrected: below 0.51 ulp. Jeannerod, "A radix-independent error analysis of the
//               Cornea-Harrison-Tang method", 2016
//   the others  the textbook formula in the type itself, error 6.3 u of the norm: Brent, Percival, Zimmermann, "Error
//               bounds on complex floating-point multiplication", 2007, for the products
//
// Operands whose squares leave the range of the type, zero denominators among them, go to element() before, and
// results that may have suffered in between after. The frame takes back the flags that no element earned.
#include "complex/annex_g.hpp"
#include "complex/size_test.hpp"
#include "frame/export.hpp"
#include "kelvm/complex.h"

namespace kelvm::inline KELVM_BUILD::complex_quotients {
namespace {

/// C, Annex G.5.1, example 2.
template <class T> Pair<T> divide_element(const Operands& o, kelStatus& status) {
  if (o.c == 0 && o.d == 0 && !(o.a == 0 && o.b == 0)) {
    const double scale = with_sign(infinity<double>, sign_of(o.c));
    const double re = quiet_product(scale, o.a), im = quiet_product(scale, o.b);
    if (o.has_nan() || o.first_infinite()) return with_code<T>(o, re, im, status);
    report(status, kelStatusSingularity);
    return {T(re), T(im)};
  }
  if (o.c == 0 && o.d == 0) return with_code<T>(o, default_nan<double>(), default_nan<double>(), status);
  if (o.finite()) {
    const ScaledSum norm = sum_of_products(o.c, o.c, o.d, o.d);
    return with_code<T>(o, quotient(sum_of_products(o.a, o.c, o.b, o.d), norm).rounded(),
                        quotient(sum_of_products(o.b, o.c, -o.a, o.d), norm).rounded(), status);
  }
  // Something is infinite or a NaN: finite parts count by sign and as zero or not.
  if (o.first_infinite() && is_finite(o.c) && is_finite(o.d)) {
    const double a = unit(o.a), b = unit(o.b), c = unit(o.c), d = unit(o.d);
    const double re = quiet_sum(quiet_product(a, c), quiet_product(b, d));
    const double im = quiet_sum(quiet_product(b, c), -quiet_product(a, d));
    if (!is_nan(re) || !is_nan(im)) return with_code<T>(o, re, im, status);
    const Operands r = o.recovered();
    return recovered<T>(o, infinity<double>, r.a * r.c + r.b * r.d, r.b * r.c - r.a * r.d, status);
  }
  if (o.second_infinite() && is_finite(o.a) && is_finite(o.b)) {
    const Operands r = o.recovered();
    return recovered<T>(o, 0.0, r.a * r.c + r.b * r.d, r.b * r.c - r.a * r.d, status);
  }
  return with_code<T>(o, default_nan<double>(), default_nan<double>(), status);
}

/// The lanes with |x| and |y| both below the limit.
template <class V> SignMask<V> both_below(V x, V y, Lane<V> limit) {
  const Int<V> l = int_bits(splat<V>(limit));
  return (int_bits(abs(x)) - l) & (int_bits(abs(y)) - l);
}
template <class V> SignMask<V> not_both_zero(V x, V y) { return -int_bits(abs(from_bits<V>(bits(x) | bits(y)))); }

/// z / w. P: formula, and special, which marks zero denominators too.
template <class T, class P> struct Division : ComplexDefaults {
  using Element = T;
  static constexpr int vectors_in_flight = P::quotients_in_flight;
  static constexpr bool spurious_underflow = true;
  static constexpr bool spurious_exceptions = true;
  static constexpr Magnitudes ordinary = no_magnitudes; // the size of two parts may look like a NaN
  template <class V> using ResultTest = SizeTest<V>;

  template <class V> static SignMask<V> special(V a, V b, V c, V d) { return P::special(a, b, c, d); }
  template <class V> static Pair<V> formula(V a, V b, V c, V d, ResultTest<V>& test) {
    return P::quotient(a, b, c, d, test);
  }
  static Pair<T> element(T a, T b, T c, T d, kelStatus& status) { return divide_element<T>({a, b, c, d}, status); }
};

/// Floats at full precision. A result that overflows float goes to element() for its code.
struct FloatFull {
  static constexpr int quotients_in_flight = 1;
  static constexpr float limit = largest_finite<float>;

  template <class V> static SignMask<V> special(V a, V b, V c, V d) {
    const Int<V> denominator_parts = int_bits(abs(from_bits<V>(bits(c) | bits(d))));
    return any_above(a, b, limit) | any_above(c, d, limit) | (denominator_parts - 1); // both zero: -1
  }
  /// Products and norms are exact in double but for one rounding each, a reciprocal serves both parts.
  template <class V> static Pair<V> quotient(V a, V b, V c, V d, SizeTest<V>& test) {
    const Pair<V> z = pair_in_double(
        [](auto a, auto b, auto c, auto d) {
          const auto inverse = 1.0 / mul_add(c, c, d * d);
          return Pair<decltype(a)>{mul_add(a, c, b * d) * inverse, mul_sub(b, c, a * d) * inverse};
        },
        a, b, c, d);
    test.results(z);
    return z;
  }
};

/// The textbook formula in the type itself. Numerators are not fused: z / z is real.
struct FloatShort {
  static constexpr int quotients_in_flight = 4;
  template <class V> static SignMask<V> special(V a, V b, V c, V d) {
    return any_above(a, b, 0x1p120f) | any_above(c, d, 0x1p120f) | both_below(c, d, 0x1p-120f);
  }
  /// The denominator is brought to [1, 8) by a power of two.
  template <class V> static Pair<V> quotient(V a, V b, V c, V d, SizeTest<V>& test) {
    const Int<V> c_bits = int_bits(abs(c)), d_bits = int_bits(abs(d));
    const Int<V> larger = c_bits > d_bits ? c_bits : d_bits;
    const V scale = bit_cast<V>(0x7F000000 - (larger & 0x7F800000));
    const V cs = c * scale, ds = d * scale;
    const V inverse = scale / mul_add(cs, cs, ds * ds);
    const V numerator_re = a * cs + b * ds, numerator_im = b * cs - a * ds;
    const Pair<V> z{numerator_re * inverse, numerator_im * inverse};
    test.small(either_size(numerator_re, numerator_im), 0x1p-95f, not_both_zero(a, b));
    test.results(z);
    return z;
  }
};

/// What the doubles have in common: parts and denominators in a window where no intermediate value leaves the range.
struct DoubleWindow {
  template <class V> static SignMask<V> special(V a, V b, V c, V d) {
    return any_above(a, b, 0x1p200) | any_above(c, d, 0x1p200) | both_below(c, d, 0x1p-200);
  }
};

struct DoubleShort : DoubleWindow {
  static constexpr int quotients_in_flight = 2;
  template <class V> static Pair<V> quotient(V a, V b, V c, V d, SizeTest<V>& test) {
    const V inverse = 1.0 / mul_add(c, c, d * d);
    const V re = a * c + b * d, im = b * c - a * d;
    test.small(either_size(re, im), 0x1p-511, not_both_zero(a, b));
    return {re * inverse, im * inverse};
  }
};

enum class Sign { plus, minus };

struct DoubleFull : DoubleWindow {
  static constexpr int quotients_in_flight = has_fused ? 2 : 4;

  /// The products x y and z w, the second with the sign.
  template <class V> struct Products { DoubleWord<V> p, q; };
  template <Sign S, class V> static Products<V> signed_products(DoubleWord<V> p, DoubleWord<V> q) {
    return {p, S == Sign::plus ? q : DoubleWord<V>{-q.hi, -q.lo}};
  }
  /// p + q, relative error below 2^-100. A zero has the sign of the plain sum.
  template <class V> static DoubleWord<V> exact_sum(Products<V> of) {
    const DoubleWord<V> heads = two_sum(of.p.hi, of.q.hi), tails = two_sum(of.p.lo, of.q.lo);
    const V middle = heads.lo + tails.hi;
    const V head = heads.hi - (0 - middle);
    return {head, (middle - (head - heads.hi)) + tails.lo};
  }
  /// x y, exact with a fused operation; without, that of the upper halves and the rest, to 2^-77.
  template <class V> static DoubleWord<V> product(const SplitFactor<V>& x, const SplitFactor<V>& y) {
    if constexpr (has_fused)
      return two_product(x.value, y.value);
    else
      return {x.hi * y.hi, x.lo * y.value + x.hi * y.lo};
  }
  /// Numerators that lose more by cancellation need exact sums: the rests are rounded, to 2^-106 of the products or
  /// 2^-77.
  static constexpr double least_left = has_fused ? 0x1p-40 : 0x1p-11;

  /// x y + z w, or x y - z w: relative error below 2^-62 where it does not cancel.
  template <class V> struct Numerator {
    DoubleWord<V> value;
    SignMask<V> cancels;
  };
  template <Sign S, class V>
  static Numerator<V> numerator(const SplitFactor<V>& x, const SplitFactor<V>& y, const SplitFactor<V>& z,
                                const SplitFactor<V>& w, SizeTest<V>& test) {
    const auto [p, q] = signed_products<S>(product(x, y), product(z, w));
    test.small(either_size(p.hi, q.hi), 0x1p-511,
               (nonzero(x.value) & nonzero(y.value)) | (nonzero(z.value) & nonzero(w.value)));
    const DoubleWord<V> sum = two_sum(p.hi, q.hi);
    return {{sum.hi, sum.lo + (p.lo + q.lo)}, int_bits(abs(sum.hi)) - int_bits(least_left * abs(p.hi))};
  }
  template <Sign S, class V>
  static DoubleWord<V> settled(const Numerator<V>& n, ExactFactor<V> x, ExactFactor<V> y, ExactFactor<V> z,
                               ExactFactor<V> w) {
    const DoubleWord<V> exact = exact_sum(signed_products<S>(two_product(x, y), two_product(z, w)));
    return {select(n.cancels, exact.hi, n.value.hi), select(n.cancels, exact.lo, n.value.lo)};
  }
  /// So short that its product with another such head is exact or, fused with a sum, rounded once.
  template <class V> static V factor_head(V x) {
    if constexpr (has_fused)
      return x;
    else
      return head_of(x);
  }
  template <class V> static Pair<V> quotient(V a, V b, V c, V d, SizeTest<V>& test) {
    const SplitFactor<V> ca(a), cb(b), cc(c), cd(d);
    const DoubleWord<V> c2 = product(cc, cc), d2 = product(cd, cd);
    const V rest = c2.lo + d2.lo;
    const V norm = (c2.hi + d2.hi) + rest, inverse = 1.0 / norm;
    const V norm_head = factor_head(norm);
    const V norm_tail = ((larger_of(c2.hi, d2.hi) - norm_head) + smaller_of(c2.hi, d2.hi)) + rest;
    Numerator<V> re = numerator<Sign::plus>(ca, cc, cb, cd, test);
    Numerator<V> im = numerator<Sign::minus>(cb, cc, ca, cd, test);
    if (any(re.cancels | im.cancels)) [[unlikely]] {
      const ExactFactor<V> ha(a), hb(b), hc(c), hd(d);
      re.value = settled<Sign::plus>(re, ha, hc, hb, hd);
      im.value = settled<Sign::minus>(im, hb, hc, ha, hd);
    }
    const auto divide = [&](DoubleWord<V> n) { // a zero keeps its sign
      const V q = factor_head((n.hi - (0 - n.lo)) * inverse);
      return sub_mul(q, mul_sub(q, norm_head, n.hi) + mul_sub(q, norm_tail, n.lo), inverse);
    };
    return {divide(re.value), divide(im.value)};
  }
};

template <class P> using Div32 = Division<float, P>;
template <class P> using Div64 = Division<double, P>;

} // namespace

KELVM_BINARY(kelsDiv_32fc_A11, Div32<FloatShort>)
KELVM_BINARY(kelsDiv_32fc_A21, Div32<FloatShort>)
KELVM_BINARY(kelsDiv_32fc_A24, Div32<FloatFull>)
KELVM_BINARY(kelsDiv_64fc_A26, Div64<DoubleShort>)
KELVM_BINARY(kelsDiv_64fc_A50, Div64<DoubleShort>)
KELVM_BINARY(kelsDiv_64fc_A53, Div64<DoubleFull>)

} // namespace kelvm::inline KELVM_BUILD::complex_quotients
