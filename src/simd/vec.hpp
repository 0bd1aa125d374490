// Vectors of any width, one lane included. A formula is written once over a type V that is either Vec<T, N> (a compiler
// vector: + - * / & | ^ << >> and comparisons work lane by lane) or the plain scalar T (one lane). What operators
// cannot say is below as free functions, each defined for both.
//
// Masks: comparing vectors gives a Mask<V>, all bits of a lane set or none; comparing scalars gives bool. Combine masks
// with & | and !, consume them with select, any and lane_bits.
#pragma once

#include "simd/isa.hpp"

#include <cstdint>
#include <cstring>
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
template <int Bytes> struct IntOf;
template <> struct IntOf<4> {
  using Signed = std::int32_t;
  using Unsigned = std::uint32_t;
};
template <> struct IntOf<8> {
  using Signed = std::int64_t;
  using Unsigned = std::uint64_t;
};
} // namespace detail

template <class V> using Lane = decltype(detail::lane_type<V>());
template <class V> inline constexpr int lanes = int(sizeof(V) / sizeof(Lane<V>));
/// V with its lanes of another type U, as many of them.
template <class V, class U> using Rebind = Vec<U, lanes<V>>;
/// Signed and unsigned integers of the lanes' own size.
template <class V> using Int = Rebind<V, typename detail::IntOf<sizeof(Lane<V>)>::Signed>;
template <class V> using Bits = Rebind<V, typename detail::IntOf<sizeof(Lane<V>)>::Unsigned>;
template <class V> using Mask = decltype(std::declval<V>() < std::declval<V>());
/// One bit a lane, lane 0 lowest.
using LaneBits = unsigned;
template <class V> inline constexpr LaneBits all_lanes = (lanes<V> == 32 ? 0u : (1u << lanes<V>)) - 1u;

/// Two vectors that belong together: sine and cosine, head and tail, real and imaginary part.
template <class V> struct Pair { V first, second; };

// --- moving data ---------------------------------------------------------------------------------------------------

template <class V> inline V load(const Lane<V>* from) {
  V v;
  std::memcpy(&v, from, sizeof v);
  return v;
}
template <class V> inline void store(Lane<V>* to, V v) { std::memcpy(to, &v, sizeof v); }

template <class V> inline V splat(Lane<V> x) {
  return [x]<int... I>(std::integer_sequence<int, I...>) { return V{((void)I, x)...}; }
  (std::make_integer_sequence<int, lanes<V>>{});
}

/// The two values at `from`, over and over.
template <class V> inline V splat_pair(const Lane<V>* from) {
  static_assert(std::is_same_v<V, Native<Lane<V>>>);
  if constexpr (sizeof(Lane<V>) == 4) {
    double both;
    std::memcpy(&both, from, sizeof both);
    return (V)splat<Vec<double, lanes<V> / 2>>(both);
  } else {
    const __m128d both = _mm_loadu_pd(from);
#if KELVM_AVX512
    return (V)_mm512_maskz_broadcast_f64x2(__mmask8(-1), both);
#elif KELVM_AVX2
    return (V)_mm256_set_m128d(both, both);
#else
    return (V)both;
#endif
  }
}

namespace detail {
/// Lanes 0 .. n-1 set, as a vector mask (builds without mask registers).
template <class V> inline Int<V> first_lanes(int n) {
  return [n]<int... I>(std::integer_sequence<int, I...>) { return splat<Int<V>>(n) > Int<V>{I...}; }
  (std::make_integer_sequence<int, lanes<V>>{});
}
} // namespace detail

