// sinh and cosh of doubles.
//
//   |x| = k ln 2 / 32 + r,   sinh a, cosh a of a = k ln 2 / 32 from 2^(+-k/32),
//   sinh(a + r) = sinh a + cosh a sinh r + sinh a (cosh r - 1),   cosh(a + r) with the roles exchanged
//
// For k = 0 the sum is the series of sinh r alone, as accurate as r. A53 keeps heads and rests throughout, 2^-58 before
// the one rounding; cosh A50 and A26 have plain numbers, steps of ln 2 / 32 and a shorter series. Signs are put back at
// the end.
//
// sinh A50 and A26, where sinh a would need rests next to 0, come from the exponential less 1: within two ulps or
// three, and 2^-35.5.
//
// Exceptional inputs: beyond 708, where 2^(k/32) approaches the end of the range, one element at a time with its power
// of two apart; overflow beyond 710.4758; infinities stay (cosh: +inf), NaNs are quieted.
#include "frame/export.hpp"
#include "hyperbolic/sinh_cosh.hpp"
#include "kelvm/hyperbolic.h"

namespace kelvm::inline KELVM_BUILD::sinh_cosh_64f {
namespace {

template <class V> inline V rounded(V y) { return y; }

/// cosh for A50: nothing cancels in it, so that steps of ln 2 / 32 without rests do. The series are Taylor's, the next
/// terms below 2^-60.
struct CoshSeriesA50 {
  static constexpr bool has_rests = false;
  static constexpr double sinh[] = {0x1.5555555555555p-3, 0x1.1111111111111p-7, 0x1.a01a01a01a01ap-13};
  static constexpr double cosh[] = {0.5, 0x1.5555555555555p-5, 0x1.6c16c16c16c17p-10};
};
using CoshA50 = Rounded<Accuracy::bits50, CoshSeriesA50>;

template <class Which> struct Double : KernelDefaults {
  using Element = double;
  static constexpr bool spurious_underflow = true;    // r^2 of a tiny r
  static constexpr Magnitudes ordinary{0x1p-60, 630}; // beyond are rests of the scale of e^-|x|
  template <class V> static SignMask<V> special(V x) { return above(abs(x), 708.0); }
  static double element(double x, kelStatus& status) { return sinh_or_cosh<Which>(x, status); }
};

struct SinhA53 : Double<OfSinh> {
  static constexpr int vectors_in_flight = 2;
  template <class V> static V formula(V x) { return with_sign(rounded(Full::hyperbolic(abs(x)).odd), sign_of(x)); }
};
/// e - e^2 / (2 (e + 1)) with e = e^|x| - 1: an error of e does not grow, and next to 0 nothing else counts.
template <Accuracy A> struct SinhOfExpm1 : Double<OfSinh> {
  template <class V> static V formula(V x) {
    const V e = exp_minus_1<A>(abs(x));
    return with_sign(sub_mul(e, 0.5 * e, e / (e + 1.0)), sign_of(x));
  }
};

template <class Accuracy> struct Cosh : Double<OfCosh> {
  static constexpr int vectors_in_flight = few_vectors_in_flight;
  template <class V> static V formula(V x) { return rounded(Accuracy::hyperbolic(abs(x)).even); }
};

} // namespace

KELVM_UNARY(kelsSinh_64f_A26, SinhOfExpm1<Accuracy::bits27>)
KELVM_UNARY(kelsSinh_64f_A50, SinhOfExpm1<Accuracy::bits50>)
KELVM_UNARY(kelsSinh_64f_A53, SinhA53)
KELVM_UNARY(kelsCosh_64f_A26, Cosh<ShortA26>)
KELVM_UNARY(kelsCosh_64f_A50, Cosh<CoshA50>)
KELVM_UNARY(kelsCosh_64f_A53, Cosh<Full>)

} // namespace kelvm::inline KELVM_BUILD::sinh_cosh_64f
