// The complex functions made of factors of x and of y (hyperbolic/factors.hpp): their kernel, of a function F and an
// accuracy P. F has
//
//   template <class P, Angles A, class V> static Pair<V> formula(V x, V y)   for |x| <= last<P>, |y| <= P::last_angle
//   template <class P> static constexpr double last                 the largest |x| of formula
//   static Pair<double> any(double x, double y)                     any x and y
//
// A part of a result is a product of two factors, which never cancel: relative errors add up, and that is all. Factors
// are those of |x| and |y|, signs are put back at the end: symmetries hold bit for bit, zeros keep their signs.
#pragma once

#include "complex/complex.hpp"
#include "hyperbolic/factors.hpp"

namespace kelvm::inline KELVM_BUILD {

/// One part of a result: the product of an exponential or hyperbolic factor and a cosine or sine. As Annex G has it for
/// all of these functions, a zero stays a zero whatever the other factor, and the real part stays infinite where the
/// angle is no number.
enum class Part { real, imaginary };
double any_product(Part part, const ScaledSum& hyperbolic, const ScaledSum& circular);

template <class F, class T, class P> struct PlaneFunction : ComplexDefaults {
  using Element = T;
  static constexpr int vectors_in_flight = P::vectors_in_flight;
  static constexpr bool spurious_underflow = true;

  /// A quotient or product that overflows float does so in element().
  static constexpr T last = sizeof(T) == 4 && F::template last<P> > 88 ? 88 : F::template last<P>;

  static constexpr bool has_wide_formula = true;

  template <class V> static SignMask<V> special(V x, V y) { return outside(x, y, T(P::last_angle)); }
  template <class V> static Pair<V> formula(V x, V y) { return evaluated<P, Angles::near>(x, y); }
  template <class V> static SignMask<V> wide_special(V x, V y) { return outside(x, y, largest_finite<T>); }
  template <class V> static Pair<V> wide_formula(V x, V y) {
    const SignMask<V> far = above(abs(y), T(P::last_angle));
    if (!any(far)) return formula(x, y);
    if constexpr (P::has_any_angle) {
      return evaluated<P, Angles::any>(x, y);
    } else {
      const Pair<V> z = formula(x, select(far, splat<V>(1), y)), far_z = evaluated<ShortA26, Angles::any>(x, y);
      return {select(far, far_z.first, z.first), select(far, far_z.second, z.second)};
    }
  }
  static Pair<T> element(T x, T y, kelStatus& status) {
    const Operand z{quiet(x), quiet(y)};
    const Pair<double> result = F::any(z.x, z.y);
    return with_code<T>(z, result.first, result.second, status);
  }

private:
  template <class V> static SignMask<V> outside(V x, V y, T last_angle) {
    const SignMask<V> large = above(abs(x), last) | above(abs(y), last_angle);
    if constexpr (P::splits)
      return large | tiny(x) | tiny(y);
    else
      return large;
  }
  template <class Accuracy, Angles A, class V> static Pair<V> evaluated(V x, V y) {
    const auto f = [](auto x, auto y) { return F::template formula<Accuracy, A>(x, y); };
    if constexpr (sizeof(T) < sizeof(typename Accuracy::Arithmetic))
      return pair_in_double(f, x, y);
    else
      return f(x, y);
  }
  /// The lanes with 0 < |x| < 2^-400.
  template <class V> static SignMask<V> tiny(V x) {
    const Int<V> magnitude = int_bits(abs(x));
    return (magnitude - int_bits(splat<V>(0x1p-400))) & -magnitude;
  }
  /// x as a double; raises nothing for a signalling NaN.
  static double quiet(T x) {
    return is_nan(x) ? with_sign(abs(default_nan<double>()), std::uint64_t(sign_of(x) != 0) << 63) : double(x);
  }
};

} // namespace kelvm::inline KELVM_BUILD
