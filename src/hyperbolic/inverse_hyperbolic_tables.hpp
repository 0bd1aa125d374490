// Coefficients of asinh next to 0. Generated: do not edit.
//   tools/tables/inverse_hyperbolic.py > src/hyperbolic/inverse_hyperbolic_tables.hpp
#pragma once

#include "simd/isa.hpp"

namespace kelvm::inline KELVM_BUILD::inverse_hyperbolic_tables {

// clang-format off

// (asinh x - x) / x^3 by powers of x^2, |x| <= 2^-14; error 2^-62.3 of asinh x
inline constexpr double asinh_full[] = {
    -0x1.5555554d5f22dp-3};

// (asinh x - x) / x^3 by powers of x^2, |x| <= 2^-6; error 2^-45.2 of asinh x
inline constexpr double asinh_bits40[] = {
    -0x1.5555552dde37bp-3,
    0x1.332345f419b52p-4};

// (asinh x - x) / x^3 by powers of x^2, |x| <= 2^-6; error 2^-30.3 of asinh x
inline constexpr double asinh_bits27[] = {
    -0x1.554d5f682a05bp-3};

// (asinh x - x) / x^3 by powers of x^2, |x| <= 2^-3; error 2^-18.3 of asinh x
inline constexpr float asinh_bits11[] = {
    -0x1.535c140000000p-3f};

// clang-format on

} // namespace kelvm::inline KELVM_BUILD::inverse_hyperbolic_tables
