// Complex arithmetic, except the absolute value.
//
// Add, Sub: one operation a part. Conj: one bit.
//
// Mul, MulByConj, Div at full precision. Floats: the products are exact in double; one sum, for Div one quotient, and
// one rounding: each part below 0.51 ulp. Doubles: for Mul both products of a part as an exact double-word, their sum
// rounded once where it does not cancel, and below 1 ulp where it does. For Div the sum to 2^-62 of itself where it
// loses less than 12 bits, else from exact products, and the quotient is corrected: below 0.51 ulp. See Jeannerod,
// Louvet, Muller, "Further analysis of Kahan's algorithm for the accurate computation of 2x2 determinants", 2013, and
// Jeannerod, "A radix-independent error analysis of the Cornea-Harrison-Tang method", 2016.
//
// The lower accuracies are the textbook formulas in the type itself: error sqrt(5) u of the norm for a product (Brent,
// Percival, Zimmermann, "Error bounds on complex floating-point multiplication", 2007), 6.3 u for a quotient.
//
// Where an intermediate value could leave the range of the type, element() computes: it scales, and gives infinities
// and NaNs the results of C's Annex G. A NaN part is the default NaN. Products take any operands and look at what comes
// out, so the frame takes back the flags that no element earned; quotients look at their operands first.
#include "complex/complex.hpp"
#include "frame/export.hpp"
#include "kelvm/complex.h"
#include "simd/ordered.hpp"

namespace kelvm::inline KELVM_BUILD::complex_arithmetic {
namespace {

// --- part by part ---------------------------------------------------------------------------------------------------

template <class T> struct PartByPart : KernelDefaults {
  using Element = T;
  static constexpr bool covers_everything = true;
  static constexpr int parts_by_themselves = 2;
};
template <class T> struct Add : PartByPart<T> {
  template <class V> static V formula(V x, V y) { return ordered_sum(x, y); }
};
template <class T> struct Sub : PartByPart<T> {
  template <class V> static V formula(V x, V y) { return x - y; }
};
template <class T> struct Conj : PartByPart<T> {
  template <class V> static V formula(V x) {
    const auto sign_of_imaginary_parts = []<int... I>(std::integer_sequence<int, I...>) {
      return Bits<V>{(I % 2 == 1 ? sign_bit<V> : 0)...};
    }
    (std::make_integer_sequence<int, lanes<V>>{});
    return from_bits<V>(bits(x) ^ sign_of_imaginary_parts);
  }
};

// --- one element of a product or quotient, any operands --------------------------------------------------------------

/// a b + c d for finite operands, relative error below 2^-100.
ScaledSum sum_of_products(double a, double b, double c, double d) {
  const auto product = [](const Scaled& x, const Scaled& y) {
    return ScaledSum{two_product(x.fraction, y.fraction), x.exponent + y.exponent};
  };
  return sum(product(scaled(a), scaled(b)), product(scaled(c), scaled(d)));
}

/// Sum and product that give the default NaN where they would raise invalid.
double quiet_sum(double x, double y) {
  if (is_nan(x) || is_nan(y) || (is_infinite(x) && is_infinite(y) && x != y)) return default_nan<double>();
  return x + y;
}
double quiet_product(double x, double y) {
  if (is_nan(x) || is_nan(y) || (is_infinite(x) && y == 0) || (x == 0 && is_infinite(y))) return default_nan<double>();
  return x * y;
}

/// The operands as Annex G's recovery sees them: an infinite number has parts 0 and 1 with their signs, a NaN part of a
/// finite one is a zero.
double boxed(double x) { return with_sign(is_infinite(x) ? 1.0 : 0.0, sign_of(x)); }
double without_nan(double x) { return is_nan(x) ? with_sign(0.0, sign_of(x)) : x; }
/// A finite part brought to 1: only its sign and whether it is zero matter beside an infinity.
double unit(double x) { return is_finite(x) && x != 0 ? with_sign(1.0, sign_of(x)) : x; }

struct Operands {
  double a, b, c, d; // (a + bi) and (c + di)

  bool finite() const { return is_finite(a) && is_finite(b) && is_finite(c) && is_finite(d); }
  bool has_nan() const { return is_nan(a) || is_nan(b) || is_nan(c) || is_nan(d); }
  bool first_infinite() const { return is_infinite(a) || is_infinite(b); }
  bool second_infinite() const { return is_infinite(c) || is_infinite(d); }

