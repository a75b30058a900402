// PlainCurveXD: the Bezier segment and the two-derivative curve step by step, nothing skipped or vectorised. Of the library it has
// the points with their operators, and the quadrature.
//   TPlainBezXD      one segment
//   TPlainCurveXD    the curve, with any number of correction steps
// Both are slow on purpose: lengths are measured node by node and afresh for each trial, every segment of the correction is
// measured although only its curvature is needed, and curvature sums run over each pair of coordinates.
#pragma once

#include <ZORBase/ZORGeometry/CADTypesXD/TPointXD.h>
#include <ZORBase/common/BaseServices/TList.h>
#include <ZORBase/common/Cadtypes/TNumeric.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

namespace ZORBase::Test {

/// B(t) = s^3 P0 + 3 s^2 t P1 + 3 s t^2 P2 + t^3 P3 with s = 1 - t.
struct TPlainBezXD {
  TPointXD P0, P1, P2, P3;
  double Length = 0.0;

  static TPlainBezXD Create(const TPointXD& P0, const TPointXD& P1, const TPointXD& P2, const TPointXD& P3) {
    TPlainBezXD segment{P0, P1, P2, P3};
    segment.Length = segment.LengthOfParam(0, 1);
    return segment;
  }

  static double Clamped(double t) { return t <= 0 ? 0.0 : t >= 1 ? 1.0 : t; }

  TPointXD PointFormula(double t) const {
    const double s = 1 - t;
    return P0 * (s * s * s) + P1 * 3 * (s * s) * t + P2 * 3 * s * (t * t) + P3 * (t * t * t);
  }

  TPointXD EvalPoint(double t) const {
    if (t <= 0 || std::isnan(t)) return P0;
    if (t >= 1) return P3;
    return PointFormula(t);
  }

  TPointXD EvalDeriv(double Param) const {
    const double t = Clamped(Param);
    const double s = 1 - t;
    return (P1 - P0) * (3 * s * s) + (P2 - P1) * (6 * t * s) + (P3 - P2) * (3 * t * t);
  }

  TPointXD EvalDeriv2(double Param) const {
    const double t = Clamped(Param);
    const double s = 1 - t;
    return 6 * (s * ((P0 + P2) - P1 - P1) + t * ((P1 + P3) - P2 - P2));
  }

  TPointXD EvalPoint(double Param, TPointXD& D1, TPointXD& D2, TPointXD& D3) const {
    const double t = Clamped(Param);
    D1 = EvalDeriv(t);
    D2 = EvalDeriv2(t);
    D3 = 6 * (P3 - 3 * P2 + 3 * P1 - P0);
    return PointFormula(t);
  }

  double GaussLengthFunc(double t) const {
    double sum = 0;
    for (std::size_t i = 0; i < P0.Coordinates().size(); ++i) {
      const double a = P0.Items[i];
      const double b = P1.Items[i];
      const double c = P2.Items[i];
      const double d = P3.Items[i];
      const double derivative = t * (t * (-3 * a + 9 * b - 9 * c + 3 * d) + 6 * a - 12 * b + 6 * c) - 3 * a + 3 * b;
      sum += derivative * derivative;
    }
    return std::sqrt(sum);
  }

  double LengthOfParam(double t0, double t1) const {
    if (t0 < 0) t0 = 0;
    if (t1 > 1) t1 = 1;
    if (t0 >= t1) return 0;
    return TNumeric::GaussQuadrature([this](double t) { return GaussLengthFunc(t); }, TGeInterval::Create(t0, t1, 1e-6),
                                     14);
  }

  double ParamOfLength(double Len) const {
    double t = 1;
    double length = LengthOfParam(0, 1);
    if (length <= Len) return 1;
    double step = 1;
    while (std::fabs(length - Len) >= 1e-4) {
      step = step * 0.5;
      if (step < 1e-6) break;
      if (length >= Len) {
        t = t - step;
      } else {
        t = t + step;
      }
      length = LengthOfParam(0, t);
    }
    return t;
  }
};

/// The curve: chords, weights, tangents, correction steps and segments.
class TPlainCurveXD {
 public:
  static constexpr int kSteps = 4;

  explicit TPlainCurveXD(const TList<TPointXD>& Points) : Q(Points.begin(), Points.end()) {}

  /// \return the segments after a number of correction steps.
  std::vector<TPlainBezXD> Segments(int Steps = kSteps) {
    InitialThs();
    UpDateDeriv();
    for (int k = 0; k < Steps; ++k) {
      IterDumb();
      UpDateDeriv();
    }
    std::vector<TPlainBezXD> segments;
    for (std::size_t i = 0; i + 1 < Q.size(); ++i) segments.push_back(CreateBez(GetThs(i)));
    return segments;
  }

  const std::vector<double>& Weights() const { return w; }
  const std::vector<TPointXD>& Tangents() const { return T; }

 private:
  struct TChord {
    double len;
    TPointXD vec;
  };
  struct TSpan {
    TPointXD th0, th1;
    TChord line;
    TPointXD p1, p2;
  };

  static double Clamped(double Value, double Low, double High) { return std::min(std::max(Value, Low), High); }

