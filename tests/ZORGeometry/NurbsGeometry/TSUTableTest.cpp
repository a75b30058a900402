#include <ZORBase/ZORGeometry/NurbsGeometry/TSUTable.h>

#include "support/TestSupport.h"

#include <cmath>
#include <limits>
#include <random>

namespace ZORBase {
namespace {

using Test::Calling;
using Test::RaisesGeneralError;

TSUTable TableOf(std::initializer_list<std::pair<double, double>> Rows) {
  TSUTable table;
  for (const auto& [s, u] : Rows) table.Add({s, u, {}, {}});
  return table;
}

const TSUTable kEvenTable = TableOf({{0, 0}, {1, 0.5}, {2, 1}});

TEST(TSUTable, ARowAnswersExactlyForItsOwnLength) {
  EXPECT_EQ(kEvenTable.GetUByS(1), 0.5);
  EXPECT_EQ(kEvenTable.GetSByU(0.5), 1);
}

TEST(TSUTable, LengthsOutsideTheTableGiveTheNearestEnd) {
  EXPECT_EQ(kEvenTable.GetUByS(-5), 0);
  EXPECT_EQ(kEvenTable.GetUByS(7), 1);
  EXPECT_EQ(kEvenTable.GetSByU(-5), 0);
  EXPECT_EQ(kEvenTable.GetSByU(7), 2);
  EXPECT_EQ(kEvenTable.GetUByS(std::numeric_limits<double>::infinity()), 1);
}

TEST(TSUTable, EvenlySpacedRowsInterpolateToAStraightLine) {
  EXPECT_EQ(kEvenTable.GetUByS(0.5), 0.25);
  EXPECT_EQ(kEvenTable.GetSByU(0.25), 0.5);
  EXPECT_EQ(kEvenTable.GetUByS(1.5), 0.75);
}

TEST(TSUTable, TwoRowsAreJoinedByAStraightLine) {
  const TSUTable table = TableOf({{0, 0}, {4, 1}});
  EXPECT_EQ(table.GetUByS(1), 0.25);
  EXPECT_EQ(table.GetSByU(0.75), 3);
}

// With u = S^2 at S = 0, 1, 2, 3 the slopes at the inner rows are exact, 2 S, so the cubic of the middle interval is S^2.
TEST(TSUTable, TheMiddleOfAParabolaIsReproduced) {
  const TSUTable table = TableOf({{0, 0}, {1, 1}, {2, 4}, {3, 9}});
  EXPECT_NEAR(table.GetUByS(1.25), 1.5625, 1e-15);
  EXPECT_NEAR(table.GetUByS(1.5), 2.25, 1e-15);
}

// At the first interval the slopes are (1 - 0) / 1 = 1 and (4 - 0) / 2 = 2; the cubic at its middle is
// 0/2 + 1/2 + (1 - 2) / 8 = 0.375.
TEST(TSUTable, TheFirstIntervalUsesTheForwardDifferenceAsItsSlope) {
  const TSUTable table = TableOf({{0, 0}, {1, 1}, {2, 4}, {3, 9}});
  EXPECT_DOUBLE_EQ(table.GetUByS(0.5), 0.375);
}

// At the last interval the slopes are (9 - 1) / 2 = 4 and (9 - 4) / 1 = 5; the cubic at its middle is
// 4/2 + 9/2 + (4 - 5) / 8 = 6.375.
TEST(TSUTable, TheLastIntervalUsesTheBackwardDifferenceAsItsSlope) {
  const TSUTable table = TableOf({{0, 0}, {1, 1}, {2, 4}, {3, 9}});
  EXPECT_DOUBLE_EQ(table.GetUByS(2.5), 6.375);
}

TEST(TSUTable, AValueWithin1eMinus7OfARowIsThatRows) {
  EXPECT_EQ(kEvenTable.GetUByS(1 + 0.9e-7), 0.5);
  EXPECT_EQ(kEvenTable.GetUByS(1 - 0.9e-7), 0.5);
  EXPECT_EQ(kEvenTable.GetUByS(0.9e-7), 0);
  EXPECT_EQ(kEvenTable.GetUByS(2 - 0.9e-7), 1);
  EXPECT_NE(kEvenTable.GetUByS(1 + 1.1e-7), 0.5);
  EXPECT_NE(kEvenTable.GetUByS(1.1e-7), 0);
}

// The tolerance is 1e-7 in extended precision; the double 1e-7 lies just below it.
TEST(TSUTable, TheToleranceOfARowIs1eMinus7InExtendedPrecision) {
  const TSUTable table = TableOf({{0, 0}, {1, 0.5}, {2, 1}, {3, 2}});
  EXPECT_EQ(table.GetUByS(1e-7), 0);
  EXPECT_NE(table.GetUByS(std::nextafter(1e-7, 1)), 0);
  EXPECT_EQ(table.GetSByU(0.5 + 0.9e-7), 1);
  EXPECT_EQ(table.GetSByU(0.5 - 0.9e-7), 1);
  EXPECT_NE(table.GetSByU(0.5 + 1.1e-7), 1);
  EXPECT_NE(table.GetSByU(0.5 - 1.1e-7), 1);
}

// A slope is taken over two rows of the same S; only a table that somebody filled by hand can have them around a value.
TEST(TSUTable, RowsOfEqualLengthAroundTheIntervalRaise) {
  const TSUTable before = TableOf({{0, 0}, {2, 0.2}, {1, 0.4}, {2, 0.6}, {3, 1}});
  EXPECT_THAT(Calling([&] { before.GetUByS(1.5); }), RaisesGeneralError("CalcuHermiteS: The dividend is 0"));
  const TSUTable after = TableOf({{0, 0}, {1, 0.2}, {3, 0.4}, {1, 0.6}, {4, 1}});
  EXPECT_THAT(Calling([&] { after.GetUByS(2); }), RaisesGeneralError("CalcuHermiteS: The dividend is 0"));
}

TEST(TSUTable, RowsOfEqualParameterRaiseWithTheSameText) {
  const TSUTable table = TableOf({{0, 0}, {1, 0.2}, {2, 0.1}, {3, 0.2}, {4, 1}});
  EXPECT_THAT(Calling([&] { table.GetSByU(0.15); }), RaisesGeneralError("CalcuHermiteS: The dividend is 0"));
}

TEST(TSUTable, TwoEqualRowsHaveNothingBetweenThem) {
  const TSUTable table = TableOf({{1, 0}, {1, 1}});
  EXPECT_EQ(table.GetUByS(1), 0);
  EXPECT_THAT(Calling([&] { table.GetUByS(std::nan("")); }), RaisesGeneralError("CalcuHermiteS: The dividend is 0"));
}

// Where a curve stands still its table repeats a length. Values on either side are answered from the rows around them.
TEST(TSUTable, ARepeatedLengthDoesNotDisturbItsNeighbours) {
  const TSUTable table = TableOf({{0, 0}, {1, 0.25}, {1, 0.5}, {2, 1}});
  EXPECT_EQ(table.GetUByS(1), 0.25);
  EXPECT_GT(table.GetUByS(1.5), 0.5);
  EXPECT_LT(table.GetUByS(1.5), 1);
}

TEST(TSUTable, OneRowAnswersEverything) {
  const TSUTable table = TableOf({{0, 0.25}});
  EXPECT_EQ(table.GetUByS(-1), 0.25);
  EXPECT_EQ(table.GetUByS(0), 0.25);
  EXPECT_EQ(table.GetUByS(1), 0.25);
  EXPECT_THAT(Calling([&] { table.GetUByS(std::nan("")); }), RaisesGeneralError("CalcuHermiteS: The dividend is 0"));
}

// A table as curves have them: lengths that rise by random steps, some of them 0 or below the tolerance of a row.
TSUTable RandomTable(std::mt19937_64& Random, int Count) {
  TSUTable table;
  TSULine row;
  for (int i = 0; i < Count; ++i) {
    table.Add(row);
    const auto kind = Random() % 8;
    const double unit = static_cast<double>(Random() >> 11U) * 0x1p-53;
    row.S += kind == 0 ? 0.0 : (kind == 1 ? 2e-7 * unit : unit);
    row.u = static_cast<double>(i + 1) / Count;
  }
  return table;
}

TEST(TSUTable, ALookUpWithACursorGivesTheVerySameNumber) {
  std::mt19937_64 random(20240607);
  for (const int count : {1, 2, 3, 4, 7, 64, 1000}) {
    const TSUTable table = RandomTable(random, count);
    TSUTable::TCursor cursor;
    for (int i = 0; i < 3000; ++i) {
      const TSULine& near = table[static_cast<int>(random() % static_cast<std::uint64_t>(count))];
      const double offset = (static_cast<double>(random() >> 11U) * 0x1p-53 - 0.5) * (i % 2 == 0 ? 4e-7 : 3.0);
      ASSERT_EQ(table.GetUByS(near.S + offset), table.GetUByS(near.S + offset, cursor))
          << count << " rows, S " << near.S + offset;
    }
    for (double s = -0.5; s < table.Last().S + 0.5; s += 0.01) ASSERT_EQ(table.GetUByS(s), table.GetUByS(s, cursor));
  }
}

TEST(TSUTable, ACursorOfAnotherTableDoesNoHarm) {
  TSUTable::TCursor cursor{1000};
  EXPECT_EQ(kEvenTable.GetUByS(0.5, cursor), 0.25);
  cursor.Row = -7;
  EXPECT_EQ(kEvenTable.GetUByS(1.5, cursor), 0.75);
}

TEST(TSUTable, AnEmptyTableHasNoFirstRow) {
  EXPECT_THAT(Calling([] { TSUTable().GetUByS(0); }), RaisesGeneralError("List index out of bounds (0)"));
  EXPECT_THAT(Calling([] { TSUTable().GetSByU(0); }), RaisesGeneralError("List index out of bounds (0)"));
}

}  // namespace
}  // namespace ZORBase
