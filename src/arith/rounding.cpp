// Rounding to integral values, and the split into integral and fractional part. Every result is exact.
#include "frame/any_operands.hpp"
#include "frame/export.hpp"
#include "kelvm/arith.h"
#include "simd/integral.hpp"

namespace kelvm::inline KELVM_BUILD::rounding_family {
namespace {

template <class T, Rounding How> struct Rounded : KernelDefaults {
  using Element = T;
  static constexpr int vectors_in_flight = single_operation_in_flight;
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

/// To nearest, halfway cases away from zero: the largest number below a half added to the magnitude, and cut off. Every
/// zero result is +0, and an infinity raises invalid.
template <class T> struct Round : KernelDefaults {
  using Element = T;
  static constexpr bool covers_everything = true;
  template <class V> static V formula(V x) {
    return with_positive_zeros(round<Rounding::to_zero>(x + with_sign(splat<V>(T(0.5) * below_one<T>), sign_of(x))));
  }
};

/// Integral part toward zero and fractional part, both with the sign of x. Nothing is rounded, so that the mode says no
/// more than where the call's flags end.
template <class T> struct ModfByFraction : KernelDefaults {
  using Element = T;
  static constexpr Mode mode = Mode::toward_zero_exactly;
  static constexpr bool covers_everything = true;
  template <class V> static Pair<V> formula(V x) {
    const V integral = round<Rounding::to_zero_quiet>(x);
    return {integral, with_sign(fraction(x, integral), sign_of(x))};
  }
};

/// The fractions of a block: those of infinities and NaNs are NaNs, the others below 1. A quiet NaN gives itself.
template <class V> struct FractionTest {
  Bits<V> seen{};
  SignMask<V> undecided{};

  bool any() const { return kelvm::any(bit_cast<V>(seen + seen)) && kelvm::any(undecided); }
  BitMask lanes() const { return movemask(undecided); }
};
template <class T> struct ModfByDifference : AnyOperands<KernelDefaults> {
  using Element = T;
  static constexpr Mode mode = Mode::toward_zero_exactly;
  template <class V> using ResultTest = FractionTest<V>;
  template <class V> static Pair<V> formula(V x, FractionTest<V>& test) {
    const V integral = round<Rounding::to_zero_quiet>(x);
    const V fraction = x - integral;
    test.seen |= bits(fraction);
    test.undecided |= above(abs(x), largest_finite<T>) & ~quiet_nans(x);
    return {integral, with_sign(fraction, sign_of(x))};
  }
  template <class V> static Pair<V> nan_result(V nan) { return {nan, nan}; }
  static Pair<T> element(T x, kelStatus&) {
    if (is_nan(x)) return {x + x, x + x};
    return {x, with_sign(T(0), sign_of(x))};
  }
};
template <class T> using Modf = std::conditional_t<has_fraction, ModfByFraction<T>, ModfByDifference<T>>;

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
