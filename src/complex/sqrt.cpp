// Complex square root, principal branch: the real part is never negative, the imaginary part has the sign of y.
//
// For z = x + iy, Kahan's formula (W. Kahan, "Branch cuts for complex elementary functions", 1987):
//
//   m = |z|,   large = sqrt((|x| + m) / 2),   small = |y| / (2 large)
//
// and large is the real part where x is not negative, else the magnitude of the imaginary part. No step cancels.
// Plain operations give 2^-51.7 by norm in double, 2^-22.7 in float.
//
//   64fc A53       the plain root w of |x| + i|y| and one Newton step, w + (|x| + i|y| - w^2) / (2 w), with the
//                  residual exact by parts and a reciprocal of 2^-9.6: 0.503 ulp a part
//        A50, A26  the plain formula
//   32fc A24       the same step from the plain root in float with the residual exact by fused steps, else in double:
//                  0.5001 ulp a part
//        A21, A11  the plain formula
//
// The processor's square root is so fast that no shorter computation is faster.
//
// The formulas cover numbers whose larger part is in a window that keeps the squares in range; the others, and
// zeros, are scaled by an even power of two, element by element. Infinities and NaNs as in C's Annex G.6.4.2.
#include "complex/complex.hpp"
#include "frame/export.hpp"
#include "kelvm/complex.h"
#include "root/scaled.hpp"

