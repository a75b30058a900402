#include <zor/PoseInput.h>

#include <ZORBase/common/BaseServices/TGeneralError.h>
#include <zor/RowInput.h>

namespace ZORBase::Tool {
TPoseFile ReadPoses(const std::string& FileName) {
  TPoseFile file{InputName(FileName), {}};
  ReadRows(FileName, kPoseRow,
           [&](std::span<const double> Row) { file.Poses.Add(Row[0], Row[1], Row[2], Row[3], Row[4], Row[5]); });
  if (file.Poses.Count() == 0) {
    RaiseGeneralError(file.Name + ": found no poses, expected one per line: X,Y,Z,A,B,C. Name another file.");
  }
  return file;
}

}  // namespace ZORBase::Tool
