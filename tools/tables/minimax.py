"""The fits of all tables, by three methods:

minimax(), rational()  coefficients in a given format, for functions in Python's decimal
fpminimax()            the same by lattice reduction, for functions that Sollya knows
Rows                   rows by the hundred, with more bits than a coefficient has; for functions in MPFR

Each says with its coefficients what the errors are: of the fit with these coefficients, and of its evaluation by
Horner's rule, each product and each sum rounded, to first order; the argument counts as exact. Both have the fit's
weight.
"""
import math
import struct
import subprocess
from dataclasses import dataclass
from decimal import Decimal as D

import gmpy2
from gmpy2 import mpfr

UNIT = {"double": 2.0**-53, "float": 2.0**-24}


def to_double(d):
    return float(d)


def to_float(d):
    x = float(d)  # rounded twice, which does not matter for a coefficient
    return struct.unpack("f", struct.pack("f", x))[0]


@dataclass
class Errors:
    """Weighted errors, shown rounded up."""
    fit: float
    evaluation: float

    def __str__(self):
        def power(e):
            return f"2^{math.ceil(10 * math.log2(e)) / 10:.1f}" if e else "0"
        return f"fit {power(self.fit)}, evaluation {power(self.evaluation)}"


def horner_error(coefficients, x, unit):
    """A bound of the rounding errors at x, and the polynomial."""
    total, bound = coefficients[-1], 0.0
    for c in coefficients[-2::-1]:
        product = total * x
        total = product + c
        bound = abs(x) * bound + unit * (abs(product) + abs(total))
    return bound, total


def evaluation_error(coefficients, xs, ws, unit):
    c = [float(v) for v in coefficients]
    return max(float(w) * horner_error(c, float(x), unit)[0] for x, w in zip(xs, ws))


def solve(a, b):
    """Gaussian elimination with pivoting."""
    n = len(b)
    rows = [list(r) + [v] for r, v in zip(a, b)]
    for i in range(n):
        p = max(range(i, n), key=lambda k: abs(rows[k][i]))
        rows[i], rows[p] = rows[p], rows[i]
        for k in range(i + 1, n):
            f = rows[k][i] / rows[i][i]
            for j in range(i, n + 1):
                rows[k][j] -= f * rows[i][j]
    x = [row[n] for row in rows]
    for i in reversed(range(n)):
        for j in range(i + 1, n):
            x[i] -= rows[i][j] * x[j]
        x[i] /= rows[i][i]
    return x


def points(low, high, count):
    return [(low + high) / 2 + (high - low) / 2 * D(math.cos(math.pi * (k + 0.5) / count)) for k in range(count)]


def fit(xs, ys, ws, powers, rounds=12):
    """Coefficients of the powers that minimise max |ws (ys - polynomial)|: least squares, reweighted by the error (Lawson,
    "Contributions to the theory of linear least maximum approximation", 1961), within a few per cent of the minimax
    error."""
    m = [D(1)] * len(xs)
    basis = [[x**p for p in powers] for x in xs]
    best = None
    for _ in range(rounds):
        n = len(powers)
        wm = [w * w * k for w, k in zip(ws, m)]
        a = [[sum(v * b[i] * b[j] for v, b in zip(wm, basis)) for j in range(n)] for i in range(n)]
        r = [sum(v * b[i] * y for v, b, y in zip(wm, basis, ys)) for i in range(n)]
        c = solve(a, r)
        errors = [abs(w * (y - sum(ci * bi for ci, bi in zip(c, b)))) for w, y, b in zip(ws, ys, basis)]
        worst = max(errors)
        if best is None or worst < best[0]:
            best = (worst, c)
        if worst == 0:
            break
        total = sum(errors) / len(errors)
        m = [k * (e / total + D("1e-6")) for k, e in zip(m, errors)]
    return best[1]


