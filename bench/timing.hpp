// Interleaved measurement. Every contender runs a short batch in turn, over and over, and its fastest batch counts: on
// a machine that others use too, a disturbance hits single batches, and a change of clock frequency hits all contenders
// alike. (Google Benchmark runs one contender after the other and averages, which such a machine does not allow.)
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <vector>
#include <x86intrin.h>

namespace bench {

inline std::uint64_t ticks() {
  unsigned unused;
  _mm_lfence();
  const std::uint64_t now = __rdtscp(&unused);
  _mm_lfence();
  return now;
}

/// Clears the upper halves of the vector registers. A contender may leave something there, and then SSE code of the
/// next one runs several times slower.
[[gnu::target("avx")]] inline void clear_upper_halves() { _mm256_zeroupper(); }

/// Ticks of the time stamp counter a nanosecond.
inline double ticks_per_ns() {
  using Clock = std::chrono::steady_clock;
  const auto start = Clock::now();
  const std::uint64_t first = ticks();
  while (Clock::now() - start < std::chrono::milliseconds(50)) {
  }
  const std::uint64_t last = ticks();
  return double(last - first) / std::chrono::duration<double, std::nano>(Clock::now() - start).count();
}

/// Ticks a call: the fastest batch and the median one.
struct Timing {
  double minimum = 0, median = 0;
};

/// batch(contender, calls) gives the ticks of that many calls of contender number 0 .. contenders - 1.
template <class Run> std::vector<Timing> interleaved(int contenders, int rounds, Run batch) {
  const bool has_avx = __builtin_cpu_supports("avx");
  const auto run = [&](int contender, long calls) {
    if (has_avx) clear_upper_halves();
    return batch(contender, calls);
  };
  constexpr double batch_ticks = 30000;
  std::vector<long> calls(contenders);
  for (int c = 0; c < contenders; ++c) {
    run(c, 1);
    const double one = double(std::min(run(c, 1), run(c, 1)));
    calls[c] = std::clamp(long(batch_ticks / one), 1l, 100000l);
  }
  std::vector<std::vector<double>> samples(contenders);
  for (int round = 0; round < rounds; ++round)
    for (int k = 0; k < contenders; ++k) {
      const int c = (k + round) % contenders;
      run(c, 1); // brings the code and its data back into the caches
      samples[c].push_back(double(run(c, calls[c])) / double(calls[c]));
    }
  std::vector<Timing> timings(contenders);
  for (int c = 0; c < contenders; ++c) {
    std::sort(samples[c].begin(), samples[c].end());
    timings[c] = {samples[c].front(), samples[c][samples[c].size() / 2]};
  }
  return timings;
}

} // namespace bench
