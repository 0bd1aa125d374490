#include "compare.hpp"

#include "progress.hpp"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>

namespace {

/// Another function of the library.
class OtherFunction : public Reference {
public:
  explicit OtherFunction(const Function& function) : function_(function) {}

  void evaluate(std::span<const double> sources, int elements, std::span<Better> results) override {
    if (function_.is_double)
      evaluate_as<double>(sources, elements, results);
    else
      evaluate_as<float>(sources, elements, results);
  }

private:
  template <class Real> void evaluate_as(std::span<const double> sources, int elements, std::span<Better> results) {
    const std::size_t n = std::size_t(elements), parts = std::size_t(function_.source_parts);
    const std::size_t arrays = std::size_t(function_.sources) + function_.takes_exponent;
    const std::size_t result_parts = std::size_t(function_.destination_parts);
    std::vector<Real> from[2], to[2];
    for (std::size_t a = 0; a < arrays; ++a)
      for (std::size_t i = 0; i < n; ++i)
        for (std::size_t p = 0; p < parts; ++p) from[a].push_back(Real(sources[(i * arrays + a) * parts + p]));
    for (std::vector<Real>& array : to) array.resize(n * result_parts);
    function_.call({{from[0].data(), from[1].data()}, from[1].data(), {to[0].data(), to[1].data()}, elements});
    const std::size_t destinations = std::size_t(function_.destinations);
    for (std::size_t i = 0; i < n; ++i)
      for (std::size_t d = 0; d < destinations; ++d)
        for (std::size_t p = 0; p < result_parts; ++p)
          results[(i * destinations + d) * result_parts + p] = {to[d][i * result_parts + p]};
  }

