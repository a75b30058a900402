#include <ZORBase/ZORBaseAlg/LowPassFilter.h>
#include <ZORBase/common/BaseServices/TGeneralError.h>
#include <fmt/format.h>
#include <zor/Arguments.h>
#include <zor/Commands.h>
#include <zor/ExitStatus.h>
#include <zor/Progress.h>
#include <zor/RowInput.h>
#include <zor/RowOutput.h>
#include <zor/SignalPicture.h>
#include <zor/TextOutput.h>

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <vector>

namespace ZORBase::Tool {
namespace {

constexpr auto kFooter =
    R"(One sample a line goes in, one filtered sample a line comes out; with --times, rows of time,value at irregular times go in
and rows at the fixed times of --fs come out. Before its first sample the signal is taken to have been that sample
always. A filter of N coefficients delays the signal by (N - 1) / 2 samples. Nothing is kept in memory: files may be of any
length.

Examples:
  zor filter shaker.values.txt --fs 148 --fc 15 -o smooth.txt
  zor filter shaker.txt --fs 148 --fc 15 --times --plot smooth.png -o smooth.txt
  zor filter --fs 148 --fc 15 --window blackman --response      what the filter does, as rows of frequency,attenuation)";

constexpr std::array<std::string_view, 4> kWindows = {"hamming", "blackman", "rectangle", "average"};

struct TOptions {
  std::string File;
  std::optional<double> Fs;
  std::optional<double> Fc;
  std::string Window = std::string(kWindows.front());
  std::optional<std::int64_t> Order;
  bool HasTimes = false;
  bool IsResponse = false;
  std::string Output = std::string(kStandardStream);
  int Decimals = 6;
  std::string Plot;
};

template <class TFilter>
std::unique_ptr<TBaseLowPassFilter> WindowFilter(const TOptions& Options) {
  auto filter = std::make_unique<TFilter>();
  filter->SetFilterOrder(static_cast<int>(Options.Order.value_or(0)));
  return filter;
}

std::unique_ptr<TBaseLowPassFilter> FilterOf(const TOptions& Options) {
  std::unique_ptr<TBaseLowPassFilter> filter;
  if (Options.Window == "hamming") filter = WindowFilter<THammingLowPassFilter>(Options);
  if (Options.Window == "blackman") filter = WindowFilter<TBlackmanLowPassFilter>(Options);
  if (Options.Window == "rectangle") filter = WindowFilter<TRectangleLowPassFilter>(Options);
  if (Options.Window == "average") filter = std::make_unique<TAverageLowPassFilter>();
  filter->SetFsample(*Options.Fs);
  filter->SetFcenter(*Options.Fc);
  filter->Initialize(0.0);
  return filter;
}

// What goes in and what comes out, for the picture.
struct TTrace {
  TSignalLine In{"as measured"};
  TSignalLine Out{"filtered"};
};

// ------------------------------------------------------------------------------------------------ samples

// Filters in blocks, which is faster than one by one and gives the same numbers.
class TBlockFilter {
 public:
  TBlockFilter(const TOptions& Options, TBaseLowPassFilter& Filter, TTrace& Trace)
      : FStep(1.0 / *Options.Fs), FFilter(Filter), FTrace(Trace), FOutput(Options.Output, Options.Decimals) {}

  void Add(double Value) {
    if (FCount == 0 && FBlock.empty()) FFilter.Clear(Value);
    FBlock.push_back(Value);
    if (FBlock.size() == kBlock) Flush();
  }

  void Finish() {
    Flush();
    FOutput.Commit();
  }

 private:
  static constexpr std::size_t kBlock = 4096;

  void Flush() {
    std::vector<double> filtered(FBlock.size());
    FFilter.Filt(FBlock, filtered);
    for (std::size_t i = 0; i < FBlock.size(); ++i) {
      const double time = FStep * static_cast<double>(FCount++);
      FTrace.In.Add(time, FBlock[i]);
      FTrace.Out.Add(time, filtered[i]);
      FOutput.Add({&filtered[i], 1});
    }
    FBlock.clear();
  }

  double FStep;
  TBaseLowPassFilter& FFilter;
  TTrace& FTrace;
  TRowOutput FOutput;
  std::vector<double> FBlock;
  std::int64_t FCount = 0;
};

void FilterSamples(const TOptions& Options, TBaseLowPassFilter& Filter, TTrace& Trace) {
  TBlockFilter block(Options, Filter, Trace);
  ReadRows(Options.File, AnyNumberOf({1, "(one sample)", "sample"}),
           [&](std::span<const double> Row) { block.Add(Row[0]); });
  block.Finish();
}

// ------------------------------------------------------------------------------------------------ timed samples

// Filters a signal of irregular times; output k stands k sample times behind the first sample.
class TTimedFilter {
 public:
  TTimedFilter(const TOptions& Options, TBaseLowPassFilter& Filter, TTrace& Trace)
      : FInput(InputName(Options.File)),
        FFilter(Filter),
        FTrace(Trace),
        FOutput(Options.Output, Options.Decimals),
        FResults(static_cast<std::size_t>(TBaseLowPassFilter::kMaxResampled)) {}

  void Add(double Time, double Value) {
    if (++FLine == 1) {
      FStart = FTime = Time;
      FFilter.Clear(Value);
    }
    if (!(Time >= FTime)) {
      RaiseGeneralError(fmt::format("{}, line {}: found the time {} behind {}, expected times that do not fall.",
                                    FInput, FLine, Time, FTime));
    }
    const int count = Resample(Value, Time - FTime);
    FTime = Time;
    FTrace.In.Add(Time, Value);
    for (int i = 0; i < count; ++i) Write(FResults[static_cast<std::size_t>(i)]);
  }

