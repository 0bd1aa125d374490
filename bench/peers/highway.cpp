// Highway's contrib/math, compiled for one target. The errors are the ones its comments state.
#define HWY_COMPILE_ONLY_STATIC
#include <hwy/highway.h>
// after it
#include <hwy/contrib/math/math-inl.h>

#include "sweep.hpp"

namespace bench {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

template <class T> struct Tagged {
  using Element = T;
  using D = hn::ScalableTag<T>;
  using Vector = hn::Vec<D>;
  static constexpr int width = HWY_LANES(T);
  static Vector load(const T* p) { return hn::LoadU(D(), p); }
  static void store(T* p, Vector v) { hn::StoreU(v, D(), p); }
};
using Double = Tagged<double>;
using Float = Tagged<float>;

#define ROW(Family, type, L, ulp, sources, ...)                                                                        \
  {Family, #type, "highway", ulp, false, [](const Call& call) {                                                        \
     using V = L::Vector;                                                                                              \
     const L::D d [[maybe_unused]]{};                                                                                  \
     sweep<L, sources, 1>(call, __VA_ARGS__);                                                                          \
   }},
#define UNARY(Family, ulp, expression)                                                                                 \
  ROW(Family, 64f, Double, ulp, 1, [=](V x) { return expression; })                                                    \
  ROW(Family, 32f, Float, ulp, 1, [=](V x) { return expression; })
#define BINARY(Family, expression)                                                                                     \
  ROW(Family, 64f, Double, 0, 2, [](V x, V y) { return expression; })                                                  \
  ROW(Family, 32f, Float, 0, 2, [](V x, V y) { return expression; })

// clang-format off
constexpr Peer table[] = {
    BINARY("Add", hn::Add(x, y))
    BINARY("Sub", hn::Sub(x, y))
    BINARY("Mul", hn::Mul(x, y))
    BINARY("Div", hn::Div(x, y))
    UNARY("Sqrt", 0, hn::Sqrt(x))
    UNARY("Abs", 0, hn::Abs(x))
    UNARY("Ceil", 0, hn::Ceil(x))
    UNARY("Floor", 0, hn::Floor(x))
    UNARY("Trunc", 0, hn::Trunc(x))
    UNARY("Rint", 0, hn::Round(x))
    UNARY("Acos", 2, hn::Acos(d, x))
    UNARY("Acosh", 3, hn::Acosh(d, x))
    UNARY("Asin", 2, hn::Asin(d, x))
    UNARY("Asinh", 3, hn::Asinh(d, x))
    UNARY("Atan", 1, hn::Atan(d, x))
    UNARY("Atanh", 3, hn::Atanh(d, x))
    UNARY("Cos", 3, hn::Cos(d, x))
    UNARY("Exp", 1, hn::Exp(d, x))
    UNARY("Expm1", 4, hn::Expm1(d, x))
    UNARY("Ln", 4, hn::Log(d, x))
    UNARY("Log10", 2, hn::Log10(d, x))
    UNARY("Log1p", 2, hn::Log1p(d, x))
    UNARY("Sin", 3, hn::Sin(d, x))
    UNARY("Sinh", 4, hn::Sinh(d, x))
    UNARY("Tanh", 4, hn::Tanh(d, x))
};
// clang-format on

} // namespace
} // namespace bench

KELVM_PEERS(bench::table)
