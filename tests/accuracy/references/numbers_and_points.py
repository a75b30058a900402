"""Numbers and points."""

from fractions import Fraction

from mpmath import mp, mpf

from vectors import (angle, cross, direction, dot, doubles, exact, length, minus, normal, plus, size_of_dot, times)


def numbers(draw):
    for _ in range(100):
        value = draw.choice([draw.uniform(-1, 1), 1 - 10 ** draw.uniform(-15, -1), -1 + 10 ** draw.uniform(-15, -1)])
        yield "ArcCos", [value], [mp.acos(mpf(value))]
    for _ in range(100):
        digits = "".join(draw.choice("0123456789") for _ in range(draw.randint(1, 30)))
        text = f"{draw.choice(['', '-'])}{digits[:3]}.{digits[3:]}e{draw.randint(-280, 280)}"
        if float(text) != 0.0:
            value = Fraction(text)
            yield "StrToFloat1033", text, [mpf(value.numerator) / value.denominator]
    for numerator, denominator in ((draw.uniform(-9, 9), draw.uniform(-2, 2)) for _ in range(100)):
        yield "SafeDiv", [numerator, denominator], [mpf(numerator) / mpf(denominator)]
    for _ in range(100):
        degrees = draw.uniform(-720, 720)
        yield "DegToRad", [degrees], [mpf(degrees) * mp.pi / 180]
        yield "RadToDeg", [degrees], [mpf(degrees) * 180 / mp.pi]


def points(draw):
    for _ in range(16):
        yield from poses(draw)
        yield from in_space(draw)
        yield from in_the_plane(draw)
    for _ in range(10):
        yield from in_many_dimensions(draw)


def poses(draw):
    size = 10 ** draw.uniform(-2, 4)
    given = doubles(draw, 6, size) + doubles(draw, 6, 1.0)
    p, q = exact(given[:6]), exact(given[6:])
    s = draw.uniform(0.1, 5)
    yield "TPoint6D, P + Q", given, plus(p, q)
    yield "TPoint6D, P * S", given[:6] + [s], times(p, mpf(s))
    yield "TPoint6D, P / S", given[:6] + [s], [a / mpf(s) for a in p]
    yield "TPoint6D, DotVecMul", given, [a * b for a, b in zip(p, q)]
    yield "TPoint6D, DotVecDiv", given, [a / b for a, b in zip(p, q)]
    yield "TPoint6D, DotMul", given, [dot(p, q)], size_of_dot(p, q)
    yield "TPoint6D, MagSqr", given[:6], [dot(p, p)]
    yield "TPoint6D, Mag", given[:6], [length(p)]
    yield "TPoint6D, Normal", given[:6], normal(p)
    yield "TPoint6D, VecNormal", given[:6], p[:3] + normal(p[3:])
    yield "TPoint6D, ShadowLengthOnVec", given, [dot(p, q) / length(q)], size_of_dot(p, q) / length(q)


def in_space(draw):
    given = doubles(draw, 3, 500.0) + doubles(draw, 3, 2.0)
    if draw.random() < 0.3:  # nearly the same direction, where an angle is hard to measure
        given[3:] = [2 * a * (1 + draw.uniform(-1, 1) * 1e-7) for a in given[:3]]
    p, q = exact(given[:3]), exact(given[3:])
    yield "TPoint3D, DotMul", given, [dot(p, q)], size_of_dot(p, q)
    yield "TPoint3D, CrossMul", given, cross(p, q), length(p) * length(q)
    yield "TPoint3D, MagSqr", given[:3], [dot(p, p)]
    yield "TPoint3D, Mag", given[:3], [length(p)]
    yield "TPoint3D, Normal", given[:3], normal(p)
    yield "TPoint3D, DistanceXY", given, [length(minus(p, q)[:2])]
    yield "TPoint3D, AngleBetween", given, [angle(p, q)]
    yield "TEulerAng, DistanceTo", given, [length(minus(p, q))]


def in_the_plane(draw):
    given = doubles(draw, 4, 90.0)
    p, q = exact(given[:2]), exact(given[2:])
    yield "TPoint2D, DotMul", given, [dot(p, q)], size_of_dot(p, q)
    yield "TPoint2D, MagSqr", given[:2], [dot(p, p)]
    yield "TPoint2D, Mag", given[:2], [length(p)]
    yield "TPoint2D, Normal", given[:2], normal(p)
    yield "TPoint2D, AngleBetween", given, [abs(mp.atan2(p[0] * q[1] - p[1] * q[0], dot(p, q)))]


def in_many_dimensions(draw):
    given = doubles(draw, 14, 30.0)
    p, q = exact(given[:7]), exact(given[7:])
    yield "TPointXD, DotMul", given, [dot(p, q)], size_of_dot(p, q)
    yield "TPointXD, MagSqr", given, [dot(p + q, p + q)]
    yield "TPointXD, Mag", given, [length(p + q)]
    yield "TPointXD, DistanceTo", given, [length(minus(p, q))]
    yield "TPointXD, Normal", given, normal(p + q)
    yield "TPointXD, AngleBetween", given, [mp.acos(dot(p, q) / length(p) / length(q))]
    near = direction(draw, 7)
    close = [a * (1 + draw.uniform(-1, 1) * 1e-5) for a in near]
    p, q = exact(near), exact(close)
    sine = length(minus(normal(p), normal(q))) / 2
    yield "TPointXD, AngleBetween, nearly parallel", near + close, [2 * mp.asin(sine)]
