"""Draws the pictures of docs/pictures for scripts/report: SVG with its text as text, the same bytes for the same figures.
Grey and the three colours (of M. Okabe and K. Ito, Color Universal Design, 2008) show on white and on black."""
import math
import re

import matplotlib

matplotlib.use("svg")
import matplotlib.pyplot as plt
import numpy as np
from matplotlib.ticker import FixedLocator, FuncFormatter, LogLocator, NullFormatter

GREY, BLUE, VERMILLION, GREEN = "#767676", "#0072b2", "#d55e00", "#009e73"
TYPES = {"32f": "float", "64f": "double", "32fc": "complex float", "64fc": "complex double"}
DIGITS = {"32f": 24, "64f": 53, "32fc": 24, "64fc": 53}
SETS = {"sse41": "SSE4.1", "avx2": "AVX2", "avx512": "AVX-512"}
SET_COLOURS = {"sse41": VERMILLION, "avx2": GREEN, "avx512": BLUE}
PEERS = {"libm": "C library", "gcc-mvec": "libmvec", "loop": "plain loop", "loop-limited": "limited loop",
         "ofast": "-Ofast loop", "hand": "intrinsics", "eigen": "Eigen", "xsimd": "xsimd", "highway": "Highway",
         "boost": "Boost.Math"}

matplotlib.rcParams.update({
    "svg.fonttype": "none", "svg.hashsalt": "kelvm", "font.family": "sans-serif",
    "font.sans-serif": ["DejaVu Sans", "Verdana", "sans-serif"], "font.size": 8, "axes.titlesize": 8.5,
    "axes.titleweight": "bold", "axes.spines.top": False, "axes.spines.right": False, "axes.edgecolor": GREY,
    "axes.linewidth": 0.6, "text.color": GREY, "axes.labelcolor": GREY, "axes.titlecolor": GREY, "xtick.color": GREY,
    "ytick.color": GREY, "xtick.labelsize": 7, "ytick.labelsize": 7, "grid.color": GREY, "grid.alpha": 0.25,
    "grid.linewidth": 0.5, "lines.linewidth": 1.1, "path.simplify_threshold": 0.1})


def peer_name(name):
    """SLEEF's names say its error bound in tenths of an ulp; a + stands for several of its functions composed."""
    if match := re.fullmatch(r"sleef-u(\d+)(\+?)", name):
        return f"SLEEF u{match[1]}{match[2]}"
    return PEERS.get(name, name)


def save(figure, path):
    """Writes the picture without what a viewer does not need: metadata, each text twice, many decimals."""
    figure.savefig(path, format="svg", transparent=True, metadata={"Date": None})
    plt.close(figure)
    text = re.sub(r"<metadata>.*?</metadata>|<!-- .*? -->", "", path.read_text(), flags=re.S)
    text = re.sub(r'<g id="[^"]*">', "<g>", text)
    text = re.sub(r' transform="rotate\(-0 [^"]*\)"', "", text)
    text = re.sub(r'<g>\s*<path [^>]*style="fill: none"/>\s*</g>', "", text)
    text = re.sub(r"font: (?:(\d+) )?([\d.]+px) [^;\"]*",
                  lambda m: (f"font-weight: {m[1]}; " if m[1] else "") + f"font-size: {m[2]}", text)
    text = text.replace("*{stroke-linejoin", "text{font-family: 'DejaVu Sans', Verdana, sans-serif} *{stroke-linejoin")
    number = lambda m: f"{float(m[0]):.{1 if abs(float(m[0])) >= 10 else 2}f}".rstrip("0").rstrip(".")
    text = re.sub(r"<[^>]*>", lambda tag: re.sub(r"-?\d+\.\d{2,}", number, tag[0]), text)
    path.write_text(re.sub(r"\s*\n\s*", "\n", text))


def short(value, _=None):
    """A number as a tick shows it."""
    if value >= 1e5 or 0 < value < 9e-4:
        exponent = math.floor(math.log10(value) + 1e-9)
        digits = "".join("⁻" if c == "-" else "⁰¹²³⁴⁵⁶⁷⁸⁹"[int(c)] for c in str(exponent))
        factor = round(value / 10**exponent)
        return f"10{digits}" if factor == 1 else f"{factor}·10{digits}"
    return f"{value:g}"


