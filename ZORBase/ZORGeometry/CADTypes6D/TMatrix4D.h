#pragma once

#include <ZORBase/ZORGeometry/CADTypes6D/TPoint6D.h>
#include <ZORBase/common/Cadtypes/TLine3D.h>
#include <ZORBase/common/Cadtypes/TPoint3D.h>
#include <ZORBase/common/Export.h>

#include <array>
#include <cstdint>
#include <span>
#include <string>

namespace ZORBase {

/// A transform of space: a point p goes to R p + t, a vector v to R v. The columns of R are the images of the axes X,
/// Y, Z. Nothing keeps R a rotation: sums, multiples and Create with numbers make any affine transform.
///
/// fm[i][0..2] is row i of R, fm[0..2][3] the translation t; the bottom row (0, 0, 0, 1) is implied. All zero by
/// default. Angles are radians; lengths are in the caller's unit.
struct ZORBASE_API TMatrix4D {
  std::array<std::array<double, 4>, 3> fm{};  ///< row by row, the translation in column 3

  /// Entries that differ by at most this are equal. Absolute, the same for a direction cosine and a length. A matrix
  /// whose entries are all less than this away from the identity's counts as the identity, also where it is multiplied,
  /// inverted or applied.
  static constexpr double kEqualTolerance = 1e-6;

  /// A point or vector with a coordinate above this is no place in the work space: it passes a transform untouched.
  static constexpr double kFarCoordinate = 1e10;

  // -------------------------------------------------------------------------------------- making

  constexpr TMatrix4D() = default;

  ///@{
  /// R row by row, then t; without t it is zero.
  static constexpr TMatrix4D Create(double m00, double m01, double m02, double m10, double m11, double m12, double m20,
                                    double m21, double m22, double tx, double ty, double tz) {
    TMatrix4D matrix;
    matrix.fm = {{{m00, m01, m02, tx}, {m10, m11, m12, ty}, {m20, m21, m22, tz}}};
    return matrix;
  }
  static constexpr TMatrix4D Create(double m00, double m01, double m02, double m10, double m11, double m12, double m20,
                                    double m21, double m22) {
    return Create(m00, m01, m02, m10, m11, m12, m20, m21, m22, 0.0, 0.0, 0.0);
  }
  ///@}

  /// The frame with these axes, as given and not normalised, and this origin.
  static constexpr TMatrix4D Create(const TPoint3D& AX, const TPoint3D& AY, const TPoint3D& AZ,
                                    const TPoint3D& AOrigin = {}) {
    return Create(AX.X, AY.X, AZ.X, AX.Y, AY.Y, AZ.Y, AX.Z, AY.Z, AZ.Z, AOrigin.X, AOrigin.Y, AOrigin.Z);
  }

  static constexpr TMatrix4D Create(const TMatrix4D& M) { return M; }  ///< a copy

  /// The right-handed rotation by AAngle about AAxis, which need not be a unit vector. About the zero vector it is no
  /// rotation but cos(AAngle) times the identity.
  static TMatrix4D Create(const TPoint3D& AAxis, double AAngle);

  /// The rotation that turns AFrom onto ATo the shortest way. Opposite vectors leave the axis open: they give the point
  /// reflection R = -I, which is no rotation.
  /// \throws the general error "two vectors mag not equal!!!" when the squares of the two lengths differ by more than
  ///         1e-4 (it is about lengths, on purpose), and "vec mag too small!!!" when one of them is below 1e-4.
  static TMatrix4D Create(const TPoint3D& AFrom, const TPoint3D& ATo);

  /// Overwrites this matrix: values 0..8 are R row by row, values 9..11 are t. With 9 to 11 values t stays as it is;
  /// with fewer than 9 everything does.
  void Create(std::span<const double> AValues);

  /// No turn and no shift.
  static constexpr TMatrix4D ReturnIdentityMatrix() { return Create(1.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 1.0); }
  static constexpr TMatrix4D ReturnZeroMatrix() { return {}; }  ///< all twelve entries 0

  /// Becomes the identity.
  constexpr void Reset() { *this = ReturnIdentityMatrix(); }

  // -------------------------------------------------------------------------------------- entries

