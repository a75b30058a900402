#pragma once

#include <ZORBase/ZORGeometry/CADTypes6D/TPoint6D.h>
#include <ZORBase/common/BaseServices/TList.h>
#include <ZORBase/common/Export.h>

#include <string>
#include <utility>

namespace ZORBase {

/// An ordered list of poses with a text file: one pose per line as TPoint6D::ToString1033 writes it, lines ended by CR LF,
/// no header, no blank lines.
class ZORBASE_API TPoint6DList : public TList<TPoint6D> {
 public:
  using TList<TPoint6D>::TList;

  ///@{
  /// Appends the pose.
  void Add(const TPoint6D& P) { TList<TPoint6D>::Add(P); }
  void Add(double X, double Y, double Z, double A, double B, double C);
  ///@}

  /// Appends the position with the direction +Z.
  void Add(double X, double Y, double Z);
  /// Appends the pose with its direction made a unit vector; the position stays.
  void AddAndNormal(double X, double Y, double Z, double A, double B, double C);

  /// Replaces the contents by one pose per item of AList, all with the direction AVec as given.
  void From3DList(const TList<TPoint3D>& AList, const TPoint3D& AVec);

  /// Sorts with a function of two poses that returns a negative, zero or positive int (TList::Sort).
  template <class TSortFunc>
  void CustomizeSort(TSortFunc&& SortFunc) {
    Sort(std::forward<TSortFunc>(SortFunc));
  }

  /// Writes the text file with Decimal decimals, clamped to 0..12. An empty list gives an empty file.
  /// \throws the general error when the file cannot be written; an existing file is then as it was.
  void SaveToFile(const std::string& AFileName, int Decimal) const;

  /// Replaces the contents by the poses of the file. \return true.
  /// \throws the general error "TPoint6DList LoadFromFile Fail: AFileName Line N. ", CR LF, reason, for a file that cannot be
  ///         read (N = 1) and for a line that holds no pose. The poses of the lines before it stay in the list.
  bool LoadFromFile(const std::string& AFileName);
};

}  // namespace ZORBase
