#!/usr/bin/python3
"""Minimax polynomials and rational functions for the circular functions: prints src/trig/trig_fits.hpp."""
from decimal import Decimal as D, getcontext

import gmpy2

from emit import array, decimal_pi, footer, header
from minimax import fpminimax, rational, to_double, to_float

getcontext().prec = 60

LOW = "1b-20"


def a_little_above(bound):
    return f"{bound} * (1 + 1b-10)"


def sine_to_1(c):
    """The last coefficient such that the sine of pi/2 is 1."""
    end = gmpy2.const_pi() / 2
    return to_float((1 - (end + c[0] * end**3 + c[1] * end**5)) / end**7)


def tangent(name, terms, bound, ctype="double"):
    c, errors = fpminimax("tan(x)", range(3, 2 * terms + 3, 2), LOW, a_little_above(bound), ctype, "x")
    array(name, f"(tan r - r) / r^3 by powers of r^2, |r| <= {bound}; errors relative to tan r: {errors}", c, ctype)


def tangent_ratio(z):
    """tan r / r, z = r^2."""
    with gmpy2.local_context(gmpy2.get_context(), precision=160):
        r = gmpy2.sqrt(gmpy2.mpfr(str(z)))
        return D(str(gmpy2.tan(r) / r))


def rational_tangent(name, n_degree, d_degree, ctype="double"):
    high = (decimal_pi() / 4 * (1 + D(2) ** -10)) ** 2
    rounded = {"double": to_double, "float": to_float}[ctype]
    n, d, e = rational(tangent_ratio, lambda z: 1 / tangent_ratio(z), n_degree, d_degree, high, rounded, lowest=1)
    array(f"{name}_numerator", f"tan r / r by powers of r^2, |r| <= pi / 4; errors relative to tan r: {e}", n, ctype)
    array(f"{name}_denominator", "its denominator", d, ctype)


def main():
    header("Fits of circular functions")
    c, errors = fpminimax("sin(x)", range(1, 10, 2), LOW, a_little_above("pi / 2"))
    array("sine_half_pi", f"sin r / r by powers of r^2, |r| <= pi / 2; relative errors: {errors}", c)
    c, errors = fpminimax("sin(x)", range(3, 8, 2), LOW, a_little_above("pi / 2"), "float", "x", sine_to_1)
    array("sine_half_pi_single", "(sin r - r) / r^3 by powers of r^2, |r| <= pi / 2, 1 at pi / 2; errors relative to sin r: "
          f"{errors}", c, "float")
    c, errors = fpminimax("sin(pi * x)", range(1, 16, 2), LOW, a_little_above("1 / 2"))
    array("sine_half_turn", f"sin(pi t) / t by powers of t^2, |t| <= 1/2; relative errors: {errors}", c)
    tangent("tangent_5", 5, "pi / 64")
    tangent("tangent_4", 4, "pi / 64")
    tangent("tangent_3", 3, "pi / 64")
    rational_tangent("tangent_50", 3, 3)
    rational_tangent("tangent_26", 2, 2)
    rational_tangent("tangent_21", 1, 2, "float")
    rational_tangent("tangent_11", 1, 1, "float")
    footer()


main()
