#pragma once

#include <nlohmann/json_fwd.hpp>

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace ZORBase::Tool {

/// Lines of the input file, both included.
struct TLines {
  int First = 0;
  int Last = 0;
};

/// What a fact says; the empty one is "-" in text and null in JSON, and so are numbers that are not finite.
using TReportValue = std::variant<std::monostate, double, std::int64_t, std::string, TLines>;

/// What a subcommand found out, said once: as text for people, or as JSON for programs. It is a row of sections, each a
/// small table. Keys name things in JSON, titles in text.
class TReport {
 public:
  struct TColumn {
    std::string Key;
    std::string Title;
  };

  /// How the cells of a section are nested in JSON.
  enum TNesting {
    rnByRow,     ///< {row: {column: value}}
    rnByColumn,  ///< {column: {row: value}}
    rnList       ///< [{column: value}], one per row; the rows have no keys
  };

  /// Starts a section; without a key its facts stand directly in the report.
  void Section(std::string Key, std::string Title, std::vector<TColumn> Columns = {}, TNesting Nesting = rnByRow);

  /// Adds a row with a value for each of the first columns of the section.
  void Row(std::string Key, std::string Title, std::vector<TReportValue> Values);

  /// Adds a row of a single value that needs no column.
  void Fact(std::string Key, std::string Title, TReportValue Value);

  void Warning(std::string Text) { FWarnings.push_back(std::move(Text)); }

  /// At most kListedRows of a list are shown as text; the others are counted.
  static constexpr std::size_t kListedRows = 10;
  std::string Text() const;
  std::string Json() const;

  /// Writes it to standard output. \throws the general error when standard output does not take it.
  void Write(bool IsJson) const;

 private:
  struct TRow {
    std::string Key;
    std::string Title;
    std::vector<TReportValue> Values;
    bool IsFact = false;
  };
  struct TSection {
    std::string Key;
    std::string Title;
    std::vector<TColumn> Columns;
    TNesting Nesting = rnByRow;
    std::vector<TRow> Rows;
  };

  std::size_t TitleWidth() const;
  static void AppendSection(std::string& Text, const TSection& Section, std::size_t TitleWidth);
  static void AddSection(nlohmann::ordered_json& Json, const TSection& Section);

  std::vector<TSection> FSections;
  std::vector<std::string> FWarnings;
};

}  // namespace ZORBase::Tool