  /// \return the entry in row ARow, 1..3, and column ACol, 1..4: counted from 1, unlike everywhere else.
  /// \throws the general error outside of that.
  double GetMatrixUnit(std::uint8_t ARow, std::uint8_t ACol) const;

  ///@{
  /// Row AIndex of R, 0..2. Any other index means row 0.
  TPoint3D GetRowVector(std::uint8_t AIndex) const;
  void SetRowVector(std::uint8_t AIndex, const TPoint3D& V);
  ///@}

  ///@{
  /// Column AIndex of R, 0..2, or the translation, 3. Any other index means column 0.
  TPoint3D GetColVector(std::uint8_t AIndex) const;
  void SetColVector(std::uint8_t AIndex, const TPoint3D& V);
  ///@}

  ///@{
  /// The translation t.
  constexpr TPoint3D GetTranslationPt() const { return TPoint3D::Create(fm[0][3], fm[1][3], fm[2][3]); }
  constexpr void SetTranslationPt(const TPoint3D& P) {
    fm[0][3] = P.X;
    fm[1][3] = P.Y;
    fm[2][3] = P.Z;
  }
  ///@}

  /// Another name of SetTranslationPt.
  constexpr void SetTranslationCol(const TPoint3D& P) { SetTranslationPt(P); }
  constexpr void ClearTranslation() { SetTranslationPt({}); }  ///< t becomes 0

  ///@{
  /// Adds to the translation; R stays.
  constexpr void Translate(const TPoint3D& P) { SetTranslationPt(GetTranslationPt() + P); }
  constexpr void Translate(double dx, double dy, double dz) { Translate(TPoint3D::Create(dx, dy, dz)); }
  ///@}

  // -------------------------------------------------------------------------------------- composing and inverting

  /// Self * M with APost, M * Self without. M may be this matrix itself. The entries of R are summed in extended
  /// precision. A factor that isIdent is taken for the identity, so that turns and shifts below 1e-6 do not add up. A
  /// right factor without translation keeps the left one's translation to the bit. Allocates nothing, takes no lock.
  void Multiply(const TMatrix4D& M, bool APost);

  /// Becomes the inverse: the transpose of R where that is orthogonal, the adjugate over the determinant elsewhere. A
  /// matrix that isIdent stays as it is, and so does a translation whose components are all at most 1e-6. One with a
  /// component above 1e10 only changes its sign, for TransformVec passes it through.
  /// \throws the general error SMatrixSigular when the determinant is at most 1e-6 in magnitude; the matrix is then as
  ///         it was. Allocates nothing, takes no lock.
  void Invert();

  /// Transposes R; the translation stays.
  void RotTransposition();

  /// \return the determinant of R.
  double Determinant() const;

  /// \return the matrix with every entry rounded to the nearest multiple of 10 to the power Digits: -3 keeps three
  ///         decimals, 2 keeps hundreds. It is the exact binary value that is rounded, a tie goes to the even multiple.
  TMatrix4D RoundTo(int Digits) const;

  // -------------------------------------------------------------------------------------- transforming

  /// \return R P + t. P itself when the matrix isIdent, and when a coordinate of P is greater than 1e10; the test is
  ///         signed, so that -2e10 is transformed. Allocates nothing, takes no lock.
  TPoint3D TransformPt(const TPoint3D& P) const;

  /// \return R V; V itself in the same two cases as in TransformPt. Allocates nothing, takes no lock.
  TPoint3D TransformVec(const TPoint3D& V) const;

  /// \return the pose with its position transformed as a point and its direction as a vector. Allocates nothing, takes no lock.
  TPoint6D TransformPose(const TPoint6D& P) const;

  /// \return both ends mapped to R p + t, whatever they are. Allocates nothing, takes no lock.
  TLine3D TransformLine(const TLine3D& L) const;

  ///@{
  /// The transform of many: Results[i] is the single form's result of item i to the bit, and the same memory may serve
  /// for both. Apart from that the two spans must not overlap. What Results has beyond the items stays.
  /// \throws the general error when Results is shorter than the items, before anything is written.
  ///         Allocates nothing, takes no lock.
  void TransformPts(std::span<const TPoint3D> Points, std::span<TPoint3D> Results) const;
  void TransformVecs(std::span<const TPoint3D> Vectors, std::span<TPoint3D> Results) const;
  void TransformPoses(std::span<const TPoint6D> Poses, std::span<TPoint6D> Results) const;
  ///@}

