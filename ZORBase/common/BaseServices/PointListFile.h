// PointListFile: the text files of point lists. One point per line, lines ended by CR LF, no header, no trailer.
#pragma once

#include <ZORBase/common/BaseServices/TGeneralError.h>
#include <ZORBase/common/BaseServices/TList.h>
#include <ZORBase/common/BaseServices/TTextFileReader.h>
#include <ZORBase/common/BaseServices/TTextFileWriter.h>

#include <algorithm>
#include <cstddef>
#include <exception>
#include <string>
#include <string_view>

namespace ZORBase {

/// Clears Points, then appends TPoint::Parse1033 of every line of the file.
/// \throws the general error "ListName LoadFromFile Fail: FileName Line N. ", CR LF, and the reason; N counts from 1 and is 1
///         for a file that cannot be opened. The points before the failing line stay in the list.
template <class TPoint>
void LoadPointList(const std::string& FileName, std::string_view ListName, TList<TPoint>& Points) {
  // After so many lines the rest of the file is taken to be like them, and room is made for it at once: up to a limit, beyond
  // which the list grows as it does anyway.
  constexpr int kSampleLines = 1024;
  constexpr double kRoomLimit = 1 << 24;
  Points.Clear();
  int lineIndex = 0;
  try {
    for (TTextFileReader lines(FileName); lines.Next(); ++lineIndex) {
      if (lineIndex == kSampleLines) {
        Points.Reserve(static_cast<std::size_t>(std::min(1.01 * kSampleLines / lines.ShareRead(), kRoomLimit)));
      }
      Points.Add(TPoint::Parse1033(lines.Line()));
    }
  } catch (const std::exception& Error) {
    RaiseGeneralError(std::string(ListName) + " LoadFromFile Fail: " + FileName + " Line " +
                      std::to_string(lineIndex + 1) + ". \r\n" + Error.what());
  }
}

/// Writes one line per point, as AppendLine(std::string&, const TPoint&) makes it; an empty list gives an empty file.
/// \throws the general error when the file cannot be written; an existing file is then as it was.
template <class TPoints, class TAppendLine>
void SavePointList(const std::string& FileName, const TPoints& Points, TAppendLine&& AppendLine) {
  TTextFileWriter file(FileName);
  for (const auto& point : Points) {
    file.WriteLineOf([&](std::string& Text) { AppendLine(Text, point); });
  }
  file.Commit();
}

}  // namespace ZORBase
