#!/usr/bin/python3
"""Rows of minimax polynomials for the inverse error functions and the inverse of the normal distribution function:
prints src/erf/erf_inverse_tables.hpp."""
import math

import gmpy2
from gmpy2 import mpfr

from emit import comment, footer, header, table
from minimax import Interpolant, Rows, exactly, working


@exactly
def erfc_inverse(y):
    """z with erfc(z) = y, by Newton's method from a guess; 0 < y < 1. Relative accuracy 2^-180 also where z is small."""
    # Any guess below the root and right of the turning point converges: the function is convex.
    near = float(y)
    if near > 0.5:
        z = mpfr((1 - near) * 0.886)
    elif near > 0:
        z = mpfr(math.sqrt(max(-math.log(near) - 1, 0)) * 0.9)
    else:  # below the doubles
        z = mpfr(0.97 * math.sqrt(-float(gmpy2.log(y))))
    for _ in range(100):
        # The step is (erfc(z) - y) / (2 / sqrt(pi) e^(-z^2)), the difference taken from erf where y is near 1.
        residue = (1 - y) - gmpy2.erf(z) if near > 0.5 else gmpy2.erfc(z) - y
        residue = residue * gmpy2.exp(z * z) * gmpy2.sqrt(gmpy2.const_pi()) / 2
        # Halley's correction: z'' = 2 z z'^2.
        step = (residue * z + 1) * residue
        z += step
        if not residue or gmpy2.get_exp(step) < gmpy2.get_exp(z) - 150:
            break
    return z


@exactly
def inverse_over_distance(y):
    """erfinv(1 - y) / (1 - y)"""
    return erfc_inverse(y) / (1 - y)


@exactly
def deep_tail(s):
    """-s erfcinv(e^(-1 / s^2))"""
    return -(erfc_inverse(gmpy2.exp(-(1 / (s * s)))) * s)


# Row 0 of the two A53 tables, c0_lo, c1_lo, c2, ..., c14, c0_hi, c1_hi: published values, which the fit meets in c0 to c7.
# The low bits of the higher coefficients are below the accuracy of any fit.
FIRST_ERF_INV = [
    2.5137890581822675e-09, 4.916799275721886e-11, 0.05875579589031858, -0.004039394265801299, 0.008293601623453061,
    -0.00104242900202547, 0.0014660193326892063, -0.00026584531496444283, 0.00029055929841974586, -6.778096635098589e-05,
    6.186283353845844e-05, -1.7334120581320147e-05, 1.3844056455575122e-05, -4.5205975460772585e-06,
    3.2670847279364366e-06, 0.8871351778507233, -0.014563386095687747]
FIRST_CDF_NORM_INV = [
    -1.3823915760862766e-08, 1.375448334377981e-10, 0.08309324341611389, -0.0057125661544683085, 0.01172892389680684,
    -0.0014742172324754702, 0.00207326442299023, -0.00037596204991606214, 0.000410912900498816, -9.585676188431864e-05,
    8.748725819691709e-05, -2.451414841791355e-05, 1.9578452397733137e-05, -6.393090359692991e-06, 4.620355531669722e-06,
    1.254598617553711, -0.02059573819860816]


def middle_line(c):
    """Those of the best line of c0 + c1 t + c2 t^2 + c3 t^3, |t| <= 1/8, so that what is added to the heads, and its
    rounding errors, are half as large as beside the tangent in the middle."""
    return c[0] + c[2] / 128, c[1] + c[3] * 3 / 256


