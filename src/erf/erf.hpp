// The error function, its complement and the normal distribution function, for any width. With a = |x|:
//
// Full precision (A53):
//   erf(x)  = x P(a)                P(a) = erf(a) / a
//   erfc(x) = e^(-a^2) Q(a)         Q(a) = e^(a^2) erfc(a),         for x >= 0, and 2 less that for x < 0
//   Phi(x)  = e^(-a^2 / 2) Q(a)     Q(a) = e^(a^2 / 2) Phi(-a),     for x <= 0, and 1 less that for x > 0
// P and Q are polynomials of degree 10 by rows of a table: P in steps of 1/8, Q in 16 steps a binade of 1 + a. a^2 is
// the square of a's head, which is exact, and a rest that goes to the exponential's remainder; the exponential's table
// value and Q's head have 26 bits each, so that their product is exact; the difference from 2 or 1 is taken with its
// rounding error, before the product is scaled by its power of two.
//
// Lower accuracies:
//   erf(r + t) = erf(r) + s I(r, t),   erfc(r + t) = erfc(r) - s I(r, t),   Phi(-a) = erfc(a / sqrt(2)) / 2
//   s = 2 / sqrt(pi) e^(-r^2),         I = the integral of e^(-2 r u - u^2) from u = 0 to t
// r the nearest step, its value and slope s from a table, I / t as a series in w = r t and t^2. Exact where t = 0: at
// zero, and from where erf is 1. Of erf in float arithmetic I / t is 1 - w - t^2 / 3; where operations are fused, and
// at 11 bits, there is no table, but x times a rational function of x^2 or a polynomial.
//
//          erf: steps   erfc, Phi: steps   error
//   A53                                    0.503, 0.53, 0.53 ulp
//   A50    1/128        1/128              2^-50.5, 2^-50.6, 2^-50.6
//   A26    1/128        1/128              2^-32, 2^-30, 2^-30
//   A24    1/128        1/128              2^-41 in double, correctly rounded to float
//   A21    1/64         1/64               2^-21.4, 2^-22.5, 2^-22.5
//   A11                 1/64               2^-11.1, 2^-15, 2^-15
#pragma once

#include "erf/erf_single_tables.hpp"
#include "erf/erf_tables.hpp"
#include "erf/row_polynomial.hpp"
#include "exact/accuracy.hpp"
#include "exact/rounding_test.hpp"
#include "exp/exp_core.hpp"