def logarithmic(axis, few=6):
    """Ticks at powers of ten; where the axis spans less than two, at 2 and 5 of each as well."""
    lo, hi = sorted(axis.get_view_interval())
    axis.set_major_locator(LogLocator(10, (1.0, 2.0, 5.0) if hi / lo < 200 else (1.0,), numticks=few))
    axis.set_major_formatter(FuncFormatter(short))
    axis.set_minor_formatter(NullFormatter())
    axis.set_minor_locator(FixedLocator([]))


def spread(positions, gap):
    """Positions in increasing order, moved apart until each pair has that gap."""
    moved = list(positions)
    for _ in range(200):
        for i in range(len(moved) - 1):
            if (close := gap - (moved[i + 1] - moved[i])) > 1e-9:
                moved[i] -= close / 2
                moved[i + 1] += close / 2
    return moved


def label_ends(axes, ends):
    """Names the curves behind their right ends: (height, text, colour)."""
    ends = sorted(ends, key=lambda end: end[0])
    box = axes.get_window_extent()
    at = [axes.transAxes.inverted().transform((0, axes.transData.transform((1, y))[1]))[1] for y, _, _ in ends]
    gap = 10 / 72 * axes.figure.dpi / box.height
    for y, (_, text, colour) in zip(spread(at, gap), ends):
        axes.text(1.015, y, text, transform=axes.transAxes, color=colour, va="center", fontsize=7.5)


# The error over the domain

LEVELS = {"A24": BLUE, "A53": BLUE, "A21": GREEN, "A50": GREEN, "A11": VERMILLION, "A26": VERMILLION}


def in_ulps(curve):
    kind, scale = curve["type"], 1
    if curve["measure"] == "absolute":
        scale = 2.0 ** DIGITS[kind]
    return [math.nan if e is None or (e == 0 and curve["measure"] != "absolute") else e * scale for e in curve["errors"]]


def rounding_error(curve):
    """The largest one of a correctly rounded result."""
    return math.sqrt(0.5) if curve["measure"] == "norm" else 0.5


def source(curve):
    two = curve["shape"] == "Binary"
    second = "[{:g}, {:g}]".format(*curve["second"])
    if curve["type"].endswith("c") and curve["shape"] != "RealToComplex":
        other = f", |w| in {second}" if two or curve["shape"] == "ScalarPower" else ""
        return f"|z|{other}, all directions"
    return "x" + (f", y in {second}" if two else f", exponents in {second}" if curve["shape"] == "ScalarPower" else "")


def error_picture(family, curves, path):
    """Columns: single and double precision. Rows: of real, then of complex functions, the lower accuracies and the full
    one. Returns False, and draws nothing, where no error is larger than that of a correctly rounded result."""
    panels = []  # of a row: the curves of both columns
    for kinds in (("32f", "64f"), ("32fc", "64fc")):
        of = [[c for c in curves if c["type"] == kind] for kind in kinds]
        lower = [[c for c in one if c["suffix"] not in ("A24", "A53")] for one in of]
        full = [[c for c in one if c["suffix"] in ("A24", "A53")] for one in of]
        for row in (lower, full):
            if any(e > 1.0001 * rounding_error(c) for one in row for c in one for e in in_ulps(c)):
                panels.append((row, kinds))
    if not panels:
        return False
    figure, grid = plt.subplots(len(panels), 2, figsize=(8.4, 1.75 * len(panels) + 0.3), squeeze=False)
    figure.subplots_adjust(left=0.085, right=0.925, wspace=0.32, hspace=0.75, top=1 - 0.62 / (1.75 * len(panels) + 0.3),
                           bottom=0.42 / (1.75 * len(panels) + 0.3))
    figure.text(0.085, 1 - 0.12 / figure.get_figheight(), f"{family}: the largest error in each part of the domain",
                fontsize=10, fontweight="bold", va="top")
    for axes_row, (row, kinds) in zip(grid, panels):
        for axes, shown, kind in zip(axes_row, row, kinds):
            if shown:
                draw_errors(axes, shown, kind)
            else:
                axes.set_axis_off()
    save(figure, path)
    return True


