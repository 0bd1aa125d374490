#include "estimate.hpp"

#include <boost/math/special_functions/erf.hpp>
#include <cmath>
#include <numbers>

namespace reference {
namespace {

namespace policies = boost::math::policies;
using Quiet =
    policies::policy<policies::domain_error<policies::ignore_error>, policies::overflow_error<policies::ignore_error>,
                     policies::pole_error<policies::ignore_error>, policies::promote_double<false>>;

struct Row {
  std::string_view family;
  bool complex;
  EstimateFunction<double> in_double;
  EstimateFunction<long double> in_long_double;
  double ulps; // bound of the error of each component, in units of the last place of double or long double
};

// Complex sources have none: they are few enough for MPFR and MPC alone. Estimates written as a stateless function of
// one or two numbers of any type.
template <class F, class T> void apply_unary(const double* in, T* out) { out[0] = F{}(T(in[0])); }
template <class F, class T> void apply_binary(const double* in, T* out) { out[0] = F{}(T(in[0]), T(in[2])); }
template <class F, class T> void apply_parts(const double* in, T* out) { F{}(in, out); }

template <class F> constexpr Row unary(std::string_view family, double ulps, F) {
  return {family, false, apply_unary<F, double>, apply_unary<F, long double>, ulps};
}
template <class F> constexpr Row binary(std::string_view family, double ulps, F) {
  return {family, false, apply_binary<F, double>, apply_binary<F, long double>, ulps};
}
// Any number of parts and results: the function gets the arrays.
template <class F> constexpr Row parts(std::string_view family, bool is_complex, double ulps, F) {
  return {family, is_complex, apply_parts<F, double>, apply_parts<F, long double>, ulps};
}

// erfc(-x/sqrt 2)/2 with the rounding error of the argument put right: erfc'(t) = -2/sqrt(pi) exp(-t^2)
template <class T> T cdf_norm(T x) {
  const T t = -x * std::numbers::sqrt2_v<T> / 2;
  const T value = std::erfc(t);
  if (!(x < 0) || value == 0) return value / 2;
  // t + r = -x/sqrt 2 from t^2 = x^2/2: r = (x^2/2 - t^2)/(2t), the difference as a product of exact fused operations
  const T square = t * t, half_square = x * x / 2;
  const T low = std::fma(t, t, -square), half_low = std::fma(x / 2, x, -half_square);
  const T r = ((half_square - square) + (half_low - low)) / (2 * t);
  return (value - r * 2 * std::numbers::inv_sqrtpi_v<T> * std::exp(-square)) / 2;
}

constexpr Row table[] = {
    binary("Add", 1, [](auto x, auto y) { return x + y; }),
    binary("Sub", 1, [](auto x, auto y) { return x - y; }),
    binary("Mul", 1, [](auto x, auto y) { return x * y; }),
    unary("Sqr", 1, [](auto x) { return x * x; }),
    unary("Abs", 0, [](auto x) { return std::fabs(x); }),
    binary("Div", 1, [](auto x, auto y) { return x / y; }),
    unary("Inv", 1, [](auto x) { return 1 / x; }),
    unary("Ceil", 0, [](auto x) { return std::ceil(x); }),
    unary("Floor", 0, [](auto x) { return std::floor(x); }),
    unary("Trunc", 0, [](auto x) { return std::trunc(x); }),
    unary("Round", 0, [](auto x) { return std::round(x); }),
    unary("Rint", 0, [](auto x) { return std::rint(x); }),
    unary("NearbyInt", 0, [](auto x) { return std::nearbyint(x); }),
    parts("Modf", false, 0,
          [](const double* in, auto* out) {
            out[0] = std::trunc(in[0]);
            out[1] = std::isinf(in[0]) ? std::copysign(0.0, in[0]) : in[0] - static_cast<double>(out[0]);
          }),
    unary("Sqrt", 1, [](auto x) { return std::sqrt(x); }),
    unary("InvSqrt", 2, [](auto x) { return x == 0 ? 1 / x : 1 / std::sqrt(x); }),
    unary("Cbrt", 6, [](auto x) { return std::cbrt(x); }),
    unary("InvCbrt", 6, [](auto x) { return 1 / std::cbrt(x); }),
    unary("Pow2o3", 6, [](auto x) { return std::cbrt(x * x); }),
    unary("Pow3o2", 3, [](auto x) { return std::fabs(x) * std::sqrt(x); }),
    binary("Hypot", 2, [](auto x, auto y) { return std::hypot(x, y); }),
    unary("Exp", 2, [](auto x) { return std::exp(x); }),
    unary("Expm1", 5, [](auto x) { return std::expm1(x); }),
    unary("Ln", 2, [](auto x) { return std::log(x); }),
    unary("Log10", 3, [](auto x) { return std::log10(x); }),
    unary("Log1p", 4, [](auto x) { return std::log1p(x); }),
    binary("Pow", 4, [](auto x, auto y) { return std::pow(x, y); }),
    binary("Powx", 4, [](auto x, auto y) { return std::pow(x, y); }),
    unary("Sin", 3, [](auto x) { return std::sin(x); }),
    unary("Cos", 3, [](auto x) { return std::cos(x); }),
    parts("SinCos", false, 3,
          [](const double* in, auto* out) {
            using T = std::remove_reference_t<decltype(*out)>;
            out[0] = std::sin(T(in[0]));
            out[1] = std::cos(T(in[0]));
          }),
    parts("CIS", true, 3,
          [](const double* in, auto* out) {
            using T = std::remove_reference_t<decltype(*out)>;
            out[0] = std::cos(T(in[0]));
            out[1] = std::sin(T(in[0]));
          }),
    unary("Tan", 4, [](auto x) { return std::tan(x); }),
    unary("Atan", 3, [](auto x) { return std::atan(x); }),
    binary("Atan2", 3, [](auto y, auto x) { return std::atan2(y, x); }),
    unary("Asin", 3, [](auto x) { return std::asin(x); }),
    unary("Acos", 3, [](auto x) { return std::acos(x); }),
    unary("Sinh", 5, [](auto x) { return std::sinh(x); }),
    unary("Cosh", 5, [](auto x) { return std::cosh(x); }),
    unary("Tanh", 6, [](auto x) { return std::tanh(x); }),
    unary("Asinh", 6, [](auto x) { return std::asinh(x); }),
    unary("Acosh", 6, [](auto x) { return std::acosh(x); }),
    unary("Atanh", 6, [](auto x) { return std::atanh(x); }),
    unary("Erf", 3, [](auto x) { return std::erf(x); }),
    unary("Erfc", 6, [](auto x) { return std::erfc(x); }),
    unary("ErfInv", 5, [](auto x) { return boost::math::erf_inv(x, Quiet{}); }),
    unary("ErfcInv", 8, [](auto x) { return boost::math::erfc_inv(x, Quiet{}); }),
    unary("CdfNorm", 6, [](auto x) { return cdf_norm(x); }),
    unary("CdfNormInv", 8,
          [](auto x) {
            using T = decltype(x);
            return -std::numbers::sqrt2_v<T> * boost::math::erfc_inv(2 * x, Quiet{});
          }),
};

} // namespace

FamilyEstimate estimate_of(const harness::Function& function) {
  const bool is_complex = function.type == harness::Type::c32 || function.type == harness::Type::c64;
  FamilyEstimate found;
  for (const Row& row : table) {
    if (row.family != function.family || row.complex != is_complex) continue;
    if (function.is_float())
      found.in_double = {row.in_double, row.ulps * 0x1p-52};
    else
      found.in_long_double = {row.in_long_double, row.ulps * 0x1p-63};
  }
  return found;
}

void BlockEstimates::evaluate(const Arguments* arguments, int elements) {
  const auto fill = [&](const auto& estimate, auto& values) {
    if (!estimate.function) return;
    values.resize(at(elements));
    for (int i = 0; i < elements; ++i) estimate.function(arguments[i].parts, &values[at(i)]);
  };
  fill(family_.in_double, in_double_);
  fill(family_.in_long_double, in_long_double_);
}

} // namespace reference
