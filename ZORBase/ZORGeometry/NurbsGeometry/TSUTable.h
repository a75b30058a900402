#pragma once

#include <ZORBase/ZORGeometry/CADTypes6D/TPoint6D.h>
#include <ZORBase/common/BaseServices/TList.h>
#include <ZORBase/common/Cadtypes/TPoint2D.h>
#include <ZORBase/common/Export.h>
#include <ZORBase/kernels/BucketIndex.h>

#include <span>
#include <utility>
#include <vector>

namespace ZORBase {

class TNurbsBasicFunc;

/// A sample of a curve.
struct TSULine {
  double S = 0.0;  ///< arc length from the start of the curve
  double u = 0.0;  ///< parameter
  TPoint2D pos;    ///< the point of a plane curve; zero for a six-component one
  TPoint6D pos6d;  ///< the point of a six-component curve; zero for a plane one
};

/// The arc-length table of a curve: samples in rising order of S and of u, the first one at S = 0, u = 0. Between two rows
/// a cubic through them stands for the curve; a value within 1e-7 of a row is that row's, and one outside the table that
/// of the nearest end.
///
/// The table of a curve is indexed: a look-up costs the same however many rows there are. An index knows its rows as they
/// were, so whatever may change a row drops it, and the table is bisected from then on with the very same results. Change
/// rows through the table itself, not through a reference to the list that it is.
class ZORBASE_API TSUTable : public TList<TSULine> {
 public:
  using TList<TSULine>::TList;

  // -------------------------------------------------------------------------------------- rows

  ///@{
  /// Those of the list; what may change a row drops the index.
  const TSULine& operator[](int Index) const { return TList::operator[](Index); }
  const TSULine& First() const { return TList::First(); }
  const TSULine& Last() const { return TList::Last(); }
  const TSULine* data() const { return TList::data(); }
  auto begin() const { return TList::begin(); }
  auto end() const { return TList::end(); }
  TSULine& operator[](int Index) { return Changing()[Index]; }
  TSULine& First() { return Changing().First(); }
  TSULine& Last() { return Changing().Last(); }
  TSULine* data() { return Changing().data(); }
  auto begin() { return Changing().begin(); }
  auto end() { return Changing().end(); }
  void Add(const TSULine& Value) { Changing().Add(Value); }
  void AddRange(std::span<const TSULine> Values) { Changing().AddRange(Values); }
  void Insert(int Index, const TSULine& Value) { Changing().Insert(Index, Value); }
  void Delete(int Index) { Changing().Delete(Index); }
  void Clear() { Changing().Clear(); }
  template <class TCompare>
  void Sort(TCompare&& Compare) {
    Changing().Sort(std::forward<TCompare>(Compare));
  }
  ///@}

  // -------------------------------------------------------------------------------------- look-ups

  /// Remembers where the last look-up ended, so that one a few rows farther on is cheap; without an index, in a table whose rows were
  /// changed by hand, any nearby. It serves one direction at a time.
  struct TCursor {
    int Row = 0;  ///< the row at which the next search begins
  };

  ///@{
  /// \return the arc length at the parameter u; with a cursor the very same number. Allocates nothing, takes no lock.
  /// \throws the general error "CalcuHermiteS: The dividend is 0" where neighbouring rows share their u, and that of an empty
  ///         list for an empty table.
  double GetSByU(double u) const;
  double GetSByU(double u, TCursor& Cursor) const;
  ///@}

  ///@{
  /// \return the parameter at the arc length S; with a cursor the very same number. Allocates nothing, takes no lock.
  /// \throws the general error "CalcuHermiteS: The dividend is 0" where neighbouring rows share their S, and that of an empty
  ///         list for an empty table.
  double GetUByS(double S) const;
  double GetUByS(double S, TCursor& Cursor) const;
  ///@}

  ///@{
  /// Gives GetUByS of every length, and GetSByU of every parameter, bit for bit; values that rise in small steps are cheaper.
  /// Allocates nothing, takes no lock.
  /// \throws also the general error when the result has no place for every value; then nothing is written.
  void GetUByS(std::span<const double> S, std::span<double> u) const;
  void GetSByU(std::span<const double> u, std::span<double> S) const;
  ///@}

 private:
  template <class TPoint>
  friend class TNurbsCurve;
  template <class TPoint>
  friend class TTableSampler;
  template <double TSULine::*Key>
  friend struct TDirection;

  // What a look-up reads, apart from the points.
  struct TKeys {
    double S;
    double u;
  };

  // A table is made of rows one by one, and is indexed when they are all there. Where it has room, nothing takes memory.
  void ReserveRows(std::size_t Rows);
  bool HasRoomFor(std::size_t Rows) const;
  void AddRow(const TSULine& Row) {
    TList<TSULine>::Add(Row);
    FKeys.push_back({Row.S, Row.u});
  }
  void IndexRows();
  TList<TSULine>& Changing() {
    if (!FKeys.empty()) DropIndex();
    return *this;
  }
  void DropIndex();

  std::vector<TKeys> FKeys;  // none without an index
  TBucketIndex FByS;
  TBucketIndex FByU;
};

}  // namespace ZORBase
