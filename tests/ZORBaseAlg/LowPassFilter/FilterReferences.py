#!/usr/bin/env python3
"""Writes FilterReferences.h: coefficients and frequency responses of low-pass filters, computed with 50 digits.

    python3 FilterReferences.py > FilterReferences.h

Needs mpmath (Debian: python3-mpmath). The frequencies are doubles and enter exactly; pi, sines and sums have 50 digits.
"""

import mpmath
from mpmath import mpf

mpmath.mp.dps = 60
DIGITS = 50

# window, sample frequency, cut-off frequency, order (0: the length follows from the cut-off frequency)
DESIGNS = [
    ("Hamming", 1000.0, 100.0, 0),
    ("Hamming", 48000.0, 1000.0, 0),
    ("Hamming", 1000.0, 20.0, 501),
    ("Rectangle", 1000.0, 37.5, 50),
    ("Rectangle", 8.0, 3.0, 7),
    ("Blackman", 1000.0, 60.0, 31),
    ("Blackman", 44100.0, 7.25, 101),
    ("Average", 1000.0, 20.0, 0),
]

# Frequencies at which the response is asked for, as parts of the sample frequency and of the cut-off frequency.
OF_FS = [0.0, 0.33, 0.49]
OF_FC = [0.3, 1.0, 1.7]


def length(window, fs, fc, order):
    if window != "Average" and order >= 1:
        return order + 1 - order % 2
    return max(2 * (int(mpmath.ceil(mpf(fs) / 2 / mpf(fc))) // 2) + 1, 3)


def shape(window, d, n):
    turn = 2 * mpmath.pi * d
    if window == "Hamming":
        return mpf(54) / 100 + mpf(46) / 100 * mpmath.cos(turn / (n - 1))
    if window == "Blackman":
        return mpf(42) / 100 + mpmath.cos(turn / (n - 1)) / 2 + mpf(8) / 100 * mpmath.cos(2 * turn / n)
    return mpf(1)


def ideal(fs, fc, d):
    ratio = mpf(fc) / mpf(fs)
    return 2 * ratio if d == 0 else mpmath.sin(2 * d * mpmath.pi * ratio) / (d * mpmath.pi)


def coefficients(window, fs, fc, order):
    n = length(window, fs, fc, order)
    if window == "Average":
        return [mpf(1) / n] * n
    middle = (n - 1) // 2
    raw = [shape(window, i - middle, n) * ideal(fs, fc, i - middle) for i in range(n)]
    total = mpmath.fsum(raw)
    return [value / total for value in raw] if total > mpf(10) ** -4 else raw


def response(coeff, fs, f):
    w = 2 * mpmath.pi * mpf(f) / mpf(fs)
    return abs(mpmath.fsum(c * mpmath.expj(-k * w) for k, c in enumerate(coeff)))


def text(value):
    return mpmath.nstr(value, DIGITS, strip_zeros=False) if value else "0.0"


def main():
    print("// Written by FilterReferences.py: responses of low-pass filters, computed with 50 digits.")
    print("#pragma once\n")
    print("#include <array>\n#include <vector>\n")
    print("namespace ZORBase::Test {\n")
    print("struct TResponse {\n  double Frequency;\n  double Magnitude;\n};\n")
    print("struct TReferenceFilter {")
    print("  const char* Window;\n  double fs;\n  double fc;\n  int Order;\n  int N;")
    print("  std::vector<double> FirstHalf;  ///< coefficients from the first one to the middle one")
    print("  std::array<TResponse, 6> Responses;\n};\n")
    print("// clang-format off")
    print("inline const std::vector<TReferenceFilter> kReferenceFilters = {")
    for window, fs, fc, order in DESIGNS:
        coeff = coefficients(window, fs, fc, order)
        half = coeff[: len(coeff) // 2 + 1]
        print(f'    {{"{window}", {fs}, {fc}, {order}, {len(coeff)},')
        print("     {" + ",\n      ".join(text(c) for c in half) + "},")
        rows = [part * fs for part in OF_FS] + [part * fc for part in OF_FC]
        print("     {{" + ",\n       ".join(f"{{{f!r}, {text(response(coeff, fs, f))}}}" for f in rows) + "}}},")
    print("};\n// clang-format on\n")
    print("}  // namespace ZORBase::Test")


if __name__ == "__main__":
    main()
