// Compares a function's results with the exact ones and keeps the statistics. Own one judge a thread and merge their
// statistics.
//
// Errors. An ulp is the spacing of the result type at the exact value; that of a subnormal result is the smallest
// subnormal number. An infinite result stands for the power of two above the largest finite number, so overflow a
// little too early or too late counts by the same measure. A NaN where the exact function has a value, or the other
// way round, is an infinite error. Complex results are measured by component and by norm.
//
// Where the family has an estimate (estimate.hpp), MPFR is asked only about results whose place in the statistics the
// estimate leaves open: a new maximum, or an error next to a boundary of the histogram. Every figure is MPFR's. The
// estimate's own error is measured wherever MPFR is asked, and on a random sample besides.
#pragma once

#include "estimate.hpp"
#include "exact.hpp"
#include "status.hpp"

#include <array>
#include <cstdint>

namespace reference {

/// Boundaries of the histogram in ulps; the last bin is open. Results up to 0.5 ulp are correctly rounded.
inline constexpr std::array bin_bounds = {0.5,    0.505,  0.51,   0.52,   0.55,   0.6,    0.75,
                                          1.0,    2.0,    4.0,    16.0,   64.0,   256.0,  1024.0,
                                          8192.0, 0x1p16, 0x1p20, 0x1p24, 0x1p27, 0x1p30, 0x1p42};
inline constexpr std::size_t bin_of_one_ulp = 7;
static_assert(bin_bounds[bin_of_one_ulp] == 1);

/// The largest value seen of one measure, and where.
struct Worst {
  double value = 0;
  Arguments at{};
  std::array<double, 2> got{}, exact{};

  void merge(const Worst& other) {
    if (other.value > value) *this = other;
  }
};

struct Statistics {
  std::uint64_t elements = 0;   // elements compared
  std::uint64_t skipped = 0;    // complex elements at a pole or beyond the range, where components have no measure
  std::uint64_t judged = 0;     // elements that MPFR was asked about
  std::uint64_t results = 0;    // components of results
  std::uint64_t misrounded = 0; // components that are not the correctly rounded ones
  std::array<std::uint64_t, bin_bounds.size() + 1> histogram{};

  Worst ulp;           // components with a normal exact value
  Worst ulp_subnormal; // components with a subnormal exact value
  Worst relative;      // by norm; subnormal results within one ulp are left out
  Worst absolute;      // components
  Worst norm_ulp;      // complex: error by norm, in ulps of the norm
  Worst estimate;      // error of the estimate as a share of its bound
  Worst status;        // 1 where an element has another status than it earns: the one got, and the exact one

  void merge(const Statistics& other);
};

class Judge {
public:
  Judge(const harness::Function& function, bool use_estimate);
  ~Judge();

  /// Takes the results of one block: component c of element i stands in got[c][i]. `estimates` are those of the
  /// arguments, if the judge uses them; `statuses` those of the elements one by one, or null.
  void block(const Arguments* arguments, const double* const got[2], int elements, const BlockEstimates& estimates,
             const kelStatus* statuses = nullptr);

  const Statistics& statistics() const { return statistics_; }

private:
  template <class T> bool decided(const Estimate<T>& estimate, const T* c, const double got[2]);
  void judge(const Arguments& arguments, const double got[2], const kelStatus* status);
  void judge_status(const Arguments& arguments, const double got[2], kelStatus status);
  bool ordinary(const double got[2]) const;
  template <class T> void check_estimate(const Estimate<T>& estimate, Worst& here);
  bool measure(mpfr_srcptr exact, double got, double& ulps, bool& subnormal, bool& rounded);

  /// The bin of an error. Functions of lower accuracies have one bin for what is between 0.5 and 1 ulp: telling more of
  /// them apart would take MPFR.
  std::size_t bin_of(double ulps) const;
  /// The upper bound of the next smaller bin; not for bin 0.
  double below_bin(std::size_t bin) const;

  harness::Function function_;
  Underflow underflow_;
  harness::Format format_;
  bool complex_;
  bool fine_bins_;
  Exact exact_;
  FamilyEstimate estimate_;
  Statistics statistics_;
  std::uint64_t sample_state_ = 1;
  long double overflow_square_; // of the power of two above the largest number
  mpfr_t difference_, norm_, error_norm_, infinity_;
};

/// -log2 of a relative error: the number of correct bits.
double bits_of(double relative);

} // namespace reference
