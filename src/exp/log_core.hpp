// The logarithm core, for any width: what every function that needs a logarithm shares.
//
// x = 2^k m with m in one octave around 1, and a table by m's upper bits gives c near 1/m:
//
//   ln x = k ln 2 - ln c + ln(1 + r),   r = m c - 1
//
// The row around 1 has c = 1 and ln c = 0, and reaches over both sides of 1: there the formula is the series of
// ln(1 + r) and nothing cancels. After Tang, "Table-driven implementation of the logarithm function in IEEE
// floating-point arithmetic", 1990. Five tables:
//
//   ExactRows   256 rows, |r| < 0.0027. c has so few bits (8 or 9 below its leading one) that r is a double: the
//               reduction has no error, which full precision near 1 could not do without. ln c has a double-word.
//               Next to the row of c = 1, where ln x is the difference of ln c and r, |r| < 2^-9.
//   ShortRows   16 rows, |r| < 0.032: with AVX-512 a column fills two registers, from which one permutation takes the
//               value of every lane. r and ln c are rounded.
//   MediumRows  128 rows, |r| < 0.004: a shorter series, where a table does not stand in registers anyway.
//   LongRows    256 rows, |r| < 0.002, for m that are floats: products with c are exact.
//   MiddleRows  256 rows, |r| < 0.002, where operations are not fused: 1/c is the middle of the row, from which m
//               differs by a double, and c is rounded. r = (m - 1/c) c has a relative error below 2^-52.
//
// Base 10 has tables of its own and the factor 1 / ln 10 in the coefficients.
#pragma once

#include "exact/accuracy.hpp"
#include "exact/double_word.hpp"
#include "exact/polynomial.hpp"
#include "exp/log_tables.hpp"
#include "simd/exponent.hpp"
#include "simd/table.hpp"

