"""Linear systems, planes and lines."""

from mpmath import mp, mpf

from vectors import dot, doubles, exact, length

# A millionth: what is measured has so many digits.
GRID = 2.0**20


def measured(value, shift):
    """Far from the origin all digits count, since whole millionths have exact sums."""
    return value + shift if shift else round(value * GRID) / GRID


def solvers(draw):
    for rows, columns, count in ((3, 3, 10), (5, 3, 10), (8, 5, 6), (12, 12, 3)):
        for _ in range(count):
            yield from system(draw, rows, columns)
    for size in (4, 6, 8):
        hilbert = [1.0 / (i + j + 1) for i in range(size) for j in range(size)]
        yield solved(size, size, hilbert, [1.0] * size, "MatrixDivUsingSvd, Hilbert matrices")
    for _ in range(6):
        yield back_substituted(draw, 5, 3)
        yield singular_values(draw, 5, 3)


def back_substituted(draw, rows, columns):
    """X = V diag(1 / W) U' B, of any numbers."""
    u, v = doubles(draw, rows * columns, 1.0), doubles(draw, columns * columns, 1.0)
    w, b = [draw.uniform(0.2, 3) for _ in range(columns)], doubles(draw, rows, 1.0)
    parts = [[mpf(u[i * columns + j]) * mpf(b[i]) / mpf(w[j]) for i in range(rows)] for j in range(columns)]
    terms = [[part * mpf(v[k * columns + j]) for j in range(columns) for part in parts[j]] for k in range(columns)]
    size = max(mp.fsum(map(abs, row)) for row in terms)
    return "SvdBackSubstitute", [rows, columns] + u + w + v + b, [mp.fsum(row) for row in terms], size


def system(draw, rows, columns):
    a = [draw.uniform(-1, 1) for _ in range(rows * columns)]
    b = [draw.uniform(-1, 1) for _ in range(rows)]
    yield solved(rows, columns, a, b, "MatrixDivUsingSvd")


def solved(rows, columns, a, b, name):
    """The scale is what LAPACK's error bound of least squares says: cond |x|, and cond^2 |r| / |A| for the residual r."""
    matrix = mp.matrix(rows, columns)
    for k, value in enumerate(a):
        matrix[k // columns, k % columns] = mpf(value)
    right = mp.matrix(exact(b))
    x = mp.lu_solve(matrix.T * matrix, matrix.T * right)
    values = mp.svd_r(matrix, compute_uv=False)
    largest, smallest = max(values), min(values)
    condition = largest / smallest
    residual = mp.norm(matrix * x - right)
    scale = condition * mp.norm(x) + condition**2 * residual / largest
    return name, [rows, columns] + a + b, list(x), scale


def singular_values(draw, rows, columns):
    a = doubles(draw, rows * columns, 1.0)
    matrix = mp.matrix([exact(a[i : i + columns]) for i in range(0, len(a), columns)])
    return "SvdDecompose, singular values", [rows, columns] + a, sorted(mp.svd_r(matrix, compute_uv=False))


def fits(draw):
    for k in range(200):
        shift = 1e6 if k % 4 == 3 else 0.0
        place = ", far from the origin" if shift else ""
        yield plane(draw, f"FitPlaneUsingSvd{place}", shift)
        yield line(draw, f"FitLineUsingSvd{place}", shift)


def plane(draw, name, shift):
    """Points spread over some 100 by 100 about a plane in any direction, a tenth off it."""
    frame = mp.qr(mp.matrix([[mpf(draw.uniform(-1, 1)) for _ in range(3)] for _ in range(3)]))[0]
    points = []
    for _ in range(draw.randint(4, 6)):
        along = [mpf(draw.uniform(-50, 50)), mpf(draw.uniform(-50, 50)), mpf(draw.gauss(0, 0.1))]
        at = frame * mp.matrix(along)
        points.append([measured(float(at[0]), shift), measured(float(at[1]), -shift), measured(float(at[2]), 0.0)])
    fit = TotalFit(points)
    normal, values = fit.directions[0], fit.values
    ratio = mp.sqrt(values[1] / values[0])
    # The smallest singular value is off by eps of the largest one.
    sensitivity = ratio * mp.sqrt(values[2] / values[0])
    return name, [c for point in points for c in point], [*normal, -dot(normal, fit.mean), ratio, sensitivity], fit.size


def line(draw, name, shift):
    turn = draw.uniform(0, 6.3)
    c, s = float(mp.cos(turn)), float(mp.sin(turn))
    points = []
    for _ in range(draw.randint(3, 5)):
        along, off = draw.uniform(-50, 50), draw.gauss(0, 0.1)
        points.append([measured(c * along - s * off, shift), measured(s * along + c * off, -shift)])
    fit = TotalFit(points)
    normal = fit.directions[0]
    return name, [c for point in points for c in point], [*normal, -dot(normal, fit.mean)], fit.size


class TotalFit:
    """The mean of points and how far they reach, and the eigenvalues and unit eigenvectors of their scatter, the smallest first."""

    def __init__(self, points):
        size = len(points[0])
        given = [exact(point) for point in points]
        self.size = max(length(point) for point in given)
        self.mean = [mp.fsum(point[j] for point in given) / len(given) for j in range(size)]
        centred = [[point[j] - self.mean[j] for j in range(size)] for point in given]
        scatter = mp.matrix(size, size)
        for i in range(size):
            for j in range(size):
                scatter[i, j] = mp.fsum(point[i] * point[j] for point in centred)
        values, vectors = mp.eigsy(scatter)
        order = sorted(range(size), key=lambda k: values[k])
        self.values = [values[k] for k in order]
        self.directions = [[vectors[i, k] for i in range(size)] for k in order]
