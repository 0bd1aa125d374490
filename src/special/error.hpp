// The error function, its complement and the normal distribution function, for any width. With a = |x|:
//
//   erf(x)  = x P(a)                P(a) = erf(a) / a
//   erfc(x) = e^(-a^2) Q(a)         Q(a) = e^(a^2) erfc(a),         for x >= 0, and 2 less that for x < 0
//   Phi(x)  = e^(-a^2 / 2) Q(a)     Q(a) = e^(a^2 / 2) Phi(-a),     for x <= 0, and 1 less that for x > 0
//
// P and Q are polynomials by rows of a table: P in equal steps of a, Q in steps that grow with 1 + a. The exponential
// is that of exp/exp_core.hpp.
//
//             P: steps of   degree   Q: rows a binade   degree   error of erf, erfc, Phi
//   A53       1/8           10       16                 10       0.51, 0.515, 0.515 ulp
//   A50       1/16          7        32                 7        2^-51
//   A26       1/16          3        32                 3        2^-26.3
//   A24       1/16          5        32                 5        correctly rounded
//   A21       1/16          3        32                 3        2^-21.5, in float
//   A11       1/16          1        32                 1        2^-12, in float
//
// What full precision asks for: a^2 as a square of a's head, which is exact, and a rest that goes to the exponential's
// remainder; the exponential's table value and Q's head, of 26 bits each, whose product is exact; and the difference
// from 2 or 1 with its rounding error, taken before the product is scaled by its power of two.
#pragma once

#include "exact/decided.hpp"
#include "exp/exp_core.hpp"
#include "special/error_tables.hpp"
#include "special/rows.hpp"

