// The inverse of the error function and its relatives, for any width.
//
//   erfinv(x)           = x P(1 - |x|)                    P(y) = erfinv(1 - y) / (1 - y)
//   erfcinv(x)          = (1 - x) P(min(x, 2 - x))
//   Phi^-1(p)           = sqrt(2) (2p - 1) P(min(2p, 2 - 2p))
//
// y, the distance from the nearest pole, has a row of a table by its exponent and leading significand bits: a
// polynomial for P (or sqrt(2) P) in y's significand less that of the row's middle. So the rows follow y binade by
// binade into the pole, and no logarithm is needed down to y = 2^-53 (2^-24 for floats).
//
//             rows a binade   polynomial                      error
//   A53       4               degree 14, c0 and c1 doubled    0.502 ulp
//   A50       4               degree 11                       2^-51
//   A26       16              degree 3                        2^-27
//   A24       8               degree 7, in double             correctly rounded
//   A21       8               degree 3, in float              2^-22
//   A11       16              degree 1, in float              2^-13
//
// What full precision asks for: the polynomial's head, c0 + c1 r, and the factor have heads of 26 bits, whose product
// is exact; the rounding errors of 1 - |x| and of 1 - x or 2p - 1 are kept.
//
// Closer to the pole at 0 (erfcinv, Phi^-1) one lane at a time: with w = -ln x and s = 1 / sqrt(w), erfcinv(x) =
// sqrt(w) times a polynomial in s, in double-double. For Phi^-1, x = 2p.
#pragma once

#include "erf/erf_inverse_tables.hpp"
#include "erf/row_polynomial.hpp"
#include "exact/accuracy.hpp"
#include "exact/rounding_test.hpp"

namespace kelvm::inline KELVM_BUILD {

// A family is its table, its argument's way to y and to the factor of P, and its domain.
//   distance(x)                   y, from an argument in the fast range
//   distance_error(x, y)          what rounding took from it, where distance_is_rounded
//   factor(x)                     and factor_error(x, factor) where factor_is_rounded

struct ErfTables {
  static constexpr auto& full = erf_inverse_tables::erf_full;
  static constexpr auto& tail = erf_inverse_tables::erf_tail;
  static constexpr auto& bits50 = erf_inverse_tables::erf_bits50;
  static constexpr auto& bits27 = erf_inverse_tables::erf_bits27;
  static constexpr auto& bits40 = erf_inverse_tables::erf_bits40;
  static constexpr auto& bits21 = erf_inverse_tables::erf_bits21;
  static constexpr auto& bits11 = erf_inverse_tables::erf_bits11;
};
struct NormalTables {
  static constexpr auto& full = erf_inverse_tables::normal_full;
  static constexpr auto& tail = erf_inverse_tables::normal_tail;
  static constexpr auto& bits50 = erf_inverse_tables::normal_bits50;
  static constexpr auto& bits27 = erf_inverse_tables::normal_bits27;
  static constexpr auto& bits40 = erf_inverse_tables::normal_bits40;
  static constexpr auto& bits21 = erf_inverse_tables::normal_bits21;
  static constexpr auto& bits11 = erf_inverse_tables::normal_bits11;
};

/// The lanes outside lowest <= x < end, both positive. A negative x is outside.
template <class V> inline SignMask<V> outside_half_open(V x, Lane<V> lowest, Lane<V> end) {
  return bit_cast<SignMask<V>>((bits(x) - bits(lowest)) | (bits(end) - 1u - bits(x)));
}

/// The least argument whose complement to 1 is not 1.
template <class T> inline constexpr T first_regular = sizeof(T) == 8 ? T(0x1p-53) : T(0x1p-24);

struct ErfInv {
  using Tables = ErfTables;
  static constexpr bool distance_is_rounded = true, factor_is_rounded = false;
  template <class V> static V distance(V x) { return 1 - abs(x); }
  template <class V> static V distance_error(V x, V y) { return (1 - y) - abs(x); }
  template <class V> static V factor(V x) { return x; }