def draw_errors(axes, curves, kind):
    full = curves[0]["suffix"] in ("A24", "A53")
    first = curves[0]
    lo, hi = first["range"]
    if first["logarithmic"]:
        axes.set_xscale("log")
    count = len(first["errors"])
    x = [(i + 0.5) / count for i in range(count)]
    x = [lo * (hi / lo) ** t if first["logarithmic"] else lo + (hi - lo) * t for t in x]
    axes.set_xlim(lo, hi)
    heights = [in_ulps(c) for c in curves]
    worst = max((h for one in heights for h in one if not math.isnan(h)), default=1)
    if full or worst <= 3:
        axes.set_ylim(0, max(1.1, 1.1 * worst))
        axes.set_yticks([0, 0.25, 0.5, 0.75, 1] if worst < 1.2 else [0, 0.5, 1, 1.5, 2, 2.5, 3][:int(2.2 * worst) + 1])
        axes.axhline(rounding_error(first), color=GREY, linewidth=0.6, linestyle=(0, (1, 2)))
        if full:
            axes.axhline(1, color=BLUE, linewidth=0.6, linestyle=(0, (4, 3)))
            axes.text(0.99, 0.99, "promised: 1 ulp", color=BLUE, fontsize=6.5, va="top", ha="right",
                      transform=axes.get_yaxis_transform())
    else:
        axes.set_yscale("log")
        axes.set_ylim(0.3, max(worst, *(2.0 ** (DIGITS[kind] - int(c["suffix"][1:])) * 2 for c in curves)) * 3)
        for c in curves:
            bits = int(c["suffix"][1:])
            if c["measure"] != "absolute":
                axes.axhline(2.0 ** (DIGITS[kind] - bits), color=LEVELS[c["suffix"]], linewidth=0.6, linestyle=(0, (4, 3)))
                axes.text(0.99, 2.0 ** (DIGITS[kind] - bits) * 1.15, f"promised: {bits} bits", color=LEVELS[c["suffix"]],
                          fontsize=6.5, va="bottom", ha="right", transform=axes.get_yaxis_transform())
    ends = []
    for c, one in zip(curves, heights):
        axes.plot(x, one, color=LEVELS[c["suffix"]])
        known = [h for h in one if not math.isnan(h)]
        if known:
            end = sorted(known[-5:])[len(known[-5:]) // 2]
            name = c["suffix"] + ("*" if c["measure"] == "absolute" else "")
            ends.append((max(end, axes.get_ylim()[0]), name, LEVELS[c["suffix"]]))
    unit = "ulp of the norm" if first["measure"] == "norm" else "ulp"
    absolute = any(c["measure"] == "absolute" for c in curves)
    axes.set_title(TYPES[kind] + (", full precision" if full else ", fewer bits"), loc="left")
    axes.set_ylabel(unit)
    axes.set_xlabel(source(first) + ("   (* absolute error, in ulps of 1)" if absolute else ""), labelpad=1)
    axes.grid(True, axis="y")
    if first["logarithmic"]:
        logarithmic(axes.xaxis)
    if axes.get_yscale() == "log":
        logarithmic(axes.yaxis, 5)
    label_ends(axes, ends)


# Speed beside the peers


def best_peer(function, build, length):
    """The fastest contender of no worse accuracy, in this instruction set or a lesser one."""
    sets = list(SETS)[:list(SETS).index(build) + 1]
    peers = [c for c in function["contenders"] if not c["ours"] and c["counts"] and not c["naive"] and c["set"] in sets]
    return min(peers, key=lambda c: c["ticks"][length], default=None)


def ours(function, build):
    return next((c for c in function["contenders"] if c["ours"] and c["set"] == build), None)


def speed_picture(family, functions, per_ns, length, path):
    """A row a function, a column an instruction set: a dot for us, a diamond for the fastest peer that is as accurate."""
    sets = [s for s in SETS if ours(functions[0], s)]
    height = 0.19 * len(functions) + 1.15
    figure, grid = plt.subplots(1, len(sets), figsize=(8.6, height), sharex=True, sharey=True, squeeze=False)
    figure.subplots_adjust(left=0.105, right=0.855, wspace=0.62, top=1 - 0.72 / height, bottom=0.42 / height)
    figure.text(0.012, 1 - 0.08 / height, f"{family}: time an element", fontsize=10, fontweight="bold", va="top")
    figure.text(0.012, 1 - 0.28 / height, f"calls of {functions[0]['lengths'][length]} elements", fontsize=7.5, va="top")
    figure.text(0.36, 1 - 0.1 / height, "● kelvm", fontsize=8.5, color=BLUE, va="top")
    figure.text(0.45, 1 - 0.1 / height, "◇ fastest peer that is as accurate; number: its time by ours",
                fontsize=8.5, color=VERMILLION, va="top")
    for axes, build in zip(grid[0], sets):
        axes.set_xscale("log")
        axes.set_title(SETS[build], loc="left")
        peers, mine = [], []
        for row, f in enumerate(functions):
            scale = 1 / f["lengths"][length] / per_ns
            mine.append(ours(f, build)["ticks"][length] * scale)
            note = "no peer"
            if peer := best_peer(f, build, length):
                peers.append((peer["ticks"][length] * scale, row))
                note = f"{peers[-1][0] / mine[-1]:.2f}  {peer_name(peer['name'])}"
            axes.text(1.02, row, note, transform=axes.get_yaxis_transform(), fontsize=6.5, va="center")
        for other, row in peers:
            axes.plot([mine[row], other], [row, row], color=GREY, linewidth=0.7, zorder=1)
        if peers:
            axes.plot(*zip(*peers), "D", color=VERMILLION, markersize=3.6, markerfacecolor="none", zorder=2)
        axes.plot(mine, range(len(mine)), "o", color=BLUE, markersize=4, zorder=3)
        axes.set_ylim(len(functions) - 0.5, -0.5)
        axes.set_yticks(range(len(functions)), [f["name"].split("_", 1)[1].replace("_", " ") for f in functions])
        axes.tick_params(axis="y", length=0)
        axes.grid(True, axis="x")
        axes.set_xlabel("nanoseconds", labelpad=1)
    lo, hi = grid[0][0].get_xlim()
    if hi / lo < 10:
        middle = math.sqrt(hi * lo)
        grid[0][0].set_xlim(middle / 10**0.5, middle * 10**0.5)
    for axes in grid[0]:
        logarithmic(axes.xaxis, 5)
    save(figure, path)


def overview_picture(rows, sets, path):
    """Families in two columns, by their mean ratio to the best peer: (family, {set: ratio})."""
    rows = sorted(rows, key=lambda row: -row[1][sets[-1]])
    half = (len(rows) + 1) // 2
    height = 0.185 * half + 1.1
    figure, grid = plt.subplots(1, 2, figsize=(8.4, height), sharex=True)
    figure.subplots_adjust(left=0.105, right=0.985, wspace=0.3, top=1 - 0.62 / height, bottom=0.42 / height)
    figure.text(0.012, 1 - 0.08 / height, "How many times as fast as the fastest peer that is as accurate", fontsize=10,
                fontweight="bold", va="top")
    x = 0.012
    for s in sets:
        figure.text(x, 1 - 0.33 / height, "● " + SETS[s], fontsize=8.5, color=SET_COLOURS[s], va="top")
        x += 0.1
    figure.text(x + 0.02, 1 - 0.33 / height, "mean over the functions of a family", fontsize=8, va="top")
    for axes, part in zip(grid, (rows[:half], rows[half:])):
        axes.set_xscale("log")
        axes.axvline(1, color=GREY, linewidth=0.9)
        for y, (_, ratios) in enumerate(part):
            values = [ratios[s] for s in sets if s in ratios]
            axes.plot([min(values), max(values)], [y, y], color=GREY, linewidth=0.7, zorder=1)
        for s in sets:
            axes.plot(*zip(*((ratios[s], y) for y, (_, ratios) in enumerate(part) if s in ratios)), "o",
                      color=SET_COLOURS[s], markersize=4, zorder=2)
        axes.set_ylim(half - 0.5, -0.5)
        axes.set_yticks(range(len(part)), [family for family, _ in part])
        axes.tick_params(axis="y", length=0)
        axes.grid(True, axis="x")
        axes.set_xlabel("time of the peer by ours", labelpad=1)
    for axes in grid:
        logarithmic(axes.xaxis, 8)
    save(figure, path)


# The cost as the length grows


def length_picture(family, functions, per_ns, path):
    """A panel a function, a curve a build."""
    lines = -(-len(functions) // 2)
    height = 1.95 * lines + 0.45
    figure, grid = plt.subplots(lines, 2, figsize=(7.4, height), squeeze=False, sharey=True)
    figure.subplots_adjust(left=0.075, right=0.92, wspace=0.28, hspace=0.6, top=1 - 0.6 / height, bottom=0.42 / height)
    figure.text(0.012, 1 - 0.08 / height, f"{family}: time an element as calls grow longer", fontsize=10, fontweight="bold",
                va="top")
    for axes in grid.flat[len(functions):]:
        axes.set_axis_off()
    for axes, f in zip(grid.flat, functions):
        axes.set_xscale("log")
        axes.set_yscale("log")
        curves = {s: [t / n / per_ns for t, n in zip(c["ticks"], f["lengths"])] for s in SETS if (c := ours(f, s))}
        for s, times in curves.items():
            axes.plot(f["lengths"], times, color=SET_COLOURS[s], marker="o", markersize=2)
        axes.set_xlim(1, 1.3e7)
        axes.set_title(f["name"].split("_", 1)[1].replace("_", " "), loc="left")
        axes.set_xlabel("elements a call", labelpad=1)
        axes.grid(True)
        axes.xaxis.set_major_locator(FixedLocator([10.0 ** i for i in range(8)]))
        axes.xaxis.set_major_formatter(FuncFormatter(lambda v, _: short(v) if v in (1, 100, 1e4, 1e6) else ""))
        axes.xaxis.set_minor_locator(FixedLocator([]))
    for row in grid:
        row[0].set_ylabel("nanoseconds")
    for axes, f in zip(grid.flat, functions):
        logarithmic(axes.yaxis, 6)
        label_ends(axes, [(ours(f, s)["ticks"][-1] / f["lengths"][-1] / per_ns, SETS[s], SET_COLOURS[s])
                          for s in SETS if ours(f, s)])
    save(figure, path)


# Accuracy against speed


def tradeoff_picture(family, by_type, per_ns, length, path, build):
    """A panel a type: error and time of every contender; those that nobody beats in both are joined."""
    columns = min(2, len(by_type))
    lines = -(-len(by_type) // columns)
    height = 3 * lines + 0.45
    figure, grid = plt.subplots(lines, columns, figsize=(4.3 * columns, height), squeeze=False)
    figure.subplots_adjust(left=0.6 / (4.3 * columns), right=1 - 0.15 / (4.3 * columns), wspace=0.2, hspace=0.42,
                           top=1 - 0.72 / height, bottom=0.42 / height)
    figure.text(0.012, 1 - 0.08 / height, f"{family}: who is accurate, who is fast", fontsize=10, fontweight="bold", va="top")
    figure.text(0.012 if columns == 1 else 0.5, 1 - (0.28 if columns == 1 else 0.1) / height,
                f"with {SETS[build]}; better is down and left", fontsize=7.5, va="top")
    for axes in grid.flat[len(by_type):]:
        axes.set_axis_off()
    for axes, (kind, functions) in zip(grid.flat, by_type.items()):
        draw_tradeoff(axes, kind, functions, per_ns, length, build)
    save(figure, path)


def draw_tradeoff(axes, kind, functions, per_ns, length, build):
    n = functions[0]["lengths"][length]
    points = [(c["ulp"], c["ticks"][length] / n / per_ns, f["suffix"], True)
              for f in functions for c in f["contenders"] if c["ours"] and c["set"] == build and c["ulp"] is not None]
    peers = {}
    for f in functions:
        for c in f["contenders"]:
            if not c["ours"] and c["set"] == build and c["ulp"] is not None:
                name = peer_name(c["name"]) + (" (naive)" if c["naive"] else "")
                one = (c["ulp"], c["ticks"][length] / n / per_ns)
                peers[name] = min(peers.get(name, one), one, key=lambda p: p[1])
    points += [(u, t, name, False) for name, (u, t) in peers.items() if u < 2.0 ** DIGITS[kind]]
    points = [(max(u, 0.25), t, name, mine) for u, t, name, mine in points]  # exact results have no place on the axis
    near = lambda a, b: abs(math.log(a / b)) < 0.03
    merged = []  # contenders at one place share a label
    for u, t, name, mine in sorted(points):
        for other in merged:
            if other[3] == mine and near(u, other[0]) and near(t, other[1]):
                other[2].append(name)
                break
        else:
            merged.append((u, t, [name], mine))
    # Most contenders are within a few ulps: what is beyond 10 takes less room.
    axes.set_xscale("function", functions=(
        lambda u: np.where((v := np.log10(np.maximum(u, 1e-3))) < 1, v, 1 + (v - 1) / 4),
        lambda v: 10 ** np.where(v < 1, v, 1 + (v - 1) * 4)))
    axes.set_yscale("log")
    us, ts = [p[0] for p in points], [p[1] for p in points]
    high = max(max(ts) / min(ts), 10)
    axes.set_xlim(min(us) / 1.2, max(max(us) * (50 if max(us) > 100 else 2.5), 8))
    middle = math.sqrt(max(ts) * min(ts))
    axes.set_ylim(middle / high**0.6, middle * high**0.6)
    front, best = [], math.inf
    for u, t, name, _ in sorted(points, key=lambda p: (p[0], p[1])):
        if t < best and not name.endswith("(naive)"):
            front += [(u, best), (u, t)] if front else [(u, axes.get_ylim()[1]), (u, t)]
            best = t
    front.append((axes.get_xlim()[1], best))
    axes.plot(*zip(*front), color=GREY, linewidth=1, linestyle=(0, (4, 2)), zorder=1)
    boxes = lambda x, y, w, h: (x, y - h / 2, x + w, y + h / 2)
    scale = axes.figure.dpi / 72
    at = [axes.transData.transform(p[:2]) for p in merged]
    taken = [boxes(x - 3 * scale, y, 6 * scale, 6 * scale) for x, y in at]
    line = [axes.transData.transform(p) for p in front]
    taken += [(min(a[0], b[0]) - 1, min(a[1], b[1]) - 1, max(a[0], b[0]) + 1, max(a[1], b[1]) + 1)
              for a, b in zip(line, line[1:])]
    frame = axes.get_window_extent()
    for index, (u, t, names, mine) in sorted(enumerate(merged), key=lambda item: not item[1][3]):
        colour = BLUE if mine else VERMILLION
        axes.plot(u, t, "s" if mine else "o", color=colour, markersize=5 if mine else 3.5, zorder=3,
                  markerfacecolor=colour if mine else "none")
        names = [("kelvm " + name if mine and i == 0 else name) for i, name in enumerate(names)]
        label = ", ".join(names)
        x, y = at[index]
        size = 7.5 if mine else 6.5
        w, h = len(label) * size * (0.68 if mine else 0.6) * scale, size * 1.15 * scale
        choices = [(x + 5 * scale, y)] + [(x + dx * scale, y + dy * scale) for d in (9, 17, 25, 33, 41)
                                          for dy in (d, -d) for dx in (2, -w / 2 / scale, -w / scale)]
        choices.insert(1, (x - w - 5 * scale, y))

        def clash(choice):
            a = boxes(*choice, w, h)
            over = sum(max(0, min(a[2], b[2]) - max(a[0], b[0])) * max(0, min(a[3], b[3]) - max(a[1], b[1])) for b in taken)
            outside = max(0, a[2] - frame.x1) + max(0, frame.x0 - a[0]) + max(0, a[3] - frame.y1) + max(0, frame.y0 - a[1])
            return over + 100 * outside

        choice = next((c for c in choices if clash(c) == 0), min(choices, key=clash))
        taken.append(boxes(*choice, w, h))
        place = axes.transData.inverted().transform(choice)
        if abs(choice[1] - y) > 15 * scale:
            start = (min(max(x, choice[0]), choice[0] + w), choice[1] - math.copysign(h / 2, choice[1] - y))
            axes.plot(*zip((u, t), axes.transData.inverted().transform(start)), color=GREY, linewidth=0.4, zorder=0)
        axes.text(*place, label, color=colour, fontsize=size, va="center", fontweight="bold" if mine else "normal")
    axes.set_title(TYPES[kind], loc="left")
    axes.set_xlabel("largest error, ulp", labelpad=1)
    axes.set_ylabel("ns an element", labelpad=1)
    far = (100, 1e3, 1e4) if axes.get_xlim()[1] < 1e6 else (1e3, 1e6, 1e9, 1e12)
    ticks = [t for t in (0.5, 1, 2, 5, 10, *far) if t < axes.get_xlim()[1]]
    axes.xaxis.set_major_locator(FixedLocator(ticks))
    axes.xaxis.set_major_formatter(FuncFormatter(short))
    logarithmic(axes.yaxis)
    axes.grid(True)
