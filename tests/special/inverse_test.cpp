// The inverse error functions and the inverse normal distribution: special values, the first row of the tables in its
// own arithmetic, the borders of the vector formula and the deep tail.
#include "special.hpp"

#include <bit>
#include <cmath>
#include <random>

namespace {

using harness::Type;
using special::any_nan;
using special::bits;
using special::default_nan;
using special::inf;

TEST(ErfInv, SpecialValues) {
  special::check_real("ErfInv", {
                                    {{1.0}, {inf}, kelStatusSingularity},
                                    {{-1.0}, {-inf}, kelStatusSingularity},
                                    {{1.0 + 0x1p-23}, {default_nan}, kelStatusDomain},
                                    {{-1.5}, {default_nan}, kelStatusDomain},
                                    {{inf}, {default_nan}, kelStatusDomain},
                                    {{-inf}, {default_nan}, kelStatusDomain},
                                    {{0.0}, {0.0}},
                                    {{-0.0}, {-0.0}},
                                    {{any_nan}, {any_nan}},
                                });
  special::check("ErfInv", Type::f64, {{{1.0 + 0x1p-52}, {default_nan}, kelStatusDomain}});
}

TEST(ErfcInv, SpecialValues) {
  special::check_real("ErfcInv", {
                                     {{0.0}, {inf}, kelStatusSingularity},
                                     {{-0.0}, {inf}, kelStatusSingularity},
                                     {{2.0}, {-inf}, kelStatusSingularity},
                                     {{-0x1p-149}, {default_nan}, kelStatusDomain},
                                     {{2.0 + 0x1p-22}, {default_nan}, kelStatusDomain},
                                     {{inf}, {default_nan}, kelStatusDomain},
                                     {{-inf}, {default_nan}, kelStatusDomain},
                                     {{1.0}, {0.0}},
                                     {{any_nan}, {any_nan}},
                                 });
}

TEST(CdfNormInv, SpecialValues) {
  special::check_real("CdfNormInv", {
                                        {{0.0}, {-inf}, kelStatusSingularity},
                                        {{-0.0}, {-inf}, kelStatusSingularity},
                                        {{1.0}, {inf}, kelStatusSingularity},
                                        {{-0x1p-149}, {default_nan}, kelStatusDomain},
                                        {{-0.25}, {default_nan}, kelStatusDomain},
                                        {{1.5}, {default_nan}, kelStatusDomain},
                                        {{1.0 + 0x1p-23}, {default_nan}, kelStatusDomain},
                                        {{0x1p127}, {default_nan}, kelStatusDomain},
                                        {{inf}, {default_nan}, kelStatusDomain},
                                        {{-inf}, {default_nan}, kelStatusDomain},
                                        {{0.5}, {0.0}},
                                        {{any_nan}, {any_nan}},
                                    });
  special::check("CdfNormInv", Type::f64, {{{0x1p1023}, {default_nan}, kelStatusDomain}});
}

/// The first row of the tables in its own arithmetic: c0 and c1 as heads and tails, the other coefficients by Horner.
struct FirstRow {
  double c0_hi, c0_lo, c1_hi, c1_lo, c[13]; // c2 ... c14