  TChord ChordFrom(std::size_t j) const {
    const TPointXD d = Q[j + 1] - Q[j];
    const double length = std::sqrt(d.MagSqr());
    return {length, d / length};
  }

  void InitialThs() {
    chords = {ChordFrom(0)};
    w.clear();
    for (std::size_t j = 1; j + 1 < Q.size(); ++j) {
      const TChord chord = ChordFrom(j);
      w.push_back(chord.len / (chords[j - 1].len + chord.len));
      chords.push_back(chord);
    }
  }

  TPointXD InnerTangent(std::size_t j, double Weight) const {
    return (Weight * chords[j].vec + (1 - Weight) * chords[j + 1].vec).Normal();
  }
  TPointXD StartTangent(double Weight, const TPointXD& S) const {
    return (chords.front().vec - Weight * S).Normal().Normal();
  }
  TPointXD EndTangent(double Weight, const TPointXD& S) const {
    return (chords.back().vec - (1 - Weight) * S).Normal().Normal();
  }

  void UpDateDeriv() {
    T.clear();
    for (std::size_t j = 0; j < w.size(); ++j) {
      const TPointXD S = InnerTangent(j, w[j]);
      if (j == 0) T.push_back(StartTangent(w[j], S));
      T.push_back(S);
      if (j == w.size() - 1) T.push_back(EndTangent(w[j], S));
    }
  }

  TSpan GetThs(std::size_t i) const { return {T[i], T[i + 1], chords[i], Q[i], Q[i + 1]}; }

  static double HandleFactor(double a, double b) {
    const double z = a - 0.3 * std::sin(2 * b - 0.4 * std::sin(2 * b));
    return 0.417 * std::fabs(std::cos(z) - 0.2 * std::cos(3 * z));
  }

  static TPlainBezXD CreateBez(const TSpan& Info) {
    const double alpha0 = std::acos(Clamped(Info.th0.DotMul(Info.line.vec), -1, 1));
    const double alpha1 = std::acos(Clamped(Info.th1.DotMul(Info.line.vec), -1, 1));
    const double f0 = HandleFactor(alpha0, alpha1) * Info.line.len;
    const double f1 = HandleFactor(alpha1, alpha0) * Info.line.len;
    return TPlainBezXD::Create(Info.p1, Info.p1 + f0 * Info.th0, Info.p2 - f1 * Info.th1, Info.p2);
  }

  static void TangentCurvature(TPointXD D1, const TPointXD& D2, TPointXD& Tangent, TPointXD& K) {
    K = TPointXD::Create(D1.FDimension);
    Tangent = K;
    double m = D1.Mag();
    if (m < 1e-12) {
      if (D2.Mag() < 1e-12) return;
      D1 = D2;
      m = D2.Mag();
    }
    const double p = std::pow(m, 4.0);
    Tangent = D1 * (1 / m);
    const std::size_t count = D1.Coordinates().size();
    for (std::size_t i = 0; i < count; ++i) {
      double sum = 0;
      for (std::size_t j = 0; j < count; ++j) {
        if (j != i) sum += (D2.Items[i] * D1.Items[j] - D1.Items[i] * D2.Items[j]) * D1.Items[j];
      }
      K.Items[i] = sum / p;
    }
  }

  static double JointCurvError(const TSpan& A, const TSpan& B) {
    const TPlainBezXD before = CreateBez(A);
    const TPlainBezXD after = CreateBez(B);
    TPointXD tangent, K1, K2;
    TangentCurvature(before.EvalDeriv(1), before.EvalDeriv2(1), tangent, K1);
    TangentCurvature(after.EvalDeriv(0), after.EvalDeriv2(0), tangent, K2);
    const double kappa1 = K1.Mag();
    const double kappa2 = K2.Mag();
    return SafeDivXD(std::fabs(kappa1 - kappa2), std::max(kappa1, kappa2), 1e-12);
  }

  void TryWeight(std::size_t j, TSpan& A, TSpan& B, double Trial) const {
    const double weight = Clamped(Trial, 0, 1);
    const TPointXD S = InnerTangent(j, weight);
    A.th1 = S;
    B.th0 = S;
    if (j == 0) A.th0 = StartTangent(weight, S);
    if (j == w.size() - 1) B.th1 = EndTangent(weight, S);
  }

  void IterDumb() {
    std::vector<double> g;
    for (std::size_t j = 0; j < w.size(); ++j) {
      TSpan A = GetThs(j);
      TSpan B = GetThs(j + 1);
      const double e0 = JointCurvError(A, B);
      TryWeight(j, A, B, w[j] + 0.001);
      const double e1 = JointCurvError(A, B);
      g.push_back(-SafeDivXD(e0, e1 - e0, 1e-12) * 0.001);
    }
    for (std::size_t j = 0; j < w.size(); ++j) w[j] = Clamped(w[j] + 0.6 * g[j], 0, 1);
  }

  std::vector<TPointXD> Q;
  std::vector<TChord> chords;
  std::vector<double> w;
  std::vector<TPointXD> T;
};

}  // namespace ZORBase::Test
