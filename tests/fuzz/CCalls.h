// CCalls: what the fuzz targets of the C interface share.
#pragma once

#include <ZORBase/capi/zorbase.h>

#include <cstring>
#include <span>
#include <string_view>

#include "fuzz/FuzzTarget.h"

namespace ZORBase::Test {

/// The laws of every call. \return whether it went well.
inline bool Check(zorbase_status Status) {
  Require(Status >= ZORBASE_OK && Status < ZORBASE_UNEXPECTED, "a status is one of the known ones");
  Require((Status == ZORBASE_OK) == (std::strlen(zorbase_last_error()) == 0), "a failure has a text, a success none");
  return Status == ZORBASE_OK;
}

inline zorbase_pose NextPose(TFuzzInput& Input) {
  zorbase_pose pose{};
  for (double* const part : {&pose.x, &pose.y, &pose.z, &pose.a, &pose.b, &pose.c}) *part = Input.Number();
  return pose;
}

/// CheckManyAgainstOne for a call.
/// \param Many  gives the results of all items: Many(Results)
/// \param One   gives the result of an item: One(Item, Result)
template <class TResult, std::size_t Count, class TMany, class TOne>
void CheckCallForMany(std::string_view Law, TMany&& Many, TOne&& One) {
  CheckManyAgainstOne<TResult>(
      Law, Count, [&](std::span<TResult> Results) { return Check(Many(Results.data())); },
      [&](std::size_t Item, TResult& Result) { return Check(One(Item, &Result)); });
}

}  // namespace ZORBase::Test
