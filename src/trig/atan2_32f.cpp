// The angle of the point (x, y), float.
//
// A24: in double (trig/atan_core.hpp) with an error of 2^-41, rounded once: 0.50001 ulp.
//
// A21, A11: in float arithmetic, without a table: with t = atan q, q = min(|y|, |x|) / max(|y|, |x|), an odd polynomial
// on [0, 1], the angle is t, pi/2 - t, pi/2 + t or pi - t. pi and pi/2 are the floats below them, so that no result is
// beyond. Errors 2^-22 and 2^-12.
//
// Exceptional inputs: zeros, infinities and NaN as in C's Annex F. Results below the normal range report underflow;
// they are correctly rounded at every accuracy.
#include "frame/export.hpp"
#include "kelvm/trig.h"
#include "trig/atan2_special.hpp"

namespace kelvm::inline KELVM_BUILD::atan2_32f {
namespace {

struct Atan2Single : KernelDefaults {
  using Element = float;
  static constexpr bool spurious_underflow = true; // small quotients left of the y axis

  /// Infinities, NaNs, zeros.
  template <class V> static SignMask<V> special(V y, V x) {
    const V up = abs(y), right = abs(x);
    return above(up, largest_finite<float>) | above(right, largest_finite<float>) | (int_bits(up) - 1) |
           (int_bits(right) - 1);
  }
  static float element(float y, float x, kelStatus& status) {
    return arc_tangent_2(y, x, status,
                         [](float y, float x) { return float(angle<Accuracy::bits40>(double(y), double(x))); });
  }

  /// SignMask the lanes below the normal range.
  template <class V> struct ResultTest {
    SignMask<V> tiny{};
    void add(V result) { tiny |= int_bits(abs(result)) - int_bits(splat<V>(smallest_normal<float>)); }
    bool any() const { return lanes() != 0; }
    BitMask lanes() const { return movemask(tiny); }
  };
};

struct Atan2A24 : Atan2Single {
  template <class V> static V formula(V y, V x, ResultTest<V>& test) {
    const V result = in_double([](auto y, auto x) { return angle<Accuracy::bits40>(y, x); }, y, x);
    test.add(result);
    return result;
  }
};

template <auto& Series> struct Atan2Short : Atan2Single {
  template <class V> static V formula(V y, V x, ResultTest<V>& test) {
    const V result = float_angle<Series>(y, x);
    test.add(result);
    return result;
  }
};

} // namespace

KELVM_BINARY(kelsAtan2_32f_A11, Atan2Short<inverse_trig::atan_bits11>)
KELVM_BINARY(kelsAtan2_32f_A21, Atan2Short<inverse_trig::atan_bits21>)
KELVM_BINARY(kelsAtan2_32f_A24, Atan2A24)

} // namespace kelvm::inline KELVM_BUILD::atan2_32f
