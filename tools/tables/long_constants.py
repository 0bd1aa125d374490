#!/usr/bin/python3
"""ln 2 and 2/pi to 3072 bits: prints src/complex/long_constants.hpp."""
from decimal import Decimal as D, getcontext

from emit import decimal_pi, footer, header

WORDS = 48
getcontext().prec = 1000


def words(name, comment, value):
    bits = int(value * (1 << (64 * WORDS)))
    print(f"/// The fraction bits of {comment}, highest first.\ninline constexpr std::uint64_t {name}[{WORDS}] = {{")
    for first in range(0, WORDS, 4):
        row = (bits >> (64 * (WORDS - 1 - i)) & (1 << 64) - 1 for i in range(first, first + 4))
        print("    " + " ".join(f"0x{w:016X}," for w in row))
    print("};\n")


def main():
    header("Constants for angles of many words", "long_constants", "cstdint", fits=False)
    words("ln2", "ln 2", D(2).ln())
    words("two_over_pi", "2/pi", 2 / decimal_pi())
    footer("long_constants")


main()
