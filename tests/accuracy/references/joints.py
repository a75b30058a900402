"""The curve through points whose tangents are tuned until the curvature nearly agrees where its segments meet."""

from mpmath import mp, mpf

from vectors import dot, doubles, exact, flat, length, minus, normal, plus, times

CORRECTIONS = 4
# Doubles, as the interface's formulas have them.
STEP, DAMPING = mpf(0.001), mpf(0.6)
LEAN, NEAR, HANDLE, BEND = mpf(0.3), mpf(0.4), mpf(0.417), mpf(0.2)


def smooth_path(draw):
    """Five points near a helix whose weights stay away from their limits, where a rounding decides."""
    path = None
    while path is None or not path.is_free:
        radius, turn, rise = draw.uniform(8, 30), draw.uniform(0.2, 0.5), draw.uniform(-3, 3)
        helix = [[radius * mp.cos(turn * i), radius * mp.sin(turn * i), rise * i] for i in range(5)]
        points = [[float(a) + draw.uniform(-0.6, 0.6) for a in point] for point in helix]
        path = TunedPath([exact(point) for point in points])
    yield "TTWoDerivCurveXD, weights", flat(points), path.weights, 1
    handles = [handle for chord in range(4) for handle in path.handles(chord, *path.ends_of(chord))]
    yield "TTWoDerivCurveXD, handles", flat(points), flat(handles), max(length(p) for p in path.points)


class TunedPath:
    """The weight of an inner point is the share of the chord before it in its tangent."""

    def __init__(self, points):
        self.points = points
        steps = [minus(b, a) for a, b in zip(points, points[1:])]
        self.lengths, self.chords = [length(step) for step in steps], [normal(step) for step in steps]
        self.weights = [b / (a + b) for a, b in zip(self.lengths, self.lengths[1:])]
        self.is_free = True
        for _ in range(CORRECTIONS):
            corrections = [self.correction(j) for j in range(len(self.weights))]
            self.weights = [weight + DAMPING * change for weight, change in zip(self.weights, corrections)]
            self.is_free = self.is_free and all(0.1 < weight < 0.9 for weight in self.weights)

    def tangents(self):
        inner = [self.inner_tangent(j, weight) for j, weight in enumerate(self.weights)]
        return [self.start_tangent(self.weights[0], inner[0]), *inner, self.end_tangent(self.weights[-1], inner[-1])]

    def inner_tangent(self, j, weight):
        return normal(plus(times(self.chords[j], weight), times(self.chords[j + 1], 1 - weight)))

    def start_tangent(self, weight, behind):
        return normal(minus(self.chords[0], times(behind, weight)))

    def end_tangent(self, weight, before):
        return normal(minus(self.chords[-1], times(before, 1 - weight)))

    def ends_of(self, chord):
        tangents = self.tangents()
        return tangents[chord], tangents[chord + 1]

    def handles(self, chord, first, last):
        """The two inner control points of a segment with these tangents at its ends."""
        a, b = (mp.acos(dot(tangent, self.chords[chord])) for tangent in (first, last))
        size = self.lengths[chord]
        start, end = self.points[chord : chord + 2]
        return plus(start, times(first, handle_factor(a, b) * size)), minus(end, times(last, handle_factor(b, a) * size))

    def jump(self, j, before, behind):
        """The relative jump of the curvature at the inner point j, for the tangents at the ends of its two segments."""
        p, q = self.handles(j, *before)
        r, s = self.handles(j + 1, *behind)
        here = self.points[j + 1]
        curvatures = [end_curvature(here, q, p), end_curvature(here, r, s)]
        return abs(curvatures[0] - curvatures[1]) / max(curvatures)

    def correction(self, j):
        before, behind = list(self.ends_of(j)), list(self.ends_of(j + 1))
        jump = self.jump(j, before, behind)
        weight = self.weights[j] + STEP
        tangent = self.inner_tangent(j, weight)
        before[1] = behind[0] = tangent
        if j == 0:
            before[0] = self.start_tangent(weight, tangent)
        if j == len(self.weights) - 1:
            behind[1] = self.end_tangent(weight, tangent)
        return -jump / (self.jump(j, before, behind) - jump) * STEP


def handle_factor(own, other):
    z = own - LEAN * mp.sin(2 * other - NEAR * mp.sin(2 * other))
    return HANDLE * abs(mp.cos(z) - BEND * mp.cos(3 * z))


def end_curvature(end, handle, far_handle):
    first = times(minus(handle, end), 3)
    second = times(minus(plus(end, far_handle), times(handle, 2)), 6)
    across = minus(second, times(first, dot(first, second) / dot(first, first)))
    return length(across) / dot(first, first)
