"""Transforms of the plane and of space, quaternions, and blends of orientations."""

from mpmath import mp, mpf

from vectors import (about_axis, about_x, about_y, about_z, aligned, angle, conjugate, cross, direction, dot, doubles,
                     exact, exp, flat, hamilton, length, log, matrix_of, minus, nlerp, normal, plus, product, rows, slerp,
                     size_of_dot, square, times, transposed)


def with_translation(matrix, t):
    """The twelve entries row by row, the translation at each row's end."""
    return [entry for row, shift in zip(matrix, t) for entry in [*row, shift]]


def placement(draw, size):
    """A rotation rounded to doubles, and a translation."""
    entries = [float(a) for a in flat(matrix_of(exact(direction(draw, 4))))]
    return with_translation(square(entries), doubles(draw, 3, size))


def rotation_of(entries):
    return [exact(entries[i : i + 3]) for i in (0, 4, 8)]


def translation_of(entries):
    return exact(entries[3::4])


def transforms(draw):
    for _ in range(16):
        yield from in_the_plane(draw)
        yield from turns(draw)
        yield from compositions(draw)
        yield from euler_angles(draw)
        yield from angles_about_axes(draw)
    for _ in range(8):
        yield from turns_in_a_row(draw)
        yield from moved_things(draw)
        yield from any_entries(draw)


def in_the_plane(draw):
    given = doubles(draw, 6, 3.0) + doubles(draw, 2, 400.0)
    m00, m01, m10, m11, tx, ty, x, y = exact(given)
    size = max(abs(m00 * x) + abs(m01 * y) + abs(tx), abs(m10 * x) + abs(m11 * y) + abs(ty))
    yield "TMatrix2D, Transform", given, [m00 * x + m01 * y + tx, m10 * x + m11 * y + ty], size


def turns(draw):
    axis = doubles(draw, 3, 50.0)
    turn = draw.uniform(-7, 7)
    rotation = about_axis(normal(exact(axis)), mpf(turn))
    yield "TMatrix3D, RotateBy", axis + [turn], flat(rotation)
    yield "TMatrix4D, about an axis", axis + [turn], flat(rotation)
    p = doubles(draw, 3, 400.0)
    yield "TMatrix3D, RotateBy and Transform", axis + [turn] + p, rows(rotation, exact(p)), length(exact(p))
    start, end = direction(draw), direction(draw)
    a, b = exact(start), exact(end)
    yield "TMatrix4D, from vector to vector", start + end, flat(about_axis(normal(cross(a, b)), angle(a, b)))


def compositions(draw):
    left, right = placement(draw, 300.0), placement(draw, 300.0)
    r, t = product(rotation_of(left), rotation_of(right)), rows(rotation_of(left), translation_of(right))
    shift = plus(t, translation_of(left))
    sizes = length(translation_of(left)) + length(translation_of(right))
    yield "TMatrix4D, product, rotation", left + right, flat(r)
    yield "TMatrix4D, product, translation", left + right, shift, sizes
    # The inverse of a matrix that is orthogonal but for rounding is its transpose.
    back = transposed(rotation_of(left))
    yield "TMatrix4D, Invert, rotation", left, flat(back)
    yield "TMatrix4D, Invert, translation", left, times(rows(back, translation_of(left)), -1), length(translation_of(left))
    yield "TMatrix4D, Determinant", left, [determinant(rotation_of(left))]
    any_matrix = doubles(draw, 12, 2.0)
    inverse = mp.inverse(mp.matrix(rotation_of(any_matrix)))
    size = mp.mnorm(inverse, "f")
    condition = size * mp.mnorm(mp.matrix(rotation_of(any_matrix)), "f")
    yield "TMatrix4D, Invert, any matrix", any_matrix, flat(inverse.tolist()), size * condition
    p = doubles(draw, 3, 400.0)
    moved = plus(rows(rotation_of(left), exact(p)), translation_of(left))
    yield "TMatrix4D, TransformPt", left + p, moved, length(exact(p)) + length(translation_of(left))
    yield "TMatrix4D, TransformVec", left + p, rows(rotation_of(left), exact(p)), length(exact(p))


def determinant(m):
    return dot(m[0], cross(m[1], m[2]))


