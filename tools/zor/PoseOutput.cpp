#include <zor/PoseOutput.h>

#include <zor/TextOutput.h>

namespace ZORBase::Tool {

TPoseOutput::TPoseOutput(const std::string& FileName, int Decimals)
    : FFile(OpenOutput(FileName)), FDecimals(Decimals) {}

void TPoseOutput::Add(const TPoint6D& Pose) {
  FLine.clear();
  Pose.AppendString1033(FLine, FDecimals);
  FFile.WriteLine(FLine);
}

}  // namespace ZORBase::Tool
