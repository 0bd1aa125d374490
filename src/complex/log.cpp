// Complex logarithms, natural and decimal: log z = log |z| + i angle(z) / ln b, with complex/log.hpp and
// trig/atan_core.hpp.
//
//   64fc A53   both parts as double-words, each rounded once: 0.51 ulp a part. Next to the unit circle the exact norm
//              takes the place of the fast one.
//        A50   one double each, the angle to 2^-50.5 or so, the real part to 2^-51 of |log z|
//        A26   shorter polynomials, and an angle without a table
//   32fc A24   in double to 2^-43, rounded once
//        A21, A11   in float
//
// The formulas cover doubles whose parts are zero or in a window that keeps the squares in range, and all finite floats
// at A24; the rest is scaled, element by element. Zero is a pole. Infinities and NaNs as in C's Annex G.6.3.2.
#include "complex/log.hpp"
#include "frame/export.hpp"
#include "kelvm/complex.h"
#include "root/scaled.hpp"

namespace kelvm::inline KELVM_BUILD::complex_logarithm {
namespace {

/// An angle as the imaginary part of a logarithm; it has the sign of y, that of a zero too.
template <class Base, class V> V scaled_angle(DoubleWord<V> angle, V y) {
  if constexpr (std::is_same_v<Base, Natural>) {
    return rounded(angle);
  } else {
    using namespace log_tables;
    const V head = head_of(angle.hi), tail = (angle.hi - head) + angle.lo;
    const V rest = mul_add(head, splat<V>(inverse_ln10_tail), tail * inverse_ln10);
    return with_sign(mul_add(head, splat<V>(inverse_ln10_head), rest), sign_of(y));
  }
}
template <class Base, class V> V scaled_angle(V angle) {
  if constexpr (std::is_same_v<Base, Natural>)
    return angle;
  else
    return angle * Lane<V>(log_tables::inverse_ln10);
}

// --- accuracies -----------------------------------------------------------------------------------------------------

template <class Base> struct Full {
  template <class V> static V imaginary(V x, V y) { return scaled_angle<Base>(angle<Accuracy::full>(y, x), y); }
  template <class V> static Pair<V> formula(V x, V y, BitMask& undecided) {
    const DoubleWord<V> re = log_abs_full<Base>(x, y, undecided);
    return {re.hi + re.lo, imaginary(x, y)};
  }
  template <class V> static Pair<V> wide_formula(V x, V y) {
    const DoubleWord<V> re = log_abs_full<Base>(x, y);
    return {re.hi + re.lo, imaginary(x, y)};
  }
};

template <class Base> struct A50Formula {
  template <class V> static Pair<V> formula(V x, V y) {
    return {log_abs<Base, Accuracy::bits50>(x, y), scaled_angle<Base>(angle<Accuracy::bits50>(y, x))};
  }
};
template <class Base> struct A26Formula {
  template <class V> static Pair<V> formula(V x, V y) {
    return {log_abs<Base, Accuracy::bits27>(x, y),
            scaled_angle<Base>(angle_by_quotient<inverse_trig::atan_whole_bits27>(y, x))};
  }
};

template <class Base, Accuracy L, auto& AngleSeries> struct FloatShort {
  template <class V> static Pair<V> formula(V x, V y) {
    return {float_log_abs<Base, L>(x, y), scaled_angle<Base>(angle_by_quotient<AngleSeries>(y, x))};
  }
};

// --- elements -------------------------------------------------------------------------------------------------------

/// Angles in quarters of pi, rounded.
template <class Base> double quarters_of_pi(int n) {
  constexpr DoubleWord<double> of[] = {{},
                                       {0x1.921fb54442d18p-1, 0x1.1a62633145c07p-55},
                                       {0x1.921fb54442d18p+0, 0x1.1a62633145c07p-54},
                                       {0x1.2d97c7f3321d2p+1, 0x1.a79394c9e8a0ap-54},
                                       {0x1.921fb54442d18p+1, 0x1.1a62633145c07p-53}};
  return scaled_angle<Base>(of[n], 1.0);
}

/// Zeros, infinities and NaNs.
template <class Base, class T> Pair<T> special_logarithm(T x, T y, kelStatus& status) {
  const T nan = default_nan<T>();
  const bool x_infinite = is_infinite(x), y_infinite = is_infinite(y), negative = sign_of(x) != 0;
  if (is_nan(x) || is_nan(y)) return {x_infinite || y_infinite ? infinity<T> : nan, nan};
  const int n = y_infinite ? x_infinite ? negative ? 3 : 1 : 2 : negative ? 4 : 0;
  const T im = with_sign(T(quarters_of_pi<Base>(n)), sign_of(y));
  return {x_infinite || y_infinite ? infinity<T> : pole<T>(status, T(-0.0)), im};
}

/// Finite, not both zero.
template <class Base> Pair<double> logarithm_of_any(double x, double y) {
  const double larger = abs(x) > abs(y) ? abs(x) : abs(y), smaller = abs(x) > abs(y) ? abs(y) : abs(x);
  const double scale = larger > 0x1p500 ? 0x1p-600 : larger < 0x1p-400 ? 0x1p600 : 1;
  const double exponent = scale == 1 ? 0 : scale < 1 ? 600 : -600;

  kelStatus unused; // no part of a logarithm is reported

  double re;
  if (larger == 1 && smaller < 0x1p-450) {
    const double up = smaller * 0x1p400;
    DoubleWord<double> square = two_product(up, up);
    if constexpr (std::is_same_v<Base, Decimal>)
      square = multiply(square, DoubleWord<double>{log_tables::inverse_ln10, log_tables::inverse_ln10_rest});
    re = smaller == 0 ? 0 : scaled_result(square, 0x1p-801, unused);
  } else {
    const double a = larger * scale, b = smaller * scale < 0x1p-480 ? 0 : smaller * scale;
    const DoubleWord<double> h = norm_double_word(a, b);
    NormParts<Base, double> parts(h);
    if (scale == 1) parts.replace(norm_near_one(h.hi), norm_minus_one(a, b));
    parts.p.hi += 2 * exponent * Base::log_of_2_hi;
    parts.p.lo += 2 * exponent * Base::log_of_2_lo;
    const DoubleWord<double> log = logarithm_full<Base>(parts.joined());
    re = 0.5 * (log.hi + log.lo);
  }

  double im;
  if (smaller >= larger * 0x1p-100) {
    const double up = scale == 1 && larger < 1 ? 0x1p300 : scale;
    im = Full<Base>::imaginary(x * up, abs(y) * up);
  } else if (abs(y) == larger) {
    im = quarters_of_pi<Base>(2);
  } else if (sign_of(x) != 0) {
    im = quarters_of_pi<Base>(4);
  } else {
    // y / x, which may be subnormal
    const double up = abs(y) >= 0x1p-200 ? 1 : scale < 1 ? 0x1p300 : 0x1p600;
    const double numerator = abs(y) * up, denominator = x * scale;
    const double q = numerator / denominator;
    const DoubleWord<double> back = two_product(q, denominator);
    DoubleWord<double> quotient{q, ((numerator - back.hi) - back.lo) / denominator};
    if constexpr (std::is_same_v<Base, Decimal>)
      quotient = multiply(quotient, DoubleWord<double>{log_tables::inverse_ln10, log_tables::inverse_ln10_rest});
    im = y == 0 ? 0 : scaled_result(quotient, scale / up, unused);
  }
  return {re, with_sign(im, sign_of(y))};
}

// --- kernels --------------------------------------------------------------------------------------------------------

template <class V> SignMask<V> both_zero(V x, V y) { return int_bits(abs(from_bits<V>(bits(x) | bits(y)))) - 1; }

/// Doubles. P: formula, with wide_formula also where `Tests`.
template <class Base, class P, bool Tests> struct Logarithm64 : ComplexDefaults, P {
  using Element = double;
  template <class V> using ResultTest = std::conditional_t<Tests, BitMask, NoResultTest>;
  static constexpr bool has_wide_formula = Tests;
  static constexpr bool spurious_underflow = true;

  template <class V> static SignMask<V> special(V x, V y) {
    const SignMask<V> outside = outside_window(x, y, 0x1p-440, 0x1p440);
    if constexpr (Tests) { // the exact norm needs the square of a small real part, too
      const Int<V> a = int_bits(abs(x));
      return outside | ((a - int_bits(splat<V>(0x1p-440))) & -a);
    } else {
      return outside;
    }
  }
  template <class V> static SignMask<V> wide_special(V x, V y) { return special(x, y); }
  static Pair<double> element(double x, double y, kelStatus& status) {
    if (!is_finite(x) || !is_finite(y) || (x == 0 && y == 0)) return special_logarithm<Base>(x, y, status);
    return logarithm_of_any<Base>(x, y);
  }
};

/// Floats in double: everything finite but zero is in range.
template <class Base> struct Logarithm32A24 : ComplexDefaults {
  using Element = float;
  static constexpr int vectors_in_flight = 2;
  static constexpr bool spurious_underflow = true;

  template <class V> static SignMask<V> special(V x, V y) {
    return any_above(x, y, largest_finite<float>) | both_zero(x, y);
  }
  template <class V> static Pair<V> formula(V x, V y) {
    return pair_in_double(
        [](auto x, auto y) {
          const auto [larger, smaller] = by_size(x, y);
          return Pair<decltype(x)>{log_abs<Base, Accuracy::bits40>(larger, smaller),
                                   scaled_angle<Base>(angle<Accuracy::bits40>(y, x))};
        },
        x, y);
  }
  static Pair<float> element(float x, float y, kelStatus& status) { return special_logarithm<Base>(x, y, status); }
};

template <class Base, class P> struct Logarithm32 : ComplexDefaults, P {
  using Element = float;
  static constexpr bool spurious_underflow = true;
  static constexpr Magnitudes ordinary = no_magnitudes; // powers of |z| - 1

  template <class V> static SignMask<V> special(V x, V y) { return outside_window(x, y, 0x1p-60f, 0x1p62f); }
  static Pair<float> element(float x, float y, kelStatus& status) {
    if (any(Logarithm32A24<Base>::special(x, y))) return special_logarithm<Base>(x, y, status);
    return Logarithm32A24<Base>::formula(x, y);
  }
};

template <class Base> using A53 = Logarithm64<Base, Full<Base>, true>;
template <class Base> using A50 = Logarithm64<Base, A50Formula<Base>, false>;
template <class Base> using A26 = Logarithm64<Base, A26Formula<Base>, false>;
template <class Base> using A24 = Logarithm32A24<Base>;
template <class Base> using A21 = Logarithm32<Base, FloatShort<Base, Accuracy::bits21, inverse_trig::atan_bits21>>;
template <class Base> using A11 = Logarithm32<Base, FloatShort<Base, Accuracy::bits11, inverse_trig::atan_bits11>>;

} // namespace

KELVM_UNARY(kelsLn_32fc_A11, A11<Natural>)
KELVM_UNARY(kelsLn_32fc_A21, A21<Natural>)
KELVM_UNARY(kelsLn_32fc_A24, A24<Natural>)
KELVM_UNARY(kelsLn_64fc_A26, A26<Natural>)
KELVM_UNARY(kelsLn_64fc_A50, A50<Natural>)
KELVM_UNARY(kelsLn_64fc_A53, A53<Natural>)
KELVM_UNARY(kelsLog10_32fc_A11, A11<Decimal>)
KELVM_UNARY(kelsLog10_32fc_A21, A21<Decimal>)
KELVM_UNARY(kelsLog10_32fc_A24, A24<Decimal>)
KELVM_UNARY(kelsLog10_64fc_A26, A26<Decimal>)
KELVM_UNARY(kelsLog10_64fc_A50, A50<Decimal>)
KELVM_UNARY(kelsLog10_64fc_A53, A53<Decimal>)

} // namespace kelvm::inline KELVM_BUILD::complex_logarithm
