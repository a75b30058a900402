#include <ZORBase/ZORGeometry/CADTypes6D/TMatrix4D.h>

#include <ZORBase/ZORGeometry/CADTypes6D/TQuaternion.h>
#include <ZORBase/common/BaseServices/Extended.h>
#include <ZORBase/common/BaseServices/NumberText.h>
#include <ZORBase/common/BaseServices/TGeneralError.h>
#include <ZORBase/common/Cadtypes/ArcTan2.h>
#include <ZORBase/common/Cadtypes/SMatrixSigular.h>
#include <ZORBase/common/Cadtypes/fEqual.h>
#include <ZORBase/kernels/PointTransform.h>

#include <algorithm>
#include <cmath>
#include <string_view>
#include <type_traits>
#include <utility>

namespace ZORBase {
namespace {

// Two vectors are of one length when the squares of their lengths differ by no more than this, and too short for a
// direction when the square is below it.
constexpr double kMagSqrTolerance = 1e-4;

// A shorter axis, or a smaller sine between two unit axes, is too inaccurate to turn about.
constexpr double kMinAxisMag = 0.001;

// A double has no decimals beyond this many, and no digits before this power of ten.
constexpr int kMaxDecimals = 1074;
constexpr int kMaxPower = 309;

static_assert(std::is_trivially_copyable_v<TMatrix4D> && sizeof(TMatrix4D) == 12 * sizeof(double));

// Applies Function to the entries of one matrix, or of two side by side.
template <class TFunction, class... TMatrices>
TMatrix4D ByEntry(TFunction&& Function, const TMatrices&... Matrices) {
  TMatrix4D result;
  for (std::size_t i = 0; i < 3; ++i) {
    for (std::size_t j = 0; j < 4; ++j) result.fm[i][j] = Function(Matrices.fm[i][j]...);
  }
  return result;
}

// Whether the first ColumnCount columns are those of the identity.
bool IsIdentity(const TMatrix4D& M, std::size_t ColumnCount) {
  for (std::size_t i = 0; i < 3; ++i) {
    for (std::size_t j = 0; j < ColumnCount; ++j) {
      const bool isClose = std::fabs(M.fm[i][j] - (i == j ? 1.0 : 0.0)) < TMatrix4D::kEqualTolerance;
      if (!isClose) return false;
    }
  }
  return true;
}

// The single form behind its test for the identity, which the batch form makes once for all items.
TPoint6D PoseUnlessFar(const TMatrix4D& M, const TPoint6D& P) {
  return TPoint6D::Create(MovedUnlessFar(M.fm, P.GetPoint(), TMatrix4D::kFarCoordinate),
                          TurnedUnlessFar(M.fm, P.GetVector(), TMatrix4D::kFarCoordinate));
}

// Transform(items) does the work where there is some.
template <class TItem, class TTransform>
void TransformAll(const TMatrix4D& M, std::string_view Name, std::span<const TItem> Items, std::span<TItem> Results,
                  TTransform&& Transform) {
  if (Results.size() < Items.size()) {
    RaiseGeneralError(
        Format1033("TMatrix4D.%s: %d items do not fit into %d results", Name, Items.size(), Results.size()));
  }
  if (!M.isIdent()) return Transform();
  if (Results.data() != Items.data()) std::copy(Items.begin(), Items.end(), Results.begin());
}

double RoundedTo(double Value, int Digits) {
  if (!std::isfinite(Value)) return Value;
  if (Digits > 0) return Value - std::remainder(Value, std::pow(10.0, std::min(Digits, kMaxPower)));
  // By way of text, since Value times a power of ten would round before the rounding that is asked for.
  std::string text;
  AppendFixed(text, Value, -std::max(Digits, -kMaxDecimals));
  return StrToFloat1033(text);
}

}  // namespace

// ---------------------------------------------------------------------------------------------- making

// With k = cos - 1, R = c I - k n n' + s [n]x (Rodrigues' formula).
TMatrix4D TMatrix4D::Create(const TPoint3D& AAxis, double AAngle) {
  const TPoint3D n = AAxis.Normal();
  const double s = std::sin(AAngle);
  const double c = std::cos(AAngle);
  const double k = c - 1.0;
  return Create(c - n.X * n.X * k, -n.X * n.Y * k - n.Z * s, -n.X * n.Z * k + n.Y * s,  //
                -n.X * n.Y * k + n.Z * s, c - n.Y * n.Y * k, -n.Y * n.Z * k - n.X * s,  //
                -n.X * n.Z * k - n.Y * s, -n.Y * n.Z * k + n.X * s, c - n.Z * n.Z * k);
}

TMatrix4D TMatrix4D::Create(const TPoint3D& AFrom, const TPoint3D& ATo) {
  if (std::fabs(AFrom.MagSqr() - ATo.MagSqr()) > kMagSqrTolerance) RaiseGeneralError("two vectors mag not equal!!!");
  if (AFrom.MagSqr() < kMagSqrTolerance || ATo.MagSqr() < kMagSqrTolerance) RaiseGeneralError("vec mag too small!!!");
  const TPoint3D from = AFrom.Normal();
  const TPoint3D to = ATo.Normal();
  return Create(from.CrossMul(to).Normal(), from.AngleBetween(to));
}

void TMatrix4D::Create(std::span<const double> AValues) {
  if (AValues.size() < 9) return;
  TPoint3D translation = GetTranslationPt();
  if (AValues.size() >= 12) translation = TPoint3D::Create(AValues[9], AValues[10], AValues[11]);
  *this = Create(AValues[0], AValues[1], AValues[2], AValues[3], AValues[4], AValues[5], AValues[6], AValues[7],
                 AValues[8], translation.X, translation.Y, translation.Z);
}

// ---------------------------------------------------------------------------------------------- entries

double TMatrix4D::GetMatrixUnit(std::uint8_t ARow, std::uint8_t ACol) const {
  if (ARow < 1 || ARow > 3 || ACol < 1 || ACol > 4) {
    RaiseGeneralError(
        Format1033("TMatrix4D has the rows 1 to 3 and the columns 1 to 4, no row %d column %d", ARow, ACol));
  }
  return fm[ARow - 1U][ACol - 1U];
}

TPoint3D TMatrix4D::GetRowVector(std::uint8_t AIndex) const {
  const auto& row = fm[AIndex < 3 ? AIndex : 0];
  return TPoint3D::Create(row[0], row[1], row[2]);
}

void TMatrix4D::SetRowVector(std::uint8_t AIndex, const TPoint3D& V) {
  auto& row = fm[AIndex < 3 ? AIndex : 0];
  row = {V.X, V.Y, V.Z, row[3]};
}

TPoint3D TMatrix4D::GetColVector(std::uint8_t AIndex) const {
  const std::size_t j = AIndex < 4 ? AIndex : 0;
  return TPoint3D::Create(fm[0][j], fm[1][j], fm[2][j]);
}

void TMatrix4D::SetColVector(std::uint8_t AIndex, const TPoint3D& V) {
  const std::size_t j = AIndex < 4 ? AIndex : 0;
  fm[0][j] = V.X;
  fm[1][j] = V.Y;
  fm[2][j] = V.Z;
}

// ---------------------------------------------------------------------------------------------- composing, inverting

void TMatrix4D::Multiply(const TMatrix4D& M, bool APost) {
  if (M.isIdent()) return;
  if (isIdent()) {
    *this = M;
    return;
  }
  const TMatrix4D left = APost ? *this : M;
  const TMatrix4D right = APost ? M : *this;
  for (std::size_t i = 0; i < 3; ++i) {
    for (std::size_t j = 0; j < 3; ++j) {
      Extended sum = static_cast<Extended>(left.fm[i][0]) * right.fm[0][j];
      sum += static_cast<Extended>(left.fm[i][1]) * right.fm[1][j];
      sum += static_cast<Extended>(left.fm[i][2]) * right.fm[2][j];
      fm[i][j] = static_cast<double>(sum);
    }
  }
  const TPoint3D shift = right.GetTranslationPt();
  const bool isShifted = !(shift.X == 0.0 && shift.Y == 0.0 && shift.Z == 0.0);
  SetTranslationPt(isShifted ? Moved(left.fm, shift) : left.GetTranslationPt());
}

void TMatrix4D::Invert() {
  if (isIdent()) return;
  const double d = Determinant();
  if (fEqual(d, 0.0, kEqualTolerance)) RaiseGeneralError(std::string(SMatrixSigular));
  const auto before = fm;
  if (isOrthogonal()) {
    RotTransposition();
  } else {
    // Entry (i, j) is the minor without row j and column i, with the sign of a chessboard.
    const double k = 1.0 / d;
    const auto part = [&](std::size_t i1, std::size_t j1, std::size_t i2, std::size_t j2) {
      return (before[i1][j1] * before[i2][j2] - before[i1][j2] * before[i2][j1]) * k;
    };
    SetRowVector(0, TPoint3D::Create(part(1, 1, 2, 2), -part(0, 1, 2, 2), part(0, 1, 1, 2)));
    SetRowVector(1, TPoint3D::Create(-part(1, 0, 2, 2), part(0, 0, 2, 2), -part(0, 0, 1, 2)));
    SetRowVector(2, TPoint3D::Create(part(1, 0, 2, 1), -part(0, 0, 2, 1), part(0, 0, 1, 1)));
  }
  const TPoint3D shift = GetTranslationPt();
  const auto isZero = [](double Value) { return fEqual(Value, 0.0, kEqualTolerance); };
  if (isZero(shift.X) && isZero(shift.Y) && isZero(shift.Z)) return;
  SetTranslationPt(-TransformVec(shift));
}

void TMatrix4D::RotTransposition() {
  std::swap(fm[0][1], fm[1][0]);
  std::swap(fm[0][2], fm[2][0]);
  std::swap(fm[1][2], fm[2][1]);
}

double TMatrix4D::Determinant() const {
  return (fm[1][1] * fm[2][2] - fm[1][2] * fm[2][1]) * fm[0][0] +
         (fm[1][2] * fm[2][0] - fm[1][0] * fm[2][2]) * fm[0][1] +
         (fm[1][0] * fm[2][1] - fm[1][1] * fm[2][0]) * fm[0][2];
}

TMatrix4D TMatrix4D::RoundTo(int Digits) const {
  return ByEntry([Digits](double Value) { return RoundedTo(Value, Digits); }, *this);
}

// ---------------------------------------------------------------------------------------------- transforming

TPoint3D TMatrix4D::TransformPt(const TPoint3D& P) const {
  return isIdent() ? P : MovedUnlessFar(fm, P, kFarCoordinate);
}

TPoint3D TMatrix4D::TransformVec(const TPoint3D& V) const {
  return isIdent() ? V : TurnedUnlessFar(fm, V, kFarCoordinate);
}

TPoint6D TMatrix4D::TransformPose(const TPoint6D& P) const { return isIdent() ? P : PoseUnlessFar(*this, P); }

TLine3D TMatrix4D::TransformLine(const TLine3D& L) const { return {Moved(fm, L.StartPt), Moved(fm, L.EndPt)}; }

void TMatrix4D::TransformPts(std::span<const TPoint3D> Points, std::span<TPoint3D> Results) const {
  TransformAll(*this, "TransformPts", Points, Results, [&] { MoveAll(fm, Points, Results.data(), kFarCoordinate); });
}

void TMatrix4D::TransformVecs(std::span<const TPoint3D> Vectors, std::span<TPoint3D> Results) const {
  TransformAll(*this, "TransformVecs", Vectors, Results, [&] { TurnAll(fm, Vectors, Results.data(), kFarCoordinate); });
}

void TMatrix4D::TransformPoses(std::span<const TPoint6D> Poses, std::span<TPoint6D> Results) const {
  TransformAll(*this, "TransformPoses", Poses, Results, [&] {
    const TMatrix4D matrix = *this;  // a copy that no result can overwrite, so that its entries stay in registers
    std::transform(Poses.begin(), Poses.end(), Results.begin(),
                   [&](const TPoint6D& P) { return PoseUnlessFar(matrix, P); });
  });
}

// ---------------------------------------------------------------------------------------------- tests and text

bool TMatrix4D::isIdent() const { return IsIdentity(*this, 4); }

bool TMatrix4D::isRotIdent() const { return IsIdentity(*this, 3); }

bool TMatrix4D::isOrthogonal() const {
  TMatrix4D product = *this;
  TMatrix4D transposed = *this;
  transposed.RotTransposition();
  product.Multiply(transposed, true);
  return product.isRotIdent();
}

std::string TMatrix4D::ToString() const {
  const auto text = [&](std::size_t i, std::size_t j) { return FloatToStr(fm[i][j]); };
  return Format1033("(%s, %s, %s, %s, %s, %s, %s, %s, %s, %s, %s, %s)",  //
                    text(0, 0), text(0, 1), text(0, 2), text(0, 3),      //
                    text(1, 0), text(1, 1), text(1, 2), text(1, 3),      //
                    text(2, 0), text(2, 1), text(2, 2), text(2, 3));
}

// ---------------------------------------------------------------------------------------------- Euler angles and axes

void TMatrix4D::CreateFromEulerAngleXYZ(const TPoint6D& P) {
  const double sA = std::sin(P.A), cA = std::cos(P.A);
  const double sB = std::sin(P.B), cB = std::cos(P.B);
  const double sC = std::sin(P.C), cC = std::cos(P.C);
  *this = Create(cB * cC, -cB * sC, sB,                                      //
                 sA * sB * cC + cA * sC, -sA * sB * sC + cA * cC, -sA * cB,  //
                 -cA * sB * cC + sA * sC, cA * sB * sC + sA * cC, cA * cB);
  Translate(P.GetPoint());
}

void TMatrix4D::CreateFromEulerAngleZYX(const TPoint6D& P) {
  const double sA = std::sin(P.A), cA = std::cos(P.A);
  const double sB = std::sin(P.B), cB = std::cos(P.B);
  const double sC = std::sin(P.C), cC = std::cos(P.C);
  *this = Create(cB * cC, sA * sB * cC - sC * cA, sA * sC + sB * cA * cC,  //
                 sC * cB, sA * sB * sC + cA * cC, sB * sC * cA - sA * cC,  //
                 -sB, sA * cB, cA * cB);
  Translate(P.GetPoint());
}

// Undoing Rx(alpha) from the left leaves Ry(beta) Rz(gamma), whose first row has sin beta and cos beta, and whose
// middle row is (sin gamma, cos gamma, 0).
TPoint6D TMatrix4D::Matrix4DToEulerAngleXYZ() const {
  const bool isLocked = fEqual(fm[1][2], 0.0, kEqualTolerance) && fEqual(fm[2][2], 0.0, kEqualTolerance);
  const double alpha = isLocked ? 0.0 : ArcTan2(-fm[1][2], fm[2][2]);
  const double s = std::sin(alpha), c = std::cos(alpha);
  const double beta = ArcTan2(fm[0][2], fm[2][2] * c - fm[1][2] * s);
  const double gamma = ArcTan2(fm[1][0] * c + fm[2][0] * s, fm[1][1] * c + fm[2][1] * s);
  return TPoint6D::Create(GetTranslationPt(), TPoint3D::Create(alpha, beta, gamma));
}

// Undoing Rx(alpha) from the right leaves Rz(gamma) Ry(beta), whose last row has -sin beta and cos beta, and whose
// middle column is (-sin gamma, cos gamma, 0).
TPoint6D TMatrix4D::Matrix4DToEulerAngleZYX() const {
  const bool isLocked = fEqual(fm[2][1], 0.0, kEqualTolerance) && fEqual(fm[2][2], 0.0, kEqualTolerance);
  const double alpha = isLocked ? 0.0 : ArcTan2(fm[2][1], fm[2][2]);
  const double s = std::sin(alpha), c = std::cos(alpha);
  const double beta = ArcTan2(-fm[2][0], fm[2][1] * s + fm[2][2] * c);
  const double gamma = ArcTan2(fm[0][2] * s - fm[0][1] * c, fm[1][1] * c - fm[1][2] * s);
  return TPoint6D::Create(GetTranslationPt(), TPoint3D::Create(alpha, beta, gamma));
}

bool TMatrix4D::Matrix4DToVecAng(const TPoint3D& AVec, double& AAngle) const {
  if (AVec.Mag() < kMinAxisMag) RaiseGeneralError("vecN mag equals 0!");
  const TPoint3D v = AVec.Normal();
  TQuaternion q;
  q.CreateFromMatrix4D(*this);
  // q = (cos, v sin) of the half angle: any component of v that is not 0 tells the sine.
  double largest = v.X;
  double sine = q.b / v.X;
  if (v.Y > largest) {
    largest = v.Y;
    sine = q.c / v.Y;
  }
  if (v.Z > largest) sine = q.d / v.Z;
  AAngle = 2.0 * std::atan2(sine, q.a);
  TMatrix4D turn = Create(v, AAngle);
  turn.SetTranslationPt(GetTranslationPt());
  return turn == *this;
}

// With half angles, (cos2, b sin2) (cos1, a sin1) has the real part cos1 cos2 - sin1 sin2 b.a and the vector part
// b cos1 sin2 + a sin1 cos2 + b x a sin1 sin2. Its coordinates p in the frame (b, a, b x a) and the real part give sine
// and cosine of the half sum and the half difference.
bool TMatrix4D::Matrix4DToVecAng(const TPoint3D& AVec1, const TPoint3D& AVec2, double& AAngle1, double& AAngle2) const {
  const TPoint3D a = AVec1.Normal();
  const TPoint3D b = AVec2.Normal();
  const TPoint3D n = b.CrossMul(a);
  TMatrix4D frame = Create(b, a, n);
  // The determinant of the frame is the square of the sine; rounding must not let it fail in Invert just at the limit.
  if (n.Mag() < kMinAxisMag || fEqual(frame.Determinant(), 0.0, kEqualTolerance)) {
    AAngle1 = 0.0;
    AAngle2 = 0.0;
    return false;
  }
  frame.Invert();
  TQuaternion q;
  q.CreateFromMatrix4D(*this);
  const TPoint3D p = frame * q.GetImgVector();
  const double d = q.a + b.DotMul(a) * p.Z;
  const double halfSum = std::atan2(p.Y + p.X, d - p.Z);
  const double halfDifference = std::atan2(p.Y - p.X, d + p.Z);
  AAngle1 = halfSum + halfDifference;
  AAngle2 = halfSum - halfDifference;
  TMatrix4D turns = Create(b, AAngle2) * Create(a, AAngle1);
  turns.SetTranslationPt(GetTranslationPt());
  return turns == *this;
}

// ---------------------------------------------------------------------------------------------- operators

TMatrix4D operator+(const TMatrix4D& M1, const TMatrix4D& M2) {
  return ByEntry([](double A, double B) { return A + B; }, M1, M2);
}

TMatrix4D operator-(const TMatrix4D& M1, const TMatrix4D& M2) {
  return ByEntry([](double A, double B) { return A - B; }, M1, M2);
}

TMatrix4D operator*(const TMatrix4D& M, double S) {
  return ByEntry([S](double Value) { return Value * S; }, M);
}

bool TMatrix4D::IsEqual(const TMatrix4D& M) const {
  for (std::size_t i = 0; i < 3; ++i) {
    for (std::size_t j = 0; j < 4; ++j) {
      if (!fEqual(fm[i][j], M.fm[i][j], kEqualTolerance)) return false;
    }
  }
  return true;
}

}  // namespace ZORBase
