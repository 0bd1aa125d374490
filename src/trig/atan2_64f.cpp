// The angle of the point (x, y), double (trig/atan_core.hpp): A53 as a double-word, rounded once, 0.53 ulp; A50 and A26
// as one double.
//
// The vector formula covers magnitudes within 2^-480 .. 2^480. The rest goes element by element: both are scaled by a
// power of two, and where one is above 2^60 times the other the angle is a multiple of pi/2 or the quotient.
//
// Exceptional inputs: zeros, infinities and NaN as in C's Annex F. A quotient below the normal range reports underflow.
#include "frame/export.hpp"
#include "kelvm/trig.h"
#include "trig/atan2_special.hpp"

namespace kelvm::inline KELVM_BUILD::atan2_64f {
namespace {

template <Accuracy A> struct Atan2Double : KernelDefaults {
  using Element = double;
  static constexpr bool spurious_underflow = true; // powers of small quotients
  static constexpr double least = 0x1p-480, most = 0x1p480;

  template <class V> static SignMask<V> special(V y, V x) { return outside(abs(y)) | outside(abs(x)); }
  template <class V> static V formula(V y, V x) {
    if constexpr (A == Accuracy::full) {
      const DoubleWord<V> t = angle<A>(y, x);
      return rounded(t);
    } else {
      return angle<A>(y, x);
    }
  }
  static double element(double y, double x, kelStatus& status) {
    return arc_tangent_2(y, x, status, [](double y, double x) {
      const double larger = y > abs(x) ? y : abs(x), lesser = y > abs(x) ? abs(x) : y;
      if (lesser < larger * 0x1p-60) {
        if (y == larger) return inverse_trig::half_pi_head;
        return x < 0 ? inverse_trig::pi_head : y / x;
      }
      const double scale = larger > 1 ? 0x1p-600 : 0x1p600;
      return outside(y) | outside(abs(x)) ? formula(y * scale, x * scale) : formula(y, x);
    });
  }

private:
  template <class V> static SignMask<V> outside(V magnitude) {
    return (int_bits(magnitude) - int_bits(splat<V>(least))) | above(magnitude, most);
  }
};

} // namespace

KELVM_BINARY(kelsAtan2_64f_A26, Atan2Double<Accuracy::bits27>)
KELVM_BINARY(kelsAtan2_64f_A50, Atan2Double<Accuracy::bits50>)
KELVM_BINARY(kelsAtan2_64f_A53, Atan2Double<Accuracy::full>)

} // namespace kelvm::inline KELVM_BUILD::atan2_64f
