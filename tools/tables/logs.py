#!/usr/bin/python3
"""Tables and coefficients of the logarithm core: prints src/exp/log_tables.hpp.

Logarithms come from Python's decimal, whose ln is correctly rounded.
"""
from decimal import Decimal as D, getcontext
from fractions import Fraction as F

from emit import array, constant, dec, down_to, footer, header, table
from minimax import UNIT, evaluation_error, minimax, points, to_double, to_float

getcontext().prec = 80
LN10, LN2 = D(10).ln(), D(2).ln()


def ln(q):
    return dec(q).ln()


class Rows:
    """2^bits rows of m's leading fraction bits, centred on them; m runs through one octave from the double whose upper
    20 bits are `lowest`, less half a row. c is 1 / centre in the format of multiples of 2^-step (2^-(step + 1) below
    1). Exact rows take only those c for which m c - 1 is a double: |r| < 2^-8 for c of 8 fraction bits, 2^-9 for 9."""

    def __init__(self, bits, lowest, step, exact=False):
        self.c, self.middles, self.largest, self.smallest = [], [], F(0), F(0)
        self.from_middle = [D(0), D(0)]
        assert lowest % (1 << (8 - bits if bits < 8 else 0)) == 0
        for i in range(1 << bits):
            top = ((lowest << 1) >> (8 - bits)) + 2 * i
            low, centre, high = (self.value(t, bits) for t in (top - 1, top, top + 1))
            c = F(1) if centre == 1 else self.best(low, centre, high, step, exact)
            self.c.append(c)
            self.middles.append(centre)
            self.largest = max(self.largest, high * c - 1)
            self.smallest = min(self.smallest, low * c - 1)
            self.from_middle[0] = min(self.from_middle[0], dec(low / centre - 1))
            self.from_middle[1] = max(self.from_middle[1], dec(high / centre - 1))

    @staticmethod
    def value(top, bits):
        """The double of these upper bits, `bits` of the fraction and one half step."""
        e, f = divmod(top, 2 << bits)
        return F((2 << bits) + f, 2 << bits) * F(2) ** (e - 1023)

    @staticmethod
    def best(low, centre, high, step, exact):
        def reach(c):
            return max(high * c - 1, 1 - low * c)

        def is_exact(c):
            """Products are multiples of c's last place times m's, 2^-53 below 1; a double takes 53 bits of them."""
            last = F(c.numerator & -c.numerator, c.denominator) * F(2) ** (-52 - (centre < 1))
            return reach(c) < last * 2**53

        step = 1 << (step + (centre > 1))
        near = int(step / centre)
        candidates = (F(n, step) for n in range(near - 3, near + 5))
        return min((c for c in candidates if not exact or is_exact(c)), key=reach)


SHORT_BITS, SHORT_LOWEST = 4, 0x3FE60
SHORT_COUNTS = (("bits50", 8), ("bits46", 7), ("bits40", 6), ("bits27", 4))
MEDIUM_BITS, MEDIUM_LOWEST = 7, 0x3FE6A
MEDIUM_COUNTS = (("bits50_medium", 5), ("bits40_medium", 4), ("bits27_medium", 3))
LONG_BITS, LONG_LOWEST = 8, 0x3FE6A
ONLY_NATURAL = ("bits46",)


def log_tail(first, factor=D(1), terms=40):
    """factor (ln(1+x) - its terms below x^first) / x^first."""
    return lambda x: factor * sum((-1) ** (first + k + 1) * x**k / (first + k) for k in range(terms))


def one(x):
    return D(1)


def quotient_series(z, terms=60):
    """ln m / s with s = (m - 1) / (m + 1) = sqrt z."""
    return 2 * sum(z**k / (2 * k + 1) for k in range(terms))


def bases():
    return (("ln", "ln", D(1)), ("lg", "log10", 1 / LN10))


def exact_tables(rows):
    for suffix, word, scale in bases():
        packed = []
        for c in rows.c:
            l = -ln(c) * scale if c != 1 else D(0)
            hi = down_to(l, 42)
            lo = l - dec(hi)
            n = int((lo * (1 << 84)).to_integral_value(rounding="ROUND_HALF_EVEN"))
            assert 0 <= n < 1 << 42
            first = c + F(n, 1 << 52)
            assert F(float(first)) == first and F(float(hi)) == hi
            packed.append((first, hi))
        table(f"inverse_and_exact_{word}",
              f"c + 2^32 times the low part of -{word} c; its high part, a multiple of 2^-42", packed)
        l2 = D(2).ln() * scale
        hi = down_to(l2, 42)
        constant(f"{suffix}2_hi", hi)
        constant(f"{suffix}2_lo", l2 - dec(hi))
        print()


