// RowInput: files of numbers, one row per line, read with errors that say where, what and what to do.
#pragma once

#include <cstdint>
#include <functional>
#include <limits>
#include <span>
#include <string>
#include <string_view>

namespace ZORBase::Tool {

/// No input file may have, and no result will have, more rows than this (a list of poses then takes 2.4 GB).
inline constexpr std::int64_t kMaxPoses = 50'000'000;

/// Numbers above this in magnitude are refused: their squares, which every length needs, would overflow.
inline constexpr double kLargestNumber = 1e150;

/// A line of any length may hold this many numbers.
inline constexpr std::size_t kMostColumns = 44;

/// No limit to the rows of a file that is not kept.
inline constexpr std::int64_t kAnyNumberOfRows = std::numeric_limits<std::int64_t>::max();

/// What stands on every line of a file.
struct TRowForm {
  std::size_t Count = 0;              ///< numbers per line; 0: as many as the first line has, up to kMostColumns
  std::string_view Names;             ///< how they are called, such as "X,Y,Z,A,B,C"
  std::string_view Noun;              ///< what one line is, such as "pose"
  std::int64_t MostRows = kMaxPoses;  ///< longer files are refused
};

/// \return the same form for files of any length, which are not kept.
constexpr TRowForm AnyNumberOf(TRowForm Form) {
  Form.MostRows = kAnyNumberOfRows;
  return Form;
}

/// \return the name of a file in messages: "standard input" for "-".
std::string InputName(const std::string& FileName);

/// Reads a file ("-" is standard input) and hands over every row in order; row i, counted from 0, stands on line i + 1.
/// \throws the general error "FILE, line N: found ..., expected .... What to do" for a line that is no such row and for more
///         than Form.MostRows of them, and "Cannot ... FILE ..." when it cannot be read.
void ReadRows(const std::string& FileName, const TRowForm& Form,
              const std::function<void(std::span<const double>)>& TakeRow);

}  // namespace ZORBase::Tool
