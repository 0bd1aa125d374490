// Inverse error functions and inverse normal distribution, double (special/inverse.hpp).
//
// Exceptional inputs: the poles give an infinity, what lies beyond them a domain error, a NaN comes back quiet. erfinv
// keeps zeros, and below 2^-53 is x sqrt(pi) / 2, rounded once also where that is subnormal. The zeros of the others
// are +0.
#include "frame/member.hpp"
#include "kelvm/special.h"
#include "special/inverse.hpp"

namespace kelvm::inline KELVM_BUILD {
namespace {

/// x sqrt(pi) / 2 for 0 < |x| < 2^-53. In units of 2^-256, where nothing is subnormal; a result below the normal range
/// is rounded by the sum with the number whose unit in the last place is theirs, and taken out of its bits.
double times_half_root_of_pi(double x) {
  constexpr double c_hi = 0.88623046875, c_lo = -3.543297241986351e-6;
  const double scaled = x * 0x1p256, hi = head_of(scaled);
  const double product = c_hi * hi, rest = c_hi * (scaled - hi) + c_lo * scaled; // the product is exact
  const double result = product + rest;
  if (abs(result) >= 0x1p-766) return result * 0x1p-256;
  ownRaiseFpException(kelStatusUnderflow);
  const double shifter = from_bits<double>(bits(0x1p-766) | sign_of(x));
  const double head = head_of(result + shifter);
  const double sum = head + ((product - (head - shifter)) + rest);
  return from_bits<double>((bits(sum) - bits(0x1p-766)));
}

template <InverseAccuracy A> struct Inverse64 : KernelDefaults {
  using Element = double;
  static constexpr float harmless = 0.25f;
};

template <InverseAccuracy A> struct ErfInv64 : Inverse64<A> {
  template <class V> static Marks<V> special(V x) { return ErfInv::special(x); }
  template <class V> static V formula(V x) { return inverse<ErfInv, A>(x); }
  static double element(double x, kelStatus& status) {
    const double size = abs(x);
    if (x != x) return x * x;
    if (size > 1) return domain_error<double>(status);
    if (size == 1) return pole(status, x);
    if (x == 0) return x;
    if (size < first_regular<double>) return times_half_root_of_pi(x);
    return formula(x);
  }
};

template <class F, InverseAccuracy A> struct BetweenPoles64 : Inverse64<A> {
  template <class V> static Marks<V> special(V x) { return F::special(x); }
  template <class V> static V formula(V x) { return inverse<F, A>(x); }
  static double element(double x, kelStatus& status) {
    if (x != x) return x * x;
    if (x < 0 || x > F::end) return domain_error<double>(status);
    if (x == 0) return pole(status, double(F::sign_at_zero));
    if (x == F::end) return pole(status, double(-F::sign_at_zero));
    const double unit = F::unit(x);
    if (unit == 1) return 0.0;
    if (unit >= first_regular<double>) return formula(x);
    const HeadTail<double> result = inverse_tail<F>(unit);
    return result.head + result.tail;
  }
};

} // namespace
} // namespace kelvm::inline KELVM_BUILD

using enum kelvm::InverseAccuracy;

KELVM_UNARY(kelsErfInv_64f_A26, kelvm::ErfInv64<a26>)
KELVM_UNARY(kelsErfInv_64f_A50, kelvm::ErfInv64<a50>)
KELVM_UNARY(kelsErfInv_64f_A53, kelvm::ErfInv64<a53>)
KELVM_UNARY(kelsErfcInv_64f_A26, kelvm::BetweenPoles64<kelvm::ErfcInv, a26>)
KELVM_UNARY(kelsErfcInv_64f_A50, kelvm::BetweenPoles64<kelvm::ErfcInv, a50>)
KELVM_UNARY(kelsErfcInv_64f_A53, kelvm::BetweenPoles64<kelvm::ErfcInv, a53>)
KELVM_UNARY(kelsCdfNormInv_64f_A26, kelvm::BetweenPoles64<kelvm::CdfNormInv, a26>)
KELVM_UNARY(kelsCdfNormInv_64f_A50, kelvm::BetweenPoles64<kelvm::CdfNormInv, a50>)
KELVM_UNARY(kelsCdfNormInv_64f_A53, kelvm::BetweenPoles64<kelvm::CdfNormInv, a53>)
