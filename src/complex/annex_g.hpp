// One element of a complex product or quotient, any operands: what the two have in common. Finite operands give sums of
// two products, rounded once, whatever leaves the range in between; infinities and NaNs what C's Annex G says.
#pragma once

#include "complex/complex.hpp"

namespace kelvm::inline KELVM_BUILD {

/// a b + c d for finite operands, relative error below 2^-100.
inline ScaledSum sum_of_products(double a, double b, double c, double d) {
  const auto product = [](const Scaled& x, const Scaled& y) {
    return ScaledSum{two_product(x.fraction, y.fraction), x.exponent + y.exponent};
  };
  return sum(product(scaled(a), scaled(b)), product(scaled(c), scaled(d)));
}

/// Sum and product that give the default NaN where they would raise invalid.
inline double quiet_sum(double x, double y) {
  if (is_nan(x) || is_nan(y) || (is_infinite(x) && is_infinite(y) && x != y)) return default_nan<double>();
  return x + y;
}
inline double quiet_product(double x, double y) {
  if (is_nan(x) || is_nan(y) || (is_infinite(x) && y == 0) || (x == 0 && is_infinite(y))) return default_nan<double>();
  return x * y;
}

/// The operands as Annex G's recovery sees them: an infinite number has parts 0 and 1 with their signs, a NaN part of a
/// finite one is a zero.
inline double boxed(double x) { return with_sign(is_infinite(x) ? 1.0 : 0.0, sign_of(x)); }
inline double without_nan(double x) { return is_nan(x) ? with_sign(0.0, sign_of(x)) : x; }
/// A finite part brought to 1: only its sign and whether it is zero matter beside an infinity.
inline double unit(double x) { return is_finite(x) && x != 0 ? with_sign(1.0, sign_of(x)) : x; }

struct Operands {
  double a, b, c, d; // (a + bi) and (c + di)

  bool finite() const { return is_finite(a) && is_finite(b) && is_finite(c) && is_finite(d); }
  bool has_nan() const { return is_nan(a) || is_nan(b) || is_nan(c) || is_nan(d); }
  bool first_infinite() const { return is_infinite(a) || is_infinite(b); }
  bool second_infinite() const { return is_infinite(c) || is_infinite(d); }

  /// As the recovery of infinities sees them, brought where sums of two parts cannot overflow.
  Operands recovered() const {
    Operands o{without_nan(a), without_nan(b), without_nan(c), without_nan(d)};
    if (first_infinite())
      o.a = boxed(a), o.b = boxed(b);
    else
      o.a *= 0.25, o.b *= 0.25;
    if (second_infinite())
      o.c = boxed(c), o.d = boxed(d);
    else
      o.c *= 0.25, o.d *= 0.25;
    return o;
  }
};

/// What C's examples do where the plain formula gives two NaNs: the scale (infinity or zero) times the formula's parts.
template <class T> inline Pair<T> recovered(const Operands& o, double scale, double re, double im, kelStatus& status) {
  return with_code<T>(o, quiet_product(scale, re), quiet_product(scale, im), status);
}

} // namespace kelvm::inline KELVM_BUILD