/// The first n lanes from memory, the others from fill; nothing beyond the n is touched. 0 <= n < lanes.
template <class V> inline V load_first(const Lane<V>* from, int n, V fill) {
  static_assert(std::is_same_v<V, Native<Lane<V>>>);
#if KELVM_AVX512
  const unsigned mask = (1u << n) - 1u;
  if constexpr (sizeof(Lane<V>) == 8)
    return (V)_mm512_mask_loadu_pd((__m512d)fill, __mmask8(mask), from);
  else
    return (V)_mm512_mask_loadu_ps((__m512)fill, __mmask16(mask), from);
#elif KELVM_AVX2
  const __m256i mask = (__m256i)detail::first_lanes<V>(n);
  if constexpr (sizeof(Lane<V>) == 8)
    return (V)_mm256_blendv_pd((__m256d)fill, _mm256_maskload_pd(from, mask), (__m256d)mask);
  else
    return (V)_mm256_blendv_ps((__m256)fill, _mm256_maskload_ps(from, mask), (__m256)mask);
#else
  for (int i = 0; i < lanes<V> - 1; ++i)
    if (i < n) fill[i] = load<Lane<V>>(from + i);
  return fill;
#endif
}
template <class V> inline void store_first(Lane<V>* to, int n, V v) {
  static_assert(std::is_same_v<V, Native<Lane<V>>>);
#if KELVM_AVX512
  const unsigned mask = (1u << n) - 1u;
  if constexpr (sizeof(Lane<V>) == 8)
    _mm512_mask_storeu_pd(to, __mmask8(mask), (__m512d)v);
  else
    _mm512_mask_storeu_ps(to, __mmask16(mask), (__m512)v);
#elif KELVM_AVX2
  const __m256i mask = (__m256i)detail::first_lanes<V>(n);
  if constexpr (sizeof(Lane<V>) == 8)
    _mm256_maskstore_pd(to, mask, (__m256d)v);
  else
    _mm256_maskstore_ps(to, mask, (__m256)v);
#else
  for (int i = 0; i < lanes<V> - 1; ++i)
    if (i < n) store<Lane<V>>(to + i, v[i]);
#endif
}

/// Two vectors of interleaved pairs taken apart into first and second members, and put together again.
template <class V> inline Pair<V> deinterleave(V low, V high) {
  return [=]<int... I>(std::integer_sequence<int, I...>) {
    return Pair<V>{__builtin_shufflevector(low, high, (2 * I)...), __builtin_shufflevector(low, high, (2 * I + 1)...)};
  }
  (std::make_integer_sequence<int, lanes<V>>{});
}
template <class V> inline Pair<V> interleave(Pair<V> parts) {
  constexpr int n = lanes<V>;
  return [=]<int... I>(std::integer_sequence<int, I...>) {
    return Pair<V>{__builtin_shufflevector(parts.first, parts.second, (I / 2 + I % 2 * n)...),
                   __builtin_shufflevector(parts.first, parts.second, (n / 2 + I / 2 + I % 2 * n)...)};
  }
  (std::make_integer_sequence<int, n>{});
}

/// The same within each 128 bits, where shuffles are cheap: unzip(low, high) has the pairs in an order of its own, and
/// zip() undoes it.
template <class V> inline Pair<V> unzip(V low, V high) {
  return [=]<int... I>(std::integer_sequence<int, I...>) {
    constexpr int n = lanes<V>, per = 16 / int(sizeof(Lane<V>));
    return Pair<V>{
        __builtin_shufflevector(low, high, (I / per * per + I % per / (per / 2) * n + I % (per / 2) * 2)...),
        __builtin_shufflevector(low, high, (I / per * per + I % per / (per / 2) * n + I % (per / 2) * 2 + 1)...)};
  }
  (std::make_integer_sequence<int, lanes<V>>{});
}
template <class V> inline Pair<V> zip(Pair<V> parts) {
  return [=]<int... I>(std::integer_sequence<int, I...>) {
    constexpr int n = lanes<V>, per = 16 / int(sizeof(Lane<V>));
    return Pair<V>{
        __builtin_shufflevector(parts.first, parts.second, (I / per * per + I % per / 2 + I % 2 * n)...),
        __builtin_shufflevector(parts.first, parts.second, (I / per * per + per / 2 + I % per / 2 + I % 2 * n)...)};
  }
  (std::make_integer_sequence<int, lanes<V>>{});
}

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

