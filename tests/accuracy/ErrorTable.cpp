#include "ErrorTable.h"

#include <cstdio>

namespace ZORBase::Test {
namespace {

// Two significant digits.
std::string Brief(double Value) {
  char text[32];
  std::snprintf(text, sizeof text, Value != 0.0 && (Value < 0.01 || Value >= 1e4) ? "%.1e" : "%.2g", Value);
  return text;
}

// Limits are round numbers.
std::string Exact(double Value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.4g", Value);
  return text;
}

// What errors are held to, and whether they are beyond.
std::string Held(double Bound, bool IsKept) { return Exact(Bound) + (IsKept ? "" : " **missed**"); }

}  // namespace

bool TErrorRow::Count(double Error) {
  const double error = Worse(Error, 0.0);
  const bool isWorst = FCases == 0 || error > FLargest;
  ++FCases;
  FSum += error;
  if (isWorst) FLargest = error;
  return isWorst;
}

void TErrorTable::Print() const {
  for (const TSubject& subject : FSubjects) {
    std::printf("\n## %s\n\n", subject.Title.c_str());
    std::printf("| operation | cases | unit | largest | mean | goal | limit | worst input | remark |\n");
    std::printf("|---|---:|---|---:|---:|---:|---:|---|---|\n");
    for (const TErrorRow& row : subject.Rows) {
      const TRowText& text = row.Text();
      std::printf("| %s | %zu | %s | %s | %s | %s | %s | %s | %s |\n", text.Operation.c_str(), row.Cases(),
                  text.Unit.c_str(), Brief(row.Largest()).c_str(), Brief(row.Mean()).c_str(),
                  row.HasGoal() ? Held(row.Goal(), row.ReachesGoal()).c_str() : "",
                  Held(row.Limit(), row.KeepsLimit()).c_str(), row.Worst().c_str(), text.Remark.c_str());
    }
  }
}

template <class TIsGood>
bool TErrorTable::PrintUnless(TIsGood&& IsGood) const {
  bool hasNone = true;
  for (const TSubject& subject : FSubjects) {
    for (const TErrorRow& row : subject.Rows) {
      if (IsGood(row)) continue;
      hasNone = false;
      const std::string goal = row.HasGoal() ? "the goal is " + Exact(row.Goal()) + " and " : "";
      std::printf("- %s: %s %s, %sthe limit is %s; at %s. %s\n", row.Text().Operation.c_str(),
                  Brief(row.Largest()).c_str(), row.Text().Unit.c_str(), goal.c_str(), Exact(row.Limit()).c_str(),
                  row.Worst().c_str(), row.Text().Remark.c_str());
    }
  }
  return hasNone;
}

bool TErrorTable::PrintShortfalls() const {
  return PrintUnless([](const TErrorRow& Row) { return Row.ReachesGoal(); });
}

bool TErrorTable::PrintMissedLimits() const {
  return PrintUnless([](const TErrorRow& Row) { return Row.KeepsLimit(); });
}

}  // namespace ZORBase::Test
