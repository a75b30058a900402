"""Vectors, matrices and quaternions of mpf numbers, as lists."""

from mpmath import mp, mpf


def exact(values):
    return [mpf(value) for value in values]


def dot(p, q):
    return mp.fsum(a * b for a, b in zip(p, q))


def size_of_dot(p, q):
    """What the rounding of a dot product is measured by."""
    return mp.fsum(abs(a * b) for a, b in zip(p, q))


def length(p):
    return mp.sqrt(dot(p, p))


def normal(p):
    return [a / length(p) for a in p]


def cross(p, q):
    return [p[1] * q[2] - p[2] * q[1], p[2] * q[0] - p[0] * q[2], p[0] * q[1] - p[1] * q[0]]


def plus(p, q):
    return [a + b for a, b in zip(p, q)]


def minus(p, q):
    return [a - b for a, b in zip(p, q)]


def times(p, s):
    return [a * s for a in p]


def angle(p, q):
    return mp.atan2(length(cross(p, q)), dot(p, q))


def rows(matrix, vector):
    return [dot(row, vector) for row in matrix]


def product(left, right):
    columns = list(zip(*right))
    return [[dot(row, column) for column in columns] for row in left]


def transposed(matrix):
    return [list(column) for column in zip(*matrix)]


def flat(matrix):
    return [entry for row in matrix for entry in row]


def square(entries):
    return [list(entries[i : i + 3]) for i in (0, 3, 6)]


def about_axis(axis, turn):
    """The right-handed rotation by an angle about a unit vector (Rodrigues)."""
    n, s, c = axis, mp.sin(turn), mp.cos(turn)
    skew = [[mpf(0), -n[2], n[1]], [n[2], mpf(0), -n[0]], [-n[1], n[0], mpf(0)]]
    return [[c * (i == j) + (1 - c) * n[i] * n[j] + s * skew[i][j] for j in range(3)] for i in range(3)]


def about_x(turn):
    return about_axis([mpf(1), mpf(0), mpf(0)], turn)


def about_y(turn):
    return about_axis([mpf(0), mpf(1), mpf(0)], turn)


def about_z(turn):
    return about_axis([mpf(0), mpf(0), mpf(1)], turn)


def hamilton(p, q):
    v = plus(plus(times(q[1:], p[0]), times(p[1:], q[0])), cross(p[1:], q[1:]))
    return [p[0] * q[0] - dot(p[1:], q[1:])] + v


def conjugate(q):
    return [q[0]] + [-a for a in q[1:]]


def matrix_of(q):
    """The rotation v -> q v q* of a quaternion taken as a unit one."""
    a, b, c, d = q
    return [
        [1 - 2 * (c * c + d * d), 2 * (b * c - a * d), 2 * (b * d + a * c)],
        [2 * (b * c + a * d), 1 - 2 * (b * b + d * d), 2 * (c * d - a * b)],
        [2 * (b * d - a * c), 2 * (c * d + a * b), 1 - 2 * (b * b + c * c)],
    ]


def log(q):
    s = length(q[1:])
    return times(q[1:], mp.atan2(s, q[0]) / s)


def exp(v):
    size = length(v)
    return [mp.cos(size)] + times(v, mp.sin(size) / size)


def aligned(q, to):
    return times(q, -1) if dot(q, to) < 0 else q


def nlerp(t, p, q):
    return normal(plus(times(p, 1 - t), times(aligned(q, p), t)))


def slerp(t, p, q):
    q = aligned(q, p)
    arc = mp.acos(min(dot(p, q), mpf(1)))
    return plus(times(p, mp.sin((1 - t) * arc) / mp.sin(arc)), times(q, mp.sin(t * arc) / mp.sin(arc)))


def doubles(draw, count, size):
    return [draw.uniform(-size, size) for _ in range(count)]


def direction(draw, count=3):
    """A unit vector of doubles, or a unit quaternion."""
    while True:
        p = doubles(draw, count, 1.0)
        square = sum(a * a for a in p)
        if 0.01 < square <= 1:
            return [float(a) for a in normal(exact(p))]
