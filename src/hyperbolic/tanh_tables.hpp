// Coefficients of a rational tanh. Generated: do not edit.
//   tools/tables/tanh.py > src/hyperbolic/tanh_tables.hpp
#pragma once

#include "simd/isa.hpp"

namespace kelvm::inline KELVM_BUILD::tanh_tables {

// clang-format off

// tanh x / x by powers of x^2, |x| <= 7.9; error 2^-27.3 of tanh x
inline constexpr float numerator_bits21[] = {
    0x1p+0f,
    0x1.1384540000000p-3f,
    0x1.d578900000000p-9f,
    0x1.72424a0000000p-16f,
    0x1.0a294a0000000p-26f};

// its denominator
inline constexpr float denominator_bits21[] = {
    0x1p+0f,
    0x1.df177c0000000p-2f,
    0x1.ad4ec00000000p-6f,
    0x1.6779300000000p-12f,
    0x1.cf0c8a0000000p-21f};

// tanh x / x by powers of x^2, |x| <= 6; error 2^-16.9 of tanh x
inline constexpr float numerator_bits11[] = {
    0x1p+0f,
    0x1.d6ffae0000000p-4f,
    0x1.8f479c0000000p-10f};

// its denominator
inline constexpr float denominator_bits11[] = {
    0x1p+0f,
    0x1.cb0c680000000p-2f,
    0x1.2173020000000p-6f,
    0x1.dc252e0000000p-15f};

// clang-format on

} // namespace kelvm::inline KELVM_BUILD::tanh_tables