namespace kelvm::inline KELVM_BUILD {

// Errors of a logarithm in double arithmetic: `full` within 0.51 ulp; `bits50`, `bits46` (from a float), `bits40` (from
// a float) and `bits27` with relative errors below 2^-50.7, 2^-49, 2^-43 and 2^-31. Below `full` log(1 + r) / r and its
// product with r are rounded. Without a fused multiply-add r of `bits27` carries the rounding of m c, 2^-53; from a
// float m c is exact.

/// How the octave of m is divided: 2^bits rows from the double `lowest` on, less half a row.
struct ExactRows {
  static constexpr int bits = 8;
  static constexpr std::uint64_t lowest = 0x3FE6A00000000000;
};
struct MediumRows {
  static constexpr int bits = 7;
  static constexpr std::uint64_t lowest = 0x3FE6A00000000000;
};
struct ShortRows {
  static constexpr int bits = 4;
  static constexpr std::uint64_t lowest = 0x3FE6000000000000;
};
/// For correct rounding to float, whose bits do not depend on the table: the short one where it stands in registers.
using CorrectRows = std::conditional_t<vector_bytes == 64, ShortRows, MediumRows>;
struct LongRows {
  static constexpr int bits = 8;
  static constexpr std::uint64_t lowest = 0x3FE6A00000000000;
};
struct MiddleRows : LongRows {
  /// 1/c: m with the bits rounded off that are below a row.
  template <class V> static V middle(V m) {
    constexpr std::uint64_t row = std::uint64_t(1) << (52 - bits);
    static_assert(lowest % row == 0);
    return from_bits<V>((kelvm::bits(m) + row / 2) & ~(row - 1));
  }
};
/// No table: m from 2/3 to 4/3.
struct OneRow {
  static constexpr int bits = 0;
  static constexpr std::uint64_t lowest = 0x3FED555555555555; // 2/3 and half an octave
};
/// By accuracy. Without fused operations a longer table saves more than it costs.
using RoundedRows = std::conditional_t<has_fused, ShortRows, MediumRows>;
template <Accuracy A>
using LogRows = std::conditional_t<A == Accuracy::full, ExactRows,
                                   std::conditional_t<A == Accuracy::bits50 && !has_fused, MiddleRows, RoundedRows>>;

/// x = 2^k m, and m's row in the tables. The exponent field of `scaled` is k + 1023.
template <class V> struct LogReduced {
  V k, m;
  Int<V> row;
  Bits<V> scaled;

  V inverse_power() const { return inverse_power_of_two(from_bits<V>(scaled & 0xFFF0000000000000u)); } // 2^-k
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

/// The lanes that the formulas below do not cover in vectors: zeros, subnormals, negative numbers, the last octave (its
/// k + 1023 leaves the exponent field), infinities, NaNs.
template <class V> inline SignMask<V> not_normal_positive(V x) {
  return outside(x, smallest_normal<Lane<V>>, largest_finite<Lane<V>> / 2);
}

/// One lane reduced, any positive finite x.
template <class Rows> inline LogReduced<double> log_reduce_any(double x) {
  if (x >= smallest_normal<double>) return log_reduce<Rows>(x);
  LogReduced<double> reduced = log_reduce<Rows>(x * 0x1p54);
  reduced.k -= 54;
  return reduced;
}

/// x c + d with one rounding, where c has few bits and x c is near -d: through a fused operation, or from two products
/// of a split x.
template <class V> inline V exact_mul_add(V x, V c, V d) {
  if constexpr (has_fused) {
    return mul_add(x, c, d);
  } else {
    const V head = head_of(x);
    return (head * c + d) + (x - head) * c;
  }
}
/// m c - 1, which is a double.
template <class V> inline V exact_product_minus_one(V m, V c) { return exact_mul_add(m, c, splat<V>(-1)); }

/// What the bases differ in.
struct Natural {
  static constexpr auto& shorter = log_tables::inverse_and_ln;
  static constexpr auto& medium = log_tables::inverse_and_medium_ln;
  static constexpr auto& middle = log_tables::inverse_and_middle_ln;
  static constexpr auto& exact = log_tables::inverse_and_exact_ln;
  static constexpr double log_of_2_hi = log_tables::ln2_hi, log_of_2_lo = log_tables::ln2_lo,
                          log_of_2 = log_tables::ln2;
};
struct Decimal {
  static constexpr auto& shorter = log_tables::inverse_and_log10;
  static constexpr auto& medium = log_tables::inverse_and_medium_log10;
  static constexpr auto& middle = log_tables::inverse_and_middle_log10;
  static constexpr auto& exact = log_tables::inverse_and_exact_log10;
  static constexpr double log_of_2_hi = log_tables::lg2_hi, log_of_2_lo = log_tables::lg2_lo,
                          log_of_2 = log_tables::lg2;
};
/// `bits27` alone, for powers of floats.
struct Binary {
  static constexpr auto& shorter = log_tables::inverse_and_log2;
  static constexpr auto& longer = log_tables::inverse_and_long_log2;
  static constexpr double log_of_2 = 1;
};

/// c and -log c, rounded.
template <class Base, class Rows, class Row> inline auto inverse_and_log(Row row) {
  if constexpr (std::is_same_v<Rows, LongRows>)
    return lookup_pair<Base::longer>(row);
  else if constexpr (std::is_same_v<Rows, MiddleRows>)
    return lookup_pair<Base::middle>(row);
  else if constexpr (std::is_same_v<Rows, MediumRows>)
    return lookup_pair<Base::medium>(row);
  else
    return lookup_pair<Base::shorter>(row);
}

/// A logarithm but for the part of ln(1 + r): c, r, and k log 2 - log c as a double-word with an exact upper word.
template <class V> struct LogParts { V c, r, hi, lo; };

/// c of an exact row, in whose low bits the lower word of log c stands.
template <class V> inline V exact_inverse(const Pair<V>& row) {
  return from_bits<V>(bits(row.first) & 0xFFFFF80000000000u);
}

template <class Base, class V> inline LogParts<V> log_parts(const LogReduced<V>& x) {
  const Pair<V> row = lookup_pair<Base::exact>(x.row);
  const V c = exact_inverse(row);
  return {c, exact_product_minus_one(x.m, c), mul_add(x.k, splat<V>(Base::log_of_2_hi), row.second),
          mul_add(x.k, splat<V>(Base::log_of_2_lo), (row.first - c) * 0x1p-32)};
}

/// With r + rest in place of r, |rest| below the last place of m.
template <class Base, class V> inline LogParts<V> with_rest(LogParts<V> p, V rest) {
  const DoubleWord<V> r = fast_two_sum(p.r, rest);
  p.r = r.hi;
  if constexpr (std::is_same_v<Base, Natural>)
    p.lo += sub_mul(r.lo, r.lo, r.hi);
  else
    p.lo = mul_add(r.lo, splat<V>(log_tables::inverse_ln10_head), p.lo);
  return p;
}

/// ln x as a double-word with an exact upper word, |lo| < 2^-9 |hi|. Relative error below 2^-61: the series, below 2^-9
/// of the result, is rounded.
template <class V> inline DoubleWord<V> ln_full(const LogParts<V>& p) {
  const DoubleWord<V> sum = fast_two_sum(p.hi, p.r);
  return {sum.hi, mul_add(p.r * p.r, estrin(p.r, log_tables::ln_full), p.lo + sum.lo)};
}
/// The same of a reduced argument, with two operations less in longer chains.
template <class V> inline DoubleWord<V> ln_full_of(const LogReduced<V>& x) {
  const Pair<V> row = lookup_pair<Natural::exact>(x.row);
  const V c = exact_inverse(row);
  const V r = exact_product_minus_one(x.m, c);
  const DoubleWord<V> sum = fast_two_sum(mul_add(x.k, splat<V>(Natural::log_of_2_hi), row.second), r);
  const V lo = mul_add(x.k, splat<V>(Natural::log_of_2_lo), mul_add(row.first - c, splat<V>(0x1p-32), sum.lo));
  return {sum.hi, mul_add(r * r, by_pairs(r, log_tables::ln_full), lo)};
}
/// log10 x likewise. The product r / ln 10 adds to hi without error but for what its lower half loses.
template <class V> inline DoubleWord<V> log10_full(const LogParts<V>& p) {
  const V series = estrin(p.r, log_tables::log10_full);
  if constexpr (has_fused) {
    const DoubleWord<V> sum = fast_mul_add(p.r, splat<V>(log_tables::inverse_ln10), p.hi);
    const V lo = mul_add(p.r, splat<V>(log_tables::inverse_ln10_rest), p.lo + sum.lo);
    return {sum.hi, mul_add(p.r * p.r, series, lo)};
  }
  const V r_head = head_of(p.r);
  const DoubleWord<V> sum = fast_two_sum(p.hi, r_head * log_tables::inverse_ln10_head);
  const V r_tail = (p.r - r_head) * log_tables::inverse_ln10_head + p.r * log_tables::inverse_ln10_tail;
  return {sum.hi, ((p.lo + sum.lo) + r_tail) + (p.r * p.r) * series};
}
template <class Base, class V> inline DoubleWord<V> logarithm_full(const LogParts<V>& p) {
  if constexpr (std::is_same_v<Base, Natural>)
    return ln_full(p);
  else
    return log10_full(p);
}

/// ln x as a double-word, |lo| < 2^-16 |hi|, with a relative error below 2^-69: what a power needs.
template <class V> inline DoubleWord<V> ln_extended(const LogParts<V>& p) {
  const DoubleWord<V> linear = fast_two_sum(p.hi, p.r);
  const V series = p.r * estrin(p.r, log_tables::ln_extended);
  if constexpr (has_fused) {
    const DoubleWord<V> sum = fast_mul_add(p.r, -0.5 * p.r, linear.hi);
    return {sum.hi, mul_add(p.r * p.r, series, (linear.lo + sum.lo) + p.lo)};
  }
  // -r^2 / 2 as an exact product of upper halves and the rest
  const V r_head = head_of(p.r);
  const V half_square = r_head * (-0.5 * r_head), square_rest = (p.r + r_head) * (-0.5 * (p.r - r_head));
  const DoubleWord<V> sum = fast_two_sum(linear.hi, half_square);
  return {sum.hi, ((linear.lo + sum.lo) + p.lo) + (square_rest + (p.r * p.r) * series)};
}

/// The coefficients of log(1 + r) / r.
template <class Base, class Rows, Accuracy> inline constexpr auto& log_coefficients = log_tables::ln_bits50;
template <> inline constexpr auto& log_coefficients<Natural, ShortRows, Accuracy::bits46> = log_tables::ln_bits46;
template <> inline constexpr auto& log_coefficients<Natural, ShortRows, Accuracy::bits40> = log_tables::ln_bits40;
template <> inline constexpr auto& log_coefficients<Natural, ShortRows, Accuracy::bits27> = log_tables::ln_bits27;
template <Accuracy A> inline constexpr auto& log_coefficients<Natural, MediumRows, A> = log_tables::ln_bits50_medium;
template <>
inline constexpr auto& log_coefficients<Natural, MediumRows, Accuracy::bits40> = log_tables::ln_bits40_medium;
template <>
inline constexpr auto& log_coefficients<Natural, MediumRows, Accuracy::bits27> = log_tables::ln_bits27_medium;
template <Accuracy A> inline constexpr auto& log_coefficients<Decimal, ShortRows, A> = log_tables::log10_bits50;
template <> inline constexpr auto& log_coefficients<Decimal, ShortRows, Accuracy::bits40> = log_tables::log10_bits40;
template <> inline constexpr auto& log_coefficients<Decimal, ShortRows, Accuracy::bits27> = log_tables::log10_bits27;
template <Accuracy A> inline constexpr auto& log_coefficients<Decimal, MediumRows, A> = log_tables::log10_bits50_medium;
template <>
inline constexpr auto& log_coefficients<Decimal, MediumRows, Accuracy::bits40> = log_tables::log10_bits40_medium;
template <>
inline constexpr auto& log_coefficients<Decimal, MediumRows, Accuracy::bits27> = log_tables::log10_bits27_medium;
template <Accuracy A> inline constexpr auto& log_coefficients<Natural, MiddleRows, A> = log_tables::ln_bits50_middle;
template <Accuracy A> inline constexpr auto& log_coefficients<Decimal, MiddleRows, A> = log_tables::log10_bits50_middle;
template <Accuracy A> inline constexpr auto& log_coefficients<Binary, ShortRows, A> = log_tables::log2_bits27;
template <Accuracy A> inline constexpr auto& log_coefficients<Binary, LongRows, A> = log_tables::log2_bits27_long;

/// rest + log(1 + r), below full precision.
template <class Base, Accuracy A, class Rows = RoundedRows, class V> inline V logarithm_sum(V rest, V r) {
  return mul_add(r, horner(r, log_coefficients<Base, Rows, A>), rest);
}

/// The same with a shorter chain, for kernels that compute few vectors at a time.
template <class Base, Accuracy A, class Rows = RoundedRows, class V> inline V logarithm_sum_by_halves(V rest, V r) {
  constexpr auto& c = log_coefficients<Base, Rows, A>;
  return mul_add(r * r, estrin<1>(r, c), mul_add(r, splat<V>(c[0]), rest));
}

/// The logarithm to base `Base` of a reduced argument.
template <class Base, Accuracy A, class Rows = LogRows<A>, class Reduced> inline auto logarithm(const Reduced& x) {
  using V = decltype(x.m + x.m);
  if constexpr (A == Accuracy::full) {
    return rounded(logarithm_full<Base>(log_parts<Base>(x)));
  } else {
    const Pair<V> row = inverse_and_log<Base, Rows>(x.row);
    const V rest = mul_add(x.k, splat<V>(Base::log_of_2), row.second);
    if constexpr (std::is_same_v<Rows, MiddleRows>) {
      return logarithm_sum_by_halves<Base, A, Rows>(rest, (x.m - Rows::middle(x.m)) * row.first);
    } else {
      const V r =
          A == Accuracy::bits50 ? exact_product_minus_one(x.m, row.first) : mul_sub(x.m, row.first, splat<V>(1));
      return logarithm_sum<Base, A, Rows>(rest, r);
    }
  }
}

/// ln x without a table: k ln 2 + 2 artanh((m - 1) / (m + 1)), with a relative error below 2^-41.
template <class V> inline V logarithm_by_quotient(const LogReduced<V>& x) {
  const V s = (x.m - 1.0) / (x.m + 1.0);
  return mul_add(s, estrin(s * s, log_tables::ln_by_quotient), x.k * log_tables::ln2);
}

/// ln(1 + x) below full precision, from the k and the row of 1 + x, rounded, and 2^-k: r = (1 + x) 2^-k c - 1 is taken
/// from x, with one rounding, which floats and positive numbers do not need: there the product is no larger than the
/// result. c 2^-k - 1 is exact but where k ln 2 is large. For bits40 x is a float or positive.
template <Accuracy A, class Rows, Arguments X = Arguments::any, class Row, class V>
inline V logarithm_1p_of(V x, V k, Row row, V inverse_power) {
  const auto [inverse, ln] = inverse_and_log<Natural, Rows>(row);
  const V c = inverse * inverse_power, d = c - 1.0;
  constexpr bool rounds = A == Accuracy::bits40 || X == Arguments::positive;
  const V r = rounds ? mul_add(x, c, d) : exact_mul_add(x, c, d);
  return logarithm_sum<Natural, A, Rows>(mul_add(k, splat<V>(Natural::log_of_2), ln), r);
}

/// What 1 + x is short of the sum rounded to double adds to r.
template <class V> inline V log1p_correction(const LogReduced<V>& sum, V rest, V c) {
  return (rest * sum.inverse_power()) * c;
}

/// ln(1 + x) as a double-word with an exact upper word, -1 < x < 2^1000: 1 + x is reduced as it rounds, and the error
/// of that sum joins r. Around 0 the row is that of c = 1, and r is x again.
template <class V> inline DoubleWord<V> logarithm_1p_double_word(V x) {
  const DoubleWord<V> sum = two_sum(splat<V>(1), x);
  const LogReduced<V> reduced = log_reduce<ExactRows>(sum.hi);
  const LogParts<V> p = log_parts<Natural>(reduced);
  return ln_full(with_rest<Natural>(p, log1p_correction(reduced, sum.lo, p.c)));
}
/// The same for a normalised double-word.
template <class V> inline DoubleWord<V> logarithm_1p_double_word(DoubleWord<V> x) {
  const DoubleWord<V> sum = two_sum(splat<V>(1), x.hi);
  const LogReduced<V> reduced = log_reduce<ExactRows>(sum.hi);
  LogParts<V> p = log_parts<Natural>(reduced);
  const DoubleWord<V> r = fast_two_sum(p.r, log1p_correction(reduced, sum.lo, p.c));
  p.r = r.hi;
  p.lo += r.lo + log1p_correction(reduced, x.lo, p.c);
  return ln_full(p);
}
template <Accuracy A, Arguments X = Arguments::any, class V> inline V logarithm_1p(V x) {
  if constexpr (A == Accuracy::full) {
    return rounded(logarithm_1p_double_word(x));
  } else {
    const LogReduced<V> sum = log_reduce<RoundedRows>(1.0 + x);
    return logarithm_1p_of<A, RoundedRows, X>(x, sum.k, sum.row, sum.inverse_power());
  }
}

// --- single precision ----------------------------------------------------------------------------------------------

/// The coefficients of (ln(1 + f) - f) / f^2, and for ln(1 + f) of a small f.
template <Accuracy> inline constexpr auto& float_ln_coefficients = log_tables::ln_bits21;
template <> inline constexpr auto& float_ln_coefficients<Accuracy::bits11> = log_tables::ln_bits11;
template <Accuracy> inline constexpr auto& float_ln1p_coefficients = log_tables::ln1p_bits21;
template <> inline constexpr auto& float_ln1p_coefficients<Accuracy::bits11> = log_tables::ln_bits11;

// ln and log10 of floats in float arithmetic, without a table: m in [2/3, 4/3), to `bits21` and `bits11`.

/// x = 2^k (1 + f).
template <class V> struct FloatLogReduced { V k, f; };
template <class V> inline FloatLogReduced<V> float_log_reduce(V x) {
  constexpr std::uint32_t one = 0x3F800000, least = 0x3F2AAAAB; // 2/3
  const Bits<V> scaled = bits(x) + (one - least);
  return {exponent_of(from_bits<V>(scaled)), from_bits<V>((scaled & 0x007FFFFF) + least) - 1.0f};
}

template <class Base, Accuracy A, class V> inline V float_logarithm(V k, V f) {
  const V log_of_2 = splat<V>(Base::log_of_2), inverse_ln10 = splat<V>(log_tables::inverse_ln10);
  if constexpr (std::is_same_v<Base, Natural>) {
    if constexpr (A == Accuracy::bits21)
      return mul_add(k, log_of_2, mul_add(f * f, estrin(f, float_ln_coefficients<A>), f));
    else
      return mul_add(f * f, estrin(f, float_ln_coefficients<A>), mul_add(k, log_of_2, f));
  } else {
    if constexpr (A == Accuracy::bits21)
      return mul_add(k, log_of_2, mul_add(f * f, estrin(f, log_tables::log10_bits21), f * inverse_ln10));
    else
      return mul_add(f, estrin(f, log_tables::log10_bits11), k * log_of_2);
  }
}
template <class Base, Accuracy A, class V> inline V float_logarithm(V x) {
  const auto [k, f] = float_log_reduce(x);
  return float_logarithm<Base, A>(k, f);
}

/// ln(1 + x), -1 < x: where |x| < 1/4, k = 0 and f is x itself.
template <Accuracy A, class V> inline V float_logarithm_1p(V x) {
  const FloatLogReduced<V> reduced = float_log_reduce(1.0f + x);
  const V f = select(abs(x) < splat<V>(0.25f), x, reduced.f);
  return mul_add(reduced.k, splat<V>(Natural::log_of_2), mul_add(f * f, estrin(f, float_ln1p_coefficients<A>), f));
}

} // namespace kelvm::inline KELVM_BUILD
