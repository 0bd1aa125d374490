"""Near-minimax polynomials with coefficients in a given format, with nothing but Python's decimal.

Weighted least squares on Chebyshev points, reweighted by the error (Lawson, "Contributions to the theory of linear
least maximum approximation", 1961), within a few per cent of the minimax error. Coefficients are rounded from the lowest
up, the remaining ones fitted again after each, so that a rounding is compensated by the later coefficients.
"""
import math
import struct
from decimal import Decimal as D


def to_double(d):
    return float(d)


def to_float(d):
    x = float(d)  # double rounding is safe_input for a coefficient
    return struct.unpack("f", struct.pack("f", x))[0]


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
    x = [D(0)] * n
    for i in reversed(range(n)):
        x[i] = (rows[i][n] - sum(rows[i][j] * x[j] for j in range(i + 1, n))) / rows[i][i]
    return x


def points(low, high, count):
    return [(low + high) / 2 + (high - low) / 2 * D(math.cos(math.pi * (k + 0.5) / count)) for k in range(count)]


def fit(xs, ys, ws, powers, rounds=12):
    """Coefficients of the powers that minimise max |ws (ys - polynomial)|."""
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
    """Coefficients of the powers for f on [low, high], minimising |weight (f - polynomial)|; and log2 of that."""
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
    return out, math.log2(worst)


def rational(f, weight, m, n, high, rounded=to_double, rounds=20, lowest=0):
    """N of degree m and D = 1 + ... of degree n with N / D near f on [0, high], as minimax() fits: least squares of
    N - f D, reweighted by 1 / D and by the error. With lowest = 1, N is 1 + ... as well. Then log2 of the
    largest error, before coefficients are rounded."""
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
    return [1.0] * lowest + c[:terms], [1.0] + c[terms:], math.log2(best[0])
