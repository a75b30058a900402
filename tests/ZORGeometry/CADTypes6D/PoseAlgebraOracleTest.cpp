// Transforms, quaternions and their blends against Eigen, over 100000 seeded cases: random ones, and ones next to where
// formulas degenerate.
#include <ZORBase/ZORGeometry/CADTypes6D.h>

#include "ZORGeometry/CADTypes6D/PoseTestSupport.h"

#include <Eigen/Geometry>
#include <Eigen/LU>

namespace ZORBase {
namespace {

using namespace Test;  // NOLINT(google-build-using-namespace)

constexpr int kCases = CasesOf(100'000);

// A few roundings, of numbers up to 1 and of coordinates up to some hundreds.
constexpr double kTurnError = 2e-15;
constexpr double kShiftError = 4e-13;

// What a turn of 1e-6 moves at most, where a matrix that close to the identity is taken for it.
constexpr double kIdentError = 1e-6 * 200;

struct TCase {
  TPoint3D Axis;
  double Angle = 0.0;
  TPoint3D Shift;
};

// Axes along and between the coordinate axes, where the candidates of CreateFromMatrix4D tie, exactly or almost.
TPoint3D AnyAxis(TRandomPoses& Random) {
  if (Random.Choice(2) == 0) return Random.UnitVector();
  const auto sign = [&] { return Random.Choice(3) - 1.0; };
  TPoint3D axis = Pt(sign(), sign(), sign());
  if (axis.MagSqr() == 0.0) axis = Pt(0, 0, 1);
  if (Random.Choice(2) == 0) axis = axis + Random.Point(1e-15);
  return axis.Normal();
}

// Any angle, those next to 0 and pi, and those where the real part ties with the largest of 1, 2 or 3 equal others.
double AnyAngleOf(TRandomPoses& Random) {
  const std::array special = {0.0,         1e-9,       -1e-9,     1.5e-6,     -1e-3,   kPi,
                              kPi + 1e-8,  kPi - 1e-8, -kPi,      1e-8 - kPi, kPi / 2, 2 * std::atan(std::sqrt(2.0)),
                              2 * kPi / 3, -kPi / 2,   kPi - 1e-4};
  if (Random.Choice(2) == 0) return Random.Number(-kPi, kPi);
  return special[static_cast<std::size_t>(Random.Choice(static_cast<int>(special.size())))];
}

TCase AnyCase(TRandomPoses& Random) {
  TCase result{AnyAxis(Random), AnyAngleOf(Random), Random.Point(100)};
  if (Random.Choice(4) == 0) result.Shift = TPoint3D::FZero;
  return result;
}

Eigen::Vector3d Vector(const TPoint3D& P) { return {P.X, P.Y, P.Z}; }
Eigen::Quaterniond Quaternion(const TCase& Case) {
  return Eigen::Quaterniond(Eigen::AngleAxisd(Case.Angle, Vector(Case.Axis)));
}
Eigen::Affine3d Affine(const TCase& Case) { return Eigen::Translation3d(Vector(Case.Shift)) * Quaternion(Case); }
TMatrix4D Pose(const TCase& Case) { return At(TMatrix4D::Create(Case.Axis, Case.Angle), Case.Shift); }
TQuaternion Own(const Eigen::Quaterniond& q) { return Quat(q.w(), q.x(), q.y(), q.z()); }

double Miss(const TMatrix4D& M, const Eigen::Affine3d& Expected) {
  double miss = 0.0;
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 4; ++j) {
      const double entry = M.fm[static_cast<std::size_t>(i)][static_cast<std::size_t>(j)];
      miss = std::max(miss, std::fabs(entry - Expected(i, j)));
    }
  }
  return miss;
}

double Miss(const TPoint3D& P, const Eigen::Vector3d& Expected) { return (Vector(P) - Expected).cwiseAbs().maxCoeff(); }

// Up to the sign, which says nothing about the rotation.
double Miss(const TQuaternion& q, const Eigen::Quaterniond& Expected) {
  return std::min((q - Own(Expected)).NormMag(), (q + Own(Expected)).NormMag());
}

// The error of acos(cos(Arc)) when the cosine is off by some roundings.
double ArcCosError(double Arc) { return std::min(5e-8, 2e-15 / std::fabs(Arc)); }

TEST(PoseAlgebraOracle, RotationsAboutAxesAndTheirQuaternions) {
  TRandomPoses random(51);
  for (int i = 0; i < kCases; ++i) {
    const TCase one = AnyCase(random);
    const Eigen::Quaterniond expected = Quaternion(one);
    const TMatrix4D pose = Pose(one);
    ASSERT_LE(Miss(pose, Affine(one)), kTurnError) << i;
    ASSERT_LE(Miss(QuaternionOf(pose), expected), kTurnError) << i;
    ASSERT_LE(Miss(At(Own(expected).ToMatrix4D(), one.Shift), Affine(one)), kTurnError) << i;
  }
}

TEST(PoseAlgebraOracle, Products) {
  TRandomPoses random(52);
  for (int i = 0; i < kCases; ++i) {
    const TCase one = AnyCase(random);
    const TCase other = AnyCase(random);
    const TMatrix4D a = Pose(one);
    const TMatrix4D b = Pose(other);
    const double identError = a.isIdent() || b.isIdent() ? kIdentError : 0.0;
    ASSERT_LE(Miss(a * b, Affine(one) * Affine(other)), kShiftError + identError) << i;
    const TQuaternion product = Own(Quaternion(one)) * Own(Quaternion(other));
    ASSERT_LE((product - Own(Quaternion(one) * Quaternion(other))).NormMag(), kTurnError) << i;
  }
}

TEST(PoseAlgebraOracle, InversesAndTransformedPoints) {
  TRandomPoses random(53);
  for (int i = 0; i < kCases; ++i) {
    const TCase one = AnyCase(random);
    const TPoint3D p = random.Point(100);
    TMatrix4D pose = Pose(one);
    const double identError = pose.isIdent() ? kIdentError : 0.0;
    ASSERT_LE(Miss(pose * p, Affine(one) * Vector(p)), kShiftError + identError) << i;
    ASSERT_LE(Miss(pose.TransformVec(p), Affine(one).linear() * Vector(p)), kShiftError + identError) << i;
    ASSERT_LE(Miss(p * pose, Affine(one).linear().transpose() * Vector(p)), kShiftError) << i;
    pose.Invert();
    ASSERT_LE(Miss(pose, Affine(one).inverse()), kShiftError + identError) << i;
  }
}

TEST(PoseAlgebraOracle, AffineInversesAndDeterminants) {
  TRandomPoses random(54);
  int inverted = 0;
  for (int i = 0; i < kCases; ++i) {
    TMatrix4D matrix = TMatrix4D::Create(random.Point(2), random.Point(2), random.Point(2), random.Point(100));
    Eigen::Affine3d expected = Eigen::Affine3d::Identity();
    for (int r = 0; r < 3; ++r) {
      for (int c = 0; c < 4; ++c) expected(r, c) = matrix.fm[static_cast<std::size_t>(r)][static_cast<std::size_t>(c)];
    }
    const double determinant = expected.linear().determinant();
    ASSERT_NEAR(matrix.Determinant(), determinant, 1e-13) << i;
    if (std::fabs(determinant) < 1e-2) continue;
    matrix.Invert();
    ASSERT_LE(Miss(matrix, expected.inverse()), 1e-8) << i;
    ++inverted;
  }
  EXPECT_GT(inverted, kCases * 9 / 10);
}

TEST(PoseAlgebraOracle, LogarithmsAndExponentials) {
  TRandomPoses random(55);
  for (int i = 0; i < kCases; ++i) {
    const TCase one = AnyCase(random);
    const TPoint3D half = one.Axis * (one.Angle / 2);
    const TQuaternion q = Own(Quaternion(one));
    const double s = std::fabs(std::sin(one.Angle / 2));
    // Vectors up to 1e-6 are taken for zero.
    ASSERT_LE((q.Log() - half).Mag(), s <= 1.001e-6 ? 1.001e-6 : kTurnError + 4e-16 / s) << i;
    TQuaternion exponential;
    exponential.Exp(half);
    ASSERT_LE((exponential - q).NormMag(), half.Mag() <= 1.001e-6 ? 1.001e-6 : kTurnError) << i;
  }
}

TEST(PoseAlgebraOracle, EulerAngles) {
  using Eigen::AngleAxisd;
  using Eigen::Vector3d;
  TRandomPoses random(56);
  for (int i = 0; i < kCases; ++i) {
    const TPoint6D p = TPoint6D::Create(1, 2, 3, AnyAngleOf(random), AnyAngleOf(random), AnyAngleOf(random));
    const AngleAxisd x(p.A, Vector3d::UnitX());
    const AngleAxisd y(p.B, Vector3d::UnitY());
    const AngleAxisd z(p.C, Vector3d::UnitZ());
    const Eigen::Translation3d shift(1, 2, 3);
    const double lockError = std::fabs(std::cos(p.B)) <= 1.001e-6 ? 2e-6 : 0.0;
    TMatrix4D matrix;
    matrix.CreateFromEulerAngleXYZ(p);
    ASSERT_LE(Miss(matrix, shift * (x * y * z)), kTurnError) << i;
    matrix.CreateFromEulerAngleXYZ(matrix.Matrix4DToEulerAngleXYZ());
    ASSERT_LE(Miss(matrix, shift * (x * y * z)), 2 * kTurnError + lockError) << i;
    matrix.CreateFromEulerAngleZYX(p);
    ASSERT_LE(Miss(matrix, shift * (z * y * x)), kTurnError) << i;
    matrix.CreateFromEulerAngleZYX(matrix.Matrix4DToEulerAngleZYX());
    ASSERT_LE(Miss(matrix, shift * (z * y * x)), 2 * kTurnError + lockError) << i;
  }
}

TEST(PoseAlgebraOracle, AnglesBetweenOrientations) {
  TRandomPoses random(57);
  for (int i = 0; i < kCases; ++i) {
    const TCase one = AnyCase(random);
    const TCase other = AnyCase(random);
    const double angle = Quaternion(one).angularDistance(Quaternion(other));
    const double arc = QuaternionAngle(Own(Quaternion(one)), Own(Quaternion(other)));
    ASSERT_NEAR(arc, angle / 2, kTurnError + ArcCosError(angle / 2)) << i;
    const TMatrix4D a = At(Pose(one), random.Point(100));
    const TMatrix4D b = Pose(other);
    const double identError = b.isIdent() ? 2e-6 : 0.0;
    ASSERT_NEAR(MatrixAngle(a, b), angle, kTurnError + 2 * ArcCosError(angle / 2) + identError) << i;
  }
}

TEST(PoseAlgebraOracle, Blends) {
  TRandomPoses random(58);
  for (int i = 0; i < kCases; ++i) {
    const TCase one = AnyCase(random);
    const TCase other = AnyCase(random);
    const Eigen::Quaterniond p = Quaternion(one);
    const Eigen::Quaterniond q = Quaternion(other);
    if (std::fabs(p.dot(q)) < 1e-9) continue;  // at right angles either way round is the short one
    const double t = random.Number(0, 1);
    const TQuaternion blend = SLerpQuaternion(t, Own(p), Own(q));
    ASSERT_LE(Miss(blend, p.slerp(t, q)), 2 * kTurnError) << i;
    const Eigen::Vector4d end = p.dot(q) < 0 ? Eigen::Vector4d(-q.coeffs()) : q.coeffs();
    const Eigen::Quaterniond chord(Eigen::Vector4d((p.coeffs() * (1 - t) + end * t).normalized()));
    ASSERT_LE(Miss(NLerpQuaternion(t, Own(p), Own(q)), chord), kTurnError) << i;
    const Eigen::Translation3d shift(Vector(one.Shift) * (1 - t) + Vector(other.Shift) * t);
    ASSERT_LE(Miss(SLerp4DMatrix(t, Pose(one), Pose(other)), shift * p.slerp(t, q)), kShiftError) << i;
    ASSERT_LE(Miss(NLerp4DMatrix(t, Pose(one), Pose(other)), shift * chord), kShiftError) << i;
  }
}

}  // namespace
}  // namespace ZORBase
