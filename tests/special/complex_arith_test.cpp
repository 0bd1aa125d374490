// Complex products and quotients of zeros, infinities and NaNs in every combination of parts, against Annex G of C: the
// compiler's own product, and the quotient of example 2 in G.5.1 (compilers divide by other formulas, which differ in
// the signs of zeros). Codes and flags by their definition.
#include "special.hpp"

#include <cmath>
#include <complex>

namespace {

using special::default_nan, special::inf;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double parts[] = {0.0, -0.0, 1.0, -1.0, inf, -inf, nan};

bool has_nan(std::complex<double> z) { return std::isnan(z.real()) || std::isnan(z.imag()); }
bool is_infinite(std::complex<double> z) { return std::isinf(z.real()) || std::isinf(z.imag()); }
special::Value value(double x) { return std::isnan(x) ? default_nan : special::Value(x); }
special::Value source(double x) { return std::isnan(x) ? special::any_nan : special::Value(x); }

template <class Operation, class Code> void check_all(const char* family, Operation operation, Code code) {
  std::vector<special::Row> rows;
  for (double a : parts)
    for (double b : parts)
      for (double c : parts)
        for (double d : parts) {
          const std::complex<double> z(a, b), w(c, d), y = operation(z, w);
          rows.push_back({{source(a), source(b), source(c), source(d)},
                          {value(y.real()), value(y.imag())},
                          has_nan(z) || has_nan(w) ? kelStatusOk : code(z, w, y)});
        }
  for (const harness::Function& f : harness::all_functions())
    if (f.family == family && f.complex_source())
      for (const special::Row& row : rows) special::check_row(f, row);
}

kelStatus product_code(std::complex<double>, std::complex<double>, std::complex<double> y) {
  return has_nan(y) ? kelStatusDomain : kelStatusOk;
}

/// The example's steps; its scaling is left out, the parts being what they are here.
std::complex<double> quotient(std::complex<double> z, std::complex<double> w) {
  double a = z.real(), b = z.imag(), c = w.real(), d = w.imag();
  const auto box = [](double x) { return std::copysign(std::isinf(x) ? 1.0 : 0.0, x); };
  const double norm = c * c + d * d;
  double x = (a * c + b * d) / norm, y = (b * c - a * d) / norm;
  if (std::isnan(x) && std::isnan(y)) {
    if (norm == 0.0 && (!std::isnan(a) || !std::isnan(b))) {
      x = std::copysign(inf, c) * a;
      y = std::copysign(inf, c) * b;
    } else if (is_infinite(z) && std::isfinite(c) && std::isfinite(d)) {
      a = box(a), b = box(b);
      x = inf * (a * c + b * d);
      y = inf * (b * c - a * d);
    } else if (is_infinite(w) && std::isfinite(a) && std::isfinite(b)) {
      c = box(c), d = box(d);
      x = 0.0 * (a * c + b * d);
      y = 0.0 * (b * c - a * d);
    }
  }
  return {x, y};
}

TEST(ComplexArithmetic, ProductsOfSpecialParts) {
  check_all(
      "Mul", [](auto z, auto w) { return z * w; }, product_code);
  check_all(
      "MulByConj", [](auto z, auto w) { return z * std::conj(w); }, product_code);
}

TEST(ComplexArithmetic, QuotientsOfSpecialParts) {
  check_all("Div", quotient, [](auto z, auto w, auto y) -> kelStatus {
    const bool pole = w == 0.0 && z != 0.0 && !is_infinite(z);
    return pole ? kelStatusSingularity : has_nan(y) ? kelStatusDomain : kelStatusOk;
  });
}

} // namespace
