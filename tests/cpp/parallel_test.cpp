// Calls with an execution policy are calls without one: results, status, rounding mode and exception flags.
#include "kelvm/parallel.hpp"

#include <gtest/gtest.h>

namespace {

const std::size_t size = 300'007;

std::vector<double> arguments() {
  std::vector<double> x(size);
  for (std::size_t i = 0; i < size; ++i) x[i] = 0.25 + static_cast<double>(i) * 1e-3;
  return x;
}

/// The exception flags that a call raises, but for inexact.
template <class Call> int flags(Call call) {
  std::feclearexcept(FE_ALL_EXCEPT);
  call();
  return std::fetestexcept(FE_DIVBYZERO | FE_INVALID | FE_OVERFLOW | FE_UNDERFLOW);
}

TEST(Parallel, SameBitsAndStatusAsOneCall) {
  const std::vector<double> x = arguments();
  std::vector<double> one(size), many(size), one_more(size), many_more(size), in_place = x;
  std::vector<std::complex<double>> phasors(size), phasors_one(size);

  EXPECT_EQ(kelvm::sincos(x, one, one_more), kelvm::sincos(std::execution::par, x, many, many_more));
  EXPECT_EQ(one, many);
  EXPECT_EQ(one_more, many_more);
  kelvm::pow(x, 1.5, one);
  kelvm::pow(std::execution::par_unseq, in_place, 1.5, in_place);
  EXPECT_EQ(one, in_place);
  kelvm::cis(x, phasors_one);
  kelvm::cis(std::execution::par, x, phasors);
  EXPECT_EQ(phasors_one, phasors);
}

TEST(Parallel, LastWarningWins) {
  std::vector<double> x = arguments(), y(size);
  for (const std::size_t pole : {std::size_t{3}, size / 2, size - 1}) {
    x = arguments();
    x[pole] = 0;
    x[size / 3] = -1;
    const kelvm::status expected = kelvm::log(x, y);
    for (int repeat = 0; repeat < 20; ++repeat) ASSERT_EQ(kelvm::log(std::execution::par, x, y), expected) << pole;
    EXPECT_EQ(flags([&] { kelvm::log(std::execution::par, x, y); }), FE_DIVBYZERO | FE_INVALID);
  }
  const std::span<const double> none(static_cast<const double*>(nullptr), size);
  EXPECT_EQ(kelvm::log(std::execution::par, none, y), kelvm::status::null_pointer);
}

// Functions that compute in the caller's rounding mode do so on every core, and nobody's mode or flags are changed.
TEST(Parallel, ModesAndFlagsAreTheCallers) {
  const std::vector<double> x = arguments();
  std::vector<double> up(size), many(size);
  std::fesetround(FE_UPWARD);
  kelvm::rint(x, up);
  bool same = true;
  for (int repeat = 0; repeat < 100; ++repeat) { // until every thread has had its share
    kelvm::rint(std::execution::par, x, many);
    same = same && many == up;
  }
  EXPECT_EQ(std::fegetround(), FE_UPWARD);
  std::fesetround(FE_TONEAREST);
  EXPECT_TRUE(same);
  EXPECT_EQ(up[1], 1);

  EXPECT_EQ(flags([&] { kelvm::exp(std::execution::par, x, many); }), 0);
  std::feraiseexcept(FE_OVERFLOW);
  kelvm::sqrt(std::execution::par, x, many);
  EXPECT_TRUE(std::fetestexcept(FE_OVERFLOW)) << "a flag that stood before the call";
}

} // namespace
