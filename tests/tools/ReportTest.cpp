#include <zor/Report.h>

#include "support/TestSupport.h"

#include <limits>
#include <nlohmann/json.hpp>

namespace ZORBase::Tool {
namespace {

TReport SampleReport() {
  TReport report;
  report.Section("", "");
  report.Fact("file", "file", "a.txt");
  report.Fact("poses", "poses", std::int64_t{3});
  report.Section("chords", "Distances", {{"distance", "distance"}, {"lines", "between"}});
  report.Row("smallest", "smallest", {0.00025, TLines{1, 2}});
  report.Row("largest", "largest", {12.5, TLines{7, 7}});
  report.Fact("sum", "sum", 1e9);
  return report;
}

TEST(TReport, AsTextIsOneAlignedTablePerSection) {
  EXPECT_EQ(SampleReport().Text(),
            "file        a.txt\n"
            "poses       3\n"
            "\n"
            "Distances           distance           between\n"
            "  smallest           0.00025         lines 1-2\n"
            "  largest          12.500000            line 7\n"
            "  sum                  1e+09\n");
}

TEST(TReport, AsJsonNestsRowsAndKeepsFactsPlain) {
  const auto json = nlohmann::json::parse(SampleReport().Json());
  EXPECT_EQ(json, nlohmann::json::parse(R"({"file": "a.txt", "poses": 3, "chords": {
      "smallest": {"distance": 0.00025, "lines": [1, 2]},
      "largest": {"distance": 12.5, "lines": 7}, "sum": 1e9}, "warnings": []})"));
}

TEST(TReport, JsonKeepsEveryDigitOfANumber) {
  TReport report;
  report.Section("", "");
  report.Fact("third", "third", 1.0 / 3.0);
  EXPECT_EQ(nlohmann::json::parse(report.Json())["third"].get<double>(), 1.0 / 3.0);
}

TEST(TReport, ByColumnTheColumnsAreTheOuterObjects) {
  TReport report;
  report.Section("methods", "Methods", {{"a", "a"}, {"b", "b"}}, TReport::rnByColumn);
  report.Row("length", "length", {1.5, std::monostate()});
  const auto json = nlohmann::json::parse(report.Json());
  EXPECT_EQ(json["methods"], nlohmann::json::parse(R"({"a": {"length": 1.5}, "b": {"length": null}})"));
  EXPECT_THAT(report.Text(), testing::EndsWith("  length          1.500000                 -\n"));
}

TEST(TReport, ALongListIsShortenedAsTextOnly) {
  TReport report;
  report.Section("list", "List", {{"lines", ""}, {"verdict", ""}}, TReport::rnList);
  for (int i = 1; i <= 13; ++i) report.Row("", "", {TLines{i, i + 1}, "close"});
  EXPECT_THAT(report.Text(), testing::HasSubstr("lines 10-11  close\n  ... and 3 more (all of them with --json)\n"));
  EXPECT_THAT(report.Text(), testing::Not(testing::HasSubstr("lines 11-12")));
  const auto json = nlohmann::json::parse(report.Json());
  ASSERT_EQ(json["list"].size(), 13U);
  EXPECT_EQ(json["list"][12], nlohmann::json::parse(R"({"lines": [13, 14], "verdict": "close"})"));
}

TEST(TReport, AnEmptyListIsAnEmptyArray) {
  TReport report;
  report.Section("list", "List: none", {{"lines", ""}}, TReport::rnList);
  EXPECT_EQ(nlohmann::json::parse(report.Json())["list"], nlohmann::json::array());
  EXPECT_EQ(report.Text(), "List: none\n");
}

TEST(TReport, NumbersThatAreNotFiniteAreNull) {
  TReport report;
  report.Section("", "");
  report.Fact("none", "none", std::numeric_limits<double>::infinity());
  EXPECT_TRUE(nlohmann::json::parse(report.Json())["none"].is_null());
  EXPECT_EQ(report.Text(), "none    -\n");
}

TEST(TReport, WarningsStandBelow) {
  TReport report;
  report.Section("", "");
  report.Fact("poses", "poses", std::int64_t{1});
  report.Warning("beware.");
  EXPECT_THAT(report.Text(), testing::EndsWith("\n\nWarning: beware.\n"));
  EXPECT_EQ(nlohmann::json::parse(report.Json())["warnings"], nlohmann::json::array({"beware."}));
}

TEST(TReport, ANameThatIsNoUtf8DoesNotBreakTheJson) {
  TReport report;
  report.Section("", "");
  report.Fact("file", "file", "\xFF.txt");
  EXPECT_EQ(nlohmann::json::parse(report.Json())["file"], "\xEF\xBF\xBD.txt");
}

}  // namespace
}  // namespace ZORBase::Tool
