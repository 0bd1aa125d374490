"""Which ufuncs there are: the one list that the modules, their documentation and the tests are made from."""
from pathlib import Path
from typing import NamedTuple

from . import _core


class Function(NamedTuple):
    name: str
    family: str  # the functions of the library are kels<family>_<type>_<suffix>
    twin: str  # the function of the same name elsewhere: numpy, scipy.special or none
    about: str
    identity: object = None  # of reductions
    reals: str = ""  # stands in for a family that has no functions of reals


_COMPLEX_PARTS = ("Complex: overflow where finite operands give an infinite part, invalid where operands without a NaN "
                  "give a NaN part.")

FUNCTIONS = [
    Function("add", "Add", "numpy", "x1 + x2, in floating point.", 0),
    Function("subtract", "Sub", "numpy", "x1 - x2, in floating point."),
    Function("multiply", "Mul", "numpy", "x1 * x2, in floating point.\n\n" + _COMPLEX_PARTS, 1),
    Function("multiply_conjugate", "MulByConj", "", "x1 times the conjugate of x2.\n\n" + _COMPLEX_PARTS,
             reals="kelsMul"),
    Function("divide", "Div", "numpy", """x1 / x2.

Divide for x / 0, where x is finite and not 0; invalid for 0 / 0 and inf / inf; overflow; underflow for a quotient of
reals below the normal range.""", ),
    Function("square", "Sqr", "numpy", "x * x."),
    Function("absolute", "Abs", "numpy", """The absolute value of x, real for complex x too.

Complex: no overflow or underflow of intermediate values; infinite where a part is, whatever the other."""),
    Function("reciprocal", "Inv", "numpy", """1 / x, also for integers.

Divide at 0; overflow and underflow for subnormal arguments and results."""),
    Function("conjugate", "Conj", "numpy", "The conjugate of x; real numbers stay as they are.", reals="copy"),
    Function("ceil", "Ceil", "numpy", "The least integer that is not below x."),
    Function("floor", "Floor", "numpy", "The greatest integer that is not above x."),
    Function("trunc", "Trunc", "numpy", "x without its fractional part."),
    Function("round_half_away", "Round", "", """The integer nearest to x, halfway cases away from 0.

Every zero result is +0. Invalid for an infinity."""),
    Function("rint", "Rint", "numpy", "The integer nearest to x, halfway cases to the even one."),
    Function("nearbyint", "NearbyInt", "", "As rint, without raising the IEEE flag inexact."),
    Function("modf", "Modf", "numpy", "The fractional and the integral part of x, both with the sign of x."),
    Function("sqrt", "Sqrt", "numpy",
             """The square root of x, for x >= 0; for complex x the one with a real part not negative.

Invalid for a negative real number."""),
    Function("rsqrt", "InvSqrt", "", """1 / sqrt(x) in one step, for x > 0.

Divide at 0 (an infinity of its sign), invalid below 0."""),
    Function("cbrt", "Cbrt", "numpy", "The cube root of x, for every real number."),
    Function("rcbrt", "InvCbrt", "", """1 / cbrt(x) in one step, for every number but 0.

Divide at 0 (an infinity of its sign)."""),
    Function("pow2o3", "Pow2o3", "", "x to the power 2/3, the square of the cube root, for every real number."),
    Function("pow3o2", "Pow3o2", "", "x to the power 3/2, for x >= 0.\n\nInvalid below 0; overflow; underflow."),
    Function("hypot", "Hypot", "numpy", """sqrt(x1**2 + x2**2), where the squares neither overflow nor underflow.

Infinite where an operand is, beside a NaN as well. Overflow; underflow.""", 0),
    Function("exp", "Exp", "numpy", """e to the power x, for every number.

Overflow; underflow for a real result below the normal range."""),
    Function("expm1", "Expm1", "numpy", "exp(x) - 1, for every real number, accurate near 0 too.\n\nOverflow."),
    Function("log", "Ln", "numpy", """The natural logarithm of x, for x > 0; for complex x the principal one.

Divide at 0, invalid for negative real numbers."""),
    Function("log10", "Log10", "numpy", """The decimal logarithm of x, for x > 0; for complex x the principal one.

Divide at 0, invalid for negative real numbers."""),
    Function("log1p", "Log1p", "numpy", "log(1 + x), for x > -1, accurate near 0 too.\n\nDivide at -1, invalid below."),
    Function("power", "Pow", "numpy", """x1 to the power x2; one exponent for all elements is the faster case.

A zero exponent and a base of 1 give 1, also with a NaN. Divide for 0 to a negative power; invalid for a negative base
and an exponent that is no integer; overflow; underflow. Complex: e**(x2 log(x1)) with the principal logarithm."""),
    Function("sin", "Sin", "numpy", "The sine of x, in radians, for every finite number.\n\nInvalid for an infinity."),
    Function("cos", "Cos", "numpy", """The cosine of x, in radians, for every finite number.

Invalid for an infinity."""),
    Function("sincos", "SinCos", "", """The sine and the cosine of x: the bits of sin and cos.

Invalid for an infinity."""),
    Function("cis", "CIS", "", "cos(x) + i sin(x), complex, of a real x.\n\nInvalid for an infinity."),
    Function("tan", "Tan", "numpy", """The tangent of x, in radians, for every finite number.

Invalid for an infinity."""),
    Function("arctan", "Atan", "numpy", """The inverse tangent of every number, from -pi/2 to pi/2.

Complex: divide at i and -i."""),
    Function("arctan2", "Atan2", "numpy", """The angle of the point (x2, x1), from -pi to pi.

Underflow below the normal range."""),
    Function("arcsin", "Asin", "numpy",
             """The inverse sine of x, from -pi/2 to pi/2, for -1 <= x <= 1 and complex numbers.

Invalid for real |x| > 1."""),
    Function("arccos", "Acos", "numpy", """The inverse cosine of x, from 0 to pi, for -1 <= x <= 1 and complex numbers.

Invalid for real |x| > 1."""),
    Function("sinh", "Sinh", "numpy", "The hyperbolic sine of every number.\n\nOverflow."),
    Function("cosh", "Cosh", "numpy", "The hyperbolic cosine of every number.\n\nOverflow."),
    Function("tanh", "Tanh", "numpy", "The hyperbolic tangent of every number."),
    Function("arcsinh", "Asinh", "numpy", "The inverse hyperbolic sine of every number."),
    Function("arccosh", "Acosh", "numpy", """The inverse hyperbolic cosine of x, for x >= 1 and complex numbers.

Invalid for real numbers below 1."""),
    Function("arctanh", "Atanh", "numpy", """The inverse hyperbolic tangent of x, for -1 < x < 1 and complex numbers.

Divide at 1 and -1, invalid for real |x| > 1."""),
    Function("erf", "Erf", "scipy.special", "The error function of every real number."),
    Function("erfc", "Erfc", "scipy.special",
             """1 - erf(x) for every real number, with its relative accuracy over the whole tail.

Underflow below the normal range."""),
    Function("erfinv", "ErfInv", "scipy.special", """The inverse of the error function, for -1 < x < 1.

Divide at 1 and -1, invalid for |x| > 1."""),
    Function("erfcinv", "ErfcInv", "scipy.special", """The inverse of the complementary error function, for 0 < x < 2.

Divide at 0 and 2, invalid below 0 and above 2."""),
    Function("ndtr", "CdfNorm", "scipy.special",
             """The distribution function of the standard normal distribution, for every real number.

Underflow below the normal range."""),
    Function("ndtri", "CdfNormInv", "scipy.special",
             """The quantiles of the standard normal distribution, the inverse of ndtr, for 0 < x < 1.

Divide at 0 and 1, invalid below 0 and above 1."""),
]