def minimax(f, weight, powers, low, high, rounded=to_double):
    """Coefficients of the powers for f on [low, high], minimising |weight (f - polynomial)|, and their errors. They are
    rounded from the lowest up, the remaining ones fitted again after each, so that a rounding is compensated by the
    later coefficients."""
    low, high = D(low), D(high)
    xs = points(low, high, 24 + 6 * len(powers))
    xs = [x for x in xs if x != 0]
    ys, ws = [f(x) for x in xs], [weight(x) for x in xs]
    left, out, powers = list(ys), [], list(powers)
    while powers:
        c = fit(xs, left, ws, powers, 12 if len(out) == 0 else 6)
        first = rounded(c[0])
        out.append(first)
        left = [y - D(first) * x ** powers[0] for y, x in zip(left, xs)]
        powers.pop(0)
    worst = max(abs(w * y) for w, y in zip(ws, left))
    unit = UNIT["float" if rounded == to_float else "double"]
    return out, Errors(worst, evaluation_error(out, xs, ws, unit))


def rational(f, weight, m, n, high, rounded=to_double, rounds=20, lowest=0):
    """N of degree m and D = 1 + ... of degree n with N / D near f on [0, high], as minimax() fits: least squares of
    N - f D, reweighted by 1 / D and by the error. With lowest = 1, N is 1 + ... as well. Then the errors."""
    xs = points(D(0), high, 8 * (m + n + 2))
    ys, ws = [f(x) for x in xs], [weight(x) for x in xs]
    basis = [[x**i for i in range(lowest, m + 1)] + [-y * x**j for j in range(1, n + 1)] for x, y in zip(xs, ys)]
    count, terms = m + n + 1 - lowest, m + 1 - lowest
    lawson, denominators, best = [D(1)] * len(xs), [D(1)] * len(xs), None
    for _ in range(rounds):
        squares = [(w / d) ** 2 * k for w, d, k in zip(ws, denominators, lawson)]
        a = [[sum(v * b[i] * b[j] for v, b in zip(squares, basis)) for j in range(count)] for i in range(count)]
        c = solve(a, [sum(v * b[i] * (y - lowest) for v, b, y in zip(squares, basis, ys)) for i in range(count)])
        denominators = [1 + sum(v * x**j for j, v in enumerate(c[terms:], 1)) for x in xs]
        numerators = [lowest + sum(v * x**i for i, v in enumerate(c[:terms], lowest)) for x in xs]
        errors = [abs(w * (y - p / q)) for w, y, p, q in zip(ws, ys, numerators, denominators)]
        if best is None or max(errors) < best[0]:
            best = (max(errors), c)
        lawson = [k * (e * len(errors) / sum(errors) + D("1e-6")) for k, e in zip(lawson, errors)]
    c = [rounded(v) for v in best[1]]
    unit = UNIT["float" if rounded == to_float else "double"]
    n, d = [1.0] * lowest + c[:terms], [1.0] + c[terms:]
    result, evaluation = Errors(0, 0), 0
    for x, y, w in zip(xs, ys, ws):
        exact = [sum(D(v) * x**i for i, v in enumerate(p)) for p in (n, d)]
        result.fit = max(result.fit, abs(w * (y - exact[0] / exact[1])))
        relative = unit + sum(bound / abs(p) for bound, p in (horner_error(p, float(x), unit) for p in (n, d)))
        result.evaluation = max(result.evaluation, float(abs(w * y)) * relative)
    return n, d, result


def sollya(script):
    """The words that Sollya prints."""
    script = f"roundingwarnings = off!; display = hexadecimal!; prec = 200!; {script} quit;"
    return subprocess.run(["sollya"], input=script, capture_output=True, text=True, check=True).stdout.split()


