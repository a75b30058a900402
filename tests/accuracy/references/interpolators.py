"""Moves between poses, the Hermite interpolator, the V4 surface."""

from mpmath import mp, mpf

from vectors import about_axis, angle, cross, direction, doubles, exact, length, minus, normal, plus, rows, times


def interpolators(draw):
    for _ in range(20):
        yield from moves(draw)
    for _ in range(30):
        yield from hermite(draw)
    for _ in range(12):
        yield from surface(draw)


def moves(draw):
    begin, end = doubles(draw, 3, 200.0), doubles(draw, 3, 200.0)
    t = draw.random()
    position = plus(exact(begin), times(minus(exact(end), exact(begin)), mpf(t)))
    size = length(exact(begin)) + length(exact(end))
    first, last = direction(draw), direction(draw)
    a, b = exact(first), exact(last)
    turned = rows(about_axis(normal(cross(a, b)), mpf(t) * angle(a, b)), a)
    given = begin + first + end + last + [t]
    yield "TWcsPtInterpolator, position", given, position, size
    yield "TWcsPtInterpolator, direction", given, turned
    yield "TWcsPtInterpolator, OffSetAngle", given, [angle(a, b)]
    angles, other = doubles(draw, 3, 3.0), doubles(draw, 3, 3.0)
    blend = plus(exact(angles), times(minus(exact(other), exact(angles)), mpf(t)))
    yield "TEulerPtInterpolator, position", begin + angles + end + other + [t], position, size
    yield "TEulerPtInterpolator, angles", begin + angles + end + other + [t], blend, length(exact(angles)) + length(exact(other))


def hermite(draw):
    is_loop = draw.random() < 0.5
    x, y = [draw.uniform(-5, 0)], doubles(draw, 7, 3.0)
    while len(x) < 7:
        x.append(x[-1] + draw.uniform(0.2, 2))
    at = draw.uniform(x[0], x[-1])
    if min(abs(at - place) for place in x) < 1e-6:
        return
    xs, ys = exact(x), exact(y)
    if is_loop:
        ys[-1] = ys[0]
    slopes = [(ys[min(i + 1, 6)] - ys[max(i - 1, 0)]) / (xs[min(i + 1, 6)] - xs[max(i - 1, 0)]) for i in range(7)]
    if is_loop:
        # Values stand where places would be expected: that is the interface's own formula.
        divisor = xs[1] - ys[0] + ys[6] - ys[5]
        if abs(divisor) < 0.1:
            return
        slopes[0] = slopes[6] = (ys[1] - ys[5]) / divisor
    i = max(k for k in range(6) if xs[k] <= at)
    h = xs[i + 1] - xs[i]
    t = (mpf(at) - xs[i]) / h
    value = (1 + 2 * t) * (1 - t) ** 2 * ys[i] + t * (1 - t) ** 2 * h * slopes[i]
    value += t * t * (3 - 2 * t) * ys[i + 1] + t * t * (t - 1) * h * slopes[i + 1]
    size = max(abs(v) for v in ys) + h * max(abs(slopes[i]), abs(slopes[i + 1]))
    name = "THermiteInterpolater, CalcY" + (", loop" if is_loop else "")
    yield name, [float(is_loop)] + x + y + [at], [value], size


def green(distance):
    return distance**2 * (mp.log(distance) - 1) if distance else mpf(0)


def surface(draw):
    """The scale is the condition of the matrix times the largest height: what any solution in doubles is off by."""
    count = 8
    given = doubles(draw, 3 * count, 10.0)
    samples = [exact(given[i : i + 3]) for i in range(0, 3 * count, 3)]
    matrix = mp.matrix([[green(length(minus(p[:2], q[:2]))) for q in samples] for p in samples])
    weights = mp.lu_solve(matrix, mp.matrix([p[2] for p in samples]))
    at = doubles(draw, 2, 10.0)
    height = mp.fsum(w * green(length(minus(exact(at), p[:2]))) for w, p in zip(weights, samples))
    values = mp.svd_r(matrix, compute_uv=False)
    scale = max(values) / min(values) * max(abs(p[2]) for p in samples)
    yield "TV4Interpolator, CalcZ", given + at, [height], scale
