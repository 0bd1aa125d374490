// Real powers: the special cases, and the arithmetic at every accuracy, as the kernel files pow_64f.cpp and pow_32f.cpp
// describe it. The complex powers take it for real operands.
#pragma once

#include "exp/exp_core.hpp"
#include "exp/log_core.hpp"
#include "frame/edges.hpp"
#include "frame/kernel.hpp"

namespace kelvm::inline KELVM_BUILD {

// --- special cases ---------------------------------------------------------------------------------------------------

enum class Parity { odd, even, fraction };

/// Whether y is an odd integer, an even one (infinities and whatever has no odd bit included) or no integer. Not for
/// NaN.
template <class T> inline Parity parity(T y) {
  constexpr int fraction_bits = sizeof(T) == 8 ? 52 : 23, bias = sizeof(T) == 8 ? 1023 : 127;
  const auto magnitude = bits(abs(y));
  const int exponent = int(magnitude >> fraction_bits) - bias; // the value of the leading bit
  if (magnitude == 0) return Parity::even;
  if (exponent < 0) return Parity::fraction;
  if (exponent > fraction_bits) return Parity::even;
  const Bits<T> units = (magnitude & ((Bits<T>(1) << fraction_bits) - 1)) | (Bits<T>(1) << fraction_bits);
  const int below_point = fraction_bits - exponent;
  if ((units & ((Bits<T>(1) << below_point) - 1)) != 0) return Parity::fraction;
  return (units >> below_point) & 1 ? Parity::odd : Parity::even;
}

/// The one exponent of a Powx call and what it means for negative bases: where it is an integer, the vector formula
/// takes |x| for x, and an odd one gives the sign back to the result. `ordinary` is unset where no vector formula
/// applies: it takes `safe` then, as its flags count though no element has its results.
template <class T> struct Exponent {
  T value, safe;
  Bits<T> base_sign = 0, result_sign = 0;
  bool ordinary;

  Exponent(T y, T largest) : value(y), ordinary(!any(above(abs(y), largest))) {
    safe = ordinary ? y : T(1);
    const Parity p = ordinary ? parity(y) : Parity::fraction;
    if (p != Parity::fraction) base_sign = sign_bit<T>;
    if (p == Parity::odd) result_sign = sign_bit<T>;
  }
  /// The bases whose power is a NaN: with 0 there are none.
  template <class V> SignMask<V> nan_lanes(V x) const { return value == 0 ? SignMask<V>{} : quiet_nans(x); }
  /// Zeros, for a positive exponent.
  template <class V> SignMask<V> edge_lanes(V x) const {
    return ordinary && int_bits(value) > 0 ? zero_lanes(x) : SignMask<V>{};
  }
  template <class V> V base(V x) const { return from_bits<V>(bits(x) & ~base_sign); }
  template <class V> V result(V positive, V x) const { return from_bits<V>(bits(positive) | (bits(x) & result_sign)); }
};

/// x^y for every pair of operands, special cases as in C's Annex F: positive(x, y) computes the power of a positive
/// finite x != 1 and a finite y != 0, infinity or zero where it leaves the range.
template <class T, class Positive> inline T power(T x, T y, kelStatus& status, Positive positive) {
  if (y == 0 || x == 1) return 1;
  if (is_nan(x)) return x + x;
  if (y != y) return y + y;
  const Parity exponent = parity(y);
  const bool negative_x = sign_of(x) != 0;
  const T sign = negative_x && exponent == Parity::odd ? T(-0.0) : T(0); // of the result
  const T magnitude = abs(x);
  if (magnitude == 0 || magnitude == infinity<T>) {
    if ((y < 0) == (magnitude == 0)) {
      // Infinite; a pole but for 0^-inf.
      if (magnitude == 0 && abs(y) != infinity<T>) return pole(status, sign);
      return with_sign(infinity<T>, sign_of(sign));
    }
    return sign;
  }
  if (abs(y) == infinity<T>) return magnitude == 1 ? T(1) : (magnitude > 1) == (y > 0) ? infinity<T> : T(0);
  if (negative_x && exponent == Parity::fraction) return domain_error<T>(status);
  if (magnitude == 1) return with_sign(T(1), sign_of(sign));
  const T result = positive(magnitude, y);
  if (result == infinity<T>) return overflow(status, sign);
  if (result < smallest_normal<T>) return underflow(status, with_sign(result, sign_of(sign)));
  return with_sign(result, sign_of(sign));
}

/// Quiet NaNs that are the power: not so where y is 0 or x is 1. Both that and infinities are left to power().
template <class V> inline SignMask<V> nan_powers(V x, V y) {
  const Bits<V> from_1 = bits(x) - bits(splat<V>(1));
  return quiet_nans(x, y) & nonzero(y) & bit_cast<SignMask<V>>(from_1 | -from_1);
}

/// Zeros whose power is +0: +0 itself, with a positive normal exponent.
template <class V> inline SignMask<V> zero_powers(V x, V y) {
  using T = Lane<V>;
  return sign_mask<V>(int_bits(x) == Int<V>{}) & ~outside(y, smallest_normal<T>, largest_finite<T>);
}

// --- doubles --------------------------------------------------------------------------------------------------------

/// What e is raised to, as hi + lo with an exact upper word, |lo| < 2^-9 |hi|, and their sum, rounded.
template <class V> struct PowerOfE { V hi, lo, near; };

/// y (hi + lo).
template <class V> inline PowerOfE<V> times(V y, DoubleWord<V> logarithm) {
  V hi, lo;
  if constexpr (has_fused) {
    hi = y * logarithm.hi;
    lo = mul_add(y, logarithm.lo, mul_sub(y, logarithm.hi, hi));
  } else {
    const V y_head = head_of(y), log_head = head_of(logarithm.hi);
    const V log_rest = (logarithm.hi - log_head) + logarithm.lo;
    hi = y_head * log_head;
    lo = y * log_rest + (y - y_head) * log_head;
  }
  return {hi, lo, hi + lo};
}

struct PowA53 {
  using Rows = ExactRows;
  static constexpr Accuracy exponential = Accuracy::full;
  template <class V> static PowerOfE<V> exponent(const LogReduced<V>& x, V y) {
    return times(y, ln_extended(log_parts<Natural>(x)));
  }
};
struct PowA50 {
  using Rows = ExactRows;
  static constexpr Accuracy exponential = Accuracy::bits50;
  template <class V> static PowerOfE<V> exponent(const LogReduced<V>& x, V y) { return times(y, ln_full_of(x)); }
};
struct PowA26 {
  using Rows = OneRow;
  static constexpr Accuracy exponential = Accuracy::bits27;
  template <class V> static PowerOfE<V> exponent(const LogReduced<V>& x, V y) {
    const V product = y * logarithm_by_quotient(x);
    return {product, V{}, product};
  }
};

template <class P> struct Power : KernelDefaults {
  using Element = double;
  static constexpr bool spurious_underflow = true, spurious_exceptions = true; // y ln x of a tiny, infinite or NaN y
  static constexpr bool undecided_are_quiet = false;                           // results out of range
  static constexpr double largest_y = 0x1p100;
  static constexpr double largest_exponent = 708; // results are normal up to there

  template <class V> static SignMask<V> noisy(V, V y) { return outside_but_zero(abs(y), 0x1p-200, largest_y); }

  /// The lanes that leave it; a NaN or infinite y shows there too.
  template <class V> struct ResultTest {
    SignMask<V> out_of_range{};
    void add(SignMask<V> mask) { out_of_range |= mask; }
    bool any() const { return lanes() != 0; }
    BitMask lanes() const { return movemask(out_of_range); }
  };

  template <class V> static V positive(V x, V y, ResultTest<V>& undecided) {
    const PowerOfE<V> exponent = P::exponent(log_reduce<typename P::Rows>(x), y);
    undecided.add(above(abs(exponent.near), largest_exponent));
    return in_range(exponent);
  }
  static double any(double x, double y, kelStatus& status) {
    return power(x, y, status, [](double x, double y) {
      const LogReduced<double> reduced = log_reduce_any<typename P::Rows>(x);
      // Beyond, the power is out of range for every x.
      if (y > largest_y) y = largest_y;
      if (y < -largest_y) y = -largest_y;
      const PowerOfE<double> exponent = P::exponent(reduced, y);
      if (abs(exponent.near) <= largest_exponent) return in_range(exponent);
      const DoubleWord<double> normal = normalised(DoubleWord<double>{exponent.hi, exponent.lo});
      return exp_any(normal.hi, normal.lo);
    });
  }

private:
  template <class V> static V in_range(const PowerOfE<V>& exponent) {
    if constexpr (P::exponential == Accuracy::bits27)
      return exp_normal<P::exponential>(exponent.hi);
    else
      return exp_normal<P::exponential>(exponent.hi, exponent.lo, exponent.near);
  }
};

// --- floats ---------------------------------------------------------------------------------------------------------

/// Tells by the largest |y log x|, for a block by the upper words of doubles, whether one is above P::limit: there
/// results may leave the range.
template <class P> struct RangeTest {
  /// half: which half of a float vector the exponents belong to.
  template <class D> void add(D exponent, int half) {
    constexpr int words = int(sizeof(D) / 4);
    const D magnitude = abs(exponent);
    if constexpr (sizeof(D) > sizeof(double)) {
      const auto upper = bit_cast<Vec<std::uint32_t, words>>(magnitude);
      largest = upper > largest ? upper : largest;
    }
    undecided |= movemask(above(magnitude, P::limit)) << half * kelvm::lanes<D>;
  }
  bool any() const { return kelvm::any(above(bit_cast<Native<double>>(largest), P::limit)); }
  BitMask lanes() const { return undecided; }

private:
  Vec<std::uint32_t, vector_bytes / 4> largest{};
  BitMask undecided = 0;
};

/// A power by a logarithm in double, base^(y log x): P has that logarithm of a reduced argument, the powers of the
/// base, and the |y log x| up to which the result is a normal float.
template <class P> struct PowInDouble : KernelDefaults {
  static constexpr bool spurious_exceptions = !flags_stay;
  static constexpr bool undecided_are_quiet = false; // results out of range
  template <class V> using ResultTest = RangeTest<P>;

  /// An infinite or NaN y shows in y log x.
  template <class V> static SignMask<V> special_exponent(V y) {
    return flags_stay ? above(abs(y), largest_finite<float>) : SignMask<V>{};
  }
  static constexpr float smallest_y = 0x1p-60f, largest_y = largest_finite<float>;

  template <class V> static V positive(V x, V y, RangeTest<P>& test) {
    const auto reduced = log_reduce_floats<typename P::Rows>(x);
    const auto low = exponent<0>(reduced, y, test), high = exponent<1>(reduced, y, test);
    return P::power(low, high);
  }
  static double exponent(float x, float y) {
    return double(y) * P::logarithm_of(log_reduce<typename P::Rows>(double(x)));
  }

private:
  template <int Half, class Reduced, class V>
  static Native<double> exponent(const Reduced& x, V y, RangeTest<P>& test) {
    const Native<double> product = widen<Half>(y) * P::logarithm_of(x.template half<Half>());
    test.add(product, Half);
    return product;
  }
};
struct PowA24 : PowInDouble<PowA24> {
  using Rows = RoundedRows;
  static constexpr double limit = 87;
  template <class Reduced> static auto logarithm_of(const Reduced& x) {
    return logarithm<Natural, Accuracy::bits46>(x);
  }

