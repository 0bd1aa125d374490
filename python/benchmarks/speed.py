#!/usr/bin/env python3
"""Measures kelvm beside NumPy, SciPy, numexpr and Numba and writes docs/python-speed.md and docs/python-speed.png.

    python3 python/benchmarks/speed.py            with the kelvm that Python finds, best an installed one
    python3 python/benchmarks/speed.py --quick    the way through in half a minute, for working on this file

One thread, float32 and float64, arrays of 10, 1,000 and 1,000,000 elements, results into an array that is there. The
contenders take turns, each figure is the processor time of the best of its turns. On a processor with AVX-512 everything
runs a second time without it, in a process where the loader and NumPy are told to leave it alone. Errors are measured on
the same inputs with mpmath. Debian: python3-scipy python3-numexpr python3-numba python3-mpmath python3-matplotlib.
"""
import argparse
import datetime
import json
import math
import os
import pathlib
import platform
import subprocess
import sys
import time

import numpy as np

DOCS = pathlib.Path(__file__).resolve().parents[2] / "docs"
LENGTHS = (10, 1000, 1000000)
WITHOUT_AVX512 = {
    "NPY_DISABLE_CPU_FEATURES": "AVX512F AVX512CD AVX512_SKX AVX512_CLX AVX512_CNL AVX512_ICL",
    "GLIBC_TUNABLES": "glibc.cpu.hwcaps=-AVX512F,-AVX512CD,-AVX512DQ,-AVX512BW,-AVX512VL",
}
# Intervals of the arguments, and the names or expressions elsewhere.
FUNCTIONS = {
    "divide": dict(of=[(-10, 10), (0.5, 10)], numexpr="x / y", numba="x / y", exact=lambda m, x, y: x / y),
    "sqrt": dict(of=[(0, 100)], numexpr="sqrt(x)", numba="math.sqrt(x)", exact=lambda m, x: m.sqrt(x)),
    "cbrt": dict(of=[(-100, 100)], exact=lambda m, x: m.sign(x) * m.cbrt(abs(x))),
    "hypot": dict(of=[(-10, 10), (-10, 10)], numba="math.hypot(x, y)", exact=lambda m, x, y: m.hypot(x, y)),
    "exp": dict(of=[(-20, 20)], numexpr="exp(x)", numba="math.exp(x)", exact=lambda m, x: m.exp(x)),
    "expm1": dict(of=[(-5, 5)], numexpr="expm1(x)", numba="math.expm1(x)", exact=lambda m, x: m.expm1(x)),
    "log": dict(of=[(0.01, 100)], numexpr="log(x)", numba="math.log(x)", exact=lambda m, x: m.log(x)),
    "log10": dict(of=[(0.01, 100)], numexpr="log10(x)", numba="math.log10(x)", exact=lambda m, x: m.log10(x)),
    "log1p": dict(of=[(-0.9, 100)], numexpr="log1p(x)", numba="math.log1p(x)", exact=lambda m, x: m.log1p(x)),
    "power": dict(of=[(0.1, 10), (-5, 5)], numexpr="x ** y", numba="x ** y", exact=lambda m, x, y: m.power(x, y)),
    "sin": dict(of=[(-20, 20)], numexpr="sin(x)", numba="math.sin(x)", exact=lambda m, x: m.sin(x)),
    "cos": dict(of=[(-20, 20)], numexpr="cos(x)", numba="math.cos(x)", exact=lambda m, x: m.cos(x)),
    "tan": dict(of=[(-20, 20)], numexpr="tan(x)", numba="math.tan(x)", exact=lambda m, x: m.tan(x)),
    "arctan": dict(of=[(-10, 10)], numexpr="arctan(x)", numba="math.atan(x)", exact=lambda m, x: m.atan(x)),
    "arctan2": dict(of=[(-10, 10), (-10, 10)], numexpr="arctan2(x, y)", numba="math.atan2(x, y)",
                    exact=lambda m, x, y: m.atan2(x, y)),
    "sinh": dict(of=[(-10, 10)], numexpr="sinh(x)", numba="math.sinh(x)", exact=lambda m, x: m.sinh(x)),
    "tanh": dict(of=[(-5, 5)], numexpr="tanh(x)", numba="math.tanh(x)", exact=lambda m, x: m.tanh(x)),
    "erf": dict(of=[(-3, 3)], numba="math.erf(x)", exact=lambda m, x: m.erf(x)),
    "ndtr": dict(of=[(-5, 5)], exact=lambda m, x: m.ncdf(x)),
    "ndtri": dict(of=[(0.001, 0.999)], exact=lambda m, x: m.sqrt(2) * m.erfinv(2 * x - 1)),
}


