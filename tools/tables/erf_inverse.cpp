// Makes src/erf/erf_inverse_tables.hpp: rows of minimax polynomials for the inverse error functions and the inverse of
// the normal distribution function.
#include "erf_rows.hpp"

#include <cstdlib>
#include <cstring>

namespace {

/// z with erfc(z) = y, by Newton's method from a guess; 0 < y < 1. Relative accuracy 2^-180 also where z is small.
Real erfc_inverse(const Real& y) {
  const double y_double = to_double(y);
  // Any guess below the root and right of the turning point converges: the function is convex.
  double guess = y_double > 0.5 ? (1 - y_double) * 0.886 : std::sqrt(std::fmax(-std::log(y_double) - 1, 0)) * 0.9;
  if (y_double == 0) { // below the doubles
    Real l;
    mpfr_log(l, y, MPFR_RNDN);
    guess = 0.97 * std::sqrt(-to_double(l));
  }
  Real z, one_minus_y;
  mpfr_set_d(z, guess, MPFR_RNDN);
  mpfr_ui_sub(one_minus_y, 1, y, MPFR_RNDN);
  for (int i = 0; i < 100; ++i) {
    // The step is (erfc(z) - y) / (2 / sqrt(pi) e^(-z^2)), the difference taken from erf where y is near 1.
    Real residue, slope;
    if (y_double > 0.5) {
      mpfr_erf(residue, z, MPFR_RNDN);
      mpfr_sub(residue, one_minus_y, residue, MPFR_RNDN);
    } else {
      mpfr_erfc(residue, z, MPFR_RNDN);
      mpfr_sub(residue, residue, y, MPFR_RNDN);
    }
    mpfr_sqr(slope, z, MPFR_RNDN);
    mpfr_exp(slope, slope, MPFR_RNDN);
    mpfr_mul(residue, residue, slope, MPFR_RNDN);
    mpfr_const_pi(slope, MPFR_RNDN);
    mpfr_sqrt(slope, slope, MPFR_RNDN);
    mpfr_mul(residue, residue, slope, MPFR_RNDN);
    mpfr_div_ui(residue, residue, 2, MPFR_RNDN);
    // Halley's correction: z'' = 2 z z'^2.
    mpfr_mul(slope, residue, z, MPFR_RNDN);
    mpfr_add_ui(slope, slope, 1, MPFR_RNDN);
    mpfr_mul(slope, slope, residue, MPFR_RNDN);
    mpfr_add(z, z, slope, MPFR_RNDN);
    if (mpfr_zero_p(residue) || mpfr_get_exp(slope) < mpfr_get_exp(z) - 75) {
      if (mpfr_zero_p(residue) || mpfr_get_exp(slope) < mpfr_get_exp(z) - 150) break;
    }
  }
  return z;
}

/// erfinv(1 - y) / (1 - y)
Real inverse_over_distance(const Real& y) {
  Real z = erfc_inverse(y), factor;
  mpfr_ui_sub(factor, 1, y, MPFR_RNDN);
  mpfr_div(z, z, factor, MPFR_RNDN);
  return z;
}

/// -s erfcinv(e^(-1 / s^2))
Real deep_tail(const Real& s) {
  Real x;
  mpfr_sqr(x, s, MPFR_RNDN);
  mpfr_ui_div(x, 1, x, MPFR_RNDN);
  mpfr_neg(x, x, MPFR_RNDN);
  mpfr_exp(x, x, MPFR_RNDN);
  Real z = erfc_inverse(x);
  mpfr_mul(z, z, s, MPFR_RNDN);
  mpfr_neg(z, z, MPFR_RNDN);
  return z;
}

Quad sqrt2() {
  Real r;
  mpfr_sqrt_ui(r, 2, MPFR_RNDN);
  return to_quad(r);
}

/// Row 0 of the two A53 tables: published values, which the fit meets in c0 to c7. The low bits of the higher
/// coefficients are below the accuracy of any fit.
struct First {
  double c0_hi, c1_hi, c0_lo, c1_lo, higher[13];
};
constexpr First first_erf_inv = {
    0.8871351778507233,
    -0.014563386095687747,
    2.5137890581822675e-09,
    4.916799275721886e-11,
    {0.05875579589031858, -0.004039394265801299, 0.008293601623453061, -0.00104242900202547, 0.0014660193326892063,
     -0.00026584531496444283, 0.00029055929841974586, -6.778096635098589e-05, 6.186283353845844e-05,
     -1.7334120581320147e-05, 1.3844056455575122e-05, -4.5205975460772585e-06, 3.2670847279364366e-06}};
constexpr First first_cdf_norm_inv = {
    1.254598617553711,
    -0.02059573819860816,
    -1.3823915760862766e-08,
    1.375448334377981e-10,
    {0.08309324341611389, -0.0057125661544683085, 0.01172892389680684, -0.0014742172324754702, 0.00207326442299023,
     -0.00037596204991606214, 0.000410912900498816, -9.585676188431864e-05, 8.748725819691709e-05,
     -2.451414841791355e-05, 1.9578452397733137e-05, -6.393090359692991e-06, 4.620355531669722e-06}};
void expect(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "special_inverse: %s\n", what);
  std::exit(1);
}

