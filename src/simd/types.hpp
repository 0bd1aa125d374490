// Vectors of any width, one lane included. A formula is written once over a type V that is either Vec<T, N> (a compiler
// vector: + - * / & | ^ << >> and comparisons work lane by lane) or the plain scalar T (one lane). What operators
// cannot say are free functions, each defined for both: see memory.hpp, shuffle.hpp, mask.hpp, arithmetic.hpp.
#pragma once

#include "simd/isa.hpp"

#include <cstdint>
#include <type_traits>
#include <utility>

namespace kelvm::inline KELVM_BUILD {

template <class T, int N> struct VecOf { typedef T type __attribute__((vector_size(N * sizeof(T)))); };
template <class T> struct VecOf<T, 1> { using type = T; };
template <class T, int N> using Vec = typename VecOf<T, N>::type;

/// How many lanes of T fill a register of this build, and that register.
template <class T> inline constexpr int native_lanes = vector_bytes / int(sizeof(T));
template <class T> using Native = Vec<T, native_lanes<T>>;

namespace detail {
template <class V> auto lane_type() {
  if constexpr (std::is_arithmetic_v<V>)
    return V{};
  else
    return std::remove_cvref_t<decltype(std::declval<V&>()[0])>{};
}
template <int Bytes> struct LaneOfSize;
template <> struct LaneOfSize<4> {
  using Float = float;
  using Signed = std::int32_t;
  using Unsigned = std::uint32_t;
};
template <> struct LaneOfSize<8> {
  using Float = double;
  using Signed = std::int64_t;
  using Unsigned = std::uint64_t;
};
} // namespace detail

template <class V> using Lane = decltype(detail::lane_type<V>());
template <class V> inline constexpr int lanes = int(sizeof(V) / sizeof(Lane<V>));
/// V with its lanes of another type U, as many of them.
template <class V, class U> using Rebind = Vec<U, lanes<V>>;
/// Signed and unsigned integers of the lanes' own size.
template <class V> using Int = Rebind<V, typename detail::LaneOfSize<sizeof(Lane<V>)>::Signed>;
template <class V> using Bits = Rebind<V, typename detail::LaneOfSize<sizeof(Lane<V>)>::Unsigned>;
/// Floating-point lanes of the lanes' own size.
template <class V> using Floating = Rebind<V, typename detail::LaneOfSize<sizeof(Lane<V>)>::Float>;
template <class V> using Mask = decltype(std::declval<V>() < std::declval<V>());
/// One bit a lane, lane 0 lowest.
using BitMask = unsigned;
template <class V> inline constexpr BitMask all_lanes = (lanes<V> == 32 ? 0u : (1u << lanes<V>)) - 1u;

/// f(0), f(1) ... f(N - 1), each argument a compile-time constant.
template <int N, class F> inline void unrolled(F f) {
  [&]<int... I>(std::integer_sequence<int, I...>) { (f(std::integral_constant<int, I>{}), ...); }
  (std::make_integer_sequence<int, N>{});
}

/// Two vectors that belong together: sine and cosine, double-word, real and imaginary part.
template <class V> struct Pair { V first, second; };

template <class V> using HalfOf = Vec<Lane<V>, lanes<V> / 2>;
template <class H> using TwiceOf = Vec<Lane<H>, 2 * lanes<H>>;

/// What the instruction sets call differently, for the register type V; see sse41.hpp, avx2.hpp, avx512.hpp.
template <class V> struct Register;

template <class V> inline Lane<V> lane(const V& v, int i) {
  if constexpr (lanes<V> == 1)
    return v;
  else
    return v[i];
}

template <class To, class From> inline To bit_cast(From from) {
  static_assert(sizeof(To) == sizeof(From));
  return __builtin_bit_cast(To, from);
}
template <class V> inline Bits<V> bits(V v) { return bit_cast<Bits<V>>(v); }
template <class V> inline Int<V> int_bits(V v) { return bit_cast<Int<V>>(v); }
template <class V> inline V from_bits(std::type_identity_t<Bits<V>> b) { return bit_cast<V>(b); }

/// Value conversion lane by lane: Int lanes to floating lanes of the same size and back (truncating).
template <class To, class V> inline To convert(V v) {
  if constexpr (lanes<V> == 1)
    return To(v);
  else
    return __builtin_convertvector(v, To);
}

} // namespace kelvm::inline KELVM_BUILD