  // -------------------------------------------------------------------------------------- tests and text

  /// \return whether every entry is less than 1e-6 away from that of the identity.
  bool isIdent() const;
  /// The same for R alone.
  bool isRotIdent() const;
  /// \return whether R times its transpose isRotIdent. The product is that of Multiply, which takes a matrix that
  ///         isIdent for the identity.
  bool isOrthogonal() const;

  /// \return the twelve entries in storage order, row by row with the translation at each row's end: "(r00, r01, r02,
  ///         tx, ...)", each with up to 15 significant digits and the decimal point of the current locale.
  std::string ToString() const;

  // -------------------------------------------------------------------------------------- Euler angles and axes

  ///@{
  /// Overwrites the matrix: R = Rx(A) Ry(B) Rz(C) for XYZ, R = Rz(C) Ry(B) Rx(A) for ZYX, and translation (X, Y, Z).
  void CreateFromEulerAngleXYZ(const TPoint6D& P);
  void CreateFromEulerAngleZYX(const TPoint6D& P);
  ///@}

  ///@{
  /// \return (tx, ty, tz, A, B, C), from which CreateFromEulerAngle of the same order makes this rotation again. Angles
  ///         lie in (-pi, pi]. Where cos B is 0, A and C turn about the same axis: A is then 0 and C is the whole turn.
  TPoint6D Matrix4DToEulerAngleXYZ() const;
  TPoint6D Matrix4DToEulerAngleZYX() const;
  ///@}

  /// The angle of this rotation about a given axis.
  /// \param AAngle  written whether or not the axis fits. It is not a number, or wrong, for an axis whose largest
  ///                component by value, not by magnitude, is 0, such as (-1, 0, 0): turn such an axis round.
  /// \return whether the rotation by AAngle about AVec equals this one.
  /// \throws the general error "vecN mag equals 0!" when AVec is shorter than 0.001.
  bool Matrix4DToVecAng(const TPoint3D& AVec, double& AAngle) const;

  /// Splits this rotation into a turn by AAngle1 about AVec1, followed by one by AAngle2 about AVec2.
  /// \return whether the two turns together equal this rotation. Axes with a sine below 0.001 between them give false
  ///         and both angles 0.
  bool Matrix4DToVecAng(const TPoint3D& AVec1, const TPoint3D& AVec2, double& AAngle1, double& AAngle2) const;

  // -------------------------------------------------------------------------------------- operators

  ///@{
  /// Entry by entry, the translation included.
  friend ZORBASE_API TMatrix4D operator+(const TMatrix4D& M1, const TMatrix4D& M2);
  friend ZORBASE_API TMatrix4D operator-(const TMatrix4D& M1, const TMatrix4D& M2);
  /// All twelve entries, the translation included, times S.
  friend ZORBASE_API TMatrix4D operator*(const TMatrix4D& M, double S);
  /// As M times S.
  friend TMatrix4D operator*(double S, const TMatrix4D& M) { return M * S; }
  ///@}

  /// The composition, M2 first, as Multiply forms it.
  friend TMatrix4D operator*(const TMatrix4D& M1, const TMatrix4D& M2) {
    TMatrix4D product = M1;
    product.Multiply(M2, true);
    return product;
  }

  /// M.TransformPt(P).
  friend TPoint3D operator*(const TMatrix4D& M, const TPoint3D& P) { return M.TransformPt(P); }
  /// The row vector P times R, that is R transposed applied to P, whatever P is and without the translation.
  friend constexpr TPoint3D operator*(const TPoint3D& P, const TMatrix4D& M) {
    const auto column = [&](std::size_t j) { return P.X * M.fm[0][j] + P.Y * M.fm[1][j] + P.Z * M.fm[2][j]; };
    return TPoint3D::Create(column(0), column(1), column(2));
  }

  /// Equal when every entry is within kEqualTolerance; an entry that is no number equals nothing.
  friend bool operator==(const TMatrix4D& M1, const TMatrix4D& M2) { return M1.IsEqual(M2); }

 private:
  bool IsEqual(const TMatrix4D& M) const;
};

}  // namespace ZORBase
