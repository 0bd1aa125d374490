// sinh and cosh of doubles.
//
//   |x| = k ln 2 / 32 + r,   sinh a, cosh a of a = k ln 2 / 32 from 2^(+-k/32),
//   sinh(a + r) = sinh a + cosh a sinh r + sinh a (cosh r - 1),   cosh(a + r) with the roles exchanged
//
// For k = 0 the sum is the series of sinh r alone, as accurate as r. A53 keeps heads and rests throughout, 2^-58 before
// the one rounding; cosh A26 has plain numbers and a shorter series. Signs are put back at the end.
//
// A50 has no table: steps of ln 2, for whose multiples a plain number is enough, and longer series. For k = 1 and a
// negative r, where sinh a and cosh a sinh r nearly cancel, errors of the latter count four times: within three ulps.
// Without fused operations the exponential by a table and a division take the place of the second series: cosh is
// (e + 1/e) / 2, e = e^|x|, within two ulps, sinh (e + e / (e + 1)) / 2, e = e^|x| - 1, within four.
//
// sinh A26, where sinh a would need rests next to 0, comes from the exponential less 1: 2^-35.5.
//
// Exceptional inputs: beyond 708, where 2^(k/32) approaches the end of the range, one element at a time with its power
// of two apart; overflow beyond 710.4758; infinities stay (cosh: +inf), NaNs are quieted.
#include "frame/export.hpp"
#include "hyperbolic/sinh_cosh.hpp"
#include "kelvm/hyperbolic.h"

namespace kelvm::inline KELVM_BUILD::sinh_cosh_64f {
namespace {

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
struct SinhA26 : Double<OfSinh> {
  template <class V> static V formula(V x) {
    const V e = exp_minus_1<Accuracy::bits27>(abs(x));
    return with_sign(sub_mul(e, 0.5 * e, e / (e + 1.0)), sign_of(x));
  }
};

template <class Accuracy> struct Cosh : Double<OfCosh> {
  static constexpr int vectors_in_flight = few_vectors_in_flight;
  template <class V> static V formula(V x) { return rounded(Accuracy::hyperbolic(abs(x)).even); }
};

/// a = k ln 2, sinh a and cosh a from 2^k / 2 and 2^-k / 2.
template <class Which> struct A50 : Double<Which> {
  static constexpr Magnitudes ordinary{0x1p-60, 708};
  template <class V> static V formula(V x) {
    const ExpReduced<V, 1> reduced = exp_reduce<1>(abs(x));
    const EvenAndOddExp<V> r(reduced.r());
    const V up = reduced.scaled(splat<V>(0.5)), down = from_bits<V>(0x7FC0000000000000u - bits(up));
    const EvenOdd<V> y = added<Functions::hyperbolic>(EvenOdd<V>{up + down, up - down}, r.square * r.even, r.odd);
    return Which::with_its_sign(Which::of(y), x);
  }
};
struct SinhA50 : A50<OfSinh> {
  template <class V> static V formula(V x) {
    if constexpr (has_fused) {
      return A50::formula(x);
    } else {
      const V e =
          exp_minus_1<Accuracy::bits50, Arguments::positive>(abs(x)); // next to 0 the result is as accurate as e
      return with_sign(0.5 * (e + e / (e + 1.0)), sign_of(x));
    }
  }
};
struct CoshA50 : A50<OfCosh> {
  template <class V> static V formula(V x) {
    if constexpr (has_fused) {
      return A50::formula(x);
    } else {
      const ExpReduced<V> reduced = exp_reduce(abs(x));
      const V r = reduced.r(), t = reduced.power();
      const V e = mul_add(t, mul_add(r * r, estrin(r, exp_coefficients<Accuracy::bits50>), r), t);
      return 0.5 * (e + 1.0 / e);
    }
  }
};

} // namespace

KELVM_UNARY(kelsSinh_64f_A26, SinhA26)
KELVM_UNARY(kelsSinh_64f_A50, SinhA50)
KELVM_UNARY(kelsSinh_64f_A53, SinhA53)
KELVM_UNARY(kelsCosh_64f_A26, Cosh<ShortA26>)
KELVM_UNARY(kelsCosh_64f_A50, CoshA50)
KELVM_UNARY(kelsCosh_64f_A53, Cosh<Full>)

} // namespace kelvm::inline KELVM_BUILD::sinh_cosh_64f
