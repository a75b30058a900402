#include <ZORBase/kernels/PointTransform.h>

#include <ZORBase/kernels/TargetClones.h>

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace ZORBase {
namespace {

// Points that are looked through for far ones together.
constexpr std::size_t kPointGroup = 4;

// A column of the matrix, or the results of a point, with a spare number behind: so long that it fills a register.
constexpr std::size_t kPadded = 4;
using TColumns = double[4][kPadded];

// The coordinates of a row of points, which follow each other without a gap.
const double* CoordinatesOf(const TPoint3D* Points) { return reinterpret_cast<const double*>(Points); }
double* CoordinatesOf(TPoint3D* Points) { return reinterpret_cast<double*>(Points); }
static_assert(sizeof(TPoint3D) == 3 * sizeof(double) && std::is_standard_layout_v<TPoint3D>);

ZORBASE_INLINE bool HasFar(const double* Coordinates, double Far) {
  std::int64_t isFar = 0;  // as wide as what it is made of, so that it fits into lanes
  ZORBASE_LANES
  for (std::size_t k = 0; k < 3 * kPointGroup; ++k) isFar |= Coordinates[k] > Far ? -1 : 0;
  return isFar != 0;
}

// Moved, or Turned, of a group.
template <bool IsMoved>
ZORBASE_INLINE void TransformGroup(const TColumns& Columns, const double* In, double* Out) {
  for (std::size_t p = 0; p < 3 * kPointGroup; p += 3) {
    const double x = In[p];
    const double y = In[p + 1];
    const double z = In[p + 2];
    double sums[kPadded];
    ZORBASE_LANES
    for (std::size_t k = 0; k < kPadded; ++k) {
      sums[k] = Columns[0][k] * x + Columns[1][k] * y + Columns[2][k] * z;
      if constexpr (IsMoved) sums[k] += Columns[3][k];
    }
    Out[p] = sums[0];
    Out[p + 1] = sums[1];
    Out[p + 2] = sums[2];
  }
}

template <bool IsMoved>
ZORBASE_INLINE void TransformAll(const TAffineRows& M, std::span<const TPoint3D> Points, TPoint3D* Results,
                                 double Far) {
  const TAffineRows matrix = M;  // a copy that no result can overwrite
  TColumns columns = {};
  for (std::size_t i = 0; i < 3; ++i) {
    for (std::size_t j = 0; j < 4; ++j) columns[j][i] = matrix[i][j];
  }
  const auto transformOne = [&](std::size_t i) {
    Results[i] = IsMoved ? MovedUnlessFar(matrix, Points[i], Far) : TurnedUnlessFar(matrix, Points[i], Far);
  };
  std::size_t i = 0;
  for (; i + kPointGroup <= Points.size(); i += kPointGroup) {
    if (HasFar(CoordinatesOf(Points.data() + i), Far)) {
      for (std::size_t p = 0; p < kPointGroup; ++p) transformOne(i + p);
    } else {
      TransformGroup<IsMoved>(columns, CoordinatesOf(Points.data() + i), CoordinatesOf(Results + i));
    }
  }
  for (; i < Points.size(); ++i) transformOne(i);
}

ZORBASE_TARGET_CLONES void MoveAllClones(const TAffineRows& M, std::span<const TPoint3D> Points, TPoint3D* Results,
                                         double Far) {
  TransformAll<true>(M, Points, Results, Far);
}

ZORBASE_TARGET_CLONES void TurnAllClones(const TAffineRows& M, std::span<const TPoint3D> Points, TPoint3D* Results,
                                         double Far) {
  TransformAll<false>(M, Points, Results, Far);
}

}  // namespace

void MoveAll(const TAffineRows& M, std::span<const TPoint3D> Points, TPoint3D* Results, double Far) {
  MoveAllClones(M, Points, Results, Far);
}

void TurnAll(const TAffineRows& M, std::span<const TPoint3D> Points, TPoint3D* Results, double Far) {
  TurnAllClones(M, Points, Results, Far);
}

}  // namespace ZORBase
