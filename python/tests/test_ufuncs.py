"""The ufuncs against the library's functions called by themselves: all are reached, the bits are the same whatever the
layout of the arrays."""
import ast
import ctypes
import mmap
import os
import pickle
from pathlib import Path

import kelvm
import numpy as np
import pytest
from hypothesis import given, settings
from hypothesis import strategies as st
from kelvm import _core, _functions

from library import LEVELS, MODULES, arguments, direct, loops

PAGE = Path(__file__).parents[2] / "docs/python.md"

pytestmark = pytest.mark.filterwarnings("ignore::RuntimeWarning")


def test_every_function_of_the_library_is_reached():
    assert {name for level in LEVELS for _, _, name, _ in loops(level)} == _core.names()


def same_bits(a, b):
    a, b = np.asarray(a), np.asarray(b)
    return a.dtype == b.dtype and a.shape == b.shape and a.tobytes() == b.tobytes()


def strided(x, step):
    """x with gaps, or backwards."""
    base = np.zeros(x.size * abs(step), x.dtype)
    view = base[::step] if step > 0 else base[::-1][::-step][:x.size]
    view[...] = x
    return view


def misaligned(x):
    view = np.zeros(x.nbytes + 1, np.uint8)[1:].view(x.dtype)
    view[...] = x
    return view


LAYOUTS = {
    "contiguous": lambda x: x,
    "strided": lambda x: strided(x, 3),
    "reversed": lambda x: strided(x, -1),
    "reversed with gaps": lambda x: strided(x, -2),
    "two dimensions": lambda x: np.asfortranarray(x.reshape(-1, 20)),
    "big-endian": lambda x: x.astype(x.dtype.newbyteorder(">")),
    "misaligned": misaligned,
    "read-only": lambda x: np.frombuffer(x.tobytes(), x.dtype),
}


@pytest.mark.parametrize("level", LEVELS)
def test_bits_do_not_depend_on_the_layout(level):
    for _, ufunc, name, dtype in loops(level):
        sources = [arguments(dtype, seed=seed) for seed in range(ufunc.nin)]
        n = sources[0].size
        status, expected = direct(name, ufunc, *sources)
        assert status >= 0

        def check(results, what, wanted=expected):
            results = results if isinstance(results, tuple) else (results,)
            assert all(map(same_bits, results, wanted)), f"{name}, {what}"

        for layout, change in LAYOUTS.items():
            changed = [change(s) for s in sources]
            results = ufunc(*changed)
            check(tuple(r.ravel() for r in results) if ufunc.nout > 1 else results.ravel(), layout)

        for step in (2, 3, 4, 17, -1, -2):
            for given in sources, [strided(s, step) for s in sources]:
                out = tuple(strided(np.full_like(e, 7), step) for e in expected)
                check(ufunc(*given, out=out), f"out with step {step}")
        even = np.arange(n) % 2 == 0
        out = tuple(np.full_like(e, 7) for e in expected)
        ufunc(*sources, out=out, where=even)
        check(out, "where", [np.where(even, e, e.dtype.type(7)) for e in expected])
        check(ufunc(*(s[:0] for s in sources)), "zero length", [e[:0] for e in expected])
        check(ufunc(*(s[3] for s in sources)), "scalar", [e[3] for e in expected])
        check(ufunc(*(s[3:4].reshape(()) for s in sources)), "no dimensions", [e[3] for e in expected])
        for shift in (0, 1, -1, 40) if expected[0].dtype == dtype else ():  # in place, and overlapping either way
            base = np.zeros(n + 80, dtype)
            x, y = base[40:-40], base[40 + shift:][:n]
            x[...] = sources[0]
            check(ufunc(x, *sources[1:], out=(y,) + (None,) * (ufunc.nout - 1)), f"shifted by {shift}")
        if ufunc.nin == 2:
            for value in (arguments(dtype, 21, seed=5) if name.startswith("kelsPow") else sources[1][:3]):
                wanted = direct(name, ufunc, sources[0], np.full(n, value))[1]
                check(ufunc(sources[0], value), f"with the scalar {value}", wanted)
                check(ufunc(strided(sources[0], 2), np.broadcast_to(value, n)), f"spread {value}", wanted)
                wanted = direct(name, ufunc, np.full(n, value), sources[1])[1]
                check(ufunc(value, sources[1]), f"of the scalar {value}", wanted)


