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
    for _ in range(12):
        yield from tables(draw)
    for _ in range(8):
        yield from long_turn(draw)


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
    yield "TWcsPtInterpolator, CrossVec", first + last, normal(cross(a, b))
    angles, other = doubles(draw, 3, 3.0), doubles(draw, 3, 3.0)
    blend = plus(exact(angles), times(minus(exact(other), exact(angles)), mpf(t)))
    yield "TEulerPtInterpolator, position", begin + angles + end + other + [t], position, size
    yield "TEulerPtInterpolator, angles", begin + angles + end + other + [t], blend, length(exact(angles)) + length(exact(other))


def long_turn(draw):
    """Directions whose short turn passes a lowest Z: its height falls at the start and rises at the end."""
    while True:
        first, last, t = direction(draw), direction(draw), draw.random()
        a, b = exact(first), exact(last)
        axis = normal(cross(a, b))
        if cross(axis, a)[2] < -0.01 and cross(axis, b)[2] > 0.01:
            break
    turn = 2 * mp.pi - angle(a, b)
    yield "TWcsPtInterpolator, OffSetAngle, no lowest Z", first + last, [turn]
    yield "TWcsPtInterpolator, direction, no lowest Z", first + last + [t], rows(about_axis(axis, -mpf(t) * turn), a)


def hermite_step(x, ends, values, slopes):
    h = ends[1] - ends[0]
    t = (x - ends[0]) / h
    value = (1 + 2 * t) * (1 - t) ** 2 * values[0] + t * (1 - t) ** 2 * h * slopes[0]
    return value + t * t * (3 - 2 * t) * values[1] + t * t * (t - 1) * h * slopes[1]


def difference_slopes(xs, ys):
    """From the samples before and behind each one."""
    last = len(xs) - 1
    pairs = [(max(i - 1, 0), min(i + 1, last)) for i in range(len(xs))]
    return [(ys[j] - ys[i]) / (xs[j] - xs[i]) for i, j in pairs]


def between(xs, ys, slopes, x):
    """The value of the cubic between the two samples about x, and the size of its terms."""
    i = max(k for k in range(len(xs) - 1) if xs[k] <= x)
    pair = slice(i, i + 2)
    size = max(abs(v) for v in ys) + (xs[i + 1] - xs[i]) * max(abs(slope) for slope in slopes[pair])
    return hermite_step(x, xs[pair], ys[pair], slopes[pair]), size


def tables(draw):
    """An arc-length table, looked up both ways."""
    lengths, params = [0.0], [0.0]
    while len(lengths) < 8:
        lengths.append(lengths[-1] + draw.uniform(0.02, 0.04))
        params.append(params[-1] + draw.uniform(0.05, 0.15))
    given, place = lengths + params, draw.uniform(0.01, 0.99)
    s, u = exact(lengths), exact(params)
    for name, keys, values in (("GetSByU", u, s), ("GetUByS", s, u)):
        at = place * float(keys[-1])
        value, size = between(keys, values, difference_slopes(keys, values), mpf(at))
        yield f"TSUTable, {name}", given + [at], [value], size
    step = [draw.uniform(0, 1), 0.0, draw.uniform(1, 2)] + doubles(draw, 4, 3.0)
    x, x0, x1, y0, y1, m0, m1 = exact(step)
    size = max(abs(y0), abs(y1)) + (x1 - x0) * max(abs(m0), abs(m1))
    yield "HermiteStep", step, [hermite_step(x, [x0, x1], [y0, y1], [m0, m1])], size


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
    slopes = difference_slopes(xs, ys)
    if is_loop:
        # Values stand where places would be expected: that is the interface's own formula.
        divisor = xs[1] - ys[0] + ys[6] - ys[5]
        if abs(divisor) < 0.1:
            return
        slopes[0] = slopes[6] = (ys[1] - ys[5]) / divisor
    else:
        yield "THermiteInterpolater, SrcDiff", x + y, slopes
    value, size = between(xs, ys, slopes, mpf(at))
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
    condition = max(values) / min(values)
    yield "TV4Interpolator, Weights", given, list(weights), condition * max(abs(w) for w in weights)
    yield "TV4Interpolator, CalcZ", given + at, [height], condition * max(abs(p[2]) for p in samples)