  static float any(float x, float y) {
    const double exponent = PowInDouble::exponent(x, y);
    if (exponent > 100) return infinity<float>;
    if (exponent < -110) return 0;
    return float(exp_normal<Accuracy::bits40>(exponent));
  }
  static Native<float> power(Native<double> low, Native<double> high) {
    const auto f = [](auto exponent) {
      return exp_normal<Accuracy::bits40>(flags_stay ? zero_unless_within(exponent) : exponent);
    };
    return narrow(f(low), f(high));
  }

private:
  template <class D> static D zero_unless_within(D exponent) {
    return select(above(abs(exponent), limit), D{}, exponent);
  }
};
struct PowA21 : PowInDouble<PowA21> {
  /// Without fused operations a longer table saves more than it costs.
  using Rows = std::conditional_t<has_fused, ShortRows, LongRows>;
  static constexpr double limit = 125.5;
  template <class Reduced> static auto logarithm_of(const Reduced& x) {
    return logarithm<Binary, Accuracy::bits27, Rows>(x);
  }

  static float any(float x, float y) {
    const double exponent = PowInDouble::exponent(x, y);
    return abs(exponent) <= limit ? float_exp2_of_fixed_point(fixed_point(exponent)) : PowA24::any(x, y);
  }
  static Native<float> power(Native<double> low, Native<double> high) {
    return float_exp2_of_fixed_point(fixed_point(low, high));
  }
};
struct PowA11 : KernelDefaults {
  static constexpr float largest_exponent = 87, smallest_y = 0x1p-30f, largest_y = 0x1p100;
  template <class V> using ResultTest = BitMask;
  template <class V> static SignMask<V> special_exponent(V y) { return above(abs(y), largest_y); }

  template <class V> static V positive(V x, V y, BitMask& undecided) {
    const V exponent = y * float_logarithm<Natural, Accuracy::bits21>(x);
    const SignMask<V> out_of_range = above(abs(exponent), largest_exponent);
    undecided |= movemask(out_of_range);
    return float_exp_bits11(select(out_of_range, V{}, exponent));
  }
  static float any(float x, float y) {
    if (!kelvm::any(not_normal_positive(x) | above(abs(y), largest_y))) {
      BitMask undecided = 0;
      const float result = positive(x, y, undecided);
      if (undecided == 0) return result;
    }
    return PowA21::any(x, y);
  }
};

template <class P> inline float power_of_any(float x, float y, kelStatus& status) {
  return power(x, y, status, [](float x, float y) { return P::any(x, y); });
}

} // namespace kelvm::inline KELVM_BUILD
