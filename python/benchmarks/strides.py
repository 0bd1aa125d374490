#!/usr/bin/env python3
"""How fast kelvm's ufuncs are beside NumPy's on arrays with gaps between the elements, as a table.

    strides.py                        functions so cheap that the gaps matter
    strides.py exp high.arctan2       these
    strides.py --without-avx512

A column is a layout: the step of the sources, of the destination, or of all (T: the transpose of a square array). A
number is NumPy's time divided by kelvm's, each the best of its turns.
"""
import argparse
import math
import operator
import os
import sys

import kelvm
import numpy as np
from speed import FUNCTIONS, WITHOUT_AVX512, seconds

CHEAP = ["add", "subtract", "multiply", "square", "absolute", "rint", "ceil", "conjugate"]
CHEAP += [level + name for name in ("divide", "reciprocal", "sqrt") for level in ("", "high.", "low.")]
LAYOUTS = [(of, step) for step in (2, 3, 8, 17, -1, -2) for of in ("from", "to", "both")] + [("from", "T"), ("to", "T")]


def array(random, limits, n, step, dtype):
    if step in ("T", "C"):
        side = math.isqrt(n)
        square = random.uniform(*limits, (side, side)).astype(dtype)
        return square.T if step == "T" else square
    return random.uniform(*limits, n * abs(step)).astype(dtype)[::step]


def ratio(name, dtype, n, of, step):
    random = np.random.default_rng(n)
    ours, theirs = operator.attrgetter(name)(kelvm), getattr(np, name.split(".")[-1])
    limits = FUNCTIONS.get(theirs.__name__, {}).get("of", [(0.5, 10)] * ours.nin)
    without = "C" if step == "T" else 1
    steps = [step if of != "to" else without] * ours.nin + [step if of != "from" else without]
    arguments = [array(random, each, n, s, dtype) for each, s in zip([*limits, (0, 1)], steps)]
    best = [math.inf, math.inf]
    for _ in range(9):
        for k, call in enumerate((theirs, ours)):
            best[k] = min(best[k], seconds(call, arguments, 0.0003))
    return best[0] / best[1]


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("functions", nargs="*", default=CHEAP)
    parser.add_argument("--without-avx512", action="store_true")
    arguments = parser.parse_args()
    if arguments.without_avx512 and not WITHOUT_AVX512.items() <= os.environ.items():
        os.execve(sys.executable, [sys.executable, *sys.argv], {**os.environ, **WITHOUT_AVX512})
    print(f"| {kelvm.version().cpu} | Type | Elements |", " | ".join(f"{of} {step}" for of, step in LAYOUTS), "|")
    print("|---" * (3 + len(LAYOUTS)) + "|")
    for name in arguments.functions:
        for dtype in ("float32", "float64"):
            for n in (1000, 100000):
                ratios = [f"{ratio(name, dtype, n, of, step):.2f}" for of, step in LAYOUTS]
                print(f"| {name} | {dtype} | {n:,} |", " | ".join(ratios), "|", flush=True)


if __name__ == "__main__":
    main()
