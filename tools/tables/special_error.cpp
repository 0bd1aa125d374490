// Makes src/special/error_tables.hpp: rows of minimax polynomials for the error function, its complement and the normal
// distribution function.
#include "special_rows.hpp"

namespace {

Real erf_over_x(const Real& x) {
  Real y;
  if (mpfr_zero_p(mpfr_srcptr(x))) { // 2 / sqrt(pi)
    mpfr_const_pi(y, MPFR_RNDN);
    mpfr_rec_sqrt(y, y, MPFR_RNDN);
    mpfr_mul_ui(y, y, 2, MPFR_RNDN);
  } else {
    mpfr_erf(y, x, MPFR_RNDN);
    mpfr_div(y, y, x, MPFR_RNDN);
  }
  return y;
}

/// erf(k / per_unit) and the derivative there for k = 0 ... last, the last row 1 and 0.
template <class T> std::vector<std::vector<double>> erf_and_slope(int per_unit, int last) {
  std::vector<std::vector<double>> rows;
  for (int k = 0; k < last; ++k) {
    Real r, value, slope;
    mpfr_set_d(r, double(k) / per_unit, MPFR_RNDN);
    mpfr_erf(value, r, MPFR_RNDN);
    mpfr_sqr(r, r, MPFR_RNDN);
    mpfr_neg(r, r, MPFR_RNDN);
    mpfr_exp(slope, r, MPFR_RNDN);
    mpfr_mul(slope, slope, erf_over_x(to_real(0)), MPFR_RNDN);
    rows.push_back({double(T(to_quad(value))), double(T(to_quad(slope)))});
  }
  rows.push_back({1, 0});
  return rows;
}

/// e^(a^2) erfc(a)
Real scaled_erfc(const Real& a) {
  Real e, y;
  mpfr_sqr(e, a, MPFR_RNDN);
  mpfr_exp(e, e, MPFR_RNDN);
  mpfr_erfc(y, a, MPFR_RNDN);
  mpfr_mul(y, y, e, MPFR_RNDN);
  return y;
}

/// e^(a^2 / 2) Phi(-a)
Real scaled_normal(const Real& a) {
  Real b;
  mpfr_sqrt_ui(b, 2, MPFR_RNDN);
  mpfr_div(b, a, b, MPFR_RNDN);
  Real y = scaled_erfc(b);
  mpfr_div_ui(y, y, 2, MPFR_RNDN);
  return y;
}

/// Rows 0 ... count - 1 in a - k / per_unit, |a - k / per_unit| <= 1 / (2 per_unit), a >= 0.
Rows even_rows(int per_unit, int count, int degree) {
  Rows rows;
  for (int k = 0; k < count; ++k) {
    const Quad middle = Quad(k) / per_unit, half = Quad(1) / (2 * per_unit);
    const Interpolant f(erf_over_x, k == 0 ? 0 : middle - half, middle + half, 36);
    rows.add(minimax([&](Quad t) { return f(middle + t); }, k == 0 ? 0 : -half, half, degree));
  }
  return rows;
}

/// Rows for a from 0 to `last`, 2^row_bits for every binade of 1 + a, in a less the row's middle.
Rows binade_rows(Real (*scaled)(const Real&), int row_bits, double last, int degree) {
  Rows rows;
  for (Quad binade = 1; binade <= 1 + last; binade *= 2) {
    const Quad width = binade / (1 << row_bits);
    for (int j = 0; j < 1 << row_bits && binade + j * width <= 1 + last; ++j) {
      const Quad low = binade - 1 + j * width;
      const Interpolant f(scaled, low, low + width, 36);
      rows.add(minimax([&](Quad t) { return f(low + width / 2 + t); }, -width / 2, width / 2, degree));
    }
  }
  return rows;
}

} // namespace

int main() {
  header("error_tables.hpp", "<cstdint>");
  std::puts("namespace error_tables {\n");
  const Rows p = even_rows(8, 49, 10);
  std::puts("// A polynomial in t for erf(a) / a, a = k / 8 + t, |t| <= 1 / 16, k the row.");
  comment("c0_lo, c1_lo, c2, ..., c10, c0_hi, c1_hi, the heads of 26 bits.", p);
  print_array("double", "erf_a53", split_rows(p, 1, 26));
  std::puts("\n// erf(r) and 2 / sqrt(pi) e^(-r^2); from the last row on erf is 1 in this type.\n");
  std::puts("/// r = k / 128");
  print_array("double", "erf_and_slope", erf_and_slope<double>(128, 6 * 128));
  std::puts("\n/// r = k / 16");
  print_array("float", "float_erf_and_slope", erf_and_slope<float>(16, 63));
  std::puts(
      "\n// Polynomials in t for e^(a^2) erfc(a) and e^(a^2 / 2) Phi(-a). A binade of 1 + a has 2^n rows; t is a less\n"
      "// that of the row's middle.");
  const struct {
    const char* name;
    Real (*f)(const Real&);
    double last, last_float; // with a result other than zero; with a normal float
  } families[] = {{"erfc", scaled_erfc, 27.2261, 9.1946}, {"normal", scaled_normal, 38.4855, 12.95}};
  for (const auto& family : families) {
    char name[64];
    const auto print = [&](const char* suffix, const char* text, int row_bits, double last, int degree, auto emit) {
      std::snprintf(name, sizeof name, "%s_%s", family.name, suffix);
      const Rows rows = binade_rows(family.f, row_bits, last, degree);
      comment(text, rows);
      emit(rows);
    };
    const auto doubles = [&](const Rows& rows) { print_doubles(name, rows); };
    const auto floats = [&](const Rows& rows) { print_floats(name, rows); };
    print("a53", "n = 4: c0_lo, c1_lo, c2, ..., c10, c0_hi, c1_hi, the heads of 26 bits.", 4, family.last, 10,
          [&](const Rows& rows) { print_array("double", name, split_rows(rows, 1, 26)); });
    print("a50", "n = 5: c0, ..., c7.", 5, family.last, 7, doubles);
    print("a26", "n = 5: c0, ..., c3.", 5, family.last, 3, doubles);
    print("a24", "n = 5: c0, ..., c5.", 5, family.last_float, 5, doubles);
    print("a21", "n = 5: c0, ..., c3.", 5, family.last_float, 3, floats);
    print("a11", "n = 5: c0, c1.", 5, family.last_float, 1, floats);
  }
  std::puts("\n} // namespace error_tables");
  footer();
}
