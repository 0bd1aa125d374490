// Natural and decimal logarithm of floats (exp/log_core.hpp).
//
// A24 is correctly rounded: double arithmetic, and a second evaluation to 2^-61 for the results that lie within 2^-42
// of a midpoint between two floats. Before, the error is the fit's, 2^-44.2 of r or less, where the result is 0.98 r or
// more, and at most eight roundings of it (of k log 2 and log c, up to twice as large as their sum; r and its series;
// the sum): 2^-44.1. A21 and A11 stay in float arithmetic.
//
// Exceptional inputs: +-0 is a pole, what is below zero a domain error, +inf stays, NaN is quieted.
#include "exact/rounding_test.hpp"
#include "exp/log_core.hpp"
#include "frame/edges.hpp"
#include "frame/export.hpp"
#include "kelvm/exp.h"

namespace kelvm::inline KELVM_BUILD::log_32f {
namespace {

/// The results that are not a logarithm of a positive number.
template <class F> float of_positive(float x, kelStatus& status, F logarithm) {
  if (is_nan(x)) return x + x;
  if (x == 0) return pole(status, -1.0f);
  if (x < 0) return domain_error<float>(status);
  if (x == infinity<float>) return x;
  return logarithm(double(x));
}

template <class Base> struct LogA24 : KernelDefaults, PoleAtZero<-1> {
  using Element = float;
  template <class V> using ResultTest = RoundingTest;
  static constexpr Magnitudes ordinary{smallest_normal<float>, largest_finite<float>, false};
  template <class V> static SignMask<V> special(V x) {
    return outside(x, smallest_normal<float>, largest_finite<float>);
  }
  template <class V> static V formula(V x, RoundingTest& test) {
    const auto reduced = log_reduce_floats<CorrectRows>(x);
    return narrow_decided<42>(test, logarithm<Base, Accuracy::bits40, CorrectRows>(reduced.template half<0>()),
                              logarithm<Base, Accuracy::bits40, CorrectRows>(reduced.template half<1>()));
  }
  static float element(float x, kelStatus& status) {
    return of_positive(x, status, [](double d) {
      return round_sum_to_float(logarithm_full<Base>(log_parts<Base>(log_reduce<ExactRows>(d))));
    });
  }
};

template <class Base, Accuracy A> struct LogSingle : KernelDefaults, PoleAtZero<-1> {
  using Element = float;
  static constexpr bool spurious_underflow = true; // high powers of a tiny f
  static constexpr Magnitudes ordinary{smallest_normal<float>, largest_finite<float> / 2, false};
  template <class V> static SignMask<V> special(V x) { return not_normal_positive(x); }
  template <class V> static V formula(V x) { return float_logarithm<Base, A>(x); }
  static float element(float x, kelStatus& status) {
    return of_positive(x, status,
                       [](double d) { return float(logarithm<Base, Accuracy::bits40>(log_reduce<RoundedRows>(d))); });
  }
};

} // namespace

KELVM_UNARY(kelsLn_32f_A11, LogSingle<Natural, Accuracy::bits11>)
KELVM_UNARY(kelsLn_32f_A21, LogSingle<Natural, Accuracy::bits21>)
KELVM_UNARY(kelsLn_32f_A24, LogA24<Natural>)
KELVM_UNARY(kelsLog10_32f_A11, LogSingle<Decimal, Accuracy::bits11>)
KELVM_UNARY(kelsLog10_32f_A21, LogSingle<Decimal, Accuracy::bits21>)
KELVM_UNARY(kelsLog10_32f_A24, LogA24<Decimal>)

} // namespace kelvm::inline KELVM_BUILD::log_32f
