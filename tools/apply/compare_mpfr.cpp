#include "compare.hpp"

#include "exact.hpp"

#include <cmath>

namespace {

class ExactFunction : public Reference {
public:
  explicit ExactFunction(const Function& function)
      : function_(function), exact_(*harness::find_function(function.name)) {
    mpfr_init2(rest_, reference::Exact::precision);
  }
  ~ExactFunction() override { mpfr_clear(rest_); }

  void evaluate(std::span<const double> sources, int elements, std::span<Better> results) override {
    const std::size_t parts = std::size_t(function_.source_parts), n_results = std::size_t(function_.results());
    const std::size_t width = (std::size_t(function_.sources) + function_.takes_exponent) * parts;
    for (std::size_t i = 0; i < std::size_t(elements); ++i) {
      reference::Arguments arguments{};
      for (std::size_t p = 0; p < width; ++p) arguments.parts[parts == 2 ? p : 2 * p] = sources[i * width + p];
      exact_.evaluate(arguments);
      for (std::size_t r = 0; r < n_results; ++r) {
        const mpfr_srcptr value = exact_.result(int(r));
        Better& better = results[i * n_results + r];
        better = {mpfr_get_ld(value, MPFR_RNDN)};
        if (!std::isfinite(better.high)) continue;
        mpfr_set_ld(rest_, better.high, MPFR_RNDN);
        mpfr_sub(rest_, value, rest_, MPFR_RNDN);
        better.low = mpfr_get_ld(rest_, MPFR_RNDN);
      }
    }
  }

private:
  const Function& function_;
  reference::Exact exact_;
  mpfr_t rest_;
};

} // namespace

std::unique_ptr<Reference> exact_reference(const Function& function) {
  return std::make_unique<ExactFunction>(function);
}
