// Makes src/erf/erf_tables.hpp: rows of minimax polynomials for the error function, its complement and the normal
// distribution function.
#include "erf_rows.hpp"

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

/// f(k / per_unit) and 2 / sqrt(pi) e^(-(k / per_unit)^2) for k = 0 ... last.
template <class T> std::vector<std::vector<double>> values_and_slopes(decltype(mpfr_erf) f, int per_unit, int last) {
  std::vector<std::vector<double>> rows;
  for (int k = 0; k <= last; ++k) {
    const Real r = to_real(Quad(k) / per_unit);
    Real value, slope;
    f(value, r, MPFR_RNDN);
    mpfr_sqr(slope, r, MPFR_RNDN);
    mpfr_neg(slope, slope, MPFR_RNDN);
    mpfr_exp(slope, slope, MPFR_RNDN);
    mpfr_mul(slope, slope, erf_over_x(to_real(0)), MPFR_RNDN);
    rows.push_back({double(T(to_quad(value))), double(T(to_quad(slope)))});
  }
  return rows;
}
/// The same for erf, the last row 1 and 0.
std::vector<std::vector<double>> erf_and_slope(int per_unit, int last) {
  auto rows = values_and_slopes<double>(mpfr_erf, per_unit, last);
  rows.back() = {1, 0};
  return rows;
}

Real erf_over_root(const Real& square) {
  Real a;
  mpfr_sqrt(a, square, MPFR_RNDN);
  return erf_over_x(a);
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
  header("erf_tables.hpp", "<cstdint>");
  std::puts("namespace erf_tables {");
  const char* layout = "c0_lo, c1_lo, c2, ..., c10, c0_hi, c1_hi, the heads of 26 bits.";
  const auto print_split = [&](const char* name, const Rows& rows) {
    comment(layout, rows);
    print_array("double", name, split_rows(rows, 1, 26));
  };
  std::puts("\n// A polynomial in t for erf(a) / a, a = k / 8 + t, |t| <= 1 / 16, k the row.");
  print_split("erf_full", even_rows(8, 49, 10));
  const double end = 2.75;
  const Interpolant of_square(erf_over_root, 0, end * end, 50);
  const Fit short_fit = minimax(of_square, 0, end * end, 6);
  std::printf("\n// A polynomial in a^2 for erf(a) / a, a <= %g. Relative error of the fit 2^%.1f, positive at the "
              "end, where the\n"
              "// product with a exceeds 1.\n\n",
              end, std::log2(short_fit.error));
  std::puts("inline constexpr float erf_bits11[7] = {");
  for (Quad c : short_fit.coefficients) std::printf("%af,\n", double(float(c)));
  std::puts("};");
  std::puts("\n// Polynomials in t for e^(a^2) erfc(a) and e^(a^2 / 2) Phi(-a). A binade of 1 + a has 16 rows; t is a "
            "less that of\n"
            "// the row's middle.");
  print_split("erfc_full", binade_rows(scaled_erfc, 4, 27.2261, 10));
  print_split("normal_full", binade_rows(scaled_normal, 4, 38.4855, 10));

  const auto print_pairs = [](const char* type, const char* name, const char* text, const auto& rows) {
    std::printf("\n/// %s\n", text);
    print_array(type, name, rows);
  };
  std::puts("\n// erf(r) or erfc(r), and 2 / sqrt(pi) e^(-r^2). In the last row of erf it is 1.");
  print_pairs("double", "erf_and_slope", "r = k / 128", erf_and_slope(128, 6 * 128));
  print_pairs("double", "erfc_and_slope", "r = k / 128, as far as 26.52",
              values_and_slopes<double>(mpfr_erfc, 128, 3394));
  print_pairs("float", "float_erfc_and_slope", "r = k / 64, as far as 9.19",
              values_and_slopes<float>(mpfr_erfc, 64, 588));
  std::puts("\n} // namespace erf_tables");
  footer();
}