/// The products of the low 32 bits of 64-bit lanes.
template <class B> inline B multiply_low_halves(B a, B b) {
  static_assert(sizeof(Lane<B>) == 8);
  if constexpr (lanes<B> == 1) {
    return B(std::uint32_t(a)) * std::uint32_t(b);
#if KELVM_AVX512
  } else if constexpr (sizeof a == 64) {
    return (B)_mm512_maskz_mul_epu32(__mmask8(-1), (__m512i)a, (__m512i)b);
#endif
#if KELVM_AVX512 || KELVM_AVX2
  } else if constexpr (sizeof a == 32) {
    return (B)_mm256_mul_epu32((__m256i)a, (__m256i)b);
#endif
  } else {
    static_assert(sizeof a == 16);
    return (B)_mm_mul_epu32((__m128i)a, (__m128i)b);
  }
}

template <class V> using HalfOf = Vec<Lane<V>, lanes<V> / 2>;
template <class H> using TwiceOf = Vec<Lane<H>, 2 * lanes<H>>;

/// Half 0 or 1 of a vector. (The compiler's own shuffles take more instructions here and in join.)
template <int Half, class V> inline HalfOf<V> half(V v) {
#if KELVM_AVX512
  if constexpr (sizeof(V) == 64) return (HalfOf<V>)_mm512_maskz_extractf64x4_pd(0xFF, (__m512d)v, Half);
#endif
#if KELVM_AVX512 || KELVM_AVX2
  if constexpr (sizeof(V) == 32) return (HalfOf<V>)_mm256_extractf128_pd((__m256d)v, Half);
#endif
  return [v]<int... I>(std::integer_sequence<int, I...>) {
    return __builtin_shufflevector(v, v, (Half * (lanes<V> / 2) + I)...);
  }
  (std::make_integer_sequence<int, lanes<V> / 2>{});
}
/// Two halves put together.
template <class H> inline TwiceOf<H> join(H low, H high) {
#if KELVM_AVX512
  if constexpr (sizeof(H) == 32)
    return (TwiceOf<H>)_mm512_maskz_insertf64x4(0xFF, _mm512_castpd256_pd512((__m256d)low), (__m256d)high, 1);
#endif
#if KELVM_AVX512 || KELVM_AVX2
  if constexpr (sizeof(H) == 16)
    return (TwiceOf<H>)_mm256_insertf128_pd(_mm256_castpd128_pd256((__m128d)low), (__m128d)high, 1);
#endif
  return [ low, high ]<int... I>(std::integer_sequence<int, I...>) { return __builtin_shufflevector(low, high, I...); }
  (std::make_integer_sequence<int, 2 * lanes<H>>{});
}

// --- masks ---------------------------------------------------------------------------------------------------------

/// a where the mask is set, b elsewhere. A vector mask counts by its sign bit alone.
template <class M, class V> inline V select(M mask, V a, std::type_identity_t<V> b) {
  constexpr bool wide = sizeof(Lane<V>) == 8;
  if constexpr (lanes < V >> 1) static_assert(sizeof(M) == sizeof(V));
#if KELVM_AVX512 || KELVM_AVX2
  if constexpr (lanes < V >> 1 && sizeof(V) == 32) {
    if constexpr (wide)
      return (V)_mm256_blendv_pd((__m256d)b, (__m256d)a, (__m256d)mask);
    else
      return (V)_mm256_blendv_ps((__m256)b, (__m256)a, (__m256)mask);
  } else
#endif
      if constexpr (lanes<V> > 1 && sizeof(V) == 16) {
    if constexpr (wide)
      return (V)_mm_blendv_pd((__m128d)b, (__m128d)a, (__m128d)mask);
    else
      return (V)_mm_blendv_ps((__m128)b, (__m128)a, (__m128)mask);
  } else if constexpr (std::is_same_v<M, bool>) {
    return mask ? a : b;
  } else {
    return mask < 0 ? a : b;
  }
}

#if KELVM_AVX512
#  define KELVM_512_BITS(op)                                                                                           \
    if constexpr (sizeof a == 64 && wide)                                                                              \
      return (V)_mm512_maskz_##op##_pd(__mmask8(-1), (__m512d)a, (__m512d)b);                                          \
    else if constexpr (sizeof a == 64)                                                                                 \
      return (V)_mm512_maskz_##op##_ps(__mmask16(-1), (__m512)a, (__m512)b);                                           \
    else
