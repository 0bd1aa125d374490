#!/usr/bin/python3
"""Coefficients of a rational error function: prints src/erf/erf_single_tables.hpp."""
from decimal import Decimal as D, getcontext

from emit import array, decimal_pi, footer, header
from minimax import rational, to_float

getcontext().prec = 60

LIMIT = D("3.625")  # 1 - erf 3.625 is below 2^-21.5
PI = decimal_pi()


def erf_ratio(z):
    """erf x / x, z = x^2, by the series of erf."""
    total, term, k = D(1), D(1), 0
    while abs(term) > D(10) ** -45:
        k += 1
        term *= -z / k
        total += term / (2 * k + 1)
    return 2 / PI.sqrt() * total


def main():
    header("Coefficients of a rational error function", "erf_single_tables")
    numerator, denominator, e = rational(erf_ratio, lambda z: 1 / erf_ratio(z), 5, 5, LIMIT ** 2, to_float)
    array("numerator", f"erf x / x by powers of x^2, |x| <= {LIMIT}; errors of erf x: {e}", numerator, "float")
    array("denominator", "its denominator", denominator, "float")
    footer("erf_single_tables")


main()
