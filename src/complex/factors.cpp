#include "complex/factors.hpp"

namespace kelvm::inline KELVM_BUILD {
namespace {

HeadTail<double> normalised(HeadTail<double> y) { return fast_two_sum(y.head, y.tail); }

} // namespace

ScaledSum any_exponential(double x) {
  if (is_nan(x)) return {{x, 0}, 0};
  if (is_infinite(x)) return {{x > 0 ? x : 0.0, 0}, 0};
  if (abs(x) > 2000) x = with_sign(2000.0, sign_of(x)); // beyond the range whatever the other factor
  const ExpReduced<128, double> reduced = exp_reduce<128>(x);
  return {normalised(exp_unscaled<ExpAccuracy::pow>(reduced, 0.0)), int(std::int64_t(bits(reduced.sum) << 13) >> 20)};
}

CosSin<ScaledSum> any_cos_sin(double y) {
  if (!is_finite(y)) {
    const double nan = abs(default_nan<double>());
    return {{{nan, 0}, 0}, {{with_sign(nan, sign_of(y)), 0}, 0}};
  }
  if (abs(y) < 0x1p-30) {
    const Scaled sine = scaled(y);
    return {{{1.0, 0}, 0}, {{sine.fraction, 0}, sine.exponent}};
  }
  const WithinReach<double> within(abs(y));
  Remainder<double> r = long_reduce(within.y);
  r.tail += within.tail;
  r.index += within.index;
  const CosSin<Split<double>> c = Full::cos_sin(r);
  const HeadTail<double> cos = fast_two_sum(c.cos.head, c.cos.rest), sin = fast_two_sum(c.sin.head, c.sin.rest);
  return {{cos, 0}, {{flip_sign(sin.head, sign_of(y)), flip_sign(sin.tail, sign_of(y))}, 0}};
}

double any_product(Part part, const ScaledSum& hyperbolic, const ScaledSum& circular) {
  const double h = hyperbolic.value.head, c = circular.value.head;
  const std::uint64_t sign = sign_of(h) ^ sign_of(c);
  if (h == 0 || c == 0) return with_sign(0.0, sign);
  if (is_nan(h) || is_nan(c)) return is_infinite(h) && part == Part::real ? h : default_nan<double>();
  if (is_infinite(h)) return with_sign(infinity<double>, sign);
  return ScaledSum{multiply(hyperbolic.value, circular.value), hyperbolic.exponent + circular.exponent}.rounded();
}

} // namespace kelvm::inline KELVM_BUILD
