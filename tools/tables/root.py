#!/usr/bin/python3
"""The polynomials that refine the first guesses of inverse roots: prints src/root/root_tables.hpp."""
from emit import array, footer, header
from minimax import fpminimax

# The residuals d = 1 - x r^n of the first guesses (first_guess() in src/root/root.hpp) stay within these.
BOUNDS = {2: 0.0682, 3: 0.1021}


def fit(name, ctype, n, k, terms):
    """(1 - d)^(-k/n) for the n-th root."""
    d = BOUNDS[n]
    c, errors = fpminimax(f"(1 - x)^(-{k} / {n})", range(terms), f"-{d}", f"{d}", ctype)
    array(name, f"(1 - d)^(-{k}/{n}), |d| <= {d}; relative errors: {errors}", c, ctype)


def main():
    header("Polynomials of inverse roots")
    fit("inverse_sqrt_20", "double", 2, 1, 4)
    fit("inverse_sqrt_26", "double", 2, 1, 6)
    fit("inverse_cbrt_11", "float", 3, 1, 3)
    fit("inverse_cbrt_19_float", "float", 3, 1, 4)
    fit("inverse_cbrt_21", "float", 3, 1, 5)
    fit("inverse_cbrt_14", "double", 3, 1, 3)
    fit("inverse_cbrt_19", "double", 3, 1, 4)
    fit("inverse_cbrt_26", "double", 3, 1, 6)
    fit("cbrt_11", "float", 3, 2, 3)
    fit("cbrt_21", "float", 3, 2, 6)
    fit("cbrt_26", "double", 3, 2, 7)
    footer()


main()
