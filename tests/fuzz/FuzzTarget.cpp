#include "fuzz/FuzzTarget.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <filesystem>
#include <fstream>
#include <limits>
#include <random>

namespace ZORBase::Test {
namespace {

namespace fs = std::filesystem;

struct TEntry {
  std::string_view Name;
  TFuzzFunction Function;
};

std::vector<TEntry>& Entries() {
  static std::vector<TEntry> entries;
  return entries;
}

bool IsBlank(char Character) { return static_cast<unsigned char>(Character) <= ' '; }

[[noreturn]] void End(std::string_view What, std::string_view Text) {
  std::fprintf(stderr, "%.*s%.*s\n", static_cast<int>(What.size()), What.data(), static_cast<int>(Text.size()),
               Text.data());
  std::abort();
}

// Removed at the end of the program.
struct TFolder {
  fs::path Path = fs::temp_directory_path() / ("zorbase-fuzz-" + std::to_string(std::random_device{}()));
  TFolder() { fs::create_directory(Path); }
  ~TFolder() {
    std::error_code ignored;
    fs::remove_all(Path, ignored);
  }
  TFolder(const TFolder&) = delete;
  TFolder& operator=(const TFolder&) = delete;
};

const TFolder& Folder() {
  static const TFolder folder;
  return folder;
}

}  // namespace

// ---------------------------------------------------------------------------------------------- words

bool TFuzzInput::AtEnd() {
  while (FPlace < FText.size() && IsBlank(FText[FPlace])) ++FPlace;
  return FPlace == FText.size();
}

std::string_view TFuzzInput::Line() {
  const std::size_t begin = FPlace;
  const std::size_t end = std::min(FText.find('\n', begin), FText.size());
  FPlace = std::min(end + 1, FText.size());
  return FText.substr(begin, end - begin);
}

std::string_view TFuzzInput::Word() {
  if (AtEnd()) return {};
  const std::size_t begin = FPlace;
  while (FPlace < FText.size() && !IsBlank(FText[FPlace])) ++FPlace;
  return FText.substr(begin, FPlace - begin);
}

double TFuzzInput::Number() {
  const std::string_view word = Word();
  double value = 0.0;
  const auto read = std::from_chars(word.data(), word.data() + word.size(), value);
  return read.ec == std::errc() ? value : 0.0;
}

int TFuzzInput::Int() { return AsInt(Number()); }

int TFuzzInput::Count(int Limit) { return std::clamp(Int(), 0, Limit); }

int TFuzzInput::Choice(int Count) {
  return static_cast<int>(static_cast<unsigned>(Int()) % static_cast<unsigned>(Count));
}

std::vector<double> TFuzzInput::Numbers(int Most) {
  std::vector<double> numbers;
  while (static_cast<int>(numbers.size()) < Most && !AtEnd()) numbers.push_back(Number());
  return numbers;
}

TPoint2D TFuzzInput::Point2D() {
  const double x = Number();
  return TPoint2D::Create(x, Number());
}

TPoint3D TFuzzInput::Point3D() {
  const double x = Number();
  const double y = Number();
  return TPoint3D::Create(x, y, Number());
}

TPoint6D TFuzzInput::Pose() {
  TPoint6D pose;
  for (int i = 0; i < 6; ++i) pose.Items(i) = Number();
  return pose;
}

TPoint6DList TFuzzInput::Poses(int Most) {
  TPoint6DList poses;
  while (poses.Count() < Most && !AtEnd()) poses.Add(Pose());
  return poses;
}

int AsInt(double Number) {
  if (std::isnan(Number)) return 0;
  return static_cast<int>(std::clamp(Number, static_cast<double>(std::numeric_limits<int>::min()),
                                     static_cast<double>(std::numeric_limits<int>::max())));
}

// ---------------------------------------------------------------------------------------------- targets

TFuzzTarget::TFuzzTarget(std::string_view Name, TFuzzFunction Function) { Entries().push_back({Name, Function}); }

TFuzzFunction FindFuzzTarget(std::string_view Name) {
  for (const TEntry& entry : Entries()) {
    if (entry.Name == Name || (Name.empty() && Entries().size() == 1)) return entry.Function;
  }
  return nullptr;
}

void RunFuzzTarget(TFuzzFunction Target, std::string_view Text) {
  try {
    TFuzzInput input(Text);
    Target(input);
  } catch (const std::exception& Error) {
    End("An exception passed out: ", Error.what());
  }
}

void Require(bool Holds, std::string_view Law) {
  if (!Holds) End("This does not hold: ", Law);
}

TFuzzFolder::TFuzzFolder() {
  for (const fs::directory_entry& entry : fs::directory_iterator(Folder().Path)) fs::remove_all(entry.path());
}

std::string TFuzzFolder::File(std::string_view Name) { return (Folder().Path / Name).string(); }

std::string TFuzzFolder::Write(std::string_view Name, std::string_view Text) {
  const std::string name = File(Name);
  std::ofstream(name, std::ios::binary) << Text;
  return name;
}

bool SameBits(std::span<const double> A, std::span<const double> B) {
  return A.size() == B.size() && (A.empty() || std::memcmp(A.data(), B.data(), A.size_bytes()) == 0);
}

bool SameNumbers(std::span<const double> A, std::span<const double> B) {
  return std::equal(A.begin(), A.end(), B.begin(), B.end(), [](const double& a, const double& b) {
    return (std::isnan(a) && std::isnan(b)) || SameBits({&a, 1}, {&b, 1});
  });
}

}  // namespace ZORBase::Test
