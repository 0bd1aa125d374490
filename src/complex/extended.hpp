// The arithmetic in which the inverse functions are written: of single numbers, each operation rounded once, or of
// Extended numbers, each with an error below 2^-74. A formula is a template over the two.
#pragma once

#include "exact/exact.hpp"

namespace kelvm::inline KELVM_BUILD {

/// A number as head + tail, lazier than HeadTail: the tail may reach 2^-24 of the head, and products leave out what is
/// below 2^-78. Where "normalised" is asked, |tail| <= ulp(head) / 2.
template <class V> struct Extended { V head, tail; };

// --- single numbers -------------------------------------------------------------------------------------------------

template <class V> inline V twice(V x) { return x + x; }
template <class V> inline V square(V x) { return x * x; }
template <class V> inline V product(V x, V y) { return x * y; }
template <class V> inline V quotient(V x, V y) { return x / y; }
template <class V> inline V sum(V x, V y) { return x + y; }
template <class V> inline V one_plus(V x) { return Lane<V>(1) + x; }
/// |x| >= |y|.
template <class V> inline V descending_sum(V x, V y) { return x + y; }
template <class V> inline V normalised(V x) { return x; }
template <class V> inline V settled(V x) { return x; }
template <class V> inline V rounded(V x) { return x; }
template <class V> inline auto is_negative(V x) { return int_bits(x); }

// --- extended ones --------------------------------------------------------------------------------------------------

template <class V> inline V rounded(Extended<V> x) { return x.head + x.tail; }
template <class V> inline Extended<V> normalised(Extended<V> x) {
  const HeadTail<V> y = fast_two_sum(x.head, x.tail);
  return {y.head, y.tail};
}
/// The same for a sum that may have cancelled.
template <class V> inline Extended<V> settled(Extended<V> x) {
  const HeadTail<V> y = two_sum(x.head, x.tail);
  return {y.head, y.tail};
}
template <class V> inline auto is_negative(Extended<V> x) { return int_bits(x.head); }
template <class V> inline Extended<V> abs(Extended<V> x) { return {abs(x.head), flip_sign(x.tail, sign_of(x.head))}; }
template <class V> inline Extended<V> operator-(Extended<V> x) { return {-x.head, -x.tail}; }
template <class M, class V> inline Extended<V> select(M mask, Extended<V> a, Extended<V> b) {
  return {select(mask, a.head, b.head), select(mask, a.tail, b.tail)};
}
/// Scaled by a power of two.
template <class V> inline Extended<V> operator*(double scale, Extended<V> x) {
  return {scale * x.head, scale * x.tail};
}

/// The product of two single numbers: that of their upper halves is exact.
template <class V> inline Extended<V> extended_square(V x) {
  const V upper = head_of(x);
  return {upper * upper, (x - upper) * (x + upper)};
}
template <class V> inline Extended<V> extended_product(V x, V y) {
  const V x_upper = head_of(x), y_upper = head_of(y);
  return {x_upper * y_upper, x * (y - y_upper) + (x - x_upper) * y_upper};
}

template <class V> inline Extended<V> twice(Extended<V> x) { return 2 * x; }
template <class V> inline Extended<V> square(Extended<V> x) {
  const Extended<V> s = extended_square(x.head);
  return {s.head, s.tail + 2 * x.head * x.tail};
}
template <class V> inline Extended<V> product(Extended<V> x, Extended<V> y) {
  const Extended<V> p = extended_product(x.head, y.head);
  return {p.head, p.tail + (x.head * y.tail + x.tail * y.head)};
}
template <class V> inline Extended<V> sum(Extended<V> x, Extended<V> y) {
  const HeadTail<V> heads = two_sum(x.head, y.head);
  return {heads.head, heads.tail + (x.tail + y.tail)};
}
template <class V> inline Extended<V> one_plus(Extended<V> x) {
  const HeadTail<V> heads = two_sum(splat<V>(1), x.head);
  return {heads.head, heads.tail + x.tail};
}
template <class V> inline Extended<V> descending_sum(Extended<V> x, Extended<V> y) {
  const HeadTail<V> heads = fast_two_sum(x.head, y.head);
  return {heads.head, heads.tail + (x.tail + y.tail)};
}
/// y is normalised.
template <class V> inline Extended<V> quotient(V x, Extended<V> y) {
  const V inverse = 1.0 / y.head, q = x * inverse;
  const Extended<V> back = extended_product(q, y.head);
  return {q, (((x - back.head) - back.tail) - q * y.tail) * inverse};
}
/// The root is normalised.
template <class V> inline Extended<V> sqrt(Extended<V> x) {
  const V root = sqrt(x.head + x.tail), inverse = 1.0 / root;
  const Extended<V> back = extended_square(root);
  return {root, 0.5 * (((x.head - back.head) - back.tail) + x.tail) * inverse};
}

} // namespace kelvm::inline KELVM_BUILD