  /// As the recovery of infinities sees them, brought where sums of two parts cannot overflow.
  Operands recovered() const {
    Operands o{without_nan(a), without_nan(b), without_nan(c), without_nan(d)};
    if (first_infinite())
      o.a = boxed(a), o.b = boxed(b);
    else
      o.a *= 0.25, o.b *= 0.25;
    if (second_infinite())
      o.c = boxed(c), o.d = boxed(d);
    else
      o.c *= 0.25, o.d *= 0.25;
    return o;
  }
};

/// What C's examples do where the plain formula gives two NaNs: the scale (infinity or zero) times the formula's parts.
template <class T> Pair<T> recovered(const Operands& o, double scale, double re, double im, kelStatus& status) {
  return with_code<T>(o, quiet_product(scale, re), quiet_product(scale, im), status);
}

/// C, Annex G.5.1, example 1.
template <class T> Pair<T> multiply_element(const Operands& o, kelStatus& status) {
  if (o.finite())
    return with_code<T>(o, sum_of_products(o.a, o.c, -o.b, o.d).rounded(),
                        sum_of_products(o.a, o.d, o.b, o.c).rounded(), status);
  const double a = unit(o.a), b = unit(o.b), c = unit(o.c), d = unit(o.d);
  const double re = quiet_sum(quiet_product(a, c), -quiet_product(b, d));
  const double im = quiet_sum(quiet_product(a, d), quiet_product(b, c));
  if (!is_nan(re) || !is_nan(im) || !(o.first_infinite() || o.second_infinite()))
    return with_code<T>(o, re, im, status);
  const Operands r = o.recovered();
  return recovered<T>(o, infinity<double>, r.a * r.c - r.b * r.d, r.a * r.d + r.b * r.c, status);
}

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

// --- kernels --------------------------------------------------------------------------------------------------------

/// SignMask lanes with |x| and |y| both below the limit.
template <class V> SignMask<V> both_below(V x, V y, Lane<V> limit) {
  const Int<V> l = int_bits(splat<V>(limit));
  return (int_bits(abs(x)) - l) & (int_bits(abs(y)) - l);
}
template <class V> SignMask<V> nonzero(V x) { return -int_bits(abs(x)); }
template <class V> SignMask<V> not_both_zero(V x, V y) { return -int_bits(abs(from_bits<V>(bits(x) | bits(y)))); }

/// Tells by two sizes whether all is well: one that is no ordinary number where an operand is infinite or a NaN or
/// something may overflow, and one that is small where a result may have suffered from underflow. For a block their sum
/// and minimum do; zeros are among the small ones, so that the lanes of a single vector are told apart with more care.
template <class V> struct SizeTest {
  using T = Lane<V>;

  void large(V size, T limit) {
    sum += size;
    undecided |= above(size, limit);
    high = limit;
  }
  /// harmful: whether being below the limit, as a zero is, means that the result is undecided.
  void small(V size, T limit, SignMask<V> harmful) {
    least = smaller_of(size, least);
    undecided |= (int_bits(size) - int_bits(splat<V>(limit))) & harmful;
    low = limit;
  }
  bool any() const { return kelvm::any(above(abs(sum), high) | (int_bits(least) - int_bits(splat<V>(low)))); }
  BitMask lanes() const { return movemask(undecided); }

private:
  V sum = splat<V>(T(-0.0)), least = splat<V>(infinity<T>);
  SignMask<V> undecided{};
  T high = largest_finite<T>, low = 0;
};
template <class V> V size_of(Pair<V> z) { return abs(z.first) + abs(z.second); }

enum class Conjugate { no, yes };

/// z w or z conj(w). P: product.
template <class T, class P, Conjugate C> struct Multiplication : KernelDefaults {
  using Element = T;
  static constexpr bool spurious_underflow = true;
  static constexpr bool spurious_exceptions = true;
  static constexpr int vectors_in_flight = P::products_in_flight;
  template <class V> using ResultTest = SizeTest<V>;

  template <class V> static SignMask<V> special(V, V, V, V) { return SignMask<V>{}; }
  template <class V> static Pair<V> formula(V a, V b, V c, V d, ResultTest<V>& test) {
    return P::template product<C>(a, b, c, d, test);
  }
  static Pair<T> element(T a, T b, T c, T d, kelStatus& status) {
    return multiply_element<T>({a, b, c, C == Conjugate::yes ? -d : d}, status);
  }
};
/// The plain formulas.
template <Conjugate C, class V> Pair<V> plain_product(V a, V b, V c, V d) {
  if constexpr (C == Conjugate::yes)
    return {a * c + b * d, b * c - a * d};
  else
    return {a * c - b * d, a * d + b * c};
}
/// z / w. P: formula, and special, which marks zero denominators too.
template <class T, class P> struct Division : KernelDefaults {
  using Element = T;
  static constexpr int vectors_in_flight = P::quotients_in_flight;
  static constexpr bool spurious_underflow = true;
  static constexpr bool spurious_exceptions = true;
  template <class V> using ResultTest = SizeTest<V>;

  template <class V> static SignMask<V> special(V a, V b, V c, V d) { return P::special(a, b, c, d); }
  template <class V> static Pair<V> formula(V a, V b, V c, V d, ResultTest<V>& test) {
    return P::quotient(a, b, c, d, test);
  }
  static Pair<T> element(T a, T b, T c, T d, kelStatus& status) { return divide_element<T>({a, b, c, d}, status); }
};

/// Floats at full precision. A result that overflows float goes to element() for its code.
struct FloatFull {
  static constexpr int products_in_flight = 4, quotients_in_flight = 1;
  static constexpr float limit = largest_finite<float>;

