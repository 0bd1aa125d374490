// Coefficients of a rational tanh. Generated: do not edit.
//   tools/tables/tanh.py > src/hyperbolic/tanh_tables.hpp
#pragma once

#include "simd/isa.hpp"

namespace kelvm::inline KELVM_BUILD::tanh_tables {

// clang-format off

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
