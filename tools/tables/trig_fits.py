#!/usr/bin/python3
"""Minimax polynomials of the circular functions: prints src/trig/trig_fits.hpp."""
import gmpy2

from emit import array, footer, header
from minimax import fpminimax, to_float

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


def main():
    header("Polynomials of circular functions")
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
    tangent("tangent_2", 2, "pi / 64")
    tangent("tangent_single_6", 6, "pi / 4", "float")
    tangent("tangent_single_3", 3, "pi / 4", "float")
    footer()


main()
