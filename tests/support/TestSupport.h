// TestSupport: the words that tests are written in.
//   RaisesGeneralError       EXPECT_THAT(Calling([&] { ... }), RaisesGeneralError("text")), and with matchers of the text
//   IsNearPose, IsExactPose  poses component by component, within a tolerance or to the bit
//   PosesFrom                a list from lines of text
//   RowsOf                   the numbers of a text of rows
//   TScratchFolder           a folder that is gone at the end of the test
//   FileText, WriteFile      whole files as bytes
//   WriteProfile             a path as a file of points of the plane
//   SampleFile               measured data
//   TLocaleGuard             another global locale for a scope
//   DecimalCommaLocale       a locale that writes 1.234.567,5 and needs nothing installed
#pragma once

#include <ZORBase/ZORGeometry/CADTypes6D.h>
#include <ZORBase/common/BaseServices.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <initializer_list>
#include <locale>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "support/FunctionRef.h"
#include "support/Numbers.h"

namespace ZORBase::Test {

/// An action without arguments.
using TAction = TFunctionRef<void()>;
void PrintTo(const TAction& Action, std::ostream* Stream);

/// \return what the general error says that Action raises; nothing when it raises none.
std::optional<std::string> GeneralErrorOf(const TAction& Action);

/// \return the action, in the words of an expectation: only within one expression, since a lambda that is written there ends with it.
inline TAction Calling(const TAction& Action) { return Action; }

/// Matches an action that raises the general error with a text, or with one that matches.
testing::Matcher<const TAction&> RaisesGeneralError(const testing::Matcher<std::string>& Text);

/// Matches a pose whose components are all within Tolerance of those of Expected; names the worst one.
MATCHER_P2(IsNearPose, Expected, Tolerance, "") {
  constexpr std::array names = {"X", "Y", "Z", "A", "B", "C"};
  const TPoint6D expected = Expected;
  for (int i = 0; i < 6; ++i) {
    const double miss = std::fabs(arg.Items(i) - expected.Items(i));
    if (miss <= Tolerance) continue;
    *result_listener << names[static_cast<std::size_t>(i)] << " is off by " << miss;
    return false;
  }
  return true;
}

/// Matches a pose whose components are those of Expected bit for bit.
MATCHER_P(IsExactPose, Expected, "") {
  const TPoint6D expected = Expected;
  for (int i = 0; i < 6; ++i) {
    if (std::bit_cast<std::uint64_t>(arg.Items(i)) == std::bit_cast<std::uint64_t>(expected.Items(i))) continue;
    *result_listener << "item " << i << " is " << arg.Items(i) << " and not " << expected.Items(i);
    return false;
  }
  return true;
}

/// \return the poses of some lines of text.
TPoint6DList PosesFrom(std::initializer_list<std::string_view> Lines);

/// \return the numbers of a text, one vector per line.
std::vector<std::vector<double>> RowsOf(const std::string& Text);

/// A new folder for the files of a test; it is removed with all that is in it.
class TScratchFolder {
 public:
  TScratchFolder();
  ~TScratchFolder();
  TScratchFolder(const TScratchFolder&) = delete;
  TScratchFolder& operator=(const TScratchFolder&) = delete;

  const std::filesystem::path& Path() const { return FPath; }
  /// \return the path of a file in the folder.
  std::string File(std::string_view Name) const { return (FPath / Name).string(); }
  /// \return the number of entries in the folder.
  std::size_t Count() const;

 private:
  std::filesystem::path FPath;
};

std::string FileText(const std::string& FileName);
void WriteFile(const std::string& FileName, std::string_view Text);
/// Writes X and Y of poses to 12 decimals: the path as a profile of the plane.
void WriteProfile(const std::string& FileName, const TPoint6DList& Poses);

/// \return the path of one of the repository's own measured files.
std::string SampleFile(std::string_view Name);

/// Another global locale for the length of a scope.
class TLocaleGuard {
 public:
  explicit TLocaleGuard(const std::locale& Locale) : FBefore(std::locale::global(Locale)) {}
  ~TLocaleGuard() { std::locale::global(FBefore); }
  TLocaleGuard(const TLocaleGuard&) = delete;
  TLocaleGuard& operator=(const TLocaleGuard&) = delete;

 private:
  std::locale FBefore;
};

/// \return a locale without a name that has a decimal comma and groups digits by points.
std::locale DecimalCommaLocale();

}  // namespace ZORBase::Test

namespace ZORBase {
/// How GoogleTest prints a pose.
void PrintTo(const TPoint6D& P, std::ostream* Stream);
}  // namespace ZORBase
