#include "comparison.hpp"

#ifdef KELVM_BENCH_JUDGE
#  include "judge.hpp"
#endif

namespace bench {

double measured_ulp([[maybe_unused]] const harness::Function& function, [[maybe_unused]] Data& data,
                    [[maybe_unused]] const Contender& contender) {
#ifdef KELVM_BENCH_JUDGE
  const std::ptrdiff_t n = std::min<std::ptrdiff_t>(data.elements(), 16384);
  data.clear_results();
  contender.batch(data.call(n), n, 1);
  std::vector<reference::Arguments> arguments(n);
  std::vector<double> results[2] = {std::vector<double>(n), std::vector<double>(n)};
  const int components = function.complex_destination() || function.destinations() == 2 ? 2 : 1;
  for (std::ptrdiff_t i = 0; i < n; ++i) {
    for (int k = 0; k < 4; ++k) arguments[i].parts[k] = data.argument(k / 2, k % 2, i);
    for (int c = 0; c < components; ++c) results[c][i] = data.result(c, i);
  }
  reference::Judge judge(function, true);
  const double* const got[2] = {results[0].data(), results[1].data()};
  reference::BlockEstimates estimates(function);
  estimates.evaluate(arguments.data(), int(n));
  judge.block(arguments.data(), got, int(n), estimates);
  const auto& statistics = judge.statistics();
  return function.complex_destination() ? statistics.norm_ulp.value : statistics.ulp.value;
#else
  return 0;
#endif
}

bool accurate_enough(const harness::Function& function, const Contender& peer, double ulp) {
  if (peer.naive) return false;
  const bool complex = function.complex_destination();
  switch (function.suffix_bits()) {
  case 11:
    return ulp <= 0x1p12; // 2^-11 is 2^12 to 2^13 ulps
  case 21:
  case 50:
    return ulp <= (complex ? 8 : 4);
  case 26:
    return ulp <= 0x1p26;
  case 24:
    if (!complex) {
      const std::string& name = peer.name;
      if (!name.starts_with("sleef") && name != "libm" && name != "loop" && name != "hand" && name != "boost")
        return ulp <= 0.5;
    }
    [[fallthrough]];
  default:
    return ulp <= (complex ? 3 : 1.5);
  }
}

double bar_against(const Entry& peer) {
  if (peer.name == "hand") return 1 / 1.1;
  if (peer.name == "loop" || peer.name == "ofast") return 0.95;
  return 1;
}

Verdict judge(const std::vector<Entry>& entries, const Entry& ours, std::size_t length_index) {
  Verdict verdict{&ours};
  for (const Entry& peer : entries) {
    if (peer.ours || !peer.counts || rank_of(peer.set) > rank_of(ours.set)) continue;
    const double ratio = peer.timings[length_index].minimum / ours.timings[length_index].minimum;
    verdict.met &= ratio >= bar_against(peer);
    if (!verdict.best || ratio < verdict.ratio) {
      verdict.best = &peer;
      verdict.ratio = ratio;
    }
  }
  return verdict;
}

} // namespace bench
