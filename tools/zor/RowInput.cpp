#include <zor/RowInput.h>

#include <ZORBase/common/BaseServices.h>
#include <fmt/format.h>
#include <zor/Progress.h>
#include <zor/TextOutput.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <optional>
#include <vector>

namespace ZORBase::Tool {
namespace {

constexpr std::string_view kHowNumbersLook =
    "Write numbers like -12.5 or 1e-3, with a decimal point, and part them by commas or blanks";

// Text as it may appear in a message: short, and without control characters.
std::string Quoted(std::string_view Text) {
  std::string quoted = "\"";
  for (const char character : Shortened(Text)) {
    const auto code = static_cast<unsigned char>(character);
    if (code < 32 || code == 127) {
      quoted += fmt::format("\\x{:02X}", code);
    } else {
      quoted += character;
    }
  }
  return quoted + "\"";
}

// What was found on a line that is no row, and what to do about it.
struct TFinding {
  std::string Found;
  std::string_view Advice;
};

std::optional<TFinding> FindingAboutItem(std::string_view Item, std::size_t Number) {
  double value = 0.0;
  const TNumberStatus status = TryStrToFloat(Item, nf1033, value);
  const bool isTooLarge = status == TNumberStatus::TooLarge || std::fabs(value) > kLargestNumber;
  if (isTooLarge) {
    return TFinding{fmt::format("{} as number {}, which is too large to measure with", Quoted(Item), Number),
                    "Look for a lost decimal point or blank"};
  }
  if (status == TNumberStatus::NotANumber)
    return TFinding{fmt::format("{} as number {}", Quoted(Item), Number), kHowNumbersLook};
  return std::nullopt;
}

TFinding FindingAbout(std::string_view Line, const TRowForm& Form) {
  std::size_t count = 0;
  try {
    for (TDelimitedText items(Line); items.Next();) {
      if (++count > Form.Count) continue;
      if (const auto finding = FindingAboutItem(items.Item(), count)) return *finding;
    }
  } catch (const TGeneralError&) {  // the one thing that the splitter refuses
    return {fmt::format("a byte 0 at column {}", Line.find('\0') + 1), "Save the file as plain ASCII or UTF-8 text"};
  }
  if (count == 0) return {"an empty line", "Remove it; there are no blank lines, not even at the end"};
  return {fmt::format("{} item{} in {}", count, count == 1 ? "" : "s", Quoted(Line)),
          count > Form.Count ? "Numbers have a decimal point, not a decimal comma, and one row stands on each line"
                             : "Complete the line or remove it"};
}

[[noreturn]] void RaiseAtLine(const std::string& FileName, std::int64_t Line, const TRowForm& Form,
                              const TFinding& Finding) {
  RaiseGeneralError(fmt::format("{}, line {}: found {}, expected {} numbers {}. {}.", InputName(FileName), Line,
                                Finding.Found, Form.Count, Form.Names, Finding.Advice));
}

TTextFileReader OpenInput(const std::string& FileName) {
  return FileName == kStandardStream ? TTextFileReader(stdin, InputName(FileName)) : TTextFileReader(FileName);
}

// Files that cannot be read at all: the library says why, here is what to do.
template <class TAction>
auto WithAdvice(TAction&& Action) {
  try {
    return Action();
  } catch (const TGeneralError& Error) {
    RaiseGeneralError(std::string(Error.what()) + ". Name a text file that can be read, or - for standard input.");
  }
}

bool IsMeasurable(std::span<const double> Row) {
  return std::all_of(Row.begin(), Row.end(), [](double Value) { return std::fabs(Value) <= kLargestNumber; });
}

// The number of items of a line; 1 for one that cannot be split, so that reading it says why.
std::size_t CountItems(std::string_view Line) {
  std::size_t count = 0;
  try {
    for (TDelimitedText items(Line); items.Next();) ++count;
  } catch (const TGeneralError&) {
    return 1;
  }
  return count;
}

void ReadRow(std::string_view Text, std::span<double> Row, const TRowForm& Form, const std::string& FileName,
             std::int64_t Line) {
  try {
    ParseNumberRow(Text, Row, nf1033, Form.Noun);
  } catch (const TGeneralError&) {
    RaiseAtLine(FileName, Line, Form, FindingAbout(Text, Form));
  }
  if (!IsMeasurable(Row)) RaiseAtLine(FileName, Line, Form, FindingAbout(Text, Form));
}

}  // namespace

std::string InputName(const std::string& FileName) { return FileName == kStandardStream ? "standard input" : FileName; }

void ReadRows(const std::string& FileName, const TRowForm& Form,
              const std::function<void(std::span<const double>)>& TakeRow) {
  TTextFileReader lines = WithAdvice([&] { return OpenInput(FileName); });
  TProgress progress("reading " + InputName(FileName));
  TRowForm form = Form;
  std::vector<double> row;
  std::int64_t line = 0;
  while (WithAdvice([&] { return lines.Next(); })) {
    if (++line > Form.MostRows) {
      RaiseGeneralError(fmt::format("{}, line {}: found more than {} {}s. Divide the file.", InputName(FileName), line,
                                    Form.MostRows, Form.Noun));
    }
    if (line == 1) {
      if (form.Count == 0) form.Count = std::clamp<std::size_t>(CountItems(lines.Line()), 1, kMostColumns);
      row.resize(form.Count);
    }
    ReadRow(lines.Line(), row, form, FileName, line);
    TakeRow(row);
    progress.Advance(line);
  }
}

}  // namespace ZORBase::Tool
