// CCalls: what the fuzz targets of the C interface share.
#pragma once

#include <ZORBase/capi/zorbase.h>

#include <array>
#include <cstring>
#include <span>

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

/// The numbers of structs that hold nothing else, one behind the other.
template <class T>
std::span<const double> NumbersOf(std::span<const T> Structs) {
  return {reinterpret_cast<const double*>(Structs.data()), Structs.size_bytes() / sizeof(double)};
}

/// \return whether the structs hold the same numbers.
template <class T>
bool SameStructs(std::span<const T> A, std::span<const T> B) {
  return SameNumbers(NumbersOf(A), NumbersOf(B));
}

/// The law of a call for many: it goes well where the call for one does so for each, and gives the same.
/// \param Many  gives the results of all items: Many(Results)
/// \param One   gives the result of an item: One(Item, Result)
template <class TResult, std::size_t Count, class TMany, class TOne>
void CheckManyAgainstOne(std::string_view Law, TMany&& Many, TOne&& One) {
  std::array<TResult, Count> together{};
  std::array<TResult, Count> alone{};
  bool isEachGood = true;
  for (std::size_t i = 0; i < Count; ++i) isEachGood = Check(One(i, &alone[i])) && isEachGood;
  Require(Check(Many(together.data())) == isEachGood, Law);
  if (isEachGood) Require(SameStructs<TResult>(together, alone), Law);
}

}  // namespace ZORBase::Test
