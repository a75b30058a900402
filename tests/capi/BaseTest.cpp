#include "capi/CapiTestSupport.h"
#include "support/TestAllocator.h"

#include <limits>
#include <thread>

namespace ZORBase::Test {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

TEST(ZorbaseVersion, IsThatOfTheLibraryAndTheInterfaceIsAsOldAsTheHeader) {
  EXPECT_THAT(zorbase_version(), testing::MatchesRegex("[0-9]+\\.[0-9]+\\.[0-9]+"));
  EXPECT_EQ(zorbase_interface_version(), ZORBASE_INTERFACE_VERSION);
}

TEST(ZorbaseStart, StartsThePackageUntilTheMatchingStopAndNests) {
  EXPECT_EQ(ZORLog(), nullptr);
  EXPECT_TRUE(Good(zorbase_start()));
  EXPECT_TRUE(Good(zorbase_start()));
  EXPECT_TRUE(Good(zorbase_stop()));
  EXPECT_NE(ZORLog(), nullptr);
  EXPECT_TRUE(Good(zorbase_stop()));
  EXPECT_EQ(ZORLog(), nullptr);
}

TEST(ZorbaseSetLogEnabled, SwitchesTheLoggerAndFailsWhileTheLibraryIsNotStarted) {
  ASSERT_TRUE(Good(zorbase_start()));
  EXPECT_TRUE(Good(zorbase_set_log_enabled(1)));
  EXPECT_TRUE(ZORLog()->Enabled());
  EXPECT_TRUE(Good(zorbase_set_log_enabled(0)));
  EXPECT_FALSE(ZORLog()->Enabled());
  ASSERT_TRUE(Good(zorbase_stop()));
  EXPECT_TRUE(Fails(zorbase_set_log_enabled(1), ZORBASE_ERROR, HasSubstr("not started")));
}

TEST(ZorbaseLastError, IsTheTextOfTheLastCallWhichIsEmptyAfterASuccess) {
  zorbase_pose pose = {};
  EXPECT_TRUE(Fails(zorbase_pose_from_text("1,2,3,4,5", &pose), ZORBASE_ERROR,
                    "TPoint6D Parse from string Failed(1,2,3,4,5). Error Item Number: 5"));
  EXPECT_TRUE(
      Fails(zorbase_pose_from_text(nullptr, &pose), ZORBASE_BAD_ARGUMENT, "zorbase_pose_from_text: text is null"));
  EXPECT_TRUE(Good(zorbase_pose_from_text("1,2,3,4,5,6", &pose)));
  EXPECT_STREQ(zorbase_last_error(), "");
}

TEST(ZorbaseLastError, BelongsToItsThread) {
  zorbase_pose pose = {};
  ASSERT_NE(zorbase_pose_from_text("mine", &pose), ZORBASE_OK);
  std::string before;
  std::string after;
  std::thread other([&] {
    before = zorbase_last_error();
    zorbase_pose theirs = {};
    EXPECT_NE(zorbase_pose_from_text("theirs", &theirs), ZORBASE_OK);
    after = zorbase_last_error();
  });
  other.join();
  EXPECT_EQ(before, "");
  EXPECT_THAT(after, HasSubstr("theirs"));
  EXPECT_THAT(zorbase_last_error(), HasSubstr("mine"));
}

// The name of a file is quoted whole. Its letters take two bytes each, so that every other place is inside of one.
TEST(ZorbaseLastError, IsCutAt2047BytesAndNotInsideACharacter) {
  const TPosesHandle poses;
  for (const std::string_view first : {"", "x"}) {
    std::string name(first);
    for (int i = 0; i < 2000; ++i) name += "\u00e4";
    ASSERT_EQ(zorbase_poses_load(poses, name.c_str()), ZORBASE_ERROR);
    const std::string text = zorbase_last_error();
    EXPECT_THAT(text, EndsWith("\u00e4..."));
    EXPECT_GE(text.size(), 2046U);
    EXPECT_LE(text.size(), 2047U);
    const std::string whole = GeneralErrorOf([&] { TPoint6DList().LoadFromFile(name); }).value_or("");
    EXPECT_THAT(whole, StartsWith(text.substr(0, text.size() - 3)));
  }
}

TEST(ZorbaseStatus, WantOfMemoryHasItsOwnAndLeavesNoObject) {
  zorbase_poses* poses = nullptr;
  ASSERT_TRUE(Good(zorbase_poses_create(&poses)));
  zorbase_poses* none = poses;
  const zorbase_status status = [&] {
    const TFailingAllocations failing;
    return zorbase_poses_create(&none);
  }();
  EXPECT_TRUE(Fails(status, ZORBASE_NO_MEMORY, "zorbase_poses_create: not enough memory"));
  EXPECT_EQ(none, nullptr);

  const zorbase_pose pose = {1, 2, 3, 0, 0, 1};
  const zorbase_status appended = [&] {
    const TFailingAllocations failing;
    return zorbase_poses_append(poses, &pose, 1);
  }();
  EXPECT_TRUE(Fails(appended, ZORBASE_NO_MEMORY, HasSubstr("not enough memory")));
  std::size_t count = 9;
  EXPECT_TRUE(Good(zorbase_poses_get_all(poses, nullptr, 0, &count)));
  EXPECT_EQ(count, 0U);
  zorbase_poses_destroy(poses);
}

TEST(ZorbaseDestroy, TakesANullPointer) {
  zorbase_poses_destroy(nullptr);
  zorbase_curve_destroy(nullptr);
  zorbase_spectrum_destroy(nullptr);
  zorbase_filter_destroy(nullptr);
  zorbase_surface_destroy(nullptr);
}

TEST(ZorbaseArrays, MayBeNullWhereTheyAreEmptyAndHaveAtMost2To31Minus1Items) {
  const TPosesHandle poses;
  EXPECT_TRUE(Good(zorbase_poses_append(poses, nullptr, 0)));
  EXPECT_TRUE(
      Fails(zorbase_poses_append(poses, nullptr, 1), ZORBASE_BAD_ARGUMENT, "zorbase_poses_append: items is null"));
  const zorbase_pose pose = {};
  constexpr std::size_t tooMany = std::size_t{std::numeric_limits<int>::max()} + 1;
  EXPECT_TRUE(Fails(zorbase_poses_append(poses, &pose, tooMany), ZORBASE_BAD_ARGUMENT,
                    "zorbase_poses_append: items has 2147483648 items, more than 2147483647"));
}

TEST(ZorbaseRoom, TellsTheCountWithoutAnArrayAndWithOneThatIsTooSmall) {
  const TPosesHandle poses;
  const std::vector<zorbase_pose> given = PosesOutside(SwungPoses(3));
  ASSERT_TRUE(Good(zorbase_poses_append(poses, given.data(), given.size())));

  std::size_t count = 0;
  EXPECT_TRUE(Good(zorbase_poses_get_all(poses, nullptr, 0, &count)));
  EXPECT_EQ(count, 3U);

  std::vector<zorbase_pose> places(4, zorbase_pose{7, 7, 7, 7, 7, 7});
  const auto untouched = Bits(places);
  count = 0;
  EXPECT_TRUE(Fails(zorbase_poses_get_all(poses, places.data(), 2, &count), ZORBASE_BAD_ARGUMENT,
                    "zorbase_poses_get_all: items has 2 places; 3 are needed"));
  EXPECT_EQ(count, 3U);
  EXPECT_EQ(Bits(places), untouched);

  EXPECT_TRUE(Good(zorbase_poses_get_all(poses, places.data(), places.size(), nullptr)));
  EXPECT_EQ(Bits(std::vector(places.begin(), places.begin() + 3)), Bits(given));
  EXPECT_EQ(places[3].x, 7);
  EXPECT_TRUE(Fails(zorbase_poses_get_all(poses, nullptr, 3, &count), ZORBASE_BAD_ARGUMENT, HasSubstr("is null")));
}

TEST(ZorbaseRoom, OfATextHasToHoldTheByte0AtItsEnd) {
  const zorbase_pose pose = {1, 2, 3, 0, 0, 1};
  const std::string expected = "1.0,2.0,3.0,0.0,0.0,1.0";
  std::size_t count = 0;
  EXPECT_TRUE(Good(zorbase_pose_to_text(&pose, 1, nullptr, 0, &count)));
  EXPECT_EQ(count, expected.size());
  std::string text(expected.size(), '?');
  EXPECT_TRUE(Fails(zorbase_pose_to_text(&pose, 1, text.data(), text.size(), &count), ZORBASE_BAD_ARGUMENT,
                    "zorbase_pose_to_text: text has 23 places; 24 are needed"));
  EXPECT_EQ(text, std::string(expected.size(), '?'));
  EXPECT_TRUE(Good(zorbase_pose_to_text(&pose, 1, text.data(), text.size() + 1, nullptr)));
  EXPECT_EQ(text, expected);
}

}  // namespace
}  // namespace ZORBase::Test
