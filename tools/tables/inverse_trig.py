#!/usr/bin/python3
"""Tables and coefficients of the inverse circular functions: prints src/trig/inverse_trig_tables.hpp."""
from decimal import Decimal as D, getcontext
from fractions import Fraction as F

from emit import array, dec, decimal_pi, footer, header, table
from minimax import UNIT, evaluation_error, minimax, points, to_double, to_float

getcontext().prec = 80
PI = decimal_pi()


def atan(x):
    """Halved until the series converges quickly."""
    halvings = 8
    for _ in range(halvings):
        x = x / (1 + (1 + x * x).sqrt())
    return atan_series(x * x) * x * (1 << halvings)


def atan_series(z, first=0, terms=50):
    """atan(sqrt z) / sqrt z without its terms below z^first, over z^first."""
    total = D(0)
    for k in reversed(range(first, first + terms)):
        total = D((-1) ** k) / (2 * k + 1) + z * total
    return total


LONG_LOWEST, LONG_LARGEST, LONG_BITS = -5, 5, 6  # c from 2^-5 to 2^5, 2^6 rows an octave
SHORT_ROWS = 64  # c = 0, 1/4 ... 63/4


def long_rows():
    per_octave = 1 << LONG_BITS
    count = (LONG_LARGEST - LONG_LOWEST) * per_octave + 1
    return [F(0)] + [(1 + F(i % per_octave, per_octave)) * F(2) ** (i // per_octave + LONG_LOWEST) for i in range(count)]


def head_tail(d):
    head = to_double(d)
    return F(head), F(to_double(d - D(head)))


def whole_atan(z):
    """atan_series(z, 1) for any z."""
    return atan_series(z, 1) if z < D("0.1") else (atan(z.sqrt()) / z.sqrt() - 1) / z


def asin_series(z, first=0, terms=150):
    """asin(sqrt z) / sqrt z without its terms below z^first, over z^first."""
    total, c = D(0), D(1)
    for k in range(first + terms):
        if k >= first:
            total += c / (2 * k + 1) * z ** (k - first) if k > first else c / (2 * k + 1)
        c = c * (2 * k + 1) / (2 * k + 2)
    return total


def asin_weight(z):
    """What an error of asin(s) / s, s = sqrt z, is relative to asin s, or to pi/2 - 2 asin s where that is more."""
    series = asin_series(z)
    return max(1 / series, 2 * z.sqrt() / (PI / 2 - 2 * z.sqrt() * series))


def acos_factor(x):
    """acos x / sqrt(1 - x), 0 <= x <= 1."""
    w = 1 - x
    return 2 * asin_series(w / 2, terms=600) * D("0.5").sqrt() if w < 1 else PI / 2


def angle_polynomial(name, largest, first, count, what):
    """Coefficients of z^0 ... of the series of atan(r) / r from its term `first` on, z = r^2, |r| <= largest."""
    c, e = minimax(lambda z: atan_series(z, first), lambda z: z**first, range(count), D(0), largest**2, to_double)
    array(name, f"{what}, z = r^2, |r| <= {largest:.4g}; errors of the result: {e}", c)


def even_table(name, per_unit, row_count, count, below):
    """Rows and series for c a multiple of 1/per_unit. An error of the series counts less beyond the table, where the
    result is near pi/2; the last row is such that the sum is below pi/2 however large the argument."""
    rows = [to_double(atan(D(i) / per_unit)) for i in range(row_count)]
    largest, half = 1 / (D(row_count - 1) / per_unit), D(1) / (2 * per_unit)
    c, e = minimax(lambda z: atan_series(z, 1), lambda z: z if z < (half * D("1.0016")) ** 2 else z * z.sqrt() / D("1.44"),
                   range(count), D(0), largest**2, to_double)
    z = largest**2
    rows[-1] = to_double(PI / 2 - largest * (1 + z * sum(D(v) * z**i for i, v in enumerate(c))) - below)
    last = f"{row_count - 1}/{per_unit}"
    array(f"{name}_rows", f"atan c: c = 0, 1/{per_unit}, 2/{per_unit} ... {last}, the last one such that no sum is above "
          "pi/2", rows, aligned=True)
    array(name, f"(atan(r) / r - 1) / z, z = r^2, |r| <= 1/{2 * per_unit}, and to {per_unit}/{row_count - 1} with "
          f"c = {last}; errors of the result: {e}", c)


def main():
    header("Tables and coefficients of the inverse circular functions", "inverse_trig")
    table("atan_long_rows", "atan c, head and tail: c = 0, then 64 rows an octave from 1/32 to 32",
          [head_tail(atan(dec(c))) for c in long_rows()])
    array("atan_short_rows", "atan c: c = 0, 1/4, 1/2 ... 63/4", [atan(D(i) / 4) for i in range(SHORT_ROWS)], aligned=True)
    long_r, short_r = D("0.03127"), D("0.1251")
    angle_polynomial("atan_extended", long_r, 2, 4, "(atan(r) / r - 1 + z/3) / z^2")
    angle_polynomial("atan_full", long_r, 1, 4, "(atan(r) / r - 1) / z")
    for name, count in (("bits50", 6), ("bits49", 5), ("bits40", 4), ("bits27", 3)):
        angle_polynomial(f"atan_{name}", short_r, 1, count, "(atan(r) / r - 1) / z")
    even_table("atan_eighth50", 8, 64, 5, D(2) ** -51)
    even_table("atan_sixteenth50", 16, 256, 4, D(2) ** -51)
    even_table("atan_eighth27", 8, 64, 2, D(2) ** -45)
    for name, count, ctype in (("atan_whole_bits27", 10, "double"), ("atan_bits21", 7, "float"),
                               ("atan_bits11", 3, "float")):
        c, e = minimax(whole_atan, lambda z: z / (1 + z * whole_atan(z)), range(count), D(0), D(1),
                       to_double if ctype == "double" else to_float)
        c, zs = [1.0, *c], points(D(0), D(1), 200)
        e.evaluation = evaluation_error(c, zs, [1 / (1 + z * whole_atan(z)) for z in zs], UNIT[ctype])
        array(name, f"atan(r) / r by powers of r^2, 0 <= r <= 1; errors: {e}", c, ctype)
    c, e = minimax(lambda z: asin_series(z, 1) - D(3) / 16, lambda z: z * asin_weight(z), range(13), D(0), D("0.25"),
                   to_double)
    array("asin_full", f"(asin(s) / s - 1) / z - 3/16, z = s^2 <= 1/4; errors of the result: {e}", c)
    for name, count, ctype in (("asin_bits50", 11, "double"), ("asin_bits40", 8, "double"), ("asin_bits27", 5, "double"),
                               ("asin_bits21", 4, "float"), ("asin_bits11", 2, "float")):
        c, e = minimax(lambda z: asin_series(z, 1), lambda z: z * asin_weight(z), range(count), D(0), D("0.25"),
                       to_double if ctype == "double" else to_float)
        array(name, f"(asin(s) / s - 1) / z, z = s^2 <= 1/4; errors of the result: {e}", c, ctype)
    c, e = minimax(acos_factor, lambda x: 1 / acos_factor(x), range(3), D(0), D(1), to_float)
    array("acos_bits11", f"acos(x) / sqrt(1 - x) on [0, 1]; errors of the result: {e}", c, "float")
    footer("inverse_trig")


main()
