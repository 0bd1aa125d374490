#!/usr/bin/python3
"""Coefficients of asinh next to 0: prints src/hyperbolic/inverse_hyperbolic_tables.hpp."""
from decimal import Decimal as D, getcontext

from emit import array, footer, header
from minimax import minimax, to_double, to_float

getcontext().prec = 80


def tail_of_asinh(z, terms=40):
    """(asinh x - x) / x^3, z = x^2."""
    total, binomial = D(0), D(1)
    for k in range(1, terms):
        binomial *= -D(2 * k - 1) / (2 * k)
        total += binomial / (2 * k + 1) * z ** (k - 1)
    return total


def main():
    header("Coefficients of asinh next to 0", "inverse_hyperbolic_tables")
    for name, log_high, count, ctype in (("full", 14, 1, "double"), ("bits40", 6, 2, "double"), ("bits27", 6, 1, "double"),
                                         ("bits11", 3, 1, "float")):
        high = D(1) / 4**log_high * D("1.001")
        c, e = minimax(tail_of_asinh, lambda z: z, range(count), 0, high, to_float if ctype == "float" else to_double)
        array(f"asinh_{name}", f"(asinh x - x) / x^3 by powers of x^2, |x| <= 2^-{log_high}; errors of asinh x: {e}",
              c, ctype)
    footer("inverse_hyperbolic_tables")


main()
