// Poses with angles from text and back. Input: a pose on each line.
#include "fuzz/FuzzTarget.h"

#include <ZORBase/ZORGeometry/CADTypesEuler/TEulerPoint.h>

#include <cmath>

namespace ZORBase::Test::FuzzEulerText {
namespace {

void ReadAndWrite(std::string_view Line) {
  Attempt([&] { TEulerPoint::Parse(Line); });
  TEulerPoint pose;
  if (!Attempt([&] { pose = TEulerPoint::Parse1033(Line); })) return;
  for (const int decimals : {0, 4, 12, -3, 99}) {
    const std::string text = pose.ToString1033(decimals);
    Require(TEulerPoint::Parse1033(text).ToString1033(decimals) == text, "what is written is read and written alike");
  }
  const TPoint3D direction = pose.ToPoint6D().GetVector();
  Require(std::fabs(direction.Mag() - 1.0) < 1e-12, "angles give a unit direction");
  pose.GetEuler().ToStringDeg(3);
}

}  // namespace

ZORBASE_FUZZ_TARGET(EulerText) {
  while (!Input.Rest().empty()) ReadAndWrite(Input.Line());
}

}  // namespace ZORBase::Test::FuzzEulerText