def fpminimax(f, powers, low, high, ctype="double", fixed="0", change_last=None):
    """Coefficients of the powers for f - fixed on [low, high], with the least relative error of f, and their errors (as
    of a polynomial in x or x^2). f, fixed and the bounds are written as Sollya has them. change_last takes the
    coefficients and returns another last one."""
    form, interval = {"double": "D", "float": "SG"}[ctype], f"[{low}; {high}]"
    monomials = f"[|{', '.join(map(str, powers))}|]"
    words = sollya(f"p = fpminimax({f}, {monomials}, [|{form}...|], {interval}, relative, floating, {fixed}); "
                   f"for i in {monomials} do print(coeff(p, i)); "
                   f"print(round({low}, D, RN)); print(round({high}, D, RN));")
    *c, low, high = map(float.fromhex, words)
    if change_last:
        c[-1] = change_last(c)
    polynomial = " + ".join([f"({fixed})"] + [f"{v.hex()} * x^{p}" for v, p in zip(c, powers)])
    fit = float(sollya(f"display = decimal!; print(dirtyinfnorm(({polynomial}) / ({f}) - 1, {interval}));")[0])
    xs = [float(x) for x in points(D(low), D(high), 200)]
    step = powers[1] - powers[0]
    values = [(x if fixed == "x" else 0) + sum(v * x**p for v, p in zip(c, powers)) for x in xs]
    weights = [abs(x ** powers[0] / y) for x, y in zip(xs, values)]
    return c, Errors(fit, evaluation_error(c, [x**step for x in xs], weights, UNIT[ctype]))


WORKING, EXACT = 113, 200  # bits
gmpy2.get_context().precision = WORKING


def exactly(f):
    """f computed with 200 bits."""
    def wrapped(*arguments):
        with gmpy2.local_context(precision=EXACT):
            return f(*arguments)
    return wrapped


def working(x):
    """x as the sum of three doubles."""
    parts = []
    with gmpy2.local_context(precision=EXACT):
        for _ in range(3):
            parts.append(float(x))
            x -= parts[-1]
    return sum(map(mpfr, parts), mpfr(0))


def significant(x, bits):
    """x to the nearest number of so many significant bits."""
    return mpfr(x, bits)


class Interpolant:
    """A function on [low, high] as its interpolant in Chebyshev points."""

    def __init__(self, f, low, high, count):
        self.low, self.high = mpfr(low), mpfr(high)
        with gmpy2.local_context(precision=EXACT):
            cosine = [gmpy2.cos(gmpy2.const_pi() * k / (2 * count)) for k in range(4 * count)]
        cosine = [working(c) for c in cosine]
        at = [(self.low + self.high) / 2 + (self.high - self.low) / 2 * c for c in cosine[1:2 * count:2]]
        value = [working(f(x)) for x in at]
        sums = [sum((v * cosine[j * (2 * k + 1) % (4 * count)] for k, v in enumerate(value)), mpfr(0))
                for j in range(count)]
        self.lowest = sums[0] / count
        self.downwards = [s * 2 / count for s in sums[:0:-1]]

    def __call__(self, x):
        u = ((x - self.low) - (self.high - x)) / (self.high - self.low)
        b1 = b2 = mpfr(0)
        twice = 2 * u
        for c in self.downwards:
            b1, b2 = twice * b1 - b2 + c, b1
        return u * b1 - b2 + self.lowest


