// What the complex kernels share: codes of exceptional results, products as double-words, evaluation of floats in
// double, rotation by i.
#pragma once

#include "exact/scaled_sum.hpp"
#include "frame/kernel.hpp"

namespace kelvm::inline KELVM_BUILD {

/// The lanes with a part beyond the limit, infinities and NaNs included.
template <class V> inline SignMask<V> any_above(V a, V b, Lane<V> limit) {
  return above(abs(a), limit) | above(abs(b), limit);
}

/// NaNs give the default one in both parts. In functions of one complex number a zero or an infinity beside them may
/// decide a part of the result; in functions of two a divisor or an exponent of zero may.
struct ComplexDefaults : KernelDefaults {
  template <class V> static SignMask<V> nan_lanes(V x, V y) { return quiet_nans(x, y) & nonzero(x) & nonzero(y); }
  template <class V> static SignMask<V> nan_lanes(V a, V b, V c, V d) {
    return quiet_nans(a, b, c, d) & (nonzero(c) | nonzero(d));
  }
  template <class V, class... More> static Pair<V> nan_result(V, More...) {
    const V nan = splat<V>(default_nan<Lane<V>>());
    return {nan, nan};
  }
};

/// What a function of one number x + iy was given.
struct Operand {
  double x, y;

  bool finite() const { return is_finite(x) && is_finite(y); }
  bool has_nan() const { return is_nan(x) || is_nan(y); }
};
/// The parts of a result with its code: 12 where finite operands give an infinite part, 19 where operands without a NaN
/// give a NaN part. Poles report themselves. A part below the normal range is no exception.
template <class T, class Operands>
inline Pair<T> with_code(const Operands& o, double re, double im, kelStatus& status) {
  const Pair<T> z{T(re), T(im)};
  if (o.finite() && (is_infinite(z.first) || is_infinite(z.second))) report(status, kelStatusOverflow);
  if (!o.has_nan() && (is_nan(z.first) || is_nan(z.second))) report(status, kelStatusDomain);
  return z;
}

// --- products of doubles --------------------------------------------------------------------------------------------

/// a * b and a * a where a relative error of 2^-77 does: exact with a fused operation; without, the product of the
/// upper halves is.
template <class V> inline DoubleWord<V> product_in_parts(V a, V b) {
  if constexpr (has_fused) return two_product(a, b);
  const V a_head = head_of(a), b_head = head_of(b);
  return {a_head * b_head, a * (b - b_head) + (a - a_head) * b_head};
}
template <class V> inline DoubleWord<V> square_in_parts(V a) {
  if constexpr (has_fused) return two_product(a, a);
  const V head = head_of(a);
  return {head * head, (a - head) * (a + head)};
}

// --- floats in double -----------------------------------------------------------------------------------------------

/// in_double() for functions that give a Pair: each part is rounded once.
template <class F, class V, class... More> inline Pair<V> pair_in_double(F f, V x, More... more) {
  if constexpr (lanes<V> == 1) {
    const Pair<double> z = f(double(x), double(more)...);
    return {float(z.first), float(z.second)};
  } else {
    const auto low = f(widen<0>(x), widen<0>(more)...), high = f(widen<1>(x), widen<1>(more)...);
    return {narrow(low.first, high.first), narrow(low.second, high.second)};
  }
}

// --- rotation by i --------------------------------------------------------------------------------------------------

/// f(iz) of a kernel for f(z): cos z = cosh(iz). i (x + iy) = -y + ix.
template <class K> struct OfRotated : K {
  using T = typename K::Element;
  template <class V> static SignMask<V> special(V x, V y) { return K::special(-y, x); }
  template <class V, class... Undecided> static Pair<V> formula(V x, V y, Undecided&... undecided) {
    return K::formula(-y, x, undecided...);
  }
  template <class V> static SignMask<V> wide_special(V x, V y) { return K::wide_special(-y, x); }
  template <class V> static Pair<V> wide_formula(V x, V y) { return K::wide_formula(-y, x); }
  static Pair<T> element(T x, T y, kelStatus& status) { return K::element(-y, x, status); }
};

/// -i f(iz): sin z = -i sinh(iz), and so for tan and atan; asinh z = -i asin(iz).
template <class K> struct Rotated : OfRotated<K> {
  using T = typename K::Element;
  template <class V, class... Undecided> static Pair<V> formula(V x, V y, Undecided&... undecided) {
    return turned_back(OfRotated<K>::formula(x, y, undecided...));
  }
  template <class V> static Pair<V> wide_formula(V x, V y) { return turned_back(OfRotated<K>::wide_formula(x, y)); }
  static Pair<T> element(T x, T y, kelStatus& status) {
    const Pair<T> z = OfRotated<K>::element(x, y, status);
    return {z.second, is_nan(z.first) ? z.first : -z.first}; // the default NaN stays what it is
  }

private:
  template <class V> static Pair<V> turned_back(Pair<V> z) { return {z.second, -z.first}; }
};

} // namespace kelvm::inline KELVM_BUILD
