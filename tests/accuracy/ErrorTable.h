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
  double Goal = 0.0;     ///< what is wished for where the limit is looser; 0 where the limit is the goal
};

/// The errors of one operation.
class TErrorRow {
 public:
  /// \param Limit  the largest error that passes
  TErrorRow(TRowText Text, double Limit) : FText(std::move(Text)), FLimit(Limit) {}

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
  double Limit() const { return FLimit; }
  std::size_t Cases() const { return FCases; }
  double Largest() const { return FLargest; }
  double Mean() const { return FSum / static_cast<double>(FCases); }
  const std::string& Worst() const { return FWorst; }  ///< the input of the largest error
  double Goal() const { return FText.Goal > 0.0 ? FText.Goal : FLimit; }
  /// \return whether there were errors to count and none was above the limit, or the goal.
  bool KeepsLimit() const { return FCases > 0 && FLargest <= FLimit; }
  bool ReachesGoal() const { return FCases > 0 && FLargest <= Goal(); }

 private:
  bool Count(double Error);

  TRowText FText;
  double FLimit;
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
  TErrorRow& Row(TRowText Text, double Limit) { return FSubjects.back().Rows.emplace_back(std::move(Text), Limit); }

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