#else
#  define KELVM_512_BITS(op)
#endif
#if KELVM_AVX512 || KELVM_AVX2
#  define KELVM_256_BITS(op)                                                                                           \
    if constexpr (sizeof a == 32 && wide)                                                                              \
      return (V)_mm256_##op##_pd((__m256d)a, (__m256d)b);                                                              \
    else if constexpr (sizeof a == 32)                                                                                 \
      return (V)_mm256_##op##_ps((__m256)a, (__m256)b);                                                                \
    else
#else
#  define KELVM_256_BITS(op)
#endif
#define KELVM_MIN_OR_MAX(op, comparison)                                                                               \
  [[maybe_unused]] constexpr bool wide = sizeof(Lane<V>) == 8;                                                         \
  if constexpr (lanes<V> == 1)                                                                                         \
    return a comparison b ? a : b;                                                                                     \
  else                                                                                                                 \
    KELVM_512_BITS(op)                                                                                                 \
  KELVM_256_BITS(op)                                                                                                   \
  if constexpr (wide)                                                                                                  \
    return (V)_mm_##op##_pd((__m128d)a, (__m128d)b);                                                                   \
  else                                                                                                                 \
    return (V)_mm_##op##_ps((__m128)a, (__m128)b)

/// a < b ? a : b, and a > b ? a : b: b where one is a NaN, which raises invalid.
template <class V> inline V smaller_of(V a, V b) { KELVM_MIN_OR_MAX(min, <); }
template <class V> inline V larger_of(V a, V b) { KELVM_MIN_OR_MAX(max, >); }

#undef KELVM_MIN_OR_MAX
#undef KELVM_256_BITS
#undef KELVM_512_BITS

/// v where the mask is set, +0 elsewhere.
template <class M, class V> inline V keep(M mask, V v) {
  if constexpr (std::is_same_v<M, bool>)
    return mask ? v : V(0);
  else
    return from_bits<V>(bits(v) & bit_cast<Bits<V>>(mask));
}

/// The sign bit of every lane of v.
template <class V> inline LaneBits sign_bits(V v) {
  constexpr bool wide = sizeof(Lane<V>) == 8;
  if constexpr (lanes<V> == 1) {
    return LaneBits(bits(v) >> (8 * sizeof v - 1));
#if KELVM_AVX512
  } else if constexpr (sizeof v == 64) {
    return wide ? LaneBits(_mm512_movepi64_mask((__m512i)v)) : LaneBits(_mm512_movepi32_mask((__m512i)v));
#endif
#if KELVM_AVX512 || KELVM_AVX2
  } else if constexpr (sizeof v == 32) {
    return LaneBits(wide ? _mm256_movemask_pd((__m256d)v) : _mm256_movemask_ps((__m256)v));
#endif
  } else {
    static_assert(sizeof v == 16);
    return LaneBits(wide ? _mm_movemask_pd((__m128d)v) : _mm_movemask_ps((__m128)v));
  }
}

template <class M> inline LaneBits lane_bits(M mask) {
  if constexpr (std::is_same_v<M, bool>)
    return mask;
  else
    return sign_bits(mask);
}
template <class M> inline bool any(M mask) { return lane_bits(mask) != 0; }

/// Marks: a mask of which only the sign bits count, so that one subtraction can make it and it can be or-ed together
/// without a comparison. marks() makes it from any mask; select, lane_bits and any take it.
template <class V> using Marks = Int<V>;
template <class V> inline Marks<V> marks(Mask<V> mask) {
  if constexpr (lanes<V> == 1)
    return mask ? -1 : 0;
  else
    return mask;
}
/// Marks the lanes whose bits, taken as signed, exceed the limit's: |x| > limit for x = abs(v), NaN included.
/// Both must be non-negative as integers.
template <class V> inline Marks<V> above(V v, Lane<V> limit) { return int_bits(splat<V>(limit)) - int_bits(v); }

