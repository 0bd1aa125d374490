// The price of a European call option as the mean of simulated ones: uniform numbers through cdf_norm_inv become normal
// ones, exp makes prices of them. The exact price is known; beside it the same with the distribution of the C++
// library. usage: monte_carlo [PATHS]
#include "timing.hpp"

#include <cstdio>
#include <cstdlib>
#include <kelvm/kelvm.hpp>
#include <random>
#include <vector>

namespace {

constexpr double spot = 100, strike = 105, rate = 0.03, volatility = 0.25, years = 1;
constexpr double drift = (rate - 0.5 * volatility * volatility) * years;
const double spread = volatility * std::sqrt(years);

struct Estimate {
  double sum = 0, sum_of_squares = 0;

  /// Adds a path that ends at this price.
  void add(double end) {
    const double payoff = std::max(end - strike, 0.0);
    sum += payoff;
    sum_of_squares += payoff * payoff;
  }
  double price(double paths) const { return std::exp(-rate * years) * sum / paths; }
  double standard_error(double paths) const {
    const double mean = sum / paths;
    return std::exp(-rate * years) * std::sqrt((sum_of_squares / paths - mean * mean) / paths);
  }
};

Estimate plain_loop(std::size_t paths) {
  std::mt19937_64 random(1);
  std::normal_distribution<double> normal;
  Estimate estimate;
  for (std::size_t i = 0; i < paths; ++i) estimate.add(spot * std::exp(drift + spread * normal(random)));
  return estimate;
}

/// `worst` becomes the largest difference of a uniform number and the distribution function of its quantile.
Estimate with_kelvm(std::size_t paths, double& worst) {
  constexpr std::size_t block = 4096;
  std::mt19937_64 random(2);
  std::vector<double> all_uniform(block), all_normal(block);
  Estimate estimate;
  for (std::size_t first = 0; first < paths; first += block) {
    const std::size_t count = std::min(block, paths - first);
    const auto uniform = std::span(all_uniform).first(count), normal = std::span(all_normal).first(count);
    for (double& u : uniform)
      u = (static_cast<double>(random() >> 12) + 0.5) * 0x1p-52; // between 0 and 1, never either
    kelvm::cdf_norm_inv(uniform, normal);
    if (first == 0) {
      std::vector<double> back(count);
      kelvm::cdf_norm(normal, back);
      worst = largest_difference(uniform, back);
    }
    for (double& z : normal) z = drift + spread * z;
    kelvm::exp(normal, normal);
    for (const double growth : normal) estimate.add(spot * growth);
  }
  return estimate;
}

double exact_price() {
  const double d1 = (std::log(spot / strike) + drift) / spread + spread;
  std::vector<double> d{d1, d1 - spread}, n(2);
  kelvm::cdf_norm(d, n);
  return spot * n[0] - strike * std::exp(-rate * years) * n[1];
}

/// Prints an estimate and returns whether it lies within four standard errors of the exact price.
bool report(const char* name, const Estimate& estimate, double paths, double time) {
  const double error = estimate.price(paths) - exact_price(), standard_error = estimate.standard_error(paths);
  std::printf("%-24s %8.1f ms   price %.4f, off by %+.4f: %+.1f standard errors\n", name, time, estimate.price(paths),
              error, error / standard_error);
  return std::abs(error) <= 4 * standard_error;
}

} // namespace

int main(int count, char** arguments) {
  const long long wanted = count > 1 ? std::atoll(arguments[1]) : 20'000'000;
  if (wanted < 2) {
    std::fputs("usage: monte_carlo [PATHS]\n", stderr);
    return 2;
  }
  const auto paths = static_cast<std::size_t>(wanted);
  Estimate plain, mine;
  double worst = 0;
  const double plain_time = milliseconds([&] { plain = plain_loop(paths); });
  const double time = milliseconds([&] { mine = with_kelvm(paths, worst); });

  std::printf("%zu paths, exact price %.4f; library built for %.4s\n", paths, exact_price(),
              kelvmGetLibVersion()->cpuCode);
  const bool plain_is_near = report("std::normal_distribution", plain, static_cast<double>(paths), plain_time);
  const bool mine_is_near = report("kelvm::cdf_norm_inv", mine, static_cast<double>(paths), time);
  std::printf("%.2f times as fast; cdf_norm takes quantiles back to within %.2g\n", plain_time / time, worst);
  return plain_is_near && mine_is_near && worst < 1e-15 ? 0 : 1;
}
