// Coefficients of a rational error function. Made by tools/tables/erf_single.py, run by tools/tables/regenerate: do not
// edit.
// Of each fit: the interval; what the errors are relative to, which is the weight; the error of the fit with these
// coefficients; a bound of that of its evaluation, by Horner's rule without fused steps.
// clang-format off
#pragma once

#include "simd/isa.hpp"

namespace kelvm::inline KELVM_BUILD::erf_single_tables {

// erf x / x by powers of x^2, |x| <= 3.625; errors of erf x: fit 2^-24.1, evaluation 2^-20.0
inline constexpr float numerator[] = {
    0x1.20dd74p+0f,
    0x1.73876ap-3f,
    0x1.a8d8d2p-5f,
    0x1.c4365ep-9f,
    0x1.30f0bcp-12f,
    0x1.35498p-19f};

// its denominator
inline constexpr float denominator[] = {
    0x1p+0f,
    0x1.f9f67p-2f,
    0x1.c546aep-4f,
    0x1.d5f90ap-7f,
    0x1.22bf76p-10f,
    0x1.57e5a6p-15f};

} // namespace kelvm::inline KELVM_BUILD::erf_single_tables