// --- floating point ------------------------------------------------------------------------------------------------

template <class V> inline constexpr Lane<Bits<V>> sign_bit = Lane<Bits<V>>(1) << (8 * sizeof(Lane<V>) - 1);

template <class V> inline V abs(V v) { return from_bits<V>(bits(v) & ~sign_bit<V>); }
/// Added to |x| < 2^51 (2^22 for floats) it rounds x to an integer, which stands in the low bits of the sum; subtracted
/// again it leaves that integer.
template <class T> inline constexpr T shifter = sizeof(T) == 8 ? T(0x1.8p52) : T(0x1.8p23);
/// The sign bit of v alone, as bits to be or-ed or xor-ed into a value.
template <class V> inline Bits<V> sign_of(V v) { return bits(v) & sign_bit<V>; }
template <class V> inline V with_sign(V v, Bits<V> sign) { return from_bits<V>(bits(v) | sign); }
template <class V> inline V flip_sign(V v, Bits<V> sign) { return from_bits<V>(bits(v) ^ sign); }

template <class V> inline V sqrt(V v) {
  constexpr bool wide = sizeof(Lane<V>) == 8;
  if constexpr (lanes<V> == 1) {
    if constexpr (wide)
      return __builtin_sqrt(v);
    else
      return __builtin_sqrtf(v);
#if KELVM_AVX512
  } else if constexpr (sizeof v == 64) {
    if constexpr (wide)
      return (V)_mm512_maskz_sqrt_pd(__mmask8(-1), (__m512d)v);
    else
      return (V)_mm512_maskz_sqrt_ps(__mmask16(-1), (__m512)v);
#endif
#if KELVM_AVX512 || KELVM_AVX2
  } else if constexpr (sizeof v == 32) {
    if constexpr (wide)
      return (V)_mm256_sqrt_pd((__m256d)v);
    else
      return (V)_mm256_sqrt_ps((__m256)v);
#endif
  } else {
    static_assert(sizeof v == 16);
    if constexpr (wide)
      return (V)_mm_sqrt_pd((__m128d)v);
    else
      return (V)_mm_sqrt_ps((__m128)v);
  }
}

/// a * b - product, exact where product is a * b rounded to nearest: the error term of an exact product, through a
/// fused operation where the build has one (`fused_product_error`), through Veltkamp's and Dekker's split elsewhere
/// (see exact/exact.hpp, which is the only user).
#if KELVM_SSE41
inline constexpr bool has_fused_product_error = false;
template <class V> V fused_product_error(V, V, V) = delete;
#else
inline constexpr bool has_fused_product_error = true;
template <class V> inline V fused_product_error(V a, V b, V product) {
  constexpr bool wide = sizeof(Lane<V>) == 8;
  if constexpr (lanes<V> == 1) {
    if constexpr (wide)
      return _mm_cvtsd_f64(_mm_fmsub_sd(_mm_set_sd(a), _mm_set_sd(b), _mm_set_sd(product)));
    else
      return _mm_cvtss_f32(_mm_fmsub_ss(_mm_set_ss(a), _mm_set_ss(b), _mm_set_ss(product)));
  } else if constexpr (sizeof(V) == 32) {
    if constexpr (wide)
      return (V)_mm256_fmsub_pd((__m256d)a, (__m256d)b, (__m256d)product);
    else
      return (V)_mm256_fmsub_ps((__m256)a, (__m256)b, (__m256)product);
#  if KELVM_AVX512
  } else {
    if constexpr (wide)
      return (V)_mm512_fmsub_pd((__m512d)a, (__m512d)b, (__m512d)product);
    else
      return (V)_mm512_fmsub_ps((__m512)a, (__m512)b, (__m512)product);
#  endif
  }
}
#endif

/// floor(log2 v) for a positive normal v; for any positive bits, their exponent field less the bias.
template <class V> inline V exponent_of(V v) {
  if constexpr (sizeof(Lane<V>) == 8) // the exponent as the low bits of a double in [2^52, 2^53)
    return from_bits<V>((bits(v) >> 52) | 0x4330000000000000u) - (0x1p52 + 1023);
  else
    return convert<V>(bit_cast<Int<V>>(bits(v) >> 23)) - 127.0f;
}