def contenders(name, dtype):
    """The functions of this name: calls that take the sources and the destination."""
    import kelvm
    import numba
    import numexpr
    import scipy.special

    row = FUNCTIONS[name]
    found = {"kelvm": getattr(kelvm, name), "high": getattr(kelvm.high, name), "low": getattr(kelvm.low, name)}
    for title, module in (("NumPy", np), ("SciPy", scipy.special)):
        if isinstance(getattr(module, name, None), np.ufunc):
            found[title] = getattr(module, name)
    if "numexpr" in row:
        numexpr.set_num_threads(1)
        expression = row["numexpr"]
        found["numexpr"] = lambda *a: numexpr.evaluate(expression, dict(zip("xy", a[:-1])), {}, out=a[-1])
    if "numba" in row:
        inputs = "xy"[:len(row["of"])]
        function = eval(f"lambda {', '.join(inputs)}: {row['numba']}", {"math": math})
        of_type = getattr(numba, np.dtype(dtype).name)
        found["Numba"] = numba.vectorize([of_type(*[of_type] * len(inputs))])(function)
    return found


def seconds(call, arguments, duration):
    """The processor time of one call; as many in a row as make up the duration."""
    count = 1
    while True:
        start = time.thread_time()
        for _ in range(count):
            call(*arguments)
        spent = time.thread_time() - start
        if spent >= duration / 2 or count > 1e7:
            return spent / count
        count = max(2 * count, int(count * duration / max(spent, 1e-9)))


def largest_error(exact, results):
    """In ulps of the exact value."""
    import mpmath

    worst = mpmath.mpf(0)
    for e, r in zip(exact, results):
        spacing = float(np.spacing(abs(results.dtype.type(float(e)))))
        worst = max(worst, abs(mpmath.mpf(float(r)) - e) / spacing)
    return float(worst)


def measure(quick):
    import kelvm
    import mpmath

    mpmath.mp.prec = 120
    rows = []
    for name, row in FUNCTIONS.items():
        for dtype in (np.float32, np.float64):
            found = contenders(name, dtype)
            times = {}
            for n in LENGTHS:
                random = np.random.default_rng(n)
                arguments = [random.uniform(*limits, n).astype(dtype) for limits in row["of"]] + [np.empty(n, dtype)]
                turns, duration = (1, 0.001) if quick else (9, 0.001) if n == LENGTHS[-1] else (30, 0.001)
                best = {title: math.inf for title in found}
                for _ in range(turns):
                    for title, call in found.items():
                        best[title] = min(best[title], seconds(call, arguments, duration))
                times[n] = best
            points = 100 if quick else 10000
            sources = [random.uniform(*limits, points).astype(dtype) for limits in row["of"]]
            exact = [row["exact"](mpmath.mp, *(mpmath.mpf(float(v)) for v in values)) for values in zip(*sources)]
            errors = {}
            for title, call in found.items():
                result = np.empty(points, dtype)
                call(*sources, result)
                errors[title] = largest_error(exact, result)
            rows.append(dict(name=name, type=np.dtype(dtype).name, times=times, errors=errors))
            print(name, np.dtype(dtype).name, file=sys.stderr)
    return dict(cpu=kelvm.version().cpu, rows=rows)


def in_process(quick, environment):
    command = [sys.executable, __file__, "--measure"] + ["--quick"] * quick
    run = subprocess.run(command, env={**os.environ, **environment}, stdout=subprocess.PIPE, text=True, check=True)
    return json.loads(run.stdout)


def ratio(row, n, ours="kelvm", peers=("NumPy", "SciPy")):
    """How many times as fast as the fastest of these peers, or None."""
    times = row["times"][str(n)]
    found = [times[p] for p in peers if p in times]
    return min(found) / times[ours] if found else None


def mean(ratios):
    ratios = [r for r in ratios if r is not None]
    return math.exp(sum(map(math.log, ratios)) / len(ratios))