def euler_angles(draw):
    angles = doubles(draw, 3, 3.1)
    a, b, c = exact(angles)
    xyz = product(product(about_x(a), about_y(b)), about_z(c))
    zyx = product(product(about_z(c), about_y(b)), about_x(a))
    yield "TMatrix4D, from Euler angles XYZ", angles, flat(xyz)
    yield "TMatrix4D, from Euler angles ZYX", angles, flat(zyx)
    yield "TEulerAng, ToVector", angles, [row[2] for row in zyx]
    # Angles that come back as they are: the middle one within a quarter turn, not too close to where two axes meet.
    angles[1] = draw.uniform(-1.4, 1.4)
    a, b, c = exact(angles)
    xyz = product(product(about_x(a), about_y(b)), about_z(c))
    zyx = product(product(about_z(c), about_y(b)), about_x(a))
    # Angles of the rounded entries, whose rounding is a part of the error.
    yield "TMatrix4D, to Euler angles XYZ", [float(e) for e in with_translation(xyz, [0, 0, 0])], angles
    yield "TMatrix4D, to Euler angles ZYX", [float(e) for e in with_translation(zyx, [0, 0, 0])], angles
    columns = transposed(zyx)
    yield "TEulerAng, CreatebyXYVec", [float(7 * e) for e in columns[0]] + [float(3 * e) for e in columns[1]], angles


def angles_about_axes(draw):
    first, second = direction(draw), direction(draw)
    while max(first) < 0.2 or length(cross(exact(first), exact(second))) < 0.3:
        first, second = direction(draw), direction(draw)
    turn, other = draw.uniform(-3, 3), draw.uniform(-3, 3)
    about_first = about_axis(normal(exact(first)), mpf(turn))
    yield "TMatrix4D, angle about an axis", [float(e) for e in with_translation(about_first, [0, 0, 0])] + first, [turn]
    both = product(about_axis(normal(exact(second)), mpf(other)), about_first)
    entries = [float(e) for e in with_translation(both, [0, 0, 0])]
    yield "TMatrix4D, angles about two axes", entries + first + second, [turn, other]


def turns_in_a_row(draw):
    given = []
    rotation = [[mpf(i == j) for j in range(3)] for i in range(3)]
    for _ in range(3):
        axis, turn = doubles(draw, 3, 50.0), draw.uniform(-7, 7)
        given += axis + [turn]
        rotation = product(about_axis(normal(exact(axis)), mpf(turn)), rotation)
    yield "TMatrix3D, RotateBy, three turns", given, flat(rotation)


def moved_things(draw):
    """Translations of the size of the coordinates, so that neither hides the rounding of the other."""
    given, a, b, heading = placement(draw, 1.0), doubles(draw, 3, 1.0), doubles(draw, 3, 1.0), direction(draw)
    r, t = rotation_of(given), translation_of(given)
    p, q, v = exact(a), exact(b), exact(heading)
    moved = plus(rows(r, p), t)
    yield "TMatrix4D, TransformPose", given + a + heading, moved + rows(r, v), length(p) + length(t)
    size = max(length(p), length(q)) + length(t)
    yield "TMatrix4D, TransformLine", given + a + b, moved + plus(rows(r, q), t), size
    yield "TMatrix4D, P * M", given + a, rows(transposed(r), p), length(p)
    shift = doubles(draw, 3, 7.0)
    yield "TMatrix4D, Translate", given + shift, plus(t, exact(shift))


def any_entries(draw):
    given = doubles(draw, 12, 2.0)
    matrix = mp.matrix(rotation_of(given))
    inverse, shift = mp.inverse(matrix), mp.matrix(translation_of(given))
    size = mp.mnorm(inverse, "f") * mp.mnorm(matrix, "f") * mp.mnorm(inverse, "f") * mp.norm(shift)
    yield "TMatrix4D, Invert, any matrix, translation", given, list(-(inverse * shift)), size
    digits, entries = draw.choice((-6, -3, -1, 0, 2)), doubles(draw, 12, 500.0)
    unit = mpf(10) ** digits
    yield "TMatrix4D, RoundTo", [digits] + entries, [mp.nint(a / unit) * unit for a in exact(entries)]


def orientations(draw):
    for _ in range(16):
        yield from quaternions(draw)
        yield from blends(draw)
    for _ in range(10):
        yield from close_orientations(draw)
    for _ in range(8):
        yield from blends_of_poses(draw)


