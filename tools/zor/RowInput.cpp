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

// What a line should hold.
std::string Expected(const TRowForm& Form) {
  if (Form.Count == 0) return fmt::format("{} to {} numbers", Form.Fewest, Form.Most);
  return fmt::format("{} number{} {}", Form.Count, Form.Count == 1 ? "" : "s", Form.Names);
}

TFinding FindingAbout(std::string_view Line, const TRowForm& Form) {
  const std::size_t most = Form.Count == 0 ? Form.Most : Form.Count;
  std::size_t count = 0;
  try {
    for (TDelimitedText items(Line); items.Next();) {
      if (++count > most) continue;
      if (const auto finding = FindingAboutItem(items.Item(), count)) return *finding;
    }
  } catch (const TGeneralError&) {  // the one thing that the splitter refuses
    return {fmt::format("a byte 0 at column {}", Line.find('\0') + 1), "Save the file as plain ASCII or UTF-8 text"};
  }
  if (count == 0) return {"an empty line", "Remove it; there are no blank lines, not even at the end"};
  return {fmt::format("{} item{} in {}", count, count == 1 ? "" : "s", Quoted(Line)),
          count > most ? "Numbers have a decimal point, not a decimal comma, and one row stands on each line"
                       : "Complete the line or remove it"};
}

[[noreturn]] void RaiseAtLine(const std::string& FileName, std::int64_t Line, const TRowForm& Form,
                              const TFinding& Finding) {
  RaiseGeneralError(fmt::format("{}, line {}: found {}, expected {}. {}.", InputName(FileName), Line, Finding.Found,
                                Expected(Form), Finding.Advice));
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

// The number of items of a line that says how many the others have. Any number that is possible, where this one is not or the
// line cannot be split: reading it then says why.
std::size_t ItemsOfFirstLine(std::string_view Line, const TRowForm& Form) {
  std::size_t count = 0;
  try {
    for (TDelimitedText items(Line); items.Next();) ++count;
  } catch (const TGeneralError&) {
  }
  return std::clamp(count, Form.Fewest, Form.Most);
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
    if (line == 1) row.resize(Form.Count == 0 ? ItemsOfFirstLine(lines.Line(), Form) : Form.Count);
    ReadRow(lines.Line(), row, form, FileName, line);
    if (form.Count == 0) {
      form.Count = row.size();
      form.Names = "as on line 1";
    }
    TakeRow(row);
    progress.Advance(line);
  }
}

void RequireRows(const std::string& FileName, const TRowForm& Form, std::int64_t Count) {
  if (Count > 0) return;
  RaiseGeneralError(fmt::format("{}: found no {}s, expected one per line: {}. Name another file.", InputName(FileName),
                                Form.Noun, Form.Count == 0 ? Expected(Form) : std::string(Form.Names)));
}

TRowFile ReadRowFile(const std::string& FileName, const TRowForm& Form) {
  TRowFile file{InputName(FileName), 0, {}};
  ReadRows(FileName, Form, [&](std::span<const double> Row) {
    file.Columns = Row.size();
    file.Numbers.insert(file.Numbers.end(), Row.begin(), Row.end());
  });
  RequireRows(FileName, Form, static_cast<std::int64_t>(file.Count()));
  return file;
}

}  // namespace ZORBase::Tool
