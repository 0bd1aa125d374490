#!/usr/bin/python3
"""Powers of two at fractional exponents, in the forms that the exponentials use: prints src/exp/exp_tables.hpp."""
import struct

import gmpy2
from gmpy2 import mpfr

from emit import comment, footer, header, table


def fractions(name, text, ctype, powers, layout, bits):
    """Fraction fields of the powers."""
    comment(text)
    print(f"inline constexpr {ctype} {name}[{len(powers)}] = {{")
    for power in powers:
        field = int.from_bytes(struct.pack(layout, power), "big") & ((1 << bits) - 1)
        print(f"    0x{field:0{bits // 4 + (bits % 4 != 0)}X},")
    print("};\n")


def main():
    gmpy2.get_context().precision = 200
    header("Powers of two", include="cstdint", fits=False)
    root_64, root_128 = ([gmpy2.exp2(mpfr(j) / n) for j in range(n)] for n in (64, 128))
    heads = [gmpy2.floor(p * 2**44) / 2**44 for p in root_64]
    table("exp2_head_tail_64", "2^(j/64) as head, truncated to 44 fraction bits, and tail, rounded: relative error 3e-30.",
          [(head, p - head) for p, head in zip(root_64, heads)], aligned=False)
    fractions("exp2_fraction_128", "The fraction field of 2^(j/128) rounded to double.", "std::int64_t",
              [float(p) for p in root_128], ">d", 52)
    singles = [mpfr(p, 24) for p in root_128]
    table("exp2_head_correction_128", "2^(j/128) rounded to float, and the relative correction (2^(j/128) - head) / head.",
          [(head, mpfr((p - head) / head, 24)) for p, head in zip(root_128, singles)], "float", aligned=False)
    fractions("exp2_fraction_128_float", "The fraction field of 2^(j/128) rounded to float.", "std::int32_t",
              [float(p) for p in singles], ">f", 23)
    footer()


main()
