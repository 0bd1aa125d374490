// The frame by itself: flags on demand, the mode guard under optimisation, loading the library.
#include "driver.hpp"
#include "guarded_kernel.hpp"

#include "frame/status.hpp"

#include <cfenv>
#include <cmath>
#include <immintrin.h>

namespace {

TEST(Frame, RaisesTheFlagOfACodeAndNoOther) {
  const struct {
    kelStatus code;
    int flag, with;
  } rows[] = {{kelStatusDomain, FE_INVALID, 0},
              {kelStatusSingularity, FE_DIVBYZERO, 0},
              {kelStatusOverflow, FE_OVERFLOW, FE_INEXACT},
              {kelStatusUnderflow, FE_UNDERFLOW, FE_INEXACT},
              {kelStatusOk, 0, 0},
              {-6, 0, 0},
              {13, 0, 0}};
  for (const auto& row : rows) {
    std::feclearexcept(FE_ALL_EXCEPT);
    kelvm::ownRaiseFpException(row.code);
    EXPECT_EQ(std::fetestexcept(FE_ALL_EXCEPT), row.flag | row.with) << "code " << row.code;
  }
}

// The guard must hold the operations between its two changes of the control word whatever the optimiser does.
TEST(Frame, TheGuardHoldsAtEveryOptimisationLevel) {
  double x[9], y[9];
  for (int i = 0; i < 9; ++i) x[i] = i + 1;
  for (auto* guarded : {guarded_O1, guarded_O2, guarded_O3})
    for (unsigned mode : {driver::down, driver::up, driver::toward_zero}) {
      const unsigned csr = driver::default_csr | mode, found = _mm_getcsr();
      _mm_setcsr(csr);
      const kelStatus status = guarded(x, y, 9);
      const unsigned left = _mm_getcsr();
      _mm_setcsr(found);
      EXPECT_EQ(status, kelStatusOk);
      EXPECT_EQ(left, csr);
      for (int i = 0; i < 9; ++i) EXPECT_EQ(y[i], x[i] / 3.0 + 0x1p-60) << "mode " << std::hex << mode;
    }
}

// Before main, when nothing has loaded the library yet.
constexpr unsigned unusual_csr =
    driver::default_csr | driver::toward_zero | driver::flush_to_zero | driver::denormals_are_zero;
const unsigned csr_after_loading = [] {
  const unsigned found = _mm_getcsr();
  _mm_setcsr(unusual_csr);
  driver::library();
  const unsigned left = _mm_getcsr();
  _mm_setcsr(found);
  return left;
}();

TEST(Frame, LoadingTheLibraryLeavesTheControlWordAlone) { EXPECT_EQ(csr_after_loading, unusual_csr); }

} // namespace
