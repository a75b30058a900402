// The text files of lists. Input: the file as it is, byte by byte.
#include "fuzz/FuzzTarget.h"

#include <ZORBase/ZORGeometry/CADTypesEuler/TEulerPointList.h>

namespace ZORBase::Test::FuzzPoseFile {
namespace {

template <class TPoints>
void LoadAndSave(const std::string& FileName) {
  constexpr int kDecimals = 4;
  TPoints points;
  points.Add(1, 2, 3);
  Attempt([&] { points.LoadFromFile(FileName); });
  const std::string first = TFuzzFolder::File("first.txt");
  const std::string second = TFuzzFolder::File("second.txt");
  points.SaveToFile(first, kDecimals);
  TPoints again;
  again.LoadFromFile(first);
  Require(again.Count() == points.Count(), "what is saved is loaded, also the points before a bad line");
  again.SaveToFile(second, kDecimals);
  TPoints onceMore;
  onceMore.LoadFromFile(second);
  for (int i = 0; i < again.Count(); ++i) {
    Require(SameBits(again[i].ToArray(), onceMore[i].ToArray()), "a saved file is loaded and saved alike");
  }
}

}  // namespace

ZORBASE_FUZZ_TARGET(PoseFile) {
  const TFuzzFolder folder;
  const std::string file = TFuzzFolder::Write("in.txt", Input.Text());
  LoadAndSave<TPoint6DList>(file);
  LoadAndSave<TEulerPointList>(file);
}

}  // namespace ZORBase::Test::FuzzPoseFile
