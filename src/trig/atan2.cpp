// The angle of the point (x, y).
//
// Double (trig/atan_core.hpp): A53 as a double-word, rounded once, 0.53 ulp; A50 as one double; A26 without a table, as
// the floats below: that takes one division instead of two. Its error is 2^-31. The vector formula covers magnitudes
// within 2^-480 .. 2^480. The rest goes element by element: both are scaled by a power of two, and where one is above
// 2^60 times the other the angle is a multiple of pi/2 or the quotient.
//
// Float A24: in double with an error of 2^-41, rounded once: 0.50001 ulp. A21 and A11: in float arithmetic, without a
// table: with t = atan q, q = min(|y|, |x|) / max(|y|, |x|), an odd polynomial on [0, 1], the angle is t, pi/2 - t,
// pi/2 + t or pi - t. pi and pi/2 are the floats below them, so that no result is beyond. Errors 2^-21.7 and 2^-11.9.
//
// Exceptional inputs: zeros, infinities and NaN as in C's Annex F. Results below the normal range report underflow;
// those of floats are correctly rounded at every accuracy.
#include "frame/edges.hpp"
#include "frame/export.hpp"
#include "kelvm/trig.h"
#include "trig/atan_core.hpp"

namespace kelvm::inline KELVM_BUILD::atan2 {
namespace {

/// For every pair of operands, special cases as in C's Annex F: positive(y, x) computes the angle of finite y > 0 and
/// x != 0 as the type rounds it.
template <class T, class Positive> T arc_tangent_2(T y, T x, kelStatus& status, Positive positive) {
  if (is_nan(y)) return y + y;
  if (is_nan(x)) return x + x;
  const bool left = sign_of(x) != 0;
  const auto with_sign_of_y = [y](double angle) { return with_sign(T(angle), sign_of(y)); };
  if (y == 0 || (abs(x) == infinity<T> && abs(y) != infinity<T>)) return with_sign_of_y(left ? pi_hi : 0);
  if (abs(y) == infinity<T> && abs(x) == infinity<T>) return with_sign_of_y(left ? pi_hi * 3 / 4 : pi_hi / 4);
  if (x == 0 || abs(y) == infinity<T>) return with_sign_of_y(pi_hi / 2);
  const T result = with_sign(positive(abs(y), x), sign_of(y));
  return abs(result) < smallest_normal<T> ? underflow(status, result) : result;
}

template <class T> struct Atan2 : KernelDefaults {
  using Element = T;
  static constexpr bool spurious_underflow = true; // powers of small quotients, small quotients left of the y axis
  /// Magnitudes of the vector formula.
  static constexpr T least = sizeof(T) == 8 ? T(0x1p-480) : T(0x1p-149f);
  static constexpr T most = sizeof(T) == 8 ? T(0x1p480) : largest_finite<T>;

  static constexpr Magnitudes ordinary = sizeof(T) == 8 ? Magnitudes{0x1p-20, 0x1p20} : Magnitudes{0x1p-14, 0x1p14};
  template <class V> static SignMask<V> special(V y, V x) {
    return outside(abs(y), least, most) | outside(abs(x), least, most);
  }
  template <class V> static SignMask<V> nan_lanes(V y, V x) { return quiet_nans(y, x); }
  template <class V> static V nan_result(V y, V x) { return first_nan(y, x); }
  /// Points on the axes.
  static constexpr kelStatus edge_code = kelStatusOk;
  template <class V> static SignMask<V> edge_lanes(V y, V x) {
    return (zero_lanes(y) | zero_lanes(x)) & ~(above(abs(y), largest_finite<T>) | above(abs(x), largest_finite<T>));
  }
  template <class V> static V edge_result(V y, V x) {
    const V along_x = select(int_bits(x), splat<V>(T(pi_hi)), V{});
    return with_sign(select(zero_lanes(y), along_x, splat<V>(T(pi_hi / 2))), sign_of(y));
  }
  /// By the difference of the exponents: quotients beyond 2^40, of floats 2^28, and their reciprocals. Subnormal floats
  /// have none.
  template <class V> static SignMask<V> noisy(V y, V x) {
    constexpr Lane<Bits<V>> limit = sizeof(T) == 8 ? 40L << 52 : 28L << 23;
    const Bits<V> difference = bits(abs(y)) - bits(abs(x));
    Bits<V> apart = (limit - difference) | (limit + difference);
    if constexpr (sizeof(T) == 4) apart |= below(abs(y), smallest_normal<T>) | below(abs(x), smallest_normal<T>);
    return bit_cast<SignMask<V>>(apart);
  }
};

template <Accuracy A> struct Atan2Double : Atan2<double> {
  template <class V> static V formula(V y, V x) {
    if constexpr (A == Accuracy::full) {
      const DoubleWord<V> t = angle<A>(y, x);
      return rounded(t);
    } else if constexpr (A == Accuracy::bits27) {
      return angle_by_quotient<inverse_trig::atan_whole_bits27>(y, x);
    } else {
      return angle<A>(y, x);
    }
  }
  static double element(double y, double x, kelStatus& status) {
    return arc_tangent_2(y, x, status, [](double y, double x) {
      const double larger = y > abs(x) ? y : abs(x), lesser = y > abs(x) ? abs(x) : y;
      if (lesser < larger * 0x1p-60) {
        if (y == larger) return pi_hi / 2;
        return x < 0 ? pi_hi : y / x;
      }
      const double scale = larger > 1 ? 0x1p-600 : 0x1p600;
      return any(special(y, x)) ? formula(y * scale, x * scale) : formula(y, x);
    });
  }
};

struct Atan2Float : Atan2<float> {
  static float element(float y, float x, kelStatus& status) {
    return arc_tangent_2(y, x, status,
                         [](float y, float x) { return float(angle<Accuracy::bits40>(double(y), double(x))); });
  }

  /// The lanes below the normal range.
  template <class V> struct ResultTest {
    SignMask<V> tiny{};
    void add(V result) { tiny |= int_bits(abs(result)) - int_bits(splat<V>(smallest_normal<float>)); }
    bool any() const { return lanes() != 0; }
    BitMask lanes() const { return movemask(tiny); }
  };
};

struct Atan2A24 : Atan2Float {
  template <class V> static V formula(V y, V x, ResultTest<V>& test) {
    const V result = in_double([](auto y, auto x) { return angle<Accuracy::bits40>(y, x); }, y, x);
    test.add(result);
    return result;
  }
};

template <auto& Series> struct Atan2Single : Atan2Float {
  static constexpr int vectors_in_flight = few_vectors_in_flight;
  template <class V> static V formula(V y, V x, ResultTest<V>& test) {
    const V result = angle_by_quotient<Series>(y, x);
    test.add(result);
    return result;
  }
};

} // namespace

KELVM_BINARY(kelsAtan2_32f_A11, Atan2Single<inverse_trig::atan_bits11>)
KELVM_BINARY(kelsAtan2_32f_A21, Atan2Single<inverse_trig::atan_bits21>)
KELVM_BINARY(kelsAtan2_32f_A24, Atan2A24)
KELVM_BINARY(kelsAtan2_64f_A26, Atan2Double<Accuracy::bits27>)
KELVM_BINARY(kelsAtan2_64f_A50, Atan2Double<Accuracy::bits50>)
KELVM_BINARY(kelsAtan2_64f_A53, Atan2Double<Accuracy::full>)

} // namespace kelvm::inline KELVM_BUILD::atan2