def test_gaps_do_not_matter_in_other_rounding_modes():
    libm = ctypes.CDLL("libm.so.6")
    upward = 0x800
    for _, ufunc, name, dtype in loops("full"):
        sources = [arguments(dtype, seed=seed) for seed in range(ufunc.nin)]
        assert libm.fesetround(upward) == 0
        try:
            expected = direct(name, ufunc, *sources)[1]
            results = ufunc(*(strided(s, 2) for s in sources))
        finally:
            libm.fesetround(0)
        assert all(map(same_bits, results if ufunc.nout > 1 else (results,), expected)), name


def test_complex_to_real_over_its_own_source():
    z = arguments(np.dtype(complex))
    expected = kelvm.absolute(z)
    buffer = z.copy()
    assert same_bits(kelvm.absolute(buffer, out=buffer.view(float)[:z.size]), expected)
    buffer = z.copy()
    assert same_bits(kelvm.absolute(buffer[::-1], out=buffer.real[::-1]), expected[::-1])


@given(st.data())
@settings(max_examples=150, deadline=None, database=None)
def test_any_views_of_one_buffer_behave_as_if_copied(data):
    def view(buffer):
        steps = [data.draw(st.sampled_from([1, 2, 3, -1, -2, -3]), "step") for _ in shape]
        long = [(n - 1) * abs(s) + 1 for n, s in zip(shape, steps)]
        start = data.draw(st.integers(0, 30), "start")
        return buffer[start:start + np.prod(long)].reshape(long)[tuple(slice(None, None, s) for s in steps)]

    shape = data.draw(st.lists(st.integers(1, 9), min_size=1, max_size=2).map(tuple), "shape")
    if data.draw(st.booleans(), "long"):
        shape = (shape[0] * 100,)
    dtype = data.draw(st.sampled_from([np.float32, np.float64]))
    buffer = np.random.default_rng(1).uniform(0.5, 2, 10000).astype(dtype)
    ufunc = data.draw(st.sampled_from([kelvm.sqrt, kelvm.exp, kelvm.subtract, kelvm.power, kelvm.modf]))
    sources = [view(buffer) for _ in range(ufunc.nin)]
    out = (view(buffer),) + (np.empty(shape, dtype),) * (ufunc.nout - 1)
    expected = ufunc(*(s.copy() for s in sources))
    ufunc(*sources, out=out)
    assert all(map(same_bits, (o.copy() for o in out), expected if ufunc.nout > 1 else (expected,)))


def test_reductions():
    x = np.random.default_rng(2).integers(1, 9, (30, 40)).astype(float)
    for axis in (0, 1, None):
        assert same_bits(kelvm.add.reduce(x, axis=axis), np.add.reduce(x, axis=axis))
    assert kelvm.multiply.reduce(np.array([], float)) == 1 and kelvm.add.reduce(np.array([], float)) == 0
    assert same_bits(kelvm.subtract.accumulate(x[0]), np.subtract.accumulate(x[0]))
    assert same_bits(kelvm.power.reduce([2.0, 3.0, 2.0]), np.float64(64))
    assert same_bits(kelvm.add.outer(x[0], x[1]), np.add.outer(x[0], x[1]))
    totals = np.zeros(3)
    kelvm.add.at(totals, [0, 2, 2], [1.0, 5.0, 7.0])
    assert totals.tolist() == [1, 0, 12]


