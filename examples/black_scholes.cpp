// Prices and sensitivities of a book of European call options (Black and Scholes, The Pricing of Options and Corporate
// Liabilities, 1973) on one core, beside a plain loop over the C library that the same compiler made with the same
// flags. usage: black_scholes [OPTIONS]
#include "timing.hpp"

#include <cstdio>
#include <cstdlib>
#include <kelvm/kelvm.hpp>
#include <numbers>
#include <random>
#include <vector>

namespace {

constexpr double rate = 0.03;
const double inverse_root_2pi = 1 / std::sqrt(2 * std::numbers::pi);

struct Book {
  std::vector<double> spot, strike, years, volatility;

  explicit Book(std::size_t size) {
    std::mt19937_64 random(1);
    const auto fill = [&](std::vector<double>& column, double from, double to) {
      std::uniform_real_distribution<double> uniform(from, to);
      column.resize(size);
      for (double& value : column) value = uniform(random);
    };
    fill(spot, 50, 150);
    fill(strike, 50, 150);
    fill(years, 0.1, 3);
    fill(volatility, 0.1, 0.6);
  }
};

struct Values {
  std::vector<double> price, delta, gamma, vega, theta;
  explicit Values(std::size_t size) : price(size), delta(size), gamma(size), vega(size), theta(size) {}
};

/// Option i from what has been computed for it: N(d1), N(d2), the density at d1, the discount factor.
void set(Values& values, const Book& book, std::size_t i, double root_years, double n1, double n2, double density,
         double discount) {
  const double spread = book.volatility[i] * root_years, paid = book.strike[i] * discount * n2;
  values.price[i] = book.spot[i] * n1 - paid;
  values.delta[i] = n1;
  values.gamma[i] = density / (book.spot[i] * spread);
  values.vega[i] = book.spot[i] * density * root_years;
  values.theta[i] = -book.spot[i] * density * book.volatility[i] / (2 * root_years) - rate * paid;
}

double d1_of(const Book& book, std::size_t i, double log_moneyness, double root_years) {
  const double drift = rate + 0.5 * book.volatility[i] * book.volatility[i];
  return (log_moneyness + drift * book.years[i]) / (book.volatility[i] * root_years);
}

void plain_loop(const Book& book, Values& values) {
  const auto cdf_norm = [](double x) { return 0.5 * std::erfc(-x / std::numbers::sqrt2); };
  for (std::size_t i = 0; i < book.spot.size(); ++i) {
    const double root_years = std::sqrt(book.years[i]);
    const double d1 = d1_of(book, i, std::log(book.spot[i] / book.strike[i]), root_years);
    set(values, book, i, root_years, cdf_norm(d1), cdf_norm(d1 - book.volatility[i] * root_years),
        inverse_root_2pi * std::exp(-0.5 * d1 * d1), std::exp(-rate * book.years[i]));
  }
}

/// A block of the book at a time, small enough for what stands between two calls to stay in the cache.
template <kelvm::accuracy Level> void with_kelvm(const Book& book, Values& values) {
  constexpr std::size_t block = 1024;
  std::vector<double> all_moneyness(block), all_roots(block), all_d1(block), all_d2(block), all_densities(block),
      all_discounts(block);
  for (std::size_t first = 0; first < book.spot.size(); first += block) {
    const std::size_t count = std::min(block, book.spot.size() - first);
    const auto part = [&](std::vector<double>& scratch) { return std::span(scratch).first(count); };
    const auto moneyness = part(all_moneyness), roots = part(all_roots), d1 = part(all_d1), d2 = part(all_d2),
               densities = part(all_densities), discounts = part(all_discounts);

    for (std::size_t i = 0; i < count; ++i) moneyness[i] = book.spot[first + i] / book.strike[first + i];
    kelvm::log<Level>(moneyness, moneyness);
    kelvm::sqrt<Level>(std::span(book.years).subspan(first, count), roots);
    for (std::size_t i = 0; i < count; ++i) {
      d1[i] = d1_of(book, first + i, moneyness[i], roots[i]);
      d2[i] = d1[i] - book.volatility[first + i] * roots[i];
      densities[i] = -0.5 * d1[i] * d1[i];
      discounts[i] = -rate * book.years[first + i];
    }
    kelvm::exp<Level>(densities, densities);
    kelvm::exp<Level>(discounts, discounts);
    kelvm::cdf_norm<Level>(d1, d1);
    kelvm::cdf_norm<Level>(d2, d2);
    for (std::size_t i = 0; i < count; ++i)
      set(values, book, first + i, roots[i], d1[i], d2[i], inverse_root_2pi * densities[i], discounts[i]);
  }
}

void report(const char* name, double time, double plain_time, std::size_t size) {
  std::printf("%-28s %8.1f ms %8.1f ns an option %6.2f times as fast\n", name, time,
              time * 1e6 / static_cast<double>(size), plain_time / time);
}

} // namespace

int main(int count, char** arguments) {
  const long long wanted = count > 1 ? std::atoll(arguments[1]) : 10'000'000;
  if (wanted < 1) {
    std::fputs("usage: black_scholes [OPTIONS]\n", stderr);
    return 2;
  }
  const auto size = static_cast<std::size_t>(wanted);
  const Book book(size);
  Values plain(size), full(size), other(size);

  std::printf("%zu options, price and four sensitivities; library built for %.4s\n", size,
              kelvmGetLibVersion()->cpuCode);
  const double plain_time = milliseconds([&] { plain_loop(book, plain); });
  report("plain loop, C library", plain_time, plain_time, size);
  report("kelvm, full accuracy", milliseconds([&] { with_kelvm<kelvm::accuracy::full>(book, full); }), plain_time,
         size);
  report("kelvm, high accuracy", milliseconds([&] { with_kelvm<kelvm::accuracy::high>(book, other); }), plain_time,
         size);
  report("kelvm, low accuracy", milliseconds([&] { with_kelvm<kelvm::accuracy::low>(book, other); }), plain_time, size);

  const double price = largest_difference(plain.price, full.price),
               low_price = largest_difference(plain.price, other.price);
  std::printf("largest difference to the plain loop, full accuracy: price %.2g, delta %.2g, gamma %.2g, vega %.2g, "
              "theta %.2g\nlargest difference of a price at low accuracy: %.2g\n",
              price, largest_difference(plain.delta, full.delta), largest_difference(plain.gamma, full.gamma),
              largest_difference(plain.vega, full.vega), largest_difference(plain.theta, full.theta), low_price);
  return price < 1e-11 && low_price < 1e-4 ? 0 : 1;
}
