// Subjects: what is measured. A subject adds its rows to the table: against the reference sets, and against laws in extended
// precision where a million cases are wanted.
#pragma once

#include <ZORBase/ZORBase.h>

#include <cstddef>
#include <initializer_list>
#include <span>
#include <string>
#include <vector>

#include "ErrorTable.h"
#include "ReferenceSet.h"
#include "support/Numbers.h"

namespace ZORBase::Test {

class TPortableRandom;

using TCase = const TReferenceCase&;

/// How much is measured: everything, or as much as an ordinary test has the time for.
enum class TEffort { Full, Quick };

/// The table, what results are held against, and how much is done.
struct TMeasurement {
  TErrorTable& Table;
  const TReferenceSets& References;
  TEffort Effort;

  /// Adds a row of an operation against its references. Rows of several operations of one kind have the same name up to a comma.
  void Compare(const std::string& Operation, TMeasure Measure, TBound Bound, const TOperation& Function,
               const std::string& Remark = {}) const;
  /// The same for an operation that has the references of another one.
  void CompareAs(const std::string& Operation, const std::string& Other, TMeasure Measure, TBound Bound,
                 const TOperation& Function, const std::string& Remark = {}) const;
  /// The same for operations that share a row and its references.
  void CompareAll(const std::string& Operations, const std::string& Other, TMeasure Measure, TBound Bound,
                  std::initializer_list<TOperation> Functions, const std::string& Remark = {}) const;
  /// The number of random cases.
  int Cases(int Full, int Quick) const { return Effort == TEffort::Full ? Full : Quick; }
};

void MeasureNumbers(const TMeasurement& Measurement);
void MeasurePoints(const TMeasurement& Measurement);
void MeasureComponents(const TMeasurement& Measurement);
void MeasureTransforms(const TMeasurement& Measurement);
void MeasureOrientations(const TMeasurement& Measurement);
void MeasureRoundTrips(const TMeasurement& Measurement);
void MeasureCurves(const TMeasurement& Measurement);
void MeasureCurveParts(const TMeasurement& Measurement);
void MeasureLengths(const TMeasurement& Measurement);
void MeasureSegments(const TMeasurement& Measurement);
void MeasureDecompositions(const TMeasurement& Measurement);
void MeasureFits(const TMeasurement& Measurement);
void MeasureNewton(const TMeasurement& Measurement);
void MeasureInterpolators(const TMeasurement& Measurement);
void MeasureSignals(const TMeasurement& Measurement);

/// The name of the input with a number, counted from 0, among those that a generator draws from its seed.
std::string Drawn(const std::string& Kind, int Number, int Seed);

/// The parts of a case's input, as what they stand for, from a place on.
TPoint2D PointIn(const std::vector<double>& In, std::size_t From);
TPoint3D SpacePointIn(const std::vector<double>& In, std::size_t From);
TPoint6D PoseIn(const std::vector<double>& In, std::size_t From);
TQuaternion QuaternionIn(const std::vector<double>& In, std::size_t From);
TMatrix4D MatrixIn(const std::vector<double>& In, std::size_t From);

/// The components of a result.
std::vector<double> Components(const TPoint2D& P);
std::vector<double> Components(const TPoint3D& P);
std::vector<double> Components(const TPoint6D& P);
std::vector<double> Components(const TPointXD& P);
std::vector<double> Components(const TQuaternion& Q);
std::vector<double> Components(const TEulerAng& A);
std::vector<double> Components(const TComplex& Z);
std::vector<double> Components(const TMatrix3D& M);
std::vector<double> Components(const TMatrix4D& M);
std::vector<double> Components(const TLine3D& L);
template <class TPoint>
std::vector<double> Components(std::span<const TPoint> Points) {
  std::vector<double> all;
  for (const TPoint& point : Points) {
    for (const double item : Components(point)) all.push_back(item);
  }
  return all;
}
/// The nine numbers of the rotation.
std::vector<double> Rotation(const TMatrix4D& M);

/// The largest magnitude of the numbers, and the largest difference of A and B in one place.
double LargestOf(const std::vector<double>& Numbers);
double FarthestApart(const std::vector<double>& A, const std::vector<double>& B);

/// A path that wanders in steps of 0.3 to 1.3, anywhere in space.
TPoint6DList Wander(TPortableRandom& Random);

}  // namespace ZORBase::Test