@pytest.mark.parametrize("given_type, computed", [
    ("bool", "float32"), ("int8", "float32"), ("int16", "float32"), ("uint16", "float32"), ("float16", "float32"),
    ("int32", "float64"), ("int64", "float64"), ("uint64", "float64"), (">f4", "float32"), ("complex64", "complex64")])
def test_conversions(given_type, computed):
    x = np.array([1, 0, 1], given_type)
    for result in (kelvm.exp(x), kelvm.add(x, x), kelvm.add(x, np.float32(2))):
        assert result.dtype == np.result_type(computed, "float32")
    assert same_bits(kelvm.exp(x), kelvm.exp(x.astype(computed)))
    assert kelvm.power(np.ones(2, np.float32), 2.0).dtype == np.float32
    assert kelvm.exp(np.ones(2, np.float32), dtype=float).dtype == float


@pytest.mark.parametrize("wrong", [np.array([1.0], object), np.array(["1"]), np.array(["2020"], "datetime64[Y]"),
                                   np.array([1], np.longdouble)])
def test_other_types_are_refused_as_numpy_does(wrong):
    with pytest.raises(TypeError, match="not supported for the input types|did not contain a loop"):
        kelvm.cos(wrong)
    with pytest.raises(TypeError, match="not supported for the input types|did not contain a loop"):
        kelvm.erf(np.array([1j]))


def test_more_elements_than_an_int_counts():
    """2^31 + 1000 floats of address space that is one piece of memory over and over, but for the end."""
    libc = ctypes.CDLL(None, use_errno=True)
    libc.mmap.restype = ctypes.c_void_p
    libc.mmap.argtypes = [ctypes.c_void_p, ctypes.c_size_t, ctypes.c_int, ctypes.c_int, ctypes.c_int, ctypes.c_long]
    n, piece = (1 << 31) + 1000, 1 << 26
    size = (n * 4 // piece + 1) * piece
    access, fixed, without_reserve = mmap.PROT_READ | mmap.PROT_WRITE, 0x10, 0x4000
    start = libc.mmap(None, size, access, mmap.MAP_PRIVATE | mmap.MAP_ANONYMOUS | without_reserve, -1, 0)
    assert start != ctypes.c_void_p(-1).value, os.strerror(ctypes.get_errno())
    memory = os.memfd_create("piece")
    try:
        os.truncate(memory, piece)
        for offset in range(0, size - piece, piece):
            libc.mmap(start + offset, piece, access, mmap.MAP_SHARED | fixed, memory, 0)
        x = np.ctypeslib.as_array((ctypes.c_float * n).from_address(start))
        x[:piece // 4] = 1
        x[-1000:] = 4
        kelvm.sqrt(x, out=x)
        assert (x[-1000:] == 2).all() and (x[:1000] == 1).all()
    finally:
        os.close(memory)
        libc.munmap(ctypes.c_void_p(start), ctypes.c_size_t(size))


@pytest.mark.parametrize("level", LEVELS)
def test_the_modules(level):
    module = MODULES[level]
    for function in _functions.FUNCTIONS:
        ufunc = getattr(module, function.name)
        assert pickle.loads(pickle.dumps(ufunc)) is ufunc
        assert "arguments; kels" in ufunc.__doc__ and function.about in ufunc.__doc__
    stubs = ast.parse(Path(module.__file__).with_name("_ufuncs.pyi").read_text())
    declared = {node.target.id for node in stubs.body if isinstance(node, ast.AnnAssign)}
    assert declared == {name for name, value in vars(module).items() if isinstance(value, np.ufunc)}


def test_version():
    assert kelvm.version().cpu in ("y8", "v3", "v4")
    assert kelvm.__version__.startswith(f"{kelvm.version().major}.{kelvm.version().minor}.")


@pytest.mark.skipif(not PAGE.exists(), reason="the documents are not installed")
def test_the_documents_list_all_functions():
    assert _functions.table() in PAGE.read_text()
