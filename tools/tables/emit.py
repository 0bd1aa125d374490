"""What the table programs share: exact values and C++ output."""
from decimal import Decimal as D, getcontext
from fractions import Fraction as F
from pathlib import Path
import sys
import textwrap

import gmpy2


def dec(q):
    return D(q.numerator) / D(q.denominator)


def decimal_pi():
    """pi to the digits of the current context, by MPFR."""
    digits = getcontext().prec
    with gmpy2.local_context(gmpy2.get_context(), precision=4 * digits):
        return +D(f"{gmpy2.const_pi():.{digits + 5}f}")


def down_to(d, bits):
    """Largest multiple of 2^-bits not above d, as a Fraction."""
    n = (d * (1 << bits)).to_integral_value(rounding="ROUND_FLOOR")
    return F(int(n), 1 << bits)


def hexf(x, ctype="double"):
    significand, exponent = float(x).hex().split("p")
    return significand.rstrip("0").rstrip(".") + "p" + exponent + ("f" if ctype == "float" else "")


def header(what, namespace="", include="", fits=True):
    """The first lines of the table that this program prints; `what` it has, and whether there are fits among it. footer()
    prints the last."""
    program = Path(sys.argv[0]).name
    comment(f"{what}. Made by tools/tables/{program}, run by tools/tables/regenerate: do not edit.")
    if fits:
        comment("Of each fit: the interval; what the errors are relative to, which is the weight; the error of the fit with "
                "these coefficients; a bound of that of its evaluation, by Horner's rule without fused steps.")
    print('// clang-format off\n#pragma once\n\n#include "simd/isa.hpp"\n')
    if include:
        print(f"#include <{include}>\n")
    print(f"namespace kelvm::inline KELVM_BUILD{'::' if namespace else ''}{namespace} {{\n")


def footer(namespace=""):
    print(f"}} // namespace kelvm::inline KELVM_BUILD{'::' if namespace else ''}{namespace}")


def comment(text):
    print(textwrap.fill(text, 120, initial_indent="// ", subsequent_indent="// "))


def array(name, text, values, ctype="double", aligned=False):
    comment(text)
    print(f"{'alignas(64) ' if aligned else ''}inline constexpr {ctype} {name}[] = {{")
    print("    " + ",\n    ".join(hexf(v, ctype) for v in values) + "};\n")


def table(name, text, rows, ctype="double", aligned=True):
    comment(text)
    print(f"{'alignas(64) ' if aligned else ''}inline constexpr {ctype} {name}[{len(rows)}][{len(rows[0])}] = {{")
    for row in rows:
        print("{" + ",".join(hexf(v, ctype) for v in row) + "},")
    print("};\n")


def constant(name, value, ctype="double"):
    print(f"inline constexpr {ctype} {name} = {hexf(value, ctype)};")
