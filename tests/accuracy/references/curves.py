"""B-spline curves, Bezier segments and quadrature."""

import functools

from mpmath import mp, mpf

from joints import smooth_path
from vectors import doubles, dot, exact, flat, length, minus, normal, plus, times

# How a fit spreads the parameters: TParalizeMethod.
EQUALLY, CHORD, CENTRIPETAL = range(3)


def curves(draw):
    for _ in range(16):
        yield from plane_curve(draw)
    for _ in range(6):
        yield from six_component_curve(draw)
    for method in (EQUALLY, CHORD, CENTRIPETAL) * 2:
        yield from fitted_curve(draw, "TNurbs2D", method, 6, 2)
        yield from fitted_curve(draw, "TNurbs6D", method, 5, 6)
    for _ in range(5):
        yield bezier_points(draw, "TNurbs2D", 2)
        yield bezier_points(draw, "TNurbs6D", 6)


def clamped_knots(draw, inner):
    """Four zeros, inner knots at least 0.02 apart, four ones."""
    while True:
        middle = sorted(draw.random() for _ in range(inner))
        ends = [0.0, *middle, 1.0]
        if all(b - a > 0.02 for a, b in zip(ends, ends[1:])):
            return [0.0] * 4 + middle + [1.0] * 4


def basis(knots, i, degree, u, order=0):
    """The derivative of some order of a basis function, by the recursion of Cox and de Boor; 0 / 0 counts as 0."""

    def part(number, divisor):
        return number / divisor if divisor else mpf(0)

    if degree == 0:
        return mpf(knots[i] <= u < knots[i + 1])
    left, right = knots[i + degree] - knots[i], knots[i + degree + 1] - knots[i + 1]
    if order == 0:
        before = part(u - knots[i], left) * basis(knots, i, degree - 1, u)
        return before + part(knots[i + degree + 1] - u, right) * basis(knots, i + 1, degree - 1, u)
    before = part(degree, left) * basis(knots, i, degree - 1, u, order - 1)
    return before - part(degree, right) * basis(knots, i + 1, degree - 1, u, order - 1)


def blend(knots, points, u, order):
    sum_of_all = [mpf(0)] * len(points[0])
    for i, point in enumerate(points):
        sum_of_all = plus(sum_of_all, times(point, basis(knots, i, 3, u, order)))
    return sum_of_all


def size_of_blend(knots, points, u, order):
    return mp.fsum(abs(basis(knots, i, 3, u, order)) * length(point) for i, point in enumerate(points))


def plane_curve(draw):
    given_knots, given_points = clamped_knots(draw, 4), doubles(draw, 16, 60.0)
    given_u = draw.random()
    knots, u = exact(given_knots), mpf(given_u)
    points = [exact(given_points[i : i + 2]) for i in range(0, 16, 2)]
    span = max(i for i in range(len(knots)) if knots[i] <= u)
    given = given_knots + [given_u]
    near = range(span - 3, span + 1)
    yield "TNurbsBasicFunc, BasicFuns", given, [basis(knots, i, 3, u) for i in near], 1
    for order in (1, 2, 3):
        yield f"TNurbsBasicFunc, derivatives {order}", given, [basis(knots, i, 3, u, order) for i in near]
    given = given_knots + given_points + [given_u]
    c = [blend(knots, points, u, order) for order in range(4)]
    yield "TNurbs2D, EvalPoint", given, c[0], size_of_blend(knots, points, u, 0)
    for order in (1, 2, 3):
        size = size_of_blend(knots, points, u, order)
        yield f"TNurbs2D, derivative {order}", given, c[order], size
    size = size_of_curvature(knots, points, u, c[1])
    yield "TNurbs2D, Curvature", given, [curvature(c[1], c[2])], size


def curvature(first, second):
    square = dot(first, first)
    along = times(first, dot(first, second) / square)
    return length(minus(second, along)) / square


def size_of_curvature(knots, points, u, first):
    sizes = [size_of_blend(knots, points, u, order) for order in range(3)]
    return sizes[2] / dot(first, first) * (1 + sizes[1] / length(first))


