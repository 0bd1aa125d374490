// The logarithm core, for any width: what every member that needs a logarithm shares.
//
// x = 2^k m with m in one octave around 1, and a table by m's upper bits gives c near 1/m:
//
//   ln x = k ln 2 - ln c + ln(1 + r),   r = m c - 1
//
// The row around 1 has c = 1 and ln c = 0, and reaches over both sides of 1: there the formula is the series of
// ln(1 + r) and nothing cancels. After Tang, "Table-driven implementation of the logarithm function in IEEE
// floating-point arithmetic", 1990. Two tables:
//
//   ExactRows   256 rows, |r| < 0.0027. c has so few bits (8 or 9 below its leading one) that r is a double: the
//               reduction has no error, which full precision near 1 could not do without. ln c has a head and a tail.
//               Next to the row of c = 1, where ln x is the difference of ln c and r, |r| < 2^-9.
//   ShortRows   32 rows, |r| < 0.016, few enough for registers. r and ln c are rounded.
//
// Base 10 has tables of its own and the factor 1 / ln 10 in the coefficients.
#pragma once

#include "exact/exact.hpp"
#include "exact/polynomial.hpp"
#include "exp/log_tables.hpp"
#include "simd/table.hpp"

namespace kelvm::inline KELVM_BUILD {

/// How exact a logarithm in double arithmetic is: `a53` within 0.51 ulp; `a50`, `a24` and `a26` with relative
/// errors below 2^-50.3, 2^-43 (from a float) and 2^-28; `a50_of_float` is a50 for an argument of 24 bits, whose
/// products with the numbers of a table are exact.
enum class LogAccuracy { a53, a50, a50_of_float, a24, a26 };

/// How the octave of m is divided: 2^bits rows from the double `lowest` on, less half a row.
struct ExactRows {
  static constexpr int bits = 8;
  static constexpr std::uint64_t lowest = 0x3FE6A00000000000;
};
struct ShortRows {
  static constexpr int bits = 5;
  static constexpr std::uint64_t lowest = 0x3FE6800000000000;
};
template <LogAccuracy A> using LogRows = std::conditional_t<A == LogAccuracy::a53, ExactRows, ShortRows>;

/// x = 2^k m, and m's row in the tables. The exponent field of `scaled` is k + 1023.
template <class V> struct LogReduced {
  V k, m;
  Int<V> row;
  Bits<V> scaled;

  V inverse_power() const { return from_bits<V>(0x7FE0000000000000u - (scaled & 0xFFF0000000000000u)); } // 2^-k
};

/// x positive, finite, normal.
template <class Rows, class V> inline LogReduced<V> log_reduce(V x) {
  constexpr std::uint64_t one = 0x3FF0000000000000;
  constexpr std::uint64_t least = Rows::lowest - (std::uint64_t(1) << (51 - Rows::bits)); // rows are centred
  const Bits<V> scaled = bits(x) + (one - least); // 2^k times a number from 1 up, linear in m
  const Bits<V> fraction = scaled & 0x000FFFFFFFFFFFFFu;
  return {exponent_of(from_bits<V>(scaled)), from_bits<V>(fraction + least),
          bit_cast<Int<V>>(fraction >> (52 - Rows::bits)), scaled};
}

/// A half of a vector of floats, reduced.
template <int Half> struct LogReducedHalf {
  Native<double> k, m;
  HalfIndex<Half> row;
};
/// The same for positive normal floats, reduced before they are widened: k, m and row of the doubles.
template <class Rows> struct LogReducedFloats {
  Int<Native<float>> k, row;
  Native<float> m;

  template <int Half> LogReducedHalf<Half> half() const { return {widen<Half>(k), widen<Half>(m), {row}}; }
};
template <class Rows> inline LogReducedFloats<Rows> log_reduce_floats(Native<float> x) {
  using I = Int<Native<float>>;
  constexpr int least = int((Rows::lowest - (std::uint64_t(1) << (51 - Rows::bits)) - 0x3800000000000000) >> 29);
  const I above_least = int_bits(x) - least, fraction = above_least & 0x007FFFFF;
  return {above_least >> 23, fraction >> (23 - Rows::bits), bit_cast<Native<float>>(fraction + least)};
}

/// Marks what the formulas below do not cover in vectors: zeros, subnormals, negative numbers, the last octave (its k +
/// 1023 leaves the exponent field), infinities, NaNs.
template <class V> inline Marks<V> not_normal_positive(V x) {
  if constexpr (sizeof(Lane<V>) == 8)
    return bit_cast<Marks<V>>((bits(x) - 0x0010000000000000u) | (0x7FDFFFFFFFFFFFFFu - bits(x)));
  else
    return bit_cast<Marks<V>>((bits(x) - 0x00800000u) | (0x7EFFFFFFu - bits(x)));
}

/// One lane reduced, any positive finite x.
template <class Rows> inline LogReduced<double> log_reduce_any(double x) {
  if (x >= 0x1p-1022) return log_reduce<Rows>(x);
  LogReduced<double> reduced = log_reduce<Rows>(x * 0x1p54);
  reduced.k -= 54;
  return reduced;
}

/// m c - 1, which is a double: through a fused operation, or from two products of a split m.
template <class V> inline V exact_product_minus_one(V m, V c) {
  if constexpr (has_fused_product_error) {
    return fused_product_error(m, c, splat<V>(1));
  } else {
    const V head = head_of(m);
    return (head * c - 1.0) + (m - head) * c;
  }
}

/// What the bases differ in.
struct Natural {
  static constexpr auto& rounded = log_tables::inverse_and_ln;
  static constexpr auto& exact = log_tables::inverse_and_exact_ln;
  static constexpr double two_hi = log_tables::ln2_hi, two_lo = log_tables::ln2_lo, two = log_tables::ln2;
};
struct Decimal {
  static constexpr auto& rounded = log_tables::inverse_and_log10;
  static constexpr auto& exact = log_tables::inverse_and_exact_log10;
  static constexpr double two_hi = log_tables::lg2_hi, two_lo = log_tables::lg2_lo, two = log_tables::lg2;
};

/// A logarithm but for the part of ln(1 + r): c, r, and k log 2 - log c as an exact head and a tail.
template <class V> struct LogParts { V c, r, head, tail; };

template <class Base, class V> inline LogParts<V> log_parts(const LogReduced<V>& x) {
  const Pair<V> row = lookup_pair<Base::exact>(x.row);
  // The tail of log c stands in the low bits of c.
  const V c = from_bits<V>(bits(row.first) & 0xFFFFF80000000000u);
  return {c, exact_product_minus_one(x.m, c), x.k * Base::two_hi + row.second,
          x.k * Base::two_lo + (row.first - c) * 0x1p-32};
}

/// With r + rest in place of r, |rest| below the last place of m.
template <class Base, class V> inline LogParts<V> with_rest(LogParts<V> p, V rest) {
  const HeadTail<V> r = fast_two_sum(p.r, rest);
  p.r = r.head;
  if constexpr (std::is_same_v<Base, Natural>)
    p.tail += r.tail - r.tail * r.head;
  else
    p.tail += r.tail * log_tables::inverse_ln10_head;
  return p;
}

/// ln x as an exact head and a small tail, |tail| < 2^-9 |head|. Relative error below 2^-61: the series, below 2^-9 of
/// the result, is rounded.
template <class V> inline HeadTail<V> ln_a53(const LogParts<V>& p) {
  const HeadTail<V> sum = fast_two_sum(p.head, p.r);
  return {sum.head, (p.tail + sum.tail) + (p.r * p.r) * estrin(p.r, log_tables::ln_a53)};
}
template <class V> inline HeadTail<V> ln_a53(const LogReduced<V>& x) { return ln_a53(log_parts<Natural>(x)); }
/// log10 x likewise. The product r / ln 10 is split so that its head is exact.
template <class V> inline HeadTail<V> log10_a53(const LogParts<V>& p) {
  const V r_head = head_of(p.r);
  const HeadTail<V> sum = fast_two_sum(p.head, r_head * log_tables::inverse_ln10_head);
  const V r_tail = (p.r - r_head) * log_tables::inverse_ln10_head + p.r * log_tables::inverse_ln10_tail;
  return {sum.head, ((p.tail + sum.tail) + r_tail) + (p.r * p.r) * estrin(p.r, log_tables::log10_a53)};
}
template <class V> inline HeadTail<V> log10_a53(const LogReduced<V>& x) { return log10_a53(log_parts<Decimal>(x)); }
template <class Base, class V> inline HeadTail<V> logarithm_a53(const LogParts<V>& p) {
  if constexpr (std::is_same_v<Base, Natural>)
    return ln_a53(p);
  else
    return log10_a53(p);
}

/// ln x as head and tail, |tail| < 2^-16 |head|, with a relative error below 2^-69: what a power needs.
template <class V> inline HeadTail<V> ln_pow(const LogParts<V>& p) {
  const HeadTail<V> linear = fast_two_sum(p.head, p.r);
  // -r^2 / 2 as an exact product of heads and the rest
  const V r_head = head_of(p.r);
  const V half_square = r_head * (-0.5 * r_head), square_rest = (p.r + r_head) * (-0.5 * (p.r - r_head));
  const HeadTail<V> sum = fast_two_sum(linear.head, half_square);
  const V cubic = (p.r * p.r) * (p.r * estrin(p.r, log_tables::ln_pow));
  return {sum.head, ((linear.tail + sum.tail) + p.tail) + (square_rest + cubic)};
}
template <class V> inline HeadTail<V> ln_pow(const LogReduced<V>& x) { return ln_pow(log_parts<Natural>(x)); }

/// rest + log(1 + r), below full precision.
template <class Base, LogAccuracy A, class V> inline V logarithm_sum(V rest, V r) {
  if constexpr (std::is_same_v<Base, Natural>) {
    constexpr auto& c = []() -> auto& {
      if constexpr (A == LogAccuracy::a50 || A == LogAccuracy::a50_of_float)
        return log_tables::ln_a50;
      else if constexpr (A == LogAccuracy::a24)
        return log_tables::ln_a24;
      else
        return log_tables::ln_a26;
    }
    ();
    return rest + (r + (r * r) * estrin(r, c));
  } else {
    constexpr auto& c = []() -> auto& {
      if constexpr (A == LogAccuracy::a50 || A == LogAccuracy::a50_of_float)
        return log_tables::log10_a50;
      else if constexpr (A == LogAccuracy::a24)
        return log_tables::log10_a24;
      else
        return log_tables::log10_a26;
    }
    ();
    return rest + r * estrin(r, c);
  }
}

/// The logarithm to base `Base` of a reduced argument.
template <class Base, LogAccuracy A, class Reduced> inline auto logarithm(const Reduced& x) {
  using V = decltype(x.m + x.m);
  if constexpr (A == LogAccuracy::a53) {
    const HeadTail<V> y = logarithm_a53<Base>(log_parts<Base>(x));
    return rounded(y);
  } else {
    const Pair<V> row = lookup_pair<Base::rounded>(x.row);
    const V r = A == LogAccuracy::a50 || (A == LogAccuracy::a50_of_float && has_fused_product_error)
                    ? exact_product_minus_one(x.m, row.first)
                    : x.m * row.first - 1.0;
    return logarithm_sum<Base, A>(x.k * Base::two + row.second, r);
  }
}

/// What 1 + x is short of the sum rounded to double adds to r.
template <class V> inline V log1p_correction(const LogReduced<V>& sum, V rest, V c) {
  return (rest * sum.inverse_power()) * c;
}

/// ln(1 + x) as an exact head and a small tail, -1 < x < 2^1000: 1 + x is reduced as it rounds, and the error of that
/// sum joins r. Around 0 the row is that of c = 1, and r is x again.
template <class V> inline HeadTail<V> logarithm_1p_head_tail(V x) {
  const HeadTail<V> sum = two_sum(splat<V>(1), x);
  const LogReduced<V> reduced = log_reduce<ExactRows>(sum.head);
  const LogParts<V> p = log_parts<Natural>(reduced);
  return ln_a53(with_rest<Natural>(p, log1p_correction(reduced, sum.tail, p.c)));
}
/// The same for a normalised head and tail.
template <class V> inline HeadTail<V> logarithm_1p_head_tail(HeadTail<V> x) {
  const HeadTail<V> sum = two_sum(splat<V>(1), x.head);
  const LogReduced<V> reduced = log_reduce<ExactRows>(sum.head);
  LogParts<V> p = log_parts<Natural>(reduced);
  const HeadTail<V> r = fast_two_sum(p.r, log1p_correction(reduced, sum.tail, p.c));
  p.r = r.head;
  p.tail += r.tail + log1p_correction(reduced, x.tail, p.c);
  return ln_a53(p);
}
template <LogAccuracy A, class V> inline V logarithm_1p(V x) {
  if constexpr (A == LogAccuracy::a53) {
    const HeadTail<V> y = logarithm_1p_head_tail(x);
    return rounded(y);
  } else if constexpr (A == LogAccuracy::a50) {
    const HeadTail<V> sum = two_sum(splat<V>(1), x);
    const LogReduced<V> reduced = log_reduce<ShortRows>(sum.head);
    const Pair<V> row = lookup_pair<Natural::rounded>(reduced.row);
    const V r = exact_product_minus_one(reduced.m, row.first) + log1p_correction(reduced, sum.tail, row.first);
    return logarithm_sum<Natural, A>(reduced.k * Natural::two + row.second, r);
  } else {
    // Beyond 2^-7 the sum's own error is small enough; below, r is x.
    const LogReduced<V> reduced = log_reduce<ShortRows>(1.0 + x);
    const Pair<V> row = lookup_pair<Natural::rounded>(reduced.row);
    const V r = select(abs(x) < splat<V>(0x1p-7), x, reduced.m * row.first - 1.0);
    return logarithm_sum<Natural, A>(reduced.k * Natural::two + row.second, r);
  }
}

// --- single precision ----------------------------------------------------------------------------------------------

/// ln and log10 of floats in float arithmetic, without a table: m in [2/3, 4/3). Relative errors below 2^-21 and 2^-11.
enum class FloatLogAccuracy { a21, a11 };

/// x = 2^k (1 + f).
template <class V> struct FloatLogReduced { V k, f; };
template <class V> inline FloatLogReduced<V> float_log_reduce(V x) {
  constexpr std::uint32_t one = 0x3F800000, least = 0x3F2AAAAB; // 2/3
  const Bits<V> scaled = bits(x) + (one - least);
  return {exponent_of(from_bits<V>(scaled)), from_bits<V>((scaled & 0x007FFFFF) + least) - 1.0f};
}

template <class Base, FloatLogAccuracy A, class V> inline V float_logarithm(V k, V f) {
  constexpr float two = Base::two, inverse_ln10 = log_tables::inverse_ln10;
  if constexpr (std::is_same_v<Base, Natural>) {
    if constexpr (A == FloatLogAccuracy::a21)
      return k * two + (f + (f * f) * estrin(f, log_tables::ln_a21));
    else
      return (k * two + f) + (f * f) * estrin(f, log_tables::ln_a11);
  } else {
    if constexpr (A == FloatLogAccuracy::a21)
      return k * two + (f * inverse_ln10 + (f * f) * estrin(f, log_tables::log10_a21));
    else
      return k * two + f * estrin(f, log_tables::log10_a11);
  }
}
template <class Base, FloatLogAccuracy A, class V> inline V float_logarithm(V x) {
  const auto [k, f] = float_log_reduce(x);
  return float_logarithm<Base, A>(k, f);
}

/// ln(1 + x), -1 < x: where |x| < 1/4, k = 0 and f is x itself.
template <FloatLogAccuracy A, class V> inline V float_logarithm_1p(V x) {
  const FloatLogReduced<V> reduced = float_log_reduce(1.0f + x);
  const V f = select(abs(x) < splat<V>(0.25f), x, reduced.f);
  const V rest = reduced.k * float(Natural::two);
  if constexpr (A == FloatLogAccuracy::a21)
    return rest + (f + (f * f) * estrin(f, log_tables::ln1p_a21));
  else
    return rest + (f + (f * f) * estrin(f, log_tables::ln_a11));
}

} // namespace kelvm::inline KELVM_BUILD
