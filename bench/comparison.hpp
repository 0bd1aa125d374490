// Which peer counts for which accuracy, and whether a function meets the bar.
#pragma once

#include "contender.hpp"
#include "timing.hpp"

#include <string>
#include <vector>

namespace bench {

/// One contender's figures for one function.
struct Entry {
  std::string name, set;
  bool ours = false, naive = false;
  double ulp = 0;              // the larger of claimed and measured error; complex numbers by norm
  bool counts = false;         // accurate enough to be a bar
  std::vector<Timing> timings; // ticks a call, one for each length
};

/// The largest error in ulps over the data's first elements, as this contender computes them; 0 where the exact
/// functions were not built.
double measured_ulp(const harness::Function& function, Data& data, const Contender& contender);

/// Whether a peer with that error is no worse than the function promises. A correctly rounded real float function is
/// set against SLEEF's most accurate functions, the C library and plain arithmetic, or whoever rounds correctly too.
bool accurate_enough(const harness::Function& function, const Contender& peer, double ulp);

/// The ratio, peer to ours, that a function must reach: faster than a function, as fast as the hardware or a plain loop
/// within 5 %, as a tuned loop of single instructions within 10 %.
double bar_against(const Entry& peer);

/// Our build against its peers at one length.
struct Verdict {
  const Entry* ours = nullptr;
  const Entry* best =
      nullptr;      // the fastest that counts, of this instruction set or a lesser one; null if there is none
  double ratio = 0; // best to ours
  bool met = true;  // against every peer that counts
};
Verdict judge(const std::vector<Entry>& entries, const Entry& ours, std::size_t length_index);

} // namespace bench
