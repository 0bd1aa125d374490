// Loops over std::complex. Compiled for each instruction set with -O3, where the standard's handling of infinities and
// NaNs costs what it costs; with -O3 -fcx-limited-range; and with -Ofast. The last two take the formulas of the
// textbook, whose quotient and absolute value overflow in between.
#include "sweep.hpp"

#include <complex>

#if defined(__FAST_MATH__)
#  define ARITHMETIC_NAME "ofast"
#elif defined(KELVM_LIMITED_RANGE)
#  define ARITHMETIC_NAME "loop-limited"
#else
#  define ARITHMETIC_NAME "loop"
#endif
#if defined(__FAST_MATH__) || defined(KELVM_LIMITED_RANGE)
#  define NAIVE true
#else
#  define NAIVE false
#endif

namespace bench {
namespace {

template <class From, class To, class F> inline void unary(const Call& call, F f) {
  const From* __restrict x = static_cast<const From*>(call.src1);
  To* __restrict to = static_cast<To*>(call.dst1);
  for (std::ptrdiff_t i = 0; i < call.n; ++i) to[i] = f(x[i]);
}
template <class T, class F> inline void binary(const Call& call, F f) {
  const T* __restrict x = static_cast<const T*>(call.src1);
  const T* __restrict y = static_cast<const T*>(call.src2);
  T* __restrict to = static_cast<T*>(call.dst1);
  for (std::ptrdiff_t i = 0; i < call.n; ++i) to[i] = f(x[i], y[i]);
}
template <class T> inline void scalar_power(const Call& call) {
  const T y = scalar_of<T>(call);
  unary<T, T>(call, [=](T x) { return std::pow(x, y); });
}

#define ROW(Family, type, T, contender, naive, ...)                                                                    \
  {Family, #type, contender, 0, naive, [](const Call& call) {                                                          \
     using Real [[maybe_unused]] = T;                                                                                  \
     using Complex [[maybe_unused]] = std::complex<T>;                                                                 \
     __VA_ARGS__;                                                                                                      \
   }},
#define BOTH(Family, contender, naive, ...)                                                                            \
  ROW(Family, 64fc, double, contender, naive, __VA_ARGS__)                                                             \
  ROW(Family, 32fc, float, contender, naive, __VA_ARGS__)
#define BINARY(Family, naive, expression)                                                                              \
  BOTH(Family, ARITHMETIC_NAME, naive, binary<Complex>(call, [](Complex x, Complex y) { return expression; }))
#define FUNCTION(Family, function)                                                                                     \
  BOTH(Family, "libm", false, unary<Complex, Complex>(call, [](Complex x) { return std::function(x); }))

// clang-format off
constexpr Peer table[] = {
    BINARY("Add", false, x + y)
    BINARY("Sub", false, x - y)
    BINARY("Mul", false, x * y)
    BINARY("MulByConj", false, x * std::conj(y))
    BINARY("Div", NAIVE, x / y)
    BOTH("Conj", ARITHMETIC_NAME, false, unary<Complex, Complex>(call, [](Complex x) { return std::conj(x); }))
#if NAIVE
    BOTH("Abs", ARITHMETIC_NAME, true, unary<Complex, Real>(call, [](Complex x) {
          return std::sqrt(x.real() * x.real() + x.imag() * x.imag());
        }))
#else
    BOTH("Abs", "libm", false, unary<Complex, Real>(call, [](Complex x) { return std::abs(x); }))
    BOTH("CIS", "libm", false, unary<Real, Complex>(call, [](Real x) { return Complex(std::cos(x), std::sin(x)); }))
    BOTH("Pow", "libm", false, binary<Complex>(call, [](Complex x, Complex y) { return std::pow(x, y); }))
    BOTH("Powx", "libm", false, scalar_power<Complex>(call))
    FUNCTION("Sqrt", sqrt)
    FUNCTION("Exp", exp)
    FUNCTION("Ln", log)
    FUNCTION("Log10", log10)
    FUNCTION("Sin", sin)
    FUNCTION("Cos", cos)
    FUNCTION("Tan", tan)
    FUNCTION("Sinh", sinh)
    FUNCTION("Cosh", cosh)
    FUNCTION("Tanh", tanh)
    FUNCTION("Asin", asin)
    FUNCTION("Acos", acos)
    FUNCTION("Atan", atan)
    FUNCTION("Asinh", asinh)
    FUNCTION("Acosh", acosh)
    FUNCTION("Atanh", atanh)
#endif
#ifdef __FAST_MATH__
    {"CIS", "64fc", "gcc-mvec", 4, false,
     [](const Call& call) {
       const double* __restrict x = static_cast<const double*>(call.src1);
       double* __restrict to = static_cast<double*>(call.dst1);
       for (std::ptrdiff_t i = 0; i < call.n; ++i) to[2 * i] = std::cos(x[i]), to[2 * i + 1] = std::sin(x[i]);
     }},
    {"CIS", "32fc", "gcc-mvec", 4, false,
     [](const Call& call) {
       const float* __restrict x = static_cast<const float*>(call.src1);
       float* __restrict to = static_cast<float*>(call.dst1);
       for (std::ptrdiff_t i = 0; i < call.n; ++i) to[2 * i] = std::cos(x[i]), to[2 * i + 1] = std::sin(x[i]);
     }},
#endif
};
// clang-format on

} // namespace
} // namespace bench

KELVM_PEERS(bench::table)