def exchanged(f, low, high, degree):
    """Coefficients of the polynomial with the least relative error to f on [low, high], by the exchange algorithm of
    Remez; and a grid with f on it. All operations are correctly rounded: they are the same on every machine."""
    n = degree + 2
    centre, radius = (low + high) / 2, (high - low) / 2
    # The fit is in u, t = centre + radius u; the error is watched on a grid that is dense towards the ends.
    cells = 24 * n
    grid = [mpfr(-math.cos(math.pi * i / cells)) for i in range(cells + 1)]
    on_grid = [f(centre + radius * x) for x in grid]
    u = [mpfr(-math.cos(math.pi * i / (n - 1))) for i in range(n)]
    for _ in range(30):
        # The polynomial whose error alternates on u: sum c_k u^k + (-1)^i E f = f.
        a, y = [], [f(centre + radius * x) for x in u]
        for i, x in enumerate(u):
            row = [mpfr(1)]
            for _ in range(degree):
                row.append(row[-1] * x)
            a.append(row + [-y[i] if i % 2 else y[i]])
        *c, level = solve(a, y)
        downwards = c[::-1]

        def polynomial(x):
            total = mpfr(0)
            for k in downwards:
                total = total * x + k
            return total

        def error(x):
            return polynomial(x) / f(centre + radius * x) - 1

        # The extremes between sign changes of the error take the place of u.
        at, size = [], []
        for x, y in zip(grid, on_grid):
            e = polynomial(x) / y - 1
            if not at or (e < 0) != (size[-1] < 0):
                at.append(x)
                size.append(e)
            elif abs(e) > abs(size[-1]):
                at[-1], size[-1] = x, e
        if len(at) != n:
            break  # the level is at the noise of the arithmetic
        for i, x in enumerate(at):
            for h in (mpfr(0.02) / n, mpfr(0.002) / n, mpfr(0.002) / n):
                if x - h < -1 or x + h > 1:
                    break
                left, middle, right = error(x - h), error(x), error(x + h)
                bend = left - 2 * middle + right
                if bend == 0:
                    break
                x += max(-8 * h, min(8 * h, h * (left - right) / (2 * bend)))
            u[i] = max(mpfr(-1), min(mpfr(1), x))
        if max(abs(error(x)) for x in u) - abs(level) < abs(level) * mpfr(1e-9):
            break
    # From u to t: sum c_k ((t - centre) / radius)^k by repeated synthetic division.
    scale = mpfr(1)
    for k in range(degree + 1):
        c[k] /= scale
        scale *= radius
    if centre != 0:
        for i in range(degree):
            for k in range(degree - 1, i - 1, -1):
                c[k] -= centre * c[k + 1]
    return c, [(centre + radius * x, y) for x, y in zip(grid, on_grid)]


class Rows:
    """Polynomials with the least relative error, each to be rounded as a row of a table."""

    def __init__(self, degree):
        self.degree, self.of, self.grids = degree, [], []

    def add(self, f, low, high):
        """f(t) for low <= t <= high."""
        c, grid = exchanged(f, mpfr(low), mpfr(high), self.degree)
        self.of.append(c)
        self.grids.append(grid)

    def plain(self, ctype="double", factor=1):
        """The rounded coefficients times the factor; their errors."""
        bits = {"double": 53, "float": 24}[ctype]
        rows = [[float(significant(factor * v, bits)) for v in c] for c in self.of]
        return rows, self.errors(rows, rows, factor, ctype)

    def split(self, head_bits, factor=1, line=lambda c: c[:2], first=None):
        """c0 and c1 as heads of so many bits, near those of a line but for row 0, and the rest: c0_lo, c1_lo, c2, ...,
        c0_hi, c1_hi; their errors, of the evaluation those without the heads. Row 0 is `first`, if given, which the fit
        has to meet but for the low bits from c8 on."""
        rows = []
        for c in self.of:
            heads = [significant(factor * v, head_bits) for v in (line(c) if rows else c[:2])]
            rows.append([float(factor * v - h) for v, h in zip(c, heads + [0] * len(c))] + list(map(float, heads)))
        if first:
            assert rows[0][:8] + rows[0][-2:] == first[:8] + first[-2:], "row 0 misses the published values"
            rows[0] = first
        whole = [[mpfr(row[0]) + row[-2], mpfr(row[1]) + row[-1]] + row[2:-2] for row in rows]
        return rows, self.errors(whole, [row[:-2] for row in rows], factor)

    def errors(self, exact, computed, factor=1, ctype="double"):
        result = Errors(0.0, 0.0)
        for whole, c, grid in zip(exact, computed, self.grids):
            for t, y in grid[::8]:
                total = mpfr(0)
                for k in reversed(whole):
                    total = total * t + k
                result.fit = max(result.fit, float(abs(total / (factor * y) - 1)))
                bound = horner_error(c, float(t), UNIT[ctype])[0]
                result.evaluation = max(result.evaluation, bound / float(abs(factor * y)))
        return result
