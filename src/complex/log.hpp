// The complex logarithm core: log |z| at several accuracies, for any width. The angle is trig/atan_core.hpp's.
//
//   ln |z| = ln(h) / 2,   h = x^2 + y^2
//
// The logarithm is exp/log_core.hpp's, of h rounded to double; what h is short of it joins the reduced argument r.
// Next to |z| = 1 a relative error of h is not enough, and r is h - 1 = (x^2 - 1) + y^2 itself: at full precision with
// both squares exact double-words, below that as (x - 1)(x + 1) + y^2.
#pragma once

#include "complex/complex.hpp"
#include "exp/log_core.hpp"
#include "trig/atan_core.hpp"

namespace kelvm::inline KELVM_BUILD {

/// The lanes that the logarithms below and the angle do not cover: a part above high; an imaginary part below low but
/// not zero, whose angle may be tiny; both parts below low, zero among them.
template <class V> inline SignMask<V> outside_window(V x, V y, Lane<V> low, Lane<V> high) {
  const Int<V> a = int_bits(abs(x)), b = int_bits(abs(y)), l = int_bits(splat<V>(low)), h = int_bits(splat<V>(high));
  return ((b - l) & ((a - l) | -b)) | (h - a) | (h - b);
}

/// x^2 + y^2 with a relative error below 2^-75, where the larger is in [2^-480, 2^500].
template <class V> inline DoubleWord<V> norm_double_word(V x, V y) {
  const DoubleWord<V> x2 = square_in_parts(x), y2 = square_in_parts(y), h = two_sum(x2.hi, y2.hi);
  return fast_two_sum(h.hi, h.lo + (x2.lo + y2.lo));
}

/// |x| and |y|, the larger first.
template <class V> inline Pair<V> by_size(V x, V y) {
  x = abs(x), y = abs(y);
  const auto exchanged = x < y;
  return {select(exchanged, y, x), select(exchanged, x, y)};
}

/// x^2 + y^2 - 1 with a relative error below 2^-104, where the larger part is between 1/2 and 2 in magnitude, the
/// other zero or above 2^-450.
template <class V> inline DoubleWord<V> norm_minus_one(V x, V y) {
  const auto [larger, smaller] = by_size(x, y);
  const DoubleWord<V> square = two_product(larger, larger);
  return add(add(square, splat<V>(-1)), two_product(smaller, smaller));
}

/// h = 2^k m as the logarithm of full precision sees it, but for what the bases differ in: with `rest` beside r.
template <class Base, class V> struct NormParts {
  LogParts<V> p;
  V rest;

  explicit NormParts(DoubleWord<V> h) {
    const LogReduced<V> reduced = log_reduce<ExactRows>(h.hi);
    p = log_parts<Base>(reduced);
    rest = log1p_correction(reduced, h.lo, p.c);
  }
  /// Next to h = 1, where r is h - 1 and nothing else.
  template <class M> void replace(M near_one, const DoubleWord<V>& minus_one) {
    p.r = select(near_one, minus_one.hi, p.r);
    rest = select(near_one, minus_one.lo, rest);
  }
  /// With the rest in r.
  LogParts<V> joined() const { return with_rest<Base>(p, rest); }
};

/// The norms h within 2^-16 of 1, where norm_double_word is not exact enough. Their row of the tables is that
/// of 1.
template <class V> inline SignMask<V> norm_near_one(V h) {
  constexpr std::uint64_t low = 0x3FEFFFE000000000, high = 0x3FF0001000000000;
  return ~bit_cast<SignMask<V>>((bits(h) - low) | (high - bits(h)));
}

/// log |z| as a double-word with a relative error below 2^-61; `undecided` gets the lanes next to |z| = 1, where that
/// does not hold.
template <class Base, class V> inline DoubleWord<V> log_abs_full(V x, V y, BitMask& undecided) {
  const DoubleWord<V> h = norm_double_word(x, y);
  undecided |= movemask(norm_near_one(h.hi));
  return 0.5 * logarithm_full<Base>(NormParts<Base, V>(h).joined());
}
/// The same, those lanes included.
template <class Base, class V> inline DoubleWord<V> log_abs_full(V x, V y) {
  const DoubleWord<V> h = norm_double_word(x, y);
  NormParts<Base, V> parts(h);
  parts.replace(norm_near_one(h.hi), norm_minus_one(x, y));
  return 0.5 * logarithm_full<Base>(parts.joined());
}

/// log |z| below full precision, in double. Of floats with bits40, the larger part first, the error is relative to log
/// |z|, otherwise to |log z|.
template <class Base, Accuracy A, class V> inline V log_abs(V x, V y) {
  using Rows = RoundedRows;
  const V y_square = y * y, minus_one = mul_add(x - 1.0, x + 1.0, y_square), norm = mul_add(x, x, y_square);
  LogReduced<V> reduced;
  Pair<V> row;
  V r;
  if constexpr (A == Accuracy::bits50) {
    x = abs(x);
    const SignMask<V> near = (int_bits(splat<V>(0.5)) - int_bits(x)) & (int_bits(x) - int_bits(splat<V>(2)));
    const V one_more = 1.0 + minus_one;
    reduced = log_reduce<Rows>(select(near, one_more, norm));
    row = inverse_and_log<Base, Rows>(reduced.row);
    const V rest = select(near, (1.0 - one_more) + minus_one, V{});
    r = exact_product_minus_one(reduced.m, row.first) + log1p_correction(reduced, rest, row.first);
  } else {
    constexpr double within_row = std::is_same_v<Rows, MediumRows> ? 0x1p-9 : 0x1p-7; // of 1
    reduced = log_reduce<Rows>(norm);
    row = inverse_and_log<Base, Rows>(reduced.row);
    r = select(int_bits(abs(minus_one)) - int_bits(splat<V>(within_row)), minus_one,
               mul_sub(reduced.m, row.first, splat<V>(1)));
  }
  return 0.5 * logarithm_sum_by_halves<Base, A>(mul_add(reduced.k, splat<V>(Base::log_of_2), row.second), r);
}

/// log |z| in float, the larger part between 2^-60 and 2^62.
template <class Base, Accuracy A, class V> inline V float_log_abs(V x, V y) {
  x = abs(x);
  const SignMask<V> near = (int_bits(splat<V>(0.5f)) - int_bits(x)) & (int_bits(x) - int_bits(splat<V>(2.0f)));
  const V y_square = y * y, minus_one = mul_add(x - 1.0f, x + 1.0f, y_square);
  const FloatLogReduced<V> reduced = float_log_reduce(select(near, 1.0f + minus_one, mul_add(x, x, y_square)));
  const SignMask<V> small = int_bits(abs(minus_one)) - int_bits(splat<V>(0.33f));
  return 0.5f * float_logarithm<Base, A>(reduced.k, select(near & small, minus_one, reduced.f));
}

} // namespace kelvm::inline KELVM_BUILD
