#include "Corpus.h"
#include "support/PortableRandom.h"

namespace ZORBase::Test {
namespace {

constexpr int kTurnCases = 300;
constexpr double kTurnSize = 500.0;

// Not a rotation.
TMatrix4D AnyAffine(TPortableRandom& Random) {
  TMatrix4D matrix;
  for (auto& row : matrix.fm) {
    for (double& entry : row) entry = Random.Signed(2.0);
  }
  return matrix;
}

void AddGivenMatrices(TCorpus& Corpus) {
  Corpus.Exact("TMatrix2D, TMatrix3D: Transform", [](TResults& Result) {
    TPortableRandom random(301);
    for (int i = 0; i < kTurnCases; ++i) {
      const std::vector<double> m = random.Numbers(9, 2.0);
      TMatrix3D matrix;
      matrix.fm = {{{m[0], m[1], m[2]}, {m[3], m[4], m[5]}, {m[6], m[7], m[8]}}};
      const TPoint3D p = random.Point3D(kTurnSize);
      Result(matrix.Transform(p), TMatrix2D::Create(m[0], m[1], m[2], m[3], m[4], m[5]).Transform(TPoint2D{p.X, p.Y}));
    }
  });
  Corpus.Exact("TMatrix4D: products, sums, inverse, determinant", [](TResults& Result) {
    TPortableRandom random(302);
    for (int i = 0; i < kTurnCases; ++i) {
      TMatrix4D a = AnyAffine(random), turn = random.Placement(kTurnSize);
      const TMatrix4D b = AnyAffine(random);
      Result(a * b, turn * a, a + b, a - b, a * 3.7, a.Determinant(), turn.Determinant(), a.RoundTo(-3));
      a.Invert();
      turn.Invert();
      Result(a, turn);
    }
  });
  Corpus.Exact("TMatrix4D: transforms of one and of many", [](TResults& Result) {
    TPortableRandom random(303);
    std::vector<TPoint3D> points(1003);
    for (TPoint3D& point : points) point = random.Point3D(kTurnSize);
    points[17].X = 2e10;
    points[500].Y = -2e10;
    std::vector<TPoint3D> moved(points.size());
    for (int i = 0; i < 5; ++i) {
      const TMatrix4D matrix = i % 2 == 0 ? AnyAffine(random) : random.Placement(kTurnSize);
      matrix.TransformPts(points, moved);
      for (const TPoint3D& point : moved) Result(point);
      matrix.TransformVecs(points, moved);
      for (const TPoint3D& point : moved) Result(point);
      const TPoint3D p = random.Point3D(kTurnSize);
      Result(matrix.TransformPt(p), matrix.TransformVec(p), p * matrix,
             matrix.TransformPose(random.Point6D(kTurnSize)));
    }
  });
  Corpus.Exact("TMatrix4D: lines, and poses by the row", [](TResults& Result) {
    TPortableRandom random(309);
    std::vector<TPoint6D> poses(103);
    for (TPoint6D& pose : poses) pose = random.Point6D(kTurnSize);
    poses[17].X = 2e10;
    poses[50].C = 2e10;
    std::vector<TPoint6D> moved(poses.size());
    for (int i = 0; i < 20; ++i) {
      const TMatrix4D matrix = i % 2 == 0 ? AnyAffine(random) : random.Placement(kTurnSize);
      matrix.TransformPoses(poses, moved);
      for (const TPoint6D& pose : moved) Result(pose);
      const TPoint3D start = random.Point3D(kTurnSize);
      const TLine3D line = matrix.TransformLine({start, random.Point3D(kTurnSize)});
      Result(line.StartPt, line.EndPt);
    }
  });
}

void AddTurns(TCorpus& Corpus) {
  Corpus.Inherited("TMatrix3D.RotateBy, TMatrix4D about an axis and from vector to vector", [](TResults& Result) {
    TPortableRandom random(304);
    TMatrix3D sum = TMatrix3D::CreateIdent();
    for (int i = 0; i < kTurnCases; ++i) {
      const TPoint3D axis = random.Point3D(kTurnSize);
      const double angle = random.Signed(7.0);
      sum.RotateBy(angle, axis);
      const TPoint3D from = random.Direction();
      Result(sum, TMatrix4D::Create(axis, angle), TMatrix4D::Create(from, random.Direction()));
    }
  });
  Corpus.Inherited("TMatrix4D: Euler angles in both orders, and back", [](TResults& Result) {
    TPortableRandom random(305);
    for (int i = 0; i < kTurnCases; ++i) {
      const TPoint6D pose = random.Point6D(4.0);
      TMatrix4D xyz, zyx;
      xyz.CreateFromEulerAngleXYZ(pose);
      zyx.CreateFromEulerAngleZYX(pose);
      const TMatrix4D given = random.Placement(kTurnSize);
      Result(xyz, zyx, given.Matrix4DToEulerAngleXYZ(), given.Matrix4DToEulerAngleZYX());
    }
  });
  Corpus.Inherited("TMatrix4D: angles about one axis and about two", [](TResults& Result) {
    TPortableRandom random(306);
    for (int i = 0; i < kTurnCases; ++i) {
      const TPoint3D axis = random.Direction(), other = random.Direction();
      const double angle = random.Signed(3.0);
      const TMatrix4D turn = TMatrix4D::Create(axis, angle);
      const TMatrix4D both = TMatrix4D::Create(other, random.Signed(3.0)) * turn;
      double one = 0, two = 0, alone = 0;
      const bool isSplit = both.Matrix4DToVecAng(axis, other, one, two);
      Result(turn.Matrix4DToVecAng(axis, alone), alone, isSplit, one, two);
    }
  });
  Corpus.Inherited("TMatrix4D.RoundTo to powers of ten above 1", [](TResults& Result) {
    TPortableRandom random(307);
    for (int i = 0; i < kTurnCases; ++i) Result((AnyAffine(random) * 1e5).RoundTo(i % 5));
  });
  Corpus.Inherited("TEulerAng: from axes, tool direction", [](TResults& Result) {
    TPortableRandom random(308);
    for (int i = 0; i < kTurnCases; ++i) {
      const TMatrix4D frame = random.Placement(kTurnSize);
      const TPoint3D angles = random.Point3D(4.0);
      Result(TEulerAng::CreatebyXYVec(frame.GetColVector(0), frame.GetColVector(1)));
      Result(TEulerAng::Create(angles.X, angles.Y, angles.Z).ToVector());
    }
  });
  Corpus.Exact("TEulerAng: sums, lengths, distances", [](TResults& Result) {
    TPortableRandom random(310);
    for (int i = 0; i < kTurnCases; ++i) {
      const TPoint3D a = random.Point3D(4.0), b = random.Point3D(4.0);
      const TEulerAng p = TEulerAng::Create(a.X, a.Y, a.Z), q = TEulerAng::Create(b.X, b.Y, b.Z);
      Result(p + q, p - q, p * 1.7, p / 1.7, p.Mag(), p.MagSqr(), p.DistanceTo(q));
    }
  });
  Corpus.Inherited("TEulerPoint: tool direction, ToPoint6D, of a list as well", [](TResults& Result) {
    TPortableRandom random(311);
    TEulerPointList poses;
    for (int i = 0; i < kTurnCases; ++i) poses.Add(TEulerPoint::FromArray(random.Point6D(4.0).ToArray()));
    for (const TEulerPoint& pose : poses) Result(pose.GetVector(), pose.ToPoint6D());
    for (const TPoint6D& pose : poses.ToPoint6DList()) Result(pose);
  });
}

// Blends two orientations and two placements at many parameters each.
template <class TBlendTurns, class TBlendPlaces>
void BlendMany(TResults& Result, std::uint64_t Seed, TBlendTurns BlendTurns, TBlendPlaces BlendPlaces) {
  TPortableRandom random(Seed);
  std::vector<double> t(101);
  for (double& parameter : t) parameter = random.Within(-0.1, 1.1);
  std::vector<TQuaternion> turns(t.size());
  std::vector<TMatrix4D> places(t.size());
  const TQuaternion p = random.Orientation(), q = random.Orientation();
  const TMatrix4D m = random.Placement(kTurnSize), n = random.Placement(kTurnSize);
  BlendTurns(t, p, q, turns);
  BlendPlaces(t, m, n, places);
  for (const TQuaternion& turn : turns) Result(turn);
  for (const TMatrix4D& place : places) Result(place);
}

}  // namespace

void AddTransforms(TCorpus& Corpus) {
  AddGivenMatrices(Corpus);
  AddTurns(Corpus);
}

void AddOrientations(TCorpus& Corpus) {
  Corpus.Exact("TQuaternion: products, inverse, matrix and back", [](TResults& Result) {
    TPortableRandom random(401);
    for (int i = 0; i < 2 * kTurnCases; ++i) {
      const TQuaternion p = random.Orientation(), q = random.Orientation();
      TQuaternion back;
      back.CreateFromMatrix4D(p.ToMatrix4D());
      Result(p * q, p + q, p.Inverse(), p / 1.7, p.NormMag(), p.DotMul(q), p.ToMatrix4D(), back);
    }
  });
  Corpus.Exact("NLerp of quaternions and matrices", [](TResults& Result) {
    TPortableRandom random(402);
    for (int i = 0; i < kTurnCases; ++i) {
      const TQuaternion p = random.Orientation(), q = random.Orientation();
      const TMatrix4D m = random.Placement(kTurnSize), n = random.Placement(kTurnSize);
      const double t = random.Unit();
      Result(NLerpQuaternion(t, p, q), NLerp4DMatrix(t, m, n));
    }
  });
  Corpus.Exact("NLerp of quaternions and matrices, many at a time",
               [](TResults& Result) { BlendMany(Result, 405, NLerpQuaternions, NLerp4DMatrices); });
  Corpus.Inherited("TQuaternion: Log, Exp; QuaternionAngle, MatrixAngle", [](TResults& Result) {
    TPortableRandom random(403);
    for (int i = 0; i < kTurnCases; ++i) {
      const TQuaternion p = random.Orientation(), q = random.Orientation();
      TQuaternion raised;
      raised.Exp(random.Point3D(3.0));
      Result(p.Log(), raised, QuaternionAngle(p, q), MatrixAngle(p.ToMatrix4D(), q.ToMatrix4D()));
    }
  });
  Corpus.Inherited("SLerp and Squad of quaternions and matrices", [](TResults& Result) {
    TPortableRandom random(404);
    for (int i = 0; i < kTurnCases; ++i) {
      const TQuaternion q0 = random.Orientation(), q1 = random.Orientation();
      const TQuaternion q2 = random.Orientation(), q3 = random.Orientation();
      const TMatrix4D m1 = random.Placement(kTurnSize), m2 = random.Placement(kTurnSize);
      const double t = random.Unit();
      Result(SLerpQuaternion(t, q1, q2), SquadQuaternion(t, q0, q1, q2, q3), SLerp4DMatrix(t, m1, m2));
      Result(Squad4DMatrix(t, q0.ToMatrix4D(), m1, m2, q3.ToMatrix4D()));
    }
  });
  Corpus.Inherited("SLerp of quaternions and matrices, many at a time",
                   [](TResults& Result) { BlendMany(Result, 406, SLerpQuaternions, SLerp4DMatrices); });
}

}  // namespace ZORBase::Test
