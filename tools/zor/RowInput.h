// RowInput: files of numbers, one row per line, read with errors that say where, what and what to do.
#pragma once

#include <cstdint>
#include <functional>
#include <limits>
#include <span>
#include <string>
#include <string_view>
#include <vector>

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
  std::size_t Count = 0;              ///< numbers per line; 0: as many as the first line has, Fewest to Most
  std::string_view Names;             ///< how they are called, such as "X,Y,Z,A,B,C"; not needed for a Count of 0
  std::string_view Noun;              ///< what one line is, such as "pose"
  std::int64_t MostRows = kMaxPoses;  ///< longer files are refused
  std::size_t Fewest = 1;
  std::size_t Most = kMostColumns;
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

/// \throws the general error that a file of this name holds no rows of this form, when it is so.
void RequireRows(const std::string& FileName, const TRowForm& Form, std::int64_t Count);

/// The line that a row, counted from 0, stands on.
constexpr int LineOf(int Row) { return Row + 1; }

/// The rows of a file, kept; all of them have the same count of numbers.
struct TRowFile {
  std::string Name;  ///< for messages: the file's name, or "standard input"
  std::size_t Columns = 0;
  std::vector<double> Numbers;  ///< row after row

  std::size_t Count() const { return Columns == 0 ? 0 : Numbers.size() / Columns; }
  std::span<const double> operator[](std::size_t Row) const {
    return std::span(Numbers).subspan(Row * Columns, Columns);
  }
};

/// Reads a file ("-" is standard input) whole. \throws the general error that ReadRows raises, and one for a file without rows.
TRowFile ReadRowFile(const std::string& FileName, const TRowForm& Form);

}  // namespace ZORBase::Tool
