#include <zor/RowOutput.h>

#include <ZORBase/common/BaseServices/NumberRow.h>
#include <zor/TextOutput.h>

namespace ZORBase::Tool {

TRowOutput::TRowOutput(const std::string& FileName, int Decimals) : FFile(OpenOutput(FileName)), FDecimals(Decimals) {}

void TRowOutput::Add(std::span<const double> Row) {
  FLine.clear();
  AppendNumberRow(FLine, Row, FDecimals, nf1033);
  FFile.WriteLine(FLine);
}

}  // namespace ZORBase::Tool
