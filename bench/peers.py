#!/usr/bin/env python3
"""Measures a kernel of NumPy or SciPy on one thread; prints the processor time of a pass behind a first one, and its items.

usage: peers.py KERNEL SIZE
"""
import atexit
import json
import os
import sys
import tempfile
import time

for variable in ("OMP_NUM_THREADS", "OPENBLAS_NUM_THREADS"):
    os.environ[variable] = "1"

import numpy as np
from scipy import interpolate


def path(count):
    """Poses about 1 apart along a wavy path, like those of the C++ benchmarks, and their chord-length parameters."""
    i = np.arange(count)
    poses = np.stack([i + 0.2 * np.sin(1.7 * i), 5 * np.sin(0.2 * i), 3 * np.cos(0.13 * i),
                      0.1 * np.sin(0.3 * i), 0.1 * np.cos(0.21 * i), np.full(count, 0.99)], axis=1)
    steps = np.linalg.norm(np.diff(poses, axis=0), axis=1)
    parameters = np.concatenate([[0.0], np.cumsum(steps)])
    return parameters / parameters[-1], poses


def evaluate_rising(spans):
    """BSpline at rising parameters, all at once."""
    spline = interpolate.make_interp_spline(*path(spans + 1), k=3)
    parameters = np.arange(65536) / 65536
    return len(parameters), lambda: spline(parameters)


def fit(points):
    """A cubic spline of six components; an item is a point."""
    parameters, poses = path(points)
    return points, lambda: interpolate.CubicSpline(parameters, poses, bc_type="natural")


def pose_file(lines):
    """A pose file in memory where there is such a place, and its poses."""
    folder = "/dev/shm" if os.path.isdir("/dev/shm") else None
    poses = path(lines)[1]
    handle, name = tempfile.mkstemp(dir=folder)
    os.close(handle)
    atexit.register(os.remove, name)
    return name, poses


def load(lines):
    """numpy.loadtxt; an item is a whole file."""
    name, poses = pose_file(lines)
    np.savetxt(name, poses, fmt="%.6f", delimiter=",", newline="\r\n")
    return 1, lambda: np.loadtxt(name, delimiter=",")


def save(lines):
    """numpy.savetxt; an item is a whole file."""
    name, poses = pose_file(lines)
    return 1, lambda: np.savetxt(name, poses, fmt="%.6f", delimiter=",", newline="\r\n")


def surface_heights(samples):
    """The thin-plate spline: another system, with polynomial terms, but the same sum of logarithms. An item is a query of its own."""
    random = np.random.default_rng(5)
    places = 10.0 * random.random((samples, 2))
    surface = interpolate.RBFInterpolator(places, np.sin(places[:, 0]) * np.cos(places[:, 1]), kernel="thin_plate_spline")
    queries = 10.0 * random.random((256, 1, 2))
    return len(queries), lambda: [surface(query) for query in queries]


KERNELS = {"surface_heights": surface_heights, "evaluate_rising": evaluate_rising, "fit": fit, "load": load, "save": save}


def main():
    items, work = KERNELS[sys.argv[1]](int(sys.argv[2]))
    work()
    start = time.process_time()
    work()
    print(json.dumps({"seconds": time.process_time() - start, "items": items}))


main()
