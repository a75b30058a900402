#include <ZORBase/capi/Call.h>
#include <ZORBase/capi/Handles.h>
#include <ZORBase/capi/Twins.h>
#include <ZORBase/common/BaseServices.h>

// C functions stand outside of every namespace. NOLINTBEGIN(google-build-using-namespace)
using namespace ZORBase;
using namespace ZORBase::capi;
// NOLINTEND(google-build-using-namespace)

namespace {

// The smallest double has 1074 decimals.
constexpr int32_t kMostDigits = 1074;

}  // namespace

zorbase_status zorbase_pose_to_text(const zorbase_pose* pose, int32_t digits, char* text, size_t capacity,
                                    size_t* count) noexcept {
  return Call(__func__, [&] { GiveText(Twin(Given(pose, "pose")).ToString1033(digits), text, capacity, count); });
}

zorbase_status zorbase_pose_from_text(const char* text, zorbase_pose* pose) noexcept {
  return Call(__func__, [&] {
    zorbase_pose& place = Given(pose, "pose");
    place = Twin(TPoint6D::Parse1033(TextOf(text, "text")));
  });
}

zorbase_status zorbase_number_to_text(double value, int32_t digits, char* text, size_t capacity,
                                      size_t* count) noexcept {
  return Call(__func__, [&] {
    if (digits < 0 || digits > kMostDigits) RefuseArgument("digits", "must be 0 to 1074");
    std::string number;
    AppendFixed(number, value, digits);
    GiveText(number, text, capacity, count);
  });
}

zorbase_status zorbase_euler_to_poses(const zorbase_euler_pose* euler_poses, size_t count,
                                      zorbase_pose* poses) noexcept {
  return Call(__func__, [&] {
    const auto results = Items(poses, count, "poses");
    const TEulerPointList list{Twins(Items(euler_poses, count, "euler_poses"))};
    GiveItems<TPoint6D>(list.ToPoint6DList(), Twins(results).data(), count, nullptr, "poses");
  });
}

zorbase_status zorbase_poses_create(zorbase_poses** poses) noexcept {
  return Call(__func__, [&] { CreateHandle(poses, "poses"); });
}

void zorbase_poses_destroy(zorbase_poses* poses) noexcept { delete poses; }

zorbase_status zorbase_poses_load(zorbase_poses* poses, const char* file_name) noexcept {
  return Call(__func__, [&] { Given(poses, "poses").Value.LoadFromFile(TextOf(file_name, "file_name")); });
}

zorbase_status zorbase_poses_load_euler(zorbase_poses* poses, const char* file_name) noexcept {
  return Call(__func__, [&] {
    TPoint6DList& place = Given(poses, "poses").Value;
    TEulerPointList loaded;
    loaded.LoadFromFile(TextOf(file_name, "file_name"));
    place = loaded.ToPoint6DList();
  });
}

zorbase_status zorbase_poses_save(const zorbase_poses* poses, const char* file_name, int32_t digits) noexcept {
  return Call(__func__, [&] { Given(poses, "poses").Value.SaveToFile(TextOf(file_name, "file_name"), digits); });
}

zorbase_status zorbase_poses_append(zorbase_poses* poses, const zorbase_pose* items, size_t count) noexcept {
  return Call(__func__, [&] {
    TPoint6DList& list = Given(poses, "poses").Value;
    const auto added = Twins(Items(items, count, "items"));
    CheckedCount(list.size() + count, "poses");
    list.AddRange(added);
  });
}

zorbase_status zorbase_poses_clear(zorbase_poses* poses) noexcept {
  return Call(__func__, [&] { Given(poses, "poses").Value.Clear(); });
}

zorbase_status zorbase_poses_get(const zorbase_poses* poses, int32_t index, zorbase_pose* pose) noexcept {
  return Call(__func__, [&] {
    zorbase_pose& place = Given(pose, "pose");
    place = Twin(Given(poses, "poses").Value[index]);
  });
}

zorbase_status zorbase_poses_get_all(const zorbase_poses* poses, zorbase_pose* items, size_t capacity,
                                     size_t* count) noexcept {
  return Call(__func__, [&] {
    const std::span<const TPoint6D> all = Given(poses, "poses").Value;
    GiveItems(Twins(all), items, capacity, count, "items");
  });
}
