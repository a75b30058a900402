#!/usr/bin/env python3
"""Writes LogarithmReferences.h: natural logarithms of doubles, computed with 50 digits.

    python3 LogarithmReferences.py > LogarithmReferences.h

Needs mpmath (Debian: python3-mpmath). A logarithm is given as the nearest double and what is missing to it, itself a double.
"""

import random
import struct

import mpmath

mpmath.mp.dps = 50
random.seed(20)


def from_bits(bits):
    return struct.unpack("<d", struct.pack("<Q", bits))[0]


def places():
    root = 0x3FE6A09E667F3BCD  # sqrt(1/2), where the exponent changes
    for exponent in (-1022, -500, -40, -2, -1, 0, 1, 2, 40, 1023):
        for step in (-2, -1, 0, 1):
            yield from_bits(root + (exponent << 52) + step)
    for exponent in range(-1074, 1024, 61):
        yield 2.0**exponent
    for k in (1, 2, 3, 10, 1 << 20, 1 << 40, 1 << 51):
        yield from_bits(0x3FF0000000000000 + k)
        yield from_bits(0x3FF0000000000000 - k)
    for bits in (1, 2, 3, 0xFFFFFFFFFFFFF, 0x10000000000000, 0x10000000000001, 0x7FEFFFFFFFFFFFFF):
        yield from_bits(bits)
    yield float(mpmath.e)
    yield from_bits(struct.unpack("<Q", struct.pack("<d", float(mpmath.e)))[0] + 1)
    yield 10.0
    yield 1e-12
    yield from_bits(0x3FE658DD16FF936B)  # the worst places that a search has found
    yield from_bits(0x3FE66B023C03566C)
    yield from_bits(0x3FFA02CE3A994679)
    for _ in range(60):
        yield from_bits(random.getrandbits(63) % 0x7FF0000000000000)
    for _ in range(60):
        yield random.uniform(0.5, 2.0)
    for _ in range(20):
        yield from_bits(random.getrandbits(random.randint(2, 52)) + 1)
    for _ in range(40):
        yield random.uniform(1e-3, 1e3)


print("""// Written by LogarithmReferences.py: natural logarithms of doubles, computed with 50 digits.
#pragma once

namespace ZORBase::Test {

/// ln X = Ln + Rest, where Ln is the nearest double.
struct TReferenceLogarithm {
  double X;
  double Ln;
  double Rest;
};

inline constexpr TReferenceLogarithm kReferenceLogarithms[] = {""")
for x in sorted(set(places())):
    exact = mpmath.log(mpmath.mpf(x))
    nearest = float(exact)
    print("    {%s, %s, %s}," % (x.hex(), nearest.hex(), float(exact - mpmath.mpf(nearest)).hex()))
print("""};

}  // namespace ZORBase::Test""")
