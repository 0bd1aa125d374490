// Error-free transformations and double-double arithmetic, for any width. All in round-to-nearest.
//
// Dekker, "A floating-point technique for extending the available precision", 1971; Knuth, "The Art of Computer
// Programming" vol. 2; Joldes, Muller, Popescu, "Tight and rigorous error bounds for basic building blocks of
// double-word arithmetic", 2017 (the bounds given below, u = 2^-53).
#pragma once

#include "simd/vec.hpp"

namespace kelvm::inline KELVM_BUILD {

/// An unevaluated sum, |tail| <= ulp(head) / 2 where it is normalised.
template <class V> struct HeadTail { V head, tail; };
template <class V> inline V rounded(HeadTail<V> y) { return y.head + y.tail; }

/// a + b exactly, where |a| >= |b| or a = 0 (Dekker).
template <class V> inline HeadTail<V> fast_two_sum(V a, V b) {
  const V sum = a + b;
  return {sum, b - (sum - a)};
}
/// a + b exactly (Knuth).
template <class V> inline HeadTail<V> two_sum(V a, V b) {
  const V sum = a + b;
  const V b_part = sum - a;
  return {sum, (a - (sum - b_part)) + (b - b_part)};
}

/// The upper 26 significant bits of a double, truncated (12 of a float): products of two such heads are exact. The tail
/// a - head has up to 27 bits, so a tail times a tail is not always exact.
template <class V> inline V head_of(V a) {
  if constexpr (sizeof(Lane<V>) == 8)
    return from_bits<V>(bits(a) & Lane<Bits<V>>(0xFFFFFFFFF8000000u));
  else
    return from_bits<V>(bits(a) & Lane<Bits<V>>(0xFFFFF000u));
}

/// A factor of exact products. Without a fused operation its upper half of the significant bits, rounded to nearest,
/// and the rest, so that products of halves are exact (Dekker; the rounding is an integer addition).
template <class V> struct Halves {
  V value;
  V head, tail;

  explicit Halves(V a) : value(a) {
    if constexpr (!has_fused_product_error) {
      constexpr int cleared = sizeof(Lane<V>) == 8 ? 27 : 12;
      constexpr Lane<Bits<V>> one = 1;
      head = from_bits<V>((bits(a) + (one << (cleared - 1))) & ~((one << cleared) - 1));
      tail = a - head;
    }
  }
};

/// a * b exactly, where neither the product nor its error leaves the normal range and |a|, |b| < 2^1023 (2^127 for
/// floats). The value is the same with a fused multiply-add and without.
template <class V> inline HeadTail<V> two_product(Halves<V> a, Halves<V> b) {
  const V product = a.value * b.value;
  if constexpr (has_fused_product_error)
    return {product, fused_product_error(a.value, b.value, product)};
  else
    return {product, ((a.head * b.head - product) + a.head * b.tail + a.tail * b.head) + a.tail * b.tail};
}
template <class V> inline HeadTail<V> two_product(V a, V b) { return two_product(Halves<V>(a), Halves<V>(b)); }

/// (a + b), relative error below 2u^2 where both have the same sign or b is a single.
template <class V> inline HeadTail<V> add(HeadTail<V> a, V b) {
  const HeadTail<V> sum = two_sum(a.head, b);
  return fast_two_sum(sum.head, sum.tail + a.tail);
}
/// (a + b), relative error below 3u^2 + 13u^3, also with cancellation.
template <class V> inline HeadTail<V> add(HeadTail<V> a, HeadTail<V> b) {
  const HeadTail<V> heads = two_sum(a.head, b.head), tails = two_sum(a.tail, b.tail);
  const HeadTail<V> sum = fast_two_sum(heads.head, heads.tail + tails.head);
  return fast_two_sum(sum.head, sum.tail + tails.tail);
}
/// a * b, relative error below 2u^2 for a single b, 5u^2 for two doubles.
template <class V> inline HeadTail<V> multiply(HeadTail<V> a, V b) {
  const HeadTail<V> product = two_product(a.head, b);
  return fast_two_sum(product.head, product.tail + a.tail * b);
}
template <class V> inline HeadTail<V> multiply(HeadTail<V> a, HeadTail<V> b) {
  const HeadTail<V> product = two_product(a.head, b.head);
  return fast_two_sum(product.head, product.tail + (a.head * b.tail + a.tail * b.head));
}

} // namespace kelvm::inline KELVM_BUILD
