#pragma once

#include <ZORBase/ZORBaseAlg/LowPassFilter/TAttenuationAndF.h>
#include <ZORBase/common/Export.h>

#include <cstddef>
#include <functional>
#include <span>

namespace ZORBase {

/// A low-pass filter for a stream of samples: each output is a sum over the last N samples, weighted by the coefficients.
///
/// Set both frequencies, call Initialize, then filter. Frequencies are in one unit of the caller's, times in its inverse.
///
/// Holds: the design (coefficients, ring, attenuation table) is that of the last Initialize, whatever is set afterwards. A new
/// frequency only makes N unknown (-1); the filter goes on with the old design until Initialize is called again.
class ZORBASE_API TBaseLowPassFilter {
 public:
  /// A filter is at most this long; a design of the longest one takes about a second.
  static constexpr int kMaxSampleCount = 1'000'001;
  /// The attenuation table may take this many terms, rows times N, behind the cut-off frequency. It ends there.
  static constexpr int kMaxAttenTerms = 1 << 24;
  /// It has at most this many rows there.
  static constexpr int kMaxAttenRows = 1 << 20;
  /// One irregularly timed sample may bring at most this many outputs.
  static constexpr int kMaxResampled = 1 << 20;

  TBaseLowPassFilter(const TBaseLowPassFilter&) = delete;
  TBaseLowPassFilter& operator=(const TBaseLowPassFilter&) = delete;
  virtual ~TBaseLowPassFilter() = default;

  // -------------------------------------------------------------------------------------- setting up

  /// Sets the sample frequency, which is also what SampleTime reads, and the sample time Tc = 1/fs; N becomes unknown.
  /// \throws the general error for a frequency that is not finite; nothing is changed then.
  void SetFsample(double fs);
  /// Sets the cut-off frequency; N becomes unknown. \throws as SetFsample.
  void SetFcenter(double fc);

  double Frequency() const { return FFc; }   ///< the cut-off frequency
  double SampleTime() const { return FFs; }  ///< the sample frequency, whatever its name says

  ///@{
  /// The length N of the filter, computed with CalN when it is unknown. \throws as CalN.
  int SampleCount() { return GetSampleCount(); }
  int GetSampleCount();
  ///@}

  /// Computes N: for fc > 0 the odd number 2 (ceil((fs/2) / fc) div 2) + 1, otherwise N stays; at least 3 in any case.
  /// \throws the general error when N would be above kMaxSampleCount; N stays as it was.
  virtual void CalN();

  /// Designs the filter: N, coefficients of sum 1 (unless their raw sum is at most 1e-4) and attenuation table. Fills the ring
  /// with initValue; LastOutput becomes 0.
  /// \throws the general error unless fs > 0 and the length and the ratio of the frequencies can be designed; the design in
  ///         force stays.
  void Initialize(double initValue);

  /// Computes the coefficients, before they are scaled.
  virtual void SetEff() = 0;

  /// Refills the ring with initValue, which becomes LastOutput, and forgets the time that RandomTimeFilt has gathered. The
  /// coefficients stay. Before Initialize there is no ring to fill. Allocates nothing, takes no lock.
  virtual void Clear(double initValue);

  // -------------------------------------------------------------------------------------- filtering

  /// \return the output for the next sample. \throws the general error before Initialize. Allocates nothing, takes no lock.
  virtual double Filt(double value) = 0;

  /// Filters samples in a row: Results[i] becomes what Filt(Values[i]) gives, bit for bit. Results may be Values itself; its
  /// further places stay as they are.
  /// \throws the general error, with nothing changed, when Results is shorter than Values or overlaps it in another way, and
  ///         before Initialize. Allocates nothing, takes no lock.
  virtual void Filt(std::span<const double> Values, std::span<double> Results);

  /// Takes a sample that comes deltaT after the one before. The signal in between is a straight line from the newest sample in
  /// the ring; it is filtered at every multiple of Tc that has been reached, and the time that is left is kept.
  /// \param elapsed  becomes the time filtered: Tc added up once for each output.
  /// \return the last output, which is the one before when none was due.
  /// \throws the general error, with nothing changed, for a deltaT that is negative or not finite, a Tc that is not positive or
  ///         too small against the time to be consumed, more than kMaxResampled outputs, and before Initialize.
  ///         Allocates nothing, takes no lock.
  double RandomTimeFilt(double value, double deltaT, double& elapsed);

  /// The same, with the outputs in Results[0], Results[1], ... \return how many there are.
  /// \throws as above, and when more outputs are due than Results has places. Allocates nothing, takes no lock.
  int RandomTimeFilt(double value, double deltaT, std::span<double> Results);

