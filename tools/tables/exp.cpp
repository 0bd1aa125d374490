// Makes src/exp/exp_tables.hpp: powers of two at fractional exponents, in the forms that the exponentials use.
#include "emit.hpp"

namespace {

/// 2^(j / n) to 200 bits.
Real root_of_two(int j, int n) {
  Real exponent, power;
  mpfr_set_si(exponent, j, MPFR_RNDN);
  mpfr_div_si(exponent, exponent, n, MPFR_RNDN);
  mpfr_exp2(power, exponent, MPFR_RNDN);
  return power;
}

} // namespace

int main() {
  header("exp_tables.hpp", "<cstdint>");

  std::puts("/// 2^(j/64) as head, truncated to 44 fraction bits, and tail, rounded: relative error 3e-30.\n"
            "inline constexpr double exp2_head_tail_64[64][2] = {");
  for (int j = 0; j < 64; ++j) {
    Real power = root_of_two(j, 64);
    Real head = truncated(power, 45), tail = difference(power, head);
    std::printf("    {%a, %a},\n", to_double(head), to_double(tail));
  }
  std::puts("};\n\n/// The fraction field of 2^(j/128) rounded to double.\n"
            "inline constexpr std::int64_t exp2_fraction_128[128] = {");
  for (int j = 0; j < 128; ++j)
    std::printf("    0x%013llX,\n", (unsigned long long)(bits_of(to_double(root_of_two(j, 128))) & 0xFFFFFFFFFFFFF));
  std::puts("};\n\n/// 2^(j/128) rounded to float, and the relative correction (2^(j/128) - head) / head.\n"
            "inline constexpr float exp2_head_correction_128[128][2] = {");
  for (int j = 0; j < 128; ++j) {
    Real power = root_of_two(j, 128), head;
    mpfr_set_flt(head, to_float(power), MPFR_RNDN);
    Real correction = difference(power, head);
    mpfr_div(correction, correction, head, MPFR_RNDN);
    std::printf("    {%af, %af},\n", to_float(head), to_float(correction));
  }
  std::puts("};\n\n/// The fraction field of 2^(j/128) rounded to float.\n"
            "inline constexpr std::int32_t exp2_fraction_128_float[128] = {");
  for (int j = 0; j < 128; ++j)
    std::printf("    0x%06X,\n", unsigned(bits_of(to_float(root_of_two(j, 128))) & 0x7FFFFF));
  std::puts("};");
  footer();
}