  template <Conjugate C, class V> static Pair<V> product(V a, V b, V c, V d, SizeTest<V>& test) {
    constexpr auto re = [](auto a, auto b, auto c, auto d) { return plain_product<C>(a, b, c, d).first; };
    constexpr auto im = [](auto a, auto b, auto c, auto d) { return plain_product<C>(a, b, c, d).second; };
    const Pair<V> z{in_double(re, a, b, c, d), in_double(im, a, b, c, d)};
    test.large(size_of(z), largest_finite<float>);
    return z;
  }
  template <class V> static SignMask<V> special(V a, V b, V c, V d) {
    const Int<V> denominator_parts = int_bits(abs(from_bits<V>(bits(c) | bits(d))));
    return any_above(a, b, limit) | any_above(c, d, limit) | (denominator_parts - 1); // both zero: -1
  }
  template <class V> static Pair<V> quotient(V a, V b, V c, V d, SizeTest<V>& test) {
    const V re =
        in_double([](auto a, auto b, auto c, auto d) { return (a * c + b * d) / (c * c + d * d); }, a, b, c, d);
    const V im =
        in_double([](auto a, auto b, auto c, auto d) { return (b * c - a * d) / (c * c + d * d); }, a, b, c, d);
    test.large(size_of(Pair<V>{re, im}), largest_finite<float>);
    return {re, im};
  }
};

/// Non-zero results of a size below the limit are undecided.
template <class V> void tell_by_size(Pair<V> z, Lane<V> limit, SizeTest<V>& test) {
  const V size = size_of(z);
  test.large(size, largest_finite<Lane<V>>);
  test.small(size, limit, nonzero(size));
}

/// The textbook formulas in the type itself.
struct FloatShort {
  static constexpr int products_in_flight = 4, quotients_in_flight = 4;
  template <Conjugate C, class V> static Pair<V> product(V a, V b, V c, V d, SizeTest<V>& test) {
    const Pair<V> z = plain_product<C>(a, b, c, d);
    tell_by_size(z, 0x1p-119f, test);
    return z;
  }
  template <class V> static SignMask<V> special(V a, V b, V c, V d) {
    return any_above(a, b, 0x1p120f) | any_above(c, d, 0x1p120f) | both_below(c, d, 0x1p-120f);
  }
  /// The denominator is brought to [1, 8) by a power of two.
  template <class V> static Pair<V> quotient(V a, V b, V c, V d, SizeTest<V>& test) {
    const Int<V> c_bits = int_bits(abs(c)), d_bits = int_bits(abs(d));
    const Int<V> larger = c_bits > d_bits ? c_bits : d_bits;
    const V scale = bit_cast<V>(0x7F000000 - (larger & 0x7F800000));
    const V cs = c * scale, ds = d * scale;
    const V inverse = scale / (cs * cs + ds * ds);
    const V numerator_re = a * cs + b * ds, numerator_im = b * cs - a * ds;
    const V re = numerator_re * inverse, im = numerator_im * inverse;
    test.small(size_of(Pair<V>{numerator_re, numerator_im}), 0x1p-99f, not_both_zero(a, b));
    test.large(size_of(Pair<V>{re, im}), largest_finite<float>);
    return {re, im};
  }
};

/// What the doubles have in common: parts and denominators in a window where no intermediate value leaves the range.
struct DoubleWindow {
  template <class V> static SignMask<V> special(V a, V b, V c, V d) {
    return any_above(a, b, 0x1p200) | any_above(c, d, 0x1p200) | both_below(c, d, 0x1p-200);
  }
};

struct DoubleShort : DoubleWindow {
  static constexpr int products_in_flight = 4, quotients_in_flight = 2;
  template <Conjugate C, class V> static Pair<V> product(V a, V b, V c, V d, SizeTest<V>& test) {
    const Pair<V> z = plain_product<C>(a, b, c, d);
    tell_by_size(z, 0x1p-959, test);
    return z;
  }
  template <class V> static Pair<V> quotient(V a, V b, V c, V d, SizeTest<V>& test) {
    const V inverse = 1.0 / (c * c + d * d);
    const V re = a * c + b * d, im = b * c - a * d;
    test.small(size_of(Pair<V>{re, im}), 0x1p-599, not_both_zero(a, b));
    return {re * inverse, im * inverse};
  }
};

enum class Sign { plus, minus };

struct DoubleFull : DoubleWindow {
  static constexpr int products_in_flight = 1, quotients_in_flight = 4;

