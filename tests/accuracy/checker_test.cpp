// The checkers checked: the error measure against errors made on purpose, and the short cut through estimates against
// MPFR alone. The exact functions are checked by the library, which comes to the same results in other ways.
#include "inputs.hpp"
#include "judge.hpp"
#include "limits.hpp"

#include <cmath>
#include <gtest/gtest.h>

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
    if (m.suffix_bits() == m.format().digits && !m.complex_source()) functions.push_back(m);
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