def table(rows):
    head = ["Function", "Type", "ns at 1,000"] + [f"at {n:,}" for n in LENGTHS]
    head += ["high at 1,000", "low at 1,000", "numexpr", "Numba"]
    head += ["Ulp", "high", "NumPy", "SciPy", "numexpr", "Numba"]
    lines = ["| " + " | ".join(head) + " |", "|---" * len(head) + "|"]

    def number(x, digits=2):
        return "" if x is None else f"{x:.{digits}f}" if x < 1000 else f"{x:.0f}"

    for row in rows:
        cells = [row["name"], row["type"], number(row["times"]["1000"]["kelvm"] / 1000 * 1e9)]
        cells += [number(ratio(row, n)) for n in LENGTHS] + [number(ratio(row, 1000, ours)) for ours in ("high", "low")]
        cells += [number(ratio(row, 1000000, peers=[peer])) for peer in ("numexpr", "Numba")]
        cells += [number(row["errors"].get(c)) for c in ("kelvm", "high", "NumPy", "SciPy", "numexpr", "Numba")]
        lines.append("| " + " | ".join(cells) + " |")
    means = ["**Geometric mean**", "", ""] + [number(mean(ratio(r, n) for r in rows)) for n in LENGTHS]
    means += [number(mean(ratio(r, 1000, ours) for r in rows)) for ours in ("high", "low")]
    means += [number(mean(ratio(r, 1000000, peers=[peer]) for r in rows)) for peer in ("numexpr", "Numba")] + [""] * 6
    lines += ["| " + " | ".join(means) + " |"]
    behind = [f"{r['name']} {r['type']}" for r in rows if min(ratio(r, 1000), ratio(r, 1000000)) < 1]
    slow = [f"{r['name']} {r['type']}" for r in rows if ratio(r, 10) < 1 / 1.1]
    lines += ["", f"Slower than NumPy or SciPy at 1,000 or 1,000,000 elements: {', '.join(behind) or 'none'}.", "",
              f"Slower by more than 10 % at 10 elements: {', '.join(slow) or 'none'}."]
    return lines


def plot(parts):
    import matplotlib
    matplotlib.use("Agg")
    import matplotlib.pyplot as plt

    figure, axes = plt.subplots(len(parts), 2, figsize=(13, 4.5 * len(parts)), squeeze=False, sharey=True)
    for (title, data), line in zip(parts.items(), axes):
        for axis, kind in zip(line, ("float32", "float64")):
            rows = [r for r in data["rows"] if r["type"] == kind]
            where = np.arange(len(rows))
            for k, ours in enumerate(("kelvm", "high", "low")):
                axis.bar(where + 0.27 * (k - 1), [ratio(r, 1000, ours) for r in rows], 0.27,
                         label="kelvm" if ours == "kelvm" else f"kelvm.{ours}")
            axis.axhline(1, color="black", linewidth=0.8)
            axis.set_yscale("log")
            axis.set_yticks([0.5, 1, 2, 5, 10, 20, 50], ["0.5", "1", "2", "5", "10", "20", "50"])
            axis.set_xticks(where, [r["name"] for r in rows], rotation=60)
            axis.set_title(f"{title}, {kind}")
    figure.suptitle("Times as fast as NumPy or SciPy, arrays of 1,000 elements")
    axes[0][0].legend()
    figure.tight_layout()
    figure.savefig(DOCS / "python-speed.png", dpi=80, metadata={"Software": None})


def write(parts):
    import matplotlib
    import numba
    import numexpr
    import scipy

    lscpu = subprocess.run(["lscpu"], capture_output=True, text=True, check=True).stdout
    processor = ", ".join(" ".join(line.split()) for line in lscpu.splitlines()
                          if line.lstrip().startswith(("Model name", "CPU family", "Model:")))
    versions = ", ".join(f"{module.__name__} {module.__version__}" for module in (np, scipy, numexpr, numba))
    lines = ["# Speed in Python, measured", "", f"""{processor}; one thread; {datetime.date.today()};
Python {platform.python_version()}, {versions}.
Written by `python3 python/benchmarks/speed.py`, which says how it measures.

A number is how many times as fast kelvm is: under "at 10" to "at 1,000,000" full precision against the faster of
NumPy's and SciPy's function, then `kelvm.high` and `kelvm.low` against the same, then full precision against numexpr
and Numba at 1,000,000 elements. The last six columns are the largest error in ulp on 10,000 random arguments.""", "",
             "![Speed beside NumPy and SciPy](python-speed.png)", ""]
    for title, data in parts.items():
        lines += [f"## {title} (kelvm's build {data['cpu']})", ""] + table(data["rows"]) + [""]
    (DOCS / "python-speed.md").write_text("\n".join(lines).rstrip() + "\n")
    plot(parts)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--quick", action="store_true")
    parser.add_argument("--measure", action="store_true", help=argparse.SUPPRESS)
    arguments = parser.parse_args()
    if arguments.measure:
        print(json.dumps(measure(arguments.quick)))
        return
    parts = {}
    if "avx512f" in pathlib.Path("/proc/cpuinfo").read_text():
        parts["With AVX-512"] = in_process(arguments.quick, {})
        parts["The same processor without AVX-512"] = in_process(arguments.quick, WITHOUT_AVX512)
    else:
        parts["Without AVX-512"] = in_process(arguments.quick, {})
    write(parts)


if __name__ == "__main__":
    main()
