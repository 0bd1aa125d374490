#include "judge.hpp"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>

namespace reference {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
/// Whether an element, by its number, is judged whatever the estimate says: often at first, then less.
bool is_sample(std::uint64_t number) { return number % (number < 1 << 20 ? 1 << 11 : 1 << 15) == 0; }

// Element e is the first bin with values above 2^(e-1).
constexpr auto bins_by_exponent = [] {
  std::array<std::uint8_t, 43> bins{};
  for (std::size_t e = 0, bin = 0; e < bins.size(); ++e) {
    while (bin_bounds[bin] <= static_cast<double>(std::uint64_t(1) << e) / 2) ++bin;
    bins[e] = static_cast<std::uint8_t>(bin);
  }
  return bins;
}();

} // namespace

std::size_t Judge::bin_of(double ulps) const {
  if (ulps <= 0.5) return 0;
  if (ulps <= 1 && !fine_bins_) return bin_of_one_ulp;
  if (!(ulps <= bin_bounds.back())) return bin_bounds.size();
  std::size_t bin = bins_by_exponent[((std::bit_cast<std::uint64_t>(ulps) - 1) >> 52) - 1022]; // 2^(e-1) < ulps <= 2^e
  while (ulps > bin_bounds[bin]) ++bin;
  return bin;
}
double Judge::below_bin(std::size_t bin) const {
  return bin == bin_of_one_ulp && !fine_bins_ ? 0.5 : bin_bounds[bin - 1];
}

namespace {

// The exponent e with 2^(e-1) <= |x| < 2^e; x finite and not zero.
int exponent_of(double x) {
  const int field = static_cast<int>(std::bit_cast<std::uint64_t>(x) >> 52 & 0x7ff);
  return field ? field - 1022 : std::ilogb(x) + 1;
}
int exponent_of(long double x) {
  std::uint16_t sign_and_exponent; // of the x87 format, in which 0 stands for zero and subnormal numbers
  std::memcpy(&sign_and_exponent, reinterpret_cast<const char*>(&x) + 8, 2);
  const int field = sign_and_exponent & 0x7fff;
  return field ? field - 16382 : std::ilogb(x) + 1;
}

// |x| 2^-k; a power of two beyond the range of double is fine
double scaled(double x, int k) {
  if (k > -1000 && k < 1000) return std::fabs(x) * std::bit_cast<double>(static_cast<std::uint64_t>(1023 - k) << 52);
  return std::fabs(std::ldexp(x, -k));
}
double scaled(long double x, int k) {
  const double rounded = static_cast<double>(x), size = std::fabs(rounded);
  return size > 1e-290 && size < 1e300 ? scaled(rounded, k) : static_cast<double>(std::ldexp(std::fabs(x), -k));
}

double magnitude(mpfr_srcptr x) { return std::fabs(mpfr_get_d(x, MPFR_RNDN)); }

} // namespace

double bits_of(double relative) { return relative > 0 ? -std::log2(relative) : infinity; }

void Statistics::merge(const Statistics& other) {
  elements += other.elements;
  skipped += other.skipped;
  judged += other.judged;
  results += other.results;
  misrounded += other.misrounded;
  for (std::size_t i = 0; i < histogram.size(); ++i) histogram[i] += other.histogram[i];
  ulp.merge(other.ulp);
  ulp_subnormal.merge(other.ulp_subnormal);
  relative.merge(other.relative);
  absolute.merge(other.absolute);
  norm_ulp.merge(other.norm_ulp);
  estimate.merge(other.estimate);
  status.merge(other.status);
}

Judge::Judge(const harness::Function& function, bool use_estimate)
    : function_(function), underflow_(underflow_of(function)), format_(function.format()),
      complex_(function.complex_destination()), fine_bins_(function.suffix_bits() == format_.digits), exact_(function) {
  if (use_estimate) estimate_ = estimate_of(function);
  mpfr_inits2(64, difference_, norm_, error_norm_, infinity_, nullptr);
  mpfr_set_ui_2exp(infinity_, 1, format_.exponent_max, MPFR_RNDN);
  overflow_square_ = std::ldexp(1.0L, 2 * format_.exponent_max);
}

Judge::~Judge() { mpfr_clears(difference_, norm_, error_norm_, infinity_, nullptr); }

void Judge::block(const Arguments* arguments, const double* const got[2], int elements, const BlockEstimates& estimates,
                  const kelStatus* statuses) {
  const bool two = exact_.results() == 2;
  for (int i = 0; i < elements; ++i) {
    const double values[2] = {got[0][i], two ? got[1][i] : 0};
    const auto by = [&](const auto& estimate) {
      if (!estimate.function) return false;
      const auto* value = estimates.of(estimate, i);
      return decided(estimate, value, values);
    };
    const bool remarkable = statuses && (statuses[i] != kelStatusOk || !ordinary(values));
    if (!is_sample(sample_state_++) && !remarkable && (by(estimate_.in_double) || by(estimate_.in_long_double)))
      continue;
    judge(arguments[i], values, statuses ? &statuses[i] : nullptr);
  }
  statistics_.elements += elements;
}

