#!/usr/bin/env python3
"""Writes the reference sets of this folder: results of the library's operations, computed with 50 digits.

    python3 References.py FOLDER [TIMES]

Needs mpmath (Debian: python3-mpmath). Every set has a seed of its own, so that a new one leaves the others as they are. The sets of
this folder are those of one time; more times, each with further seeds, make larger sets that begin with them. A line is one case:

    operation;input;reference;scale

The input is doubles as hexadecimal floats, which enter exactly; for texts it is the text. A reference number is the nearest double
and what is missing to it, joined by ":". The scale is what errors are measured by: the largest reference unless the
operation has a better one, such as the sum of the magnitudes of what is summed.
"""

import pathlib
import random
import re
import sys

import mpmath
from mpmath import mpf

import curves
import interpolators
import numbers_and_points
import rotations
import solvers

mpmath.mp.dps = 50

SETS = [
    ("numbers", numbers_and_points.numbers),
    ("points", numbers_and_points.points),
    ("rotations", rotations.transforms),
    ("orientations", rotations.orientations),
    ("curves", curves.curves),
    ("segments", curves.segments),
    ("solvers", solvers.solvers),
    ("fits", solvers.fits),
    ("interpolators", interpolators.interpolators),
]


def hexadecimal(value):
    return float(value).hex()


def double_double(value):
    """24 bits of the rest make it 77 in all, or 23 digits."""
    nearest = float(value)
    rest = value - mpf(nearest)
    with mpmath.workprec(24):
        rest = +rest
    return hexadecimal(nearest) + ":" + re.sub("0+p", "p", hexadecimal(rest))


def line(operation, given, references, scale=None):
    given = given if isinstance(given, str) else " ".join(hexadecimal(value) for value in given)
    references = [mpf(value) for value in references]
    if scale is None:
        scale = max(abs(value) for value in references)
    return ";".join([operation, given, " ".join(map(double_double, references)), hexadecimal(scale)])


def main():
    folder = pathlib.Path(sys.argv[1])
    times = int(sys.argv[2]) if len(sys.argv) > 2 else 1
    for seed, (name, cases) in enumerate(SETS, start=1):
        draws = (random.Random(seed + 1000 * time) for time in range(times))
        lines = [line(*case) for draw in draws for case in cases(draw)]
        title = f"# {name}, written by References.py with 50 digits: operation;input;reference;scale\n"
        (folder / f"{name}.txt").write_text(title + "\n".join(lines) + "\n")
        print(f"{name}: {len(lines)} cases")


if __name__ == "__main__":
    main()
