// Subjects: what is measured. A subject adds its rows to the table: against the reference sets, and against laws in extended
// precision where a million cases are wanted.
#pragma once

#include <ZORBase/ZORBase.h>

#include <cstddef>
#include <string>
#include <vector>

#include "ErrorTable.h"
#include "ReferenceSet.h"
#include "support/Numbers.h"

namespace ZORBase::Test {

using TCase = const TReferenceCase&;

/// How much is measured: everything, or as much as an ordinary test has the time for.
enum class TEffort { Full, Quick };

/// The table, what results are held against, and how much is done.
struct TMeasurement {
  TErrorTable& Table;
  const TReferenceSets& References;
  TEffort Effort;

  /// Adds a row of an operation against its references. Rows of several operations of one kind have the same name up to a comma.
  void Compare(const std::string& Operation, TMeasure Measure, double Limit, const TOperation& Function,
               const std::string& Remark = {}) const;
  /// The number of random cases.
  int Cases(int Full, int Quick) const { return Effort == TEffort::Full ? Full : Quick; }
};

void MeasureNumbers(const TMeasurement& Measurement);
void MeasurePoints(const TMeasurement& Measurement);
void MeasureTransforms(const TMeasurement& Measurement);
void MeasureOrientations(const TMeasurement& Measurement);
void MeasureRoundTrips(const TMeasurement& Measurement);
void MeasureCurves(const TMeasurement& Measurement);
void MeasureLengths(const TMeasurement& Measurement);
void MeasureSegments(const TMeasurement& Measurement);
void MeasureDecompositions(const TMeasurement& Measurement);
void MeasureFits(const TMeasurement& Measurement);
void MeasureNewton(const TMeasurement& Measurement);
void MeasureInterpolators(const TMeasurement& Measurement);
void MeasureSignals(const TMeasurement& Measurement);

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
std::vector<double> Components(const TMatrix3D& M);
/// The nine numbers of the rotation.
std::vector<double> Rotation(const TMatrix4D& M);

}  // namespace ZORBase::Test
