// Complex powers in double-double, but for a few.
//
// ln |z|: h = |z|^2 = 2^k m, ln h = k ln 2 + 2 atanh s, s = (m - 1) / (m + 1), |s| < 0.172; next to |z| = 1, m - 1 is
// the exact norm less 1. The angle: n pi/4 + atan t, |t| < 0.415, and atan t = atan 1/4 + atan((t - 1/4) / (1 + t/4))
// where that brings |t| below 0.15. Both series are that of the odd powers, with signs.
//
// The imaginary part of w ln z is c n pi/4 + (c atan t + d ln |z|). The first term is reduced modulo 2 pi exactly, and
// where it is a multiple of pi/2 the second keeps its relative accuracy: powers next to the axes and their exact zeros
// come out right. Where terms cancel beyond what double-double holds, or are too large for it, w ln z is that of
// long_power.cpp; a part that is zero has no such terms.
#include "complex/power_element.hpp"

#include "complex/log.hpp"
#include "hyperbolic/factors.hpp"

#include <algorithm>

namespace kelvm::inline KELVM_BUILD {
namespace element_powers {
namespace {

constexpr DoubleWord<double> ln2{0x1.62e42fefa39efp-1, 0x1.abc9e3b39803fp-56};
constexpr DoubleWord<double> quarter_pi{0x1.921fb54442d18p-1, 0x1.1a62633145c07p-55};
constexpr DoubleWord<double> atan_quarter{0x1.f5b75f92c80ddp-3, 0x1.8ab6e3cf7afbdp-57};

/// a / b, relative error below 2^-103.
DoubleWord<double> quotient(DoubleWord<double> a, DoubleWord<double> b) {
  const double q = a.hi / b.hi;
  const DoubleWord<double> rest = add(a, -multiply(b, q));
  const double second = rest.hi / b.hi;
  const double third = add(rest, -multiply(b, second)).hi / b.hi;
  return add(fast_two_sum(q, second), third);
}

/// a 2^exponent with a head from 1 to 2, or zero.
ScaledSum with_exponent(DoubleWord<double> a, int exponent = 0) {
  const Scaled head = scaled(a.hi);
  const int half = -head.exponent / 2;
  return {{head.fraction, a.lo * power_of_two(half) * power_of_two(-head.exponent - half)},
          head.fraction == 0 ? 0 : exponent + head.exponent};
}
ScaledSum product(const ScaledSum& a, double b) {
  const Scaled s = scaled(b);
  return with_exponent(multiply(a.value, s.fraction), a.exponent + s.exponent);
}
ScaledSum normalised_sum(const ScaledSum& a, const ScaledSum& b) {
  if (a.value.hi == 0 || b.value.hi == 0) return a.value.hi == 0 ? b : a;
  if (a.exponent < b.exponent) return normalised_sum(b, a);
  const int below = b.exponent - a.exponent;
  return below < -300 ? a : with_exponent(add(a.value, power_of_two(below) * b.value), a.exponent);
}
/// The exponent of a, far below all others for zero.
int magnitude(const ScaledSum& a) { return a.value.hi == 0 ? -100'000 : a.exponent + scaled(a.value.hi).exponent; }
/// Beyond the range infinities and zeros, with their sign.
DoubleWord<double> value_of(const ScaledSum& a) {
  if (a.exponent > 1000) return {with_sign(infinity<double>, sign_of(a.value.hi)), 0};
  if (a.exponent < -900) return {with_sign(0.0, sign_of(a.value.hi)), 0};
  return power_of_two(a.exponent) * a.value;
}

/// 1 / n for odd n: the coefficients of the series.
constexpr int series_terms = 21, double2_terms = 11;
constexpr auto odd_reciprocals = [] {
  std::array<DoubleWord<double>, series_terms> r{};
  for (int j = 0; j < series_terms; ++j) {
    const double n = 2 * j + 1, head = 1 / n;
    const double upper = __builtin_bit_cast(double, __builtin_bit_cast(std::uint64_t, head) & 0xFFFFFFFFF8000000u);
    r[j] = {head, ((1 - n * upper) - n * (head - upper)) / n};
  }
  return r;
}();

/// s (1 + z/3 + z^2/5 + ...), z = sign s^2: atanh s, or atan s with the sign -1. |s| < 0.172.
DoubleWord<double> odd_series(DoubleWord<double> s, double sign) {
  if (abs(s.hi) < 0x1p-60) return s;
  const DoubleWord<double> z = sign * multiply(s, s);
  double rest = 0;
  for (int j = series_terms - 1; j >= double2_terms; --j) rest = odd_reciprocals[j].hi + z.hi * rest;
  DoubleWord<double> sum{rest, 0};
  for (int j = double2_terms - 1; j >= 0; --j) sum = add(odd_reciprocals[j], multiply(z, sum));
  return multiply(s, sum);
}

/// ln (a^2 + b^2) / 2, a >= b >= 0, a != 0.
DoubleWord<double> ln_abs(double a, double b) {
  const auto ln_1p = [](DoubleWord<double> d) { return odd_series(quotient(d, add(d, 2.0)), 1); }; // half of it
  if (a >= 0.5 && a <= 2) {
    const DoubleWord<double> d = b >= 0x1p-450 ? norm_minus_one(a, b)
                                 : a == 1      ? DoubleWord<double>{b * b, 0}
                                               : norm_minus_one(a, 0.0);
    if (d.hi > -0.29 && d.hi < 0.4) return ln_1p(d);
  }
  const Scaled upper = scaled(a), lower = scaled(b);
  const int apart = b == 0 ? -1000 : lower.exponent - upper.exponent;
  const double fraction = apart < -200 ? 0 : lower.fraction * power_of_two(apart);
  DoubleWord<double> m = add(two_product(upper.fraction, upper.fraction), two_product(fraction, fraction));
  int k = 2 * upper.exponent;
  for (; m.hi > 0x1.6a09ep0; ++k) m = 0.5 * m;
  return add(multiply(ln2, 0.5 * k), ln_1p(add(m, -1.0)));
}

/// The same where it may lie below the doubles: (b^2 / 2) next to 1.
ScaledSum scaled_ln_abs(double a, double b) {
  if (a != 1 || b == 0 || b >= 0x1p-450) return with_exponent(ln_abs(a, b));
  const Scaled s = scaled(b);
  return with_exponent(two_product(s.fraction, s.fraction), 2 * s.exponent - 1);
}

/// n pi/4 + rest.
struct Angle {
  int n;
  ScaledSum rest;
};
/// Not of (0, 0).
Angle angle_of(double x, double y) {
  const bool steep = abs(y) > abs(x), left = sign_of(x) != 0;
  const Scaled upper = scaled(steep ? abs(y) : abs(x)), lower = scaled(steep ? abs(x) : abs(y));
  Angle angle{steep ? 2 : 0, {}};
  bool turned = steep != left;
  const int below = lower.exponent - upper.exponent;
  if (lower.fraction != 0 && below < -200) {
    angle.rest =
        with_exponent(quotient(DoubleWord<double>{lower.fraction, 0}, DoubleWord<double>{upper.fraction, 0}), below);
  } else if (lower.fraction != 0) {
    const double a = upper.fraction, b = lower.fraction * power_of_two(below);
    DoubleWord<double> u{a, 0}, v{b, 0};
    if (b > 0.41421356 * a) {
      angle.n = 1;
      u = two_sum(a, b);
      v = two_sum(a, -b);
      turned = !turned;
    }
    DoubleWord<double> rest{};
    if (v.hi > 0.125 * u.hi) {
      const DoubleWord<double> quarter_v = 0.25 * v;
      v = add(v, -(0.25 * u));
      u = add(u, quarter_v);
      rest = add(atan_quarter, odd_series(quotient(v, u), -1));
    } else if (v.hi != 0) {
      rest = odd_series(quotient(v, u), -1);
    }
    angle.rest = with_exponent(rest);
  }
  if (turned) angle.rest.value = -angle.rest.value;
  if (left) angle.n = 4 - angle.n;
  return angle;
}

EvenOdd<ScaledSum> turned_by(int quadrant, ScaledSum cosine, ScaledSum sine) {
  const auto minus = [](ScaledSum a) { return ScaledSum{-a.value, a.exponent}; };
  switch (quadrant & 3) {
  case 0:
    return {cosine, sine};
  case 1:
    return {minus(sine), cosine};
  case 2:
    return {minus(cosine), minus(sine)};
  default:
    return {sine, minus(cosine)};
  }
}

/// c n pi/4 as whole quarter turns and what is left of it, modulo 2 pi.
struct Turn {
  int quadrant;
  ScaledSum rest;
};
Turn turn_of(double c, int n) {
  // c modulo 8 as an integer and a fraction, both times n; whole pairs of quarters go into the quadrant.
  const double modulo = abs(c) < 0x1p56 ? c - 8 * round<Rounding::to_zero>(c / 8) : 0.0;
  const double whole = round<Rounding::nearest_even>(modulo);
  const DoubleWord<double> fraction = two_product(modulo - whole, double(n));
  const double quarters = whole * n + fraction.hi;
  const double pairs = round<Rounding::nearest_even>(0.5 * quarters);
  const DoubleWord<double> left = two_sum(whole * n - 2 * pairs, fraction.hi);
  const ScaledSum part = with_exponent(fast_two_sum(left.hi, left.lo + fraction.lo));
  return {int(pairs), with_exponent(multiply(quarter_pi, part.value), part.exponent)};
}

/// Cosine and sine of quadrant pi/2 + angle.
EvenOdd<ScaledSum> circle(int quadrant, const ScaledSum& angle) {
  if (angle.value.hi == 0 || angle.exponent < -60) return turned_by(quadrant, {{1, 0}, 0}, angle); // its own sine
  DoubleWord<double> y = value_of(angle);
  if (abs(y.hi) >= 0x1p16) {
    const Quadrant head = reduce_to_quadrant(y.hi), tail = reduce_to_quadrant(y.lo);
    y = add(head.y, tail.y);
    quadrant += head.number + tail.number;
  }
  const bool negative = y.hi < 0;
  if (negative) y = -y;
  Remainder<double> r = Full::long_reduce(y.hi);
  const DoubleWord<double> remainder = add(DoubleWord<double>{r.hi, r.lo}, y.lo);
  r.hi = remainder.hi;
  r.lo = remainder.lo;
  const EvenOdd<DoubleWord<double>> both = Full::circular(r);
  const ScaledSum cosine{normalised(both.even), 0};
  ScaledSum sine{normalised(both.odd), 0};
  if (negative) sine.value = -sine.value;
  return turned_by(quadrant, cosine, sine);
}

Pair<double> parts_of(const ScaledSum& size, const EvenOdd<ScaledSum>& direction) {
  const auto product = [&](const ScaledSum& part) {
    if (part.value.hi == 0) return 0.0;
    return ScaledSum{multiply(size.value, part.value), size.exponent + part.exponent}.rounded();
  };
  return {product(direction.even), product(direction.odd)};
}

/// conj(z)^conj(w) = conj(z^w): f is asked for y >= +0 only.
template <class F> Pair<double> with_upper_half(PowerOperands o, F f) {
  const std::uint64_t sign = sign_of(o.y);
  o.y = abs(o.y);
  o.d = flip_sign(o.d, sign);
  const Pair<double> z = f(o);
  return {z.first, flip_sign(z.second, sign)};
}

Pair<double> finite_power_above(const PowerOperands& o) {
  const double a = abs(o.x), b = abs(o.y);
  const ScaledSum size_of_z = a > b ? scaled_ln_abs(a, b) : scaled_ln_abs(b, a);
  const Angle angle = angle_of(o.x, o.y);
  const ScaledSum theta = normalised_sum(with_exponent(multiply(quarter_pi, double(angle.n))), angle.rest);
  const ScaledSum cl = product(size_of_z, o.c), minus_dt = product(theta, -o.d);
  const ScaledSum ct = product(angle.rest, o.c), dl = product(size_of_z, o.d);
  const Turn turn = turn_of(o.c, angle.n);
  PowerExponent e{normalised_sum(cl, minus_dt), turn.quadrant, normalised_sum(turn.rest, normalised_sum(ct, dl))};
  // Terms have an error of 2^-95, sums that of the largest term: 2^-60 shall be left of the size and of both parts.
  const int size_terms = std::max(magnitude(cl), magnitude(minus_dt));
  const int angle_terms = std::max({magnitude(turn.rest), magnitude(ct), magnitude(dl)});
  bool undecided = angle_terms > 34 || (size_terms > 30 && magnitude(e.size) < 14);
  EvenOdd<ScaledSum> direction{};
  if (!undecided) {
    direction = circle(e.quadrant, e.angle);
    undecided = std::min(magnitude(direction.even), magnitude(direction.odd)) < angle_terms - 35;
  }
  if (undecided) {
    e = long_power_exponent(o, value_of(size_of_z), value_of(theta));
    direction = circle(e.quadrant, e.angle);
  }
  // No sine is so small that e^4000 times it is in range.
  DoubleWord<double> re = value_of(e.size);
  if (abs(re.hi) > 4000) re = {with_sign(4000.0, sign_of(re.hi)), 0};
  const ExpReduced<double> reduced = exp_reduce(re.hi);
  const DoubleWord<double> size = exp_unscaled(reduced, re.lo);
  return parts_of({normalised(size), reduced.exponent()}, direction);
}

Pair<double> infinite_power_above(const PowerOperands& o) {
  const double nan = default_nan<double>();
  const bool x_infinite = is_infinite(o.x), y_infinite = is_infinite(o.y), negative = sign_of(o.x) != 0;
  const bool base_infinite = x_infinite || y_infinite;
  if (is_finite(o.c) && o.d == 0) { // of an infinite base; its direction is a multiple of pi/4
    const int n = y_infinite ? x_infinite ? negative ? 3 : 1 : 2 : negative ? 4 : 0;
    const Turn turn = turn_of(o.c, n);
    const EvenOdd<ScaledSum> direction = circle(turn.quadrant, turn.rest);
    const auto part = [&](const ScaledSum& s) {
      const double head = s.value.hi;
      return head == 0 ? 0.0 : with_sign(o.c > 0 ? infinity<double> : 0.0, sign_of(head));
    };
    return {part(direction.even), part(direction.odd)};
  }
  // The size is zero, or the direction is lost.
  const double a = abs(o.x), b = abs(o.y);
  const double ln = base_infinite ? infinity<double> : (a > b ? ln_abs(a, b) : ln_abs(b, a)).hi;
  const bool on_axis = sign_of(o.x) == 0 && (b == 0 || (x_infinite && !y_infinite));
  const auto product = [](double u, double v) { return u == 0 || v == 0 ? 0.0 : u * v; };
  const double first = product(o.c, ln), second = product(o.d, on_axis ? 0.0 : -1.0);
  const bool opposed = is_infinite(first) && is_infinite(second) && first != second;
  if (!opposed && (first == -infinity<double> || second == -infinity<double>)) return {0, 0};
  return {nan, nan};
}

} // namespace
} // namespace element_powers

Pair<double> finite_power(const PowerOperands& o) {
  return element_powers::with_upper_half(o, element_powers::finite_power_above);
}
Pair<double> infinite_power(const PowerOperands& o) {
  return element_powers::with_upper_half(o, element_powers::infinite_power_above);
}

} // namespace kelvm::inline KELVM_BUILD
