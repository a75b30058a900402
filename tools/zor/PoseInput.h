#pragma once

#include <ZORBase/ZORGeometry/CADTypes6D/TPoint6DList.h>
#include <zor/RowInput.h>

#include <string>

namespace ZORBase::Tool {

/// A line with a pose, and one with an Euler pose.
inline constexpr TRowForm kPoseRow = {6, "X,Y,Z,A,B,C", "pose"};
inline constexpr TRowForm kEulerRow = {6, "X,Y,Z,Rx,Ry,Rz", "pose"};

/// The poses of a file. Pose i, counted from 0, stands on line i + 1.
struct TPoseFile {
  std::string Name;  ///< for messages: the file's name, or "standard input"
  TPoint6DList Poses;
};

/// Reads a file of poses; "-" is standard input.
/// \throws the general error that ReadRows raises, and one for a file without any pose.
TPoseFile ReadPoses(const std::string& FileName);

}  // namespace ZORBase::Tool