/// The heads of c0 and c1 are those of the best line of c0 + c1 t + c2 t^2 + c3 t^3, so that what is added to them, and
/// its rounding errors, are half as large as beside the tangent in the middle.
void print_full(const char* name, const Rows& fits, Quad factor, const First& first) {
  auto rows = split_rows(fits, factor, 26);
  for (std::size_t k = 1; k < rows.size(); ++k) {
    const Row& c = fits.of[k];
    const Quad line[] = {c[0] + c[2] / 128, c[1] + c[3] * 3 / 256}; // |t| <= 1/8
    for (int i : {0, 1}) {
      const double head = rounded(factor * line[i], 26);
      rows[k][15 + i] = head;
      rows[k][i] = double(factor * c[i] - head);
    }
  }
  std::vector<double> given = {first.c0_lo, first.c1_lo};
  given.insert(given.end(), first.higher, first.higher + 13);
  given.insert(given.end(), {first.c0_hi, first.c1_hi});
  for (int i : {0, 1, 2, 3, 4, 5, 6, 7, 15, 16}) expect(rows[0][i] == given[i], "row 0 misses the published values");
  rows[0] = given;
  print_array("double", name, rows);
}

void print_tail(const char* name, const Rows& fits, Quad factor) {
  auto rows = split_rows(fits, factor, 16);
  for (auto& row : rows) row.push_back(0);
  print_array("double", name, rows);
}

/// The logarithm's reciprocals with their logarithms: R = n / 512 near 512 / (512 + j + 1/2), and -ln R.
void print_logarithms() {
  std::puts(
      "\n/// R near the reciprocal of the middle of [1 + j/256, 1 + (j + 1)/256), a multiple of 1/512; -ln R as a\n"
      "/// head of 21 bits and a tail. |m R - 1| <= 0.00285.\n"
      "inline constexpr double tail_logarithm[256][3] = {");
  for (int j = 0; j < 256; ++j) {
    const int n = (2 * 512 * 512 + 513 + 2 * j) / (2 * (513 + 2 * j));
    Real l;
    mpfr_set_ui(l, n, MPFR_RNDN);
    mpfr_div_ui(l, l, 512, MPFR_RNDN);
    mpfr_log(l, l, MPFR_RNDN);
    mpfr_neg(l, l, MPFR_RNDN);
    const Real head = truncated(l, 21);
    std::printf("{%a,%a,%a},\n", n / 512.0, to_double(head), to_double(difference(l, head)));
  }
  std::puts("};");
}

} // namespace

