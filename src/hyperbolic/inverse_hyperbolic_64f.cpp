// asinh, acosh and atanh of doubles (hyperbolic/inverse_hyperbolic.hpp). A53 rounds a double-word once; A50 and A26
// compute in double numbers. asinh and atanh are computed of |x|; signs are put back at the end.
//
// Exceptional inputs: acosh below 1 and atanh beyond +-1 are domain errors, atanh has poles at +-1; from 2^340 on asinh
// and acosh are ln 2x, one element at a time; NaNs are quieted.
#include "frame/export.hpp"
#include "hyperbolic/inverse_hyperbolic.hpp"
#include "kelvm/hyperbolic.h"

namespace kelvm::inline KELVM_BUILD::hyperbolic_inverse_64f {
namespace {

constexpr double largest_cube_root = 0x1p340;

template <Accuracy A> struct InDouble : KernelDefaults {
  using Element = double;
  static constexpr bool spurious_underflow = true; // x^2 of a tiny x
};

template <Accuracy A> struct Asinh : InDouble<A> {
  template <class V> static SignMask<V> special(V x) { return above(abs(x), largest_cube_root); }
  template <class V> static V formula(V x) { return with_sign(asinh_positive<A>(abs(x)), sign_of(x)); }
  static double element(double x, kelStatus&) {
    if (is_nan(x) || abs(x) == infinity<double>) return x + x;
    return with_sign(ln_of_twice<A>(abs(x)), sign_of(x));
  }
};

template <Accuracy A> struct Acosh : InDouble<A> {
  template <class V> static SignMask<V> special(V x) { return outside(x, 1.0, largest_cube_root); }
  template <class V> static V formula(V x) { return acosh<A>(x); }
  static double element(double x, kelStatus& status) {
    if (is_nan(x)) return x + x;
    if (x < 1) return domain_error<double>(status);
    return x == infinity<double> ? x : ln_of_twice<A>(x);
  }
};

template <Accuracy A> struct Atanh : InDouble<A> {
  static constexpr float safe_input = 0.5f;
  template <class V> static SignMask<V> special(V x) { return above(abs(x), 0x1.fffffffffffffp-1); }
  template <class V> static V formula(V x) { return with_sign(atanh_positive<A>(abs(x)), sign_of(x)); }
  static double element(double x, kelStatus& status) {
    if (is_nan(x)) return x + x;
    return abs(x) == 1 ? pole(status, x) : domain_error<double>(status);
  }
};

} // namespace

KELVM_UNARY(kelsAsinh_64f_A26, Asinh<Accuracy::bits27>)
KELVM_UNARY(kelsAsinh_64f_A50, Asinh<Accuracy::bits50>)
KELVM_UNARY(kelsAsinh_64f_A53, Asinh<Accuracy::full>)
KELVM_UNARY(kelsAcosh_64f_A26, Acosh<Accuracy::bits27>)
KELVM_UNARY(kelsAcosh_64f_A50, Acosh<Accuracy::bits50>)
KELVM_UNARY(kelsAcosh_64f_A53, Acosh<Accuracy::full>)
KELVM_UNARY(kelsAtanh_64f_A26, Atanh<Accuracy::bits27>)
KELVM_UNARY(kelsAtanh_64f_A50, Atanh<Accuracy::bits50>)
KELVM_UNARY(kelsAtanh_64f_A53, Atanh<Accuracy::full>)

} // namespace kelvm::inline KELVM_BUILD::hyperbolic_inverse_64f
