#!/usr/bin/python3
"""Coefficients of a rational tanh: prints src/hyperbolic/tanh_tables.hpp."""
from decimal import Decimal as D, getcontext

from emit import array, footer, header
from minimax import rational, to_float

getcontext().prec = 80

LIMITS = {"bits21": D("7.9"), "bits11": D(6)}  # 1 - tanh 7.9 and 1 - tanh 6 are below 2^-21.7 and 2^-16


def tanh_ratio(z):
    """tanh x / x, z = x^2."""
    x = z.sqrt()
    e = (2 * x).exp()
    return (e - 1) / ((e + 1) * x)


def main():
    header("Coefficients of a rational tanh", "tanh_tables")
    for name, degree in (("bits21", 4), ("bits11", 2)):
        limit = LIMITS[name]
        numerator, denominator, e = rational(tanh_ratio, lambda z: 1 / tanh_ratio(z), degree, max(degree, 3), limit ** 2,
                                             to_float, lowest=1)
        array(f"numerator_{name}", f"tanh x / x by powers of x^2, |x| <= {limit}; errors of tanh x: {e}", numerator,
              "float")
        array(f"denominator_{name}", "its denominator", denominator, "float")
    footer("tanh_tables")


main()
