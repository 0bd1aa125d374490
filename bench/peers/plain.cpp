// Loops over the C library's functions and over plain arithmetic. Compiled twice for each instruction set: with -O3
// (contenders libm and loop) and with -Ofast, where the compiler takes the C library's vector variants and may
// rearrange (contenders gcc-mvec and ofast). The optimisation is the contender. With KELVM_LOOP_NAME the vector
// variants are those of another library.
#include "sweep.hpp"

#include <cmath>

#if defined(KELVM_LOOP_NAME)
#  define FUNCTION_NAME KELVM_LOOP_NAME
#  define FUNCTION_ULP 0
#  define ARITHMETIC_NAME KELVM_LOOP_NAME "-ofast"
#elif defined(__FAST_MATH__)
#  define FUNCTION_NAME "gcc-mvec"
#  define FUNCTION_ULP 4
#  define ARITHMETIC_NAME "ofast"
#else
#  define FUNCTION_NAME "libm"
#  define FUNCTION_ULP 0
#  define ARITHMETIC_NAME "loop"
#endif

namespace bench {
namespace {

template <class T, class F> inline void unary(const Call& call, F f) {
  const T* __restrict x = static_cast<const T*>(call.src1);
  T* __restrict to = static_cast<T*>(call.dst1);
  for (std::ptrdiff_t i = 0; i < call.n; ++i) to[i] = f(x[i]);
}
template <class T, class F> inline void binary(const Call& call, F f) {
  const T* __restrict x = static_cast<const T*>(call.src1);
  const T* __restrict y = static_cast<const T*>(call.src2);
  T* __restrict to = static_cast<T*>(call.dst1);
  for (std::ptrdiff_t i = 0; i < call.n; ++i) to[i] = f(x[i], y[i]);
}
template <class T, class F> inline void scalar_power(const Call& call, F f) {
  const T y = scalar_of<T>(call);
  unary<T>(call, [=](T x) { return f(x, y); });
}
template <class T, class F> inline void two(const Call& call, F f) {
  const T* __restrict x = static_cast<const T*>(call.src1);
  T* __restrict first = static_cast<T*>(call.dst1);
  T* __restrict second = static_cast<T*>(call.dst2);
  for (std::ptrdiff_t i = 0; i < call.n; ++i) f(x[i], first[i], second[i]);
}

#define ROWS(Family, contender, ulp, naive, shape, parameters, expression)                                             \
  {Family,                                                                                                             \
   "64f",                                                                                                              \
   contender,                                                                                                          \
   ulp,                                                                                                                \
   naive,                                                                                                              \
   [](const Call& call) {                                                                                              \
     using T = double;                                                                                                 \
     shape<T>(call, [] parameters { return T(expression); });                                                          \
   }},                                                                                                                 \
      {Family, "32f", contender, ulp, naive, [](const Call& call) {                                                    \
         using T = float;                                                                                              \
         shape<T>(call, [] parameters { return T(expression); });                                                      \
       }},
#define ARITHMETIC(Family, ...) ROWS(Family, ARITHMETIC_NAME, 0, false, __VA_ARGS__)
#define NAIVE(Family, ...) ROWS(Family, ARITHMETIC_NAME "-naive", 0, true, __VA_ARGS__)
#define FUNCTION(Family, ...) ROWS(Family, FUNCTION_NAME, FUNCTION_ULP, false, __VA_ARGS__)
#define TWO(Family, contender, ulp, statements)                                                                        \
  {Family,                                                                                                             \
   "64f",                                                                                                              \
   contender,                                                                                                          \
   ulp,                                                                                                                \
   false,                                                                                                              \
   [](const Call& call) {                                                                                              \
     using T = double;                                                                                                 \
     two<T>(call, [](T x, T & first, T & second) statements);                                                          \
   }},                                                                                                                 \
      {Family, "32f", contender, ulp, false, [](const Call& call) {                                                    \
         using T = float;                                                                                              \
         two<T>(call, [](T x, T & first, T & second) statements);                                                      \
       }},

// clang-format off
constexpr Peer table[] = {
    ARITHMETIC("Add", binary, (T x, T y), x + y)
    ARITHMETIC("Sub", binary, (T x, T y), x - y)
    ARITHMETIC("Mul", binary, (T x, T y), x * y)
    ARITHMETIC("Div", binary, (T x, T y), x / y)
    ARITHMETIC("Sqr", unary, (T x), x * x)
    ARITHMETIC("Abs", unary, (T x), std::fabs(x))
    ARITHMETIC("Inv", unary, (T x), T(1) / x)
    ARITHMETIC("Sqrt", unary, (T x), std::sqrt(x))
    ARITHMETIC("InvSqrt", unary, (T x), T(1) / std::sqrt(x))
    ARITHMETIC("Pow3o2", unary, (T x), x * std::sqrt(x))
    ARITHMETIC("Ceil", unary, (T x), std::ceil(x))
    ARITHMETIC("Floor", unary, (T x), std::floor(x))
    ARITHMETIC("Trunc", unary, (T x), std::trunc(x))
    ARITHMETIC("Round", unary, (T x), std::round(x))
    ARITHMETIC("Rint", unary, (T x), std::rint(x))
    ARITHMETIC("NearbyInt", unary, (T x), std::nearbyint(x))
    TWO("Modf", ARITHMETIC_NAME, 0, { first = std::trunc(x); second = std::copysign(x - first, x); })
    NAIVE("Hypot", binary, (T x, T y), std::sqrt(x * x + y * y))
    FUNCTION("Hypot", binary, (T x, T y), std::hypot(x, y))
    FUNCTION("Cbrt", unary, (T x), std::cbrt(x))
    FUNCTION("InvCbrt", unary, (T x), T(1) / std::cbrt(x))
    FUNCTION("Pow2o3", unary, (T x), std::cbrt(x) * std::cbrt(x))
    FUNCTION("Exp", unary, (T x), std::exp(x))
    FUNCTION("Expm1", unary, (T x), std::expm1(x))
    FUNCTION("Ln", unary, (T x), std::log(x))
    FUNCTION("Log10", unary, (T x), std::log10(x))
    FUNCTION("Log1p", unary, (T x), std::log1p(x))
    FUNCTION("Pow", binary, (T x, T y), std::pow(x, y))
    FUNCTION("Powx", scalar_power, (T x, T y), std::pow(x, y))
    FUNCTION("Sin", unary, (T x), std::sin(x))
    FUNCTION("Cos", unary, (T x), std::cos(x))
    FUNCTION("Tan", unary, (T x), std::tan(x))
    FUNCTION("Asin", unary, (T x), std::asin(x))
    FUNCTION("Acos", unary, (T x), std::acos(x))
    FUNCTION("Atan", unary, (T x), std::atan(x))
    FUNCTION("Atan2", binary, (T x, T y), std::atan2(x, y))
    FUNCTION("Sinh", unary, (T x), std::sinh(x))
    FUNCTION("Cosh", unary, (T x), std::cosh(x))
    FUNCTION("Tanh", unary, (T x), std::tanh(x))
    FUNCTION("Asinh", unary, (T x), std::asinh(x))
    FUNCTION("Acosh", unary, (T x), std::acosh(x))
    FUNCTION("Atanh", unary, (T x), std::atanh(x))
    FUNCTION("Erf", unary, (T x), std::erf(x))
    FUNCTION("Erfc", unary, (T x), std::erfc(x))
    FUNCTION("CdfNorm", unary, (T x), T(0.5) * std::erfc(x * T(-0.70710678118654752440)))
    TWO("SinCos", FUNCTION_NAME, FUNCTION_ULP, { first = std::sin(x); second = std::cos(x); })
};
// clang-format on

} // namespace
} // namespace bench

KELVM_PEERS(bench::table)