def rounded_tables(short, medium):
    for suffix, word, scale in bases():
        for rows, name in ((short, ""), (medium, "medium_")):
            table(f"inverse_and_{name}{word}", f"c, -{word} c",
                  [(c, to_double(-ln(c) * scale) if c != 1 else D(0)) for c in rows.c])
        constant(f"{suffix}2", D(2).ln() * scale)
        print()


def middle_tables(rows):
    for _, word, scale in bases():
        table(f"inverse_and_middle_{word}", f"c = 1 / middle, -{word} c",
              [(to_double(1 / dec(m)), to_double(ln(m) * scale) if m != 1 else D(0)) for m in rows.middles])


def binary_tables(short, long):
    for rows, name in ((short, ""), (long, "long_")):
        table(f"inverse_and_{name}log2", "c, -log2 c", [(c, to_double(-ln(c) / LN2) if c != 1 else D(0)) for c in rows.c])


def main():
    header("Tables and coefficients of the logarithm core", "log_tables")
    exact = Rows(LONG_BITS, LONG_LOWEST, 9, exact=True)
    exact_tables(exact)
    short = Rows(SHORT_BITS, SHORT_LOWEST, 12)
    medium = Rows(MEDIUM_BITS, MEDIUM_LOWEST, 12)
    rounded_tables(short, medium)
    middle_tables(exact)
    long = Rows(LONG_BITS, LONG_LOWEST, 20)
    binary_tables(short, long)
    inv = 1 / LN10
    head = F(int((inv * (1 << 27)).to_integral_value()), 1 << 27)
    constant("inverse_ln10_head", head)
    constant("inverse_ln10_tail", inv - dec(head))
    constant("inverse_ln10", inv)
    constant("inverse_ln10_rest", inv - D(to_double(inv)))
    print()

    def logarithm(name, rows, first, count, factor, what, ctype="double", leading=()):
        """The errors are those of the logarithm relative to x; `leading` stands before what is fitted."""
        low, high = (dec(rows.smallest), dec(rows.largest)) if isinstance(rows, Rows) else rows
        c, e = minimax(log_tail(first, factor), lambda x: x ** (first - 1) / factor, range(count), low, high,
                       to_float if ctype == "float" else to_double)
        if leading:
            c, xs = [*leading, *c], points(low, high, 100)
            e.evaluation = evaluation_error(c, xs, [1 / factor] * len(xs), UNIT["double"])
        array(name, f"{what} on [{low:.4g}, {high:.4g}]; errors relative to the argument less 1: {e}", c, ctype)

    logarithm("ln_full", exact, 2, 6, D(1), "(ln(1+r) - r) / r^2")
    logarithm("ln_extended", exact, 3, 6, D(1), "(ln(1+r) - r + r^2/2) / r^3")
    logarithm("log10_full", exact, 2, 6, inv, "(log10(1+r) - r/ln 10) / r^2")
    for rows, counts in ((short, SHORT_COUNTS), (medium, MEDIUM_COUNTS)):
        for name, count in counts:
            logarithm(f"ln_{name}", rows, 2, count, D(1), "ln(1+r) / r", leading=[1.0])
            if name not in ONLY_NATURAL:
                logarithm(f"log10_{name}", rows, 1, count + 1, inv, "log10(1+r) / r")
    logarithm("ln_bits50_middle", exact.from_middle, 2, 4, D(1), "ln(1+r) / r", leading=[1.0])
    logarithm("log10_bits50_middle", exact.from_middle, 1, 5, inv, "log10(1+r) / r")
    for name, rows, count in (("bits27", short, 5), ("bits27_long", long, 3)):
        logarithm(f"log2_{name}", rows, 1, count, 1 / LN2, "log2(1+r) / r")
    c, e = minimax(quotient_series, lambda z: 1 / quotient_series(z), range(6), D(0), D("0.2001") ** 2)
    array("ln_by_quotient", f"ln m / s, s = (m - 1) / (m + 1), by powers of s^2, |s| <= 1/5; errors of ln m: {e}", c)
    single = (D(-1) / 3, D(1) / 3)
    logarithm("ln_bits21", single, 2, 7, D(1), "(ln(1+f) - f) / f^2", "float")
    logarithm("ln1p_bits21", single, 2, 8, D(1), "(ln(1+f) - f) / f^2", "float")
    logarithm("log10_bits21", single, 2, 8, inv, "(log10(1+f) - f/ln 10) / f^2", "float")
    logarithm("ln_bits11", single, 2, 4, D(1), "(ln(1+f) - f) / f^2", "float")
    logarithm("log10_bits11", single, 1, 4, inv, "log10(1+f) / f", "float")
    footer("log_tables")


main()
