// Coefficients of a rational tanh. Made by tools/tables/tanh.py, run by tools/tables/regenerate: do not edit.
// Of each fit: the interval; what the errors are relative to, which is the weight; the error of the fit with these
// coefficients; a bound of that of its evaluation, by Horner's rule without fused steps.
// clang-format off
#pragma once

#include "simd/isa.hpp"

namespace kelvm::inline KELVM_BUILD::tanh_tables {

// tanh x / x by powers of x^2, |x| <= 7.9; errors of tanh x: fit 2^-25.1, evaluation 2^-20.5
inline constexpr float numerator_bits21[] = {
    0x1p+0f,
    0x1.138454p-3f,
    0x1.d5789p-9f,
    0x1.72424ap-16f,
    0x1.0a294ap-26f};

// its denominator
inline constexpr float denominator_bits21[] = {
    0x1p+0f,
    0x1.df177cp-2f,
    0x1.ad4ecp-6f,
    0x1.67793p-12f,
    0x1.cf0c8ap-21f};

// tanh x / x by powers of x^2, |x| <= 6; errors of tanh x: fit 2^-16.9, evaluation 2^-20.9
inline constexpr float numerator_bits11[] = {
    0x1p+0f,
    0x1.d6ffaep-4f,
    0x1.8f479cp-10f};

// its denominator
inline constexpr float denominator_bits11[] = {
    0x1p+0f,
    0x1.cb0c68p-2f,
    0x1.217302p-6f,
    0x1.dc252ep-15f};

} // namespace kelvm::inline KELVM_BUILD::tanh_tables