/// How round() rounds. Quiet raises no inexact.
enum class Rounding : int { nearest_even = 0, down = 1, up = 2, to_zero = 3, current = 4, current_quiet = 12 };

template <Rounding How, class V> inline V round(V v) {
  constexpr int control = int(How);
  constexpr bool wide = sizeof(Lane<V>) == 8;
  if constexpr (lanes<V> == 1) {
    if constexpr (wide)
      return _mm_cvtsd_f64(_mm_round_sd(_mm_set_sd(v), _mm_set_sd(v), control));
    else
      return _mm_cvtss_f32(_mm_round_ss(_mm_set_ss(v), _mm_set_ss(v), control));
#if KELVM_AVX512
  } else if constexpr (sizeof v == 64) {
    if constexpr (wide)
      return (V)_mm512_maskz_roundscale_pd(__mmask8(-1), (__m512d)v, control);
    else
      return (V)_mm512_maskz_roundscale_ps(__mmask16(-1), (__m512)v, control);
#endif
#if KELVM_AVX512 || KELVM_AVX2
  } else if constexpr (sizeof v == 32) {
    if constexpr (wide)
      return (V)_mm256_round_pd((__m256d)v, control);
    else
      return (V)_mm256_round_ps((__m256)v, control);
#endif
  } else {
    static_assert(sizeof v == 16);
    if constexpr (wide)
      return (V)_mm_round_pd((__m128d)v, control);
    else
      return (V)_mm_round_ps((__m128)v, control);
  }
}

/// Half 0 or 1 of a native float vector widened to a native double vector.
template <int Half> inline Native<double> widen(Native<float> v) {
#if KELVM_AVX512
  return (Native<double>)_mm512_maskz_cvtps_pd(0xFF, (__m256)half<Half>(v));
#elif KELVM_AVX2
  return (Native<double>)_mm256_cvtps_pd((__m128)half<Half>(v));
#else
  return (Native<double>)_mm_cvtps_pd(Half ? _mm_movehl_ps((__m128)v, (__m128)v) : (__m128)v);
#endif
}
/// The same for the integers of float lanes.
template <int Half> inline Native<double> widen(Int<Native<float>> v) {
#if KELVM_AVX512
  return (Native<double>)_mm512_maskz_cvtepi32_pd(0xFF, (__m256i)half<Half>(v));
#elif KELVM_AVX2
  return (Native<double>)_mm256_cvtepi32_pd((__m128i)half<Half>(v));
#else
  return (Native<double>)_mm_cvtepi32_pd(Half ? _mm_unpackhi_epi64((__m128i)v, (__m128i)v) : (__m128i)v);
#endif
}
/// Two native double vectors rounded to one native float vector.
inline Native<float> narrow(Native<double> low, Native<double> high) {
#if KELVM_AVX512
  return join((Vec<float, 8>)_mm512_maskz_cvtpd_ps(0xFF, (__m512d)low),
              (Vec<float, 8>)_mm512_maskz_cvtpd_ps(0xFF, (__m512d)high));
#elif KELVM_AVX2
  return join((Vec<float, 4>)_mm256_cvtpd_ps((__m256d)low), (Vec<float, 4>)_mm256_cvtpd_ps((__m256d)high));
#else
  return (Native<float>)_mm_movelh_ps(_mm_cvtpd_ps((__m128d)low), _mm_cvtpd_ps((__m128d)high));
#endif
}

/// Evaluates f, written for double lanes, on float lanes: widened, one native double vector after the other, and
/// rounded once. f may take several arguments.
template <class F, class V, class... More> inline V in_double(F f, V x, More... more) {
  if constexpr (lanes<V> == 1)
    return float(f(double(x), double(more)...));
  else
    return narrow(f(widen<0>(x), widen<0>(more)...), f(widen<1>(x), widen<1>(more)...));
}

} // namespace kelvm::inline KELVM_BUILD