  double LastOutput() const { return FLastOut; }  ///< the last output

  // -------------------------------------------------------------------------------------- what the filter does

  /// \return the magnitude of the frequency response at f; 0 before Initialize. Cost: N sines and cosines.
  ///         Allocates nothing, takes no lock.
  double CalcAttenByF(double f) const;

  /// \return the frequency at which the response falls to atten, interpolated in the attenuation table; the line through the
  ///         outermost two rows goes on where the table ends. Allocates nothing, takes no lock.
  /// \throws the general error before Initialize.
  double CalcRouphFByAtten(double atten) const;

  /// \return the sum of signal[k] times coefficient k for k = 0..count-1, 0 for count <= 0.
  /// \throws the general error "Error TBaseLowPassFilter.CalcSimuSignalMutiply" when count exceeds the signal; when it exceeds
  ///         the coefficients, the text goes on.
  double CalcSimuSignalMutiply(std::span<const double> signal, int count) const;

  // -------------------------------------------------------------------------------------- fields

  double fs() const { return FFs; }                    ///< sample frequency
  double fc() const { return FFc; }                    ///< cut-off frequency
  double Tc() const { return FTc; }                    ///< sample time, 1/fs
  double lastOut() const { return FLastOut; }          ///< last output
  int N() const { return FN; }                         ///< length of the filter, -1 while it is unknown
  double cutoffTime() const { return FCutoffTime; }    ///< time gathered by RandomTimeFilt and not consumed yet
  double cutoffValue() const { return FCutoffValue; }  ///< last sample given to RandomTimeFilt
  const TAttenuationAndFList& attList() const { return FAttList; }  ///< attenuation table, in increasing frequency
  std::span<const double> Coeff() const { return FCoeff; }    ///< N coefficients; the first meets the oldest sample
  std::span<const double> Signal() const { return FSignal; }  ///< the ring, twice, so that its samples lie in a row
  int SignalIndex() const { return FSignalIndex; }            ///< place of the ring that is written next

 protected:
  TBaseLowPassFilter() = default;
  ///@{
  /// The filter moved from is empty, as before Initialize.
  TBaseLowPassFilter(TBaseLowPassFilter&&) = default;
  TBaseLowPassFilter& operator=(TBaseLowPassFilter&&) = default;
  ///@}

  /// The length of the design in force, which is not N after a change of frequency; 0 before Initialize.
  int DesignedCount() const { return static_cast<int>(FCoeff.size()); }

  /// \throws the general error before Initialize.
  void RequireDesign() const {
    if (FCoeff.empty()) RaiseNotInitialized();
  }

  /// Writes a sample into the ring. \return the samples in a row, DesignedCount of them, the oldest one first.
  const double* Push(double value) {
    const auto index = static_cast<std::size_t>(FSignalIndex);
    FSignal[index] = value;
    FSignal[index + FCoeff.size()] = value;
    FSignalIndex = index + 1 == FCoeff.size() ? 0 : FSignalIndex + 1;
    return FSignal.data() + FSignalIndex;
  }

  /// Gives in Results[i] the sum of a filter over Window[i..i+N-1].
  using TFilterSums = std::function<void(const double* Window, std::span<double> Results)>;

  /// The work of Filt for samples in a row, with the sums of many outputs at a time.
  void FiltInBlocks(std::span<const double> Values, std::span<double> Results, const TFilterSums& Sums);

  double FFs = 0.0;               ///< sample frequency
  double FFc = 0.0;               ///< cut-off frequency
  double FTc = 0.0;               ///< sample time
  double FLastOut = 0.0;          ///< last output
  int FN = -1;                    ///< length of the filter, -1 while it is unknown
  double FCutoffTime = 0.0;       ///< time gathered and not consumed yet
  double FCutoffValue = 0.0;      ///< last sample given to RandomTimeFilt
  TAttenuationAndFList FAttList;  ///< attenuation table
  TDoubleArray FCoeff;            ///< coefficients
  TDoubleArray FSignal;           ///< the ring, twice
  int FSignalIndex = 0;           ///< place of the ring that is written next

 private:
  [[noreturn]] static void RaiseNotInitialized();
  void RequireDesignable() const;
  void ScaleCoefficients();
  void InitAttList();
  void RequireResults(std::span<const double> Values, std::span<double> Results) const;
  int CountResampled(double deltaT, std::size_t Places) const;
  void FiltResampled();

  // Work space of FiltInBlocks: the samples that a block's first output meets, then the block's own.
  TDoubleArray FLine;
};

}  // namespace ZORBase
