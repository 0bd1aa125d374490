// Error-free transformations and double-double arithmetic, for any width. All in round-to-nearest.
//
// Dekker, "A floating-point technique for extending the available precision", 1971; Knuth, "The Art of Computer
// Programming" vol. 2; Joldes, Muller, Popescu, "Tight and rigorous error bounds for basic building blocks of
// double-word arithmetic", 2017 (the bounds given below, u = 2^-53).
#pragma once

#include "simd/vec.hpp"

namespace kelvm::inline KELVM_BUILD {

/// An unevaluated sum, |lo| <= ulp(hi) / 2 where it is normalised.
template <class V> struct DoubleWord { V hi, lo; };
/// As one number; one number is itself, for formulas over both.
template <class V> inline V rounded(DoubleWord<V> y) { return y.hi + y.lo; }
template <class V> inline V rounded(V y) { return y; }
template <class V> inline DoubleWord<V> operator-(DoubleWord<V> x) { return {-x.hi, -x.lo}; }
/// Scaled by a power of two.
template <class V> inline DoubleWord<V> operator*(Lane<V> power, DoubleWord<V> x) {
  return {power * x.hi, power * x.lo};
}

/// a + b exactly, where |a| >= |b| or a = 0 (Dekker).
template <class V> inline DoubleWord<V> fast_two_sum(V a, V b) {
  const V sum = a + b;
  return {sum, b - (sum - a)};
}
/// The same number with hi rounded to nearest, |lo| <= ulp(hi) / 2.
template <class V> inline DoubleWord<V> normalised(DoubleWord<V> x) { return fast_two_sum(x.hi, x.lo); }
/// a + b exactly (Knuth).
template <class V> inline DoubleWord<V> two_sum(V a, V b) {
  const V sum = a + b;
  const V b_part = sum - a;
  return {sum, (a - (sum - b_part)) + (b - b_part)};
}

/// The upper 26 significant bits of a double, truncated (12 of a float): products of two such are exact. What is
/// left of a has up to 27 bits, so that products of two rests are not always exact.
template <class V> inline V head_of(V a) {
  if constexpr (sizeof(Lane<V>) == 8)
    return from_bits<V>(bits(a) & Lane<Bits<V>>(0xFFFFFFFFF8000000u));
  else
    return from_bits<V>(bits(a) & Lane<Bits<V>>(0xFFFFF000u));
}

/// A factor with its upper half apart, truncated: the products of two upper halves are exact.
template <class V> struct SplitFactor {
  V value, hi, lo;
  explicit SplitFactor(V x) : value(x), hi(head_of(x)), lo(x - hi) {}
  /// lo has the rest of both words, value the upper one.
  explicit SplitFactor(DoubleWord<V> x) : value(x.hi), hi(head_of(x.hi)), lo((x.hi - hi) + x.lo) {}
};

/// A factor of exact products. Without a fused operation its upper half of the significant bits, rounded to nearest,
/// and the rest, so that products of halves are exact (Dekker; the rounding is an integer addition).
template <class V> struct ExactFactor {
  V value;
  V hi, lo;

  explicit ExactFactor(V a) : value(a) {
    if constexpr (!has_fused) {
      constexpr int cleared = sizeof(Lane<V>) == 8 ? 27 : 12;
      constexpr Lane<Bits<V>> one = 1;
      hi = from_bits<V>((bits(a) + (one << (cleared - 1))) & ~((one << cleared) - 1));
      lo = a - hi;
    }
  }
};

/// a * b exactly, where neither the product nor its error leaves the normal range and |a|, |b| < 2^1023 (2^127 for
/// floats). The value is the same with a fused multiply-add and without.
template <class V> inline DoubleWord<V> two_product(ExactFactor<V> a, ExactFactor<V> b) {
  const V product = a.value * b.value;
  if constexpr (has_fused)
    return {product, mul_sub(a.value, b.value, product)};
  else
    return {product, ((a.hi * b.hi - product) + a.hi * b.lo + a.lo * b.hi) + a.lo * b.lo};
}
template <class V> inline DoubleWord<V> two_product(V a, V b) {
  return two_product(ExactFactor<V>(a), ExactFactor<V>(b));
}

/// c + a b as a double-word where steps are fused, the product unrounded and the lower word rounded, where
/// c - (c + a b) is exact: c = 0 or |c| >= 2 |a b|. Boldo, Muller, "Exact and approximated error of the FMA", 2011,
/// have the general case.
template <class V> inline DoubleWord<V> fast_mul_add(V a, V b, V c) {
  const V sum = mul_add(a, b, c);
  return {sum, mul_add(a, b, c - sum)};
}

/// A quotient and what it leaves of the dividend.
template <class V> struct QuotientAndRest { V quotient, rest; };

/// n / d given inverse = 1 / d as it rounds, to an ulp or two, and rest = n - quotient d, exact but for its last bit.
/// `Short`, as without fused operations, the quotient has 26 bits, truncated, so that its product with the upper bits
/// of d, and its square, are exact.
template <bool Short = !has_fused, class V> inline QuotientAndRest<V> divide(V n, V d, V inverse) {
  static_assert(Short || has_fused);
  const V quotient = Short ? head_of(n * inverse) : n * inverse;
  if constexpr (has_fused) {
    return {quotient, sub_mul(n, quotient, d)};
  } else {
    const V upper = head_of(d);
    return {quotient, (n - quotient * upper) - quotient * (d - upper)};
  }
}

/// (a + b), relative error below 2u^2 where both have the same sign or b is a single.
template <class V> inline DoubleWord<V> add(DoubleWord<V> a, V b) {
  const DoubleWord<V> sum = two_sum(a.hi, b);
  return fast_two_sum(sum.hi, sum.lo + a.lo);
}
/// (a + b), relative error below 3u^2 + 13u^3, also with cancellation.
template <class V> inline DoubleWord<V> add(DoubleWord<V> a, DoubleWord<V> b) {
  const DoubleWord<V> heads = two_sum(a.hi, b.hi), tails = two_sum(a.lo, b.lo);
  const DoubleWord<V> sum = fast_two_sum(heads.hi, heads.lo + tails.hi);
  return fast_two_sum(sum.hi, sum.lo + tails.lo);
}
/// a * b, relative error below 3u^2 for a single b; for two double-words below 7u^2, and 5u^2 by Muller, Rideau,
/// "Formalization of double-word arithmetic", 2022.
template <class V> inline DoubleWord<V> multiply(DoubleWord<V> a, V b) {
  const DoubleWord<V> product = two_product(a.hi, b);
  return fast_two_sum(product.hi, product.lo + a.lo * b);
}
template <class V> inline DoubleWord<V> multiply(DoubleWord<V> a, DoubleWord<V> b) {
  const DoubleWord<V> product = two_product(a.hi, b.hi);
  return fast_two_sum(product.hi, product.lo + (a.hi * b.lo + a.lo * b.hi));
}

} // namespace kelvm::inline KELVM_BUILD
