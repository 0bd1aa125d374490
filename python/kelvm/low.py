"""The functions with 11 correct bits of float32, 26 of float64; where there is one accuracy only, that one."""
import kelvm

from . import _functions

globals().update(_functions.make("low", reuse=kelvm))
__all__ = [function.name for function in _functions.FUNCTIONS]