def six_component_curve(draw):
    given_knots, given_points = clamped_knots(draw, 2), doubles(draw, 36, 60.0)
    given_u = draw.random()
    knots, u = exact(given_knots), mpf(given_u)
    points = [exact(given_points[i : i + 6]) for i in range(0, 36, 6)]
    given = given_knots + given_points + [given_u]
    yield "TNurbs6D, EvalPoint", given, blend(knots, points, u, 0), size_of_blend(knots, points, u, 0)
    for order in (1, 2, 3):
        size = size_of_blend(knots, points, u, order)
        yield f"TNurbs6D, derivative {order}", given, blend(knots, points, u, order), size
    first, second = blend(knots, points, u, 1), blend(knots, points, u, 2)
    size = size_of_curvature(knots, points, u, first)
    yield "TNurbs6D, Curvature", given, [curvature(first, second)], size


def fitted_curve(draw, name, method, count, dimension):
    """Global cubic interpolation with end tangents along the first and the last chord (Piegl, Tiller, 9.2.3)."""
    given = doubles(draw, count * dimension, 20.0)
    points = [exact(given[i : i + dimension]) for i in range(0, len(given), dimension)]
    chords = [length(minus(b, a)) for a, b in zip(points, points[1:])]
    steps = {EQUALLY: [mpf(1)] * len(chords), CHORD: chords, CENTRIPETAL: [mp.sqrt(chord) for chord in chords]}[method]
    params = [mp.fsum(steps[:k]) / mp.fsum(steps) for k in range(count)]
    whole = mp.fsum(chords)
    size = max(length(point) for point in points)
    yield f"{name}, parameters of a fit", [method] + given, params
    yield f"{name}, chord length of a fit", [method] + given, [whole]
    yield f"{name}, control points of a fit", [method] + given, flat(control_points(points, params, whole)), size


def control_points(points, params, whole):
    knots = [mpf(0)] * 3 + params + [mpf(1)] * 3
    last = len(points) - 1
    start, end = normal(minus(points[1], points[0])), normal(minus(points[-1], points[-2]))
    given = {0: points[0], 1: plus(points[0], times(start, whole * params[1] / 3)),
             last + 1: minus(points[-1], times(end, whole * (1 - params[-2]) / 3)), last + 2: points[-1]}
    inner = range(2, last + 1)
    values = [[basis(knots, i, 3, params[k], 0) for i in range(last + 3)] for k in range(1, last)]
    matrix = mp.matrix([[row[i] for i in inner] for row in values])
    sides = [minus(points[k + 1], sum_of_vectors(times(given[i], row[i]) for i in given)) for k, row in enumerate(values)]
    columns = [list(mp.lu_solve(matrix, mp.matrix(side))) for side in zip(*sides)]
    return [given[0], given[1], *map(list, zip(*columns)), given[last + 1], given[last + 2]]


def sum_of_vectors(vectors):
    return [mp.fsum(items) for items in zip(*vectors)]


def bezier_points(draw, name, dimension):
    """Of an inner span, by the conditions that both cubics agree in four places."""
    given_knots, given_points = clamped_knots(draw, 1), doubles(draw, 5 * dimension, 60.0)
    knots = exact(given_knots)
    points = [exact(given_points[i : i + dimension]) for i in range(0, len(given_points), dimension)]
    span = draw.choice((3, 4))
    places = [mpf(k) / 5 for k in range(1, 5)]
    matrix = mp.matrix([[mp.binomial(3, i) * t**i * (1 - t) ** (3 - i) for i in range(4)] for t in places])
    at = [blend(knots, points, knots[span] + t * (knots[span + 1] - knots[span]), 0) for t in places]
    columns = [list(mp.lu_solve(matrix, mp.matrix(side))) for side in zip(*at)]
    size = max(length(point) for point in points)
    return f"{name}, SpanBezier", [span] + given_knots + given_points, flat(zip(*columns)), size


def segments(draw):
    for _ in range(20):
        yield from plane_segment(draw)
    for _ in range(10):
        yield from segment_in_space(draw)
    yield from gauss_legendre()
    for _ in range(5):
        yield from smooth_path(draw)


def bezier(p, t):
    """The point and its three derivatives."""
    s = 1 - t
    d = [times(minus(b, a), 3) for a, b in zip(p, p[1:])]
    dd = [times(minus(b, a), 2) for a, b in zip(d, d[1:])]
    ddd = minus(dd[1], dd[0])
    point = [s**3 * a + 3 * s * s * t * b + 3 * s * t * t * c + t**3 * e for a, b, c, e in zip(*p)]
    first = [s * s * a + 2 * s * t * b + t * t * c for a, b, c in zip(*d)]
    return point, first, [s * a + t * b for a, b in zip(*dd)], ddd


