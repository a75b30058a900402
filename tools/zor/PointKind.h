// PointKind: what differs between the points that a path leads through: poses, and points of a plane profile. What a command
// does with them is written once, over their type.
#pragma once

#include <ZORBase/ZORGeometry/CADTypes6D/TPoint6DList.h>
#include <ZORBase/ZORGeometry/NurbsGeometry/TNurbs2D.h>
#include <ZORBase/ZORGeometry/NurbsGeometry/TNurbs6D.h>
#include <zor/RowInput.h>

#include <array>
#include <span>
#include <string_view>

namespace ZORBase::Tool {

/// A line with a pose, one with an Euler pose, and one with a point of a plane profile.
inline constexpr TRowForm kPoseRow = {6, "X,Y,Z,A,B,C", "pose"};
inline constexpr TRowForm kEulerRow = {6, "X,Y,Z,Rx,Ry,Rz", "pose"};
inline constexpr TRowForm kPlaneRow = {2, "X,Y", "point"};

template <class TPoint>
struct TPointKind;

template <>
struct TPointKind<TPoint6D> {
  using TPoints = TPoint6DList;
  using TCurve = TNurbs6D;
  static constexpr TRowForm kRow = kPoseRow;
  static constexpr std::string_view kNouns = "poses";
  static constexpr std::string_view kPosition = "X,Y,Z";  ///< the components whose path has a curvature
  static constexpr std::string_view kDistances = "over all six components";
  static constexpr std::array<std::string_view, 6> kComponents = {"X", "Y", "Z", "A", "B", "C"};

  static TPoint6D FromRow(std::span<const double> Row) {
    return TPoint6D::Create(Row[0], Row[1], Row[2], Row[3], Row[4], Row[5]);
  }
  static std::array<double, 6> ToRow(const TPoint6D& P) { return P.ToArray(); }
  static TPoint3D PositionOf(const TPoint6D& P) { return P.GetPoint(); }
  static bool Fit(TNurbs6D& Curve, const TPoint6DList& Points, TParalizeMethod Method) {
    return Curve.CreateCross(&Points, Method);
  }
};

template <>
struct TPointKind<TPoint2D> {
  using TPoints = TList<TPoint2D>;
  using TCurve = TNurbs2D;
  static constexpr TRowForm kRow = kPlaneRow;
  static constexpr std::string_view kNouns = "points";
  static constexpr std::string_view kPosition = "X,Y";
  static constexpr std::string_view kDistances = "in the plane";
  static constexpr std::array<std::string_view, 2> kComponents = {"X", "Y"};

  static TPoint2D FromRow(std::span<const double> Row) { return TPoint2D::Create(Row[0], Row[1]); }
  static std::array<double, 2> ToRow(const TPoint2D& P) { return {P.X, P.Y}; }
  static TPoint3D PositionOf(const TPoint2D& P) { return P; }
  static bool Fit(TNurbs2D& Curve, const TList<TPoint2D>& Points, TParalizeMethod Method) {
    return Curve.CreateCross(Points, Method);
  }
};

}  // namespace ZORBase::Tool
