// w ln z in fixed-point arithmetic.
//
// With l next to ln z, ln z = l + ln(1 + u) where 1 + u = z e^-l: u is tiny, and its series short. The exponential is
// that of a 2^-n part of its argument, squared n times (Brent, "Fast multiple-precision evaluation of elementary
// functions", 1976). An error of ln z counts w times: behind the point it has the words that w has before it, and those
// that the angle needs. How many these are the angle itself tells (Ziv, "Fast evaluation of elementary mathematical
// functions with correctly rounded last bit", 1991).

#include "complex/long_constants.hpp"
#include "complex/power_element.hpp"
#include "exact/fixed_point.hpp"

#include <algorithm>

namespace kelvm::inline KELVM_BUILD {
namespace {

using Number = FixedPoint::Number;
struct ComplexNumber {
  Number re, im;
};

ComplexNumber product(const FixedPoint& f, const ComplexNumber& a, const ComplexNumber& b) {
  return {f.difference(f.product(a.re, b.re), f.product(a.im, b.im)),
          f.sum(f.product(a.re, b.im), f.product(a.im, b.re))};
}

/// e^a for |a| < 4 with a real part from -2 to 0; n = halvings is below 41, the error below 2^(n + 8) units.
ComplexNumber exponential(const FixedPoint& f, const ComplexNumber& a) {
  const int halvings = 16 + f.fraction_words() / 2, terms = 64 * f.fraction_words() / halvings;
  const ComplexNumber part{f.shifted_down(a.re, halvings), f.shifted_down(a.im, halvings)};
  const Number one = f.number(1);
  ComplexNumber e{one, f.number(0)};
  for (int j = terms; j > 0; --j) {
    e = product(f, part, e);
    e = {f.sum(f.quotient(e.re, j), one), f.quotient(e.im, j)};
  }
  for (int i = 0; i < halvings; ++i) e = product(f, e, e);
  return e;
}

/// ln(1 + u) for |u| < 2^-80.
ComplexNumber ln_1p(const FixedPoint& f, const ComplexNumber& u) {
  const Number one = f.number(1);
  ComplexNumber sum{f.number(0), f.number(0)};
  for (int j = 64 * f.fraction_words() / 80 + 1; j > 0; --j) {
    sum = product(f, u, sum);
    sum = {f.difference(f.quotient(one, j), sum.re), f.negated(sum.im)};
  }
  return product(f, u, sum);
}

Number number(const FixedPoint& f, DoubleWord<double> x) { return f.sum(f.number(x.hi), f.number(x.lo)); }

/// ln z of z 2^-k, whose larger part is from 1 to 2, and k ln 2.
ComplexNumber logarithm(const FixedPoint& f, const PowerOperands& o, DoubleWord<double> ln_abs,
                        DoubleWord<double> angle) {
  const int k = scaled(abs(o.x) > abs(o.y) ? o.x : o.y).exponent;
  const ComplexNumber near{number(f, ln_abs), number(f, angle)};
  const Number k_ln2 = f.product(f.number(k), f.from_fraction(long_constants::ln2));
  ComplexNumber u = product(f, {f.number(o.x, -k), f.number(o.y, -k)},
                            exponential(f, {f.difference(k_ln2, near.re), f.negated(near.im)}));
  u.re = f.difference(u.re, f.number(1));
  const ComplexNumber correction = ln_1p(f, u);
  return {f.sum(near.re, correction.re), f.sum(near.im, correction.im)};
}

} // namespace

PowerExponent long_power_exponent(const PowerOperands& o, DoubleWord<double> ln_abs, DoubleWord<double> angle) {
  constexpr ScaledSum half_pi{{0x1.921fb54442d18p0, 0x1.1a62633145c07p-54}, 0};
  constexpr int most_words = int(std::size(long_constants::ln2));
  // |w| < 2^(64 whole - 12), |ln z| < 2^10
  const int exponent = std::max({scaled(o.c).exponent, scaled(o.d).exponent, 0}), whole = (exponent + 13) / 64 + 1;
  for (int extra = 3;; extra *= 2) {
    const bool last = whole + extra >= most_words;
    const FixedPoint f(whole, last ? most_words : whole + extra);
    const ComplexNumber e = product(f, {f.number(o.c), f.number(o.d)}, logarithm(f, o, ln_abs, angle));
    const Number quarters = f.product(e.im, f.from_fraction(long_constants::two_over_pi));
    const ScaledSum rest = f.leading(f.rest(quarters));
    // Its error is below 2^(40 - 64 extra).
    if (last || (rest.value.hi != 0 && rest.exponent > 104 - 64 * extra))
      return {f.leading(e.re), int(f.nearest(quarters) & 3), product(rest, half_pi)};
  }
}

} // namespace kelvm::inline KELVM_BUILD
