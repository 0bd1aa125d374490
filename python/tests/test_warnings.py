"""NumPy's errstate: a warning for what an element earns, the same whatever the layout, and nothing else."""
import warnings

import kelvm
import numpy as np
import pytest

from library import LEVELS, OF_STATUS, arguments, direct, loops


def warnings_of(ufunc, *args, **keywords):
    """What NumPy reports of a call."""
    found = set()
    with np.errstate(all="call", call=lambda kind, flag: found.add(kind)):
        ufunc(*args, **keywords)
    return found


def earned_without_status(ufunc, sources, results):
    """The flags of IEEE operations that have no status: of plain arithmetic, and of subnormal results of reals."""
    if ufunc in (kelvm.add, kelvm.subtract):
        return warnings_of(getattr(np, ufunc.__name__), *sources)
    if np.isinf(sources).any():
        return {"invalid value"} if ufunc is kelvm.round_half_away else set()
    if np.iscomplexobj(results) or np.isnan(sources).any():
        return set()
    size = np.abs(results)
    overflow, underflow = np.isinf(size).any(), (size < np.finfo(size.dtype).tiny).any()
    return {flag for flag, raised in (("overflow", overflow), ("underflow", underflow)) if raised}


@pytest.mark.parametrize("level", LEVELS)
def test_elements_warn_as_their_statuses_say(level):
    for _, ufunc, name, dtype in loops(level):
        sources = [arguments(dtype, 60, seed=seed) for seed in range(ufunc.nin)]
        together = set()
        for i in range(60):
            element = [s[i:i + 1] for s in sources]
            status, results = direct(name, ufunc, *element)
            found = warnings_of(ufunc, *element)
            together |= found
            assert OF_STATUS[status] <= found, (name, element)
            assert found <= OF_STATUS[status] | earned_without_status(ufunc, element, results), (name, element)

        many = [np.tile(s, 20) for s in sources]
        assert warnings_of(ufunc, *many) == together, name
        assert warnings_of(ufunc, *(np.repeat(s, 2)[::-2] for s in many)) == together, name
        if ufunc.nout == 1 and results[0].dtype == dtype:
            assert warnings_of(ufunc, *many, out=many[0]) == together, name
        assert not warnings_of(ufunc, *many, where=np.zeros(many[0].shape, bool)), name


CASES = [
    ("divide by zero", kelvm.log, 0.0), ("invalid value", kelvm.log, -1.0), ("invalid value", kelvm.sin, np.inf),
    ("overflow", kelvm.exp, 1000.0), ("underflow", kelvm.exp, -1000.0), ("overflow", kelvm.low.exp, np.float32(500)),
    ("divide by zero", kelvm.ndtri, 1.0), ("overflow", kelvm.exp, 1000 + 1j), ("divide by zero", kelvm.arctan, 1j),
]


@pytest.mark.parametrize("kind, ufunc, x", CASES)
def test_errstate_raises_for_what_it_is_told(kind, ufunc, x):
    names = {"divide by zero": "divide", "invalid value": "invalid", "overflow": "over", "underflow": "under"}
    with np.errstate(all="ignore", **{names[kind]: "raise"}):
        with pytest.raises(FloatingPointError, match=f"{kind}.*{ufunc.__name__}"):
            ufunc(x)
    with np.errstate(all="raise", **{names[kind]: "ignore"}):
        ufunc(x)
    if kind != "underflow":  # which NumPy ignores by default
        with pytest.warns(RuntimeWarning, match=kind):
            ufunc(np.array([x, x]))


def test_exponentials_in_place_warn_for_what_they_were_given():
    for x, earned in ([1000.0, 1.0], "overflow"), ([50.0, -1000.0], "underflow"):
        for array in np.array(x), np.repeat(x, 2)[::2]:
            assert warnings_of(kelvm.exp, array, out=array) == {earned}


@pytest.mark.parametrize("dtype", [np.float32, np.float64])
def test_exact_quotients_below_the_normal_range_warn(dtype):
    least, exact = np.finfo(dtype).smallest_subnormal, np.finfo(dtype).tiny / 2
    for n, step in (1, 1), (50, 1), (50, 2), (50, 17):
        for ufunc, *values in (kelvm.reciprocal, 1 / exact), (kelvm.divide, exact, 1), (kelvm.divide, 3 * least, 1):
            sources = [np.full(n * step, v, dtype)[::step] for v in values]
            assert warnings_of(ufunc, *sources) == {"underflow"}
            assert warnings_of(ufunc, *sources, out=sources[0]) == {"underflow"}


def test_ordinary_arguments_raise_nothing():
    x = np.linspace(0.1, 0.9, 1003)
    with np.errstate(all="raise"), warnings.catch_warnings():
        warnings.simplefilter("error")
        for level in LEVELS:
            for _, ufunc, name, dtype in loops(level):
                ordinary = (x + 1 if ufunc.__name__ == "arccosh" else x).astype(dtype)
                for step in 1, 2, 17:
                    ufunc(*[ordinary[::step]] * ufunc.nin)
                    ufunc(*[ordinary[:3 * step:step] * np.nan] * ufunc.nin)
