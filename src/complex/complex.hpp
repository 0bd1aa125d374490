// What the complex rooms share: codes of exceptional results, numbers with their power of two apart, rotation by i,
// evaluation of floats in double.
#pragma once

#include "exact/exact.hpp"
#include "frame/frame.hpp"

namespace kelvm::inline KELVM_BUILD {

/// Marks lanes with a part beyond the limit, infinities and NaNs included.
template <class V> inline Marks<V> any_above(V a, V b, Lane<V> limit) {
  return above(abs(a), limit) | above(abs(b), limit);
}

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

// --- numbers with their power of two apart --------------------------------------------------------------------------

inline double power_of_two(int exponent) { return from_bits<double>(std::uint64_t(exponent + 1023) << 52); }

/// x = fraction 2^exponent, 1 <= |fraction| < 2, or zero.
struct Scaled {
  double fraction;
  int exponent = 0;
};
inline Scaled scaled(double x) {
  if (x == 0) return {x};
  const bool subnormal = abs(x) < 0x1p-1022;
  if (subnormal) x *= 0x1p54;
  const int exponent = int(bits(abs(x)) >> 52) - 1023 - (subnormal ? 54 : 0);
  return {from_bits<double>((bits(x) & 0x800FFFFFFFFFFFFFu) | 0x3FF0000000000000u), exponent};
}

/// (head + tail) 2^exponent, 2^-110 < |head| < 2^110 or zero.
struct ScaledSum {
  HeadTail<double> value;
  int exponent;

  /// Rounded once to double, infinity where it overflows.
  double rounded() const {
    const int bounded = exponent < -1300 ? -1300 : exponent > 1300 ? 1300 : exponent;
    const int last = bounded < -1022 ? -1022 : bounded > 1023 ? 1023 : bounded;
    double sum = value.head + value.tail;
    if (bounded < -900) {
      const double limit = with_sign(power_of_two(-1022 - bounded), sign_of(sum)); // becomes the smallest normal number
      if (abs(sum) < abs(limit)) { // sums with it are multiples of what becomes the smallest subnormal one
        const HeadTail<double> from_limit = two_sum(limit, value.head);
        sum = with_sign((from_limit.head + (from_limit.tail + value.tail)) - limit, sign_of(sum));
      }
    }
    return sum * power_of_two(bounded - last) * power_of_two(last);
  }
};

/// Relative errors below 2^-100, also where a sum cancels, for normalised values.
inline ScaledSum product(const ScaledSum& x, const ScaledSum& y) {
  return {multiply(x.value, y.value), x.exponent + y.exponent};
}
inline ScaledSum sum(ScaledSum x, ScaledSum y) {
  if (y.value.head == 0) y.exponent = x.exponent;
  if (x.value.head == 0) x.exponent = y.exponent;
  if (x.exponent < y.exponent) std::swap(x, y);
  const int distance = x.exponent - y.exponent;
  const double down = distance > 300 ? 0.0 : power_of_two(-distance);
  return {add(x.value, HeadTail<double>{y.value.head * down, y.value.tail * down}), x.exponent};
}
/// x / y, relative error below 2^-90.
inline ScaledSum quotient(const ScaledSum& x, const ScaledSum& y) {
  const double q = x.value.head / y.value.head;
  const HeadTail<double> product = two_product(q, y.value.head);
  const double rest = ((x.value.head - product.head) - product.tail) + (x.value.tail - q * y.value.tail);
  return {fast_two_sum(q, rest / y.value.head), x.exponent - y.exponent};
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
  template <class V> static Marks<V> special(V x, V y) { return K::special(-y, x); }
  template <class V, class... Doubtful> static Pair<V> formula(V x, V y, Doubtful&... doubtful) {
    return K::formula(-y, x, doubtful...);
  }
  template <class V> static Marks<V> wide_special(V x, V y) { return K::wide_special(-y, x); }
  template <class V> static Pair<V> wide_formula(V x, V y) { return K::wide_formula(-y, x); }
  static Pair<T> element(T x, T y, kelStatus& status) { return K::element(-y, x, status); }
};

/// -i f(iz): sin z = -i sinh(iz), and so for tan, asin, atan.
template <class K> struct Rotated : OfRotated<K> {
  using T = typename K::Element;
  template <class V, class... Doubtful> static Pair<V> formula(V x, V y, Doubtful&... doubtful) {
    return turned_back(OfRotated<K>::formula(x, y, doubtful...));
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