namespace kelvm::inline KELVM_BUILD::complex_square_roots {
namespace {

/// The two magnitudes of a root.
template <class V> struct Root { V large, small; };

struct Plain {
  static constexpr double least_y = 0;
  template <class V> static Root<V> root(V x, V y) {
    constexpr Lane<V> half = 0.5;
    const V t = sqrt(half * (x + sqrt(mul_add(x, x, y * y))));
    return {t, y * (half / t)};
  }
};

/// x + q^2 - t^2, about zero, with products that are exact where they cancel.
template <class V> V real_residual(V x, V t, V q) {
  const DoubleWord<V> t2 = square_in_parts(t), q2 = square_in_parts(q), sum = two_sum(x, q2.hi);
  return (((sum.hi - t2.hi) + sum.lo) + q2.lo) - t2.lo;
}

struct NewtonStepInFloat {
  static constexpr double least_y = 0x1p-76; // what the step adds has its bits, or is nothing
  template <class V> static Root<V> root(V x, V y) {
    const V m = sqrt(mul_add(x, x, y * y));
    const V square = 0.5f * (x + m), t = sqrt(square);
    const V both = 0.5f / (m * square); // one division for 1 / (2 m) and 1 / (2 square)
    const V q = (y * t) * (m * both), inverse = square * both;
    if constexpr (has_fused) {
      const V re = real_residual(x, t, q), im = sub_mul(y, q + q, t);
      return {mul_add(mul_add(re, t, im * q), inverse, t), mul_add(mul_sub(im, t, re * q), inverse, q)};
    }
    const V c = t * inverse;
    const Pair<V> rest = pair_in_double(
        [](auto x, auto y, auto t, auto q) { // products of floats are exact
          return Pair<decltype(x)>{mul_add(q, q, sub_mul(x, t, t)), sub_mul(y, t, q + q)};
        },
        x, y, t, q);
    const V e = rest.first * inverse;
    return {t + mul_add(rest.second * q, inverse, e * t), q + mul_sub(rest.second, c, e * q)};
  }
};

struct NewtonStep {
  static constexpr double least_y = 0x1p-700; // below, the residuals are not exact
  /// The larger of x and y is in [2^-450, 2^500]; y is zero or at least least_y.
  template <class V> static Root<V> root(V x, V y) {
    const V m = sqrt(mul_add(x, x, y * y));
    const V t = sqrt(0.5 * (x + m)), q = y * (0.5 / t);
    const V re = real_residual(x, t, q);
    V half_im = 0.5 * y; // less t q
    if constexpr (has_fused) {
      half_im = sub_mul(half_im, q, t);
    } else {
      const V t_head = head_of(t), q_head = head_of(q);
      half_im = ((half_im - q_head * t_head) - q_head * (t - t_head)) - (q - q_head) * t;
    }
    // times (t - iq) / (2m)
    const V guess = from_bits<V>(0x7FDE6238502484C6 - bits(m)); // about 1 / m, as in root/root.hpp
    const V inverse = guess * sub_mul(splat<V>(2), m, guess), half_re = 0.5 * re;
    return {mul_add(mul_add(half_re, t, half_im * q), inverse, t),
            mul_add(mul_sub(half_im, t, half_re * q), inverse, q)};
  }
};

/// The complete function, for finite magnitudes.
Root<double> root_of_any(double x, double y) {
  if (x == 0 && y == 0) return {0, 0};
  const double larger = x > y ? x : y;
  const double scale = larger > 0x1p400 ? 0x1p-600 : larger < 0x1p-400 ? 0x1p600 : 1;
  const double back = scale == 1 ? 1 : scale < 1 ? 0x1p300 : 0x1p-300;
  x *= scale;
  if (y * scale >= x * 0x1p-100) {
    const Root<double> r = NewtonStep::root(x, y * scale);
    return {r.large * back, r.small * back};
  }
  // The norm is x, and the quotient may be subnormal.
  const double t = sqrt(x);
  if (y == 0) return {t * back, 0};
  const DoubleWord<double> square = two_product(t, t);
  const double t_tail = ((x - square.hi) - square.lo) * (0.5 / t);
  const double y_scale = y < 0x1p-200 ? 0x1p600 : 1;
  y *= 0.5 * y_scale;
  const double q = y / t;
  const DoubleWord<double> product = two_product(q, t);
  const double q_tail = (((y - product.hi) - product.lo) - q * t_tail) / t;
  kelStatus unused; // no part of a root is reported
  return {t * back, scaled_result({q, q_tail}, 1 / back / y_scale, unused)};
}
Root<float> root_of_any(float x, float y) {
  const Root<double> r = root_of_any(double(x), double(y));
  return {float(r.large), float(r.small)};
}

template <class T, class P> struct ComplexSqrt : ComplexDefaults {
  using Element = T;
  static constexpr bool spurious_underflow = true;
  static constexpr bool wide = sizeof(T) == 8;
  static constexpr T low = wide ? T(0x1p-450) : T(0x1p-60), high = wide ? T(0x1p500) : T(0x1p62);

  template <class V> static SignMask<V> special(V x, V y) {
    x = abs(x), y = abs(y);
    const Bits<V> tiny = P::least_y > 0 ? below(y, T(P::least_y)) & -bits(y) : Bits<V>{};
    if constexpr (wide) {
      return bit_cast<SignMask<V>>((below(x, low) & below(y, low)) | beyond(x, high) | beyond(y, high) | tiny);
    } else {
      const V larger = bit_cast<V>(int_bits(x) > int_bits(y) ? int_bits(x) : int_bits(y));
      return bit_cast<SignMask<V>>(below(larger, low) | beyond(larger, high) | tiny);
    }
  }
  template <class V> static Pair<V> formula(V x, V y) { return with_signs(P::root(abs(x), abs(y)), x, y); }

  static Pair<T> element(T x, T y, kelStatus&) {
    const T nan = default_nan<T>();
    if (is_infinite(y)) return {infinity<T>, y};
    if (is_infinite(x)) {
      const T zero = is_nan(y) ? nan : T(0);
      return x > 0 ? Pair<T>{x, with_sign(zero, sign_of(y))} : Pair<T>{zero, with_sign(infinity<T>, sign_of(y))};
    }
    if (is_nan(x) || is_nan(y)) return {nan, nan};
    return with_signs(root_of_any(abs(x), abs(y)), x, y);
  }

private:
  template <class V> static Pair<V> with_signs(Root<V> r, V x, V y) {
    return {select(int_bits(x), r.small, r.large), with_sign(select(int_bits(x), r.large, r.small), sign_of(y))};
  }
};

} // namespace

KELVM_UNARY(kelsSqrt_32fc_A11, ComplexSqrt<float, Plain>)
KELVM_UNARY(kelsSqrt_32fc_A21, ComplexSqrt<float, Plain>)
KELVM_UNARY(kelsSqrt_32fc_A24, ComplexSqrt<float, NewtonStepInFloat>)
KELVM_UNARY(kelsSqrt_64fc_A26, ComplexSqrt<double, Plain>)
KELVM_UNARY(kelsSqrt_64fc_A50, ComplexSqrt<double, Plain>)
KELVM_UNARY(kelsSqrt_64fc_A53, ComplexSqrt<double, NewtonStep>)

} // namespace kelvm::inline KELVM_BUILD::complex_square_roots
