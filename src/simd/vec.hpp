// Vectors of any width and what nearly every kernel does with them. Included by those that want it: table lookup
// (table.hpp), exponents and integral values (exponent.hpp, integer.hpp, integral.hpp), the processor's estimates
// (estimate.hpp), operations with two NaNs (ordered.hpp), tests of whole blocks (quick_range.hpp, magnitude_test.hpp).
#pragma once

#include "simd/arithmetic.hpp"
#include "simd/constants.hpp"
#include "simd/interval.hpp"
#include "simd/mask.hpp"
#include "simd/memory.hpp"
#include "simd/shuffle.hpp"
