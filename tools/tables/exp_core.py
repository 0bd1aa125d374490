#!/usr/bin/python3
"""Tables and coefficients of the exponential core: prints src/exp/exp_core_tables.hpp."""
import struct
from decimal import Decimal as D, getcontext

from emit import array, constant, dec, down_to, footer, header, table
from minimax import UNIT, evaluation_error, minimax, points, to_float

getcontext().prec = 80
LN2 = D(2).ln()


def exp_tail(first, terms=30):
    """(e^x - its terms below x^first) / x^first."""
    def f(x):
        total, term = D(0), D(1)
        for k in range(1, first + 1):
            term /= k
        for k in range(terms):
            total += term * x**k
            term /= first + k + 1
        return total
    return f


def half_exp_tail(first, terms=30):
    """Every second term of e^x from x^first on, divided by it: of x^2."""
    def f(z):
        total, term = D(0), D(1)
        for k in range(1, first + 1):
            term /= k
        for k in range(first + 1, first + 2 * terms, 2):
            total += term
            term *= z / (k * (k + 1))
        return total
    return f


def less_row(d, j, place=47):
    """The double of d's bits less j 2^place."""
    return struct.unpack("d", struct.pack("q", struct.unpack("q", struct.pack("d", float(d)))[0] - (j << place)))[0]


def main():
    header("Tables and coefficients of the exponential core", "exp_core_tables")
    step = LN2 / 32
    constant("per_step", 1 / step)
    # products of the high part with integers below 2^16 are exact, and of 32 times it with those below 2^11
    high = down_to(step, 39)
    constant("step_hi", high)
    constant("step_lo", step - dec(high))
    print()
    pairs = []
    for j in range(32):
        t = (LN2 * j / 32).exp() if j else D(1)
        high = down_to(t, 25)
        pairs.append((high, t - dec(high)))
    table("exp2_short_and_rest", "2^(j/32): its upper 26 bits and the rest", pairs)
    powers = [(LN2 * j / 32).exp() if j else D(1) for j in range(32)]
    array("exp2", "2^(j/32)", powers, aligned=True)
    array("exp2_less_row", "2^(j/32), less j in the bits above 2^47", [less_row(d, j) for j, d in enumerate(powers)],
          aligned=True)
    powers = [(LN2 * j / 128).exp() if j else D(1) for j in range(128)]
    table("exp2_less_row_and_rest", "2^(j/128), less j in the bits above 2^45; what it lacks, relatively",
          [(less_row(d, j, 45), float((d - D(float(d))) / d)) for j, d in enumerate(powers)])

    def series(name, of, weight, count, rows=32):
        high = LN2 / (2 * rows) * D("1.001")
        c, e = minimax(exp_tail(2), weight, range(count), -high, high)
        array(name, f"(e^r - 1 - r) / r^2 on |r| <= ln 2 / {2 * rows}; errors of {of}: {e}", c)

    for name, count in (("full", 5), ("bits50", 4), ("bits40", 3)):
        series(f"exp_{name}", "e^r", lambda x: x * x, count)
    for name, count, rows in (("full", 6, 32), ("bits50", 4, 128), ("bits40", 4, 32), ("bits27", 3, 32)):
        series(f"expm1_{name}", "e^r - 1", lambda x: x, count, rows)
    for name, count in (("bits33", 8), ("bits27", 7)):
        high = LN2 / 2 * D("1.001")
        c, e = minimax(exp_tail(1), lambda x: x / x.exp(), range(count - 1), -high, high)
        c, xs = [1.0] + c, points(-high, high, 100)
        e.evaluation = evaluation_error(c, xs, [1 / x.exp() for x in xs], UNIT["double"])
        array(f"exp_{name}", f"e^r on |r| <= ln 2 / 2; relative errors: {e}", c)

    high = LN2 / 2 * D("1.001")
    for name, text, first in (("exp_even", "(cosh r - 1) / r^2", 2), ("exp_odd", "(sinh r - r) / r^3", 3)):
        c, e = minimax(half_exp_tail(first), lambda z: z, range(5), D(0), high * high)
        array(name, f"{text} by powers of r^2, |r| <= ln 2 / 2; {'relative' if first == 3 else 'absolute'} errors: {e}", c)
    c, e = minimax(exp_tail(2), lambda x: x * x, range(2), -high, high, to_float)
    array("float_exp_bits11", f"(e^r - 1 - r) / r^2 on |r| <= ln 2 / 2; errors of e^r: {e}", c, "float")
    c, e = minimax(exp_tail(2), lambda x: x * x, range(4), -high, high, to_float)
    array("float_exp_bits21", f"(e^r - 1 - r) / r^2 on |r| <= ln 2 / 2; errors of e^r: {e}", c, "float")
    for name, count in (("float_expm1_bits21", 5), ("float_expm1_bits11", 3)):
        c, e = minimax(exp_tail(2), lambda x: x, range(count), -high, high, to_float)
        array(name, f"(e^r - 1 - r) / r^2 on |r| <= ln 2 / 2; errors of e^r - 1: {e}", c, "float")
    half = D("0.5005")
    c, e = minimax(lambda f: LN2 * exp_tail(1)(f * LN2), lambda f: f / (f * LN2).exp(), range(5), -half, half, to_float)
    array("float_exp2_bits21", f"(2^f - 1) / f, |f| <= 1/2, by powers of 2^23 f; relative errors of 2^f: {e}",
          [v / 2 ** (23 * (k + 1)) for k, v in enumerate(c)], "float")
    step = LN2
    high = down_to(step, 15)
    constant("float_ln2_hi", high, "float")
    constant("float_ln2_lo", to_float(step - dec(high)), "float")
    constant("float_per_ln2", to_float(1 / LN2), "float")
    footer("exp_core_tables")


main()
