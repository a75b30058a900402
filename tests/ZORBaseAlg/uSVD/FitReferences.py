#!/usr/bin/env python3
"""Writes FitReferences.h: planes and lines fitted to points at right angles, computed with 50 digits.

    python3 FitReferences.py > FitReferences.h

Needs mpmath (Debian: python3-mpmath). The coordinates are doubles and enter exactly.
"""

import random

import mpmath
from mpmath import mpf

mpmath.mp.dps = 120  # eigenvalues are squares of singular values, which costs half of the digits
DIGITS = 50


def noisy_plane(count, normal, offset, spread, noise, seed):
    """Points about the plane normal . p = offset, where normal has a third component other than 0."""
    draw = random.Random(seed)
    points = []
    for _ in range(count):
        x, y = draw.uniform(-spread, spread), draw.uniform(-spread, spread)
        z = (offset - normal[0] * x - normal[1] * y) / normal[2]
        points.append((x, y, z + draw.gauss(0, noise)))
    return points


def noisy_line(count, direction, begin, noise, seed):
    draw = random.Random(seed)
    points = []
    for i in range(count):
        at = [b + d * i + draw.gauss(0, noise) for b, d in zip(begin, direction)]
        points.append(tuple(at))
    return points


PLANES = [
    ("three points", [(1.0, 2.0, 3.0), (-4.0, 0.5, 0.25), (2.0, -7.0, 1.0)]),
    ("a noisy plane", noisy_plane(12, (0.3, -0.2, 0.9), 4.0, 10.0, 0.1, 1)),
    ("a thousandth of a millimetre over a metre", noisy_plane(20, (0.01, 0.02, 1.0), 250.0, 1000.0, 0.001, 2)),
    ("far from the origin", [(x + 1e6, y - 2e6, z) for x, y, z in noisy_plane(9, (1.0, 1.0, 1.0), 0.0, 5.0, 0.5, 3)]),
    ("nearly on a line", noisy_line(10, (1.0, 2.0, -1.0), (3.0, 4.0, 5.0), 1e-3, 4)),
    ("a cloud without a direction", noisy_plane(15, (0.0, 0.0, 1.0), 0.0, 1.0, 0.8, 5)),
]

LINES = [
    ("two points", [(0.1, 0.2), (0.7, -0.4)]),
    ("a noisy line", noisy_line(11, (1.0, 0.5), (2.0, -3.0), 0.05, 6)),
    ("upright", noisy_line(8, (0.0, 3.0), (7.0, 0.0), 0.01, 7)),
    ("far from the origin", noisy_line(14, (0.25, -0.125), (3e5, 7e5), 0.02, 8)),
]


def fit(points):
    size = len(points[0])
    rows = [[mpf(value) for value in point] for point in points]
    mean = [mpmath.fsum(row[j] for row in rows) / len(rows) for j in range(size)]
    spread = mpmath.matrix(size, size)
    for i in range(size):
        for j in range(size):
            spread[i, j] = mpmath.fsum((row[i] - mean[i]) * (row[j] - mean[j]) for row in rows)
    values, vectors = mpmath.eigsy(spread)
    order = sorted(range(size), key=lambda k: values[k])
    normal = [vectors[i, order[0]] for i in range(size)]
    offset = -mpmath.fsum(n * m for n, m in zip(normal, mean))
    singular = [mpmath.sqrt(max(values[k], mpf(0))) for k in order]
    if singular[0] < mpf(10) ** -40:
        singular[0] = mpf(0)
    return normal, offset, singular


def text(value):
    return mpmath.nstr(value, DIGITS, strip_zeros=False) if value else "0.0"


def show(name, kind, cases):
    print(f"inline const std::vector<{kind}> {name} = {{")
    for title, points in cases:
        normal, offset, singular = fit(points)
        print(f'    {{"{title}",')
        print("     {" + ",\n      ".join(", ".join(repr(value) for value in point) for point in points) + "},")
        print("     {" + ",\n      ".join(text(value) for value in normal) + "},")
        print(f"     {text(offset)},")
        print("     {" + ",\n      ".join(text(value) for value in singular) + "}},")
    print("};\n")


def main():
    print("// Written by FitReferences.py: planes and lines fitted to points at right angles, computed with 50 digits.")
    print("#pragma once\n")
    print("#include <array>\n#include <cstddef>\n#include <vector>\n")
    print("namespace ZORBase::Test {\n")
    print("template <std::size_t N>\nstruct TReferenceFit {")
    print("  const char* Name;\n  std::vector<double> Points;  ///< coordinates, point after point")
    print("  std::array<double, N> Normal;\n  double Offset;")
    print("  std::array<double, N> SingularValues;  ///< of the centred points, ascending\n};\n")
    print("// clang-format off")
    show("kReferencePlanes", "TReferenceFit<3>", PLANES)
    show("kReferenceLines", "TReferenceFit<2>", LINES)
    print("// clang-format on\n")
    print("}  // namespace ZORBase::Test")


if __name__ == "__main__":
    main()
