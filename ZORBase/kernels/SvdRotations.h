// SvdRotations (internal): plane rotations of neighbouring columns, written down first and applied many at a time.
//   TColumns       the columns of a matrix in blocks of eight rows
//   TRotationLog   sweeps of rotations that are still to be applied to them
#pragma once

#include <array>
#include <cstddef>

namespace ZORBase {

/// A matrix in blocks of eight rows, so that lanes lie across rows: row i of column j stands at
/// Items[(i / 8) BlockStride + j ColumnStride + i % 8]. Rows that fill the last block up are there and of no meaning.
struct TColumns {
  static constexpr std::size_t kBlock = 8;

  double* Items = nullptr;
  std::size_t Rows = 0;
  std::size_t ColumnStride = 0;
  std::size_t BlockStride = 0;

  std::size_t Blocks() const { return (Rows + kBlock - 1) / kBlock; }
  double* At(std::size_t i, std::size_t j) const {
    return Items + i / kBlock * BlockStride + j * ColumnStride + i % kBlock;
  }
};

/// (p, q) becomes (p C + q S, q C - p S), each product and sum rounded.
struct TRotation {
  double C;
  double S;
};

/// Rotations of the columns (First, First + 1), then (First + 1, First + 2), up to (End - 1, End).
struct TSweep {
  std::size_t First;
  std::size_t End;
  const TRotation* Rotations;
};

/// Sweeps of rotations. Few rows are rotated at once, in the shadow of the divisions and roots that the next rotation waits
/// for; many rows later. The result is that of one rotation after the other; they are applied block by block and several sweeps
/// at a time, staggered by a column each, so that a column comes from memory once for all of them.
class TRotationLog {
 public:
  /// Rotations worth keeping: as many as stay in the second-level cache beside a block.
  static constexpr std::size_t kMaxRotations = 16384;
  static constexpr std::size_t kMaxSweeps = 64;
  /// Up to here rows are rotated at once.
  static constexpr std::size_t kFewBlocks = 4;

  /// \return the rotations that a log for matrices of this many columns holds.
  static std::size_t Capacity(std::size_t Columns);

  /// \param Rotations  memory for Capacity(Columns) rotations.
  TRotationLog(const TColumns& Target, TRotation* Rotations, std::size_t Columns)
      : FTarget(Target),
        FRotations(Rotations),
        FCapacity(Capacity(Columns)),
        FIsAtOnce(Target.Blocks() <= kFewBlocks) {}

  /// Begins a sweep of Count rotations, the first of them of the columns (First, First + 1).
  void BeginSweep(std::size_t First, std::size_t Count);
  /// The next rotation of the sweep.
  void Add(double C, double S) {
    if (FIsAtOnce) {
      RotateNow(FNext, FNext + 1, {C, S});
      ++FNext;
    } else {
      FRotations[FCount++] = {C, S};
    }
  }

  /// Applies what is written down, and forgets it.
  void Apply();

  /// Applies what is written down and then one rotation of any two columns P and Q.
  void Rotate(std::size_t P, std::size_t Q, const TRotation& Rotation);

 private:
  void RotateNow(std::size_t P, std::size_t Q, const TRotation& Rotation) const;

  TColumns FTarget;
  TRotation* FRotations;
  std::size_t FCapacity;
  bool FIsAtOnce;
  std::size_t FNext = 0;  // the column of the next rotation that is made at once
  std::size_t FCount = 0;
  std::size_t FSweepCount = 0;
  std::array<TSweep, kMaxSweeps> FSweeps;
};

}  // namespace ZORBase
