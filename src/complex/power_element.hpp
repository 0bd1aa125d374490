// One complex power z^w = e^(w ln z) of any operands, in double-double or beyond where that matters: what the vector
// formulas of pow.cpp do not cover or cannot decide.
#pragma once

#include "complex/complex.hpp"
#include "exp/pow_core.hpp"

namespace kelvm::inline KELVM_BUILD {

/// z = x + iy, w = c + id.
struct PowerOperands {
  double x, y, c, d;

  bool finite() const { return is_finite(x) && is_finite(y) && is_finite(c) && is_finite(d); }
  bool has_nan() const { return is_nan(x) || is_nan(y) || is_nan(c) || is_nan(d); }
  bool first_zero() const { return x == 0 && y == 0; }
  bool second_zero() const { return c == 0 && d == 0; }
  /// A base on the positive real axis and a real exponent.
  bool real() const { return y == 0 && d == 0 && sign_of(x) == 0; }
};

/// z^w for finite z != 0 and w, each part rounded once; infinite where it overflows. Each part has an error of about
/// 2^-59 before; zeros are exact.
Pair<double> finite_power(const PowerOperands& o);

/// z^w for an infinite z or w, no NaN.
Pair<double> infinite_power(const PowerOperands& o);

/// size + i (quadrant pi/2 + angle), |angle| <= pi/4 or so; modulo 2 pi i.
struct PowerExponent {
  ScaledSum size;
  int quadrant;
  ScaledSum angle;
};

/// w ln z in fixed-point numbers (long_power.cpp), where it is so large that double-double leaves its angle no
/// significance, or where its terms cancel to next to a multiple of pi/2: for finite z != 0, y >= +0, and w, from ln z
/// to about 2^-95: the size with an absolute error below 2^-140, the angle with a relative error below 2^-60 unless it
/// is below 2^-1800.
PowerExponent long_power_exponent(const PowerOperands& o, DoubleWord<double> ln_abs, DoubleWord<double> angle);

/// The complete function; real_power(x, c, status) is that of the function's accuracy.
template <class T, class RealPower>
inline Pair<T> power_element(const PowerOperands& o, kelStatus& status, RealPower real_power) {
  const T nan = default_nan<T>();
  if (o.second_zero()) return {T(1), T(0)};
  if (o.has_nan()) return {nan, nan};
  if (o.real()) {
    kelStatus code = kelStatusOk;
    const T re = real_power(T(o.x), T(o.c), code);
    if (code != kelStatusOk && code != kelStatusUnderflow) status = code;
    return {re, with_sign(T(0), sign_of(T(o.y)))};
  }
  if (o.first_zero()) {
    const T zero = with_sign(T(0), sign_of(T(o.y)));
    if (o.c > 0) return {T(0), zero};
    if (o.c < 0 && o.d == 0) return {pole<T>(status), zero};
    return with_code<T>(o, default_nan<double>(), default_nan<double>(), status);
  }
  const Pair<double> z = o.finite() ? finite_power(o) : infinite_power(o);
  return with_code<T>(o, z.first, z.second, status);
}

} // namespace kelvm::inline KELVM_BUILD
