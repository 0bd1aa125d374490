"""What the library declares, for the scripts that write other languages' declarations and the manual: the rows of
src/members.def and the comments of the public headers."""
import pathlib
import re
from typing import NamedTuple

ROOT = pathlib.Path(__file__).resolve().parent.parent
TITLES = {
    "Add": "sums", "Sub": "differences", "Mul": "products", "Sqr": "squares", "Abs": "absolute values",
    "Div": "quotients", "Inv": "reciprocals", "Conj": "complex conjugates",
    "MulByConj": "products with complex conjugates", "Ceil": "rounding up", "Floor": "rounding down",
    "Trunc": "rounding toward zero", "Round": "rounding to nearest, halfway cases away from zero",
    "Rint": "rounding in the current mode", "NearbyInt": "rounding in the current mode, never inexact",
    "Modf": "integral and fractional parts", "Sqrt": "square roots", "InvSqrt": "reciprocal square roots",
    "Cbrt": "cube roots", "InvCbrt": "reciprocal cube roots", "Pow2o3": "powers of 2/3", "Pow3o2": "powers of 3/2",
    "Hypot": "lengths of the hypotenuse", "Exp": "exponentials", "Expm1": "exponentials minus 1",
    "Ln": "natural logarithms", "Log10": "decimal logarithms", "Log1p": "natural logarithms of 1 plus the argument",
    "Pow": "powers", "Powx": "powers with one exponent for all elements", "Sin": "sines", "Cos": "cosines",
    "SinCos": "sines and cosines together", "CIS": "complex numbers of a given angle, cos x + i sin x",
    "Tan": "tangents", "Atan": "inverse tangents", "Atan2": "angles of points in the plane",
    "Asin": "inverse sines", "Acos": "inverse cosines", "Sinh": "hyperbolic sines", "Cosh": "hyperbolic cosines",
    "Tanh": "hyperbolic tangents", "Asinh": "inverse hyperbolic sines", "Acosh": "inverse hyperbolic cosines",
    "Atanh": "inverse hyperbolic tangents", "Erf": "error function", "Erfc": "complementary error function",
    "ErfInv": "inverse error function", "ErfcInv": "inverse complementary error function",
    "CdfNorm": "normal distribution function", "CdfNormInv": "quantiles of the normal distribution",
}


class Function(NamedTuple):
    name: str
    family: str
    type: str
    suffix: str  # "exact" where the name has none
    shape: str

    @property
    def bits(self):
        """The correct bits that the suffix promises."""
        exact = 24 if self.type.startswith("32") else 53
        return exact if self.suffix == "exact" else int(self.suffix[1:])


def functions():
    """All functions, in the order of the list."""
    rows = re.findall(r"^KELVM_MEMBER\((\w+), (\w+), (\w+), (\w+), (\w+), \w+\)", (ROOT / "src/members.def").read_text(), re.M)
    return [Function(*row) for row in rows]


class Declaration(NamedTuple):
    """What a public header says of a family's functions of real or of complex numbers."""
    family: str
    text: list  # paragraphs of the comment right above
    shared: list  # paragraphs of the comments above it that hold for several families
    prototypes: list


def paragraphs(comment):
    """A C comment's paragraphs, each in one line. A line that starts with a label ("Warnings:") starts one."""
    text = re.sub(r"^ *\* ?", "", re.sub(r"^/\*\*?|\*/$", "", comment.strip()), flags=re.M)
    blocks = re.split(r"\n\s*\n|\n(?=[A-Z]\w+: )", text)
    return [" ".join(block.split()) for block in blocks if block.strip()]


def header_comment(name):
    """The paragraphs of the comment that a header starts with, behind the line of its licence."""
    return paragraphs(re.match(r"/\* SPDX.*?\*/\n(/\*.*?\*/)", (ROOT / "include/kelvm" / name).read_text(), re.S).group(1))


def declarations():
    """Every declaration of the public headers with its comments. A /** comment is that of the prototypes below it; any
    other holds for what follows it, up to the next of its kind, and is a mere heading where it has one short line; the
    one at the top of a header holds for the whole header, but for its first paragraph."""
    found = []
    for path in sorted((ROOT / "include/kelvm").glob("*.h")):
        top, section, text, prototypes = header_comment(path.name)[1:], [], [], []
        body = path.read_text().split("KELVM_BEGIN_DECLARATIONS", 1)[-1]
        for comment, prototype in re.findall(r"^(/\*.*?\*/)|^KELVM_API (kelStatus kels.*?;)", body, re.M | re.S):
            if prototype:
                prototypes.append(prototype)
                continue
            if comment.startswith("/**"):
                text = paragraphs(comment)
            else:
                section = paragraphs(comment) if len(comment) > 60 else []
            prototypes = []
            found.append((text, section + top, prototypes))
    return [Declaration(re.match(r"kelStatus kels([A-Za-z0-9]+)_", p[0]).group(1), t, s, p) for t, s, p in found if p]


def table(path, columns):
    """The rows of a Markdown table of functions, as {function: {column: text}} with these columns."""
    lines = [[cell.strip() for cell in line.strip()[1:-1].split("|")]
             for line in (ROOT / path).read_text().splitlines() if line.startswith("| ")]
    return {row[0]: {c: row[lines[0].index(c)] for c in columns} for row in lines[1:]}


def limits():
    """What the tests hold each function to: pairs of a measure and its bound."""
    rows = (line.split() for line in (ROOT / "tests/accuracy/limits.txt").read_text().splitlines())
    return {row[0]: list(zip(row[1::2], row[2::2])) for row in rows if row and row[0].startswith("kels")}


def promise(function):
    """The error that the suffix allows."""
    if function.suffix in ("A24", "A53"):
        return "1 ulp"
    return "exact" if function.suffix == "exact" else f"2^-{function.bits}"


def tested(function, bounds):
    """The error that the tests allow; `bounds` as from limits()."""
    measure, bound = bounds[function.name][0]
    return {"ulp": f"{bound} ulp", "bits": f"2^-{bound}", "absolute": f"{bound} absolute"}[measure]


def worst(function, errors):
    """The largest error measured, in the measure of the promise; `errors` is the row of docs/accuracy.md."""
    if errors["Max ulp"]:
        return f"{float(errors['Max ulp']):.4f} ulp"
    return errors["Max relative error"] or f"{errors['Max absolute error']} absolute"
