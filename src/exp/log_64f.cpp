// Natural and decimal logarithm of doubles.
//
// Identity, reduction and approximation: exp/log_core.hpp. A53: k log 2 - log c is exact, its sum with r carries its
// error along, and what is added last is below 2^-7 of the result; near 1 it is r^2/2, whose own roundings stay below
// 0.004 ulp. A power of ten comes out exact because the error is below half an ulp of an integer.
//
// Exceptional inputs: +-0 is a pole, what is below zero a domain error, +inf stays, NaN is quieted; a subnormal is
// scaled.
#include "exp/log_core.hpp"
#include "frame/edges.hpp"
#include "frame/export.hpp"
#include "kelvm/exp.h"

namespace kelvm::inline KELVM_BUILD::log_64f {
namespace {

template <class Base, Accuracy A> struct Log64f : KernelDefaults, PoleAtZero<-1> {
  using Element = double;
  static constexpr Magnitudes ordinary{smallest_normal<double>, largest_finite<double> / 2, false};
  template <class V> static SignMask<V> special(V x) { return not_normal_positive(x); }
  template <class V> static V formula(V x) { return logarithm<Base, A>(log_reduce<LogRows<A>>(x)); }
  static double element(double x, kelStatus& status) {
    if (is_nan(x)) return x + x;
    if (x == 0) return pole(status, -1.0);
    if (x < 0) return domain_error<double>(status);
    if (x == infinity<double>) return x;
    return logarithm<Base, A>(log_reduce_any<LogRows<A>>(x));
  }
};

} // namespace

KELVM_UNARY(kelsLn_64f_A26, Log64f<Natural, Accuracy::bits27>)
KELVM_UNARY(kelsLn_64f_A50, Log64f<Natural, Accuracy::bits50>)
KELVM_UNARY(kelsLn_64f_A53, Log64f<Natural, Accuracy::full>)
KELVM_UNARY(kelsLog10_64f_A26, Log64f<Decimal, Accuracy::bits27>)
KELVM_UNARY(kelsLog10_64f_A50, Log64f<Decimal, Accuracy::bits50>)
KELVM_UNARY(kelsLog10_64f_A53, Log64f<Decimal, Accuracy::full>)

} // namespace kelvm::inline KELVM_BUILD::log_64f
