#!/usr/bin/python3
"""Sines, cosines and tangents of multiples of pi/32, the bits of 2/pi, and parts of 1/pi by exponent: prints
src/trig/trig_tables.hpp."""
import gmpy2
from gmpy2 import mpfr

from emit import array, comment, footer, header, table


def at(j, function):
    """function(j pi / 32)"""
    return function(gmpy2.const_pi() * j / 32)


def sine(j):
    return at(j, gmpy2.sin) if j % 16 else mpfr((0, 1, 0, -1)[j // 16 % 4])


def cosine(j):
    return sine(j + 16)


def tangent(j):
    """tan a, a = j pi / 32 for j < 8 and (j - 16) pi / 32 above."""
    return mpfr(-1) if j == 8 else at(j if j < 8 else j - 16, gmpy2.tan)


def power_near(c):
    """sign(c) 2^e with e = ceil(log2 |c| - 1/2), zero for zero. The tolerance decides |c| = 2^(e + 1/2)."""
    value, power = float(c), 2.0
    if value == 0:
        return 0.0
    while 2 * (power / 2) ** 2 >= value**2 * (1 - 2.0**-50):
        power /= 2
    return -power if value < 0 else power


def sine_row(j):
    power, head = power_near(cosine(j)), mpfr(sine(j), 53)
    return cosine(j) - power, head if j else -0.0, mpfr(sine(j) - head, 24), power


def one_over_pi(j):
    """In units of the last dropped bit."""
    dropped, parts = max(0, 8 * j - 23), []
    rest = gmpy2.frac(2**dropped / gmpy2.const_pi())
    for k in range(3):
        part = rest * 2 ** (29 * (k + 1))
        part = (gmpy2.floor(part) if k < 2 else part) / 2 ** (29 * (k + 1))
        rest -= part
        parts.append(part / 2**dropped)
    return parts


def main():
    gmpy2.get_context().precision = 200
    header("Circular functions of multiples of pi/32, and 1/pi", include="cstdint", fits=False)
    table("sine_rows", "For a = j pi / 32: cos a - power, sin a rounded, the rest of sin a to 24 bits, power; power is a "
          "signed power of two near cos a, or zero. sin 0 stands as -0, so that sums keep the sign of a zero argument.",
          [sine_row(j) for j in range(64)], aligned=False)
    table("cosine_sine", "cos a and sin a rounded, a = j pi / 32; sin 0 as above.",
          [(cosine(j), sine(j) if j else -0.0) for j in range(64)], aligned=False)
    tangents = [tangent(j) for j in range(16)]
    heads = [mpfr(t, 53) for t in tangents]
    table("tangent_double_word", "tan a as head and tail, a = j pi / 32 for j < 8 and (j - 16) pi / 32 above.",
          [(head, t - head) for t, head in zip(tangents, heads)], aligned=False)
    array("tangent", "tan a rounded, for the same angles.", tangents)

    gmpy2.get_context().precision = 2000
    comment("The fraction bits of 2/pi, highest first, after one word of zeros.")
    bits = int(gmpy2.floor(2 / gmpy2.const_pi() * 2 ** (64 * 19)))
    words = [bits >> 64 * (18 - i) & (1 << 64) - 1 for i in range(19)]
    print("inline constexpr std::uint64_t two_over_pi[20] = {\n    0,")
    print("\n".join(f"    0x{w:016X}," for w in words) + "\n};\n")
    parts = [one_over_pi(j) for j in range(16)]
    table("one_over_pi_parts", "1/pi for floats of 8 exponents, 2^(8 j + 1) <= |x| < 2^(8 j + 9), without the bits whose "
          "products with them are multiples of 2: two parts of 29 bits and the rest.", [p[:2] for p in parts],
          aligned=False)
    array("one_over_pi_rest", "The rest.", [p[2] for p in parts])
    footer()


main()
