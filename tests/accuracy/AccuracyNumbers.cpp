#include <ZORBase/kernels/Logarithm.h>

#include <ZORBaseAlg/kernels/LogarithmReferences.h>

#include <cmath>
#include <cstdlib>

#include "Subjects.h"
#include "support/PortableRandom.h"

namespace ZORBase::Test {
namespace {

// Rounding once, with what the extended format that measures it may add.
constexpr double kRoundedOnce = 0.501;

void MeasureLogarithm(const TMeasurement& Measurement) {
  TErrorRow& references = Measurement.Table.Row({"Ln, the library's own logarithm", "ulp"}, kLnErrorBound);
  for (const TReferenceLogarithm& reference : kReferenceLogarithms) {
    const double error = TReference{reference.Ln, reference.Rest}.ErrorOf(Ln(reference.X));
    references.Add(error == 0.0 ? 0.0 : error / LastPlaceOf(reference.Ln), [&] { return FloatToStr(reference.X); });
  }
  TErrorRow& everywhere =
      Measurement.Table.Row({"Ln at random, every magnitude", "ulp", "against the extended logarithm"}, kLnErrorBound);
  TPortableRandom random(11);
  for (int i = 0; i < Measurement.Cases(1'000'000, 20'000); ++i) {
    const double x = std::ldexp(random.Within(0.5, 1.0), i % 2 == 0 ? random.Below(2000) - 1000 : random.Below(3) - 1);
    const long double exact = std::log(static_cast<long double>(x));
    const auto error = static_cast<double>(std::fabs(Ln(x) - exact));
    everywhere.Add(error / LastPlaceOf(static_cast<double>(exact)), [&] { return FloatToStr(x); });
  }
}

void MeasureTexts(const TMeasurement& Measurement) {
  TErrorRow& back =
      Measurement.Table.Row({"AppendFixed with all decimals, StrToFloat1033", "ulp", "text and back"}, 0.0);
  TErrorRow& fixed = Measurement.Table.Row({"AppendFixed", "last decimal"}, kRoundedOnce);
  TErrorRow& general = Measurement.Table.Row({"FloatToStr", "15th digit"}, kRoundedOnce);
  TPortableRandom random(12);
  for (int i = 0; i < Measurement.Cases(1'000'000, 10'000); ++i) {
    // No double of at least 2^-40 has more than 93 decimals.
    const double value = std::ldexp(random.Within(0.5, 1.0), random.Below(100) - 39);
    std::string text;
    AppendFixed(text, value, 93);
    back.Add(std::fabs(StrToFloat1033(text) - value) / LastPlaceOf(value), [&] { return FloatToStr(value); });

    const double moderate = random.Signed(1e4);
    const int decimals = random.Below(13);
    text.clear();
    AppendFixed(text, moderate, decimals);
    const long double error = std::fabs(std::strtold(text.c_str(), nullptr) - moderate);
    fixed.Add(static_cast<double>(error * std::pow(10.0L, decimals)), [&] { return text; });

    text = FloatToStr(moderate);
    const double digit = std::pow(10.0, std::floor(std::log10(std::fabs(moderate))) - 14.0);
    const long double miss = std::fabs(std::strtold(text.c_str(), nullptr) - moderate);
    general.Add(static_cast<double>(miss) / digit, [&] { return text; });
  }
}

}  // namespace

void MeasureNumbers(const TMeasurement& Measurement) {
  Measurement.Table.Subject("Numbers");
  Measurement.Compare("SafeDiv", TMeasure::Ulp, kRoundedOnce,
                      [](TCase C) { return std::vector{SafeDiv(C.In[0], C.In[1], 1e-9)}; });
  Measurement.Compare("DegToRad", TMeasure::Ulp, 1.5, [](TCase C) { return std::vector{DegToRad(C.In[0])}; });
  Measurement.Compare("RadToDeg", TMeasure::Ulp, 1.5, [](TCase C) { return std::vector{RadToDeg(C.In[0])}; });
  Measurement.Compare("ArcCos", TMeasure::Ulp, 1.0, [](TCase C) { return std::vector{ArcCos(C.In[0])}; });
  Measurement.Compare("StrToFloat1033", TMeasure::Ulp, kRoundedOnce,
                      [](TCase C) { return std::vector{StrToFloat1033(C.Text)}; });
  MeasureTexts(Measurement);
  MeasureLogarithm(Measurement);
}

}  // namespace ZORBase::Test
