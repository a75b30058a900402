// ErrorTable: how far results are off, row by row, and whether each row keeps its limit.
#pragma once

#include <cmath>
#include <concepts>
#include <cstddef>
#include <deque>
#include <limits>
#include <string>
#include <utility>

namespace ZORBase::Test {

/// The limit of what is rounded once, in units of the last place: with what the extended format may add, in which some operations
/// form their results before they store them, and in which others are measured.
inline constexpr double kRoundedOnce = 0.501;

/// The worse of two errors, of which a NaN counts as infinite; std::max would pass over it.
template <std::floating_point TReal>
TReal Worse(TReal A, TReal B) {
  if (std::isnan(A) || std::isnan(B)) return std::numeric_limits<TReal>::infinity();
  return A < B ? B : A;
}

/// What a row is about.
struct TRowText {
  std::string Operation;
  std::string Unit;      ///< of errors and limit: "ulp", "eps", "relative", "rad", ...
  std::string Remark{};  ///< what there is to know, such as an error that is meant to be there
};

/// What errors are held to.
struct TBound {
  TBound(double ALimit, double AGoal = 0.0) : Limit(ALimit), Goal(AGoal) {}  // a limit alone is written as a number

  double Limit;  ///< the largest error that passes
  double Goal;   ///< what was set beforehand; 0 where nothing was
};

/// The bound of what was set beforehand and is kept.
inline TBound AsGoal(double Goal) { return {Goal, Goal}; }

/// The errors of one operation.
class TErrorRow {
 public:
  TErrorRow(TRowText Text, TBound Bound) : FText(std::move(Text)), FBound(Bound) {}

  /// Counts an error; one that is not a number counts as infinite. Where() gives the name of the input and is only asked when
  /// there was no larger error before.
  template <std::invocable TWhere>
  void Add(double Error, TWhere&& Where) {
    if (Count(Error)) FWorst = Where();
  }
  void Add(double Error, const std::string& Where) {
    if (Count(Error)) FWorst = Where;
  }

  const TRowText& Text() const { return FText; }
  std::size_t Cases() const { return FCases; }
  double Largest() const { return FLargest; }
  double Mean() const { return FSum / static_cast<double>(FCases); }
  const std::string& Worst() const { return FWorst; }  ///< the input of the largest error
  double Limit() const { return FBound.Limit; }
  double Goal() const { return FBound.Goal; }
  bool HasGoal() const { return FBound.Goal > 0.0; }
  /// \return whether there were errors to count and none was above the limit.
  bool KeepsLimit() const { return FCases > 0 && FLargest <= FBound.Limit; }
  /// \return the same of the goal, and true where none was set.
  bool ReachesGoal() const { return !HasGoal() || (FCases > 0 && FLargest <= FBound.Goal); }

 private:
  bool Count(double Error);

  TRowText FText;
  TBound FBound;
  std::size_t FCases = 0;
  double FLargest = 0.0;
  double FSum = 0.0;
  std::string FWorst;
};

/// The rows, under the titles of their subjects.
class TErrorTable {
 public:
  void Subject(std::string Title) { FSubjects.push_back({std::move(Title), {}}); }
  /// \return a new row of the last subject; it stays where it is.
  TErrorRow& Row(TRowText Text, TBound Bound) { return FSubjects.back().Rows.emplace_back(std::move(Text), Bound); }

  /// Prints Markdown: a table for each subject.
  void Print() const;
  /// Prints the rows that miss their goals. \return whether there is none.
  bool PrintShortfalls() const;
  /// The same of the rows that miss their limits.
  bool PrintMissedLimits() const;

 private:
  struct TSubject {
    std::string Title;
    std::deque<TErrorRow> Rows;  // whose places in memory stay
  };

  template <class TIsGood>
  bool PrintUnless(TIsGood&& IsGood) const;

  std::deque<TSubject> FSubjects;
};

}  // namespace ZORBase::Test
