// KernelVariants: the kernels compiled for one instruction set each, so that a machine can compare them. What the library itself
// chooses depends on the machine it starts on.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace ZORBase::Test {

using TNumbers = std::span<const double>;
using TVector = std::vector<double>;

/// Points are given one after the other, matrices row by row.
struct TKernels {
  const char* Name;
  TVector (*MovePoints)(TNumbers Matrix3x4, TNumbers Points);
  TVector (*TurnVectors)(TNumbers Matrix3x4, TNumbers Vectors);
  double (*WeightedSum)(TNumbers Weights, TNumbers Values);
  double (*PlainSum)(TNumbers Values);
  TVector (*WeightedSums)(TNumbers Weights, TNumbers Values);  ///< of Weights.size() values from every place on
  TVector (*PlainSums)(int Count, TNumbers Values);
  TVector (*BezierSpeeds)(TNumbers Rows4x44, int Coordinates, TNumbers Params16);
  TVector (*BiharmonicMatrix)(TNumbers X, TNumbers Y);
  double (*BiharmonicHeight)(TNumbers X, TNumbers Y, TNumbers Weights, double AtX, double AtY);
  TVector (*BiharmonicHeights)(TNumbers X, TNumbers Y, TNumbers Weights, TNumbers At);
  TVector (*TransformReal)(TNumbers Samples);  ///< real and imaginary parts in turn
  TVector (*BasisValues)(const double* U,
                         TNumbers Params);  ///< four values for each of up to 64 parameters behind U[0]
  /// Poses and distances of the samples, 7 numbers each, from the basis values and the four control points; the point before the
  /// first sample is the first control point.
  TVector (*SamplePoses)(TNumbers Points4, TNumbers Basis);
};

/// The instruction set that every machine has.
const TKernels& BaselineKernels();
/// AVX2; none where this machine or this compiler has no clones for it.
const TKernels* Avx2Kernels();

/// The kernels that work in extended precision by lanes, which have no other form. Each gives nothing where it cannot vouch for
/// the result.
struct TLaneKernels {
  bool AreThere;
  TVector (*Sums)(TNumbers A, TNumbers B);
  TVector (*Differences)(TNumbers A, TNumbers B);
  TVector (*Products)(TNumbers A, TNumbers B);
  bool (*AreForLanes)(TNumbers Poses);
  TVector (*Pose)(const double* U, double u, TNumbers Points4);
  TVector (*Derivatives)(const double* U, double u, TNumbers Points4);
  TVector (*SamplePoses)(TNumbers Points4, TNumbers Basis);
  TVector (*SolvePoses)(TNumbers Q, TNumbers U, TNumbers P);
  bool (*SolveWithoutNumbers)(std::size_t Last);  ///< for those that are refused at sight
};

const TLaneKernels& LaneKernels();

}  // namespace ZORBase::Test
