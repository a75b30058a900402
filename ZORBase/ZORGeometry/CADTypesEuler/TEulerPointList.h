#pragma once

#include <ZORBase/ZORGeometry/CADTypes6D/TPoint6DList.h>
#include <ZORBase/ZORGeometry/CADTypesEuler/TEulerPoint.h>
#include <ZORBase/common/BaseServices/TList.h>
#include <ZORBase/common/Export.h>

#include <string>

namespace ZORBase {

/// An ordered list of poses with angles, and its text file: one pose per line as TEulerPoint::ToString1033 writes it
/// with 4 decimals, lines ended by CR LF, no header, no blank lines. Files are read with any number of decimals.
class ZORBASE_API TEulerPointList : public TList<TEulerPoint> {
 public:
  using TList<TEulerPoint>::TList;

  ///@{
  /// Appends the pose.
  void Add(const TEulerPoint& P) { TList<TEulerPoint>::Add(P); }
  void Add(double X, double Y, double Z, double Rx, double Ry, double Rz);
  ///@}

  /// Appends the position with all angles 0.
  void Add(double X, double Y, double Z);

  /// Writes the text file, always with 4 decimals: that is the form in which files are exchanged, so Decimal is not
  /// used. An empty list gives an empty file.
  /// \throws the general error when the file cannot be written; an existing file is then as it was.
  void SaveToFile(const std::string& AFileName, int Decimal) const;

  /// Replaces the contents by the poses of the file. \return true.
  /// \throws the general error "TPointSphereList LoadFromFile Fail: AFileName Line N. ", CR LF, reason, for a file that
  ///         cannot be read (N = 1) and for a line that holds no pose. The text names another class, on purpose. The
  ///         poses of the lines before it stay in the list.
  bool LoadFromFile(const std::string& AFileName);

  /// \return TEulerPoint::ToPoint6D of every pose, in order.
  TPoint6DList ToPoint6DList() const;
};

}  // namespace ZORBase