  /// The exact products x y and z w, the second with the sign.
  template <class V> struct Products { DoubleWord<V> p, q; };
  template <Sign S, class V> static Products<V> signed_products(DoubleWord<V> p, DoubleWord<V> q) {
    return {p, S == Sign::plus ? q : DoubleWord<V>{-q.hi, -q.lo}};
  }
  /// x y + z w, or x y - z w, rounded. Where the sum of p and q is inexact, the errors are small beside it; where it is
  /// exact, the sum of the errors is exact or no larger than the result: below 1 ulp.
  template <Sign S, class V>
  static V sum_of_two(ExactFactor<V> x, ExactFactor<V> y, ExactFactor<V> z, ExactFactor<V> w, SizeTest<V>& test) {
    const auto [p, q] = signed_products<S>(two_product(x, y), two_product(z, w));
    // They are exact where the larger one is above the limit; both may have a zero factor.
    test.small(abs(p.hi) + abs(q.hi), 0x1p-900,
               (nonzero(x.value) & nonzero(y.value)) | (nonzero(z.value) & nonzero(w.value)));
    const DoubleWord<V> sum = two_sum(p.hi, q.hi);
    return sum.hi - (0 - (sum.lo + (p.lo + q.lo))); // a zero keeps the sign of the plain sum
  }
  template <Conjugate C, class V> static Pair<V> product(V a, V b, V c, V d, SizeTest<V>& test) {
    test.large(size_of(Pair<V>{a, b}) + size_of(Pair<V>{c, d}), 0x1p500);
    const ExactFactor<V> sa(a), sb(b), sc(c), sd(d);
    if constexpr (C == Conjugate::yes)
      return {sum_of_two<Sign::plus>(sa, sc, sb, sd, test), sum_of_two<Sign::minus>(sb, sc, sa, sd, test)};
    else
      return {sum_of_two<Sign::minus>(sa, sc, sb, sd, test), sum_of_two<Sign::plus>(sa, sd, sb, sc, test)};
  }

