#include <zor/Arguments.h>

#include <ZORBase/common/BaseServices.h>
#include <fmt/format.h>
#include <zor/Plot.h>
#include <CLI/CLI.hpp>

#include <array>
#include <charconv>
#include <utility>

namespace ZORBase::Tool {
namespace {

constexpr std::array<std::string_view, 3> kMethodNames = {"equal", "chord", "centripetal"};

[[noreturn]] void Refuse(const std::string& Option, std::string_view Found, const std::string& Expected) {
  throw CLI::ValidationError(Option, fmt::format("found '{}', expected {}", Shortened(Found), Expected));
}

// The number in Text when Suits agrees with it.
template <class TSuits>
double NumberFrom(const std::string& Option, std::string_view Text, TSuits&& Suits, const std::string& Expected) {
  double value = 0.0;
  if (TryStrToFloat(Text, nf1033, value) != TNumberStatus::Good || !Suits(value)) Refuse(Option, Text, Expected);
  return value;
}

std::int64_t CountFrom(const std::string& Option, std::string_view Text, std::int64_t Smallest, std::int64_t Largest) {
  std::int64_t value = 0;
  const auto read = std::from_chars(Text.data(), Text.data() + Text.size(), value);
  const bool isWhole = read.ec == std::errc() && read.ptr == Text.data() + Text.size();
  if (!isWhole || value < Smallest || value > Largest) {
    Refuse(Option, Text, fmt::format("a whole number from {} to {}", Smallest, Largest));
  }
  return value;
}

std::vector<double> LengthsFrom(const std::string& Option, const std::string& Text) {
  const std::string expected = "numbers from 0 upwards, parted by commas";
  const auto suits = [](double Value) { return Value >= 0.0; };
  std::vector<double> values;
  for (TDelimitedText items(Text); items.Next();) values.push_back(NumberFrom(Option, items.Item(), suits, expected));
  if (values.empty()) Refuse(Option, Text, expected);
  return values;
}

// An option whose text is understood, or refused, by Read.
template <class TRead>
CLI::Option* AddRead(CLI::App& Command, const std::string& Name, const std::string& ValueName,
                     const std::string& Description, TRead&& Read) {
  return Command.add_option_function<std::string>(Name, std::forward<TRead>(Read), Description)->type_name(ValueName);
}

}  // namespace

CLI::App& AddCommand(CLI::App& Program, const std::string& Name, const std::string& Description,
                     const std::string& Footer, std::function<void()> Work) {
  CLI::App& command = *Program.add_subcommand(Name, Description);
  command.footer(Footer);
  command.callback(std::move(Work));
  return command;
}

void SetRequired(CLI::Option* Option, bool IsRequired) { Option->required(IsRequired); }

CLI::Option* AddText(CLI::App& Command, const std::string& Name, const std::string& ValueName, std::string& Value,
                     const std::string& Description) {
  return Command.add_option(Name, Value, Description)->type_name(ValueName);
}

CLI::Option* AddChoice(CLI::App& Command, const std::string& Name, std::string& Value,
                       std::span<const std::string_view> Choices, const std::string& Description) {
  return AddText(Command, Name, fmt::format("{}", fmt::join(Choices, "|")), Value, Description)
      ->check(CLI::IsMember(std::vector<std::string>(Choices.begin(), Choices.end())));
}

void AddFlag(CLI::App& Command, const std::string& Name, bool& Value, const std::string& Description) {
  Command.add_flag(Name, Value, Description);
}

void AddFile(CLI::App& Command, const std::string& Name, std::string& FileName, const std::string& Description) {
  AddText(Command, Name, "", FileName, Description)->required();
}

void AddPoseFile(CLI::App& Command, std::string& FileName) {
  AddFile(Command, "FILE", FileName, "The poses, one X,Y,Z,A,B,C per line; - is standard input");
}

void AddPathFile(CLI::App& Command, std::string& FileName, bool& IsPlane) {
  AddFile(Command, "FILE", FileName, "The poses, one X,Y,Z,A,B,C per line, or X,Y with --2d; - is standard input");
  AddFlag(Command, "--2d", IsPlane, "The file holds the points of a plane profile, one X,Y per line");
}

CLI::Option* AddNumberFile(CLI::App& Command, std::string& FileName) {
  return AddText(Command, "FILE", "", FileName, "The numbers, one row per line; - is standard input")->required();
}

void AddJson(CLI::App& Command, bool& IsJson) { AddFlag(Command, "--json", IsJson, "Report as JSON"); }

void AddPlot(CLI::App& Command, std::string& FileName) {
  const auto read = [&FileName](const std::string& Text) {
    if (!IsPictureName(Text)) Refuse("--plot", Text, "a file name that ends in .svg or .png");
    FileName = Text;
  };
  AddRead(Command, "--plot", "OUT", "Draw a picture into OUT.svg or OUT.png (needs gnuplot)", read);
}

void AddMethod(CLI::App& Command, std::optional<TParalizeMethod>& Method, const std::string& Description) {
  const auto read = [&Method](const std::string& Text) {
    const auto found = std::find(kMethodNames.begin(), kMethodNames.end(), Text);
    if (found == kMethodNames.end()) Refuse("--method", Text, "equal, chord or centripetal");
    Method = static_cast<TParalizeMethod>(found - kMethodNames.begin());
  };
  AddRead(Command, "--method", "equal|chord|centripetal", Description, read);
}

void AddOutput(CLI::App& Command, std::string& FileName) {
  AddText(Command, "-o,--output", "OUT", FileName, "Where the result goes; - is standard output, which is the default");
}

void AddDecimals(CLI::App& Command, int& Decimals) {
  const auto read = [&Decimals](const std::string& Text) {
    Decimals = static_cast<int>(CountFrom("--decimals", Text, 0, kMaxRowDecimals));
  };
  AddRead(Command, "--decimals", "D",
          fmt::format("Digits after the decimal point, 0 to {} (default {})", kMaxRowDecimals, Decimals), read);
}

CLI::Option* AddPositive(CLI::App& Command, const std::string& Name, const std::string& ValueName,
                         std::optional<double>& Value, const std::string& Description) {
  return AddRead(Command, Name, ValueName, Description, [&Value, Name](const std::string& Text) {
    Value = NumberFrom(
        Name, Text, [](double Number) { return Number > 0.0; }, "a number above 0");
  });
}

CLI::Option* AddCount(CLI::App& Command, const std::string& Name, std::optional<std::int64_t>& Value,
                      std::int64_t Smallest, std::int64_t Largest, const std::string& Description) {
  return AddRead(Command, Name, "N", Description, [&Value, Name, Smallest, Largest](const std::string& Text) {
    Value = CountFrom(Name, Text, Smallest, Largest);
  });
}

CLI::Option* AddLengths(CLI::App& Command, const std::string& Name, const std::string& ValueName,
                        std::vector<double>& Values, const std::string& Description) {
  return AddRead(Command, Name, ValueName, Description,
                 [&Values, Name](const std::string& Text) { Values = LengthsFrom(Name, Text); });
}

std::vector<double> NumbersFrom(const std::string& Option, std::string_view Text, std::size_t Count) {
  std::string_view inner = Text;
  if (inner.starts_with('(') && inner.ends_with(')')) inner = inner.substr(1, inner.size() - 2);
  std::vector<double> values(Count);
  try {
    ParseNumberRow(inner, values, nf1033, Option);
  } catch (const TGeneralError&) {
    Refuse(Option, Text, fmt::format("{} numbers, parted by commas", Count));
  }
  return values;
}

CLI::Option* AddNumbers(CLI::App& Command, const std::string& Name, const std::string& ValueName, std::size_t Count,
                        std::optional<std::vector<double>>& Values, const std::string& Description) {
  return AddRead(Command, Name, ValueName, Description,
                 [&Values, Name, Count](const std::string& Text) { Values = NumbersFrom(Name, Text, Count); });
}

void AddDegrees(CLI::App& Command, bool& IsDegrees, const std::string& Description) {
  AddFlag(Command, "--degrees", IsDegrees, Description);
}

std::string_view MethodName(TParalizeMethod Method) { return kMethodNames[static_cast<std::size_t>(Method)]; }

}  // namespace ZORBase::Tool
