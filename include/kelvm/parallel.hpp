// SPDX-License-Identifier: MIT
/// @file
/// The functions of kelvm/kelvm.hpp with an execution policy as first argument, over many cores:
///
///     kelvm::exp(std::execution::par, x, y);
///
/// What a call computes and returns is what it computes and returns without a policy, bit for bit: the results, the
/// status of the last element that earned a warning, the exception for sizes that differ. The pieces are computed in
/// the caller's rounding mode, and the exception flags that they raise are raised in the caller.
///
/// The work is done by the parallel algorithms of the standard library. Those of libstdc++ use oneTBB: programs link
/// `-ltbb`, in CMake `find_package(TBB)` and `TBB::tbb`. A long call allocates a few bytes a piece; where it cannot, it
/// throws `std::bad_alloc` before anything is written. Other than without a policy, ranges that overlap must be the
/// same.
#ifndef KELVM_PARALLEL_HPP
#define KELVM_PARALLEL_HPP

#include "kelvm/kelvm.hpp"

#include <algorithm>
#include <cfenv>
#include <execution>
#include <vector>

namespace kelvm {
inline namespace KELVM_WRONG_SIZE_ {
namespace detail {

template <class P>
concept policy = std::is_execution_policy_v<std::remove_cvref_t<P>>;

// A piece changes the floating-point mode while it is computed, so that no thread may interleave two of them.
template <policy P> const auto& without_interleaving(const P& policy) {
  if constexpr (std::same_as<P, std::execution::parallel_unsequenced_policy>)
    return std::execution::par;
  else if constexpr (std::same_as<P, std::execution::unsequenced_policy>)
    return std::execution::seq;
  else
    return policy;
}

// What a piece leaves behind for its caller.
struct Outcome {
  status found;
  int flags;
};

template <class T> bool is_null(T* array) { return array == nullptr; }
template <class T> bool is_null(T) { return false; }

// Calls the C function for pieces that the policy may have computed side by side.
template <class Policy> struct InPieces {
  Policy policy;

  template <class Function, class... Arguments>
  status operator()(Function* function, std::size_t size, Arguments... arguments) const {
    constexpr std::size_t piece = 1 << 15; // tens of microseconds
    if (size <= piece || (is_null(arguments) || ...)) return InOrder()(function, size, arguments...);

    std::vector<Outcome> outcomes((size - 1) / piece + 1);
    std::fenv_t callers, working;
    std::feholdexcept(&callers);
    std::fegetenv(&working); // the caller's modes, no flags, nothing trapped
    std::fesetenv(&callers);
    std::for_each(without_interleaving(policy), outcomes.begin(), outcomes.end(), [&](Outcome& outcome) {
      const std::size_t first = static_cast<std::size_t>(&outcome - outcomes.data()) * piece;
      std::fenv_t workers;
      std::fegetenv(&workers);
      std::fesetenv(&working);
      outcome.found = InOrder()(function, std::min(piece, size - first), from(first, arguments)...);
      outcome.flags = std::fetestexcept(FE_ALL_EXCEPT);
      std::fesetenv(&workers);
    });

    Outcome all{status::ok, 0};
    for (const Outcome& outcome : outcomes) {
      if (outcome.found != status::ok) all.found = outcome.found;
      all.flags |= outcome.flags;
    }
    std::feraiseexcept(all.flags);
    return all.found;
  }
};

} // namespace detail

#define KELVM_ONE_SOURCE_(name, Family)                                                                                \
  template <accuracy Level = accuracy::full, detail::policy Policy, class X, class Y>                                  \
  status name(Policy&& policy, const X& x, Y&& y) {                                                                    \
    return detail::apply<detail::Family, Level>(detail::InPieces<Policy&>{policy}, x, std::forward<Y>(y));             \
  }
#define KELVM_TWO_SOURCES_(name, Family)                                                                               \
  template <accuracy Level = accuracy::full, detail::policy Policy, class X1, class X2, class Y>                       \
  status name(Policy&& policy, const X1& x1, const X2& x2, Y&& y) {                                                    \
    return detail::apply<detail::Family, Level>(detail::InPieces<Policy&>{policy}, x1, x2, std::forward<Y>(y));        \
  }
#define KELVM_TWO_OUTPUTS_(name, Family)                                                                               \
  template <accuracy Level = accuracy::full, detail::policy Policy, class X, class Y1, class Y2>                       \
  status name(Policy&& policy, const X& x, Y1&& y1, Y2&& y2) {                                                         \
    return detail::apply<detail::Family, Level>(detail::InPieces<Policy&>{policy}, x, std::forward<Y1>(y1),            \
                                                std::forward<Y2>(y2));                                                 \
  }

KELVM_ONE_SOURCE_(sqr, Sqr)
KELVM_ONE_SOURCE_(abs, Abs)
KELVM_ONE_SOURCE_(inv, Inv)
KELVM_ONE_SOURCE_(conj, Conj)
KELVM_ONE_SOURCE_(ceil, Ceil)
KELVM_ONE_SOURCE_(floor, Floor)
KELVM_ONE_SOURCE_(trunc, Trunc)
KELVM_ONE_SOURCE_(round, Round)
KELVM_ONE_SOURCE_(rint, Rint)
KELVM_ONE_SOURCE_(nearbyint, NearbyInt)
KELVM_ONE_SOURCE_(sqrt, Sqrt)
KELVM_ONE_SOURCE_(rsqrt, InvSqrt)
KELVM_ONE_SOURCE_(cbrt, Cbrt)
KELVM_ONE_SOURCE_(rcbrt, InvCbrt)
KELVM_ONE_SOURCE_(pow2o3, Pow2o3)
KELVM_ONE_SOURCE_(pow3o2, Pow3o2)
KELVM_ONE_SOURCE_(exp, Exp)
KELVM_ONE_SOURCE_(expm1, Expm1)
KELVM_ONE_SOURCE_(log, Ln)
KELVM_ONE_SOURCE_(log10, Log10)
KELVM_ONE_SOURCE_(log1p, Log1p)
KELVM_ONE_SOURCE_(sin, Sin)
KELVM_ONE_SOURCE_(cos, Cos)
KELVM_ONE_SOURCE_(cis, CIS)
KELVM_ONE_SOURCE_(tan, Tan)
KELVM_ONE_SOURCE_(atan, Atan)
KELVM_ONE_SOURCE_(asin, Asin)
KELVM_ONE_SOURCE_(acos, Acos)
KELVM_ONE_SOURCE_(sinh, Sinh)
KELVM_ONE_SOURCE_(cosh, Cosh)
KELVM_ONE_SOURCE_(tanh, Tanh)
KELVM_ONE_SOURCE_(asinh, Asinh)
KELVM_ONE_SOURCE_(acosh, Acosh)
KELVM_ONE_SOURCE_(atanh, Atanh)
KELVM_ONE_SOURCE_(erf, Erf)
KELVM_ONE_SOURCE_(erfc, Erfc)
KELVM_ONE_SOURCE_(erf_inv, ErfInv)
KELVM_ONE_SOURCE_(erfc_inv, ErfcInv)
KELVM_ONE_SOURCE_(cdf_norm, CdfNorm)
KELVM_ONE_SOURCE_(cdf_norm_inv, CdfNormInv)
KELVM_TWO_SOURCES_(add, Add)
KELVM_TWO_SOURCES_(sub, Sub)
KELVM_TWO_SOURCES_(mul, Mul)
KELVM_TWO_SOURCES_(div, Div)
KELVM_TWO_SOURCES_(mul_by_conj, MulByConj)
KELVM_TWO_OUTPUTS_(modf, Modf)
KELVM_TWO_SOURCES_(hypot, Hypot)
KELVM_TWO_OUTPUTS_(sincos, SinCos)
KELVM_TWO_SOURCES_(atan2, Atan2)
KELVM_TWO_SOURCES_(pow, PowerBy<X2>)

#undef KELVM_ONE_SOURCE_
#undef KELVM_TWO_SOURCES_
#undef KELVM_TWO_OUTPUTS_

} // namespace KELVM_WRONG_SIZE_
} // namespace kelvm

#endif
