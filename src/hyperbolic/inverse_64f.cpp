// asinh, acosh and atanh of doubles (hyperbolic/inverse.hpp). A53 rounds a head and tail once; A50 and A26 compute in
// double numbers. asinh and atanh are computed of |x|; signs are put back at the end.
//
// Exceptional inputs: acosh below 1 and atanh beyond +-1 are domain errors, atanh has poles at +-1; from 2^340 on asinh
// and acosh are ln 2x, one element at a time; NaNs are quieted.
#include "frame/member.hpp"
#include "hyperbolic/inverse.hpp"
#include "kelvm/hyperbolic.h"

namespace kelvm::inline KELVM_BUILD::hyperbolic_inverse_64f {
namespace {

constexpr double largest_cube_root = 0x1p340;

template <LogAccuracy A> struct InDouble : KernelDefaults {
  using Element = double;
  static constexpr bool stray_underflow = true; // x^2 of a tiny x
};

template <LogAccuracy A> struct Asinh : InDouble<A> {
  template <class V> static Marks<V> special(V x) { return above(abs(x), largest_cube_root); }
  template <class V> static V formula(V x) { return with_sign(asinh_positive<A>(abs(x)), sign_of(x)); }
  static double element(double x, kelStatus&) {
    if (is_nan(x) || abs(x) == infinity<double>) return x + x;
    return with_sign(ln_of_twice<A>(abs(x)), sign_of(x));
  }
};

template <LogAccuracy A> struct Acosh : InDouble<A> {
  template <class V> static Marks<V> special(V x) { return outside(x, 1.0, largest_cube_root); }
  template <class V> static V formula(V x) { return acosh<A>(x); }
  static double element(double x, kelStatus& status) {
    if (is_nan(x)) return x + x;
    if (x < 1) return domain_error<double>(status);
    return x == infinity<double> ? x : ln_of_twice<A>(x);
  }
};

template <LogAccuracy A> struct Atanh : InDouble<A> {
  static constexpr float harmless = 0.5f;
  template <class V> static Marks<V> special(V x) { return above(abs(x), 0x1.fffffffffffffp-1); }
  template <class V> static V formula(V x) { return with_sign(atanh_positive<A>(abs(x)), sign_of(x)); }
  static double element(double x, kelStatus& status) {
    if (is_nan(x)) return x + x;
    return abs(x) == 1 ? pole(status, x) : domain_error<double>(status);
  }
};

} // namespace

KELVM_UNARY(kelsAsinh_64f_A26, Asinh<LogAccuracy::a26>)
KELVM_UNARY(kelsAsinh_64f_A50, Asinh<LogAccuracy::a50>)
KELVM_UNARY(kelsAsinh_64f_A53, Asinh<LogAccuracy::a53>)
KELVM_UNARY(kelsAcosh_64f_A26, Acosh<LogAccuracy::a26>)
KELVM_UNARY(kelsAcosh_64f_A50, Acosh<LogAccuracy::a50>)
KELVM_UNARY(kelsAcosh_64f_A53, Acosh<LogAccuracy::a53>)
KELVM_UNARY(kelsAtanh_64f_A26, Atanh<LogAccuracy::a26>)
KELVM_UNARY(kelsAtanh_64f_A50, Atanh<LogAccuracy::a50>)
KELVM_UNARY(kelsAtanh_64f_A53, Atanh<LogAccuracy::a53>)

} // namespace kelvm::inline KELVM_BUILD::hyperbolic_inverse_64f
