#include <ZORBase/ZORGeometry/NurbsGeometry/TSUTable.h>

#include <ZORBase/common/TableLookup.h>

#include <string>

namespace ZORBase {
namespace {

// One direction of the table: the column that is searched and the column that answers.
struct TDirection {
  double TSULine::*Key;
  double TSULine::*Value;
};

constexpr TDirection kLengthToParam = {&TSULine::S, &TSULine::u};
constexpr TDirection kParamToLength = {&TSULine::u, &TSULine::S};

// The text names one direction and serves both.
[[noreturn]] void RaiseZeroDividend() { RaiseGeneralError("CalcuHermiteS: The dividend is 0"); }

// The cubic between the rows i and i+1, with slopes from the rows before and after them where there are any.
double CalcuHermite(const TSUTable& Table, const TDirection& To, double Key, int i) {
  const int last = Table.Count() - 1;
  const auto slope = [&](int From, int Until) {
    const TSULine& a = Table[From];
    const TSULine& b = Table[Until];
    const double step = b.*To.Key - a.*To.Key;
    if (step == 0.0) RaiseZeroDividend();
    return (b.*To.Value - a.*To.Value) / step;
  };
  if (i == last || Table[i].*To.Key == Table[i + 1].*To.Key) RaiseZeroDividend();
  const double m0 = slope(i == 0 ? 0 : i - 1, i + 1);
  const double m1 = slope(i, i + 1 == last ? i + 1 : i + 2);
  const TSULine& row = Table[i];
  const TSULine& next = Table[i + 1];
  return HermiteStep(Key, row.*To.Key, next.*To.Key, row.*To.Value, next.*To.Value, m0, m1);
}

double Answer(const TSUTable& Table, const TDirection& To, double Key, const TRowPlace& Place) {
  return Place.Between ? CalcuHermite(Table, To, Key, Place.Row) : Table[Place.Row].*To.Value;
}

double LookUp(const TSUTable& Table, const TDirection& To, double Key) {
  const TSULine* const rows = &Table.First();
  return Answer(Table, To, Key,
                FindRow(
                    Table.Count(), [&](int Row) { return rows[Row].*To.Key; }, Key));
}

double LookUp(const TSUTable& Table, const TDirection& To, double Key, TSUTable::TCursor& Cursor) {
  const TSULine* const rows = &Table.First();
  const TRowPlace place = FindRowFrom(
      Cursor.Row, Table.Count(), [&](int Row) { return rows[Row].*To.Key; }, Key);
  Cursor.Row = place.Row;
  return Answer(Table, To, Key, place);
}

void LookUpAll(const TSUTable& Table, const TDirection& To, std::span<const double> Keys, std::span<double> Values) {
  if (Values.size() < Keys.size()) {
    RaiseGeneralError("TSUTable: " + std::to_string(Keys.size()) + " values to look up, but places for " +
                      std::to_string(Values.size()) + " results");
  }
  TSUTable::TCursor cursor;
  for (std::size_t i = 0; i < Keys.size(); ++i) Values[i] = LookUp(Table, To, Keys[i], cursor);
}

}  // namespace

double TSUTable::GetSByU(double u) const { return LookUp(*this, kParamToLength, u); }
double TSUTable::GetSByU(double u, TCursor& Cursor) const { return LookUp(*this, kParamToLength, u, Cursor); }
double TSUTable::GetUByS(double S) const { return LookUp(*this, kLengthToParam, S); }
double TSUTable::GetUByS(double S, TCursor& Cursor) const { return LookUp(*this, kLengthToParam, S, Cursor); }
void TSUTable::GetUByS(std::span<const double> S, std::span<double> u) const { LookUpAll(*this, kLengthToParam, S, u); }
void TSUTable::GetSByU(std::span<const double> u, std::span<double> S) const { LookUpAll(*this, kParamToLength, u, S); }

}  // namespace ZORBase