ALIASES = {
    "abs": "absolute", "conj": "conjugate", "true_divide": "divide", "pow": "power", "asin": "arcsin", "acos": "arccos",
    "atan": "arctan", "atan2": "arctan2", "asinh": "arcsinh", "acosh": "arccosh", "atanh": "arctanh",
}

TYPES = {"32f": "float32", "64f": "float64", "32fc": "complex64", "64fc": "complex128"}
# The suffixes of each level, floats and doubles.
_SUFFIXES = {"full": ("A24", "A53", ""), "high": ("A21", "A50"), "low": ("A11", "A26")}
LEVELS = tuple(_SUFFIXES)
_EXISTING = _core.names()


def library_functions(function, level):
    """The functions of the library behind a ufunc: one for each type that there is, of the level or, where there is
    none, of the next more accurate one."""
    found = []
    for type_name in TYPES:
        family = "kels" + function.family
        if function.reals and not type_name.endswith("c"):
            family = function.reals
        names = [f"{family}_{type_name}_{suffix}".rstrip("_")
                 for each in LEVELS[LEVELS.index(level)::-1] for suffix in _SUFFIXES[each]]
        found += [name for name in names if name in _EXISTING][:1]
    return tuple(found)


def _measured():
    """The largest errors that were measured, from the page of the documents that was installed with the package."""
    lines = Path(__file__).with_name("accuracy.md").read_text().splitlines()
    rows = [[cell.strip() for cell in line.strip("|").split("|")] for line in lines if line.startswith("|")]
    titles = rows[0]
    return {row[0]: dict(zip(titles, row)) for row in rows if row[0].startswith("kels")}


