#!/usr/bin/env python3
"""Prints how long SciPy's thin-plate spline takes for a height: one query at a time, and 256 in one call.

    python3 bench/SurfaceBench.py

Needs numpy and scipy (Debian: python3-scipy). It is another system, with polynomial terms, solved by elimination; a height costs the
same sum of logarithms. Compare with "surface heights" of scripts/bench.sh in the same minute on the same machine.
"""

import time

import numpy
from scipy.interpolate import RBFInterpolator

SIDE = 10.0
PLACES = 256


def best_time(work, repetitions=7):
    times = []
    for _ in range(repetitions):
        start = time.process_time()
        work()
        times.append(time.process_time() - start)
    return min(times)


for count in (100, 1000):
    random = numpy.random.default_rng(5)
    samples = SIDE * random.random((count, 2))
    heights = numpy.sin(samples[:, 0]) * numpy.cos(samples[:, 1])
    surface = RBFInterpolator(samples, heights, kernel="thin_plate_spline")
    places = SIDE * random.random((PLACES, 2))
    one_by_one = best_time(lambda: [surface(place[None, :]) for place in places]) / PLACES
    together = best_time(lambda: surface(places)) / PLACES
    print(f"{count} samples: {1e6 * one_by_one:.2f} us a height one by one, {1e6 * together:.2f} us in one call")