def plane_segment(draw):
    given, t = doubles(draw, 8, 40.0), draw.random()
    p = [exact(given[i : i + 2]) for i in range(0, 8, 2)]
    results = bezier(p, mpf(t))
    size = max(length(point) for point in p)
    for order, factor in enumerate((1, 6, 24, 48)):
        yield f"TBezierSegment2D, derivative {order}", given + [t], results[order], size * factor
    speed = length(results[1])
    if speed > 10:
        s, size = by_arc_length(*results[1:]), by_arc_length_size(*results[1:])
        yield "TransferU1U2U3ToS1S2S3", given + [t], flat(s), size
        yield "TBezierSegmentHelper, EvalDerVector", given + [t], flat(s[:2]), size


def by_arc_length(u1, u2, u3):
    """The chain rule: t' = 1 / v, with v the speed."""
    v = length(u1)
    v1 = dot(u1, u2) / v
    v2 = (dot(u2, u2) + dot(u1, u3)) / v - dot(u1, u2) ** 2 / v**3
    t1, t2, t3 = 1 / v, -v1 / v**3, 3 * v1 * v1 / v**5 - v2 / v**4
    s2 = plus(times(u2, t1 * t1), times(u1, t2))
    return times(u1, t1), s2, plus(plus(times(u3, t1**3), times(u2, 3 * t1 * t2)), times(u1, t3))


def by_arc_length_size(u1, u2, u3):
    v = length(u1)
    bend = length(u2) / v**2
    return 1 + bend + 3 * bend * bend + length(u3) / v**3


def speed_at(p, t):
    return length(bezier(p, t)[1])


def length_by_rule(p, t):
    return mp.fsum(w * speed_at(p, t / 2 * (1 + x)) for x, w in legendre_rule(14)) * t / 2


def segment_in_space(draw):
    start, step = doubles(draw, 3, 10.0), doubles(draw, 3, 10.0)
    given = [a + k * b + draw.uniform(-4, 4) for k in range(4) for a, b in zip(start, step)]
    t = draw.random()
    p = [exact(given[i : i + 3]) for i in range(0, 12, 3)]
    size = max(length(point) for point in p)
    for order, factor in enumerate((1, 6, 24, 48)):
        yield f"TCubicBezXD, derivative {order}", given + [t], bezier(p, mpf(t))[order], size * factor
    whole = mp.quad(lambda x: speed_at(p, x), [0, 0.25, 0.5, 0.75, 1])
    part = mp.quad(lambda x: speed_at(p, x), [0, mpf(t) / 2, mpf(t)])
    yield "TCubicBezXD, LengthOfParam", given + [t], [part], whole
    yield "TCubicBezXD, GaussLengthFunc", given + [t], [speed_at(p, mpf(t))], 6 * size
    yield "TCubicBezXD, LengthOfParam, against the 14-point rule itself", given + [t], [length_by_rule(p, mpf(t))], whole
    yield "TCubicBezXD, CurveLength, against the 14-point rule itself", given, [length_by_rule(p, mpf(1))], whole
    length_given = float(part)
    yield "TCubicBezXD, ParamOfLength", given + [length_given], [mpf(t)], 1


def legendre(n, x):
    """The Legendre polynomial and its derivative."""
    before, here = mpf(1), x
    for k in range(2, n + 1):
        before, here = here, ((2 * k - 1) * x * here - (k - 1) * before) / k
    return here, n * (before - x * here) / (1 - x * x)


@functools.lru_cache
def legendre_rule(n):
    """The places and weights of the rule with n points, by Newton's iteration."""
    nodes = []
    for k in range(n):
        x = -mp.cos(mp.pi * (k + mpf(3) / 4) / (n + mpf(1) / 2))
        for _ in range(8):
            value, slope = legendre(n, x)
            x -= value / slope
        slope = legendre(n, x)[1]
        nodes.append((mpf(0) if 2 * k + 1 == n else x, 2 / ((1 - x * x) * slope * slope)))
    return nodes


def gauss_legendre():
    for n, step in ((2, 1), (3, 1), (5, 1), (14, 1), (20, 1), (64, 7), (256, 19)):
        for k, (x, w) in list(enumerate(legendre_rule(n)))[::step]:
            yield "GaussLegendreRule, places", [n, k], [x]
            yield f"GaussLegendreRule, weights of {'14 points' if n == 14 else 'other rules'}", [n, k], [w]
