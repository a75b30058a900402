#include "Subjects.h"

#include <array>
#include <cmath>

#include "support/PortableRandom.h"

namespace ZORBase::Test {
namespace {

std::string UnitName(TMeasure Measure) {
  switch (Measure) {
    case TMeasure::Ulp: return "ulp";
    case TMeasure::Eps: return "eps";
    case TMeasure::Relative: return "relative";
    default: return "absolute";
  }
}

}  // namespace

void TMeasurement::Compare(const std::string& Operation, TMeasure Measure, TBound Bound, const TOperation& Function,
                           const std::string& Remark) const {
  CompareAs(Operation, Operation, Measure, Bound, Function, Remark);
}

void TMeasurement::CompareAs(const std::string& Operation, const std::string& Other, TMeasure Measure, TBound Bound,
                             const TOperation& Function, const std::string& Remark) const {
  CompareAll(Operation, Other, Measure, Bound, {Function}, Remark);
}

void TMeasurement::CompareAll(const std::string& Operations, const std::string& Other, TMeasure Measure, TBound Bound,
                              std::initializer_list<TOperation> Functions, const std::string& Remark) const {
  TErrorRow& row = Table.Row({Operations, UnitName(Measure), Remark}, Bound);
  for (const TReferenceCase& item : References.Of(Other)) {
    for (const TOperation& function : Functions) row.Add(ErrorOf(function(item), item, Measure), item.Name);
  }
}

std::string Drawn(const std::string& Kind, int Number, int Seed) {
  return Kind + " " + std::to_string(Number) + " of seed " + std::to_string(Seed);
}

TPoint2D PointIn(const std::vector<double>& In, std::size_t From) { return {In.at(From), In.at(From + 1)}; }

TPoint3D SpacePointIn(const std::vector<double>& In, std::size_t From) {
  return TPoint3D::Create(In.at(From), In.at(From + 1), In.at(From + 2));
}

TPoint6D PoseIn(const std::vector<double>& In, std::size_t From) {
  return TPoint6D::Create(SpacePointIn(In, From), SpacePointIn(In, From + 3));
}

TQuaternion QuaternionIn(const std::vector<double>& In, std::size_t From) {
  return TQuaternion::Create(In.at(From), SpacePointIn(In, From + 1));
}

TMatrix4D MatrixIn(const std::vector<double>& In, std::size_t From) {
  TMatrix4D matrix;
  for (auto& row : matrix.fm) {
    for (double& entry : row) entry = In.at(From++);
  }
  return matrix;
}

std::vector<double> Components(const TPoint2D& P) { return {P.X, P.Y}; }
std::vector<double> Components(const TPoint3D& P) { return {P.X, P.Y, P.Z}; }
std::vector<double> Components(const TPoint6D& P) { return {P.X, P.Y, P.Z, P.A, P.B, P.C}; }
std::vector<double> Components(const TPointXD& P) { return {P.Coordinates().begin(), P.Coordinates().end()}; }
std::vector<double> Components(const TQuaternion& Q) { return {Q.a, Q.b, Q.c, Q.d}; }
std::vector<double> Components(const TEulerAng& A) { return {A.Rx, A.Ry, A.Rz}; }
std::vector<double> Components(const TComplex& Z) { return {Z.real, Z.imag}; }

std::vector<double> Components(const TMatrix3D& M) {
  std::vector<double> entries;
  for (const auto& row : M.fm) entries.insert(entries.end(), row.begin(), row.end());
  return entries;
}

std::vector<double> Components(const TMatrix4D& M) {
  std::vector<double> entries;
  for (const auto& row : M.fm) entries.insert(entries.end(), row.begin(), row.end());
  return entries;
}

std::vector<double> Components(const TLine3D& L) { return Components<TPoint3D>(std::array{L.StartPt, L.EndPt}); }

std::vector<double> Rotation(const TMatrix4D& M) {
  std::vector<double> entries;
  for (const auto& row : M.fm) entries.insert(entries.end(), row.begin(), row.begin() + 3);
  return entries;
}

double LargestOf(const std::vector<double>& Numbers) {
  double largest = 0.0;
  for (const double number : Numbers) largest = Worse(largest, std::fabs(number));
  return largest;
}

double FarthestApart(const std::vector<double>& A, const std::vector<double>& B) {
  double farthest = 0.0;
  for (std::size_t i = 0; i < A.size(); ++i) farthest = Worse(farthest, std::fabs(A[i] - B[i]));
  return farthest;
}

TPoint6DList Wander(TPortableRandom& Random) {
  TPoint6DList path;
  const int count = 4 + Random.Below(57);
  TPoint6D at = Random.Point6D(200.0);
  TPoint6D heading = Random.Point6D(1.0);
  for (int i = 0; i < count; ++i) {
    path.Add(at);
    heading = (heading + Random.Point6D(0.7)).Normal();
    at = at + heading * Random.Within(0.3, 1.3);
  }
  return path;
}

}  // namespace ZORBase::Test
