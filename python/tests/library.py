"""The functions of the library called by themselves, past the ufuncs, and the arguments that the tests try."""
import ctypes

import kelvm
import numpy as np
from kelvm._functions import FUNCTIONS, LEVELS, TYPES, library_functions

MODULES = dict(zip(LEVELS, (kelvm, kelvm.high, kelvm.low)))
DTYPES = {name: np.dtype(dtype) for name, dtype in TYPES.items()}
LIBRARY = ctypes.CDLL(kelvm.version().path)
OF_STATUS = {0: set(), 12: {"overflow"}, 17: {"underflow"}, 18: {"divide by zero"}, 19: {"invalid value"}}


def call(name, *sources, outputs=None):
    """The status and the results of the library's function on arrays."""
    sources = [np.ascontiguousarray(s) for s in sources]
    pointers = [ctypes.c_void_p(a.ctypes.data) for a in (*sources, *outputs)]
    return getattr(LIBRARY, name)(*pointers, ctypes.c_int(sources[0].size)), outputs


def direct(name, ufunc, *sources):
    """The status and the results of the function behind a ufunc, in the ufunc's order."""
    if name.startswith("copy"):
        return 0, sources
    dtype = sources[0].dtype
    if name.startswith("kelsCIS"):
        dtype = np.result_type(dtype, np.complex64)
    if name.startswith("kelsAbs"):
        dtype = sources[0].real.dtype
    status, outputs = call(name, *sources, outputs=[np.empty(sources[0].shape, dtype) for _ in range(ufunc.nout)])
    return status, outputs[::-1] if ufunc is kelvm.modf else outputs


def loops(level):
    """All (function, ufunc, name of the library's function, dtype of its sources) of a level."""
    for function in FUNCTIONS:
        for name in library_functions(function, level):
            sources = name.split("_")[1].rstrip("c" if function.family == "CIS" else "")
            yield function, getattr(MODULES[level], function.name), name, DTYPES[sources]


def arguments(dtype, n=700, seed=0):
    """Numbers of all magnitudes, most of them ordinary, and the special ones. The first two are NaNs that tell the
    seed."""
    random = np.random.default_rng(seed)
    real = dtype if dtype.kind == "f" else np.empty(0, dtype).real.dtype
    info = np.finfo(real)
    special = [0.0, -0.0, 1, -1, 2, -2, 0.5, np.inf, -np.inf, np.nan, info.max, -info.max, info.tiny, -info.tiny / 8,
               info.smallest_subnormal, 100, -100, 1000, -1000]

    def numbers():
        x = random.standard_normal(n) * np.exp2(random.integers(-8, 8, n))
        x[2 + random.permutation(n - 2)[:len(special)]] = special
        x = x.astype(real)
        x[:2] = np.nan, -np.nan
        x[:2].view(f"u{real.itemsize}")[...] += seed
        return x

    x = np.zeros(n, dtype)
    for part in (x.real, x.imag)[:1 if dtype.kind == "f" else 2]:
        part[...] = numbers()
    return x
