#include <ZORBase/ZORGeometry/NurbsGeometry/TSUTable.h>

#include <ZORBase/common/TableLookup.h>

#include <string>

namespace ZORBase {
namespace {

// The rows are spread almost evenly. The buckets of a long table are to stay in the cache, and a place in them is guessed.
bool IsLong(std::size_t Rows) { return Rows > 1U << 16U; }
double BucketsPerRow(std::size_t Rows) { return IsLong(Rows) ? 1.0 / 16.0 : 1.0; }

// The text names one direction and serves both.
[[noreturn]] void RaiseZeroDividend() { RaiseGeneralError("CalcuHermiteS: The dividend is 0"); }

// The cubic between the rows i and i+1, with slopes from the rows before and after them where there are any.
template <class TKey, class TValue>
double CalcuHermite(int Count, TKey Key, TValue Value, double X, int i) {
  const int last = Count - 1;
  const auto slope = [&](int From, int Until) {
    const double step = Key(Until) - Key(From);
    if (step == 0.0) RaiseZeroDividend();
    return (Value(Until) - Value(From)) / step;
  };
  if (i == last || Key(i) == Key(i + 1)) RaiseZeroDividend();
  const double m0 = slope(i == 0 ? 0 : i - 1, i + 1);
  const double m1 = slope(i, i + 1 == last ? i + 1 : i + 2);
  return HermiteStep(X, Key(i), Key(i + 1), Value(i), Value(i + 1), m0, m1);
}

}  // namespace

// One direction of the table: the column that is searched and the column that answers.
template <double TSULine::*Key>
struct TDirection {
  static constexpr bool kFromLength = Key == &TSULine::S;
  static constexpr double TSULine::*Value = kFromLength ? &TSULine::u : &TSULine::S;
  static constexpr double TSUTable::TKeys::*IndexedKey = kFromLength ? &TSUTable::TKeys::S : &TSUTable::TKeys::u;
  static constexpr double TSUTable::TKeys::*IndexedValue = kFromLength ? &TSUTable::TKeys::u : &TSUTable::TKeys::S;

  static const TBucketIndex& Index(const TSUTable& Table) { return kFromLength ? Table.FByS : Table.FByU; }

  // No row that is at least so far away is within the tolerance, whatever the rounding of the difference.
  static constexpr double kClearMargin = 2e-7;
  // Nor one so far away, as the rounding of the difference alone can tell.
  static constexpr double kRowMargin = 1.000001e-7;

  /// The index is there unless the rows have changed; that their number has is seen even if the table was not asked.
  static bool IsIndexed(const TSUTable& Table) { return !Table.FKeys.empty() && Table.FKeys.size() == Table.size(); }

  /// \return the row at or before X, which the index covers. A walk comes from a Row that is not far before it; 0 is no such row.
  template <class TKeyOf>
  static std::size_t RowFrom(const TSUTable& Table, int Row, TKeyOf KeyOf, double X) {
    constexpr int kStep = 8;  // rows
    if (Row > 0 && Row < Table.Count() - 1 - kStep && KeyOf(Row) <= X && X < KeyOf(Row + kStep)) {
      int row = Row;
      ZORBASE_UNROLL
      for (int step = 1; step < kStep; ++step) row += static_cast<int>(KeyOf(Row + step) <= X);
      return static_cast<std::size_t>(row);
    }
    return IsLong(Table.size()) ? Index(Table).FindByGuess(KeyOf, X) : Index(Table).Find(KeyOf, X);
  }

  /// \return whether X, between the rows Row and Row + 1, is near none that a bisection could meet, so that it ends between them.
  template <class TKeyOf>
  static bool IsClear(int Count, TKeyOf KeyOf, int Row, double X) {
    const double fromRow = X - KeyOf(Row);
    const double toNext = KeyOf(Row + 1) - X;
    if (Row == 0 || Row + 2 >= Count) return fromRow >= kClearMargin && toNext >= kClearMargin;
    // The ends of the table, where roundings of another kind count, lie farther out.
    return fromRow >= kRowMargin && toNext >= kRowMargin && X - KeyOf(Row - 1) >= kClearMargin &&
           KeyOf(Row + 2) - X >= kClearMargin;
  }

