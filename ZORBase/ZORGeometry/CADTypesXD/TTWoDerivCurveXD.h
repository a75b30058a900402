#pragma once

#include <ZORBase/ZORGeometry/CADTypesXD/TCubicBezXD.h>
#include <ZORBase/common/BaseServices/TList.h>
#include <ZORBase/common/Export.h>

#include <functional>
#include <optional>
#include <utility>

namespace ZORBase {

/// The chord from one point to the next.
struct TPTPInfo {
  double len = 0.0;  ///< its length
  TPointXD vec;      ///< unit direction
};

/// What a segment is built from.
struct TBezInfo {
  TPointXD th0;   ///< unit tangent at the start
  TPointXD th1;   ///< unit tangent at the end
  TPTPInfo line;  ///< chord
  TPointXD p1;    ///< start point
  TPointXD p2;    ///< end point
};

/// Takes one finished segment; a receiver that keeps it copies it.
using TRenderPath = std::function<void(const TCubicBezXD&)>;

/// A smooth curve through points of up to 44 coordinates: one cubic Bezier segment between neighbours, with continuous
/// direction, and with tangents that four damped secant steps tune until the curvature nearly agrees on both sides of each
/// inner point. The segments are not kept but handed to a callback, in order. One object serves for one curve.
///
/// Each inner point Q(j+1) has a weight in [0, 1], the share of the incoming chord's direction in its tangent.
class ZORBASE_API TTWoDerivCurveXD {
 public:
  /// Points may be this far from the origin. A curvature takes products of three derivatives; up to here they are far from
  /// overflow in any dimension.
  static constexpr double kFarthest = 1e100;

  /// \return the index of the first inner point of Points whose two chords are both without length, so that nothing gives its
  ///         direction; nothing when there is none.
  static std::optional<int> PointWithoutDirection(const TList<TPointXD>& Points);

  /// Sets what takes the segments; an empty one takes none. One set during a delivery takes none of that delivery.
  void SetRenderPath(TRenderPath path) { FRenderPath = std::move(path); }

  /// Builds the curve through ctrlPt and hands its segments to the callback, each starting and ending in its points exactly.
  /// \return false, with nothing changed, for fewer than 3 points.
  /// \throws the general error, before anything is changed or delivered, for a point that is not finite or farther than kFarthest
  ///         from the origin, for an inner point whose two chords are both without length (the index is named), and for a
  ///         second curve. What the callback raises passes through. Cost O(number of points).
  bool CreateCorss(const TList<TPointXD>& ctrlPt);

  const TList<TPointXD>& CtrlPtList() const { return FCtrlPtList; }    ///< the points; empty until there is a curve
  const TList<TPTPInfo>& PtLenList() const { return FPtLenList; }      ///< chord j from Q(j) to Q(j+1)
  const TDoubleList& BezWeightList() const { return FBezWeightList; }  ///< weight j of the inner point Q(j+1)
  /// Unit tangent of each point. The zero vector, with which a segment has no handle, at an inner point where the directions before
  /// and after cancel or a chord without length has the whole weight, and at an end of the curve where the weight next to it is
  /// at its limit: 1 at the start, 0 at the end.
  const TList<TPointXD>& BezDerivList() const { return FBezDerivList; }
  const TRenderPath& RenderPath() const { return FRenderPath; }  ///< what takes the segments

 private:
  void InitialThs(const TList<TPointXD>& ctrlPt);
  void UpDateDeriv();
  void IterDumb();
  double SecantStep(int j) const;
  TBezInfo GetThs(int i) const;
  void Render() const;

  TList<TPointXD> FCtrlPtList;
  TList<TPTPInfo> FPtLenList;
  TDoubleList FBezWeightList;
  TList<TPointXD> FBezDerivList;
  TRenderPath FRenderPath;
};

}  // namespace ZORBase
