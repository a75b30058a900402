#include <ZORBase/ZORBase.h>
#include <ZORBase/capi/zorbase.h>

#include <algorithm>
#include <barrier>
#include <bit>
#include <cstdint>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "support/EvaluationArguments.h"
#include "support/Evaluations.h"
#include "support/TestSupport.h"

namespace ZORBase::Test {
namespace {

constexpr std::size_t kThreads = 8;
constexpr int kRounds = 3;

/// Runs Work(number of the thread) on eight threads that begin at the same time. \return what each of them complains about.
template <class TWork>
std::vector<std::string> OnThreads(TWork Work) {
  std::barrier start(static_cast<std::ptrdiff_t>(kThreads));
  std::vector<std::string> complaints(kThreads);
  {
    std::vector<std::jthread> threads;
    for (std::size_t thread = 0; thread < kThreads; ++thread) {
      threads.emplace_back([&, thread] {
        start.arrive_and_wait();
        try {
          complaints[thread] = Work(thread);
        } catch (const std::exception& Error) {
          complaints[thread] = Error.what();
        }
      });
    }
  }
  std::erase(complaints, "");
  return complaints;
}

using TBits = std::vector<std::uint64_t>;

TBits BitsOf(const TEvaluation& Call) {
  const auto results = std::make_unique<TResults>();
  Call.Run(*results);
  TBits bits;
  for (const double value : results->Values()) bits.push_back(std::bit_cast<std::uint64_t>(value));
  return bits;
}

std::vector<TBits> BitsOf(const std::vector<TEvaluation>& Calls) {
  std::vector<TBits> bits;
  for (const TEvaluation& call : Calls) bits.push_back(BitsOf(call));
  return bits;
}

/// Makes all calls on each of the threads at the same time, each one beginning with another call, and afterwards once more on
/// this thread alone. The threads come first, so that what is computed at its first use is so in the middle of the crowd.
std::vector<std::string> DifferencesOnThreads(const std::vector<TEvaluation>& Calls) {
  std::vector<std::vector<TBits>> found(kThreads, std::vector<TBits>(Calls.size()));
  std::vector<std::string> complaints = OnThreads([&](std::size_t Thread) -> std::string {
    for (int round = 0; round < kRounds; ++round) {
      for (std::size_t i = 0; i < Calls.size(); ++i) {
        const std::size_t which = (i + Thread * Calls.size() / kThreads) % Calls.size();
        TBits bits = BitsOf(Calls[which]);
        if (round > 0 && bits != found[Thread][which]) return Calls[which].Name + " changes from call to call";
        found[Thread][which] = std::move(bits);
      }
    }
    return "";
  });
  for (std::size_t i = 0; i < Calls.size(); ++i) {
    const TBits alone = BitsOf(Calls[i]);
    EXPECT_FALSE(alone.empty()) << Calls[i].Name;
    for (const auto& bits : found) {
      if (bits[i] != alone) complaints.push_back(Calls[i].Name);
    }
  }
  return complaints;
}

// ---------------------------------------------------------------------------------------------- shared objects

TEST(SharedObjects, GiveEightThreadsTheBitsThatTheyGiveOne) {
  const std::vector<TEvaluation> calls = Evaluations();
  RecordProperty("calls", static_cast<int>(calls.size()));
  EXPECT_THAT(DifferencesOnThreads(calls), testing::IsEmpty());
}

/// Work on shared arguments that allocates: services, fits and spectra.
std::vector<TEvaluation> Services() {
  const auto matrix = std::make_shared<TDoubleList>();
  const auto right = std::make_shared<TDoubleList>();
  constexpr int kRows = 30;
  constexpr int kColumns = 7;
  for (int i = 0; i < kRows * kColumns; ++i) matrix->Add(std::sin(1.7 * i) + (i % 11 == 0 ? 2.0 : 0.0));
  for (int i = 0; i < kRows; ++i) right->Add(std::cos(0.9 * i));
  const auto poses = std::make_shared<TPoint6DList>(SpiralPoses(40));
  std::vector<TEvaluation> calls;
  calls.push_back({"MatrixDivUsingSvd", [=](TResults& Results) {
                     TDoubleList x;
                     MatrixDivUsingSvd(matrix.get(), right.get(), kRows, kColumns, &x, true);
                     Results.AddAll(std::span<const double>(x));
                   }});
  calls.push_back({"FitPlaneUsingSvd", [=](TResults& Results) {
                     TDoubleList plane;
                     FitPlaneUsingSvd(matrix.get(), &plane);
                     Results.AddAll(std::span<const double>(plane));
                   }});
  calls.push_back({"TNurbs6D::CreateCross", [=](TResults& Results) {
                     TNurbs6D curve;
                     curve.CreateCross(poses.get(), mChord);
                     Results.AddAll(curve.pointArr());
                     Results.Add(curve.CurveLength());
                     Results.AddAll(std::span<const double>(std::array{curve.ClosestPoint((*poses)[7]).Param}));
                   }});
  calls.push_back({"TFFT::CalFFT", [=](TResults& Results) {
                     TFFT fft;
                     fft.CalFFT(*matrix, matrix->Count(), 0.001);
                     Results.AddAll(fft.Spectrum());
                   }});
  calls.push_back({"GaussLegendreRule", [](TResults& Results) {
                     for (const int n : {61, 62, 63, 64}) Results.AddAll(TNumeric::GaussLegendreRule(n));
                   }});
  calls.push_back({"numbers as text", [=](TResults& Results) {
                     for (const TPoint6D& pose : *poses) Results.Add(TPoint6D::Parse1033(pose.ToString1033(9)));
                   }});
  return calls;
}

TEST(SharedObjects, ServicesOnSharedArgumentsGiveEightThreadsTheBitsThatTheyGiveOne) {
  EXPECT_THAT(DifferencesOnThreads(Services()), testing::IsEmpty());
}

TEST(OwnObjects, FiltersOfEightThreadsGiveTheBitsOfFiltersOfOne) {
  std::vector<std::vector<TBits>> found(kThreads);
  EXPECT_THAT(OnThreads([&](std::size_t Thread) {
                found[Thread] = BitsOf(SampleCalls());
                return "";
              }),
              testing::IsEmpty());
  const std::vector<TBits> alone = BitsOf(SampleCalls());
  for (const auto& bits : found) EXPECT_EQ(bits, alone);
}

// ---------------------------------------------------------------------------------------------- the C interface

TEST(ErrorTextOfTheCInterface, IsThatOfTheThreadsOwnLastCall) {
  const auto complaints = OnThreads([](std::size_t Thread) -> std::string {
    const std::string own = "thread " + std::to_string(Thread) + " brings no pose";
    for (int round = 0; round < 200; ++round) {
      zorbase_pose pose{};
      if (zorbase_pose_from_text(own.c_str(), &pose) != ZORBASE_ERROR) return "a text without numbers is read";
      const std::string said = zorbase_last_error();
      if (said.find(own) == std::string::npos) return "thread " + std::to_string(Thread) + " is told: " + said;
      if (zorbase_pose_from_text("1,2,3,0,0,1", &pose) != ZORBASE_OK) return "a pose is not read";
      if (*zorbase_last_error() != '\0') return "a success leaves a text";
    }
    return "";
  });
  EXPECT_THAT(complaints, testing::IsEmpty());
}

TEST(ObjectsOfTheCInterface, AreMadeUsedAndDestroyedOnEightThreadsAtOnce) {
  const std::vector<TEvaluation> alone = CEvaluations();
  const std::vector<TBits> expected = BitsOf(alone);
  const auto complaints = OnThreads([&](std::size_t) -> std::string {
    return BitsOf(CEvaluations()) == expected ? "" : "an object made beside others gives other numbers";
  });
  EXPECT_THAT(complaints, testing::IsEmpty());
}

TEST(OnThreads, ReportsAThreadThatFails) {
  const auto complaints = OnThreads([](std::size_t Thread) -> std::string {
    if (Thread == 3) throw std::runtime_error("three");
    return Thread == 5 ? "five" : "";
  });
  EXPECT_THAT(complaints, testing::ElementsAre("three", "five"));
}

}  // namespace
}  // namespace ZORBase::Test
