// The spectrum of three centuries of sunspot numbers, at as many frequencies as one likes: phasors by cis, magnitudes
// by abs. Beside it the same with the complex functions of the C++ library. usage: spectrum FILE [FREQUENCIES]
#include "timing.hpp"

#include <complex>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <kelvm/kelvm.hpp>
#include <numbers>
#include <numeric>
#include <string>
#include <vector>

namespace {

using Complex = std::complex<double>;

/// The numbers of a file, one a line, less their mean.
std::vector<double> read_deviations(const char* path) {
  std::ifstream file(path);
  std::vector<double> values;
  for (std::string line; std::getline(file, line);)
    if (!line.empty() && line[0] != '#') values.push_back(std::strtod(line.c_str(), nullptr));
  const double mean = std::reduce(values.begin(), values.end()) / static_cast<double>(values.size());
  for (double& value : values) value -= mean;
  return values;
}

/// Cycles a year of frequency k of `count`: periods from 100 down to 2 years.
double frequency(std::size_t k, std::size_t count) {
  return 0.01 + 0.49 * static_cast<double>(k) / static_cast<double>(count);
}

/// The sum of values[t] * phasors[t], times 2 / their number: the amplitude of an oscillation.
Complex correlate(const std::vector<double>& values, const std::vector<Complex>& phasors) {
  Complex sum = 0;
  for (std::size_t t = 0; t < values.size(); ++t) sum += values[t] * phasors[t];
  return sum * (2 / static_cast<double>(values.size()));
}

/// The amplitude at each frequency. make_phasors(angles, phasors) and magnitudes(sums, amplitudes) do the work.
template <class Phasors, class Magnitudes>
std::vector<double> spectrum(const std::vector<double>& values, std::size_t count, Phasors make_phasors,
                             Magnitudes magnitudes) {
  std::vector<double> angles(values.size()), amplitudes(count);
  std::vector<Complex> phasors(values.size()), sums(count);
  for (std::size_t k = 0; k < count; ++k) {
    const double step = -2 * std::numbers::pi * frequency(k, count);
    for (std::size_t t = 0; t < values.size(); ++t) angles[t] = step * static_cast<double>(t);
    make_phasors(angles, phasors);
    sums[k] = correlate(values, phasors);
  }
  magnitudes(sums, amplitudes);
  return amplitudes;
}

} // namespace

int main(int argument_count, char** arguments) {
  const long long wanted = argument_count > 2 ? std::atoll(arguments[2]) : 20'000;
  const std::vector<double> values = argument_count > 1 ? read_deviations(arguments[1]) : std::vector<double>();
  if (wanted < 1 || values.empty()) {
    std::fputs("usage: spectrum FILE [FREQUENCIES]; the file has a number on each line\n", stderr);
    return 2;
  }
  const auto count = static_cast<std::size_t>(wanted);

  std::vector<double> amplitudes, plain;
  const double plain_time = milliseconds([&] {
    plain = spectrum(
        values, count,
        [](const auto& angles, auto& phasors) {
          for (std::size_t t = 0; t < angles.size(); ++t) phasors[t] = std::polar(1.0, angles[t]);
        },
        [](const auto& sums, auto& magnitudes) {
          for (std::size_t k = 0; k < sums.size(); ++k) magnitudes[k] = std::abs(sums[k]);
        });
  });
  const double time = milliseconds([&] {
    amplitudes = spectrum(
        values, count, [](const auto& angles, auto& phasors) { kelvm::cis(angles, phasors); },
        [](const auto& sums, auto& magnitudes) { kelvm::abs(sums, magnitudes); });
  });

  const auto strongest = std::max_element(amplitudes.begin(), amplitudes.end());
  const double period = 1 / frequency(static_cast<std::size_t>(strongest - amplitudes.begin()), count);
  const double difference = largest_difference(plain, amplitudes);
  std::printf("%zu years, %zu frequencies; library built for %.4s\n", values.size(), count,
              kelvmGetLibVersion()->cpuCode);
  std::printf("C++ library  %8.1f ms\nkelvm        %8.1f ms, %.2f times as fast\n", plain_time, time,
              plain_time / time);
  std::printf("largest difference of two amplitudes: %.2g\n", difference);
  std::printf("strongest oscillation: period %.2f years, amplitude %.1f\n", period, *strongest);
  return difference < 1e-11 * *strongest ? 0 : 1;
}
