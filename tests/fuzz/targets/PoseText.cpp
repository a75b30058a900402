// Poses from text and back. Input: a pose on each line.
#include "fuzz/FuzzTarget.h"

#include <cmath>

namespace ZORBase::Test::FuzzPoseText {
namespace {

void ReadAndWrite(std::string_view Line) {
  Attempt([&] { TPoint6D::Parse(Line); });
  TPoint6D pose;
  if (!Attempt([&] { pose = TPoint6D::Parse1033(Line); })) return;
  for (int i = 0; i < 6; ++i) Require(std::isfinite(pose.Items(i)), "a pose that is read is finite");
  for (const int digits : {0, 4, 12, -3, 99}) {
    const std::string text = pose.ToString1033(digits);
    Require(TPoint6D::Parse1033(text).ToString1033(digits) == text, "what is written is read and written alike");
  }
}

}  // namespace

ZORBASE_FUZZ_TARGET(PoseText) {
  while (!Input.Rest().empty()) ReadAndWrite(Input.Line());
}

}  // namespace ZORBase::Test::FuzzPoseText
