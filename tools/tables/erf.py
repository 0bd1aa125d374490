#!/usr/bin/python3
"""Rows of minimax polynomials for the error function, its complement and the normal distribution function: prints
src/erf/erf_tables.hpp."""
import gmpy2
from gmpy2 import mpfr

from emit import array, footer, header, table
from minimax import Interpolant, Rows, exactly, significant


@exactly
def erf_over_x(x):
    return gmpy2.erf(x) / x if x else gmpy2.rec_sqrt(gmpy2.const_pi()) * 2


@exactly
def erf_over_root(square):
    return erf_over_x(gmpy2.sqrt(square))


@exactly
def scaled_erfc(a):
    """e^(a^2) erfc(a)"""
    return gmpy2.erfc(a) * gmpy2.exp(a * a)


@exactly
def scaled_normal(a):
    """e^(a^2 / 2) Phi(-a)"""
    return scaled_erfc(a / gmpy2.sqrt(mpfr(2))) / 2


@exactly
def values_and_slopes(f, per_unit, last, bits=53):
    """f(k / per_unit) and 2 / sqrt(pi) e^(-(k / per_unit)^2) for k = 0 ... last."""
    at = [mpfr(k) / per_unit for k in range(last + 1)]
    return [[significant(f(r), bits), significant(gmpy2.exp(-(r * r)) * erf_over_x(mpfr(0)), bits)] for r in at]


def even_rows(per_unit, count, degree):
    """Rows 0 ... count - 1 in a - k / per_unit, |a - k / per_unit| <= 1 / (2 per_unit), a >= 0."""
    rows = Rows(degree)
    for k in range(count):
        middle, half = mpfr(k) / per_unit, mpfr(1) / (2 * per_unit)
        f = Interpolant(erf_over_x, 0 if k == 0 else middle - half, middle + half, 36)
        rows.add(lambda t: f(middle + t), 0 if k == 0 else -half, half)
    return rows


def binade_rows(scaled, per_binade, last, degree):
    """Rows for a from 0 to `last`, so many for every binade of 1 + a, in a less the row's middle."""
    rows, binade = Rows(degree), mpfr(1)
    while binade <= 1 + last:
        width = binade / per_binade
        for j in range(per_binade):
            if binade + j * width <= 1 + last:
                low = binade - 1 + j * width
                f = Interpolant(scaled, low, low + width, 36)
                rows.add(lambda t: f(low + width / 2 + t), -width / 2, width / 2)
        binade *= 2
    return rows


def split_table(name, text, rows):
    values, errors = rows.split(26)
    table(name, f"{text} c0_lo, c1_lo, c2, ..., c10, c0_hi, c1_hi, the heads of 26 bits; relative errors: {errors}.",
          values)


def main():
    header("Rows of error functions", "erf_tables")
    split_table("erf_full", "A polynomial in t for erf(a) / a, a = k / 8 + t, |t| <= 1 / 16, k the row:",
                even_rows(8, 49, 10))
    end = 2.75
    whole = Rows(6)
    whole.add(Interpolant(erf_over_root, 0, mpfr(end) * end, 50), 0, mpfr(end) * end)
    rows, errors = whole.plain("float")
    array("erf_bits11", f"A polynomial in a^2 for erf(a) / a, a <= {end}; relative errors: {errors}; positive at the "
          "end, where the product with a exceeds 1.", rows[0], "float")
    binades = "A binade of 1 + a has 16 rows; t is a less that of the row's middle, at most 1/32 of the power of 2 in 1 + a:"
    split_table("erfc_full", f"Polynomials in t for e^(a^2) erfc(a), a <= 27.2. {binades}",
                binade_rows(scaled_erfc, 16, 27.2261, 10))
    split_table("normal_full", f"Polynomials in t for e^(a^2 / 2) Phi(-a), a <= 38.5. {binades}",
                binade_rows(scaled_normal, 16, 38.4855, 10))

    erf = values_and_slopes(gmpy2.erf, 128, 6 * 128)
    erf[-1] = [1, 0]
    table("erf_and_slope", "erf(r) and 2 / sqrt(pi) e^(-r^2), r = k / 128; in the last row 1 and 0", erf)
    table("erfc_and_slope", "erfc(r) and 2 / sqrt(pi) e^(-r^2), r = k / 128, as far as 26.52",
          values_and_slopes(gmpy2.erfc, 128, 3394))
    erf = values_and_slopes(gmpy2.erf, 64, 252, 24)
    erf[-1] = [1, 0]
    table("float_erf_and_slope", "erf(r) and 2 / sqrt(pi) e^(-r^2), r = k / 64; in the last row 1 and 0", erf, "float")
    table("float_erfc_and_slope",
          "2^32 erfc(r) and 2^32 2 / sqrt(pi) e^(-r^2), r = k / 64, as far as 9.19: their products with small numbers are "
          "normal", [[v * 2**32 for v in row] for row in values_and_slopes(gmpy2.erfc, 64, 588, 24)], "float")
    footer("erf_tables")


main()