  double times(double factor, double r) const {
    const auto head = [](double x) { return std::bit_cast<double>(std::bit_cast<std::uint64_t>(x) & ~0x7FFFFFFull); };
    double higher = c[12];
    for (int i = 11; i >= 0; --i) higher = higher * r + c[i];
    higher = c0_lo + r * (c1_lo + r * higher);
    const double r_hi = head(r), sum_hi = head(c0_hi + c1_hi * r_hi);
    const double sum_lo = (c0_hi - sum_hi + c1_hi * r_hi) + c1_hi * (r - r_hi) + higher;
    const double factor_hi = head(factor);
    return factor_hi * sum_hi + (sum_hi * (factor - factor_hi) + sum_lo * factor);
  }
};
constexpr FirstRow erf_inv{0.8871351778507233,
                           2.5137890581822675e-09,
                           -0.014563386095687747,
                           4.916799275721886e-11,
                           {0.05875579589031858, -0.004039394265801299, 0.008293601623453061, -0.00104242900202547,
                            0.0014660193326892063, -0.00026584531496444283, 0.00029055929841974586,
                            -6.778096635098589e-05, 6.186283353845844e-05, -1.7334120581320147e-05,
                            1.3844056455575122e-05, -4.5205975460772585e-06, 3.2670847279364366e-06}};
constexpr FirstRow norm_inv{1.254598617553711,
                            -1.3823915760862766e-08,
                            -0.02059573819860816,
                            1.375448334377981e-10,
                            {0.08309324341611389, -0.0057125661544683085, 0.01172892389680684, -0.0014742172324754702,
                             0.00207326442299023, -0.00037596204991606214, 0.000410912900498816, -9.585676188431864e-05,
                             8.748725819691709e-05, -2.451414841791355e-05, 1.9578452397733137e-05,
                             -6.393090359692991e-06, 4.620355531669722e-06}};

TEST(InverseRows, FirstRowBitForBit) {
  std::vector<special::Row> erf_rows{{{0.0625}, {0.0625 * (erf_inv.c0_hi + erf_inv.c0_lo)}}}, norm_rows;
  std::mt19937_64 random(3);
  for (int i = 0; i < 400; ++i) {
    const double u = std::ldexp(double(random() >> 11), -53) / 8, x = i % 2 ? u : u * std::ldexp(1, -i / 8);
    const double y = 1 - x, error = (1 - y) - x; // y = 1 at worst, in the row's own terms 2^-53 off its end
    const double result = erf_inv.times(x, (2 * y - 1.875) + 2 * error);
    if (y < 1) erf_rows.push_back({{x}, {result}});
    if (y < 1) erf_rows.push_back({{-x}, {-result}});
    const double p = 0.5 + (i % 4 < 2 ? x : -x) / 2, factor = 2 * p - 1, distance = 1 - std::fabs(factor); // all exact
    if (p != 0.5) norm_rows.push_back({{p}, {norm_inv.times(factor, 2 * distance - 1.875)}});
  }
  special::check("kelsErfInv_64f_A53", erf_rows);
  special::check("kelsCdfNormInv_64f_A53", norm_rows);
}

// Below 2^-53 x sqrt(pi) / 2, rounded once. The last argument's result, 0.061 units below the least normal number, is
// rounded up to it.
TEST(ErfInv, TinyArguments) {
  const double unit = 0x1p-1074;
  special::check("ErfInv", Type::f64,
                 {{{unit}, {unit}, kelStatusOk, driver::underflow},
                  {{-unit}, {-unit}, kelStatusOk, driver::underflow},
                  {{3 * unit}, {3 * unit}, kelStatusOk, driver::underflow},
                  {{-4 * unit}, {-4 * unit}, kelStatusOk, driver::underflow},
                  {{5 * unit}, {4 * unit}, kelStatusOk, driver::underflow},
                  {{bits(0x120DD750429B6D)}, {0x1p-1022}}});
}

// Where the rows end and the deep tail begins, and where that ends.
TEST(DeepTail, Borders) {
  special::check("kelsErfcInv_64f_A53", {{{0x1p-53}, {0x1.7744f8f74e94ap+2}},
                                         {{0x1p-54}, {0x1.7afb48dc96627p+2}},
                                         {{0x1p-1074}, {0x1.b369a6244e684p+4}}});
  special::check("kelsErfcInv_32f_A24",
                 {{{0x1p-24}, {0x1.ea8f96p+1}}, {{0x1p-25}, {0x1.f5a88ap+1}}, {{0x1p-149}, {0x1.40a27cp+3}}});
  special::check("kelsCdfNormInv_64f_A53", {{{0x1p-54}, {-0x1.095b059d67c4cp+3}},
                                            {{0x1p-55}, {-0x1.0bfafe7a91e68p+3}},
                                            {{0x1p-1074}, {-0x1.33bd3f27fcd03p+5}}});
  special::check("kelsCdfNormInv_32f_A24",
                 {{{0x1p-25}, {-0x1.5ae102p+2}}, {{0x1p-26}, {-0x1.62b9dcp+2}}, {{0x1p-149}, {-0x1.c3e2bap+3}}});
}

} // namespace
