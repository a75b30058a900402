#include <ZORBase/common/BaseServices/TList.h>

#include "support/TestSupport.h"

#include <rapidcheck/gtest.h>
#include <algorithm>
#include <climits>
#include <numeric>
#include <random>
#include <ranges>
#include <stdexcept>
#include <vector>

namespace ZORBase {
namespace {

using Test::Calling;
using Test::RaisesGeneralError;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::SizeIs;

// An item whose order is decided by Key alone; Place tells equal ones apart.
struct TCard {
  int Key = 0;
  int Place = 0;
  friend bool operator==(const TCard&, const TCard&) = default;
};

int ByKey(const TCard& A, const TCard& B) { return A.Key < B.Key ? -1 : (A.Key > B.Key ? 1 : 0); }

int ByValue(int A, int B) { return A < B ? -1 : (A > B ? 1 : 0); }

TList<int> OneToFive() { return {1, 2, 3, 4, 5}; }

TEST(TList, StartsEmpty) {
  const TList<int> list;
  EXPECT_EQ(list.Count(), 0);
  EXPECT_EQ(list.size(), 0U);
  EXPECT_EQ(list.begin(), list.end());
}

TEST(TList, AddRangeAppendsAllInOrder) {
  TDoubleList list = {1, 2};
  list.AddRange(std::vector{3.0, 4.0, 5.0});
  list.AddRange({});
  EXPECT_THAT(list, testing::ElementsAre(1, 2, 3, 4, 5));
}

TEST(TList, AddAppendsAndInsertPutsBefore) {
  TList<int> list;
  list.Add(10);
  list.Add(30);
  list.Insert(1, 20);
  list.Insert(0, 5);
  list.Insert(4, 40);
  EXPECT_THAT(list, ElementsAre(5, 10, 20, 30, 40));
  EXPECT_EQ(list.Count(), 5);
  EXPECT_EQ(list.First(), 5);
  EXPECT_EQ(list.Last(), 40);
}

TEST(TList, DeleteClosesTheGapAndClearLeavesNothing) {
  TList<int> list = OneToFive();
  list.Delete(0);
  list.Delete(3);
  list.Delete(1);
  EXPECT_THAT(list, ElementsAre(2, 4));
  list.Clear();
  EXPECT_THAT(list, SizeIs(0));
  list.Add(7);
  EXPECT_THAT(list, ElementsAre(7));
}

TEST(TList, AnItemOfTheListItselfCanBeAddedAndInserted) {
  TList<std::string> list = {"a long text that does not fit into the string object itself", "b"};
  for (int i = 0; i < 20; ++i) list.Add(list[0]);
  for (int i = 0; i < 20; ++i) list.Insert(1, list.First());
  for (int i = 0; i < 21; ++i) EXPECT_EQ(list[i], list[0]) << i;
  EXPECT_EQ(list[21], "b");
  EXPECT_EQ(list.Last(), list.First());
}

TEST(TList, EveryIndexOutsideIsNamedAndChangesNothing) {
  TList<int> list = OneToFive();
  const TList<int>& view = list;
  EXPECT_THAT(Calling([&] { list[5] = 0; }), RaisesGeneralError("List index out of bounds (5)"));
  EXPECT_THAT(Calling([&] { list[-1] = 0; }), RaisesGeneralError("List index out of bounds (-1)"));
  EXPECT_THAT(Calling([&] { (void)view[INT_MAX]; }), RaisesGeneralError("List index out of bounds (2147483647)"));
  EXPECT_THAT(Calling([&] { (void)view[INT_MIN]; }), RaisesGeneralError("List index out of bounds (-2147483648)"));
  EXPECT_THAT(Calling([&] { list.Delete(5); }), RaisesGeneralError("List index out of bounds (5)"));
  EXPECT_THAT(Calling([&] { list.Delete(-1); }), RaisesGeneralError("List index out of bounds (-1)"));
  EXPECT_THAT(Calling([&] { list.Insert(6, 0); }), RaisesGeneralError("List index out of bounds (6)"));
  EXPECT_THAT(Calling([&] { list.Insert(-1, 0); }), RaisesGeneralError("List index out of bounds (-1)"));
  EXPECT_THAT(list, ElementsAre(1, 2, 3, 4, 5));
}

TEST(TList, AnEmptyListHasNoFirstNoLastAndNothingToDelete) {
  TList<int> list;
  const TList<int>& view = list;
  EXPECT_THAT(Calling([&] { list.First() = 1; }), RaisesGeneralError("List index out of bounds (0)"));
  EXPECT_THAT(Calling([&] { list.Last() = 1; }), RaisesGeneralError("List index out of bounds (-1)"));
  EXPECT_THAT(Calling([&] { (void)view.First(); }), RaisesGeneralError("List index out of bounds (0)"));
  EXPECT_THAT(Calling([&] { (void)view.Last(); }), RaisesGeneralError("List index out of bounds (-1)"));
  EXPECT_THAT(Calling([&] { list.Delete(0); }), RaisesGeneralError("List index out of bounds (0)"));
}

TEST(TList, ItemsAreWrittenThroughEveryAccess) {
  TList<int> list = OneToFive();
  list[1] = 20;
  list.First() = 10;
  list.Last() = 50;
  for (int& item : list) item += 1;
  list.data()[2] = 7;
  EXPECT_THAT(list, ElementsAre(11, 21, 7, 5, 51));
}

TEST(TList, IsAContiguousRange) {
  static_assert(std::ranges::contiguous_range<TList<double>>);
  static_assert(std::ranges::contiguous_range<const TDoubleList>);
  const TDoubleList list = {3.0, 1.0, 2.0};
  const std::span<const double> span = list;
  EXPECT_EQ(span.data(), list.data());
  EXPECT_EQ(span.size(), 3U);
  EXPECT_EQ(std::accumulate(list.begin(), list.end(), 0.0), 6.0);
  EXPECT_EQ(*std::ranges::max_element(list), 3.0);
  EXPECT_THAT(TDoubleList(span.subspan(1)), ElementsAre(1.0, 2.0));
}

TEST(TList, ACopyIsIndependent) {
  TList<int> list = OneToFive();
  const TList<int> copy = list;
  list.Clear();
  EXPECT_THAT(copy, ElementsAre(1, 2, 3, 4, 5));
}

TEST(TList, ReserveMakesRoomWithoutItems) {
  TList<int> list;
  list.Reserve(1000);
  EXPECT_EQ(list.Count(), 0);
  const int* const place = list.data();
  for (int i = 0; i < 1000; ++i) list.Add(i);
  EXPECT_EQ(list.data(), place);
}

// ---------------------------------------------------------------------------------------------- sorting

RC_GTEST_PROP(TList, SortGivesTheItemsInOrderAndEqualOnesAsTheyStood, ()) {
  const auto keys = *rc::gen::container<std::vector<int>>(rc::gen::inRange(-20, 20));
  TList<TCard> list;
  for (const int key : keys) list.Add({key, list.Count()});
  std::vector<TCard> expected(list.begin(), list.end());
  std::stable_sort(expected.begin(), expected.end(), [](const TCard& A, const TCard& B) { return A.Key < B.Key; });
  list.Sort(ByKey);
  RC_ASSERT(std::vector<TCard>(list.begin(), list.end()) == expected);
}

TEST(TList, SortWorksAtEveryLengthAroundThePowersOfTwo) {
  std::mt19937 random(7);
  for (int count = 0; count <= 130; ++count) {
    std::vector<int> items(static_cast<std::size_t>(count));
    std::iota(items.begin(), items.end(), 0);
    const std::vector<int> sorted = items;
    std::shuffle(items.begin(), items.end(), random);
    TList<int> list{std::span<const int>(items)};
    list.Sort(ByValue);
    ASSERT_THAT(list, ElementsAreArray(sorted));
  }
}

TEST(TList, TheSizeOfTheComparersAnswerDoesNotMatter) {
  TList<int> list = {3, 1, 2};
  list.Sort([](int A, int B) { return A < B ? INT_MIN : (A > B ? INT_MAX : 0); });
  EXPECT_THAT(list, ElementsAre(1, 2, 3));
}

TEST(TList, AComparerThatContradictsItselfLosesNoItem) {
  std::mt19937 random(11);
  const std::vector<std::function<int(int, int)>> comparers = {
      [](int, int) { return -1; },
      [](int, int) { return 1; },
      [](int, int) { return 0; },
      [&](int, int) { return static_cast<int>(random() % 3) - 1; },
      [](int A, int B) { return (A - B) % 3 == 0 ? 0 : ((A - B + 3000) % 3 == 1 ? -1 : 1); },
  };
  std::vector<int> items(1000);
  std::iota(items.begin(), items.end(), 0);
  for (const auto& compare : comparers) {
    TList<int> list{std::span<const int>(items)};
    list.Sort(compare);
    EXPECT_TRUE(std::is_permutation(list.begin(), list.end(), items.begin(), items.end()));
  }
}

TEST(TList, AComparerThatFindsAllEqualKeepsTheOrder) {
  TList<int> list = {4, 2, 5, 1, 3};
  list.Sort([](int, int) { return 0; });
  EXPECT_THAT(list, ElementsAre(4, 2, 5, 1, 3));
}

TEST(TList, AComparerThatThrowsLeavesTheListAsItWas) {
  const std::vector<int> items = {9, 3, 7, 1, 8, 2, 6, 4, 5, 0, 11, 10};
  int calls = 0;
  TList<int> counted{std::span<const int>(items)};
  counted.Sort([&](int A, int B) { return ++calls, ByValue(A, B); });
  for (int good = 0; good < calls; ++good) {
    TList<int> list{std::span<const int>(items)};
    int left = good;
    EXPECT_THROW(list.Sort([&](int A, int B) { return left-- > 0 ? ByValue(A, B) : throw std::logic_error("no"); }),
                 std::logic_error);
    ASSERT_THAT(list, ElementsAreArray(items)) << "after " << good << " comparisons";
  }
}

TEST(TList, NoItemIsComparedBelowTwo) {
  const auto fail = [](int, int) -> int { throw std::logic_error("compared"); };
  TList<int> list;
  list.Sort(fail);
  list.Add(1);
  list.Sort(fail);
  EXPECT_THAT(list, ElementsAre(1));
}

}  // namespace
}  // namespace ZORBase
