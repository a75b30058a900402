#include <ZORBase/ZORBaseAlg/uFFT.h>
#include <ZORBase/common/BaseServices/TGeneralError.h>
#include <fmt/format.h>
#include <zor/Arguments.h>
#include <zor/Commands.h>
#include <zor/ExitStatus.h>
#include <zor/Progress.h>
#include <zor/Report.h>
#include <zor/RowInput.h>
#include <zor/SignalPicture.h>
#include <zor/SpectralLines.h>

#include <memory>
#include <numeric>
#include <optional>
#include <vector>

namespace ZORBase::Tool {
namespace {

constexpr auto kFooter =
    R"(The mean is taken off, the samples are padded with zeros to a power of two and transformed. A line is a peak of the
spectrum that is no side lobe of a stronger one. Its amplitude is that of the cosine that would read so, its phase that of
the cosine at the first sample, in degrees.

Examples:
  zor spectrum shaker.values.txt --fs 148            one sample a line, 148 a second
  zor spectrum shaker.txt --column 2 --dt 0.006757   the second of two columns
  zor spectrum shaker.values.txt --fs 148 --plot spectrum.png)";

constexpr std::int64_t kMostLines = 1000;
constexpr int kUsualLines = 10;

struct TOptions {
  std::string File;
  std::optional<double> Dt;
  std::optional<double> Fs;
  std::optional<std::int64_t> Column;
  std::optional<std::int64_t> Top;
  bool IsJson = false;
  std::string Plot;
};

double TimeStep(const TOptions& Options) {
  if (Options.Dt.has_value() == Options.Fs.has_value()) throw TUsageError("give either --dt or --fs");
  return Options.Dt ? *Options.Dt : 1.0 / *Options.Fs;
}

std::vector<double> ReadSamples(const TOptions& Options) {
  const auto column = static_cast<std::size_t>(Options.Column.value_or(1));
  std::vector<double> samples;
  const TRowForm form = {0, "", "sample"};
  ReadRows(Options.File, form, [&](std::span<const double> Row) {
    if (Row.size() < column) {
      RaiseGeneralError(fmt::format("{}, line {}: found {} numbers, expected at least {}, for --column {}.",
                                    InputName(Options.File), samples.size() + 1, Row.size(), column, column));
    }
    samples.push_back(Row[column - 1]);
  });
  constexpr std::size_t kFewest = 4;
  if (samples.size() < kFewest) {
    RaiseGeneralError(
        fmt::format("{}: found {} samples, expected at least {}.", InputName(Options.File), samples.size(), kFewest));
  }
  return samples;
}

double TakeOffMean(std::vector<double>& Samples) {
  const double mean = std::accumulate(Samples.begin(), Samples.end(), 0.0) / static_cast<double>(Samples.size());
  for (double& sample : Samples) sample -= mean;
  return mean;
}

TReport SpectrumReport(const TOptions& Options, const TFFT& Spectrum, std::size_t Samples, double Mean) {
  TReport report;
  report.Section("", "");
  report.Fact("file", "file", InputName(Options.File));
  report.Fact("samples", "samples", static_cast<std::int64_t>(Samples));
  report.Fact("mean", "mean", Mean);
  report.Fact("step", "step of the frequencies", Spectrum.getFrq(1));
  report.Section("lines", "Strongest lines",
                 {{"frequency", "frequency"}, {"amplitude", "amplitude"}, {"phase", "phase in deg"}}, TReport::rnList);
  const auto most = static_cast<std::size_t>(Options.Top.value_or(kUsualLines));
  for (const TSpectralLine& line : StrongestLines(Spectrum, Samples, most)) {
    report.Row("", "", {line.Frequency, line.Amplitude, line.Phase});
  }
  return report;
}

void Draw(const TOptions& Options, const TFFT& Spectrum, std::size_t Samples) {
  const double scale = AmplitudeScale(Spectrum, Samples);
  TSignalLine line("amplitude");
  for (int i = 0; i < Spectrum.Count(); ++i) line.Add(Spectrum.getFrq(i), scale * Spectrum.getAmp(i));
  SaveSignalPicture({fmt::format("{}: spectrum of {} samples, the mean taken off", InputName(Options.File), Samples),
                     "frequency",
                     "amplitude",
                     {line}},
                    Options.Plot);
}

void Run(const TOptions& Options) {
  const double step = TimeStep(Options);
  std::vector<double> samples = ReadSamples(Options);
  const double mean = TakeOffMean(samples);
  TFFT spectrum;
  {
    const TProgress progress("transforming");
    spectrum.CalFFT(samples, static_cast<int>(samples.size()), step);
  }
  if (!Options.Plot.empty()) Draw(Options, spectrum, samples.size());
  SpectrumReport(Options, spectrum, samples.size(), mean).Write(Options.IsJson);
}

}  // namespace

void AddSpectrumCommand(CLI::App& Program) {
  const auto options = std::make_shared<TOptions>();
  CLI::App& command = AddCommand(Program, "spectrum", "Find the frequencies in a sampled signal", kFooter,
                                 [options] { Run(*options); });
  AddNumberFile(command, options->File);
  AddPositive(command, "--dt", "T", options->Dt, "The time from sample to sample");
  AddPositive(command, "--fs", "F", options->Fs, "The number of samples per unit of time");
  AddCount(command, "--column", options->Column, 1, static_cast<std::int64_t>(kMostColumns),
           "The number of each line that is the sample (default 1)");
  AddCount(command, "--top", options->Top, 1, kMostLines, "How many lines are listed (default 10)");
  AddJson(command, options->IsJson);
  AddPlot(command, options->Plot);
}

}  // namespace ZORBase::Tool
