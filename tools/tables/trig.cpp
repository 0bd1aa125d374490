// Makes src/trig/trig_tables.hpp: sines, cosines and tangents of multiples of pi/32, the bits of 2/pi, and parts of
// 1/pi by exponent.
#include "emit.hpp"

#include <algorithm>

namespace {

/// function(j pi / 32)
template <class F> Real at(int j, F function) {
  Real angle, result;
  mpfr_const_pi(angle, MPFR_RNDN);
  mpfr_mul_si(angle, angle, j, MPFR_RNDN);
  mpfr_div_ui(angle, angle, 32, MPFR_RNDN);
  function(result, angle, MPFR_RNDN);
  return result;
}
Real exactly(double x) {
  Real result;
  mpfr_set_d(result, x, MPFR_RNDN);
  return result;
}
Real sine(int j) { return j % 16 == 0 ? exactly(j % 32 == 0 ? 0 : j % 64 == 16 ? 1 : -1) : at(j, mpfr_sin); }
Real cosine(int j) { return sine(j + 16); }

Real rounded(Real x, int significant_bits) {
  mpfr_prec_round(x, significant_bits, MPFR_RNDN);
  mpfr_prec_round(x, 200, MPFR_RNDN);
  return x;
}

/// sign(c) 2^e with e = ceil(log2 |c| - 1/2), zero for zero. The tolerance decides |c| = 2^(e + 1/2).
double power_near(const Real& c) {
  const double value = to_double(c);
  if (value == 0) return 0;
  double power = 2;
  while (2 * (power / 2) * (power / 2) >= value * value * (1 - 0x1p-50)) power /= 2;
  return value < 0 ? -power : power;
}

} // namespace

int main() {
  header("trig_tables.hpp", "<cstdint>");

  std::puts(
      "/// For a = j pi / 32: cos a - power, sin a rounded, the rest of sin a to 24 bits, power; power is a signed\n"
      "/// power of two near cos a, or zero. sin 0 stands as -0, so that sums keep the sign of a zero argument.\n"
      "inline constexpr double sine_rows[64][4] = {");
  for (int j = 0; j < 64; ++j) {
    const Real s = sine(j), c = cosine(j);
    const double power = power_near(c);
    const Real head = rounded(s, 53), tail = rounded(difference(s, head), 24), rest = difference(c, exactly(power));
    std::printf("    {%a, %s%a, %a, %a},\n", to_double(rest), j == 0 ? "-" : "", to_double(head), to_double(tail),
                power);
  }
  std::puts("};\n\n/// cos a and sin a rounded, a = j pi / 32; sin 0 as above.\n"
            "inline constexpr double cosine_sine[64][2] = {");
  for (int j = 0; j < 64; ++j)
    std::printf("    {%a, %s%a},\n", to_double(cosine(j)), j == 0 ? "-" : "", to_double(sine(j)));

  std::puts("};\n\n/// tan a as head and tail, a = j pi / 32 for j < 8 and (j - 16) pi / 32 above.\n"
            "inline constexpr double tangent_double_word[16][2] = {");
  for (int j = 0; j < 16; ++j) {
    const Real t = j == 8 ? exactly(-1) : at(j < 8 ? j : j - 16, mpfr_tan), head = rounded(t, 53);
    std::printf("    {%a, %a},\n", to_double(head), to_double(difference(t, head)));
  }
  std::puts("};\n\n/// tan a rounded, for the same angles.\ninline constexpr double tangent[16] = {");
  for (int j = 0; j < 16; ++j) std::printf("    %a,\n", j == 8 ? -1.0 : to_double(at(j < 8 ? j : j - 16, mpfr_tan)));

  // 1216 fraction bits, word by word.
  std::puts("};\n\n/// The fraction bits of 2/pi, highest first, after one word of zeros.\n"
            "inline constexpr std::uint64_t two_over_pi[20] = {\n    0,");
  mpfr_t rest;
  mpfr_init2(rest, 2000);
  mpfr_const_pi(rest, MPFR_RNDN);
  mpfr_ui_div(rest, 2, rest, MPFR_RNDN);
  for (int i = 0; i < 19; ++i) {
    mpfr_mul_2ui(rest, rest, 64, MPFR_RNDN);
    const unsigned long word = mpfr_get_ui(rest, MPFR_RNDZ);
    mpfr_sub_ui(rest, rest, word, MPFR_RNDN);
    std::printf("    0x%016lX,\n", word);
  }
  std::puts("};\n\n/// 1/pi for floats of 8 exponents, 2^(8 j + 1) <= |x| < 2^(8 j + 9), without the bits whose "
            "products with them\n"
            "/// are multiples of 2: two parts of 29 bits and the rest.");
  double parts[16][3];
  for (int j = 0; j < 16; ++j) {
    // In units of the last dropped bit.
    const int dropped = std::max(0, 8 * j - 23);
    mpfr_const_pi(rest, MPFR_RNDN);
    mpfr_ui_div(rest, 1, rest, MPFR_RNDN);
    mpfr_mul_2si(rest, rest, dropped, MPFR_RNDN);
    mpfr_frac(rest, rest, MPFR_RNDZ);
    mpfr_t part;
    mpfr_init2(part, 2000);
    for (int k = 0; k < 3; ++k) {
      mpfr_mul_2si(part, rest, 29 * (k + 1), MPFR_RNDN);
      if (k < 2) mpfr_floor(part, part);
      mpfr_mul_2si(part, part, -29 * (k + 1), MPFR_RNDN);
      mpfr_sub(rest, rest, part, MPFR_RNDN);
      mpfr_mul_2si(part, part, -dropped, MPFR_RNDN);
      parts[j][k] = mpfr_get_d(part, MPFR_RNDN);
    }
    mpfr_clear(part);
  }
  std::puts("inline constexpr double one_over_pi_parts[16][2] = {");
  for (const auto& p : parts) std::printf("    {%a, %a},\n", p[0], p[1]);
  std::puts("};\ninline constexpr double one_over_pi_rest[16] = {");
  for (const auto& p : parts) std::printf("    %a,\n", p[2]);
  mpfr_clear(rest);
  std::puts("};");
  footer();
}
