// CurveTable: sampling a curve into its arc-length table. Internal: TNurbsCurve is the face of it.
#pragma once

#include <ZORBase/ZORGeometry/NurbsGeometry/TNurbsBasicFunc.h>
#include <ZORBase/ZORGeometry/NurbsGeometry/TSUTable.h>

#include <cstdint>
#include <span>

namespace ZORBase {

/// The distance between two rows of the table, in the curve's length unit; measured by the chord across each knot interval.
inline constexpr double kTableSpacing = 0.03;
/// A table may have this many rows (80 bytes each and 16.5 for the index, 6.2 GB in all).
inline constexpr std::int64_t kMaxTableRows = 64'000'000;

/// Makes the table of the curve with these control points: a first row at u = 0, and for each knot interval
/// Round(chord / kTableSpacing) rows, at least one. The memory of the table before serves again where it suffices.
/// \throws the general error, with the table as it was, when a knot is not finite or falls, when a chord is not finite, and when
///         there would be more than kMaxTableRows rows.
template <class TPoint>
void MeasureCurve(const TNurbsBasicFunc& Basis, std::span<const TPoint> P, TSUTable& Table);

}  // namespace ZORBase