def quarter_binade_rows():
    """Row k of `full` belongs to 2^-1-k/4 (7 - k%4)/4 <= y < ..., y = 2^e (1 + q/4 + 1/8 + t), |t| <= 1/8."""
    degrees = {"full": 14, "bits50": 11, "bits27": 3, "bits40": 7, "bits21": 3, "bits11": 1}
    rows = {name: Rows(degree) for name, degree in degrees.items()}
    for k in range(212):
        e, q = -1 - k // 4, 3 - k % 4
        scale = mpfr(2) ** e
        f = Interpolant(inverse_over_distance, scale * (4 + q) / 4, scale * (5 + q) / 4, 40)

        def add(name, per_binade):
            parts, width = per_binade // 4, mpfr(1) / per_binade
            for part in reversed(range(parts)):  # parts count down, like the rows
                middle = 1 + mpfr(q) / 4 + width * part + width / 2
                rows[name].add(lambda t: f(scale * (middle + t)), -width / 2, width / 2)

        add("full", 4)
        add("bits50", 4)
        add("bits27", 16)
        if k < 96:
            add("bits40", 8)
            add("bits21", 8)
            add("bits11", 16)
    return rows


def tail_rows():
    rows = Rows(12)
    for i in range(4, 32):
        f = Interpolant(deep_tail, mpfr(i) / 128, mpfr(i + 1) / 128, 48)
        rows.add(lambda z: f(mpfr(i) / 128 + z), 0, mpfr(1) / 128)
    return rows


@exactly
def logarithms():
    """The logarithm's reciprocals with their logarithms: R = n / 512 near 512 / (512 + j + 1/2), and -ln R."""
    rows = []
    for j in range(256):
        n = (2 * 512 * 512 + 513 + 2 * j) // (2 * (513 + 2 * j))
        with gmpy2.local_context(gmpy2.get_context(), round=gmpy2.RoundToZero):
            minus_log = -gmpy2.log(mpfr(n) / 512)
            head = mpfr(minus_log, 21)
        rows.append([n / 512, head, minus_log - head])
    return rows


def main():
    rows, tail = quarter_binade_rows(), tail_rows()
    header("Rows of inverse error functions", "erf_inverse_tables")
    comment("Polynomials in t for erfinv(1 - y) / (1 - y). Row k belongs to a part of a binade of y, counted down from y just "
            "below 1; t is y's significand less that of the part's middle. The tables for the normal distribution have the "
            "factor sqrt(2).")
    print()
    root2 = working(exactly(gmpy2.sqrt)(mpfr(2)))
    families = (("erf", mpfr(1), 1, FIRST_ERF_INV), ("normal", root2, -root2, FIRST_CDF_NORM_INV))
    for family, factor, _, first in families:
        values, errors = rows["full"].split(26, factor, middle_line, first)
        table(f"{family}_full", "4 rows a binade, |t| <= 1/8: c0_lo, c1_lo, c2, ..., c14, c0_hi, c1_hi, the heads of 26 bits; "
              f"relative errors: {errors}. Prescribed values in row 0.", values)
        for name, per_binade in (("bits50", 4), ("bits27", 16), ("bits40", 8), ("bits21", 8), ("bits11", 16)):
            ctype = "float" if name in ("bits21", "bits11") else "double"
            values, errors = rows[name].plain(ctype, factor)
            table(f"{family}_{name}", f"{per_binade} rows a binade, |t| <= 1/{2 * per_binade}: c0, c1, ...; relative errors: "
                  f"{errors}", values, ctype)
    comment("The tail: polynomials in z for -s erfcinv(x), s = 1 / sqrt(-ln x) = i / 128 + z, 0 <= z < 1/128, row i - 4. For "
            "the normal distribution, with the factor -sqrt(2).")
    print()
    for family, _, factor, _ in families:
        values, errors = tail.split(16, factor)
        table(f"{family}_tail", "c0_lo, c1_lo, c2, ..., c12, c0_hi, c1_hi, the heads of 16 bits, and a zero; relative "
              f"errors: {errors}", [row + [0.0] for row in values])
    table("tail_logarithm", "R near the reciprocal of the middle of [1 + j/256, 1 + (j + 1)/256), a multiple of 1/512; -ln R as "
          "a head of 21 bits and a tail. |m R - 1| <= 0.00285.", logarithms(), aligned=False)
    footer("erf_inverse_tables")


main()