def quaternions(draw):
    given = direction(draw, 4) + direction(draw, 4)
    p, q = exact(given[:4]), exact(given[4:])
    yield "TQuaternion, product", given, hamilton(p, q)
    loose = doubles(draw, 4, 2.0)
    u = exact(loose)
    yield "TQuaternion, NormMagSqr", loose, [dot(u, u)]
    yield "TQuaternion, NormMag", loose, [length(u)]
    yield "TQuaternion, DotMul", given, [dot(p, q)], size_of_dot(p, q)
    yield "TQuaternion, Inverse", loose, [a / dot(u, u) for a in conjugate(u)]
    yield "TQuaternion, ToMatrix4D", given[:4], flat(matrix_of(p))
    entries = [float(e) for e in with_translation(matrix_of(normal(p)), [0, 0, 0])]
    yield "TQuaternion, CreateFromMatrix4D", entries, normal(p)
    v = doubles(draw, 3, 1.7)
    yield "TQuaternion, Exp", v, exp(exact(v))
    yield "TQuaternion, Log", given[:4], log(p)
    # Divided by the square of the magnitude, which is the interface's own formula: an arc tangent would normalise.
    stretched = [a * (1.1 + abs(loose[0])) for a in given[:4]]
    s = exact(stretched)
    arc = mp.acos(s[0] / dot(s, s))
    yield "TQuaternion, Log, of another magnitude than 1", stretched, times(normal(s[1:]), arc)


def blends(draw):
    q0, q1, q2, q3 = (direction(draw, 4) for _ in range(4))
    t = draw.random()
    p, q = exact(q1), exact(q2)
    given = [t] + q1 + q2
    yield "QuaternionAngle", q1 + q2, [mp.acos(abs(dot(p, q)) / length(p) / length(q))]
    yield "NLerpQuaternion", given, nlerp(mpf(t), p, q)
    yield "SLerpQuaternion", given, slerp(mpf(t), p, q)
    yield "SquadQuaternion", [t] + q0 + q1 + q2 + q3, squad(mpf(t), *map(exact, (q0, q1, q2, q3)))
    m, n = placement(draw, 100.0), placement(draw, 100.0)
    between = product(rotation_of(n), transposed(rotation_of(m)))
    trace = between[0][0] + between[1][1] + between[2][2]
    skew = [between[2][1] - between[1][2], between[0][2] - between[2][0], between[1][0] - between[0][1]]
    yield "MatrixAngle", m + n, [mp.atan2(length(skew), trace - 1)]


def blends_of_poses(draw):
    """Of rotations whose entries are rounded, which is a part of the error. All three blend translations alike."""
    turns, shifts = [normal(exact(direction(draw, 4))) for _ in range(4)], [doubles(draw, 3, 300.0) for _ in range(4)]
    poses = [[float(e) for e in with_translation(matrix_of(q), shift)] for q, shift in zip(turns, shifts)]
    t = draw.random()
    start, end = exact(shifts[1]), exact(shifts[2])
    shift = plus(times(start, 1 - mpf(t)), times(end, mpf(t)))
    given, all_given = [t] + poses[1] + poses[2], [t] + sum(poses, [])
    yield "NLerp4DMatrix, rotation", given, flat(matrix_of(nlerp(mpf(t), turns[1], turns[2])))
    yield "SLerp4DMatrix, rotation", given, flat(matrix_of(slerp(mpf(t), turns[1], turns[2])))
    yield "Squad4DMatrix, rotation", all_given, flat(matrix_of(squad(mpf(t), *turns)))
    yield "Blended translations", all_given, shift * 3, length(start) + length(end)


def squad(t, q0, q1, q2, q3):
    q1 = aligned(q1, q0)
    q2 = aligned(q2, q1)
    q3 = aligned(q3, q2)
    s1, s2 = inner(q0, q1, q2), inner(q1, q2, q3)
    s1 = aligned(s1, q1)
    s2 = aligned(s2, s1)
    q2 = aligned(q2, s2)
    return slerp(2 * t * (1 - t), slerp(t, q1, q2), slerp(t, s1, s2))


def inner(before, here, behind):
    a, b = log(hamilton(conjugate(before), here)), hamilton(conjugate(here), behind)
    if length(minus(a, log(times(b, -1)))) < length(minus(a, log(b))):
        b = times(b, -1)
    return hamilton(here, exp(times(minus(a, log(b)), mpf(1) / 4)))


def close_orientations(draw):
    """Turns by some 1e-4: the arc cosine of a number near 1 loses half of the digits of so small an angle."""
    p = exact(direction(draw, 4))
    step = [mpf(1)] + exact(doubles(draw, 3, 5e-5))
    q1, q2 = [float(a) for a in p], [float(a) for a in normal(hamilton(p, step))]
    a, b = exact(q1), exact(q2)
    arc = 2 * mp.asin(length(minus(normal(a), normal(b))) / 2)
    yield "QuaternionAngle, nearly parallel", q1 + q2, [arc]
    t = draw.random()
    u, v = normal(a), normal(b)
    weights = [mp.sin((1 - mpf(t)) * arc) / mp.sin(arc), mp.sin(mpf(t) * arc) / mp.sin(arc)]
    yield "SLerpQuaternion, nearly parallel", [t] + q1 + q2, plus(times(u, weights[0]), times(v, weights[1]))
