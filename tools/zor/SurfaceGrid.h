#pragma once

#include <ZORBase/common/BaseServices/TList.h>
#include <ZORBase/common/Cadtypes/TPoint2D.h>
#include <ZORBase/common/Cadtypes/TPoint3D.h>

#include <algorithm>
#include <cstdint>
#include <vector>

namespace ZORBase::Tool {

/// Places in even rows and columns over a box, its corners included.
struct TSurfaceGrid {
  TPoint2D Min;
  TPoint2D Max;
  std::int64_t Columns = 2;  ///< along X, at least 2
  std::int64_t Rows = 2;     ///< along Y, at least 2

  /// The places of a row from X = Min.X to Max.X; rows are counted from Y = Min.Y.
  std::vector<TPoint2D> RowPlaces(std::int64_t Row) const {
    std::vector<TPoint2D> places;
    const double y = Between(Min.Y, Max.Y, Row, Rows);
    for (std::int64_t i = 0; i < Columns; ++i) places.push_back(TPoint2D::Create(Between(Min.X, Max.X, i, Columns), y));
    return places;
  }

  /// \return a grid over all samples, of which there is at least one.
  static TSurfaceGrid Over(const TList<TPoint3D>& Samples, std::int64_t Columns, std::int64_t Rows) {
    const auto byX = [](const TPoint3D& A, const TPoint3D& B) { return A.X < B.X; };
    const auto byY = [](const TPoint3D& A, const TPoint3D& B) { return A.Y < B.Y; };
    const auto [left, right] = std::minmax_element(Samples.begin(), Samples.end(), byX);
    const auto [bottom, top] = std::minmax_element(Samples.begin(), Samples.end(), byY);
    return {TPoint2D::Create(left->X, bottom->Y), TPoint2D::Create(right->X, top->Y), Columns, Rows};
  }

  /// \return the grid over a box that is wider on all sides by Part of its longer side, and has a width and a height in any case.
  TSurfaceGrid Widened(double Part) const {
    const double side = std::max(Max.X - Min.X, Max.Y - Min.Y);
    const double rim = side > 0.0 ? Part * side : 1.0;
    const TPoint2D corner = TPoint2D::Create(rim, rim);
    return {Min - corner, Max + corner, Columns, Rows};
  }

 private:
  // The ends are met exactly.
  static double Between(double From, double To, std::int64_t Index, std::int64_t Count) {
    if (Index == Count - 1) return To;
    return From + (To - From) * (static_cast<double>(Index) / static_cast<double>(Count - 1));
  }
};

}  // namespace ZORBase::Tool
