// CapiTestSupport: the words of the tests of the C interface.
//   Good, Fails       EXPECT_TRUE(Good(call)), EXPECT_TRUE(Fails(call, ZORBASE_ERROR, "text"))
//   Bits              the bits of a struct, of the interface or of the library, and of lists of them, for EXPECT_EQ
//   THandle           an object that is destroyed at the end of its scope
//   SwungPoses        a path with a turning direction; PosesOutside for the C interface
#pragma once

#include <ZORBase/ZORBase.h>
#include <ZORBase/capi/zorbase.h>

#include "support/TestSupport.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <string>
#include <type_traits>
#include <vector>

namespace ZORBase::Test {

/// \return success for a call that went well, which leaves no text.
inline testing::AssertionResult Good(zorbase_status Status) {
  const std::string text = zorbase_last_error();
  if (Status == ZORBASE_OK && text.empty()) return testing::AssertionSuccess();
  return testing::AssertionFailure() << "status " << Status << ", \"" << text << "\"";
}

/// \return success for a call that failed with this status and a text that matches.
template <class TText>
testing::AssertionResult Fails(zorbase_status Status, zorbase_status Expected, const TText& Text) {
  const std::string text = zorbase_last_error();
  if (Status == Expected && testing::Matches(testing::Matcher<std::string>(Text))(text)) {
    return testing::AssertionSuccess();
  }
  return testing::AssertionFailure() << "status " << Status << ", \"" << text << "\"";
}

template <class T>
auto Bits(const T& Value) {
  if constexpr (requires { Value.begin(); }) {
    std::vector<decltype(Bits(*Value.begin()))> bits;
    for (const auto& item : Value) bits.push_back(Bits(item));
    return bits;
  } else {
    return std::bit_cast<std::array<std::uint64_t, sizeof(T) / sizeof(std::uint64_t)>>(Value);
  }
}

template <class T, zorbase_status (*Create)(T**), void (*Destroy)(T*)>
class THandle {
 public:
  THandle() { EXPECT_TRUE(Good(Create(&FObject))); }
  ~THandle() { Destroy(FObject); }
  THandle(const THandle&) = delete;
  THandle& operator=(const THandle&) = delete;
  T* Get() const { return FObject; }
  operator T*() const { return FObject; }  // NOLINT(google-explicit-constructor): stands for the pointer

 private:
  T* FObject = nullptr;
};

using TPosesHandle = THandle<zorbase_poses, zorbase_poses_create, zorbase_poses_destroy>;
using TCurveHandle = THandle<zorbase_curve, zorbase_curve_create, zorbase_curve_destroy>;
using TSpectrumHandle = THandle<zorbase_spectrum, zorbase_spectrum_create, zorbase_spectrum_destroy>;

/// \return poses on a rising spiral whose direction swings, the first Count of them.
inline TPoint6DList SwungPoses(int Count) {
  TPoint6DList poses;
  for (int i = 0; i < Count; ++i) {
    poses.AddAndNormal(50 * std::cos(0.4 * i), 40 * std::sin(0.5 * i), 1.5 * i, std::sin(0.3 * i), 0.25, 1.0);
  }
  return poses;
}

/// \return poses as the C interface takes them.
inline std::vector<zorbase_pose> PosesOutside(const TPoint6DList& Poses) {
  std::vector<zorbase_pose> outside;
  for (const TPoint6D& pose : Poses) outside.push_back({pose.X, pose.Y, pose.Z, pose.A, pose.B, pose.C});
  return outside;
}

}  // namespace ZORBase::Test
