// The arithmetic in which the inverse functions are written: of single numbers, each operation rounded once, or of
// DoubleWord numbers, each with an error below 2^-74. A formula is a template over the two.
#pragma once

#include "complex/complex.hpp"

namespace kelvm::inline KELVM_BUILD {

// --- single numbers -------------------------------------------------------------------------------------------------

template <class V> inline V twice(V x) { return x + x; }
template <class V> inline V square(V x) { return x * x; }
template <class V> inline V product(V x, V y) { return x * y; }
template <class V> inline V quotient(V x, V y) { return x / y; }
template <class V> inline V sum(V x, V y) { return x + y; }
/// x^2 + y
template <class V> inline V square_plus(V x, V y) { return mul_add(x, x, y); }
template <class V> inline V one_plus(V x) { return Lane<V>(1) + x; }
/// |x| >= |y|.
template <class V> inline V descending_sum(V x, V y) { return x + y; }
template <class V> inline V normalised(V x) { return x; }
template <class V> inline V settled(V x) { return x; }
template <class V> inline V rounded(V x) { return x; }
template <class V> inline auto is_negative(V x) { return int_bits(x); }

// --- extended ones --------------------------------------------------------------------------------------------------

/// The same for a sum that may have cancelled.
template <class V> inline DoubleWord<V> settled(DoubleWord<V> x) {
  const DoubleWord<V> y = two_sum(x.hi, x.lo);
  return {y.hi, y.lo};
}
template <class V> inline auto is_negative(DoubleWord<V> x) { return int_bits(x.hi); }
template <class V> inline DoubleWord<V> abs(DoubleWord<V> x) { return {abs(x.hi), flip_sign(x.lo, sign_of(x.hi))}; }
template <class V> inline DoubleWord<V> operator-(DoubleWord<V> x) { return {-x.hi, -x.lo}; }
template <class M, class V> inline DoubleWord<V> select(M mask, DoubleWord<V> a, DoubleWord<V> b) {
  return {select(mask, a.hi, b.hi), select(mask, a.lo, b.lo)};
}
/// Scaled by a power of two.
template <class V> inline DoubleWord<V> operator*(double scale, DoubleWord<V> x) {
  return {scale * x.hi, scale * x.lo};
}

template <class V> inline DoubleWord<V> twice(DoubleWord<V> x) { return 2 * x; }
template <class V> inline DoubleWord<V> square(DoubleWord<V> x) {
  const DoubleWord<V> s = square_in_parts(x.hi);
  return {s.hi, mul_add(2 * x.hi, x.lo, s.lo)};
}
template <class V> inline DoubleWord<V> product(DoubleWord<V> x, DoubleWord<V> y) {
  const DoubleWord<V> p = product_in_parts(x.hi, y.hi);
  return {p.hi, p.lo + mul_add(x.hi, y.lo, x.lo * y.hi)};
}
template <class V> inline DoubleWord<V> sum(DoubleWord<V> x, DoubleWord<V> y) {
  const DoubleWord<V> heads = two_sum(x.hi, y.hi);
  return {heads.hi, heads.lo + (x.lo + y.lo)};
}
template <class V> inline DoubleWord<V> square_plus(DoubleWord<V> x, DoubleWord<V> y) { return sum(square(x), y); }
template <class V> inline DoubleWord<V> one_plus(DoubleWord<V> x) {
  const DoubleWord<V> heads = two_sum(splat<V>(1), x.hi);
  return {heads.hi, heads.lo + x.lo};
}
template <class V> inline DoubleWord<V> descending_sum(DoubleWord<V> x, DoubleWord<V> y) {
  const DoubleWord<V> heads = fast_two_sum(x.hi, y.hi);
  return {heads.hi, heads.lo + (x.lo + y.lo)};
}
/// y is normalised.
template <class V> inline DoubleWord<V> quotient(V x, DoubleWord<V> y) {
  const V inverse = 1.0 / y.hi, q = x * inverse;
  const DoubleWord<V> back = product_in_parts(q, y.hi);
  return {q, sub_mul((x - back.hi) - back.lo, q, y.lo) * inverse};
}
/// The root is normalised.
template <class V> inline DoubleWord<V> sqrt(DoubleWord<V> x) {
  const V root = sqrt(x.hi + x.lo), inverse = 1.0 / root;
  const DoubleWord<V> back = square_in_parts(root);
  return {root, 0.5 * (((x.hi - back.hi) - back.lo) + x.lo) * inverse};
}

} // namespace kelvm::inline KELVM_BUILD
