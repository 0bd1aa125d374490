// Polynomial evaluation, for any width. The order of operations is fixed by the function that is called. Steps are
// fused where the build has that (mul_add), but for horner_unfused, which gives the same bits in every build.
#pragma once

#include "simd/vec.hpp"

namespace kelvm::inline KELVM_BUILD {

/// c[0] + x (c[1] + x (... + x c[N-1])): fewest operations, one long chain.
template <class V, int N> inline V horner(V x, const Lane<V> (&c)[N]) {
  V sum = splat<V>(c[N - 1]);
#pragma GCC unroll 32
  for (int i = N - 2; i >= 0; --i) sum = mul_add(sum, x, splat<V>(c[i]));
  return sum;
}
/// The same two coefficients at a time: one operation more, half the chain.
template <class V, int N> inline V by_pairs(V x, const Lane<V> (&c)[N]) {
  constexpr int last = (N - 1) / 2 * 2; // a single coefficient if N is odd
  const V x2 = x * x;
  V sum = splat<V>(c[last]);
  if constexpr (N % 2 == 0) sum = mul_add(splat<V>(c[N - 1]), x, sum);
#pragma GCC unroll 16
  for (int i = last - 2; i >= 0; i -= 2) sum = mul_add(sum, x2, mul_add(splat<V>(c[i + 1]), x, splat<V>(c[i])));
  return sum;
}
/// horner(), each product and each sum rounded, in every build.
template <class V, int N> inline V horner_unfused(V x, const Lane<V> (&c)[N]) {
  V sum = splat<V>(c[N - 1]);
#pragma GCC unroll 32
  for (int i = N - 2; i >= 0; --i) sum = sum * x + c[i];
  return sum;
}

namespace detail {
/// The polynomial of coefficients First .. First + N - 1, by halves: the lower one has `Low` coefficients, a power of
/// two; powers[k] = x^(2^k).
template <int First, int N, class V, int M> inline V estrin_part(const V* powers, const Lane<V> (&c)[M]) {
  if constexpr (N == 1) {
    return splat<V>(c[First]);
  } else if constexpr (N == 2) {
    return mul_add(splat<V>(c[First + 1]), powers[0], splat<V>(c[First]));
  } else {
    constexpr int log = N <= 4 ? 1 : N <= 8 ? 2 : N <= 16 ? 3 : 4;
    constexpr int low = 1 << log;
    return mul_add(estrin_part<First + low, N - low, V>(powers, c), powers[log], estrin_part<First, low, V>(powers, c));
  }
}
} // namespace detail

/// The same polynomial by halves (Estrin): a chain of log2 N steps. N <= 32. With First, c[First] + x (c[First + 1] +
/// ...).
template <int First = 0, class V, int M> inline V estrin(V x, const Lane<V> (&c)[M]) {
  constexpr int N = M - First;
  static_assert(N > 0 && N <= 32);
  V powers[5] = {x}; // only those that are used: a power too high may underflow
  if constexpr (N > 2) powers[1] = x * x;
  if constexpr (N > 4) powers[2] = powers[1] * powers[1];
  if constexpr (N > 8) powers[3] = powers[2] * powers[2];
  if constexpr (N > 16) powers[4] = powers[3] * powers[3];
  return detail::estrin_part<First, N>(powers, c);
}

} // namespace kelvm::inline KELVM_BUILD
