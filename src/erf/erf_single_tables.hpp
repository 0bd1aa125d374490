// Coefficients of a rational error function. Generated: do not edit.
//   tools/tables/erf_single.py > src/erf/erf_single_tables.hpp
#pragma once

#include "simd/isa.hpp"

namespace kelvm::inline KELVM_BUILD::erf_single_tables {

// clang-format off

// erf x / x by powers of x^2, |x| <= 3.625; error 2^-27.5 of erf x
inline constexpr float numerator[] = {
    0x1.20dd740000000p+0f,
    0x1.73876a0000000p-3f,
    0x1.a8d8d20000000p-5f,
    0x1.c4365e0000000p-9f,
    0x1.30f0bc0000000p-12f,
    0x1.3549800000000p-19f};

// its denominator
inline constexpr float denominator[] = {
    0x1p+0f,
    0x1.f9f6700000000p-2f,
    0x1.c546ae0000000p-4f,
    0x1.d5f90a0000000p-7f,
    0x1.22bf760000000p-10f,
    0x1.57e5a60000000p-15f};

// clang-format on

} // namespace kelvm::inline KELVM_BUILD::erf_single_tables
