#include "measure.hpp"

#include "block.hpp"

#include <atomic>
#include <chrono>
#include <cstdio>
#include <deque>
#include <exception>
#include <mutex>
#include <thread>
#include <unistd.h>

namespace accuracy {
namespace {

using reference::Statistics;
using reference::Worst;
using Clock = std::chrono::steady_clock;

template <class... T> std::string format(const char* pattern, T... values) {
  char line[400];
  std::snprintf(line, sizeof line, pattern, values...);
  return line;
}

// Rewrites one line of a terminal; silent elsewhere.
class Progress {
public:
  Progress(std::string_view name, std::uint64_t total) : name_(name), total_(isatty(STDERR_FILENO) ? total : 0) {}
  ~Progress() {
    if (total_) std::fprintf(stderr, "\r\033[K");
  }
  void show(std::uint64_t done, const Statistics& s) {
    if (!total_ || Clock::now() - last_ < std::chrono::milliseconds(300)) return;
    last_ = Clock::now();
    const double share = static_cast<double>(done) / static_cast<double>(total_);
    const double seconds = std::chrono::duration<double>(last_ - start_).count();
    std::fprintf(stderr, "\r\033[K%.*s  %5.1f %%  %.0f s to go  max %.4f ulp, %.2f bits",
                 static_cast<int>(name_.size()), name_.data(), 100 * share, share > 0 ? seconds / share - seconds : 0,
                 s.ulp.value, reference::bits_of(s.relative.value));
  }

private:
  std::string_view name_;
  std::uint64_t total_;
  Clock::time_point start_ = Clock::now(), last_{};
};

std::string values(const harness::Function& function, const double* parts, bool complex) {
  const int digits = function.is_float() ? 9 : 17;
  std::string text;
  for (int c = 0; c < (complex ? 2 : 1); ++c) text += format("%s%.*g (%a)", c ? ", " : "", digits, parts[c], parts[c]);
  return text;
}

std::string worst_lines(const harness::Function& function, const char* title, const std::string& figure,
                        const Worst& w) {
  std::string text = format("  %-26s %s\n", title, figure.c_str());
  if (w.value == 0) return text;
  const auto line = [&](const char* what, const std::string& value) {
    text += format("    %-6s %s\n", what, value.c_str());
  };
  line("src1", values(function, w.at.parts, function.complex_source()));
  if (function.sources() == 2 || function.shape == harness::Shape::ScalarPower)
    line("src2", values(function, w.at.parts + 2, function.complex_source()));
  const bool two = function.destinations() == 2 || function.complex_destination();
  line("got", values(function, w.got.data(), two));
  line("exact", values(function, w.exact.data(), two));
  return text;
}

double percent(std::uint64_t part, std::uint64_t whole) {
  return whole ? 100.0 * static_cast<double>(part) / static_cast<double>(whole) : 0;
}

} // namespace

bool same_function(const harness::Function& a, const harness::Function& b) {
  return a.family == b.family && a.type == b.type && a.shape == b.shape;
}

std::vector<Statistics> measure(const harness::Library& library, std::span<const harness::Function> functions,
                                const Source& source, const Options& options) {
  std::vector<Statistics> total(functions.size());
  std::mutex mutex; // guards total, failure, progress
  std::exception_ptr failure;
  std::atomic<std::uint64_t> next_block = 0;
  Progress progress(functions.front().name, options.blocks);
  const auto work = [&] {
    try {
      reference::BlockEstimates estimates(functions.front());
      std::deque<reference::Judge> judges;
      std::deque<reference::Block> blocks;
      for (const harness::Function& function : functions) {
        judges.emplace_back(function, options.use_estimate);
        blocks.emplace_back(library, function);
      }
      std::vector<reference::Arguments> arguments;
      for (std::uint64_t index; source(index = next_block++, arguments);) {
        const int elements = static_cast<int>(arguments.size());
        if (options.use_estimate) estimates.evaluate(arguments.data(), elements);
        for (std::size_t m = 0; m < functions.size(); ++m) {
          blocks[m].call(arguments);
          judges[m].block(arguments.data(), blocks[m].results(), elements, estimates,
                          options.check_status ? blocks[m].statuses() : nullptr);
        }
        if (index % 16 == 0) {
          const std::lock_guard lock(mutex);
          if (failure) return;
          progress.show(index, judges.front().statistics());
        }
      }
      const std::lock_guard lock(mutex);
      for (std::size_t m = 0; m < functions.size(); ++m) total[m].merge(judges[m].statistics());
    } catch (...) {
      const std::lock_guard lock(mutex);
      failure = std::current_exception();
    }
  };
  std::vector<std::jthread> threads;
  for (unsigned i = 0; i < options.threads; ++i) threads.emplace_back(work);
  threads.clear();
  if (failure) std::rethrow_exception(failure);
  return total;
}

std::string report(const harness::Function& function, const Statistics& s) {
  std::string text =
      format("%s: %llu elements", std::string(function.name).c_str(), static_cast<unsigned long long>(s.elements));
  if (s.skipped)
    text += format(" (%llu at poles or beyond range left out)", static_cast<unsigned long long>(s.skipped));
  text += format(", %.3f %% judged by MPFR\n", percent(s.judged, s.elements));
  text += worst_lines(function, "max ulp", format("%.6f", s.ulp.value), s.ulp);
  if (s.ulp_subnormal.value > 0)
    text += worst_lines(function, "max ulp, subnormal result", format("%.6f", s.ulp_subnormal.value), s.ulp_subnormal);
  if (function.complex_destination())
    text += worst_lines(function, "max ulp by norm", format("%.6f", s.norm_ulp.value), s.norm_ulp);
  text +=
      worst_lines(function, "max relative error", format("2^-%.3f", reference::bits_of(s.relative.value)), s.relative);
  text += format("  max absolute error         %.6g\n", s.absolute.value);
  text += format("  correctly rounded          %.6f %% (%llu of %llu results are not)\n",
                 100 - percent(s.misrounded, s.results), static_cast<unsigned long long>(s.misrounded),
                 static_cast<unsigned long long>(s.results));
  text += "  histogram, ulps up to\n";
  for (std::size_t i = 0; i < s.histogram.size(); ++i) {
    if (!s.histogram[i]) continue;
    const std::string bound = i < reference::bin_bounds.size() ? format("%g", reference::bin_bounds[i]) : "any";
    text += format("    %-12s %14llu  %9.5f %%\n", bound.c_str(), static_cast<unsigned long long>(s.histogram[i]),
                   percent(s.histogram[i], s.results));
  }
  if (s.judged < s.elements) text += format("  estimate: at most %.3f of its error bound\n", s.estimate.value);
  return text;
}

std::string summary(const harness::Function& function, const Statistics& s) {
  std::string text = format("%-24s ulp %10.4f  bits %6.2f  correct %9.5f %%", std::string(function.name).c_str(),
                            s.ulp.value, reference::bits_of(s.relative.value), 100 - percent(s.misrounded, s.results));
  if (s.ulp_subnormal.value > 0) text += format("  subnormal %.4f", s.ulp_subnormal.value);
  if (function.complex_destination()) text += format("  norm %.4f", s.norm_ulp.value);
  return text;
}

std::string status_fault(const Statistics& s) {
  if (s.status.value == 0) return {};
  return format("status %g instead of %g at (%a, %a), (%a, %a)", s.status.got[0], s.status.exact[0],
                s.status.at.parts[0], s.status.at.parts[1], s.status.at.parts[2], s.status.at.parts[3]);
}

std::string estimate_fault(const Statistics& s) {
  if (s.estimate.value <= 1) return {};
  return format("the estimate is off by %.3g times its bound at (%a, %a), (%a, %a); run with --mpfr-only",
                s.estimate.value, s.estimate.at.parts[0], s.estimate.at.parts[1], s.estimate.at.parts[2],
                s.estimate.at.parts[3]);
}

} // namespace accuracy