  template <class V> static SignMask<V> special(V x) {
    return outside_half_open(abs(x), first_regular<Lane<V>>, Lane<V>(1));
  }
};

/// The families with poles at 0 and `end`. unit(x) is x scaled to end at 2.
template <class F> struct BetweenPoles {
  static constexpr bool distance_is_rounded = false, factor_is_rounded = true;
  template <class V> static V distance(V x) {
    const V u = F::unit(x);
    return select(u < 1, u, 2 - u);
  }
  template <class V> static SignMask<V> special(V x) {
    constexpr auto end = Lane<V>(F::end);
    return outside_half_open(x, end / 2 * first_regular<Lane<V>>, end) | sign_mask<V>(x == end / 2);
  }
};
struct ErfcInv : BetweenPoles<ErfcInv> {
  using Tables = ErfTables;
  static constexpr int end = 2;
  static constexpr float sign_at_zero = 1;
  template <class V> static V unit(V x) { return x; }
  template <class V> static V factor(V x) { return 1 - x; }
  template <class V> static V factor_error(V x, V factor) { return (1 - factor) - x; }
};
struct CdfNormInv : BetweenPoles<CdfNormInv> {
  using Tables = NormalTables;
  static constexpr int end = 1;
  static constexpr float sign_at_zero = -1;
  template <class V> static V unit(V p) { return 2 * p; }
  template <class V> static V factor(V p) { return 2 * p - 1; }
  template <class V> static V factor_error(V p, V factor) { return 2 * p - (1 + factor); }
};

/// y's row in a table with 2^RowBits rows a binade, counted down from y just below 1, and t: y's significand less that
/// of the row's middle.
template <int RowBits, class V> struct InverseRow {
  static constexpr int fraction_bits = (sizeof(Lane<V>) == 8 ? 52 : 23) - RowBits;
  static constexpr Lane<V> middle = 1 + Lane<V>(1) / (2 << RowBits);
  Int<V> index;
  V t;

  explicit InverseRow(V y) {
    constexpr auto one = __builtin_bit_cast(Lane<Bits<V>>, Lane<V>(1));
    index = Lane<Int<V>>((one - 1) >> fraction_bits) - bit_cast<Int<V>>(bits(y) >> fraction_bits);
    t = from_bits<V>((bits(y) & ((Lane<Bits<V>>(1) << fraction_bits) - 1)) | one) - middle;
  }
};

/// The result at full precision, as a double-word, |lo| < 2^-25 |hi|.
template <class F, class V> inline DoubleWord<V> inverse_double_word(V x) {
  const V y = F::distance(x);
  const InverseRow<2, V> row(y);
  V r = row.t;
  if constexpr (F::distance_is_rounded) {
    const V power = from_bits<V>(0x7FE0000000000000u - (bits(y) & 0x7FF0000000000000u)); // of 2, 1/2 < y power <= 1
    r += F::distance_error(x, y) * power;
  }
  const DoubleWord<V> p = split_row_sum(r, lookup_row<F::Tables::full>(row.index));
  const V factor = F::factor(x), factor_hi = head_of(factor);
  V factor_lo = factor - factor_hi;
  if constexpr (F::factor_is_rounded) factor_lo += F::factor_error(x, factor);
  return {factor_hi * p.hi, p.hi * factor_lo + p.lo * factor};
}

template <class F, Accuracy A, class V> inline V inverse(V x) {
  using enum Accuracy;
  if constexpr (A == full) {
    const DoubleWord<V> result = inverse_double_word<F>(x);
    return rounded(result);
  } else if constexpr (A == bits50) {
    const InverseRow<2, V> row(F::distance(x));
    return F::factor(x) * row_horner(row.t, lookup_row<F::Tables::bits50>(row.index));
  } else if constexpr (A == bits27) {
    const InverseRow<4, V> row(F::distance(x));
    return F::factor(x) * row_horner(row.t, lookup_row<F::Tables::bits27>(row.index));
  } else if constexpr (A == bits40) {
    const InverseRow<3, V> row(F::distance(x));
    return F::factor(x) * row_horner(row.t, lookup_row<F::Tables::bits40>(row.index));
  } else if constexpr (A == bits21) {
    const InverseRow<3, V> row(F::distance(x));
    return F::factor(x) * row_horner(row.t, lookup_row<F::Tables::bits21>(row.index));
  } else {
    const InverseRow<4, V> row(F::distance(x));
    const auto [c0, c1] = lookup_pair<F::Tables::bits11>(row.index);
    return F::factor(x) * (c0 + row.t * c1);
  }
}
/// The relative error of bits40, in bits.
inline constexpr int inverse_decided_bits = 44;

/// -ln x for any positive x below 1, relative error below 2^-62.
inline DoubleWord<double> minus_ln(double x) {
  double bias = 1023;
  if (x < smallest_normal<double>) {
    x *= 0x1p54;
    bias += 54;
  }
  const double e = double(bits(x) >> 52) - bias;
  const double m = from_bits<double>((bits(x) & 0x000FFFFFFFFFFFFFu) | 0x3FF0000000000000u);
  const auto& row = erf_inverse_tables::tail_logarithm[(bits(x) >> 44) & 255];
  const double m_hi = head_of(m);
  const double u = (m_hi * row[0] - 1.0) + (m - m_hi) * row[0]; // exact
  const double u2 = u * u;
  // ln(1 + u) - u, |u| <= 0.00285
  const double series = u2 * (-0.5 + 0.33333333333145093 * u) +
                        (u2 * u2) * (-0.2499999999965227 + u * (0.20000103714740713 - 0.1666678766814359 * u));
  const DoubleWord<double> head = fast_two_sum(e * 0.6931471803691238 + row[1], u); // the first sum is exact
  const double tail = head.lo + (row[2] + e * 1.9082149292705877e-10 + series);
  const DoubleWord<double> ln = fast_two_sum(head.hi, tail);
  return {-ln.hi, -ln.lo};
}

/// erfcinv(x), or Phi^-1(x / 2), for 0 < x < 2^-24: the sum is the result to 2^-60.
template <class F> inline DoubleWord<double> inverse_tail(double x) {
  const DoubleWord<double> w = minus_ln(x);
  const double s = 1.0 / __builtin_sqrt(w.hi);
  // 1 / sqrt(w) = s (1 + (1 - s^2 w) / 2), the difference exact but for its last step
  const DoubleWord<double> s2 = two_product(s, s), s2w = two_product(s2.hi, w.hi);
  const double s_lo = s * (0.5 * (((1.0 - s2w.hi) - s2w.lo) - (s2.lo * w.hi + s2.hi * w.lo)));
  const int i = int(128 * s) - 4; // 27 at x = 2^-24, 17 at 2^-53, 0 at 2^-1074
  const auto& c = F::Tables::tail[i];
  const double z_hi = s - (i + 4) * 0x1p-7, z = z_hi + s_lo; // z_hi is exact
  double higher = c[12];
  for (int k = 11; k >= 2; --k) higher = higher * z + c[k];
  const DoubleWord<double> linear = two_product(c[14], z_hi), sum = fast_two_sum(c[13], linear.hi);
  const double rest = (c[14] * s_lo + c[0]) + z * (c[1] + z * higher);
  const DoubleWord<double> polynomial = fast_two_sum(sum.hi, sum.lo + linear.lo + rest);
  const DoubleWord<double> root = multiply(w, DoubleWord<double>{s, s_lo});
  const DoubleWord<double> result = multiply(polynomial, root);
  return {-result.hi, -result.lo};
}

} // namespace kelvm::inline KELVM_BUILD
