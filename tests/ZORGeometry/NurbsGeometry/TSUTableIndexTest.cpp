// The index of a curve's table: the same numbers as the bisection, and gone when a row may have changed.
#include "CurveTestSupport.h"

namespace ZORBase::Test {
namespace {

// The same rows, added one by one: such a table is bisected.
TSUTable FilledByHand(const TSUTable& Table) {
  TSUTable table;
  for (const TSULine& row : Table) table.Add(row);
  return table;
}

std::optional<double> NumberOf(const std::function<double()>& Action) {
  double result = 0;
  if (GeneralErrorOf([&] { result = Action(); })) return std::nullopt;
  return result;
}

void ExpectSameLookUps(const TSUTable& Table, const TSUTable& Expected, std::mt19937_64& Random, int Count) {
  const auto isSame = [](std::optional<double> A, std::optional<double> B) {
    return A.has_value() == B.has_value() && (!A || IsSameNumber(*A, *B));
  };
  std::vector<double> keys = {-kInfinity, -1, -0.0, 0, kInfinity, std::nan("")};
  const int rows = Expected.Count();
  for (int i = 0; i < Count; ++i) {
    const TSULine row = std::as_const(Expected)[static_cast<int>(Random() % static_cast<std::uint64_t>(rows))];
    const double offset = Uniform(Random, -3e-7, 3e-7);
    for (const double key : {row.S, row.u}) {
      keys.insert(keys.end(), {key, key + offset, std::nextafter(key, kInfinity), key + 1e-7, key - 1e-7,
                               key + 2e-7 * (1 + 1e-9), std::nextafter(key, -kInfinity)});
    }
    keys.push_back(Uniform(Random, -0.1, 1.1));
    keys.push_back(Uniform(Random, -0.1, 1.1) * std::as_const(Expected).Last().S);
  }
  const bool isRising =
      std::ranges::is_sorted(Expected, {}, &TSULine::S) && std::ranges::is_sorted(Expected, {}, &TSULine::u);
  TSUTable::TCursor toParam;
  TSUTable::TCursor toLength;
  for (const double key : keys) {
    const auto param = NumberOf([&] { return Expected.GetUByS(key); });
    const auto length = NumberOf([&] { return Expected.GetSByU(key); });
    ASSERT_TRUE(isSame(NumberOf([&] { return Table.GetUByS(key); }), param)) << "S " << key;
    ASSERT_TRUE(isSame(NumberOf([&] { return Table.GetSByU(key); }), length)) << "u " << key;
    if (!isRising) continue;
    ASSERT_TRUE(isSame(NumberOf([&] { return Table.GetUByS(key, toParam); }), param)) << "S " << key;
    ASSERT_TRUE(isSame(NumberOf([&] { return Table.GetSByU(key, toLength); }), length)) << "u " << key;
  }
}

TEST(TSUTableIndex, LookUpsAreThoseOfTheBisection) {
  std::mt19937_64 random(20240704);
  for (const TPathKind kind : kAllPathKinds) {
    for (const int count : {4, 6, 60}) {
      SCOPED_TRACE(testing::Message() << "kind " << static_cast<int>(kind) << ", " << count << " poses");
      const TNurbs6D curve = CurveThrough(RandomPoses(random, kind, count));
      ASSERT_NO_FATAL_FAILURE(
          ExpectSameLookUps(curve.SUTable(), FilledByHand(curve.SUTable()), random, CasesOf(4'000)));
    }
  }
}

// A path of 5000: its rows are 6e-6 apart in u, so that many parameters are near one.
TEST(TSUTableIndex, LookUpsInALongTableAreThoseOfTheBisection) {
  std::mt19937_64 random(20240705);
  TPoint6DList poses;
  for (int i = 0; i < 50; ++i) poses.Add(100.0 * i, 0, 0);
  const TNurbs6D curve = CurveThrough(poses);
  ASSERT_NO_FATAL_FAILURE(ExpectSameLookUps(curve.SUTable(), FilledByHand(curve.SUTable()), random, CasesOf(30'000)));
}

TEST(TSUTableIndex, ReversingTheCurveKeepsLookUpsThoseOfTheBisection) {
  std::mt19937_64 random(20240706);
  TNurbs6D curve = CurveThrough(RandomPoses(random, TPathKind::Walk, 30));
  curve.Reverse();
  ASSERT_NO_FATAL_FAILURE(ExpectSameLookUps(curve.SUTable(), FilledByHand(curve.SUTable()), random, CasesOf(4'000)));
}

TEST(TSUTableIndex, WhateverChangesARowIsSeenByTheNextLookUp) {
  std::mt19937_64 random(20240707);
  const TNurbs6D curve = CurveThrough(RandomPoses(random, TPathKind::Walk, 8));
  const auto move = [](TSULine& Row) { Row.u = 0.5 * Row.u + 0.1; };
  const std::vector<std::function<void(TSUTable&)>> changes = {
      [&](TSUTable& T) { move(T[T.Count() / 2]); },
      [&](TSUTable& T) { move(T.First()); },
      [&](TSUTable& T) { T.Last().S += 5; },
      [&](TSUTable& T) { move(*(T.begin() + 10)); },
      [&](TSUTable& T) { T.data()[20].S += 0.001; },
      [&](TSUTable& T) {
        for (TSULine& row : T) row.S *= 2;
      },
      [&](TSUTable& T) {
        for (TSULine& row : std::span<TSULine>(T)) row.u *= 0.5;
      },
      [](TSUTable& T) {
        T.Add({std::as_const(T).Last().S + 1, 2, {}, {}});
      },
      [](TSUTable& T) {
        T.Insert(1, {0.001, 0.001, {}, {}});
      },
      [](TSUTable& T) { T.Delete(T.Count() / 3); },
      [](TSUTable& T) {
        T.Sort([](const TSULine& A, const TSULine& B) { return A.S < B.S ? 1 : (A.S > B.S ? -1 : 0); });
      },
      [](TSUTable& T) {
        T.Clear();
        for (int i = 0; i < 9; ++i) T.Add({i * 1.0, i * 0.1, {}, {}});
      },
      // Behind the table's back; the number of rows tells.
      [](TSUTable& T) {
        static_cast<TList<TSULine>&>(T).Add({std::as_const(T).Last().S + 1, 2, {}, {}});
      },
  };
  for (std::size_t i = 0; i < changes.size(); ++i) {
    SCOPED_TRACE(testing::Message() << "change " << i);
    TSUTable changed = curve.SUTable();
    changes[i](changed);
    ASSERT_NO_FATAL_FAILURE(ExpectSameLookUps(changed, FilledByHand(changed), random, 500));
  }
}

TEST(TSUTableIndex, ATableThatIsMovedFromIsEmpty) {
  std::mt19937_64 random(20240708);
  TSUTable table = CurveThrough(RandomPoses(random, TPathKind::Walk, 5)).SUTable();
  const TSUTable expected = FilledByHand(table);
  const TSUTable moved = std::move(table);
  ASSERT_NO_FATAL_FAILURE(ExpectSameLookUps(moved, expected, random, 500));
  EXPECT_THAT(Calling([&] { table.GetUByS(0.5); }),
              RaisesGeneralError("List index out of bounds (0)"));  // NOLINT(bugprone-use-after-move)
}

// ---------------------------------------------------------------------------------------------- memory

TEST(TSUTableIndex, ATableMadeAgainKeepsItsMemoryAndHasTheNewRows) {
  std::mt19937_64 random(20261144);
  const TPoint6DList poses = RandomPoses(random, TPathKind::Walk, 60);
  const TNurbs6D expected = CurveThrough(poses);
  TNurbs6D curve = CurveThrough(poses);
  const TSULine* const rows = curve.SUTable().data();
  curve.InitLengthByUArray();
  EXPECT_EQ(curve.SUTable().data(), rows);
  EXPECT_THAT(curve, HasState(StateOf(expected)));
  ASSERT_NO_FATAL_FAILURE(ExpectSameLookUps(curve.SUTable(), FilledByHand(expected.SUTable()), random, 1000));
}

TEST(TSUTableIndex, ACurveFittedAgainHasOnlyTheRowsOfItsNewPath) {
  std::mt19937_64 random(20261145);
  TNurbs6D curve;
  for (const int count : {60, 40, 100, 5, 4, 30}) {
    const TPoint6DList poses = RandomPoses(random, TPathKind::Walk, count);
    ASSERT_TRUE(curve.CreateCross(&poses, mChord));
    const TNurbs6D expected = CurveThrough(poses, mChord);
    ASSERT_THAT(curve, HasState(StateOf(expected)));
    ASSERT_NO_FATAL_FAILURE(ExpectSameLookUps(curve.SUTable(), FilledByHand(expected.SUTable()), random, 500));
  }
}

// Long tables have few buckets for their rows, others one for each: there is room for the rows, but not for the buckets.
TEST(TSUTableIndex, ATableThatIsNoLongerLongHasItsNewRowsToo) {
  std::mt19937_64 random(20261149);
  const auto line = [](double Length) {
    TPoint6DList poses;
    for (int i = 0; i <= 10; ++i) poses.Add(Length / 10 * i, 0, 0);
    return poses;
  };
  TNurbs6D curve = CurveThrough(line(2100));
  ASSERT_GT(curve.SUTable().Count(), 65536);
  const TPoint6DList shorter = line(1900);
  ASSERT_TRUE(curve.CreateCross(&shorter, mChord));
  ASSERT_LT(curve.SUTable().Count(), 65536);
  EXPECT_THAT(curve, HasState(StateOf(CurveThrough(shorter))));
  ASSERT_NO_FATAL_FAILURE(ExpectSameLookUps(curve.SUTable(), FilledByHand(curve.SUTable()), random, 1000));
}

TEST(TSUTableIndex, AMuchShorterTableGivesBackMemory) {
  std::mt19937_64 random(20261146);
  TNurbs6D curve = CurveThrough(RandomPoses(random, TPathKind::Walk, 400));
  const std::size_t rows = curve.SUTable().Capacity();
  const TPoint6DList poses = RandomPoses(random, TPathKind::Walk, 4);
  ASSERT_TRUE(curve.CreateCross(&poses, mChord));
  EXPECT_LT(curve.SUTable().Capacity(), rows / 2);
}

}  // namespace
}  // namespace ZORBase::Test
