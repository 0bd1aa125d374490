#!/usr/bin/env python3
"""Coefficients of a rational tanh: writes src/hyperbolic/tanh_tables.hpp.

    tools/tables/tanh.py > src/hyperbolic/tanh_tables.hpp
"""
from decimal import Decimal as D, getcontext

from emit import array
from minimax import rational, to_float

getcontext().prec = 80

LIMITS = {"bits21": D("7.9"), "bits11": D(6)}  # 1 - tanh 7.9 and 1 - tanh 6 are below 2^-21.7 and 2^-16


def tanh_ratio(z):
    """tanh x / x, z = x^2."""
    x = z.sqrt()
    e = (2 * x).exp()
    return (e - 1) / ((e + 1) * x)


def main():
    print("""// Coefficients of a rational tanh. Generated: do not edit.
//   tools/tables/tanh.py > src/hyperbolic/tanh_tables.hpp
#pragma once

#include "simd/isa.hpp"

namespace kelvm::inline KELVM_BUILD::tanh_tables {

// clang-format off
""")
    for name, degree in (("bits21", 4), ("bits11", 2)):
        limit = LIMITS[name]
        numerator, denominator, e = rational(tanh_ratio, lambda z: 1 / tanh_ratio(z), degree, max(degree, 3), limit ** 2,
                                             to_float, lowest=1)
        array(f"numerator_{name}", f"tanh x / x by powers of x^2, |x| <= {limit}; error 2^{e:.1f} of tanh x", numerator,
              "float")
        array(f"denominator_{name}", "its denominator", denominator, "float")
    print("// clang-format on\n\n} // namespace kelvm::inline KELVM_BUILD::tanh_tables")


main()
