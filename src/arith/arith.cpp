// Sum, difference, product, square and absolute value: one correctly rounded operation each, in the caller's mode.
#include "kelvm/arith.h"
#include "frame/member.hpp"
#include "simd/ordered.hpp"

namespace kelvm::inline KELVM_BUILD {
namespace {

template <class T> struct Arithmetic : KernelDefaults {
  using Element = T;
  static constexpr Mode mode = Mode::callers;
  static constexpr bool covers_everything = true;
  static constexpr bool any_overlap = true;
};

template <class T> struct Add : Arithmetic<T> {
  template <class V> static V formula(V x, V y) { return ordered_sum(x, y); }
};
template <class T> struct Sub : Arithmetic<T> {
  template <class V> static V formula(V x, V y) { return x - y; }
};
template <class T> struct Mul : Arithmetic<T> {
  template <class V> static V formula(V x, V y) { return ordered_product(x, y); }
};
template <class T> struct Sqr : Arithmetic<T> {
  template <class V> static V formula(V x) { return x * x; }
};
/// |x| as x * (1 with the sign of x): a NaN keeps its sign, a signalling NaN is quieted and raises invalid.
template <class T> struct Abs : Arithmetic<T> {
  static constexpr bool any_overlap = false;
  template <class V> static V formula(V x) { return x * with_sign(splat<V>(1), sign_of(x)); }
};

} // namespace
} // namespace kelvm::inline KELVM_BUILD

KELVM_BINARY(kelsAdd_32f_A24, kelvm::Add<float>)
KELVM_BINARY(kelsAdd_64f_A53, kelvm::Add<double>)
KELVM_BINARY(kelsSub_32f_A24, kelvm::Sub<float>)
KELVM_BINARY(kelsSub_64f_A53, kelvm::Sub<double>)
KELVM_BINARY(kelsMul_32f_A24, kelvm::Mul<float>)
KELVM_BINARY(kelsMul_64f_A53, kelvm::Mul<double>)
KELVM_UNARY(kelsSqr_32f_A24, kelvm::Sqr<float>)
KELVM_UNARY(kelsSqr_64f_A53, kelvm::Sqr<double>)
KELVM_UNARY(kelsAbs_32f_A24, kelvm::Abs<float>)
KELVM_UNARY(kelsAbs_64f_A53, kelvm::Abs<double>)
