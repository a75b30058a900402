// FuzzTarget: what the fuzz targets share. An input is a text; where a target takes numbers it is a row of words, so that seeds and
// findings can be read and written by hand.
//   ZORBASE_FUZZ_TARGET(Name) { ... Input ... }   a target; each has a source and a namespace of its own
//   TFuzzInput                                    hands the words of the input out as numbers, counts, points and names
//   AsInt                                         any number as an int
//   Attempt                                       a call that may raise the general error, and nothing else
//   Require                                       a law: where it does not hold, the program ends
//   SameBits, SameNumbers, SameStructs            whether results are the same
//   CheckManyAgainstOne                           the law of a form for many
//   TFuzzFolder                                   a folder for the files of one input
// A target is built twice: as a program of libFuzzer (preset fuzz), and into fuzz_corpus, which runs the inputs of tests/fuzz/corpus
// once and is one of the ordinary tests.
#pragma once

#include <ZORBase/ZORGeometry/CADTypes6D/TPoint6DList.h>
#include <ZORBase/common/BaseServices/TGeneralError.h>
#include <ZORBase/common/BaseServices/TList.h>
#include <ZORBase/common/Cadtypes/TPoint2D.h>
#include <ZORBase/common/Cadtypes/TPoint3D.h>

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace ZORBase::Test {

class TFuzzInput {
 public:
  explicit TFuzzInput(std::string_view Text) : FText(Text) {}

  std::string_view Text() const { return FText; }  ///< all of the input
  bool AtEnd();                                    ///< whether no word is left
  std::string_view Line();                         ///< what is left of the line; the words go on behind it
  std::string_view Rest() const { return FText.substr(FPlace); }

  std::string_view Word();                ///< the next word; "" at the end
  double Number();                        ///< the next word as a number; 0 where it is none. Knows nan and inf.
  int Int();                              ///< the next number as an int, clamped to its range; 0 for nan
  int Count(int Limit);                   ///< a number from 0 to Limit
  int Choice(int Count);                  ///< a number from 0 to Count - 1
  std::vector<double> Numbers(int Most);  ///< the numbers up to the end, at most so many
  TPoint2D Point2D();
  TPoint3D Point3D();
  TPoint6D Pose();
  TPoint6DList Poses(int Most);  ///< as many as there is a whole word for

 private:
  std::string_view FText;
  std::size_t FPlace = 0;
};

/// \return the number clamped to the range of an int, without its fraction; 0 for nan.
int AsInt(double Number);

using TFuzzFunction = void (*)(TFuzzInput& Input);

/// Enters a target under its name.
struct TFuzzTarget {
  TFuzzTarget(std::string_view Name, TFuzzFunction Function);
};

/// \return the target of this name, or the only one for ""; null where there is none.
TFuzzFunction FindFuzzTarget(std::string_view Name);

/// Runs the target on an input; ends the program for an exception that passes out of it.
void RunFuzzTarget(TFuzzFunction Target, std::string_view Text);

#define ZORBASE_FUZZ_TARGET(Name)                               \
  static void Fuzz(ZORBase::Test::TFuzzInput& Input);           \
  static const ZORBase::Test::TFuzzTarget kEntry(#Name, &Fuzz); \
  static void Fuzz([[maybe_unused]] ZORBase::Test::TFuzzInput& Input)

/// Ends the program with the text of the law unless it holds.
void Require(bool Holds, std::string_view Law);

/// \return whether the call came back without the general error. Any other exception passes on.
template <class TCall>
bool Attempt(TCall&& Call) {
  try {
    Call();
  } catch (const TGeneralError& Error) {
    Require(!std::string_view(Error.what()).empty(), "an error has a text");
    return false;
  }
  return true;
}

/// One folder for the whole run, emptied for each input.
class TFuzzFolder {
 public:
  TFuzzFolder();
  TFuzzFolder(const TFuzzFolder&) = delete;
  TFuzzFolder& operator=(const TFuzzFolder&) = delete;
  /// \return the path of a file in the folder.
  static std::string File(std::string_view Name);
  static std::string Write(std::string_view Name, std::string_view Text);
};

/// \return whether the numbers are the same bits.
bool SameBits(std::span<const double> A, std::span<const double> B);

/// \return whether the numbers are the same bits, where which of its many forms a NaN has is nobody's result.
bool SameNumbers(std::span<const double> A, std::span<const double> B);

/// \return SameNumbers of structs that hold nothing but numbers.
template <class T>
bool SameStructs(std::span<const T> A, std::span<const T> B) {
  static_assert(std::is_trivially_copyable_v<T> && sizeof(T) % sizeof(double) == 0);
  const auto numbers = [](std::span<const T> Structs) {
    return std::span(reinterpret_cast<const double*>(Structs.data()), Structs.size_bytes() / sizeof(double));
  };
  return SameNumbers(numbers(A), numbers(B));
}
template <class T>
bool SameStruct(const T& A, const T& B) {
  return SameStructs<T>({&A, 1}, {&B, 1});
}

/// The law of a form for many: it goes well where the form for one does so for each, and gives the same.
/// \param Many  gives the results of all: Many(Results); \return whether that went well.
/// \param One   gives the result of an item: One(Item, Result); the same.
template <class TResult, class TMany, class TOne>
void CheckManyAgainstOne(std::string_view Law, std::size_t Count, TMany&& Many, TOne&& One) {
  std::vector<TResult> together(Count);
  std::vector<TResult> alone(Count);
  bool isEachGood = true;
  for (std::size_t i = 0; i < Count; ++i) isEachGood = One(i, alone[i]) && isEachGood;
  Require(Many(std::span<TResult>(together)) == isEachGood, Law);
  if (isEachGood) Require(SameStructs<TResult>(together, alone), Law);
}

}  // namespace ZORBase::Test
