// Coefficients of asinh next to 0. Made by tools/tables/inverse_hyperbolic.py, run by tools/tables/regenerate: do not
// edit.
// Of each fit: the interval; what the errors are relative to, which is the weight; the error of the fit with these
// coefficients; a bound of that of its evaluation, by Horner's rule without fused steps.
// clang-format off
#pragma once

#include "simd/isa.hpp"

namespace kelvm::inline KELVM_BUILD::inverse_hyperbolic_tables {

// (asinh x - x) / x^3 by powers of x^2, |x| <= 2^-14; errors of asinh x: fit 2^-62.2, evaluation 0
inline constexpr double asinh_full[] = {
    -0x1.5555554d5f22dp-3};

// (asinh x - x) / x^3 by powers of x^2, |x| <= 2^-6; errors of asinh x: fit 2^-45.1, evaluation 2^-67.5
inline constexpr double asinh_bits40[] = {
    -0x1.5555552dde37bp-3,
    0x1.332345f419b52p-4};

// (asinh x - x) / x^3 by powers of x^2, |x| <= 2^-6; errors of asinh x: fit 2^-30.2, evaluation 0
inline constexpr double asinh_bits27[] = {
    -0x1.554d5f682a05bp-3};

// (asinh x - x) / x^3 by powers of x^2, |x| <= 2^-3; errors of asinh x: fit 2^-18.2, evaluation 0
inline constexpr float asinh_bits11[] = {
    -0x1.535c14p-3f};

} // namespace kelvm::inline KELVM_BUILD::inverse_hyperbolic_tables
