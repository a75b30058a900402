#include <zor/PoseInput.h>

namespace ZORBase::Tool {

TPoseFile ReadPoses(const std::string& FileName) {
  TPoseFile file{InputName(FileName), {}};
  ReadRows(FileName, kPoseRow,
           [&](std::span<const double> Row) { file.Poses.Add(Row[0], Row[1], Row[2], Row[3], Row[4], Row[5]); });
  RequireRows(FileName, kPoseRow, file.Poses.Count());
  return file;
}

}  // namespace ZORBase::Tool
