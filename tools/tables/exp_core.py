#!/usr/bin/env python3
"""Tables and coefficients of the exponential core: writes src/exp/exp_core_tables.hpp.

    tools/tables/exp_core.py > src/exp/exp_core_tables.hpp
"""
from decimal import Decimal as D, getcontext
from fractions import Fraction as F

from emit import array, constant, dec, down_to, hexf, pair_table
from minimax import minimax, to_double, to_float

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


def main():
    print("""// Tables and coefficients of the exponential core. Generated: do not edit.
//   tools/tables/exp_core.py > src/exp/exp_core_tables.hpp
#pragma once

#include "simd/isa.hpp"

namespace kelvm::inline KELVM_BUILD::exp_core_tables {

// clang-format off
""")
    for n, suffix in ((128, "128"), (32, "32")):
        step = LN2 / n
        constant(f"per_step_{suffix}", 1 / step)
        # k below 2^18: products with the high part are exact
        high = down_to(step, 34 + n.bit_length() - 1)
        constant(f"step_{suffix}_hi", high)
        constant(f"step_{suffix}_lo", step - dec(high))
        print()
    pairs = []
    for j in range(128):
        t = (LN2 * j / 128).exp() if j else D(1)
        high = down_to(t, 25)
        pairs.append((high, t - dec(high)))
    pair_table("exp2_short_and_rest_128", "2^(j/128): its upper 26 bits and the rest", pairs)
    print("// 2^(j/32)\nalignas(64) inline constexpr double exp2_32[] = {")
    for j in range(32):
        print(f"    {hexf((LN2 * j / 32).exp() if j else D(1))},")
    print("};\n")

    def expm1(name, n, count, ctype="double"):
        """The error is that of e^r."""
        high = LN2 / (2 * n) * D("1.001")
        c, e = minimax(exp_tail(2), lambda x: x * x, range(count), -high, high,
                       to_float if ctype == "float" else to_double)
        array(name, f"(e^r - 1 - r) / r^2 on |r| <= ln 2 / {2 * n}; error 2^{e:.1f} of e^r", c, ctype)

    def expm1_relative(name, n, count):
        high = LN2 / (2 * n) * D("1.001")
        c, e = minimax(exp_tail(2), lambda x: x, range(count), -high, high)
        array(name, f"(e^r - 1 - r) / r^2 on |r| <= ln 2 / {2 * n}; error 2^{e:.1f} of e^r - 1", c)

    expm1_relative("expm1_full", 128, 5)
    expm1("exp_full", 128, 4)
    for name, count in (("exp_bits50", 4), ("exp_bits40", 3), ("exp_bits27", 2)):
        expm1(name, 32, count)
    expm1_relative("expm1_bits50", 128, 4)
    for name, count in (("expm1_bits40", 4), ("expm1_bits27", 3)):
        expm1_relative(name, 32, count)

    high = LN2 / 2 * D("1.001")
    c, e = minimax(exp_tail(2), lambda x: x * x, range(2), -high, high, to_float)
    array("float_exp_bits11", f"(e^r - 1 - r) / r^2 on |r| <= ln 2 / 2; error 2^{e:.1f} of e^r", c, "float")
    for name, count in (("float_expm1_bits21", 5), ("float_expm1_bits11", 3)):
        c, e = minimax(exp_tail(2), lambda x: x, range(count), -high, high, to_float)
        array(name, f"(e^r - 1 - r) / r^2 on |r| <= ln 2 / 2; error 2^{e:.1f} of e^r - 1", c, "float")
    step = LN2
    high = down_to(step, 15)
    constant("float_ln2_hi", high, "float")
    constant("float_ln2_lo", to_float(step - dec(high)), "float")
    constant("float_per_ln2", to_float(1 / LN2), "float")
    print("// clang-format on\n\n} // namespace kelvm::inline KELVM_BUILD::exp_core_tables")


main()
