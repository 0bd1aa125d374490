// What the library does on real data: several functions beside a plain loop over the C library, both timed on this
// machine and compared with the exact results.
#include "exact.hpp"

#include <kelvm/kelvm.h>

#include <algorithm>
#include <chrono>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <langinfo.h>
#include <numbers>
#include <string>
#include <vector>

namespace {

using Function = kelStatus (*)(const double*, double*, int);

struct Row {
  const char* what;
  const char* name;
  Function ours;
  void (*loop)(const double*, double*, std::size_t); // the same over the C library
  double (*argument)(double year, double spots);
};

template <double (*F)(double)> void loop(const double* x, double* y, std::size_t n) {
  for (std::size_t i = 0; i < n; ++i) y[i] = F(x[i]);
}
double two_thirds(double x) { return std::pow(x, 2.0 / 3); }
double normal(double x) { return 0.5 * std::erfc(-x * std::numbers::sqrt2 / 2); }

#define KELVM_ROW(what, family, c, argument)                                                                           \
  {                                                                                                                    \
    what, "kels" #family "_64f_A53", kels##family##_64f_A53, loop<c>, [](double year, double spots) -> double {        \
      (void)year, (void)spots;                                                                                         \
      return argument;                                                                                                 \
    }                                                                                                                  \
  }
const Row rows[] = {
    KELVM_ROW("square root of the count", Sqrt, std::sqrt, spots),
    KELVM_ROW("cube root", Cbrt, std::cbrt, spots),
    KELVM_ROW("count^(2/3)", Pow2o3, two_thirds, spots),
    KELVM_ROW("ln(1 + count)", Log1p, std::log1p, spots),
    KELVM_ROW("e^(-count / 50)", Exp, std::exp, -spots / 50),
    KELVM_ROW("sine of the 11-year phase", Sin, std::sin, 2 * std::numbers::pi * year / 11),
    KELVM_ROW("tanh of the scaled count", Tanh, std::tanh, spots / 100),
    KELVM_ROW("normal probability", CdfNorm, normal, (spots - 79) / 62),
};

/// Nanoseconds an element: the fastest of several runs.
template <class Call> double time_of(std::size_t n, Call call) {
  using Clock = std::chrono::steady_clock;
  double best = 1e9;
  for (int run = 0; run < 15; ++run) {
    const Clock::time_point start = Clock::now();
    int calls = 0;
    for (; Clock::now() - start < std::chrono::milliseconds(4); ++calls) call();
    best = std::min(best, std::chrono::duration<double, std::nano>(Clock::now() - start).count() / calls / double(n));
  }
  return best;
}

/// The largest error in ulps of the exact results.
double largest_error(const char* name, const std::vector<double>& x, const std::vector<double>& y, std::size_t n) {
  reference::Exact exact(*harness::find_function(name));
  mpfr_t error;
  mpfr_init2(error, reference::Exact::precision);
  double worst = 0;
  for (std::size_t i = 0; i < n; ++i) {
    exact.evaluate({{x[i]}});
    if (!mpfr_regular_p(exact.result(0))) continue;
    mpfr_sub_d(error, exact.result(0), y[i], MPFR_RNDN);
    const int exponent = std::max<int>(int(mpfr_get_exp(exact.result(0))), -1021) - 53;
    worst = std::max(worst, std::abs(std::ldexp(mpfr_get_d(error, MPFR_RNDN), -exponent)));
  }
  mpfr_clear(error);
  return worst;
}

const char* processors(const std::string& code) { return code == "v4" ? "AVX-512" : code == "v3" ? "AVX2" : "SSE4.1"; }

} // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fputs("usage: kelvm-demo FILE, of yearly numbers from 1700 on\n", stderr);
    return 2;
  }
  std::vector<double> spots;
  std::ifstream file(argv[1]);
  for (std::string line; std::getline(file, line);)
    if (!line.empty() && line[0] != '#') spots.push_back(std::stod(line));
  if (spots.empty()) {
    std::fprintf(stderr, "%s: holds no numbers\n", argv[1]);
    return 2;
  }
  const std::size_t years = spots.size(), n = (8192 / years + 1) * years; // as often as it takes to be timed

  std::setlocale(LC_CTYPE, "");
  const char* block = std::string(nl_langinfo(CODESET)) == "UTF-8" ? "\u2588" : "#";
  const std::string code(kelvmGetLibVersion()->cpuCode, 2);
  std::printf(
      "The loader took the build for %s (%s). %zu years of sunspot numbers, nanoseconds an element, one core:\n\n",
      processors(code), code.c_str(), years);
  std::printf("%-26s %-20s %7s %7s   %-28s %s\n", "", "", "C", "", "", "largest error, ulp");
  std::printf("%-26s %-20s %7s %7s   %-28s %9s %8s\n", "", "function", "library", "kelvm", "times as fast", "C library",
              "kelvm");
  std::vector<double> x(n), ours(n), theirs(n);
  for (const Row& row : rows) {
    for (std::size_t i = 0; i < n; ++i) x[i] = row.argument(1700 + double(i % years), spots[i % years]);
    const double c = time_of(n, [&] { row.loop(x.data(), theirs.data(), n); });
    const double k = time_of(n, [&] { row.ours(x.data(), ours.data(), int(n)); });
    std::string bar;
    for (int i = 0; i < std::clamp(int(std::lround(c / k)), 1, 22); ++i) bar += block;
    bar.append(std::size_t(std::max(0, 23 - std::clamp(int(std::lround(c / k)), 1, 22))), ' ');
    std::printf("%-26s %-20s %7.2f %7.2f   %4.1f %s %9.3f %8.3f\n", row.what, row.name, c, k, c / k, bar.c_str(),
                largest_error(row.name, x, theirs, years), largest_error(row.name, x, ours, years));
  }

  const kelStatus status = kelsLn_64f_A53(spots.data(), ours.data(), int(years));
  std::size_t none = 0;
  while (none < years && spots[none] != 0) ++none;
  std::printf("\nkelsLn_64f_A53 of the counts returns %d%s", status,
              status == kelStatusSingularity && none < years ? ", kelStatusSingularity: " : ".\n");
  if (status == kelStatusSingularity && none < years)
    std::printf("a year without spots, such as %zu, is a pole.\nIts result is %g; all %zu years have theirs.\n",
                1700 + none, ours[none], years);
  return 0;
}
