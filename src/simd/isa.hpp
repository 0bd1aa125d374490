// The instruction set this build is for. One source makes three libraries; this folder alone looks at the set.
#pragma once

#include <immintrin.h>

#if defined(__AVX512F__) && defined(__AVX512DQ__) && defined(__AVX512BW__) && defined(__AVX512VL__)
#  define KELVM_BUILD avx512
#  define KELVM_BUILD_CODE "v4"
#  define KELVM_AVX512 1
#elif defined(__AVX2__)
#  define KELVM_BUILD avx2
#  define KELVM_BUILD_CODE "v3"
#  define KELVM_AVX2 1
#elif defined(__SSE4_1__)
#  define KELVM_BUILD sse41
#  define KELVM_BUILD_CODE "y8"
#  define KELVM_SSE41 1
#else
#  error "kelvm needs at least SSE4.1"
#endif

// KELVM_BY_GATHERS is defined for kernel files that are compiled twice (frame/export.hpp), with lookups by loads and by
// gather instructions, these in a namespace of their own.
#if KELVM_BY_GATHERS
#  undef KELVM_BUILD
#  if KELVM_AVX512
#    define KELVM_BUILD avx512_gathers
#  else
#    define KELVM_BUILD avx2_gathers
#  endif
#endif

// The build's own flags come after all others on the command line. What they cannot take back is an error.
#ifdef KELVM_WANTED_VECTOR_BYTES
#  if (KELVM_WANTED_VECTOR_BYTES == 64) != (KELVM_AVX512 + 0) || (KELVM_WANTED_VECTOR_BYTES == 32) != (KELVM_AVX2 + 0)
#    error "other compiler flags have overruled the instruction set of this build"
#  endif
#  if KELVM_WANTED_VECTOR_BYTES == 16 && defined(__AVX__)
#    error "other compiler flags have overruled the instruction set of this build: it is for SSE4.1 alone"
#  endif
#endif
#if defined(__FAST_MATH__) || defined(__ASSOCIATIVE_MATH__) || defined(__RECIPROCAL_MATH__) ||                         \
    defined(__NO_SIGNED_ZEROS__) || defined(__NO_TRAPPING_MATH__) ||                                                   \
    (defined(__FINITE_MATH_ONLY__) && __FINITE_MATH_ONLY__)
#  error "kelvm's formulas need IEEE arithmetic as written: no -ffast-math, nor a part of it"
#endif

// Everything below src/ lives in namespace kelvm::KELVM_BUILD, an inline namespace whose name differs between the
// builds, so that two of them in one program never share a symbol.
namespace kelvm::inline KELVM_BUILD {

#if KELVM_AVX512
inline constexpr int vector_bytes = 64;
#elif KELVM_AVX2
inline constexpr int vector_bytes = 32;
#else
inline constexpr int vector_bytes = 16;
#endif

/// Whether products and sums can be fused: one operation, one rounding.
#if KELVM_SSE41
inline constexpr bool has_fused = false;
#else
inline constexpr bool has_fused = true;
#endif

/// Whether flags that a formula raises stay, as in functions of registers; it does more then, lest it raise one that no
/// element earns. The array functions take such flags back, once a call, where it costs nothing.
#if KELVM_IN_REGISTERS
inline constexpr bool flags_stay = true;
#else
inline constexpr bool flags_stay = false;
#endif

/// Whether lookups use gather instructions.
#if KELVM_BY_GATHERS
inline constexpr bool by_gathers = true;
#else
inline constexpr bool by_gathers = false;
#endif

} // namespace kelvm::inline KELVM_BUILD
