#include "hyperbolic/factors.hpp"

#include "frame/status.hpp"

namespace kelvm::inline KELVM_BUILD {
namespace {

ScaledSum scaled_sum(DoubleWord<double> y) { return {fast_two_sum(y.hi, y.lo), 0}; }

ScaledSum plain(double x) { return {{x, 0}, 0}; }
ScaledSum small(double x) {
  const Scaled s = scaled(x);
  return {{s.fraction, 0}, s.exponent};
}
ScaledSum with_sign_of(ScaledSum y, double x) {
  return {{flip_sign(y.value.hi, sign_of(x)), flip_sign(y.value.lo, sign_of(x))}, y.exponent};
}

/// Below, sin x = sinh x = x and cos x = cosh x = 1.
constexpr double negligible = 0x1p-30;

} // namespace

ScaledSum any_exponential(double x) {
  if (is_nan(x)) return plain(x);
  if (is_infinite(x)) return plain(x > 0 ? x : 0.0);
  if (abs(x) > 2000) x = with_sign(2000.0, sign_of(x)); // beyond the range whatever the other factor
  const ExpReduced<double> reduced = exp_reduce(x);
  const DoubleWord<double> y = exp_unscaled(reduced, 0.0);
  return {fast_two_sum(y.hi, y.lo), reduced.exponent()};
}

EvenOdd<ScaledSum> any_hyperbolic(double x) {
  const double magnitude = abs(x);
  if (!is_finite(x)) return {plain(magnitude), plain(x)};
  if (magnitude < negligible) return {plain(1), small(x)};
  if (magnitude > 22) { // e^-|x| is below 2^-63 of e^|x|
    ScaledSum half = any_exponential(magnitude);
    half.exponent -= 1;
    return {half, with_sign_of(half, x)};
  }
  const EvenOdd<DoubleWord<double>> h = Full::hyperbolic(magnitude);
  return {scaled_sum(h.even), with_sign_of(scaled_sum(h.odd), x)};
}

EvenOdd<ScaledSum> any_circular(double y) {
  if (!is_finite(y))
    return {plain(abs(default_nan<double>())), plain(with_sign(abs(default_nan<double>()), sign_of(y)))};
  if (abs(y) < negligible) return {plain(1), small(y)};
  const EvenOdd<DoubleWord<double>> c = Full::circular<Angles::any>(abs(y));
  return {scaled_sum(c.even), with_sign_of(scaled_sum(c.odd), y)};
}

} // namespace kelvm::inline KELVM_BUILD
