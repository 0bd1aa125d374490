// Loops over single instructions as one would tune them by hand: four vectors an iteration, all loads before the
// stores. What the arithmetic and the rounding functions are held against.
#include "lanes.hpp"

namespace bench {
namespace {

template <int Mode> Doubles rounded(Doubles x) {
#if defined(__AVX512F__)
  return _mm512_roundscale_pd(x, Mode);
#elif defined(__AVX2__)
  return _mm256_round_pd(x, Mode);
#else
  return _mm_round_pd(x, Mode);
#endif
}
template <int Mode> Floats rounded(Floats x) {
#if defined(__AVX512F__)
  return _mm512_roundscale_ps(x, Mode);
#elif defined(__AVX2__)
  return _mm256_round_ps(x, Mode);
#else
  return _mm_round_ps(x, Mode);
#endif
}
Doubles root(Doubles x) {
#if defined(__AVX512F__)
  return _mm512_sqrt_pd(x);
#elif defined(__AVX2__)
  return _mm256_sqrt_pd(x);
#else
  return _mm_sqrt_pd(x);
#endif
}
Floats root(Floats x) {
#if defined(__AVX512F__)
  return _mm512_sqrt_ps(x);
#elif defined(__AVX2__)
  return _mm256_sqrt_ps(x);
#else
  return _mm_sqrt_ps(x);
#endif
}

template <class V> struct Integers;
template <> struct Integers<Doubles> {
  typedef long long Vector __attribute__((vector_size(sizeof(Doubles))));
  static constexpr long long sign = 1ll << 63;
};
template <> struct Integers<Floats> {
  typedef int Vector __attribute__((vector_size(sizeof(Floats))));
  static constexpr int sign = int(1u << 31);
};
template <class V> V magnitude(V x) {
  using I = typename Integers<V>::Vector;
  return (V)((I)x & ~(I{} + Integers<V>::sign));
}
template <class V> V with_sign_of(V x, V magnitude) {
  using I = typename Integers<V>::Vector;
  return (V)((I)magnitude | ((I)x & (I{} + Integers<V>::sign)));
}
/// Halfway cases away from zero: truncation after adding the number just below one half.
Doubles half_away(Doubles x) { return rounded<3>(x + with_sign_of(x, Doubles{} + 0x1.fffffffffffffp-2)); }
Floats half_away(Floats x) { return rounded<3>(x + with_sign_of(x, Floats{} + 0x1.fffffep-2f)); }

template <class V> struct Split { V integral, fraction; };
template <class V> Split<V> split(V x) {
  const V integral = rounded<3>(x);
  return {integral, with_sign_of(x, magnitude(x - integral))};
}

#define ROW(Family, type, L, sources, destinations, ...)                                                               \
  {Family, #type, "hand", 0, false, [](const Call& call) {                                                             \
     using V [[maybe_unused]] = L::Vector;                                                                             \
     sweep<L, sources, destinations, 4>(call, __VA_ARGS__);                                                            \
   }},
#define UNARY(Family, expression)                                                                                      \
  ROW(Family, 64f, Double, 1, 1, [](V x) { return expression; })                                                       \
  ROW(Family, 32f, Float, 1, 1, [](V x) { return expression; })
#define BINARY(Family, expression)                                                                                     \
  ROW(Family, 64f, Double, 2, 1, [](V x, V y) { return expression; })                                                  \
  ROW(Family, 32f, Float, 2, 1, [](V x, V y) { return expression; })

// clang-format off
constexpr Peer table[] = {
    BINARY("Add", x + y)
    BINARY("Sub", x - y)
    BINARY("Mul", x * y)
    BINARY("Div", x / y)
    UNARY("Sqr", x * x)
    UNARY("Abs", magnitude(x))
    UNARY("Inv", 1 / x)
    UNARY("Sqrt", root(x))
    UNARY("Ceil", rounded<2>(x))
    UNARY("Floor", rounded<1>(x))
    UNARY("Trunc", rounded<3>(x))
    UNARY("Rint", rounded<4>(x))
    UNARY("NearbyInt", rounded<12>(x))
    UNARY("Round", half_away(x))
    ROW("Modf", 64f, Double, 1, 2, [](V x) { return split(x); })
    ROW("Modf", 32f, Float, 1, 2, [](V x) { return split(x); })
};
// clang-format on

} // namespace
} // namespace bench

KELVM_PEERS(bench::table)