  const Function& function_;
};

std::string_view family_of(std::string_view name) { return name.substr(0, name.find('_')); }

/// The function that `with` names: all of its name, or only the suffix that differs.
const Function& other_function(const Function& function, const std::string& with) {
  const std::string name(function.name);
  const Function* other = find_function(with);
  if (!other) other = find_function(name.substr(0, name.rfind('_') + 1) + with);
  if (!other) throw BadInput("kelvm-apply: unknown function " + with + " to compare with (--list shows the functions)");
  const bool alike = family_of(other->name) == family_of(name) && other->source_parts == function.source_parts &&
                     other->destination_parts == function.destination_parts;
  if (!alike || (function.is_double && !other->is_double))
    throw BadInput("kelvm-apply: " + name + " cannot be compared with " + other->name);
  return *other;
}

/// The difference of a result from what it should be, and the size of an ulp there as a power of two. An infinity
/// counts as the power of two above the largest number.
template <class Real> struct Error {
  using Limits = std::numeric_limits<Real>;
  long double difference;
  int ulp;

  Error(Real got, Better wanted) {
    const long double beyond = std::ldexp(1.0L, Limits::max_exponent);
    const auto bounded = [&](long double x) { return std::abs(x) >= beyond ? std::copysign(beyond, x) : x; };
    if (std::abs(wanted.high) >= beyond) wanted.low = 0;
    difference = (bounded(got) - bounded(wanted.high)) - wanted.low;
    if (std::isnan(difference)) difference = std::isnan(got) && std::isnan(wanted.high) ? 0 : INFINITY;
    const int exponent = wanted.high == 0 ? Limits::min_exponent : std::ilogb(wanted.high) + 1;
    ulp = std::clamp(exponent, Limits::min_exponent, Limits::max_exponent) - Limits::digits;
  }
  long double ulps() const { return std::ldexp(std::abs(difference), -ulp); }
};

template <class Real> std::string listed(std::span<const Real> numbers) {
  std::string text;
  for (const Real number : numbers) {
    if (!text.empty()) text += ' ';
    append_number(text, number);
  }
  return text;
}

std::string printed(const char* pattern, auto... values) {
  char line[256];
  std::snprintf(line, sizeof line, pattern, values...);
  return line;
}

/// The largest error of a kind, and where.
struct Worst {
  long double error = 0;
  std::string where;
};

template <class Real> class Comparison {
public:
  explicit Comparison(const Options& options) : function_(*options.function), sources_(options) {
    if (options.compare != "mpfr") {
      const Function& other = other_function(function_, options.compare);
      with_ = other.name;
      reference_ = std::make_unique<OtherFunction>(other);
    } else if (!(reference_ = exact_reference(function_))) {
      throw BadInput("kelvm-apply: was built without MPFR; --compare takes another accuracy, such as A53");
    }
  }

  std::string report() {
    constexpr int block = 1024; // between looks at the clock: MPFR takes its time
    Progress progress;
    for (Piece<Real> piece; sources_.next(piece);)
      for (int begin = 0; begin < piece.elements; begin += block) {
        compare(piece, begin, std::min(begin + block, piece.elements));
        progress.show(elements_, sources_.share_done());
      }
    const double results = double(elements_) * double(n_results_);
    return printed("%s compared with %s: %llu elements, status %d\n", function_.name, with_,
                   static_cast<unsigned long long>(elements_), sources_.status()) +
           printed("  largest error       %.4Lf ulp\n", worst_ulps_.error) + worst_ulps_.where +
           printed("  mean error          %.4Lf ulp\n", finite_ ? sum_ / (long double)finite_ : 0) +
           (worst_relative_.error > 0 ? printed("  largest relative    2^%.2Lf\n", std::log2(worst_relative_.error))
                                      : "  largest relative    0\n") +
           worst_relative_.where + printed("  within half an ulp  %.3f %%\n", 100 * double(rounded_) / results);
  }

private:
  void compare(const Piece<Real>& piece, int begin, int end) {
    const std::size_t parts = std::size_t(function_.source_parts);
    const std::size_t destination_parts = std::size_t(function_.destination_parts);
    arguments_.clear();
    for (std::size_t i = std::size_t(begin); i < std::size_t(end); ++i) {
      for (int s = 0; s < function_.sources; ++s)
        for (std::size_t p = 0; p < parts; ++p) arguments_.push_back(piece.sources[s][i * parts + p]);
      arguments_.insert(arguments_.end(), sources_.exponent().begin(), sources_.exponent().end());
    }
    const std::size_t n = std::size_t(end - begin), width = arguments_.size() / n;
    better_.resize(n * n_results_);
    reference_->evaluate(arguments_, int(n), better_);
    for (std::size_t i = 0; i < n; ++i) {
      Real got[2];
      for (std::size_t r = 0; r < n_results_; ++r) {
        const Real* destination = piece.results[r / destination_parts];
        got[r] = destination[(std::size_t(begin) + i) * destination_parts + r % destination_parts];
      }
      judge(std::span(arguments_).subspan(i * width, width), std::span(got, n_results_),
            std::span(better_).subspan(i * n_results_, n_results_));
    }
  }

  void judge(std::span<const double> arguments, std::span<const Real> got, std::span<const Better> better) {
    long double size = 0, difference = 0; // of the pair, where it is a complex number
    for (std::size_t r = 0; r < got.size(); ++r) {
      const Error<Real> error(got[r], better[r]);
      const long double ulps = error.ulps();
      if (std::isfinite(ulps)) {
        sum_ += ulps;
        ++finite_;
      }
      rounded_ += ulps <= 0.5L;
      if (ulps > worst_ulps_.error) worst_ulps_ = {ulps, where(arguments, got, better)};
      const bool joined = function_.destination_parts == 2 && r == 1;
      size = std::hypot(joined ? size : 0, better[r].high);
      difference = std::hypot(joined ? difference : 0, error.difference);
    }
    // Below the normal numbers no result has all its bits.
    const long double relative = difference / size;
    if (size >= std::numeric_limits<Real>::min() && std::isfinite(relative) && relative > worst_relative_.error)
      worst_relative_ = {relative, where(arguments, got, better)};
    ++elements_;
  }

  std::string where(std::span<const double> arguments, std::span<const Real> got, std::span<const Better> better) {
    const std::vector<Real> sources(arguments.begin(), arguments.end());
    std::vector<Real> wanted;
    for (const Better& b : better) wanted.push_back(Real(b.high));
    return "    element " + std::to_string(elements_ + 1) + ": " + listed<Real>(sources) + "\n    gives " +
           listed<Real>(got) + ", should be " + listed<Real>(wanted) + "\n";
  }

  const Function& function_;
  Sources<Real> sources_;
  const char* with_ = "MPFR";
  std::unique_ptr<Reference> reference_;
  const std::size_t n_results_ = std::size_t(function_.results());
  std::vector<double> arguments_;
  std::vector<Better> better_;
  Worst worst_ulps_, worst_relative_;
  long double sum_ = 0;
  std::uint64_t elements_ = 0, finite_ = 0, rounded_ = 0;
};

} // namespace

std::string compare(const Options& options) {
  return options.function->is_double ? Comparison<double>(options).report() : Comparison<float>(options).report();
}