  /// Gives what Bisect gives, through the index, and the row at or before X in Row, which may be known to be near. \return false
  /// without an index, and for an X outside the table.
  static bool AnswerIndexed(const TSUTable& Table, double X, int& Row, double& Result) {
    if (!IsIndexed(Table) || !Index(Table).Covers(X)) return false;
    const TSUTable::TKeys* const keys = Table.FKeys.data();
    const auto key = [keys](auto i) { return keys[i].*IndexedKey; };
    const auto value = [keys](auto i) { return keys[i].*IndexedValue; };
    Row = static_cast<int>(RowFrom(Table, Row, key, X));
    TRowPlace place = {Row, true};
    if (!IsClear(Table.Count(), key, Row, X)) place = FindRowAt(Row, Table.Count(), key, X);
    Result = place.Between ? CalcuHermite(Table.Count(), key, value, X, place.Row) : value(place.Row);
    return true;
  }

  static double AnswerAt(const TSUTable& Table, double X, const TRowPlace& Place) {
    const TSULine* const rows = Table.data();
    if (!Place.Between) return rows[Place.Row].*Value;
    return CalcuHermite(
        Table.Count(), [rows](int i) { return rows[i].*Key; }, [rows](int i) { return rows[i].*Value; }, X, Place.Row);
  }

  static double Bisect(const TSUTable& Table, double X) {
    const TSULine* const rows = &Table.First();
    return AnswerAt(Table, X,
                    FindRow(
                        Table.Count(), [rows](int i) { return rows[i].*Key; }, X));
  }

  static double LookUp(const TSUTable& Table, double X) {
    int row = 0;
    double result = 0.0;
    return AnswerIndexed(Table, X, row, result) ? result : Bisect(Table, X);
  }

  static double LookUp(const TSUTable& Table, double X, TSUTable::TCursor& Cursor) {
    double result = 0.0;
    if (AnswerIndexed(Table, X, Cursor.Row, result)) return result;
    const TSULine* const rows = &Table.First();
    const TRowPlace place = FindRowFrom(
        Cursor.Row, Table.Count(), [rows](int i) { return rows[i].*Key; }, X);
    Cursor.Row = place.Row;
    return AnswerAt(Table, X, place);
  }

  static void LookUpAll(const TSUTable& Table, std::span<const double> X, std::span<double> Results) {
    if (Results.size() < X.size()) {
      RaiseGeneralError("TSUTable: " + std::to_string(X.size()) + " values to look up, but places for " +
                        std::to_string(Results.size()) + " results");
    }
    TSUTable::TCursor cursor;
    for (std::size_t i = 0; i < X.size(); ++i) Results[i] = LookUp(Table, X[i], cursor);
  }
};

using TFromLength = TDirection<&TSULine::S>;
using TFromParam = TDirection<&TSULine::u>;

double TSUTable::GetSByU(double u) const { return TFromParam::LookUp(*this, u); }
double TSUTable::GetSByU(double u, TCursor& Cursor) const { return TFromParam::LookUp(*this, u, Cursor); }
double TSUTable::GetUByS(double S) const { return TFromLength::LookUp(*this, S); }
double TSUTable::GetUByS(double S, TCursor& Cursor) const { return TFromLength::LookUp(*this, S, Cursor); }
void TSUTable::GetUByS(std::span<const double> S, std::span<double> u) const { TFromLength::LookUpAll(*this, S, u); }
void TSUTable::GetSByU(std::span<const double> u, std::span<double> S) const { TFromParam::LookUpAll(*this, u, S); }

void TSUTable::ReserveRows(std::size_t Rows) {
  TList::Reserve(Rows);
  FKeys.reserve(Rows);
  FByS.Reserve(Rows, BucketsPerRow(Rows));
  FByU.Reserve(Rows, BucketsPerRow(Rows));
}

bool TSUTable::HasRoomFor(std::size_t Rows) const {
  constexpr std::size_t kWaste = 2;  // room for so many times the rows is given back
  const double bucketsPerRow = BucketsPerRow(Rows);
  return Rows <= Capacity() && Rows <= FKeys.capacity() && Capacity() / kWaste <= Rows &&
         FByS.HasRoomFor(Rows, bucketsPerRow) && FByU.HasRoomFor(Rows, bucketsPerRow);
}

void TSUTable::IndexRows() {
  const TKeys* const keys = FKeys.data();
  FByS.Build(
      size(), [keys](std::size_t i) { return keys[i].S; }, BucketsPerRow(size()));
  FByU.Build(
      size(), [keys](std::size_t i) { return keys[i].u; }, BucketsPerRow(size()));
}

void TSUTable::DropIndex() {
  FKeys.clear();
  FByS.Clear();
  FByU.Clear();
}

}  // namespace ZORBase
