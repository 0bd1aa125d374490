// The checkers checked: exact functions against identities and against MPC, the error measure against errors made on
// purpose, and the short cut through estimates against MPFR alone.
#include "inputs.hpp"
#include "judge.hpp"
#include "limits.hpp"

#include <cmath>
#include <gtest/gtest.h>
#include <mpc.h>

using reference::Arguments;
using reference::Exact;
using reference::Judge;
using reference::Statistics;

namespace {

const harness::Function& function(std::string_view name) {
  const harness::Function* m = harness::find_function(name);
  if (!m) throw std::logic_error("no function " + std::string(name));
  return *m;
}

// One family's exact function at one argument after the other.
struct ExactOf {
  explicit ExactOf(std::string_view name) : exact(function(name)) {}
  mpfr_srcptr operator()(double x) {
    exact.evaluate({{x, 0, 0, 0}});
    return exact.result(0);
  }
  Exact exact;
};

struct Number {
  Number() { mpfr_init2(value, 256); }
  ~Number() { mpfr_clear(value); }
  Number(const Number&) = delete;
  operator mpfr_ptr() { return value; }
  mpfr_t value;
};

// -log2 |a/b - 1|, at most 300
double agreeing_bits(mpfr_srcptr a, mpfr_srcptr b) {
  if (mpfr_equal_p(a, b)) return 300;
  Number q;
  mpfr_div(q, a, b, MPFR_RNDN);
  mpfr_sub_ui(q, q, 1, MPFR_RNDN);
  return static_cast<double>(-mpfr_get_exp(static_cast<mpfr_ptr>(q)));
}

TEST(Exact, InversesInvert) {
  // An error of the inverse of x relative counts f'(x) x/f(x) times: at most 2 x^2 + 1, 11 bits, at the far end of the
  // tail.
  Number back, argument;
  ExactOf erf_inv("kelsErfInv_64f_A53"), erfc_inv("kelsErfcInv_64f_A53"), quantile("kelsCdfNormInv_64f_A53");
  for (double y : {0x1p-1074, 0x1.8p-1030, 1e-300, 1e-30, 1e-9, 0.1, 0.49, 0.5, 0.51, 0.9, 1 - 0x1p-30, 1 - 0x1p-53}) {
    mpfr_set_d(argument, y, MPFR_RNDN);
    mpfr_erf(back, erf_inv(y), MPFR_RNDN);
    EXPECT_GT(agreeing_bits(back, argument), 116) << "ErfInv " << y;
    mpfr_erfc(back, erfc_inv(y), MPFR_RNDN);
    EXPECT_GT(agreeing_bits(back, argument), 115) << "ErfcInv " << y;
    mpfr_sqrt_ui(argument, 2, MPFR_RNDN);
    mpfr_div(back, quantile(y), argument, MPFR_RNDN);
    mpfr_neg(back, back, MPFR_RNDN);
    mpfr_erfc(back, back, MPFR_RNDN);
    mpfr_set_d(argument, y, MPFR_RNDN);
    mpfr_mul_2ui(argument, argument, 1, MPFR_RNDN);
    EXPECT_GT(agreeing_bits(back, argument), 115) << "CdfNormInv " << y;
  }
  for (double p : {1.0 + 0x1p-52, 1.3, 1.5, 1.7, 2 - 0x1p-52}) {
    mpfr_erfc(back, erfc_inv(p), MPFR_RNDN);
    mpfr_set_d(argument, p, MPFR_RNDN);
    EXPECT_GT(agreeing_bits(back, argument), 120) << "ErfcInv " << p;
  }
}

TEST(Exact, NormalDistribution) {
  ExactOf cdf("kelsCdfNorm_64f_A53");
  Number sum, known;
  for (double x : {0.0, 0x1p-60, 0.7, 3.0, 8.0, 37.0}) {
    mpfr_set(sum, cdf(x), MPFR_RNDN);
    mpfr_add(sum, sum, cdf(-x), MPFR_RNDN);
    mpfr_set_ui(known, 1, MPFR_RNDN);
    EXPECT_GT(agreeing_bits(sum, known), 125) << x;
  }
  // Mills' ratio: cdf(-x) = phi(x)/(x + 1/(x + 2/(x + 3/(x + ...))))
  for (double x : {6.0, 20.0, 38.0}) {
    Number fraction, density;
    mpfr_set_d(fraction, x, MPFR_RNDN);
    for (unsigned k = 2000; k > 0; --k) {
      mpfr_ui_div(fraction, k, fraction, MPFR_RNDN);
      mpfr_add_d(fraction, fraction, x, MPFR_RNDN);
    }
    mpfr_set_d(density, -x * x / 2, MPFR_RNDN);
    mpfr_exp(density, density, MPFR_RNDN);
    mpfr_div(density, density, fraction, MPFR_RNDN);
    mpfr_const_pi(known, MPFR_RNDN);
    mpfr_mul_2ui(known, known, 1, MPFR_RNDN);
    mpfr_sqrt(known, known, MPFR_RNDN);
    mpfr_div(density, density, known, MPFR_RNDN);
    EXPECT_GT(agreeing_bits(cdf(-x), density), 110) << x;
  }
}

TEST(Exact, ComplexPowersOnEitherSideOfTheCut) {
  Exact power(function("kelsPow_64fc_A53"));
  for (const double side : {0.0, -0.0}) {
    power.evaluate({{-4, side, 0.5, 0}});
    EXPECT_EQ(mpfr_get_d(power.result(0), MPFR_RNDN), 0) << side;
    EXPECT_EQ(mpfr_get_d(power.result(1), MPFR_RNDN), std::copysign(2, side));
  }
}

TEST(Exact, AlgebraicPowers) {
  ExactOf inv_cbrt("kelsInvCbrt_64f_A53"), two_thirds("kelsPow2o3_64f_A53"), three_halves("kelsPow3o2_64f_A53");
  Number power, argument;
  for (double x : {0x1.3p-1070, 0.3, 1.7, 1e77, 0x1.fffffffffffffp1023}) {
    mpfr_set_d(argument, x, MPFR_RNDN);
    mpfr_pow_si(power, inv_cbrt(x), -3, MPFR_RNDN);
    EXPECT_GT(agreeing_bits(power, argument), 124);
    mpfr_sqr(argument, argument, MPFR_RNDN);
    mpfr_pow_ui(power, two_thirds(-x), 3, MPFR_RNDN);
    EXPECT_GT(agreeing_bits(power, argument), 124);
    mpfr_mul_d(argument, argument, x, MPFR_RNDN);
    mpfr_sqr(power, three_halves(x), MPFR_RNDN);
    EXPECT_GT(agreeing_bits(power, argument), 125);
  }
}

TEST(Exact, ComplexFunctionsAgreeWithMpc) {
  const struct {
    std::string_view name;
    int (*function)(mpc_t, mpc_srcptr, mpc_rnd_t);
  } rows[] = {{"kelsExp_64fc_A53", mpc_exp},    {"kelsSin_64fc_A53", mpc_sin},     {"kelsCos_64fc_A53", mpc_cos},
              {"kelsTan_64fc_A53", mpc_tan},    {"kelsSinh_64fc_A53", mpc_sinh},   {"kelsCosh_64fc_A53", mpc_cosh},
              {"kelsTanh_64fc_A53", mpc_tanh},  {"kelsAsin_64fc_A53", mpc_asin},   {"kelsAcos_64fc_A53", mpc_acos},
              {"kelsAtan_64fc_A53", mpc_atan},  {"kelsAsinh_64fc_A53", mpc_asinh}, {"kelsAcosh_64fc_A53", mpc_acosh},
              {"kelsAtanh_64fc_A53", mpc_atanh}};
  accuracy::Random random{3};
  mpc_t z, known;
  mpc_init2(z, 53);
  mpc_init2(known, 128);
  for (const auto& row : rows) {
    Exact exact(function(row.name));
    for (int i = 0; i < 200; ++i) {
      double x = random.uniform(-30, 30), y = random.uniform(-30, 30);
      if (i % 2) y *= 0x1p-20;
      if (i % 3 == 0) x = 1 + x * 0x1p-30; // next to the branch points and to the unit circle
      if (i % 4 > 1) std::swap(x, y);
      exact.evaluate({{x, y, 0, 0}});
      mpc_set_d_d(z, x, y, MPC_RNDNN);
      row.function(known, z, MPC_RNDNN);
      EXPECT_GT(agreeing_bits(exact.result(0), mpc_realref(known)), 125) << row.name << " " << x << " " << y;
      EXPECT_GT(agreeing_bits(exact.result(1), mpc_imagref(known)), 125) << row.name << " " << x << " " << y;
    }
  }
  mpc_clear(z);
  mpc_clear(known);
}

Statistics judged(std::string_view name, Arguments arguments, double got, double got2 = 0) {
  Judge judge(function(name), false);
  const double* const results[2] = {&got, &got2};
  judge.block(&arguments, results, 1, reference::BlockEstimates(function(name)));
  return judge.statistics();
}

constexpr double inf = HUGE_VAL, nan_value = __builtin_nan(""), largest = 0x1.fffffffffffffp1023;

TEST(Judge, Ulps) {
  // The function squares, adds or divides; the errors are made by hand.
  EXPECT_EQ(judged("kelsSqr_64f_A53", {{1.5}}, 2.25).ulp.value, 0);
  EXPECT_EQ(judged("kelsSqr_64f_A53", {{1.5}}, 2.25 + 0x1p-51).ulp.value, 1);
  EXPECT_EQ(judged("kelsSqr_64f_A53", {{1}}, 1 - 0x1p-53).ulp.value, 0.5); // the ulp is that of the exact value
  EXPECT_EQ(judged("kelsSqr_64f_A53", {{1}}, 1 - 0x1p-53).misrounded, 1u);
  EXPECT_EQ(judged("kelsSqr_32f_A24", {{1.5}}, 2.25 + 0x1p-22).ulp.value, 1);
  EXPECT_EQ(judged("kelsSqr_32f_A24", {{1.5}}, 2.25 + 0x1p-22).relative.value, 0x1p-22 / 2.25);
  EXPECT_EQ(judged("kelsSqr_64f_A53", {{0x1p-530}}, 0x1p-1060 + 0x1p-1073).ulp_subnormal.value, 2);
  EXPECT_EQ(judged("kelsSqr_64f_A53", {{0x1p-530}}, 0x1p-1060 + 0x1p-1073).ulp.value, 0);
  EXPECT_EQ(judged("kelsSqr_64f_A53", {{0}}, 0x1p-1074).ulp_subnormal.value, 1);
  EXPECT_EQ(judged("kelsSqr_64f_A53", {{1e-300}}, 0).misrounded, 0u);
  const Statistics tie = judged("kelsAdd_64f_A53", {{1, 0, 0x1p-53, 0}}, 1 + 0x1p-52);
  EXPECT_EQ(tie.ulp.value, 0.5);
  EXPECT_EQ(tie.misrounded, 1u);
}

TEST(Judge, OverflowPolesAndNaN) {
  EXPECT_EQ(judged("kelsSqr_64f_A53", {{1e200}}, inf).misrounded, 0u);
  EXPECT_GT(judged("kelsSqr_64f_A53", {{1e200}}, largest).ulp.value, 1e10);
  EXPECT_EQ(judged("kelsAdd_64f_A53", {{largest, 0, 0, 0}}, inf).ulp.value, 1);
  EXPECT_EQ(judged("kelsSqr_64f_A53", {{2}}, -inf).relative.value, 0x1p1022 + 1);
  EXPECT_EQ(judged("kelsDiv_64f_A53", {{1, 0, 0, 0}}, inf).misrounded, 0u);
  EXPECT_EQ(judged("kelsDiv_64f_A53", {{1, 0, 0, 0}}, -inf).ulp.value, inf);
  EXPECT_EQ(judged("kelsDiv_64f_A53", {{1, 0, 0, 0}}, largest).ulp.value, inf);
  EXPECT_EQ(judged("kelsLn_64f_A53", {{-1}}, nan_value).misrounded, 0u);
  EXPECT_EQ(judged("kelsLn_64f_A53", {{-1}}, 0).ulp.value, inf);
  EXPECT_EQ(judged("kelsLn_64f_A53", {{2}}, nan_value).ulp.value, inf);
  EXPECT_EQ(judged("kelsLn_64f_A53", {{nan_value}}, 1).relative.value, inf);
}

TEST(Judge, Status) {
  const auto accepted = [](std::string_view name, Arguments arguments, double got, kelStatus status) {
    Judge judge(function(name), false);
    const double* const results[2] = {&got, nullptr};
    judge.block(&arguments, results, 1, reference::BlockEstimates(function(name)), &status);
    return judge.statistics().status.value == 0;
  };
  const struct {
    std::string_view name;
    Arguments arguments;
    double got;
    kelStatus due;
  } rows[] = {{"kelsLn_64f_A53", {{2}}, 0x1.62e42fefa39efp-1, kelStatusOk},
              {"kelsLn_64f_A53", {{-1}}, nan_value, kelStatusDomain},
              {"kelsLn_64f_A53", {{0}}, -inf, kelStatusSingularity},
              {"kelsExp_64f_A53", {{1000}}, inf, kelStatusOverflow},
              {"kelsExp_64f_A26", {{709.779}}, inf, kelStatusOk},
              {"kelsInv_32f_A24", {{0x1.4p126}}, 0x0.cccccdp-126, kelStatusUnderflow},
              {"kelsSin_64f_A53", {{0x1p-1074}}, 0x1p-1074, kelStatusOk},
              // rounded up to the smallest normal number
              {"kelsAtan2_64f_A53", {{0x1p-1022, 0, 1, 0}}, 0x1p-1022, kelStatusOk},
              {"kelsDiv_64f_A53", {{0x1.fffffffffffffp-1022, 0, 2, 0}}, 0x1p-1022, kelStatusUnderflow}};
  for (const auto& row : rows)
    for (const kelStatus status :
         {kelStatusOk, kelStatusOverflow, kelStatusUnderflow, kelStatusSingularity, kelStatusDomain})
      EXPECT_EQ(accepted(row.name, row.arguments, row.got, status), status == row.due) << row.name << " " << status;
}

TEST(Judge, ComplexByComponentAndByNorm) {
  // 3 + 4i with an error of an ulp of 3 in the real part: an ulp is 2^-51 at 3, 2^-50 at 5
  const Statistics s = judged("kelsConj_64fc_A53", {{3, -4, 0, 0}}, 3 + 0x1p-51, 4);
  EXPECT_EQ(s.ulp.value, 1);
  EXPECT_EQ(s.norm_ulp.value, 0.5);
  EXPECT_DOUBLE_EQ(s.relative.value, 0x1p-51 / 5);
  EXPECT_EQ(s.results, 2u);
  EXPECT_EQ(s.misrounded, 1u);
  EXPECT_EQ(judged("kelsConj_64fc_A53", {{3, -4, 0, 0}}, 3, nan_value).relative.value, inf);
}

// What a function would return that is right but for errors up to 3 ulps in some results.
std::vector<double> results_with_errors(const harness::Function& m, const std::vector<Arguments>& arguments,
                                        int component, accuracy::Random& random) {
  Exact exact(m);
  std::vector<double> results;
  for (const Arguments& a : arguments) {
    exact.evaluate(a);
    const mpfr_srcptr value = exact.result(component);
    double x = m.is_float() ? mpfr_get_flt(value, MPFR_RNDN) : mpfr_get_d(value, MPFR_RNDN);
    for (std::uint64_t steps = random.one_in(4) ? random.below(4) : 0; steps > 0; --steps)
      x = m.is_float() ? std::nextafterf(static_cast<float>(x), HUGE_VALF) : std::nextafter(x, inf);
    results.push_back(x);
  }
  return results;
}

class EstimateOf : public testing::TestWithParam<harness::Function> {};

TEST_P(EstimateOf, ChangesNoFigure) {
  const harness::Function& m = GetParam();
  std::vector<Arguments> arguments(m.complex_destination() ? 300 : 1500), some(50);
  accuracy::Random random{99};
  const accuracy::Inputs inputs(m, {}, {});
  for (std::size_t i = 0; i < arguments.size(); i += some.size()) {
    inputs.fill(random, i < arguments.size() / 2 ? random.below(inputs.steps()) : inputs.steps(), some);
    std::copy(some.begin(), some.end(), arguments.begin() + static_cast<std::ptrdiff_t>(i));
  }
  const bool two = m.destinations() == 2 || m.complex_destination();
  std::vector<double> got[2] = {results_with_errors(m, arguments, 0, random), {}};
  if (two) got[1] = results_with_errors(m, arguments, 1, random);
  const double* const results[2] = {got[0].data(), got[1].data()};
  Judge slow(m, false), fast(m, true);
  reference::BlockEstimates estimates(m);
  estimates.evaluate(arguments.data(), static_cast<int>(arguments.size()));
  slow.block(arguments.data(), results, static_cast<int>(arguments.size()), estimates);
  fast.block(arguments.data(), results, static_cast<int>(arguments.size()), estimates);
  const Statistics &a = slow.statistics(), &b = fast.statistics();
  EXPECT_EQ(a.histogram, b.histogram);
  EXPECT_EQ(a.misrounded, b.misrounded);
  EXPECT_EQ(a.ulp.value, b.ulp.value);
  EXPECT_EQ(a.ulp_subnormal.value, b.ulp_subnormal.value);
  EXPECT_EQ(a.relative.value, b.relative.value);
  EXPECT_EQ(a.absolute.value, b.absolute.value);
  EXPECT_EQ(a.norm_ulp.value, b.norm_ulp.value);
  EXPECT_LE(b.estimate.value, 1);
  EXPECT_GT(a.misrounded, 0u); // the errors made above were seen
}

std::vector<harness::Function> full_precision() {
  std::vector<harness::Function> functions;
  for (const harness::Function& m : harness::all_functions())
    if (m.suffix_bits() == (m.is_float() ? 24 : 53)) functions.push_back(m);
  return functions;
}

INSTANTIATE_TEST_SUITE_P(Functions, EstimateOf, testing::ValuesIn(full_precision()),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(Limits, ExceededIsSaid) {
  Statistics s;
  s.ulp.value = 0.53;
  s.relative.value = 0x1p-25;
  s.ulp_subnormal.value = 1;
  EXPECT_TRUE((accuracy::Limit{"m", 0.54, 0, 0, 1.0, 0}).exceeded(s).empty());
  EXPECT_FALSE((accuracy::Limit{"m", 0.52, 0, 0, 1.0, 0}).exceeded(s).empty());
  EXPECT_FALSE((accuracy::Limit{"m", 0.54, 0, 0, 0, 0}).exceeded(s).empty()); // subnormal results as the others
  EXPECT_TRUE((accuracy::Limit{"m", 0, 25, 0, 0, 0}).exceeded(s).empty());
  EXPECT_FALSE((accuracy::Limit{"m", 0, 25.1, 0, 0, 0}).exceeded(s).empty());
  s.ulp.value = s.ulp_subnormal.value = 0.5;
  EXPECT_TRUE((accuracy::Limit{"m", 0.5, 0, 0, 0, 0}).exceeded(s).empty());
  s.misrounded = 1;
  EXPECT_FALSE((accuracy::Limit{"m", 0.5, 0, 0, 0, 0}).exceeded(s).empty());
  s.relative.value = inf;
  EXPECT_FALSE((accuracy::Limit{"m", 0, 11, 0, 0, 0}).exceeded(s).empty());
}

} // namespace
