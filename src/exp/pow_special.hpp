// What Pow and Powx share for both types: the special cases of x^y and the codes of results that leave the normal
// range.
#pragma once

#include "frame/status.hpp"

namespace kelvm::inline KELVM_BUILD {

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
/// applies: it takes `tame` then, as its flags count though no element has its results.
template <class T> struct Exponent {
  T value, tame;
  Bits<T> base_sign = 0, result_sign = 0;
  bool ordinary;

  Exponent(T y, T largest) : value(y), ordinary(!any(above(abs(y), largest))) {
    tame = ordinary ? y : T(1);
    const Parity p = ordinary ? parity(y) : Parity::fraction;
    if (p != Parity::fraction) base_sign = sign_bit<T>;
    if (p == Parity::odd) result_sign = sign_bit<T>;
  }
  /// The bases whose power is a NaN: with 0 there are none.
  template <class V> SignMask<V> nan_lanes(V x) const { return value == 0 ? SignMask<V>{} : quiet_nans(x); }
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

} // namespace kelvm::inline KELVM_BUILD
