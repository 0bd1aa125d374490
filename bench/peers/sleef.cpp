// SLEEF's entry points of one instruction set, by accuracy; a `+` marks what is composed of several of them, as a user
// would without a function of that name.
#include "lanes.hpp"

#include <sleef.h>

#define JOIN_(prefix, function, lanes, accuracy, set) prefix##function##lanes##_##accuracy##set
#define JOIN(prefix, function, lanes, accuracy, set) JOIN_(prefix, function, lanes, accuracy, set)
#if defined(__AVX512F__)
#  define SLEEF_64f(function, accuracy) JOIN(Sleef_, function, d8, accuracy, avx512f)
#  define SLEEF_32f(function, accuracy) JOIN(Sleef_, function, f16, accuracy, avx512f)
#elif defined(__AVX2__)
#  define SLEEF_64f(function, accuracy) JOIN(Sleef_, function, d4, accuracy, avx2)
#  define SLEEF_32f(function, accuracy) JOIN(Sleef_, function, f8, accuracy, avx2)
#else
#  define SLEEF_64f(function, accuracy) JOIN(Sleef_, function, d2, accuracy, sse4)
#  define SLEEF_32f(function, accuracy) JOIN(Sleef_, function, f4, accuracy, sse4)
#endif

namespace bench {
namespace {

// The real functions that complex ones are composed of, in one accuracy. Exponential and power have only u10.
#define PROVIDER(name, L, SLEEF, u, u_hyperbolic)                                                                      \
  struct name {                                                                                                        \
    using Lanes = L;                                                                                                   \
    using V = L::Vector;                                                                                               \
    static V exp(V x) { return SLEEF(exp, u10)(x); }                                                                   \
    static V log(V x) { return SLEEF(log, u)(x); }                                                                     \
    static V sinh(V x) { return SLEEF(sinh, u_hyperbolic)(x); }                                                        \
    static V cosh(V x) { return SLEEF(cosh, u_hyperbolic)(x); }                                                        \
    static V atan2(V y, V x) { return SLEEF(atan2, u)(y, x); }                                                         \
    static V sqrt(V x) { return SLEEF(sqrt, u35)(x); }                                                                 \
    static auto sincos(V x) { return SLEEF(sincos, u)(x); }                                                            \
  };
PROVIDER(Double10, Double, SLEEF_64f, u10, u10)
PROVIDER(Double35, Double, SLEEF_64f, u35, u35)
PROVIDER(Float10, Float, SLEEF_32f, u10, u10)
PROVIDER(Float35, Float, SLEEF_32f, u35, u35)

template <class P> struct Composed {
  using C = ComplexLanes<typename P::Lanes>;
  using Z = typename C::Vector;
  using V = typename P::V;
  using T = typename P::Lanes::Element;

  static Z cis(V x) {
    const auto sc = P::sincos(x);
    return {sc.y, sc.x};
  }
  static Z exp(Z z) {
    const V e = P::exp(z.re);
    const Z w = cis(z.im);
    return {e * w.re, e * w.im};
  }
  static Z log(Z z) { return {P::log(z.re * z.re + z.im * z.im) * T(0.5), P::atan2(z.im, z.re)}; }
  static Z log10(Z z) {
    const Z w = log(z);
    return {w.re * T(0.43429448190325182765), w.im * T(0.43429448190325182765)};
  }
  static Z sin(Z z) {
    const Z w = cis(z.re);
    return {w.im * P::cosh(z.im), w.re * P::sinh(z.im)};
  }
  static Z cos(Z z) {
    const Z w = cis(z.re);
    return {w.re * P::cosh(z.im), -w.im * P::sinh(z.im)};
  }
  static Z sinh(Z z) {
    const Z w = cis(z.im);
    return {P::sinh(z.re) * w.re, P::cosh(z.re) * w.im};
  }
  static Z cosh(Z z) {
    const Z w = cis(z.im);
    return {P::cosh(z.re) * w.re, P::sinh(z.re) * w.im};
  }
  static Z tanh(Z z) {
    const Z w = cis(z.im + z.im);
    const V d = P::cosh(z.re + z.re) + w.re;
    return {P::sinh(z.re + z.re) / d, w.im / d};
  }
  static Z tan(Z z) {
    const Z w = cis(z.re + z.re);
    const V d = w.re + P::cosh(z.im + z.im);
    return {w.im / d, P::sinh(z.im + z.im) / d};
  }
  static Z pow(Z a, Z b) {
    const Z l = log(a);
    return exp({b.re * l.re - b.im * l.im, b.re * l.im + b.im * l.re});
  }

  template <Z (*f)(Z)> static void unary(const Call& call) { sweep<C, 1, 1>(call, f); }
  static void pow_loop(const Call& call) { sweep<C, 2, 1>(call, pow); }
  static void powx_loop(const Call& call) {
    const auto y = scalar_of<typename C::Element>(call);
    sweep<C, 1, 1>(call, [=](Z x) { return pow(x, {P::Lanes::splat(y.re), P::Lanes::splat(y.im)}); });
  }
  static void cis_loop(const Call& call) {
    using L = typename P::Lanes;
    const T* x = static_cast<const T*>(call.src1);
    auto* to = static_cast<typename C::Element*>(call.dst1);
    std::ptrdiff_t i = 0;
    for (; i + L::width <= call.n; i += L::width) C::store(to + i, cis(L::load(x + i)));
    if (i < call.n) {
      T in[L::width] = {};
      typename C::Element out[L::width];
      for (std::ptrdiff_t k = i; k < call.n; ++k) in[k - i] = x[k];
      C::store(out, cis(L::load(in)));
      for (std::ptrdiff_t k = i; k < call.n; ++k) to[k] = out[k - i];
    }
  }
};

#define ROW(Family, type, L, sources, destinations, contender, ulp, f)                                                 \
  {Family, #type, contender, ulp, false, [](const Call& call) { sweep<L, sources, destinations>(call, f); }},
#define UNARY_32F(Family, function, u, ulp)                                                                            \
  ROW(Family, 32f, Float, 1, 1, "sleef-" #u, ulp, [](Floats x) { return SLEEF_32f(function, u)(x); })
#define UNARY(Family, function, u, ulp)                                                                                \
  UNARY_32F(Family, function, u, ulp)                                                                                  \
  ROW(Family, 64f, Double, 1, 1, "sleef-" #u, ulp, [](Doubles x) { return SLEEF_64f(function, u)(x); })
#define BINARY_32F(Family, function, u, ulp)                                                                           \
  ROW(Family, 32f, Float, 2, 1, "sleef-" #u, ulp, [](Floats x, Floats y) { return SLEEF_32f(function, u)(x, y); })
#define BINARY(Family, function, u, ulp)                                                                               \
  BINARY_32F(Family, function, u, ulp)                                                                                 \
  ROW(Family, 64f, Double, 2, 1, "sleef-" #u, ulp, [](Doubles x, Doubles y) { return SLEEF_64f(function, u)(x, y); })
#define TWO(Family, function, u, ulp)                                                                                  \
  ROW(Family, 64f, Double, 1, 2, "sleef-" #u, ulp, [](Doubles x) { return SLEEF_64f(function, u)(x); })                \
  ROW(Family, 32f, Float, 1, 2, "sleef-" #u, ulp, [](Floats x) { return SLEEF_32f(function, u)(x); })
#define SCALAR_POWER_32F(function, u, ulp)                                                                             \
  {"Powx", "32f", "sleef-" #u, ulp, false, [](const Call& call) {                                                      \
     const Floats y = Float::splat(scalar_of<float>(call));                                                            \
     sweep<Float, 1, 1>(call, [=](Floats x) { return SLEEF_32f(function, u)(x, y); });                                 \
   }},
#define SCALAR_POWER(function, u, ulp)                                                                                 \
  SCALAR_POWER_32F(function, u, ulp){"Powx", "64f", "sleef-" #u, ulp, false, [](const Call& call) {                    \
                                       const Doubles y = Double::splat(scalar_of<double>(call));                       \
                                       sweep<Double, 1, 1>(call,                                                       \
                                                           [=](Doubles x) { return SLEEF_64f(function, u)(x, y); });   \
                                     }},
// An expression in f(x), the function of the type.
#define DERIVED(Family, function, u, ulp, expression)                                                                  \
  {Family,                                                                                                             \
   "64f",                                                                                                              \
   "sleef-" #u "+",                                                                                                    \
   ulp,                                                                                                                \
   false,                                                                                                              \
   [](const Call& call) {                                                                                              \
     using T [[maybe_unused]] = double;                                                                                \
     const auto f = [](Doubles v) { return SLEEF_64f(function, u)(v); };                                               \
     sweep<Double, 1, 1>(call, [=](Doubles x) -> Doubles { return expression; });                                      \
   }},                                                                                                                 \
      {Family, "32f", "sleef-" #u "+", ulp, false, [](const Call& call) {                                              \
         using T [[maybe_unused]] = float;                                                                             \
         const auto f = [](Floats v) { return SLEEF_32f(function, u)(v); };                                            \
         sweep<Float, 1, 1>(call, [=](Floats x) -> Floats { return expression; });                                     \
       }},
#define COMPOSED(Family, type, P, u, ulp, loop) {Family, #type, "sleef-" #u "+", ulp, false, Composed<P>::loop},
#define COMPLEX(Family, loop)                                                                                          \
  COMPOSED(Family, 64fc, Double10, u10, 0, loop)                                                                       \
  COMPOSED(Family, 64fc, Double35, u35, 4, loop)                                                                       \
  COMPOSED(Family, 32fc, Float10, u10, 0, loop)                                                                        \
  COMPOSED(Family, 32fc, Float35, u35, 4, loop)
#define COMPLEX_UNARY(Family, function)                                                                                \
  COMPOSED(Family, 64fc, Double10, u10, 0, unary<Composed<Double10>::function>)                                        \
  COMPOSED(Family, 64fc, Double35, u35, 4, unary<Composed<Double35>::function>)                                        \
  COMPOSED(Family, 32fc, Float10, u10, 0, unary<Composed<Float10>::function>)                                          \
  COMPOSED(Family, 32fc, Float35, u35, 4, unary<Composed<Float35>::function>)

// clang-format off
constexpr Peer table[] = {
    UNARY("Exp", exp, u10, 1)
    UNARY("Expm1", expm1, u10, 1)
    UNARY("Ln", log, u10, 1)
    UNARY("Ln", log, u35, 3.5)
    UNARY("Log10", log10, u10, 1)
    UNARY("Log1p", log1p, u10, 1)
    UNARY("Sqrt", sqrt, u05, 0.5)
    UNARY("Sqrt", sqrt, u35, 3.5)
    UNARY("Cbrt", cbrt, u10, 1)
    UNARY("Cbrt", cbrt, u35, 3.5)
    UNARY("Sin", sin, u10, 1)
    UNARY("Sin", sin, u35, 3.5)
    UNARY_32F("Sin", fastsin, u3500, 350)
    UNARY("Cos", cos, u10, 1)
    UNARY("Cos", cos, u35, 3.5)
    UNARY_32F("Cos", fastcos, u3500, 350)
    UNARY("Tan", tan, u10, 1)
    UNARY("Tan", tan, u35, 3.5)
    UNARY("Asin", asin, u10, 1)
    UNARY("Asin", asin, u35, 3.5)
    UNARY("Acos", acos, u10, 1)
    UNARY("Acos", acos, u35, 3.5)
    UNARY("Atan", atan, u10, 1)
    UNARY("Atan", atan, u35, 3.5)
    UNARY("Sinh", sinh, u10, 1)
    UNARY("Sinh", sinh, u35, 3.5)
    UNARY("Cosh", cosh, u10, 1)
    UNARY("Cosh", cosh, u35, 3.5)
    UNARY("Tanh", tanh, u10, 1)
    UNARY("Tanh", tanh, u35, 3.5)
    UNARY("Asinh", asinh, u10, 1)
    UNARY("Acosh", acosh, u10, 1)
    UNARY("Atanh", atanh, u10, 1)
    UNARY("Erf", erf, u10, 1)
    UNARY("Erfc", erfc, u15, 1.5)
    TWO("SinCos", sincos, u10, 1)
    TWO("SinCos", sincos, u35, 3.5)
    BINARY("Atan2", atan2, u10, 1)
    BINARY("Atan2", atan2, u35, 3.5)
    BINARY("Hypot", hypot, u05, 0.5)
    BINARY("Hypot", hypot, u35, 3.5)
    BINARY("Pow", pow, u10, 1)
    BINARY_32F("Pow", fastpow, u3500, 350)
    SCALAR_POWER(pow, u10, 1)
    SCALAR_POWER_32F(fastpow, u3500, 350)
    DERIVED("InvCbrt", cbrt, u10, 0, T(1) / f(x))
    DERIVED("InvCbrt", cbrt, u35, 4, T(1) / f(x))
    DERIVED("Pow2o3", cbrt, u10, 0, f(x) * f(x))
    DERIVED("Pow2o3", cbrt, u35, 4, f(x) * f(x))
    DERIVED("Pow3o2", sqrt, u05, 0, x * f(x))
    DERIVED("CdfNorm", erfc, u15, 0, T(0.5) * f(x * T(-0.70710678118654752440)))
    COMPLEX("CIS", cis_loop)
    COMPLEX_UNARY("Exp", exp)
    COMPLEX_UNARY("Ln", log)
    COMPLEX_UNARY("Log10", log10)
    COMPLEX_UNARY("Sin", sin)
    COMPLEX_UNARY("Cos", cos)
    COMPLEX_UNARY("Tan", tan)
    COMPLEX_UNARY("Sinh", sinh)
    COMPLEX_UNARY("Cosh", cosh)
    COMPLEX_UNARY("Tanh", tanh)
    COMPLEX("Pow", pow_loop)
    COMPLEX("Powx", powx_loop)
};
// clang-format on

} // namespace
} // namespace bench

KELVM_PEERS(bench::table)
