#include "support/TestSupport.h"
#include "tools/ProcessRunner.h"

#include <fmt/format.h>
#include <cmath>
#include <nlohmann/json.hpp>

namespace ZORBase::Test {
namespace {

using testing::HasSubstr;

// A constant, and cosines of 10 and 25 per second with phases, 200 samples a second.
std::string TwoCosines(int Samples) {
  std::string text;
  for (int i = 0; i < Samples; ++i) {
    const double t = i / 200.0;
    text +=
        fmt::format("{:.12f}\n", 5.0 + 3.0 * std::cos(2 * kPi * 10 * t + kPi / 3) + 0.5 * std::cos(2 * kPi * 25 * t));
  }
  return text;
}

nlohmann::json SpectrumOf(const std::string& Text, std::vector<std::string> Options) {
  Options.insert(Options.begin(), {"spectrum", "-", "--json"});
  TRunManner manner;
  manner.Input = Text;
  const TRun run = Zor(Options, manner);
  EXPECT_THAT(run, IsDone());
  return nlohmann::json::parse(run.Out, nullptr, false);
}

// Padded to 512 samples, 25 per second stands on bin 64 and 10 per second at 25.6: 0.4 bins beside a bin, which is d = 0.3125
// steps of 1 / (400 samples) and reads sin(pi d) / (pi d) of its amplitude.
TEST(ZorSpectrum, FindsTheFrequenciesAndAmplitudesOfTwoCosines) {
  const auto report = SpectrumOf(TwoCosines(400), {"--fs", "200", "--top", "2"});
  EXPECT_NEAR(report["mean"].get<double>(), 5.0, 1e-9);
  ASSERT_EQ(report["lines"].size(), 2U);
  EXPECT_NEAR(report["lines"][0]["frequency"].get<double>(), 10.0, 0.2);
  EXPECT_NEAR(report["lines"][0]["amplitude"].get<double>(), 3.0 * std::sin(kPi * 0.3125) / (kPi * 0.3125), 0.05);
  EXPECT_NEAR(report["lines"][1]["frequency"].get<double>(), 25.0, 0.2);
  EXPECT_NEAR(report["lines"][1]["amplitude"].get<double>(), 0.5, 0.1);  // and some of the side lobes of the other
}

// 512 samples at 256 a second: 16 periods of 8 per second stand exactly on a bin.
TEST(ZorSpectrum, ACosineOnABinIsReadExactly) {
  std::string text;
  for (int i = 0; i < 512; ++i) text += fmt::format("{:.15f}\n", 2.0 * std::cos(2 * kPi * 8 * i / 256.0 + kPi / 2));
  const auto report = SpectrumOf(text, {"--dt", "0.00390625"});
  ASSERT_EQ(report["lines"].size(), 1U);
  EXPECT_DOUBLE_EQ(report["lines"][0]["frequency"].get<double>(), 8.0);
  EXPECT_NEAR(report["lines"][0]["amplitude"].get<double>(), 2.0, 1e-12);
  EXPECT_NEAR(report["lines"][0]["phase"].get<double>(), 90.0, 1e-9);
}

TEST(ZorSpectrum, TheColumnIsChosen) {
  std::string text;
  for (int i = 0; i < 64; ++i) text += fmt::format("{},{:.12f}\n", i, std::cos(2 * kPi * 4 * i / 64.0));
  const auto report = SpectrumOf(text, {"--fs", "64", "--column", "2", "--top", "1"});
  EXPECT_DOUBLE_EQ(report["lines"][0]["frequency"].get<double>(), 4.0);
}

TEST(ZorSpectrum, AColumnThatIsNotThereIsNamed) {
  TRunManner manner;
  manner.Input = "1,2\n3,4\n";
  EXPECT_THAT(Zor({"spectrum", "-", "--fs", "1", "--column", "3"}, manner),
              EndsWith(1, HasSubstr("standard input, line 1: found 2 numbers, expected at least 3")));
}

TEST(ZorSpectrum, ALineOfAnotherLengthIsNamed) {
  TRunManner manner;
  manner.Input = "1,2\n3\n";
  EXPECT_THAT(Zor({"spectrum", "-", "--fs", "1"}, manner),
              EndsWith(1, HasSubstr("standard input, line 2: found 1 item")));
}

TEST(ZorSpectrum, OneTimeStepIsAskedFor) {
  EXPECT_THAT(Zor({"spectrum", "x.txt"}), RefusesUsage("zor spectrum", "give either --dt or --fs"));
  EXPECT_THAT(Zor({"spectrum", "x.txt", "--dt", "1", "--fs", "1"}),
              RefusesUsage("zor spectrum", "give either --dt or --fs"));
  for (const std::string step : {"0", "-1", "nan"}) {
    EXPECT_THAT(Zor({"spectrum", "x.txt", "--dt", step}), EndsWith(2, HasSubstr("--dt"))) << step;
  }
}

TEST(ZorSpectrum, TooFewSamplesAreAProblemOfTheFile) {
  TRunManner manner;
  manner.Input = "1\n2\n";
  EXPECT_THAT(Zor({"spectrum", "-", "--fs", "1"}, manner),
              EndsWith(1, HasSubstr("found 2 samples, expected at least 4")));
}

TEST(ZorSpectrum, APictureIsDrawn) {
  ASSERT_TRUE(HasGnuplot());
  const TScratchFolder folder;
  WriteFile(folder.File("s.txt"), TwoCosines(100));
  const TRun run = Zor({"spectrum", folder.File("s.txt"), "--fs", "200", "--plot", folder.File("s.svg")});
  ASSERT_THAT(run, IsDone());
  EXPECT_THAT(FileText(folder.File("s.svg")), HasSubstr("spectrum of 100 samples"));
}

}  // namespace
}  // namespace ZORBase::Test