// Whether a function returns such results without a warning, be they as inaccurate as they may.
bool Judge::ordinary(const double got[2]) const {
  const double smallest_normal = format_.digits == 24 ? 0x1p-126 : 0x1p-1022;
  for (int i = 0; i < exact_.results(); ++i)
    if (!std::isfinite(got[i]) || (underflow_ != Underflow::never && std::fabs(got[i]) <= smallest_normal))
      return false;
  return true;
}

// The status is that of the exact results, rounded. Where a function returns others, next to the ends of the range, it
// may be theirs; but real exponentials have theirs prescribed.
void Judge::judge_status(const Arguments& arguments, const double got[2], kelStatus status) {
  const int results = exact_.results();
  double due_of[2] = {};
  bool correct = true; // are the results
  for (int i = 0; i < results; ++i) {
    const mpfr_srcptr exact = exact_.result(i);
    const auto rounded = [&](mpfr_rnd_t r) {
      return format_.digits == 24 ? mpfr_get_flt(exact, r) : mpfr_get_d(exact, r);
    };
    const bool below = mpfr_regular_p(exact) && mpfr_get_exp(exact) < format_.exponent_normal();
    due_of[i] = rounded(below && underflow_ == Underflow::exact ? MPFR_RNDZ : MPFR_RNDN);
    correct = correct && got[i] == rounded(MPFR_RNDN);
  }
  const kelStatus due = due_status(function_, arguments, due_of, results);
  const bool prescribed = function_.family == "Exp" && !complex_;
  if (status == due) return;
  if (!correct && !prescribed && status == due_status(function_, arguments, got, results)) return;
  statistics_.status.merge({1, arguments, {static_cast<double>(status), 0}, {static_cast<double>(due), 0}});
}

// Counts the element and returns true if the estimate alone fixes its place in every statistic.
template <class T> bool Judge::decided(const Estimate<T>& estimate, const T* c, const double got[2]) {
  const int results = exact_.results();
  const T bound = static_cast<T>(estimate.bound);
  std::size_t bins[2];
  T error_square = 0, norm_square = 0;
  for (int i = 0; i < results; ++i) {
    const T value = c[i], g = static_cast<T>(got[i]);
    bins[i] = 0;
    if (std::isnan(value)) {
      if (complex_ || !std::isnan(got[i])) return false;
      continue;
    }
    if (value == 0) {
      if (got[i] != 0) return false;
      continue;
    }
    const int exponent = std::isinf(value) ? format_.exponent_max + 1 : exponent_of(value);
    if (exponent >= format_.exponent_max) { // next to the border of overflow or beyond
      if (exponent == format_.exponent_max || !std::isinf(got[i]) || std::signbit(value) != std::signbit(g))
        return false;
      norm_square += static_cast<T>(overflow_square_);
      continue;
    }
    if (!std::isfinite(got[i])) return false;
    const T slack = bound * std::fabs(value), error = std::fabs(g - value);
    if (!(slack < std::fabs(value) / 4) || (slack == 0 && error != 0)) return false;
    // The exact value may lie in the binade below or above.
    const int lower = exponent_of(std::fabs(value) - slack), upper = exponent_of(std::fabs(value) + slack);
    const bool subnormal = upper < format_.exponent_normal();
    if (lower < format_.exponent_normal() && !subnormal) return false;
    const double most = scaled(error + slack, format_.unit(lower)), least = scaled(error - slack, format_.unit(upper));
    bins[i] = bin_of(most);
    if (bins[i] > 0 && (error <= slack || least <= below_bin(bins[i]))) return false;
    if (most > (subnormal ? statistics_.ulp_subnormal : statistics_.ulp).value) return false;
    if (error + slack > static_cast<T>(statistics_.absolute.value)) return false;
    if (complex_) {
      error_square += error * error;
      norm_square += value * value;
    } else if (error + slack > static_cast<T>(statistics_.relative.value) * (std::fabs(value) - slack) &&
               !(subnormal && most <= 1)) {
      return false;
    }
  }
  if (complex_ && norm_square > 0) {
    const T norm = std::sqrt(norm_square), error = std::sqrt(error_square) + 2 * bound * norm;
    if (error > static_cast<T>(statistics_.relative.value) * norm * (1 - 2 * bound)) return false;
    if (scaled(error, format_.unit(exponent_of(norm * (1 - 2 * bound)))) > statistics_.norm_ulp.value) return false;
  }
  for (int i = 0; i < results; ++i) {
    ++statistics_.histogram[bins[i]];
    if (bins[i] > 0) ++statistics_.misrounded;
  }
  statistics_.results += results;
  return true;
}

