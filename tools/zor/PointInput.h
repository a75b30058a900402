#pragma once

#include <zor/PointKind.h>

#include <string>

namespace ZORBase::Tool {

/// The points of a file: poses, or those of a plane profile. Point i, counted from 0, stands on line i + 1.
template <class TPoint>
struct TPointFile {
  std::string Name;  ///< for messages: the file's name, or "standard input"
  typename TPointKind<TPoint>::TPoints Points;
};

/// Reads a file of points; "-" is standard input.
/// \throws the general error that ReadRows raises, and one for a file without any point.
template <class TPoint>
TPointFile<TPoint> ReadPoints(const std::string& FileName) {
  using TKind = TPointKind<TPoint>;
  TPointFile<TPoint> file{InputName(FileName), {}};
  ReadRows(FileName, TKind::kRow, [&](std::span<const double> Row) { file.Points.Add(TKind::FromRow(Row)); });
  RequireRows(FileName, TKind::kRow, file.Points.Count());
  return file;
}

}  // namespace ZORBase::Tool
