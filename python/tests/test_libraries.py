"""Libraries that speak NumPy's protocols: they keep their own kind of array, and the values are those of plain ones."""
import pickle
import re
import subprocess
import sys
from pathlib import Path

import kelvm
import numpy as np
import pytest

X = np.random.default_rng(4).uniform(0.1, 0.9, (60, 50))
Y = X[::-1].copy()
EXAMPLE = Path(__file__).parent.parent / "examples/option_book.py"


def test_masked_arrays():
    masked = np.ma.masked_less(X, 0.5)
    result = kelvm.log(masked)
    assert isinstance(result, np.ma.MaskedArray) and (result.mask == masked.mask).all()
    assert (result.compressed() == kelvm.log(X[X >= 0.5])).all()


def test_pandas():
    pd = pytest.importorskip("pandas")
    frame = pd.DataFrame(X[:, :3], columns=list("abc"))
    assert (kelvm.erfinv(frame) == pd.DataFrame(kelvm.erfinv(X[:, :3]), columns=list("abc"))).all(axis=None)
    series = frame["a"].rename("name")
    result = kelvm.high.arctan2(series, frame["b"])
    assert isinstance(result, pd.Series) and (result.to_numpy() == kelvm.high.arctan2(X[:, 0], X[:, 1])).all()
    assert [list(part) for part in kelvm.sincos(series)] == [list(part) for part in kelvm.sincos(X[:, 0])]


def test_xarray():
    xr = pytest.importorskip("xarray")
    x = xr.DataArray(X, dims=("time", "place"), coords={"time": np.arange(60)})
    result = kelvm.hypot(x, x.mean("time"))  # aligned by the names of the dimensions
    assert result.dims == ("time", "place") and (result.time == x.time).all()
    assert (result.values == kelvm.hypot(X, x.mean("time").values)).all()


def test_dask():
    da = pytest.importorskip("dask.array")
    x, y = da.from_array(X, chunks=(17, 50)), da.from_array(Y, chunks=(60, 9))
    for ufunc in (kelvm.power, kelvm.low.power, kelvm.divide):
        result = ufunc(x, y)
        assert isinstance(result, da.Array) and (result.compute(scheduler="threads") == ufunc(X, Y)).all()
    cis = kelvm.cis(x)
    assert cis.dtype == complex and (cis.compute() == kelvm.cis(X)).all()
    assert (pickle.loads(pickle.dumps(kelvm.high.exp(x))).compute() == kelvm.high.exp(X)).all()


def value_of_the_book(*arguments):
    command = [sys.executable, EXAMPLE, "--options", "4e5", "--block", "3e4", *arguments]
    run = subprocess.run(command, capture_output=True, text=True, timeout=300)
    assert run.returncode == 0, run.stderr
    return re.search(r"value of the book (\S+), dearest option (\S+), above 20: (\d+)", run.stdout).groups()


@pytest.mark.skipif(not EXAMPLE.exists(), reason="the examples are not installed")
def test_the_book_of_options_has_one_value_on_threads_and_on_a_cluster():
    distributed = pytest.importorskip("distributed")
    from scipy.special import ndtr

    sys.path.insert(0, str(EXAMPLE.parent))
    import option_book

    spot, strike, rate, volatility, years = (part.compute() for part in option_book.book(400000, 30000))
    d1 = (np.log(spot / strike) + (rate + volatility**2 / 2) * years) / (volatility * np.sqrt(years))
    prices = spot * ndtr(d1) - strike * np.exp(-rate * years) * ndtr(d1 - volatility * np.sqrt(years))
    total, dearest, dear = value_of_the_book()
    assert float(total) == pytest.approx(prices.sum(), rel=1e-12)
    assert float(dearest) == pytest.approx(prices.max(), rel=1e-12) and int(dear) == (prices > 20).sum()
    with distributed.LocalCluster(n_workers=2, threads_per_worker=1, processes=True, dashboard_address=None) as cluster:
        on_cluster = value_of_the_book("--scheduler", cluster.scheduler_address)
    assert float(on_cluster[0]) == pytest.approx(float(total), rel=1e-13) and on_cluster[1:] == (dearest, dear)