  void Finish() { FOutput.Commit(); }

 private:
  int Resample(double Value, double DeltaT) {
    try {
      return FFilter.RandomTimeFilt(Value, DeltaT, FResults);
    } catch (const TGeneralError& Error) {
      RaiseGeneralError(fmt::format("{}, line {}: {}", FInput, FLine, Error.what()));
    }
  }

  void Write(double Value) {
    const double time = FStart + FFilter.Tc() * static_cast<double>(++FWritten);
    FTrace.Out.Add(time, Value);
    FOutput.Add(std::array{time, Value});
  }

  std::string FInput;
  TBaseLowPassFilter& FFilter;
  TTrace& FTrace;
  TRowOutput FOutput;
  std::vector<double> FResults;
  double FStart = 0.0;
  double FTime = 0.0;
  std::int64_t FLine = 0;
  std::int64_t FWritten = 0;
};

void FilterTimedSamples(const TOptions& Options, TBaseLowPassFilter& Filter, TTrace& Trace) {
  // The designed length stays: clearing a window filter forgets its order, which only a next design would see.
  TTimedFilter timed(Options, Filter, Trace);
  ReadRows(Options.File, AnyNumberOf({2, "(time,value)", "sample"}),
           [&](std::span<const double> Row) { timed.Add(Row[0], Row[1]); });
  timed.Finish();
}

// ------------------------------------------------------------------------------------------------ response

// Calls Take with frequencies up to half the sample frequency and what is left of them. Each takes a sine and a cosine for every
// coefficient, which of a million of them is some seconds.
template <class TTake>
void ForEachAttenuation(const TOptions& Options, const TBaseLowPassFilter& Filter, TTake&& Take) {
  constexpr int kRows = 500;
  TProgress progress("computing the response", kRows);
  for (int i = 0; i <= kRows; ++i) {
    const double frequency = 0.5 * *Options.Fs * i / kRows;
    Take(frequency, Filter.CalcAttenByF(frequency));
    progress.Advance(i);
  }
}

void WriteResponse(const TOptions& Options, const TBaseLowPassFilter& Filter) {
  TSignalLine line("attenuation");
  TRowOutput output(Options.Output, Options.Decimals);
  ForEachAttenuation(Options, Filter, [&](double Frequency, double Attenuation) {
    line.Add(Frequency, Attenuation);
    output.Add(std::array{Frequency, Attenuation});
  });
  if (!Options.Plot.empty()) {
    SaveSignalPicture({fmt::format("{} filter of {} coefficients, cut-off {:g} at {:g} samples per unit of time",
                                   Options.Window, Filter.Coeff().size(), *Options.Fc, *Options.Fs),
                       "frequency",
                       "amplitude out / amplitude in",
                       {line}},
                      Options.Plot);
  }
  output.Commit();
}

void CheckUsage(const TOptions& Options) {
  if (Options.Window == "average" && Options.Order) {
    throw TUsageError("--order goes with the windows; the length of the average follows from --fs and --fc");
  }
  if (Options.IsResponse == !Options.File.empty()) {
    throw TUsageError(Options.IsResponse ? "--response needs no FILE: it tells about the filter alone" : "name a FILE");
  }
  if (Options.IsResponse && Options.HasTimes) throw TUsageError("--times goes with a FILE, not with --response");
}

std::unique_ptr<TBaseLowPassFilter> DesignedFilter(const TOptions& Options) {
  try {
    return FilterOf(Options);
  } catch (const TGeneralError& Error) {  // only the options can be at fault here
    throw TUsageError(Error.what());
  }
}

void Run(const TOptions& Options) {
  CheckUsage(Options);
  const std::unique_ptr<TBaseLowPassFilter> filter = DesignedFilter(Options);
  if (Options.IsResponse) return WriteResponse(Options, *filter);
  TTrace trace;
  (Options.HasTimes ? FilterTimedSamples : FilterSamples)(Options, *filter, trace);
  if (Options.Plot.empty()) return;
  SaveSignalPicture({fmt::format("{}: {} filter, cut-off {:g}", InputName(Options.File), Options.Window, *Options.Fc),
                     "time",
                     "value",
                     {trace.In, trace.Out}},
                    Options.Plot);
}

}  // namespace

void AddFilterCommand(CLI::App& Program) {
  const auto options = std::make_shared<TOptions>();
  CLI::App& command = AddCommand(Program, "filter", "Smooth a sampled signal", kFooter, [options] { Run(*options); });
  SetRequired(AddNumberFile(command, options->File), false);
  SetRequired(AddPositive(command, "--fs", "F", options->Fs, "Samples per unit of time"));
  SetRequired(AddPositive(command, "--fc", "C", options->Fc, "Cut-off frequency, in the same unit"));
  AddChoice(command, "--window", options->Window, kWindows, "The kind of filter (default: hamming)");
  AddCount(command, "--order", options->Order, 1, TBaseLowPassFilter::kMaxSampleCount - 1,
           "The number of coefficients, made odd (default: by the frequencies)");
  AddFlag(command, "--times", options->HasTimes, "Rows are time,value, at irregular times");
  AddFlag(command, "--response", options->IsResponse, "Give the frequency response of the filter, without a FILE");
  AddOutput(command, options->Output);
  AddDecimals(command, options->Decimals);
  AddPlot(command, options->Plot);
}

}  // namespace ZORBase::Tool
