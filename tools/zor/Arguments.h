// Arguments: subcommands, and the options and arguments that they share, so that they read alike everywhere. All of them refuse a
// bad value while the command line is read, before any file is touched. Only this module knows how a command line is read.
#pragma once

#include <ZORBase/ZORGeometry/NurbsGeometry/TNurbsBasicFunc.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace ZORBase::Tool {

/// A subcommand. Work is done when the command line has been read without an error.
CLI::App& AddCommand(CLI::App& Program, const std::string& Name, const std::string& Description,
                     const std::string& Footer, std::function<void()> Work);

/// Says whether an option or argument must be given.
void SetRequired(CLI::Option* Option, bool IsRequired = true);

/// An option whose value is any text, such as a file name.
CLI::Option* AddText(CLI::App& Command, const std::string& Name, const std::string& ValueName, std::string& Value,
                     const std::string& Description);

/// An option whose value is one of Choices.
CLI::Option* AddChoice(CLI::App& Command, const std::string& Name, std::string& Value,
                       std::span<const std::string_view> Choices, const std::string& Description);

/// An option without a value.
void AddFlag(CLI::App& Command, const std::string& Name, bool& Value, const std::string& Description);

/// A required argument: a file to read.
void AddFile(CLI::App& Command, const std::string& Name, std::string& FileName, const std::string& Description);

/// FILE: the poses to read, "-" for standard input. Required.
void AddPoseFile(CLI::App& Command, std::string& FileName);

/// FILE, and --2d: the poses of a path, or the points of a plane profile.
void AddPathFile(CLI::App& Command, std::string& FileName, bool& IsPlane);

/// FILE: rows of numbers to read, "-" for standard input. Required.
CLI::Option* AddNumberFile(CLI::App& Command, std::string& FileName);

/// --json: the report for programs.
void AddJson(CLI::App& Command, bool& IsJson);

/// --plot OUT: a picture; OUT must end in .svg or .png.
void AddPlot(CLI::App& Command, std::string& FileName);

/// --method equal|chord|centripetal.
void AddMethod(CLI::App& Command, std::optional<TParalizeMethod>& Method, const std::string& Description);

/// -o, --output OUT: where rows of numbers go, "-" for standard output.
void AddOutput(CLI::App& Command, std::string& FileName);

/// --decimals D: how poses are written, 0 to 12.
void AddDecimals(CLI::App& Command, int& Decimals);

/// An option whose value is a number above 0.
CLI::Option* AddPositive(CLI::App& Command, const std::string& Name, const std::string& ValueName,
                         std::optional<double>& Value, const std::string& Description);

/// An option whose value is a whole number from Smallest to Largest.
CLI::Option* AddCount(CLI::App& Command, const std::string& Name, std::optional<std::int64_t>& Value,
                      std::int64_t Smallest, std::int64_t Largest, const std::string& Description);

/// An option whose value is a list of numbers that are not negative, parted by commas or blanks.
CLI::Option* AddLengths(CLI::App& Command, const std::string& Name, const std::string& ValueName,
                        std::vector<double>& Values, const std::string& Description);

/// \return the Count finite numbers of an option's text, parted by commas or blanks; brackets around them are passed over.
/// \throws the error of a command line that is wrong.
std::vector<double> NumbersFrom(const std::string& Option, std::string_view Text, std::size_t Count);

/// An option, or with a Name without dashes an argument, whose value is Count finite numbers, parted by commas or blanks.
/// Brackets around them are passed over.
CLI::Option* AddNumbers(CLI::App& Command, const std::string& Name, const std::string& ValueName, std::size_t Count,
                        std::optional<std::vector<double>>& Values, const std::string& Description);

/// --degrees: angles in degrees instead of radians.
void AddDegrees(CLI::App& Command, bool& IsDegrees, const std::string& Description);

/// \return the name that --method knows it by.
std::string_view MethodName(TParalizeMethod Method);

}  // namespace ZORBase::Tool