int main() {
  // Quarter binades of y: row k belongs to 2^-1-k/4 (7 - k%4)/4 <= y < ..., y = 2^e (1 + q/4 + 1/8 + t), |t| <= 1/8.
  Rows full, bits50, bits27, bits40, bits21, bits11, tail;
  for (int k = 0; k < 212; ++k) {
    const int e = -1 - k / 4, q = 3 - k % 4;
    const Quad scale = std::ldexp(1.0, e), low = scale * (4 + q) / 4, high = scale * (5 + q) / 4;
    const Interpolant f(inverse_over_distance, low, high, 40);
    const auto row = [&](int per_binade, int part, int degree) {
      // Parts count down, like the rows.
      const int parts = per_binade / 4;
      const Quad width = Quad(1) / per_binade, middle = 1 + Quad(q) / 4 + width * (parts - 1 - part) + width / 2;
      return minimax([&](Quad t) { return f(scale * (middle + t)); }, -width / 2, width / 2, degree);
    };
    full.add(row(4, 0, 14));
    bits50.add(row(4, 0, 11));
    for (int part = 0; part < 4; ++part) bits27.add(row(16, part, 3));
    if (k < 96) {
      for (int part = 0; part < 2; ++part) {
        bits40.add(row(8, part, 7));
        bits21.add(row(8, part, 3));
      }
      for (int part = 0; part < 4; ++part) bits11.add(row(16, part, 1));
    }
  }
  for (int i = 4; i < 32; ++i) {
    const Interpolant f(deep_tail, Quad(i) / 128, Quad(i + 1) / 128, 48);
    tail.add(minimax([&](Quad z) { return f(Quad(i) / 128 + z); }, 0, Quad(1) / 128, 12));
  }

  header("erf_inverse_tables.hpp", "<cstdint>");
  std::puts("namespace erf_inverse_tables {\n");
  std::puts(
      "// Polynomials in t for erfinv(1 - y) / (1 - y), minimax in the relative error. Row k belongs to a part of a\n"
      "// binade of y, counted down from y just below 1; t is y's significand less that of the part's middle. The\n"
      "// tables for the normal distribution have the factor sqrt(2).");
  const struct {
    const char* name;
    Quad factor, tail_factor;
    const First& first;
  } families[] = {{"erf", 1, 1, first_erf_inv}, {"normal", sqrt2(), -sqrt2(), first_cdf_norm_inv}};
  char name[64];
  const auto named = [&](const auto& family, const char* suffix) {
    std::snprintf(name, sizeof name, "%s_%s", family.name, suffix);
    return name;
  };
  for (const auto& family : families) {
    comment("4 rows a binade: c0_lo, c1_lo, c2, ..., c14, c0_hi, c1_hi, the heads of 26 bits.", full);
    print_full(named(family, "full"), full, family.factor, family.first);
    comment("4 rows a binade: c0, ..., c11.", bits50);
    print_doubles(named(family, "bits50"), bits50, family.factor);
    comment("16 rows a binade: c0, ..., c3.", bits27);
    print_doubles(named(family, "bits27"), bits27, family.factor);
    comment("8 rows a binade: c0, ..., c7.", bits40);
    print_doubles(named(family, "bits40"), bits40, family.factor);
    comment("8 rows a binade: c0, ..., c3.", bits21);
    print_floats(named(family, "bits21"), bits21, family.factor);
    comment("16 rows a binade: c0, c1.", bits11);
    print_floats(named(family, "bits11"), bits11, family.factor);
  }
  std::puts("\n// The tail: polynomials in z for -s erfcinv(x), s = 1 / sqrt(-ln x) = i / 128 + z, 0 <= z < 1/128, row "
            "i - 4.\n"
            "// For the normal distribution, with the factor -sqrt(2).");
  for (const auto& family : families) {
    comment("c0_lo, c1_lo, c2, ..., c12, c0_hi, c1_hi, the heads of 16 bits, and a zero.", tail);
    print_tail(named(family, "tail"), tail, family.tail_factor);
  }
  print_logarithms();
  expect(full.error < 0x1p-66 && tail.error < 0x1p-62, "a fit fell short");
  std::puts("\n} // namespace erf_inverse_tables");
  footer();
}
