// Rounding to integral values, and the split into integral and fractional part. Every result is exact.
#include "frame/export.hpp"
#include "kelvm/arith.h"

namespace kelvm::inline KELVM_BUILD::rounding_family {
namespace {

template <class T, Rounding How> struct Rounded : KernelDefaults {
  using Element = T;
  static constexpr Mode mode =
      How == Rounding::current || How == Rounding::current_quiet ? Mode::callers : Mode::nearest;
  static constexpr bool covers_everything = true;
  template <class V> static V formula(V x) { return round<How>(x); }
};
template <class T> using Ceil = Rounded<T, Rounding::up>;
template <class T> using Floor = Rounded<T, Rounding::down>;
template <class T> using Trunc = Rounded<T, Rounding::to_zero>;
template <class T> using Rint = Rounded<T, Rounding::current>;
template <class T> using NearbyInt = Rounded<T, Rounding::current_quiet>;

/// To nearest, halfway cases away from zero: ties-to-even, then one step away from zero where that went toward zero
/// by exactly a half. Adding the correction, +0 where there is none, makes every zero result +0; for an infinity the
/// difference is inf - inf and raises invalid.
template <class T> struct Round : KernelDefaults {
  using Element = T;
  static constexpr bool covers_everything = true;
  template <class V> static V formula(V x) {
    const Bits<V> sign = sign_of(x);
    const V nearest = round<Rounding::nearest_even>(x);
    const V away = flip_sign(x - nearest, sign);
    return nearest + zero_unless(away == splat<V>(0.5), with_sign(splat<V>(1), sign));
  }
};

/// Integral part toward zero and fractional part, both with the sign of x. Exact in every mode; the mode is what makes
/// the call's flags end with it.
template <class T> struct Modf : KernelDefaults {
  using Element = T;
  static constexpr Mode mode = Mode::toward_zero;

  template <class V> static SignMask<V> special(V x) { return above(abs(x), largest_finite<T>); }
  template <class V> static Pair<V> formula(V x) {
    const V integral = round<Rounding::to_zero>(x);
    return {integral, with_sign(x - integral, sign_of(x))};
  }
  static Pair<T> element(T x, kelStatus&) {
    if (is_nan(x)) return {x + x, x + x};
    return {x, with_sign(T(0), sign_of(x))};
  }
};

} // namespace

KELVM_UNARY(kelsCeil_32f, Ceil<float>)
KELVM_UNARY(kelsCeil_64f, Ceil<double>)
KELVM_UNARY(kelsFloor_32f, Floor<float>)
KELVM_UNARY(kelsFloor_64f, Floor<double>)
KELVM_UNARY(kelsTrunc_32f, Trunc<float>)
KELVM_UNARY(kelsTrunc_64f, Trunc<double>)
KELVM_UNARY(kelsRound_32f, Round<float>)
KELVM_UNARY(kelsRound_64f, Round<double>)
KELVM_UNARY(kelsRint_32f, Rint<float>)
KELVM_UNARY(kelsRint_64f, Rint<double>)
KELVM_UNARY(kelsNearbyInt_32f, NearbyInt<float>)
KELVM_UNARY(kelsNearbyInt_64f, NearbyInt<double>)
KELVM_TWO_OUTPUTS(kelsModf_32f, Modf<float>)
KELVM_TWO_OUTPUTS(kelsModf_64f, Modf<double>)

} // namespace kelvm::inline KELVM_BUILD::rounding_family
