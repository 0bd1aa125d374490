// Sum, difference, product, square and absolute value: one correctly rounded operation each, in the caller's mode.
#include "kelvm/arith.h"
#include "frame/export.hpp"
#include "simd/ordered.hpp"

namespace kelvm::inline KELVM_BUILD::real_arithmetic {
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
  static constexpr int vectors_in_flight = single_operation_in_flight;
  template <class V> static V formula(V x) { return x * x; }
};
/// |x| as x * (1 with the sign of x): a NaN keeps its sign, a signalling NaN is quieted and raises invalid.
template <class T> struct Abs : Arithmetic<T> {
  static constexpr bool any_overlap = false;
  template <class V> static V formula(V x) { return x * with_sign(splat<V>(1), sign_of(x)); }
};

} // namespace

KELVM_BINARY(kelsAdd_32f_A24, Add<float>)
KELVM_BINARY(kelsAdd_64f_A53, Add<double>)
KELVM_BINARY(kelsSub_32f_A24, Sub<float>)
KELVM_BINARY(kelsSub_64f_A53, Sub<double>)
KELVM_BINARY(kelsMul_32f_A24, Mul<float>)
KELVM_BINARY(kelsMul_64f_A53, Mul<double>)
KELVM_UNARY(kelsSqr_32f_A24, Sqr<float>)
KELVM_UNARY(kelsSqr_64f_A53, Sqr<double>)
KELVM_UNARY(kelsAbs_32f_A24, Abs<float>)
KELVM_UNARY(kelsAbs_64f_A53, Abs<double>)

} // namespace kelvm::inline KELVM_BUILD::real_arithmetic