def _accuracy(names, measured):
    """What a ufunc's functions promise, and their measured errors."""
    lines = []
    for name in names:
        type_name, suffix = (name + "_").split("_")[1:3]
        line = f"    {TYPES[type_name]:<11}"
        line += f"{suffix[1:]} correct bits" if suffix else "exact"
        if name in measured:
            row = measured[name]
            ulp, of = (row["By norm"], " by norm") if row["By norm"] else (row["Max ulp"], "")
            errors = [f"{float(ulp):.4g} ulp{of}"] if ulp else []
            errors += [f"{row[f'Max {kind} error']} {kind}" for kind in ("relative", "absolute") if row[f"Max {kind} error"]]
            if ulp != "0.000000":
                line += "; " + ", ".join(errors)
            line += f" ({row['Elements']} arguments; {name})"
        lines.append(line)
    return "\n\nAccuracy, and the largest error that was measured:\n\n" + "\n".join(lines)


def _tell_module(ufunc, module):
    """Pickle finds the ufunc at once, and numpy.ma wraps it; before NumPy 2.2 a ufunc takes no attributes."""
    try:
        ufunc.__module__, ufunc.__qualname__ = module, ufunc.__name__
    except AttributeError:
        pass


def make(level, reuse=None):
    """The contents of the module of a level. A ufunc whose functions are those of the module `reuse` is its."""
    contents = {}
    measured = _measured()
    for function in FUNCTIONS:
        names = library_functions(function, level)
        if reuse and names == library_functions(function, "full"):
            contents[function.name] = getattr(reuse, function.name)
        else:
            doc = function.about + _accuracy(names, measured)
            contents[function.name] = _core.ufunc(function.name, doc, names, function.identity)
            _tell_module(contents[function.name], "kelvm" if level == "full" else f"kelvm.{level}")
    contents.update({alias: contents[name] for alias, name in ALIASES.items()})
    return contents


def table():
    """The functions as a table of the documents."""
    lines = ["| kelvm | Same name in | Library | Types | Accuracies |", "|---|---|---|---|---|"]
    aliases = {name: alias for alias, name in ALIASES.items()}
    for function in FUNCTIONS:
        full, low = library_functions(function, "full"), library_functions(function, "low")
        types = [TYPES[name.split("_")[1]] for name in full]
        faster = [t for t, a, b in zip(types, full, low) if a != b]
        levels = "one" if not faster else "three" if faster == types else f"three of {', '.join(faster)}"
        both = " = ".join(f"`{n}`" for n in (function.name, aliases.get(function.name)) if n)
        twin = {"numpy": "NumPy", "scipy.special": "SciPy"}.get(function.twin, "")
        lines.append(f"| {both} | {twin} | kels{function.family} | {', '.join(types)} | {levels} |")
    return "\n".join(lines)
