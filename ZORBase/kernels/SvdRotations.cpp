#include <ZORBase/kernels/SvdRotations.h>

#include <ZORBase/kernels/Lanes.h>

#include <algorithm>

namespace ZORBase {
namespace {

// A column of a block.
struct TEight {
  TLanes A, B;
};

ZORBASE_INLINE TEight LoadEight(const double* From) { return {Load(From), Load(From + kLanes)}; }
ZORBASE_INLINE void StoreEight(double* To, const TEight& X) {
  Store(To, X.A);
  Store(To + kLanes, X.B);
}

// Q leaves as the column on the left, and P as the one on the right, which the next rotation takes.
ZORBASE_INLINE void RotateEight(TEight& P, TEight& Q, const TRotation& By) {
  const TLanes c = Splat(By.C);
  const TLanes s = Splat(By.S);
  const TEight left{P.A * c + Q.A * s, P.B * c + Q.B * s};
  P = {Q.A * c - P.A * s, Q.B * c - P.B * s};
  Q = left;
}

// The rotations of (First, First + 1) to (End - 1, End) of a sweep.
ZORBASE_INLINE void ApplyPart(double* Block, std::size_t Stride, const TSweep& Sweep, std::size_t First,
                              std::size_t End) {
  if (First >= End) return;
  const TRotation* rotation = Sweep.Rotations + (First - Sweep.First);
  TEight carried = LoadEight(Block + First * Stride);
  for (std::size_t j = First; j < End; ++j) {
    TEight column = LoadEight(Block + (j + 1) * Stride);
    RotateEight(carried, column, *rotation++);
    StoreEight(Block + j * Stride, column);
  }
  StoreEight(Block + End * Stride, carried);
}

// Four sweeps: where the first is at the columns (t, t + 1), the next one is at (t - 1, t), and so on. The ends, where not all
// of them take part, go one sweep after the other.
ZORBASE_INLINE void ApplyFour(double* Block, std::size_t Stride, const TSweep* Sweeps) {
  std::size_t begin = Sweeps[0].First;
  std::size_t end = Sweeps[0].End;
  for (std::size_t b = 1; b < 4; ++b) {
    begin = std::max(begin, Sweeps[b].First + b);
    end = std::min(end, Sweeps[b].End + b);
  }
  if (begin >= end) {
    for (std::size_t b = 0; b < 4; ++b) ApplyPart(Block, Stride, Sweeps[b], Sweeps[b].First, Sweeps[b].End);
    return;
  }
  for (std::size_t b = 0; b < 4; ++b) ApplyPart(Block, Stride, Sweeps[b], Sweeps[b].First, begin - b);
  const TRotation* const r0 = Sweeps[0].Rotations - Sweeps[0].First;
  const TRotation* const r1 = Sweeps[1].Rotations - Sweeps[1].First - 1;
  const TRotation* const r2 = Sweeps[2].Rotations - Sweeps[2].First - 2;
  const TRotation* const r3 = Sweeps[3].Rotations - Sweeps[3].First - 3;
  double* const at = Block + begin * Stride;
  TEight x0 = LoadEight(at);
  TEight x1 = LoadEight(at - Stride);
  TEight x2 = LoadEight(at - 2 * Stride);
  TEight x3 = LoadEight(at - 3 * Stride);
  for (std::size_t t = begin; t < end; ++t) {
    TEight column = LoadEight(Block + (t + 1) * Stride);
    RotateEight(x0, column, r0[t]);
    RotateEight(x1, column, r1[t]);
    RotateEight(x2, column, r2[t]);
    RotateEight(x3, column, r3[t]);
    StoreEight(Block + (t - 3) * Stride, column);
  }
  double* const last = Block + end * Stride;
  StoreEight(last, x0);
  StoreEight(last - Stride, x1);
  StoreEight(last - 2 * Stride, x2);
  StoreEight(last - 3 * Stride, x3);
  for (std::size_t b = 0; b < 4; ++b) ApplyPart(Block, Stride, Sweeps[b], end - b, Sweeps[b].End);
}

ZORBASE_TARGET_CLONES
void ApplySweeps(const TColumns& Target, const TSweep* Sweeps, std::size_t Count) {
  for (std::size_t p = 0; p < Target.Blocks(); ++p) {
    double* const block = Target.Items + p * Target.BlockStride;
    std::size_t s = 0;
    for (; s + 4 <= Count; s += 4) ApplyFour(block, Target.ColumnStride, Sweeps + s);
    for (; s < Count; ++s) ApplyPart(block, Target.ColumnStride, Sweeps[s], Sweeps[s].First, Sweeps[s].End);
  }
}

ZORBASE_TARGET_CLONES
void RotateColumns(const TColumns& Target, std::size_t P, std::size_t Q, const TRotation& Rotation) {
  for (std::size_t b = 0; b < Target.Blocks(); ++b) {
    double* const block = Target.Items + b * Target.BlockStride;
    TEight p = LoadEight(block + P * Target.ColumnStride);
    TEight q = LoadEight(block + Q * Target.ColumnStride);
    RotateEight(p, q, Rotation);
    StoreEight(block + P * Target.ColumnStride, q);
    StoreEight(block + Q * Target.ColumnStride, p);
  }
}

}  // namespace

std::size_t TRotationLog::Capacity(std::size_t Columns) {
  return std::max(std::min(kMaxRotations, kMaxSweeps * Columns), Columns);
}

void TRotationLog::BeginSweep(std::size_t First, std::size_t Count) {
  FNext = First;
  if (FIsAtOnce) return;
  if (FSweepCount == kMaxSweeps || FCount + Count > FCapacity) Apply();
  FSweeps[FSweepCount++] = {First, First + Count, FRotations + FCount};
}

void TRotationLog::Apply() {
  if (FSweepCount > 0) ApplySweeps(FTarget, FSweeps.data(), FSweepCount);
  FSweepCount = 0;
  FCount = 0;
}

void TRotationLog::Rotate(std::size_t P, std::size_t Q, const TRotation& Rotation) {
  Apply();
  RotateNow(P, Q, Rotation);
}

void TRotationLog::RotateNow(std::size_t P, std::size_t Q, const TRotation& Rotation) const {
  if (FTarget.Rows > 0) RotateColumns(FTarget, P, Q, Rotation);
}

}  // namespace ZORBase
