#!/usr/bin/env python3
"""Prices a book of European call options block by block: the book is never in memory as a whole.

    option_book.py                              a billion options on all cores of this machine
    option_book.py --scheduler tcp://host:8786  the same on the machines of a Dask cluster

Each block of the book is drawn, priced by the formula of Black and Scholes (The Pricing of Options and Corporate
Liabilities, 1973) with kelvm's functions, and summed.
"""
import argparse
import contextlib
import resource
import time

import dask
import dask.array as da
import kelvm
from dask.diagnostics import ProgressBar


def call_price(spot, strike, rate, volatility, years):
    """The price of the right to buy at `strike` after so many years."""
    deviation = volatility * kelvm.sqrt(years)
    d1 = (kelvm.log(spot / strike) + (rate + 0.5 * volatility * volatility) * years) / deviation
    return spot * kelvm.ndtr(d1) - strike * kelvm.exp(-rate * years) * kelvm.ndtr(d1 - deviation)


def book(options, block, seed=1):
    """The options: spot, strike, rate, volatility and years, as arrays that are drawn when they are needed."""
    random = da.random.RandomState(seed)
    limits = [(80, 120), (80, 120), (0, 0.05), (0.1, 0.5), (0.1, 2)]
    return [random.uniform(low, high, size=options, chunks=block) for low, high in limits]


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--options", type=float, default=1e9, help="size of the book (default: 1e9)")
    parser.add_argument("--block", type=float, default=1e6, help="options of a block (default: 1e6)")
    parser.add_argument("--scheduler", help="address of a Dask cluster's scheduler (default: threads of this process)")
    arguments = parser.parse_args()

    prices = call_price(*book(int(arguments.options), int(arguments.block)))
    wanted = [prices.sum(), prices.max(), (prices > 20).sum()]
    start = time.perf_counter()
    with contextlib.ExitStack() as stack:
        if arguments.scheduler:
            from distributed import Client, progress
            stack.enter_context(Client(arguments.scheduler))
            futures = dask.persist(*wanted)
            progress(*futures)
            total, dearest, dear = dask.compute(*futures)
        else:
            stack.enter_context(ProgressBar())
            total, dearest, dear = dask.compute(*wanted)
    seconds = time.perf_counter() - start
    memory = resource.getrusage(resource.RUSAGE_SELF).ru_maxrss / 1024
    print(f"\nvalue of the book {total:.17g}, dearest option {dearest:.17g}, above 20: {dear}")
    speed = arguments.options / seconds / 1e6
    print(f"{arguments.options:.0f} options in {seconds:.1f} s, {speed:.1f} million a second, "
          f"at most {memory:.0f} MiB in this process")


if __name__ == "__main__":
    main()