namespace kelvm::inline KELVM_BUILD {

/// a, not above limit. Both non-negative.
template <class V> inline V at_most(V a, Lane<V> limit) { return smaller_of(a, splat<V>(limit)); }

/// The row round(a 2^StepBits), its middle, and what a exceeds that by; exact. With a factor, that of the product.
template <int StepBits, class V> struct EvenRow {
  Int<V> index;
  V middle, t;
  explicit EvenRow(V a, Lane<V> factor = 1) {
    constexpr Lane<V> to_steps = (sizeof(Lane<V>) == 8 ? Lane<V>(0x1p52) : Lane<V>(0x1p23)) / (1 << StepBits);
    const V sum = factor == 1 ? a + to_steps : mul_sub(a, splat<V>(factor), splat<V>(-to_steps));
    index = int_bits(sum) & 0xFFF;
    middle = sum - to_steps;
    t = factor == 1 ? a - middle : mul_sub(a, splat<V>(factor), middle);
  }
};

/// The row of a where a binade of 1 + a has 2^RowBits, and what a exceeds its middle by, as t + t_error: t is inexact
/// for small a.
template <int RowBits, class V> struct BinadeRow {
  Int<V> index;
  V t, t_error;
  explicit BinadeRow(V a) {
    constexpr int fraction_bits = 52 - RowBits;
    constexpr std::uint64_t one = __builtin_bit_cast(std::uint64_t, 1.0), half = std::uint64_t(1)
                                                                                 << (fraction_bits - 1);
    const Bits<V> b = bits(1 + a);
    index = bit_cast<Int<V>>((b >> fraction_bits) - (one >> fraction_bits));
    const V middle = from_bits<V>((b & ~(2 * half - 1)) | half) - 1;
    t = a - middle;
    t_error = a - (t + middle);
  }
};

// --- a row's value and slope ---------------------------------------------------------------------------------------

/// factor (-2)^n / (n! (n + Offset)), n = First ... First + N - 1: the integral of
/// factor u^(Offset - 1) e^(-2 w u) from 0 to 1 as a power series in w. `Dropped` further powers are replaced by lower
/// ones, the nearest for |w| <= limit (Lanczos, "Applied Analysis", 1956: by Chebyshev's polynomials).
template <class T, int Offset, int First, int N, int Dropped = 0> struct SlopeSeries {
  T c[N];
  constexpr explicit SlopeSeries(double factor, double limit = 0) : c{} {
    double terms[First + N + Dropped] = {}, numerator = factor, factorial = 1;
    for (int n = 0; n < First + N + Dropped; ++n) {
      terms[n] = numerator / (factorial * (n + Offset));
      numerator *= -2;
      factorial *= n + 1;
    }
    for (int n = First + N + Dropped - 1; n >= First + N; --n) {
      double term = terms[n];
      for (int k = 0; n - 2 * k >= 2; ++k) {
        term *= (n - 2 * k) * (n - 2 * k - 1) * limit * limit / (-4.0 * (k + 1) * (n - k - 1));
        terms[n - 2 * k - 2] -= term;
      }
    }
    for (int n = 0; n < N; ++n) c[n] = T(terms[First + n]);
  }
};

/// How many terms of three series are taken: those beside 1, in w = r t, with t^2, and with t^4; and how many more of
/// the first two are replaced, for |w| <= 0.1036 (r <= 26.52 in steps of 1/128).
template <int First, int Second, int Third, int FirstDropped = 0, int SecondDropped = 0> struct SlopeTerms {
  static constexpr int first = First, second = Second, third = Third;
  static constexpr int first_dropped = FirstDropped, second_dropped = SecondDropped;
};

/// erf(r + t) - erf(r) over t slope, slope the derivative at r: the integral, e^(-u^2) as 1 - u^2 + u^4 / 2, term by
/// term.
template <class Terms, class V> inline V mean_slope(V r, V t) {
  using T = Lane<V>;
  constexpr double limit = 0.1036;
  static constexpr SlopeSeries<T, 1, 1, Terms::first, Terms::first_dropped> first(1, limit);
  const V w = r * t;
  const V sum = mul_add(w, estrin(w, first.c), splat<V>(1));
  if constexpr (Terms::second == 0) {
    return sum;
  } else {
    static constexpr SlopeSeries<T, 3, 0, Terms::second, Terms::second_dropped> second(-1, limit);
    const V square = t * t;
    V of_square = estrin(w, second.c);
    if constexpr (Terms::third > 0) {
      static constexpr SlopeSeries<T, 5, 0, Terms::third> third(0.5);
      of_square = mul_add(square, estrin(w, third.c), of_square);
    }
    return mul_add(square, of_square, sum);
  }
}

// --- erf -----------------------------------------------------------------------------------------------------------

/// The last row of the tables, on which erf is 1 in the type; where floats have no table 1 - erf is below 2^-21.5
/// there.
template <class T> inline constexpr T erf_saturated = sizeof(T) == 8 ? T(6.0) : has_fused ? T(3.625) : T(3.9375);
/// Smaller arguments, but for 0, are not for the vector formulas: powers of a double would underflow, and a float's
/// result may be subnormal.
template <class T> inline constexpr T erf_tiny = sizeof(T) == 8 ? T(0x1p-400) : T(0x1p-126);

/// NaNs, and the tiny arguments but for 0.
template <class V> inline SignMask<V> nan_or_tiny(V x) {
  const Int<V> a = int_bits(abs(x));
  return above(abs(x), infinity<Lane<V>>) | ((a - bit_cast<Lane<Int<V>>>(erf_tiny<Lane<V>>)) & -a);
}

/// erf(a) at full precision, as a sum, for erf_tiny <= a <= 6 or a = 0.
template <class V> inline DoubleWord<V> erf_double_word(V a) {
  const EvenRow<3, V> row(a);
  const DoubleWord<V> p = split_row_sum(row.t, lookup_row<erf_tables::erf_full>(row.index));
  const V a_hi = head_of(a);
  return {a_hi * p.hi, p.hi * (a - a_hi) + p.lo * a};
}

/// erf(a) for a >= 0.
template <Accuracy A, class V> inline V erf_positive(V a) {
  using enum Accuracy;
  using T = Lane<V>;
  if constexpr (A != bits11) a = at_most(a, erf_saturated<T>);
  if constexpr (A == full) {
    const DoubleWord<V> result = erf_double_word(a);
    return rounded(result);
  } else if constexpr (sizeof(T) == 8) {
    using Terms = std::conditional_t<A == bits50, SlopeTerms<4, 4, 2>,
                                     std::conditional_t<A == bits40, SlopeTerms<3, 2, 1>, SlopeTerms<2, 1, 0>>>;
    const EvenRow<7, V> row(a);
    const auto [value, slope] = lookup_pair<erf_tables::erf_and_slope>(row.index);
    return mul_add(slope * row.t, mean_slope<Terms>(row.middle, row.t), value);
  } else if constexpr (A == bits21 && !has_fused) {
    const EvenRow<6, V> row(a);
    const auto [value, slope] = lookup_pair<erf_tables::float_erf_and_slope>(row.index);
    const V third = mul_add(row.t, splat<V>(T(1) / 3), row.middle); // w + t^2 / 3 over t
    return mul_add(slope, sub_mul(row.t, row.t * row.t, third), value);
  } else if constexpr (A == bits21) {
    const V z = a * a;
    const V y = a * horner(z, erf_single_tables::numerator) / horner(z, erf_single_tables::denominator);
    return select(a < splat<V>(erf_saturated<T>), y, splat<V>(1));
  } else {
    a = at_most(a, 2.75f);
    return at_most(a * estrin(a * a, erf_tables::erf_bits11), 1);
  }
}

// --- erfc and Phi --------------------------------------------------------------------------------------------------

// A family has its table, `whole` (what the tails on both sides sum up to), `tail_is_negative` (the other side is whole
// less the tail), the square's factor, what its argument is in erfc's, and by type: the last a of the vector formula
// (some way from where an inexact result could leave the normal range), the last a with a normal result, and one from
// which on the result is zero.

struct Erfc {
  static constexpr auto& full = erf_tables::erfc_full;
  static constexpr int whole = 2;
  static constexpr bool tail_is_negative = false;
  static constexpr double square_factor = 1, argument = 1;
  template <class T> static constexpr T in_vectors = sizeof(T) == 8 ? T(26.5) : T(9.1875);
  template <class T> static constexpr T last_normal = sizeof(T) == 8 ? T(0x1.a8b12fc6e4891p+4) : T(0x1.2639bep+3);
  template <class T> static constexpr T first_zero = sizeof(T) == 8 ? T(27.2261) : T(10.0546);
};
struct CdfNorm {
  static constexpr auto& full = erf_tables::normal_full;
  static constexpr int whole = 1;
  static constexpr bool tail_is_negative = true;
  static constexpr double square_factor = 0.5, argument = 0x1.6a09e667f3bcdp-1;
  template <class T> static constexpr T in_vectors = sizeof(T) == 8 ? T(37.5) : T(12.9375);
  template <class T> static constexpr T last_normal = sizeof(T) == 8 ? T(0x1.2c27b05bf1a0ap+5) : T(0x1.9e6602p+3);
  template <class T> static constexpr T first_zero = sizeof(T) == 8 ? T(38.4855) : T(14.1702);
};

/// The lanes that are not covered in vectors: the end of the tail, and NaNs.
template <class F, class V> inline SignMask<V> beyond_tail(V x) {
  const SignMask<V> far = above(abs(x), F::template in_vectors<Lane<V>>), nan = above(abs(x), infinity<Lane<V>>);
  const Int<V> sign = int_bits(x);
  return (far & (F::tail_is_negative ? sign : ~sign)) | nan;
}
/// All bits set where the result is the whole less the tail.
template <class F, class V> inline Int<V> is_opposite(V x) {
  const Int<V> negative = int_bits(x) >> (8 * int(sizeof(Lane<V>)) - 1);
  return F::tail_is_negative ? ~negative : negative;
}

/// e^(-a^2) Q(a), or with a^2 / 2, at full precision, but for the scale 2^floor(k / 32) in `power`.
template <class V> struct ErrorTail {
  DoubleWord<V> value;
  ExpReduced<V> power;
};
template <class F, class V> inline ErrorTail<V> error_tail(V a) {
  const V a_hi = head_of(a);
  const ExpReduced<V> power = exp_reduce(-F::square_factor * (a_hi * a_hi));
  const V r = power.main - mul_add(F::square_factor * (a - a_hi), a + a_hi, power.rest);
  const DoubleWord<V> e = exp2_short_and_rest(power);
  const V e_tail = mul_add(e.hi + e.lo, mul_add(r * r, estrin(r, exp_core_tables::exp_full), r), e.lo);
  const BinadeRow<4, V> row(a);
  const V t_hi = head_of(row.t);
  const DoubleWord<V> q = split_row_sum(row.t, t_hi, (row.t - t_hi) + row.t_error, lookup_row<F::full>(row.index));
  return {{e.hi * q.hi, mul_add(e_tail, q.hi + q.lo, e.hi * q.lo)}, power};
}

/// The whole less the tail where the result is that, else the tail; from a tail that is already scaled.
template <class F, class V> inline V either_side(V tail, V x) {
  const V rest = Lane<V>(F::whole) - tail;
  return F::tail_is_negative ? select(int_bits(x), tail, rest) : select(int_bits(x), rest, tail);
}

/// The row of a family's argument in erfc's table.
template <class F, int StepBits, bool Exact, class V> inline EvenRow<StepBits, V> complement_row(V a) {
  using T = Lane<V>;
  if constexpr (F::argument == 1) {
    return EvenRow<StepBits, V>(a);
  } else {
    constexpr T factor = F::argument;
    EvenRow<StepBits, V> row(a, factor);
    if constexpr (Exact) { // t with the product's rounding error, and the factor's
      constexpr T hi = sizeof(T) == 8 ? T(0x1.6a09e6p-1) : T(0x1.6ap-1);
      constexpr T lo = sizeof(T) == 8 ? T(0x1.9fcef32422cbfp-27) : T(0x1.3cccfep-14);
      if constexpr (has_fused) {
        row.t = mul_add(a, splat<V>((hi - factor) + lo), row.t);
      } else {
        const V a_hi = head_of(a);
        row.t = (a_hi * hi - row.middle) + (a_hi * lo + (a - a_hi) * factor);
      }
    }
    return row;
  }
}

template <class F, Accuracy A, class V> inline V error_complement(V x) {
  using enum Accuracy;
  using T = Lane<V>;
  const V a = at_most(abs(x), A == bits40 ? T(F::template in_vectors<float>) : F::template in_vectors<T>);
  if constexpr (A == full) {
    const ErrorTail<V> tail = error_tail<F>(a);
    const V scale = tail.power.scaled(splat<V>(1)), unscaled_whole = F::whole * inverse_power_of_two(scale);
    const Int<V> opposite = is_opposite<F>(x);
    const V whole = bit_cast<V>(opposite & int_bits(unscaled_whole));
    const Bits<V> sign = bit_cast<Bits<V>>(opposite) & sign_bit<V>;
    const DoubleWord<V> sum = fast_two_sum(whole, flip_sign(tail.value.hi, sign));
    return (sum.hi + (sum.lo + flip_sign(tail.value.lo, sign))) * scale;
  } else {
    if constexpr (sizeof(T) == 8) {
      using Terms = std::conditional_t<A == bits50, SlopeTerms<8, 7, 4, 2, 1>,
                                       std::conditional_t<A == bits40, SlopeTerms<6, 4, 1>, SlopeTerms<6, 3, 0>>>;
      const auto row = complement_row<F, 7, A == bits50>(a);
      const auto [value, slope] = lookup_pair<erf_tables::erfc_and_slope>(row.index);
      const V tail = sub_mul(value, slope * row.t, mean_slope<Terms>(row.middle, row.t));
      return either_side<F>(F::whole == 2 ? tail : 0.5 * tail, x);
    } else {
      using Terms = std::conditional_t<A == bits21, SlopeTerms<4, 2, 0>, SlopeTerms<2, 0, 0>>;
      const auto row = complement_row<F, 6, A == bits21>(a);
      const auto [value, slope] = lookup_pair<erf_tables::float_erfc_and_slope>(row.index);
      const V tail = sub_mul(value, slope * row.t, mean_slope<Terms>(row.middle, row.t));
      return either_side<F>(tail * (F::whole == 2 ? 0x1p-32f : 0x1p-33f), x); // the table's scale
    }
  }
}
/// The relative errors of bits40, in bits.
inline constexpr int erf_decided_bits = 40, error_complement_decided_bits = 40;

/// The tail's result rounded once, also below the normal range, for in_vectors < a < first_zero.
template <class F> inline double end_of_tail(double a) {
  const ErrorTail<double> tail = error_tail<F>(a);
  const DoubleWord<double> v = normalised(64 * tail.value);
  return ScaledSum{v, tail.power.exponent() - 6}.rounded();
}

} // namespace kelvm::inline KELVM_BUILD
