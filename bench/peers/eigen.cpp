// Eigen's array expressions, with its unsupported special functions.
#include "peer.hpp"

#include <Eigen/Core>
#include <complex>
#include <unsupported/Eigen/SpecialFunctions>

namespace bench {
namespace {

template <class T> using Array = Eigen::Map<Eigen::Array<T, Eigen::Dynamic, 1>>;
template <class T> using ConstArray = Eigen::Map<const Eigen::Array<T, Eigen::Dynamic, 1>>;

#define ROW(Family, type, From, To, naive, expression)                                                                 \
  {Family, #type, "eigen", 0, naive, [](const Call& call) {                                                            \
     using T [[maybe_unused]] = From;                                                                                  \
     const ConstArray<From> x(static_cast<const From*>(call.src1), call.n);                                            \
     const ConstArray<From> y [[maybe_unused]] (static_cast<const From*>(call.src2), call.src2 ? call.n : 0);          \
     Array<To>(static_cast<To*>(call.dst1), call.n) = expression;                                                      \
   }},
#define REAL(Family, expression)                                                                                       \
  ROW(Family, 64f, double, double, false, expression)                                                                  \
  ROW(Family, 32f, float, float, false, expression)
#define COMPLEX(Family, naive, expression)                                                                             \
  ROW(Family, 64fc, std::complex<double>, std::complex<double>, naive, expression)                                     \
  ROW(Family, 32fc, std::complex<float>, std::complex<float>, naive, expression)

// clang-format off
constexpr Peer table[] = {
    REAL("Add", x + y)
    REAL("Sub", x - y)
    REAL("Mul", x * y)
    REAL("Div", x / y)
    REAL("Sqr", x.square())
    REAL("Abs", x.abs())
    REAL("Inv", x.inverse())
    REAL("Sqrt", x.sqrt())
    REAL("InvSqrt", x.rsqrt())
    REAL("Pow3o2", x * x.sqrt())
    REAL("Ceil", x.ceil())
    REAL("Floor", x.floor())
    REAL("Round", x.round())
    REAL("Rint", x.rint())
    REAL("Exp", x.exp())
    REAL("Expm1", x.expm1())
    REAL("Ln", x.log())
    REAL("Log10", x.log10())
    REAL("Log1p", x.log1p())
    REAL("Sin", x.sin())
    REAL("Cos", x.cos())
    REAL("Tanh", x.tanh())
    REAL("Pow", x.pow(y))
    REAL("Erf", x.erf())
    REAL("CdfNormInv", x.ndtri())
    REAL("ErfInv", (x * T(0.5) + T(0.5)).ndtri() * T(0.70710678118654752440))
    REAL("ErfcInv", (x * T(0.5)).ndtri() * T(-0.70710678118654752440))
    COMPLEX("Add", false, x + y)
    COMPLEX("Sub", false, x - y)
    COMPLEX("Mul", false, x * y)
    COMPLEX("MulByConj", false, x * y.conjugate())
    COMPLEX("Div", true, x / y)
    COMPLEX("Conj", false, x.conjugate())
    COMPLEX("Sqrt", false, x.sqrt())
    ROW("Abs", 64fc, std::complex<double>, double, false, x.abs())
    ROW("Abs", 32fc, std::complex<float>, float, false, x.abs())
};
// clang-format on

} // namespace
} // namespace bench

KELVM_PEERS(bench::table)