namespace kelvm::inline KELVM_BUILD {

enum class ErrorAccuracy { a53, a50, a26, a24, a21, a11 };

/// a, not above limit. Both non-negative.
template <class V> inline V at_most(V a, Lane<V> limit) { return select(a < limit, a, splat<V>(limit)); }

/// The row round(a 2^StepBits), its middle, and what a exceeds that by; exact.
template <int StepBits, class V> struct EvenRow {
  Int<V> index;
  V middle, t;
  explicit EvenRow(V a) {
    constexpr Lane<V> shifter = (sizeof(Lane<V>) == 8 ? Lane<V>(0x1p52) : Lane<V>(0x1p23)) / (1 << StepBits);
    const V sum = a + shifter;
    index = int_bits(sum) & 0xFFF;
    middle = sum - shifter;
    t = a - middle;
  }
};

/// The row of a where a binade of 1 + a has 2^RowBits, and what a exceeds its middle by.
template <int RowBits, class V> struct BinadeRow {
  Int<V> index;
  V t;
  explicit BinadeRow(V a) {
    using B = Lane<Bits<V>>;
    constexpr int fraction_bits = (sizeof(Lane<V>) == 8 ? 52 : 23) - RowBits;
    constexpr B one = __builtin_bit_cast(B, Lane<V>(1)), half = B(1) << (fraction_bits - 1);
    const Bits<V> b = bits(1 + a);
    index = bit_cast<Int<V>>((b >> fraction_bits) - (one >> fraction_bits));
    t = a - (from_bits<V>((b & ~(2 * half - 1)) | half) - 1);
  }
};

// --- erf -----------------------------------------------------------------------------------------------------------

/// The last row of the tables, on which erf is 1 in the type.
template <class T> inline constexpr T erf_saturated = sizeof(T) == 8 ? T(6.0) : T(3.9375);
/// Smaller arguments, but for 0, are not for the vector formulas, whose powers of a would underflow.
template <class T> inline constexpr T erf_tiny = sizeof(T) == 8 ? T(0x1p-400) : T(0x1p-30);

/// NaNs, and the tiny arguments but for 0.
template <class V> inline Marks<V> nan_or_tiny(V x) {
  const Int<V> a = int_bits(abs(x));
  return above(abs(x), infinity<Lane<V>>) | ((a - bit_cast<Lane<Int<V>>>(erf_tiny<Lane<V>>)) & -a);
}

/// erf(a) at full precision, as a sum, for erf_tiny <= a <= 6 or a = 0.
template <class V> inline HeadTail<V> erf_head_tail(V a) {
  const EvenRow<3, V> row(a);
  const HeadTail<V> p = split_row_sum(row.t, lookup_row<error_tables::erf_a53>(row.index));
  const V a_hi = head_of(a);
  return {a_hi * p.head, p.head * (a - a_hi) + p.tail * a};
}

/// erf(a) for a >= 0.
template <ErrorAccuracy A, class V> inline V erf_positive(V a) {
  using enum ErrorAccuracy;
  using T = Lane<V>;
  a = at_most(a, erf_saturated<T>);
  if constexpr (A == a53) {
    const HeadTail<V> result = erf_head_tail(a);
    return result.head + result.tail;
  } else {
    const EvenRow<sizeof(T) == 8 ? 7 : 4, V> row(a);
    const V r = row.middle, t = row.t, square = r * r;
    const auto [value, slope] = [&] {
      if constexpr (sizeof(T) == 8)
        return lookup_pair<error_tables::erf_and_slope>(row.index);
      else
        return lookup_pair<error_tables::float_erf_and_slope>(row.index);
    }();
    // Of the derivatives, divided by the first and by n!.
    const V second = square * T(2.0 / 3) - T(1.0 / 3);
    V rest;
    if constexpr (A == a11) {
      rest = t * T(-1.0 / 3) - r;
    } else if constexpr (A == a26) {
      rest = t * second - r;
    } else {
      const V third = r * (T(0.5) - square * T(1.0 / 3));
      if constexpr (A == a21) {
        rest = t * (second + t * third) - r;
      } else if constexpr (A == a24) {
        rest = t * (second + t * (third + t * T(0.1))) - r;
      } else {
        const V fourth = square * (square * T(2.0 / 15) - T(0.4)) + T(0.1);
        const V fifth = r * (square * (T(2.0 / 9) - square * T(2.0 / 45)) - T(1.0 / 6));
        rest = t * (second + t * (third + t * (fourth + t * fifth))) - r;
      }
    }
    return value + (slope * t) * (1 + t * rest);
  }
}

// --- erfc and Phi --------------------------------------------------------------------------------------------------

// A family has its table, `whole` (what the tails on both sides sum up to), `side` (the sign bit of x in its own tail,
// the other side being whole less the tail), the square's factor, and by type: the last a of the vector formula (some
// way from where an inexact result could leave the normal range), the last a with a normal result, and one from which
// on the result is zero.

struct Erfc {
  static constexpr auto &a53 = error_tables::erfc_a53, &a50 = error_tables::erfc_a50, &a26 = error_tables::erfc_a26;
  static constexpr auto& a24 = error_tables::erfc_a24;
  static constexpr auto &a21 = error_tables::erfc_a21, &a11 = error_tables::erfc_a11;
  static constexpr int whole = 2;
  static constexpr bool tail_is_negative = false;
  static constexpr double square_factor = 1;
  template <class T> static constexpr T in_vectors = sizeof(T) == 8 ? T(26.5) : T(9.1875);
  template <class T> static constexpr T last_normal = sizeof(T) == 8 ? T(0x1.a8b12fc6e4891p+4) : T(0x1.2639bep+3);
  template <class T> static constexpr T first_zero = sizeof(T) == 8 ? T(27.2261) : T(10.0546);
};
struct CdfNorm {
  static constexpr auto &a53 = error_tables::normal_a53, &a50 = error_tables::normal_a50;
  static constexpr auto &a26 = error_tables::normal_a26, &a24 = error_tables::normal_a24;
  static constexpr auto &a21 = error_tables::normal_a21, &a11 = error_tables::normal_a11;
  static constexpr int whole = 1;
  static constexpr bool tail_is_negative = true;
  static constexpr double square_factor = 0.5;
  template <class T> static constexpr T in_vectors = sizeof(T) == 8 ? T(37.5) : T(12.9375);
  template <class T> static constexpr T last_normal = sizeof(T) == 8 ? T(0x1.2c27b05bf1a0ap+5) : T(0x1.9e6602p+3);
  template <class T> static constexpr T first_zero = sizeof(T) == 8 ? T(38.4855) : T(14.1702);
};

/// Marks what is not covered in vectors: the end of the tail, and NaNs.
template <class F, class V> inline Marks<V> beyond_tail(V x) {
  const Marks<V> far = above(abs(x), F::template in_vectors<Lane<V>>), nan = above(abs(x), infinity<Lane<V>>);
  const Int<V> sign = int_bits(x);
  return (far & (F::tail_is_negative ? sign : ~sign)) | nan;
}
/// All bits set where the result is the whole less the tail.
template <class F, class V> inline Int<V> is_opposite(V x) {
  const Int<V> negative = int_bits(x) >> (8 * int(sizeof(Lane<V>)) - 1);
  return F::tail_is_negative ? ~negative : negative;
}

/// e^(-a^2) Q(a), or with a^2 / 2, at full precision, but for the scale 2^floor(k / 128) in `power`.
template <class V> struct ErrorTail {
  HeadTail<V> value;
  ExpReduced<128, V> power;
};
template <class F, class V> inline ErrorTail<V> error_tail(V a) {
  const V a_hi = head_of(a);
  const ExpReduced<128, V> power = exp_reduce<128>(-F::square_factor * (a_hi * a_hi));
  const V r = (power.main - power.rest) - (F::square_factor * (a - a_hi)) * (a + a_hi);
  const HeadTail<V> e = exp2_short_and_rest(power);
  const V e_tail = e.tail + (e.head + e.tail) * (r + (r * r) * estrin(r, exp_core_tables::exp_pow));
  const BinadeRow<4, V> row(a);
  const HeadTail<V> q = split_row_sum(row.t, lookup_row<F::a53>(row.index));
  return {{e.head * q.head, e.head * q.tail + e_tail * (q.head + q.tail)}, power};
}

/// The whole less the tail where opposite, else the tail; from a tail that is already scaled.
template <class F, class V> inline V either_side(V tail, Int<V> opposite) {
  const V whole = bit_cast<V>(opposite & int_bits(splat<V>(F::whole)));
  return whole + flip_sign(tail, bit_cast<Bits<V>>(opposite) & sign_bit<V>);
}

template <class F, ErrorAccuracy A, class V> inline V error_complement(V x) {
  using enum ErrorAccuracy;
  using T = Lane<V>;
  const Int<V> opposite = is_opposite<F>(x);
  const V a = at_most(abs(x), A == a24 ? T(F::template in_vectors<float>) : F::template in_vectors<T>);
  if constexpr (A == a53) {
    const ErrorTail<V> tail = error_tail<F>(a);
    const V scale = tail.power.scaled(splat<V>(1)), unscaled_whole = F::whole * inverse_power_of_2(scale);
    const V whole = bit_cast<V>(opposite & int_bits(unscaled_whole));
    const Bits<V> sign = bit_cast<Bits<V>>(opposite) & sign_bit<V>;
    const HeadTail<V> sum = fast_two_sum(whole, flip_sign(tail.value.head, sign));
    return (sum.head + (sum.tail + flip_sign(tail.value.tail, sign))) * scale;
  } else if constexpr (A == a50) {
    const V a_hi = head_of(a), square_rest = (T(F::square_factor) * (a - a_hi)) * (a + a_hi);
    const ExpReduced<32, V> power = exp_reduce<32>(T(-F::square_factor) * (a_hi * a_hi));
    const HeadTail<V> e = exp_unscaled<ExpAccuracy::a50>(power, -square_rest);
    const BinadeRow<5, V> row(a);
    return either_side<F>(power.scaled(e.head * row_horner(row.t, lookup_row<F::a50>(row.index))), opposite);
  } else if constexpr (A == a26 || A == a24) {
    // The square of a float is exact.
    const ExpReduced<32, V> power = exp_reduce<32>(T(-F::square_factor) * (a * a));
    const HeadTail<V> e = exp_unscaled < A == a26 ? ExpAccuracy::a26 : ExpAccuracy::a24 > (power, V{});
    const BinadeRow<5, V> row(a);
    V q;
    if constexpr (A == a26)
      q = row_horner(row.t, lookup_row<F::a26>(row.index));
    else
      q = row_horner(row.t, lookup_row<F::a24>(row.index));
    return either_side<F>(power.scaled(e.head * q), opposite);
  } else if constexpr (A == a21) {
    const V a_hi = head_of(a), square_rest = (T(F::square_factor) * (a - a_hi)) * (a + a_hi);
    const FloatExpReduced<V> power = float_exp_reduce(T(-F::square_factor) * (a_hi * a_hi));
    const V r = power.r - square_rest;
    const V e = 1 + (r + (r * r) * estrin(r, exp_core_tables::float_expm1_a21));
    const BinadeRow<5, V> row(a);
    return either_side<F>(power.scaled(e * row_horner(row.t, lookup_row<F::a21>(row.index))), opposite);
  } else {
    const FloatExpReduced<V> power = float_exp_reduce(T(-F::square_factor) * (a * a));
    const V r = power.r;
    const V e = 1 + (r + (r * r) * estrin(r, exp_core_tables::float_exp_a11));
    const BinadeRow<5, V> row(a);
    const auto [c0, c1] = lookup_pair<F::a11>(row.index);
    return either_side<F>(power.scaled(e * (c0 + row.t * c1)), opposite);
  }
}
/// The relative errors of a24, in bits.
inline constexpr int erf_a24_bits = 40, error_complement_a24_bits = 39;

/// The tail's result rounded once, also below the normal range, for in_vectors < a < first_zero.
template <class F> inline double end_of_tail(double a) {
  const ErrorTail<double> tail = error_tail<F>(a);
  const HeadTail<double> v = fast_two_sum(64 * tail.value.head, 64 * tail.value.tail);
  return scale_rounded(v, (std::int64_t(bits(tail.power.sum) << 13) >> (13 + 7)) - 6);
}

} // namespace kelvm::inline KELVM_BUILD
