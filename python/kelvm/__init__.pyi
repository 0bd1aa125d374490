from typing import NamedTuple

import numpy as np

from . import high as high, low as low

__version__: str
__all__: list[str]

class Version(NamedTuple):
    major: int
    minor: int
    build: int
    build_number: int
    cpu: str
    library: str
    text: str
    date: str
    path: str

def version() -> Version: ...
def test(*arguments: str) -> bool: ...

abs: np.ufunc
absolute: np.ufunc
acos: np.ufunc
acosh: np.ufunc
add: np.ufunc
arccos: np.ufunc
arccosh: np.ufunc
arcsin: np.ufunc
arcsinh: np.ufunc
arctan: np.ufunc
arctan2: np.ufunc
arctanh: np.ufunc
asin: np.ufunc
asinh: np.ufunc
atan: np.ufunc
atan2: np.ufunc
atanh: np.ufunc
cbrt: np.ufunc
ceil: np.ufunc
cis: np.ufunc
conj: np.ufunc
conjugate: np.ufunc
cos: np.ufunc
cosh: np.ufunc
divide: np.ufunc
erf: np.ufunc
erfc: np.ufunc
erfcinv: np.ufunc
erfinv: np.ufunc
exp: np.ufunc
expm1: np.ufunc
floor: np.ufunc
hypot: np.ufunc
log: np.ufunc
log10: np.ufunc
log1p: np.ufunc
modf: np.ufunc
multiply: np.ufunc
multiply_conjugate: np.ufunc
ndtr: np.ufunc
ndtri: np.ufunc
nearbyint: np.ufunc
pow: np.ufunc
pow2o3: np.ufunc
pow3o2: np.ufunc
power: np.ufunc
rcbrt: np.ufunc
reciprocal: np.ufunc
rint: np.ufunc
round_half_away: np.ufunc
rsqrt: np.ufunc
sin: np.ufunc
sincos: np.ufunc
sinh: np.ufunc
sqrt: np.ufunc
square: np.ufunc
subtract: np.ufunc
tan: np.ufunc
tanh: np.ufunc
true_divide: np.ufunc
trunc: np.ufunc
