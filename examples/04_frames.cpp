// Frames: where a point of the part lies on the table, and how the head stands to the part.
//
// a_T_b is the frame b as seen from a: it takes what is given in b and gives it in a. Names that meet in a product must
// agree, as in table_T_part * part_T_hole, and the inverse of a_T_b is b_T_a.
#include <ZORBase/ZORGeometry/CADTypes6D.h>
#include <ZORBase/common/BaseServices.h>

#include <iostream>
#include <numbers>

using namespace ZORBase;

namespace {

constexpr double kDegree = std::numbers::pi / 180;  // in radians

TMatrix4D Inverse(TMatrix4D a_T_b) {
  a_T_b.Invert();
  return a_T_b;
}

}  // namespace

int main() {
  // The part is clamped at (300, 200, 40) mm on the table, turned by 30 degrees about the table's Z axis.
  TMatrix4D table_T_part = TMatrix4D::Create(TPoint3D::Create(0, 0, 1), 30 * kDegree);
  table_T_part.SetTranslationPt(TPoint3D::Create(300, 200, 40));

  // Two holes from the drawing: a place on the part and the direction to drill in. The second one is slanted.
  TPoint6DList part_holes;
  part_holes.Add(100, 0, 0, 0, 0, -1);
  part_holes.Add(100, 60, 0, 0.6, 0, -0.8);

  // A place is turned and shifted, a direction only turned.
  TPoint6DList table_holes = part_holes;
  table_T_part.TransformPoses(part_holes, table_holes);
  for (int i = 0; i < part_holes.Count(); ++i) {
    std::cout << "hole " << i + 1 << " on the part   " << part_holes[i].ToString1033(3) << "\n"
              << "       on the table  " << table_holes[i].ToString1033(3) << "\n";
  }

  // The machine reports its head on the table; the drawing wants to know it on the part.
  TMatrix4D table_T_head;
  table_T_head.CreateFromEulerAngleXYZ(TPoint6D::Create(400, 290, 120, 20 * kDegree, 10 * kDegree, 45 * kDegree));
  const TMatrix4D part_T_table = Inverse(table_T_part);
  const TMatrix4D part_T_head = part_T_table * table_T_head;
  std::cout << "\nhead origin on the part  "
            << Format1033("%.3f,%.3f,%.3f", part_T_head.GetTranslationPt().X, part_T_head.GetTranslationPt().Y,
                          part_T_head.GetTranslationPt().Z)
            << "\n";

  // There and back again: equal within 1e-6 in every entry.
  const bool isConsistent = table_T_part * part_T_head == table_T_head;
  std::cout << "table_T_part * part_T_head is table_T_head: " << (isConsistent ? "yes" : "no") << "\n";

  // How far must the head still turn until its Z axis drills along the second hole?
  const TPoint3D table_tool = table_T_head.GetColVector(2);
  const TPoint3D table_drill = -table_holes[1].GetVector();
  const TMatrix4D turn = TMatrix4D::Create(table_tool, table_drill);
  std::cout << Format1033("the head must turn by %.3f degrees to face hole 2\n",
                          MatrixAngle(TMatrix4D::ReturnIdentityMatrix(), turn) / kDegree);
}