// Leaves got - exact in difference_ where it is finite. Returns whether the exact value is a finite number.
bool Judge::measure(mpfr_srcptr exact, double got, double& ulps, bool& subnormal, bool& rounded) {
  subnormal = false;
  const double nearest = format_.digits == 24 ? mpfr_get_flt(exact, MPFR_RNDN) : mpfr_get_d(exact, MPFR_RNDN);
  rounded = nearest == got || (std::isnan(nearest) && std::isnan(got));
  ulps = rounded ? 0 : infinity;
  mpfr_set_zero(difference_, 1);
  if (!mpfr_number_p(exact)) return false;
  if (std::isnan(got)) {
    mpfr_set_inf(difference_, 1);
    return true;
  }
  const int exponent = mpfr_zero_p(exact)
                           ? format_.exponent_min
                           : static_cast<int>(std::clamp<mpfr_exp_t>(mpfr_get_exp(exact), -100000, 100000));
  subnormal = exponent < format_.exponent_normal();
  if (std::isinf(got)) {
    if (exponent > format_.exponent_max && std::signbit(got) == (mpfr_signbit(exact) != 0)) return true;
    mpfr_setsign(infinity_, infinity_, std::signbit(got), MPFR_RNDN);
    mpfr_sub(difference_, infinity_, exact, MPFR_RNDA);
  } else {
    mpfr_d_sub(difference_, got, exact, MPFR_RNDA);
    mpfr_neg(difference_, difference_, MPFR_RNDN);
  }
  mpfr_mul_2si(norm_, difference_, -format_.unit(exponent), MPFR_RNDN);
  ulps = magnitude(norm_);
  return true;
}

void Judge::judge(const Arguments& arguments, const double got[2], const kelStatus* status) {
  exact_.evaluate(arguments);
  if (status) judge_status(arguments, got, *status);
  ++statistics_.judged;
  const int results = exact_.results();
  if (complex_ && !(mpfr_number_p(exact_.result(0)) && mpfr_number_p(exact_.result(1)))) {
    ++statistics_.skipped;
    return;
  }

  Worst here{0, arguments, {got[0], got[1]}, {}};
  for (int i = 0; i < results; ++i) here.exact[i] = mpfr_get_d(exact_.result(i), MPFR_RNDN);
  const auto take = [&](Worst& worst, double value) {
    here.value = value;
    worst.merge(here);
  };
  const auto take_relative = [&](mpfr_ptr error, mpfr_srcptr size, bool exempt) {
    if (exempt || mpfr_zero_p(error)) return;
    mpfr_div(error, error, size, MPFR_RNDA);
    take(statistics_.relative, magnitude(error));
  };

  mpfr_set_zero(error_norm_, 1);
  bool within_one_ulp = true;
  for (int i = 0; i < results; ++i) {
    double ulps;
    bool subnormal, rounded;
    const bool number = measure(exact_.result(i), got[i], ulps, subnormal, rounded);
    take(subnormal ? statistics_.ulp_subnormal : statistics_.ulp, ulps);
    take(statistics_.absolute, number || rounded ? magnitude(difference_) : infinity);
    ++statistics_.histogram[bin_of(ulps)];
    if (!rounded) ++statistics_.misrounded;
    if (!(ulps <= 1)) within_one_ulp = false;
    if (!number) {
      if (!rounded) take(statistics_.relative, infinity);
    } else if (complex_) {
      mpfr_hypot(error_norm_, error_norm_, difference_, MPFR_RNDA);
    } else {
      take_relative(difference_, exact_.result(i), subnormal && ulps <= 1);
    }
  }
  statistics_.results += results;
  if (complex_) {
    mpfr_hypot(norm_, exact_.result(0), exact_.result(1), MPFR_RNDZ);
    const int exponent = mpfr_zero_p(norm_) ? format_.exponent_min : static_cast<int>(mpfr_get_exp(norm_));
    mpfr_mul_2si(difference_, error_norm_, -format_.unit(exponent), MPFR_RNDN);
    take(statistics_.norm_ulp, magnitude(difference_));
    take_relative(error_norm_, norm_, exponent < format_.exponent_normal() && within_one_ulp);
  }

  if (estimate_.in_double.function) check_estimate(estimate_.in_double, here);
  if (estimate_.in_long_double.function) check_estimate(estimate_.in_long_double, here);
}

// The estimate's error as a share of its bound, where the exact value is in the estimate's own normal range.
template <class T> void Judge::check_estimate(const Estimate<T>& estimate, Worst& here) {
  T c[2];
  estimate.function(here.at.parts, c);
  const auto measurable = [](mpfr_srcptr exact) {
    return mpfr_regular_p(exact) && mpfr_get_exp(exact) > std::numeric_limits<T>::min_exponent &&
           mpfr_get_exp(exact) < std::numeric_limits<T>::max_exponent;
  };
  for (int i = 0; i < exact_.results(); ++i) {
    const mpfr_srcptr exact = exact_.result(i);
    const long double value = c[i];
    here.value = 0;
    if (mpfr_nan_p(exact) || std::isnan(value)) {
      if (!(mpfr_nan_p(exact) && std::isnan(value))) here.value = infinity;
    } else if (measurable(exact) && std::isfinite(value)) {
      mpfr_set_ld(norm_, value, MPFR_RNDN);
      mpfr_sub(difference_, norm_, exact, MPFR_RNDA);
      if (!mpfr_zero_p(difference_)) {
        mpfr_div(difference_, difference_, exact, MPFR_RNDA);
        here.value = magnitude(difference_) / estimate.bound;
      }
    }
    statistics_.estimate.merge(here);
  }
}

} // namespace reference
