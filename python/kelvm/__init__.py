"""Mathematical functions over arrays as NumPy ufuncs, computed with the SIMD instructions of the processor.

kelvm.exp(x) has full precision, kelvm.high.exp(x) and kelvm.low.exp(x) are faster and less accurate: 21 and 11 correct
bits of float32, 50 and 26 of float64. Each function's documentation says what it computes, when it warns, and the
largest error that was measured.
"""
from pathlib import Path
from typing import NamedTuple

from . import _core, _functions

globals().update(_functions.make("full"))

from . import high, low  # noqa: E402, they take from here what has one accuracy only

__version__ = "6.0.167"
# Not the aliases: `from kelvm import *` leaves Python's abs and pow alone.
__all__ = [function.name for function in _functions.FUNCTIONS] + ["high", "low", "version"]


class Version(NamedTuple):
    """The build of the library that is loaded."""

    major: int
    minor: int
    build: int
    build_number: int
    cpu: str  # y8 SSE4.1, v3 AVX2, v4 AVX-512
    library: str
    text: str
    date: str
    path: str


def version():
    """The build of the library that is loaded."""
    return Version(*_core.version())


def test(*arguments):
    """Runs the tests of the package, with pytest, which gets the arguments; true where all of them pass."""
    import pytest

    return pytest.main([str(Path(__file__).parent / "tests"), "-p", "no:cacheprovider", *arguments]) == 0
