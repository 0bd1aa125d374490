"""What the Python table programs share: exact values and C++ output."""
from decimal import Decimal as D
from fractions import Fraction as F


def dec(q):
    return D(q.numerator) / D(q.denominator)


def double(d):
    """Nearest double of a Decimal."""
    return float(d)


def down_to(d, bits):
    """Largest multiple of 2^-bits not above d, as a Fraction."""
    n = (d * (1 << bits)).to_integral_value(rounding="ROUND_FLOOR")
    return F(int(n), 1 << bits)


def hexf(x):
    return float(x).hex().replace("0x1.0000000000000p", "0x1p").replace("0x0.0p+0", "0")


def array(name, comment, coefficients, ctype="double"):
    suffix = "f" if ctype == "float" else ""
    body = ",\n    ".join(hexf(c) + suffix for c in coefficients)
    print(f"// {comment}\ninline constexpr {ctype} {name}[] = {{\n    {body}}};\n")


def pair_table(name, comment, data):
    print(f"// {comment}\nalignas(64) inline constexpr double {name}[][2] = {{")
    for a, b in data:
        print(f"    {{{hexf(a)}, {hexf(b)}}},")
    print("};\n")


def constant(name, value, ctype="double"):
    print(f"inline constexpr {ctype} {name} = {hexf(value)}{'f' if ctype == 'float' else ''};")
