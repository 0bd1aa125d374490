#!/usr/bin/python3
"""Angles and coefficients of the hyperbolic and complex functions' factors: prints src/hyperbolic/factors_tables.hpp."""
from decimal import Decimal as D, getcontext
from fractions import Fraction as F

from emit import array, constant, dec, decimal_pi, footer, header, table
from minimax import minimax, to_double, to_float

getcontext().prec = 80
PI = decimal_pi()


def series(first, sign=-1, terms=25):
    """The Taylor series of sine (first = 3) or cosine (2), from the power `first` on, divided by it: of z = r^2. With
    sign = 1 those of the hyperbolic ones."""
    def f(z):
        term = D(sign)
        for k in range(2, first + 1):
            term /= k
        total = D(0)
        for k in range(first + 1, first + 2 * terms, 2):
            total += term
            term *= sign * z / (k * (k + 1))
        return total
    return f


def sine_of_angle(j):
    """sin(j pi/32), exact at multiples of pi/2."""
    if j % 16 == 0:
        return D((0, 1, 0, -1)[j // 16 % 4])
    x = PI * j / 32
    return x + x**3 * series(3, -1, 60)(x * x)


def nearest(d, bits):
    return F(int((d * (1 << bits)).to_integral_value()), 1 << bits)


def main():
    header("Tables and coefficients of sines, cosines, hyperbolic sines and cosines", "factors_tables")
    rows = []
    for j in range(64):
        row = []
        for d in (sine_of_angle(j), sine_of_angle(j + 16)):
            head = nearest(d, 26)
            row += [head, to_double(d - dec(head))]
        rows.append(row)
    table("sine_cosine", "sin a and cos a, a = j pi/32: each rounded to a multiple of 2^-26, and the rest", rows)

    left = PI / 32
    parts = []
    for bits in (34, 66, 98):
        part = nearest(left, bits)
        parts.append(part)
        left -= dec(part)
    print("// pi/32: products of the first three with integers below 2^20 are exact")
    for i, part in enumerate(parts + [left]):
        constant(f"pi_32_{i}", part)
    print()

    def fits(name, label, bound, sine_count, cosine_count, ctype="double", h=""):
        high = (bound * D("1.001")) ** 2
        rounded = to_float if ctype == "float" else to_double
        for kind, first, count in (("sin", 3, sine_count), ("cos", 2, cosine_count)):
            c, e = minimax(series(first, 1 if h else -1), lambda z: z, range(count), D(0), high, rounded)
            what = f"({kind}{h} r - r) / r^3" if first == 3 else f"({kind}{h} r - 1) / r^2"
            error = "relative" if first == 3 else "absolute"
            array(f"{kind}{h}_{name}", f"{what} by powers of r^2, |r| <= {label}; {error} errors: {e}", c, ctype)

    fits("full", "pi/64", PI / 64, 3, 4)
    fits("short", "pi/64", PI / 64, 2, 2)
    fits("whole", "pi/4", PI / 4, 4, 4)
    fits("single_bits21", "pi/4", PI / 4, 3, 4, "float")
    fits("single_bits11", "pi/4", PI / 4, 2, 2, "float")
    ln2 = D(2).ln()
    fits("full", "ln 2 / 64", ln2 / 64, 3, 3, "double", "h")
    fits("short", "ln 2 / 64", ln2 / 64, 1, 2, "double", "h")
    fits("single_bits21", "ln 2 / 2", ln2 / 2, 2, 3, "float", "h")
    fits("single_bits11", "ln 2 / 2", ln2 / 2, 1, 2, "float", "h")
    footer("factors_tables")


main()
