"""NumPy's own tests with kelvm's ufuncs in the place of NumPy's: a pytest plugin.

    python3 -m pytest -p numpy_suite --pyargs numpy.core.tests.test_umath numpy.core.tests.test_ufunc

From NumPy 2 on they are in numpy._core.tests. KELVM_REPLACES=name,... replaces only these. NumPy's internals keep what
they took when they were imported; what a test calls as np.exp, ncu.exp or np.core.umath.exp is kelvm's.
"""
import os

import kelvm
import numpy as np
from kelvm._functions import ALIASES, FUNCTIONS

wanted = os.environ.get("KELVM_REPLACES", "").split(",")
names = [f.name for f in FUNCTIONS if f.twin == "numpy"] + list(ALIASES)
umath = np._core.umath if hasattr(np, "_core") else np.core.umath
for name in names:
    if hasattr(np, name) and (wanted == [""] or name in wanted):
        for module in (np, umath):
            if hasattr(module, name):
                setattr(module, name, getattr(kelvm, name))
