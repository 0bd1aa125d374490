#!/usr/bin/env python3
"""Tables and coefficients of the inverse circular functions: writes src/trig/inverse_trig_tables.hpp.

    tools/tables/inverse_trig.py > src/trig/inverse_trig_tables.hpp
"""
from decimal import Decimal as D, getcontext
from fractions import Fraction as F

from emit import array, constant, dec, double, hexf, pair_table
from minimax import minimax, to_double, to_float

getcontext().prec = 80


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


PI = 4 * atan(D(1))


def rows(per_octave, count):
    """Row 0 is c = 0; from row 1 on c runs from 1/16 up, per_octave rows an octave."""
    return [F(0)] + [(1 + F(i % per_octave, per_octave)) * F(2) ** (i // per_octave - 4) for i in range(count - 1)]


def head_tail(d):
    head = double(d)
    return F(head), F(double(d - D(head)))


def angle_polynomial(name, largest, first, count, what):
    """Coefficients of z^0 ... of the series of atan(r) / r from its term `first` on, z = r^2, |r| <= largest."""
    c, e = minimax(lambda z: atan_series(z, first), lambda z: z**first, range(count), D(0), largest**2, to_double)
    array(name, f"{what}, z = r^2, |r| <= {largest:.4g}; error 2^{e:.1f} of the result", c)


def main():
    print("""// Tables and coefficients of the inverse circular functions. Generated: do not edit.
//   tools/tables/inverse_trig.py > src/trig/inverse_trig_tables.hpp
#pragma once

#include "simd/isa.hpp"

namespace kelvm::inline KELVM_BUILD::inverse_trig {

// clang-format off
""")
    pair_table("atan_long_rows", "atan c, head and tail: c = 0, then 64 rows an octave from 1/16 to 32",
               [head_tail(atan(dec(c))) for c in rows(64, 578)])
    body = ",\n    ".join(hexf(double(atan(dec(c)))) for c in rows(8, 64))
    print("// atan c: c = 0, then 8 rows an octave from 1/16 to 14\n"
          f"alignas(64) inline constexpr double atan_short_rows[] = {{\n    {body}}};\n")
    for name, value in (("pi", PI), ("half_pi", PI / 2)):
        head, tail = head_tail(value)
        constant(f"{name}_head", head)
        constant(f"{name}_tail", tail)
    print()
    long_r, short_r = D("0.0626"), D("0.0716")
    angle_polynomial("atan_pow", long_r, 2, 5, "(atan(r) / r - 1 + z/3) / z^2")
    angle_polynomial("atan_a53", long_r, 1, 5, "(atan(r) / r - 1) / z")
    angle_polynomial("atan_a50", short_r, 1, 5, "(atan(r) / r - 1) / z")
    angle_polynomial("atan_a24", short_r, 1, 4, "(atan(r) / r - 1) / z")
    angle_polynomial("atan_a26", short_r, 1, 2, "(atan(r) / r - 1) / z")
    print("// clang-format on\n\n} // namespace kelvm::inline KELVM_BUILD::inverse_trig")


main()
