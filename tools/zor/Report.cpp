#include <zor/Report.h>

#include <fmt/format.h>
#include <zor/TextOutput.h>

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>
#include <utility>

namespace ZORBase::Tool {
namespace {

using TJson = nlohmann::ordered_json;

constexpr std::size_t kIndent = 2;
constexpr std::size_t kColumnWidth = 16;

// Six decimals, as lengths are read best, for all numbers of ordinary size.
std::string NumberText(double Value) {
  constexpr double kSmallestOrdinary = 0.01;
  constexpr double kLargestOrdinary = 1e9;
  const double size = std::fabs(Value);
  if (!std::isfinite(Value)) return "-";
  if (size == 0.0) return "0";
  return size < kSmallestOrdinary || size >= kLargestOrdinary ? fmt::format("{:.4g}", Value)
                                                              : fmt::format("{:.6f}", Value);
}

std::string TextOf(const TReportValue& Value) {
  struct {
    std::string operator()(std::monostate) const { return "-"; }
    std::string operator()(double Number) const { return NumberText(Number); }
    std::string operator()(std::int64_t Count) const { return fmt::format("{}", Count); }
    std::string operator()(const std::string& Text) const { return Text; }
    std::string operator()(const TLines& Lines) const {
      return Lines.First == Lines.Last ? fmt::format("line {}", Lines.First)
                                       : fmt::format("lines {}-{}", Lines.First, Lines.Last);
    }
  } asText;
  return std::visit(asText, Value);
}

TJson JsonOf(const TReportValue& Value) {
  struct {
    TJson operator()(std::monostate) const { return nullptr; }
    TJson operator()(double Number) const { return std::isfinite(Number) ? TJson(Number) : TJson(nullptr); }
    TJson operator()(std::int64_t Count) const { return Count; }
    TJson operator()(const std::string& Text) const { return Text; }
    TJson operator()(const TLines& Lines) const {
      return Lines.First == Lines.Last ? TJson(Lines.First) : TJson{Lines.First, Lines.Last};
    }
  } asJson;
  return std::visit(asJson, Value);
}

}  // namespace

void TReport::Section(std::string Key, std::string Title, std::vector<TColumn> Columns, TNesting Nesting) {
  FSections.push_back({std::move(Key), std::move(Title), std::move(Columns), Nesting, {}});
}

void TReport::Row(std::string Key, std::string Title, std::vector<TReportValue> Values) {
  FSections.back().Rows.push_back({std::move(Key), std::move(Title), std::move(Values), false});
}

void TReport::Fact(std::string Key, std::string Title, TReportValue Value) {
  FSections.back().Rows.push_back({std::move(Key), std::move(Title), {std::move(Value)}, true});
}

// ------------------------------------------------------------------------------------------------ text

std::size_t TReport::TitleWidth() const {
  std::size_t width = 0;
  for (const TSection& section : FSections) {
    for (const TRow& row : section.Rows) width = std::max(width, row.Title.size());
  }
  return width;
}

// Texts and the facts of a section without columns stand flush left, everything else flush right in its column.
void TReport::AppendSection(std::string& Text, const TSection& Section, std::size_t TitleWidth) {
  if (!Text.empty()) Text += '\n';
  const std::size_t indent = Section.Title.empty() ? 0 : kIndent;
  const std::size_t width = kIndent + TitleWidth;
  const auto isFlushLeft = [&](const TReportValue& Value) {
    return Section.Columns.empty() || std::holds_alternative<std::string>(Value);
  };
  if (!Section.Title.empty()) {
    std::string head = fmt::format("{:<{}}", Section.Title, width);
    const bool hasTitles = std::any_of(Section.Columns.begin(), Section.Columns.end(),
                                       [](const TColumn& Column) { return !Column.Title.empty(); });
    if (hasTitles) {
      for (const TColumn& column : Section.Columns) head += fmt::format("  {:>{}}", column.Title, kColumnWidth);
    }
    head.erase(head.find_last_not_of(' ') + 1);
    Text += head + '\n';
  }
  const std::size_t shown =
      Section.Nesting == rnList ? std::min(Section.Rows.size(), kListedRows) : Section.Rows.size();
  for (std::size_t i = 0; i < shown; ++i) {
    const TRow& row = Section.Rows[i];
    Text += fmt::format("{:{}}{:<{}}", "", indent, row.Title, width - indent);
    for (const TReportValue& value : row.Values) {
      Text += "  " + (isFlushLeft(value) ? TextOf(value) : fmt::format("{:>{}}", TextOf(value), kColumnWidth));
    }
    Text += '\n';
  }
  if (shown < Section.Rows.size()) {
    Text += fmt::format("{:{}}... and {} more (all of them with --json)\n", "", kIndent, Section.Rows.size() - shown);
  }
}

std::string TReport::Text() const {
  std::string text;
  const std::size_t titleWidth = TitleWidth();
  for (const TSection& section : FSections) AppendSection(text, section, titleWidth);
  for (const std::string& warning : FWarnings) text += "\nWarning: " + warning + "\n";
  return text;
}

// ------------------------------------------------------------------------------------------------ JSON

void TReport::AddSection(TJson& Json, const TSection& Section) {
  TJson& target = Section.Key.empty() ? Json : Json[Section.Key];
  target =
      target.is_null() ? TJson(Section.Nesting == rnList ? TJson::value_t::array : TJson::value_t::object) : target;
  for (const TRow& row : Section.Rows) {
    if (row.IsFact) {
      target[row.Key] = JsonOf(row.Values.front());
      continue;
    }
    TJson cells = TJson::object();
    for (std::size_t i = 0; i < row.Values.size(); ++i) {
      const std::string& column = Section.Columns.at(i).Key;
      (Section.Nesting == rnByColumn ? target[column][row.Key] : cells[column]) = JsonOf(row.Values[i]);
    }
    if (Section.Nesting == rnByRow) {
      target[row.Key] = std::move(cells);
    } else if (Section.Nesting == rnList) {
      target.push_back(std::move(cells));
    }
  }
}

std::string TReport::Json() const {
  TJson json = TJson::object();
  for (const TSection& section : FSections) AddSection(json, section);
  json["warnings"] = FWarnings;
  // A file name may be any bytes; those that are no UTF-8 are replaced.
  return json.dump(2, ' ', false, TJson::error_handler_t::replace) + "\n";
}

void TReport::Write(bool IsJson) const { WriteToStandardOutput(IsJson ? Json() : Text()); }

}  // namespace ZORBase::Tool
