// The k-th allocation of a task fails, for every k, alone or with all behind it.
#include <ZORBase/ZORBaseAlg/uFFT.h>
#include <ZORBase/capi/zorbase.h>

#include "faults/FaultSupport.h"
#include "faults/Scenarios.h"
#include "support/TestAllocator.h"
#include "support/TestSupport.h"

namespace ZORBase::Test {
namespace {

struct TManner {
  std::int64_t First;
  std::int64_t Many;
};

class TAllocationFault : public testing::Test {
 protected:
  TAllocationFault() {
    constexpr std::size_t kFewLines = 1000;  // in bytes, about
    const std::string path = FileText(SampleFile("swept-plane.poses.txt"));
    WriteFile(FInput, IsThorough() ? path : path.substr(0, path.find('\n', kFewLines) + 1));
  }

  std::unique_ptr<TScenario> Make(const TScenarioKind& Kind) const { return Kind.Make(FInput, FOutput); }

  // Does the task while allocations fail, and once more on the same objects. \return whether one failed.
  bool RunWithFault(const TScenarioKind& Kind, const TManner& Manner, const std::vector<double>& Expected,
                    const std::string& NewText);

  // \return what the task gives when nothing fails. What is computed once for the whole process is there from then on.
  std::vector<double> Reference(const TScenarioKind& Kind) const {
    const auto scenario = Make(Kind);
    scenario->Run();
    return scenario->Run();
  }

  void RunWithEveryFault(std::span<const TScenarioKind> Kinds, const char* Interface);

  TScratchFolder FFolder;
  std::string FInput = FFolder.File("in.txt");
  std::string FOutput = FFolder.File("out.txt");
};

// The C interface has a status for want of memory; that of a file's line has it in its text.
TOutcome OutcomeOf(TScenario& Scenario) {
  return Outcome([&] {
    try {
      Scenario.Run();
    } catch (const TStatusError& Error) {
      if (Error.Status == ZORBASE_NO_MEMORY) throw std::bad_alloc();
      if (Error.Status == ZORBASE_ERROR) RaiseGeneralError(zorbase_last_error());
      throw;
    }
  });
}

bool IsOneOf(const std::string& Text, const std::string& NewText) { return Text == kOldText || Text == NewText; }

bool TAllocationFault::RunWithFault(const TScenarioKind& Kind, const TManner& Manner,
                                    const std::vector<double>& Expected, const std::string& NewText) {
  WriteFile(FOutput, kOldText);
  bool hasFailed = false;
  TOutcome outcome = TOutcome::Other;
  bool isSameAfterwards = false;
  bool isWhole = false;
  std::size_t files = 0;
  const TAllocationCount count;
  {
    const auto scenario = Make(Kind);
    {
      const TFailingAllocations failing(Manner.First, Manner.Many);
      outcome = OutcomeOf(*scenario);
      hasFailed = failing.HasFailed();
    }
    isWhole = IsOneOf(FileText(FOutput), NewText);
    files = FFolder.Count();
    isSameAfterwards = scenario->Run() == Expected;
  }
  const std::int64_t left = count.Left();
  EXPECT_TRUE(outcome == TOutcome::NoMemory || outcome == TOutcome::Done) << static_cast<int>(outcome);
  EXPECT_TRUE(hasFailed || outcome == TOutcome::Done);
  EXPECT_TRUE(isSameAfterwards) << "the objects were of no use any more";
  EXPECT_TRUE(isWhole) << "half a file";
  EXPECT_EQ(files, 2U) << "a temporary file stayed";
  EXPECT_EQ(left, 0) << "blocks were not freed";
  return hasFailed;
}

void TAllocationFault::RunWithEveryFault(std::span<const TScenarioKind> Kinds, const char* Interface) {
  for (const TScenarioKind& kind : Kinds) {
    WriteFile(FOutput, kOldText);
    const std::vector<double> expected = Reference(kind);
    ASSERT_FALSE(expected.empty());
    const std::string newText = FileText(FOutput);
    std::int64_t faults = 0;
    for (const std::int64_t many : {std::int64_t{1}, TFailingAllocations::kAll}) {
      for (std::int64_t k = 1;; ++k) {
        SCOPED_TRACE(std::string(kind.Name) + ", allocation " + std::to_string(k));
        if (!RunWithFault(kind, {k, many}, expected, newText) || HasFailure()) break;
        ++faults;
      }
    }
    EXPECT_GT(faults, 0) << kind.Name;
    ReportRow(std::string("allocation, ") + Interface + ": " + kind.Name, faults,
              "std::bad_alloc or its status; nothing lost, objects usable, files whole");
  }
}

TEST_F(TAllocationFault, EveryTaskEndsCleanlyWhicheverAllocationFailsAndSucceedsAfterwards) {
  RunWithEveryFault(Scenarios(), "C++");
}

TEST_F(TAllocationFault, TheCInterfaceSaysNoMemoryWhicheverAllocationFailsAndSucceedsAfterwards) {
  RunWithEveryFault(CScenarios(), "C");
}

// The factors of a length are computed once and kept: a child computes them first while an allocation fails.
TEST_F(TAllocationFault, TheFirstSpectrumOfALengthSucceedsAfterItFailedForWantOfMemory) {
  std::vector<double> samples(4096);
  for (std::size_t i = 0; i < samples.size(); ++i) samples[i] = static_cast<double>(i % 2);
  constexpr int kStillGood = 10;
  constexpr int kNotFailed = 11;
  int status = kStillGood;
  std::int64_t faults = 0;
  for (std::int64_t k = 1; status == kStillGood; ++k, ++faults) {
    status = TChild([&] {
               TFFT fft;
               bool hasFailed = false;
               {
                 const TFailingAllocations failing(k, 1);
                 Outcome([&] { fft.CalFFT(samples, 4096, 1.0); });
                 hasFailed = failing.HasFailed();
               }
               // The mean is a half, and the bin of the mean reads twice that.
               fft.CalFFT(samples, 4096, 1.0);
               if (fft.getAmp(0) != 1.0) return 1;
               return hasFailed ? kStillGood : kNotFailed;
             }).Wait();
  }
  EXPECT_EQ(status, kNotFailed);
  EXPECT_GT(faults, 2);
}

}  // namespace
}  // namespace ZORBase::Test