  /// p + q, relative error below 2^-100. A zero has the sign of the plain sum.
  template <class V> static DoubleWord<V> exact_sum(Products<V> of) {
    const DoubleWord<V> heads = two_sum(of.p.hi, of.q.hi), tails = two_sum(of.p.lo, of.q.lo);
    const V middle = heads.lo + tails.hi;
    const V head = heads.hi - (0 - middle);
    return {head, (middle - (head - heads.hi)) + tails.lo};
  }
  /// x y + z w, or x y - z w, without exact products: relative error below 2^-62 where it does not cancel.
  template <class V> struct Numerator {
    DoubleWord<V> value;
    SignMask<V> cancels;
  };
  template <Sign S, class V>
  static Numerator<V> numerator(const SplitFactor<V>& x, const SplitFactor<V>& y, const SplitFactor<V>& z,
                                const SplitFactor<V>& w, SizeTest<V>& test) {
    const V p = x.hi * y.hi, q = z.hi * w.hi, size = abs(p) + abs(q);
    test.small(size, 0x1p-510, (nonzero(x.value) & nonzero(y.value)) | (nonzero(z.value) & nonzero(w.value)));
    const V p_rest = x.lo * y.value + x.hi * y.lo, q_rest = z.lo * w.value + z.hi * w.lo;
    const DoubleWord<V> sum = two_sum(p, S == Sign::plus ? q : -q);
    return {{sum.hi, sum.lo + (S == Sign::plus ? p_rest + q_rest : p_rest - q_rest)},
            int_bits(abs(sum.hi)) - int_bits(0x1p-12 * size)};
  }
  template <Sign S, class V>
  static DoubleWord<V> settled(const Numerator<V>& n, ExactFactor<V> x, ExactFactor<V> y, ExactFactor<V> z,
                               ExactFactor<V> w) {
    const DoubleWord<V> exact = exact_sum(signed_products<S>(two_product(x, y), two_product(z, w)));
    return {select(n.cancels, exact.hi, n.value.hi), select(n.cancels, exact.lo, n.value.lo)};
  }
  template <class V> static Pair<V> quotient(V a, V b, V c, V d, SizeTest<V>& test) {
    const SplitFactor<V> ca(a), cb(b), cc(c), cd(d);
    const V c2 = cc.hi * cc.hi, d2 = cd.hi * cd.hi;
    const V rest = cc.lo * (c + cc.hi) + cd.lo * (d + cd.hi);
    const V norm = (c2 + d2) + rest, inverse = 1.0 / norm;
    const V norm_head = head_of(norm), norm_tail = ((larger_of(c2, d2) - norm_head) + smaller_of(c2, d2)) + rest;
    Numerator<V> re = numerator<Sign::plus>(ca, cc, cb, cd, test);
    Numerator<V> im = numerator<Sign::minus>(cb, cc, ca, cd, test);
    if (any(re.cancels | im.cancels)) [[unlikely]] {
      const ExactFactor<V> ha(a), hb(b), hc(c), hd(d);
      re.value = settled<Sign::plus>(re, ha, hc, hb, hd);
      im.value = settled<Sign::minus>(im, hb, hc, ha, hd);
    }
    const auto divide = [&](DoubleWord<V> n) { // a zero keeps its sign
      const V q = head_of((n.hi - (0 - n.lo)) * inverse);
      return q - ((q * norm_head - n.hi) + (q * norm_tail - n.lo)) * inverse;
    };
    return {divide(re.value), divide(im.value)};
  }
};

template <class P> using Mul32 = Multiplication<float, P, Conjugate::no>;
template <class P> using Mul64 = Multiplication<double, P, Conjugate::no>;
template <class P> using MulByConj32 = Multiplication<float, P, Conjugate::yes>;
template <class P> using MulByConj64 = Multiplication<double, P, Conjugate::yes>;
template <class P> using Div32 = Division<float, P>;
template <class P> using Div64 = Division<double, P>;

} // namespace

KELVM_BINARY(kelsAdd_32fc_A24, Add<float>)
KELVM_BINARY(kelsAdd_64fc_A53, Add<double>)
KELVM_BINARY(kelsSub_32fc_A24, Sub<float>)
KELVM_BINARY(kelsSub_64fc_A53, Sub<double>)
KELVM_UNARY(kelsConj_32fc_A24, Conj<float>)
KELVM_UNARY(kelsConj_64fc_A53, Conj<double>)
KELVM_BINARY(kelsMul_32fc_A11, Mul32<FloatShort>)
KELVM_BINARY(kelsMul_32fc_A21, Mul32<FloatShort>)
KELVM_BINARY(kelsMul_32fc_A24, Mul32<FloatFull>)
KELVM_BINARY(kelsMul_64fc_A26, Mul64<DoubleShort>)
KELVM_BINARY(kelsMul_64fc_A50, Mul64<DoubleShort>)
KELVM_BINARY(kelsMul_64fc_A53, Mul64<DoubleFull>)
KELVM_BINARY(kelsMulByConj_32fc_A11, MulByConj32<FloatShort>)
KELVM_BINARY(kelsMulByConj_32fc_A21, MulByConj32<FloatShort>)
KELVM_BINARY(kelsMulByConj_32fc_A24, MulByConj32<FloatFull>)
KELVM_BINARY(kelsMulByConj_64fc_A26, MulByConj64<DoubleShort>)
KELVM_BINARY(kelsMulByConj_64fc_A50, MulByConj64<DoubleShort>)
KELVM_BINARY(kelsMulByConj_64fc_A53, MulByConj64<DoubleFull>)
KELVM_BINARY(kelsDiv_32fc_A11, Div32<FloatShort>)
KELVM_BINARY(kelsDiv_32fc_A21, Div32<FloatShort>)
KELVM_BINARY(kelsDiv_32fc_A24, Div32<FloatFull>)
KELVM_BINARY(kelsDiv_64fc_A26, Div64<DoubleShort>)
KELVM_BINARY(kelsDiv_64fc_A50, Div64<DoubleShort>)
KELVM_BINARY(kelsDiv_64fc_A53, Div64<DoubleFull>)

} // namespace kelvm::inline KELVM_BUILD::complex_arithmetic
