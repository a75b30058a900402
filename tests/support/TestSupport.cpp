#include "support/TestSupport.h"

#include <fstream>
#include <iterator>
#include <ostream>
#include <random>
#include <sstream>

namespace ZORBase::Test {
namespace {

struct TDecimalComma : std::numpunct<char> {
  char do_decimal_point() const override { return ','; }
  char do_thousands_sep() const override { return '.'; }
  std::string do_grouping() const override { return "\3"; }
};

class TRaisesGeneralError : public testing::MatcherInterface<const TAction&> {
 public:
  explicit TRaisesGeneralError(const testing::Matcher<std::string>& Text) : FText(Text) {}

  bool MatchAndExplain(const TAction& Action, testing::MatchResultListener* Listener) const override {
    const std::optional<std::string> text = GeneralErrorOf(Action);
    if (!text) {
      *Listener << "which raises nothing";
      return false;
    }
    *Listener << "which raises \"" << *text << "\"";
    return FText.MatchAndExplain(*text, Listener);
  }
  void DescribeTo(std::ostream* Stream) const override {
    *Stream << "raises the general error with a text that ";
    FText.DescribeTo(Stream);
  }

 private:
  testing::Matcher<std::string> FText;
};

}  // namespace

void PrintTo(const TAction&, std::ostream* Stream) { *Stream << "an action"; }

std::optional<std::string> GeneralErrorOf(const TAction& Action) {
  try {
    Action();
  } catch (const TGeneralError& error) {
    return error.what();
  }
  return std::nullopt;
}

testing::Matcher<const TAction&> RaisesGeneralError(const testing::Matcher<std::string>& Text) {
  return testing::MakeMatcher(new TRaisesGeneralError(Text));
}

TPoint6DList PosesFrom(std::initializer_list<std::string_view> Lines) {
  TPoint6DList poses;
  for (const std::string_view line : Lines) poses.Add(TPoint6D::Parse1033(line));
  return poses;
}

std::vector<std::vector<double>> RowsOf(const std::string& Text) {
  std::vector<std::vector<double>> rows;
  std::istringstream lines(Text);
  for (std::string line; std::getline(lines, line);) {
    rows.emplace_back();
    for (TDelimitedText items(line); items.Next();) rows.back().push_back(StrToFloat1033(items.Item()));
  }
  return rows;
}

TScratchFolder::TScratchFolder() {
  const std::filesystem::path base = std::filesystem::temp_directory_path();
  do {
    FPath = base / ("zorbase-test-" + std::to_string(std::random_device{}()));
  } while (!std::filesystem::create_directory(FPath));
}

TScratchFolder::~TScratchFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(FPath, ignored);
}

std::size_t TScratchFolder::Count() const {
  const std::filesystem::directory_iterator entries(FPath);
  return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

std::string FileText(const std::string& FileName) {
  std::ifstream file(FileName, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void WriteFile(const std::string& FileName, std::string_view Text) {
  std::ofstream file(FileName, std::ios::binary);
  file << Text;
}

void WriteProfile(const std::string& FileName, const TPoint6DList& Poses) {
  std::string text;
  for (const TPoint6D& pose : Poses) text += Format1033("%.12f,%.12f\n", pose.X, pose.Y);
  WriteFile(FileName, text);
}

std::string SampleFile(std::string_view Name) { return (std::filesystem::path(ZORBASE_SAMPLE_DATA) / Name).string(); }

std::locale DecimalCommaLocale() { return {std::locale::classic(), new TDecimalComma}; }

}  // namespace ZORBase::Test

namespace ZORBase {

void PrintTo(const TPoint6D& P, std::ostream* Stream) {
  std::string text;
  for (int i = 0; i < 6; ++i) {
    text += i == 0 ? "(" : ", ";
    text += FloatToStr(P.Items(i));
  }
  *Stream << text << ")";
}

}  // namespace ZORBase
