#include "Corpus.h"
#include "support/PortableRandom.h"

namespace ZORBase::Test {
namespace {

constexpr int kPointCases = 500;
constexpr double kPointSize = 1000.0;

TPointXD AnyPointXD(TPortableRandom& Random, std::size_t Dimension) {
  return TPointXD::FromSpan(Random.Numbers(Dimension, kPointSize));
}

void AddSmallPoints(TCorpus& Corpus) {
  Corpus.Exact("TPoint2D, TPoint3D: sums, products, lengths", [](TResults& Result) {
    TPortableRandom random(201);
    for (int i = 0; i < kPointCases; ++i) {
      const TPoint2D p = random.Point2D(kPointSize), q = random.Point2D(kPointSize);
      const TPoint3D a = random.Point3D(kPointSize), b = random.Point3D(kPointSize);
      const double s = random.Signed(3.0);
      Result(p + q, p - q, p * s, p / s, p.DotMul(q), p.Mag(), p.Normal());
      Result(a + b, a - b, a * s, a / s, a.DotMul(b), a.CrossMul(b), a.Mag(), a.Normal(), a.DistanceXY(b));
    }
  });
  Corpus.Inherited("TPoint2D, TPoint3D, TPointXD: AngleBetween", [](TResults& Result) {
    TPortableRandom random(202);
    for (int i = 0; i < kPointCases; ++i) {
      const TPoint2D p = random.Point2D(kPointSize), q = random.Point2D(kPointSize);
      const TPoint3D a = random.Point3D(kPointSize), b = random.Point3D(kPointSize);
      const TPointXD x = AnyPointXD(random, 7), y = AnyPointXD(random, 7);
      Result(p.AngleBetween(q), a.AngleBetween(b), x.AngleBetween(y));
    }
  });
}

void AddPoses(TCorpus& Corpus) {
  Corpus.Exact("TPoint6D: sums and products", [](TResults& Result) {
    TPortableRandom random(203);
    for (int i = 0; i < 4 * kPointCases; ++i) {
      const TPoint6D p = random.Point6D(kPointSize), q = random.Point6D(1.0);
      const double s = random.Signed(3.0);
      Result(p + q, p - q, p * s, p / s, p.DotVecMul(q), p.DotVecDiv(q));
    }
  });
  Corpus.Exact("TPoint6D: dot products, lengths, normals", [](TResults& Result) {
    TPortableRandom random(204);
    for (int i = 0; i < 4 * kPointCases; ++i) {
      const TPoint6D p = random.Point6D(kPointSize), q = random.Point6D(1.0);
      Result(p.DotMul(q), p.MagSqr(), p.Mag(), p.Normal(), p.VecNormal(), p.ShadowLengthOnVec(q));
    }
  });
  Corpus.Exact("TPoint6D: RestrainRange", [](TResults& Result) {
    TPortableRandom random(207);
    for (int i = 0; i < kPointCases; ++i) {
      TPoint6D p = random.Point6D(3.0);
      const TPoint6D low = random.Point6D(2.0);
      p.RestrainRange(low, random.Point6D(2.0));  // half of the limits are the wrong way round
      Result(p);
    }
  });
  Corpus.Exact("TPoint6D, TEulerPoint: text and back", [](TResults& Result) {
    TPortableRandom random(205);
    for (int i = 0; i < kPointCases; ++i) {
      const TPoint6D p = random.Point6D(kPointSize);
      const std::string text = p.ToString1033(i % 13);
      Result(text, TPoint6D::Parse1033(text), TEulerPoint::Parse1033(text).ToString1033(7));
    }
  });
  Corpus.Exact("TPointXD: sums, products, lengths", [](TResults& Result) {
    TPortableRandom random(206);
    for (int i = 0; i < kPointCases; ++i) {
      const TPointXD p = AnyPointXD(random, 1 + static_cast<std::size_t>(i) % 44);
      const TPointXD q = AnyPointXD(random, 44 - static_cast<std::size_t>(i) % 44);
      const double s = random.Signed(3.0);
      Result(p + q, p - q, p * q, p * s, p / s, p.DotMul(q), p.MagSqr(), p.Mag(), p.DistanceTo(q), p.Normal());
    }
  });
  Corpus.Exact("TPointXD: Abs, ExtMax, ExtMin", [](TResults& Result) {
    TPortableRandom random(208);
    for (int i = 0; i < kPointCases; ++i) {
      const TPointXD p = AnyPointXD(random, 1 + static_cast<std::size_t>(i) % 44);
      const TPointXD q = AnyPointXD(random, 44 - static_cast<std::size_t>(i) % 44);
      Result(TPointXD::Abs(p), p.ExtMax(q), p.ExtMin(q));
    }
  });
}

}  // namespace

void AddPoints(TCorpus& Corpus) {
  AddSmallPoints(Corpus);
  AddPoses(Corpus);
}

}  // namespace ZORBase::Test
