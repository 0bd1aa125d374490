// xsimd, real and complex. It states no errors; the driver measures them.
#include "sweep.hpp"

#include <complex>
#include <xsimd/xsimd.hpp>

namespace bench {
namespace {

template <class T> struct Batch {
  using Element = T;
  using Vector = xsimd::batch<T>;
  static constexpr int width = int(Vector::size);
  static Vector load(const T* p) { return Vector::load_unaligned(p); }
  static void store(T* p, Vector v) { v.store_unaligned(p); }
};
using Double = Batch<double>;
using Float = Batch<float>;
using ComplexDouble = Batch<std::complex<double>>;
using ComplexFloat = Batch<std::complex<float>>;

/// One kind of elements to another, the same number in a vector.
template <class From, class To, class F> inline void convert(const Call& call, F f) {
  const auto* x = static_cast<const typename From::Element*>(call.src1);
  auto* to = static_cast<typename To::Element*>(call.dst1);
  std::ptrdiff_t i = 0;
  for (; i + From::width <= call.n; i += From::width) To::store(to + i, f(From::load(x + i)));
  if (i < call.n) {
    typename From::Element in[From::width] = {};
    typename To::Element out[From::width];
    for (std::ptrdiff_t k = i; k < call.n; ++k) in[k - i] = x[k];
    To::store(out, f(From::load(in)));
    for (std::ptrdiff_t k = i; k < call.n; ++k) to[k] = out[k - i];
  }
}

#define ROW(Family, type, L, naive, ...)                                                                               \
  {Family, #type, "xsimd", 0, naive, [](const Call& call) {                                                            \
     using V [[maybe_unused]] = L::Vector;                                                                             \
     using T [[maybe_unused]] = L::Element;                                                                            \
     __VA_ARGS__;                                                                                                      \
   }},
#define ROWS(Family, type, L, naive, sources, destinations, ...)                                                       \
  ROW(Family, type, L, naive, sweep<L, sources, destinations>(call, __VA_ARGS__))
#define UNARY(Family, expression)                                                                                      \
  ROWS(Family, 64f, Double, false, 1, 1, [](V x) -> V { return expression; })                                          \
  ROWS(Family, 32f, Float, false, 1, 1, [](V x) -> V { return expression; })
#define BINARY(Family, naive, expression)                                                                              \
  ROWS(Family, 64f, Double, naive, 2, 1, [](V x, V y) -> V { return expression; })                                     \
  ROWS(Family, 32f, Float, naive, 2, 1, [](V x, V y) -> V { return expression; })
#define COMPLEX_UNARY(Family, expression)                                                                              \
  ROWS(Family, 64fc, ComplexDouble, false, 1, 1, [](V x) -> V { return expression; })                                  \
  ROWS(Family, 32fc, ComplexFloat, false, 1, 1, [](V x) -> V { return expression; })
#define COMPLEX_BINARY(Family, naive, expression)                                                                      \
  ROWS(Family, 64fc, ComplexDouble, naive, 2, 1, [](V x, V y) -> V { return expression; })                             \
  ROWS(Family, 32fc, ComplexFloat, naive, 2, 1, [](V x, V y) -> V { return expression; })

// clang-format off
constexpr Peer table[] = {
#if XSIMD_PART == 1
    BINARY("Add", false, x + y)
    BINARY("Sub", false, x - y)
    BINARY("Mul", false, x * y)
    BINARY("Div", false, x / y)
    BINARY("Hypot", true, xsimd::hypot(x, y))
    BINARY("Atan2", false, xsimd::atan2(x, y))
    BINARY("Pow", false, xsimd::pow(x, y))
    UNARY("Sqr", x * x)
    UNARY("Abs", xsimd::abs(x))
    UNARY("Sqrt", xsimd::sqrt(x))
    UNARY("InvSqrt", V(1) / xsimd::sqrt(x))
    UNARY("Cbrt", xsimd::cbrt(x))
    UNARY("InvCbrt", V(1) / xsimd::cbrt(x))
    UNARY("Ceil", xsimd::ceil(x))
    UNARY("Floor", xsimd::floor(x))
    UNARY("Trunc", xsimd::trunc(x))
    UNARY("Round", xsimd::round(x))
    UNARY("Rint", xsimd::rint(x))
    UNARY("NearbyInt", xsimd::nearbyint(x))
    UNARY("Exp", xsimd::exp(x))
    UNARY("Expm1", xsimd::expm1(x))
    UNARY("Ln", xsimd::log(x))
    UNARY("Log10", xsimd::log10(x))
    UNARY("Log1p", xsimd::log1p(x))
    UNARY("Sin", xsimd::sin(x))
    UNARY("Cos", xsimd::cos(x))
    UNARY("Tan", xsimd::tan(x))
    UNARY("Asin", xsimd::asin(x))
    UNARY("Acos", xsimd::acos(x))
    UNARY("Atan", xsimd::atan(x))
    UNARY("Sinh", xsimd::sinh(x))
    UNARY("Cosh", xsimd::cosh(x))
    UNARY("Tanh", xsimd::tanh(x))
    UNARY("Asinh", xsimd::asinh(x))
    UNARY("Acosh", xsimd::acosh(x))
    UNARY("Atanh", xsimd::atanh(x))
    UNARY("Erf", xsimd::erf(x))
    UNARY("Erfc", xsimd::erfc(x))
    UNARY("CdfNorm", V(T(0.5)) * xsimd::erfc(x * V(T(-0.70710678118654752440))))
    ROWS("SinCos", 64f, Double, false, 1, 2, [](V x) { return xsimd::sincos(x); })
    ROWS("SinCos", 32f, Float, false, 1, 2, [](V x) { return xsimd::sincos(x); })
    ROW("Powx", 64f, Double, false, const V y(scalar_of<T>(call));
        sweep<Double, 1, 1>(call, [=](V x) -> V { return xsimd::pow(x, y); }))
    ROW("Powx", 32f, Float, false, const V y(scalar_of<T>(call));
        sweep<Float, 1, 1>(call, [=](V x) -> V { return xsimd::pow(x, y); }))
#else
    COMPLEX_BINARY("Add", false, x + y)
    COMPLEX_BINARY("Sub", false, x - y)
    COMPLEX_BINARY("Mul", false, x * y)
    COMPLEX_BINARY("MulByConj", false, x * xsimd::conj(y))
    COMPLEX_BINARY("Div", true, x / y)
    COMPLEX_BINARY("Pow", false, xsimd::pow(x, y))
    COMPLEX_UNARY("Conj", xsimd::conj(x))
    COMPLEX_UNARY("Sqrt", xsimd::sqrt(x))
    COMPLEX_UNARY("Exp", xsimd::exp(x))
    COMPLEX_UNARY("Ln", xsimd::log(x))
    COMPLEX_UNARY("Log10", xsimd::log10(x))
    COMPLEX_UNARY("Sin", xsimd::sin(x))
    COMPLEX_UNARY("Cos", xsimd::cos(x))
    COMPLEX_UNARY("Tan", xsimd::tan(x))
    COMPLEX_UNARY("Sinh", xsimd::sinh(x))
    COMPLEX_UNARY("Cosh", xsimd::cosh(x))
    COMPLEX_UNARY("Tanh", xsimd::tanh(x))
    COMPLEX_UNARY("Asin", xsimd::asin(x))
    COMPLEX_UNARY("Acos", xsimd::acos(x))
    COMPLEX_UNARY("Atan", xsimd::atan(x))
    COMPLEX_UNARY("Asinh", xsimd::asinh(x))
    COMPLEX_UNARY("Acosh", xsimd::acosh(x))
    COMPLEX_UNARY("Atanh", xsimd::atanh(x))
    ROW("Abs", 64fc, ComplexDouble, true, convert<ComplexDouble, Double>(call, [](V x) { return xsimd::abs(x); }))
    ROW("Abs", 32fc, ComplexFloat, true, convert<ComplexFloat, Float>(call, [](V x) { return xsimd::abs(x); }))
    ROW("CIS", 64fc, Double, false, convert<Double, ComplexDouble>(call, [](V x) {
          const auto sc = xsimd::sincos(x);
          return xsimd::batch<std::complex<double>>(sc.second, sc.first);
        }))
    ROW("CIS", 32fc, Float, false, convert<Float, ComplexFloat>(call, [](V x) {
          const auto sc = xsimd::sincos(x);
          return xsimd::batch<std::complex<float>>(sc.second, sc.first);
        }))
#endif
};
// clang-format on

} // namespace
} // namespace bench

KELVM_PEERS(bench::table)
