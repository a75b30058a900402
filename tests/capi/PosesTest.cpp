#include "capi/CapiTestSupport.h"

#include <limits>
#include <string>

namespace ZORBase::Test {
namespace {

using testing::HasSubstr;

std::string NumberText(double Value, int32_t Digits) {
  std::size_t count = 0;
  EXPECT_TRUE(Good(zorbase_number_to_text(Value, Digits, nullptr, 0, &count)));
  std::string text(count, '?');
  EXPECT_TRUE(Good(zorbase_number_to_text(Value, Digits, text.data(), count + 1, nullptr)));
  return text;
}

std::vector<zorbase_pose> All(const zorbase_poses* Poses) {
  std::size_t count = 0;
  EXPECT_TRUE(Good(zorbase_poses_get_all(Poses, nullptr, 0, &count)));
  std::vector<zorbase_pose> all(count);
  EXPECT_TRUE(Good(zorbase_poses_get_all(Poses, all.data(), count, &count)));
  return all;
}

TEST(ZorbasePose, TextIsThatOfThePoseClass) {
  const TPoint6D inside = TPoint6D::Create(-0.0004, 1.0 / 3, 2.5, 0, 1e9, -1);
  const zorbase_pose outside = {-0.0004, 1.0 / 3, 2.5, 0, 1e9, -1};
  for (const int digits : {-1, 0, 3, 12, 13}) {
    char text[256];
    std::size_t count = 0;
    ASSERT_TRUE(Good(zorbase_pose_to_text(&outside, digits, text, sizeof text, &count)));
    EXPECT_EQ(text, inside.ToString1033(digits));
    EXPECT_EQ(count, std::string(text).size());
  }
}

TEST(ZorbasePose, IsReadFromTextAndLeftAloneByABadOne) {
  zorbase_pose pose = {};
  ASSERT_TRUE(Good(zorbase_pose_from_text("1, 2.5 3e1,.5,-4,0.1", &pose)));
  EXPECT_EQ(Bits(pose), Bits(TPoint6D::Create(1, 2.5, 30, 0.5, -4, 0.1)));
  EXPECT_TRUE(Fails(zorbase_pose_from_text("1,2,3,4,5,x", &pose), ZORBASE_ERROR, HasSubstr("TPoint6D Parse")));
  EXPECT_EQ(Bits(pose), Bits(TPoint6D::Create(1, 2.5, 30, 0.5, -4, 0.1)));
}

TEST(ZorbaseNumber, HasTheDigitsOfItsExactValue) {
  EXPECT_EQ(NumberText(0.125, 2), "0.12");
  EXPECT_EQ(NumberText(0.375, 2), "0.38");
  EXPECT_EQ(NumberText(-0.0001, 3), "-0.000");
  EXPECT_EQ(NumberText(0.1, 20), "0.10000000000000000555");
  EXPECT_EQ(NumberText(std::numeric_limits<double>::denorm_min(), 1074).back(), '5');
  for (const int32_t digits : {-1, 1075}) {
    EXPECT_TRUE(Fails(zorbase_number_to_text(1, digits, nullptr, 0, nullptr), ZORBASE_BAD_ARGUMENT,
                      "zorbase_number_to_text: digits must be 0 to 1074"));
  }
}

TEST(ZorbaseEuler, PosesBecomePosesWithDirections) {
  const std::vector<zorbase_euler_pose> angles = {{1, 2, 3, 0.1, 0.2, 0.3}, {4, 5, 6, -1, 2, -3}};
  std::vector<zorbase_pose> poses(2);
  ASSERT_TRUE(Good(zorbase_euler_to_poses(angles.data(), angles.size(), poses.data())));
  EXPECT_EQ(Bits(poses[0]), Bits(TEulerPoint::Create(1, 2, 3, 0.1, 0.2, 0.3).ToPoint6D()));
  EXPECT_EQ(Bits(poses[1]), Bits(TEulerPoint::Create(4, 5, 6, -1, 2, -3).ToPoint6D()));
  EXPECT_TRUE(Good(zorbase_euler_to_poses(nullptr, 0, nullptr)));
}

TEST(ZorbasePoses, AreLoadedAndSavedAsTheListClassDoes) {
  const TScratchFolder folder;
  TPoint6DList inside;
  inside.LoadFromFile(SampleFile("swept-plane.poses.txt"));
  inside.SaveToFile(folder.File("inside.txt"), 7);

  const TPosesHandle outside;
  ASSERT_TRUE(Good(zorbase_poses_load(outside, SampleFile("swept-plane.poses.txt").c_str())));
  EXPECT_EQ(Bits(All(outside)), Bits(inside));
  ASSERT_TRUE(Good(zorbase_poses_save(outside, folder.File("outside.txt").c_str(), 7)));
  EXPECT_EQ(FileText(folder.File("outside.txt")), FileText(folder.File("inside.txt")));
}

TEST(ZorbasePoses, ABadLineIsNamedAndThePosesBeforeItAreThere) {
  const TScratchFolder folder;
  const std::string name = folder.File("bad.txt");
  WriteFile(name, "1,2,3,0,0,1\r\n4,5,6,0,0,1\r\n7,8,9\r\n");
  const TPosesHandle poses;
  const std::string expected = GeneralErrorOf([&] { TPoint6DList().LoadFromFile(name); }).value_or("raises nothing");
  EXPECT_TRUE(Fails(zorbase_poses_load(poses, name.c_str()), ZORBASE_ERROR, expected));
  EXPECT_THAT(expected, HasSubstr("Line 3"));
  EXPECT_EQ(All(poses).size(), 2U);
}

TEST(ZorbasePoses, AFileThatIsNotThereIsAnErrorAndSoIsAFolderToSaveTo) {
  const TScratchFolder folder;
  const TPosesHandle poses;
  EXPECT_TRUE(Fails(zorbase_poses_load(poses, folder.File("none.txt").c_str()), ZORBASE_ERROR, HasSubstr("Line 1")));
  EXPECT_TRUE(Fails(zorbase_poses_save(poses, folder.Path().c_str(), 3), ZORBASE_ERROR, HasSubstr(folder.Path())));
}

TEST(ZorbasePoses, OfAFileWithAnglesHaveItsDirectionsAndABadFileLeavesTheList) {
  const TScratchFolder folder;
  WriteFile(folder.File("good.txt"), "1,2,3,0.1,0.2,0.3\r\n4,5,6,1,2,3\r\n");
  WriteFile(folder.File("bad.txt"), "1,2,3,0.1,0.2,0.3\r\n4,5\r\n");
  TEulerPointList inside;
  inside.LoadFromFile(folder.File("good.txt"));
  const TPosesHandle outside;
  ASSERT_TRUE(Good(zorbase_poses_load_euler(outside, folder.File("good.txt").c_str())));
  EXPECT_EQ(Bits(All(outside)), Bits(inside.ToPoint6DList()));
  EXPECT_TRUE(
      Fails(zorbase_poses_load_euler(outside, folder.File("bad.txt").c_str()), ZORBASE_ERROR, HasSubstr("Line 2")));
  EXPECT_EQ(Bits(All(outside)), Bits(inside.ToPoint6DList()));
}

TEST(ZorbasePoses, AreAppendedReadOneByOneAndCleared) {
  const TPosesHandle poses;
  const TPoint6DList inside = SwungPoses(5);
  const std::vector<zorbase_pose> given = PosesOutside(inside);
  ASSERT_TRUE(Good(zorbase_poses_append(poses, given.data(), 2)));
  ASSERT_TRUE(Good(zorbase_poses_append(poses, given.data() + 2, 3)));
  EXPECT_EQ(Bits(All(poses)), Bits(inside));
  zorbase_pose pose = {};
  ASSERT_TRUE(Good(zorbase_poses_get(poses, 3, &pose)));
  EXPECT_EQ(Bits(pose), Bits(inside[3]));
  for (const int32_t index : {-1, 5}) {
    EXPECT_TRUE(Fails(zorbase_poses_get(poses, index, &pose), ZORBASE_ERROR,
                      "List index out of bounds (" + std::to_string(index) + ")"));
  }
  EXPECT_EQ(Bits(pose), Bits(inside[3]));
  ASSERT_TRUE(Good(zorbase_poses_clear(poses)));
  EXPECT_TRUE(All(poses).empty());
}

}  // namespace
}  // namespace ZORBase::Test
