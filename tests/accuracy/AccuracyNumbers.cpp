#include <ZORBase/kernels/Logarithm.h>

#include <ZORBaseAlg/kernels/LogarithmReferences.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numbers>

#include "Subjects.h"
#include "support/PortableRandom.h"

namespace ZORBase::Test {
namespace {

void MeasureLogarithm(const TMeasurement& Measurement) {
  TErrorRow& references = Measurement.Table.Row({"Ln, the library's own logarithm", "ulp"}, kLnErrorBound);
  for (const TReferenceLogarithm& reference : kReferenceLogarithms) {
    const double error = TReference{reference.Ln, reference.Rest}.ErrorOf(Ln(reference.X));
    references.Add(error == 0.0 ? 0.0 : error / LastPlaceOf(reference.Ln), [&] { return Listed({reference.X}); });
  }
  TErrorRow& everywhere =
      Measurement.Table.Row({"Ln at random, every magnitude", "ulp", "against the extended logarithm"}, kLnErrorBound);
  TPortableRandom random(11);
  for (int i = 0; i < Measurement.Cases(1'000'000, 20'000); ++i) {
    const double x = std::ldexp(random.Within(0.5, 1.0), i % 2 == 0 ? random.Below(2000) - 1000 : random.Below(3) - 1);
    const long double exact = std::log(static_cast<long double>(x));
    everywhere.Add(LastPlacesOff(Ln(x), exact), [&] { return Listed({x}); });
  }
}

// The worst number of a text, in units of the last decimal.
struct TWorstNumber {
  std::size_t Place = 0;
  double Error = 0.0;
};

TWorstNumber WorstDecimal(const std::string& Text, const std::vector<long double>& Exact, int Decimals) {
  const std::vector<std::string> items = Split(Text, ',');
  TWorstNumber worst;
  for (std::size_t i = 0; i < Exact.size(); ++i) {
    const long double error = std::fabs(std::strtold(items.at(i).c_str(), nullptr) - Exact[i]);
    const double decimals = Worse(0.0, static_cast<double>(error * std::pow(10.0L, Decimals)));
    if (decimals > worst.Error) worst = {i, decimals};
  }
  return worst;
}

std::string WithDecimals(double Number, int Decimals) {
  return Listed({Number}) + " with " + std::to_string(Decimals) + " decimals";
}

// Numbers of 15 digits with anything but numbers between them, in units of the last digit.
void AddDigits(TErrorRow& Row, const std::string& Text, const std::vector<double>& Numbers) {
  constexpr const char* between = "(), ";
  std::size_t end = 0;
  for (const double number : Numbers) {
    const std::size_t begin = std::min(Text.find_first_not_of(between, end), Text.size());
    end = std::min(Text.find_first_of(between, begin), Text.size());
    const long double read = std::strtold(Text.substr(begin, end - begin).c_str(), nullptr);
    const double digit = std::pow(10.0, std::floor(std::log10(std::fabs(number))) - 14.0);
    Row.Add(static_cast<double>(std::fabs(read - number)) / digit, [&] { return Listed({number}); });
  }
}

void MeasureTexts(const TMeasurement& Measurement) {
  TErrorRow& back =
      Measurement.Table.Row({"AppendFixed with all decimals, StrToFloat1033", "ulp", "text and back"}, 0.0);
  TErrorRow& fixed = Measurement.Table.Row({"AppendFixed, Format1033 and Format", "last decimal"}, kRoundedOnce);
  TErrorRow& general =
      Measurement.Table.Row({"FloatToStr, TPointXD::ToString and TMatrix4D::ToString", "15th digit"}, kRoundedOnce);
  TPortableRandom random(12);
  for (int i = 0; i < Measurement.Cases(1'000'000, 10'000); ++i) {
    // No double of at least 2^-40 has more than 93 decimals.
    const double value = std::ldexp(random.Within(0.5, 1.0), random.Below(100) - 39);
    std::string text;
    AppendFixed(text, value, 93);
    back.Add(std::fabs(StrToFloat1033(text) - value) / LastPlaceOf(value), [&] { return Listed({value}); });

    const double moderate = random.Signed(1e4);
    const int decimals = random.Below(13);
    text.clear();
    AppendFixed(text, moderate, decimals);
    const std::string pattern = "%." + std::to_string(decimals) + "f";
    for (const std::string& form : {text, Format1033(pattern, moderate), Format(pattern, moderate)}) {
      fixed.Add(WorstDecimal(form, {moderate}, decimals).Error, [&] { return WithDecimals(moderate, decimals); });
    }

    AddDigits(general, FloatToStr(moderate), {moderate});
    if (i % 10 != 0) continue;
    const std::vector<double> entries = random.Numbers(12, 1e4);
    AddDigits(general, TPointXD::FromSpan(entries).ToString(), entries);
    AddDigits(general, MatrixIn(entries, 0).ToString(), entries);
  }
}

// Six numbers with up to 25 decimals each.
std::string LongRow(TPortableRandom& Random) {
  std::string text;
  for (int c = 0; c < 6; ++c) {
    const double number = std::ldexp(Random.Signed(1.0), Random.Below(50) - 20);
    AppendFixed(text, number, Random.Below(26));
    if (c < 5) text += ',';
  }
  return text;
}

// Rows of numbers have a writer and a reader of their own, which work on a word of digits at a time.
void MeasureRows(const TMeasurement& Measurement) {
  const std::string types = "of TPoint6D and TEulerPoint";
  TErrorRow& written = Measurement.Table.Row({"ToString1033 and ToString " + types, "last decimal"}, kRoundedOnce);
  TErrorRow& turned = Measurement.Table.Row({"TEulerAng, ToString and ToStringDeg", "last decimal"}, kRoundedOnce);
  TErrorRow& read = Measurement.Table.Row({"Parse1033 and Parse " + types, "ulp"}, kRoundedOnce);
  TPortableRandom random(14);
  for (int k = 0; k < Measurement.Cases(100'000, 2'000); ++k) {
    const std::vector<double> numbers = random.Numbers(6, 1e4);
    const TPoint6D pose = PoseIn(numbers, 0);
    const auto euler = TEulerPoint::FromArray(pose.ToArray());
    const int decimals = random.Below(13);
    for (const std::string& text : {pose.ToString1033(decimals), pose.ToString(decimals), euler.ToString1033(decimals),
                                    euler.ToString(decimals)}) {
      const TWorstNumber worst = WorstDecimal(text, {numbers.begin(), numbers.end()}, decimals);
      written.Add(worst.Error, [&] { return WithDecimals(numbers[worst.Place], decimals); });
    }

    const std::vector<double> angles = random.Numbers(3, 7.0);
    const int fewDecimals = random.Below(10);
    std::vector<long double> inDegrees;
    for (const double angle : angles) inDegrees.push_back(angle * (180.0L / std::numbers::pi_v<long double>));
    const auto turn = TEulerAng::Create(angles[0], angles[1], angles[2]);
    const auto add = [&](const std::string& Text, const std::vector<long double>& Exact) {
      const TWorstNumber worst = WorstDecimal(Text, Exact, fewDecimals);
      turned.Add(worst.Error, [&] { return WithDecimals(angles[worst.Place], fewDecimals); });
    };
    add(turn.ToString(fewDecimals), {angles.begin(), angles.end()});
    add(turn.ToStringDeg(fewDecimals), inDegrees);

    const std::string row = LongRow(random);
    const std::vector<std::string> items = Split(row, ',');
    for (const auto& parsed : {TPoint6D::Parse1033(row).ToArray(), TPoint6D::Parse(row).ToArray(),
                               TEulerPoint::Parse1033(row).ToArray(), TEulerPoint::Parse(row).ToArray()}) {
      for (std::size_t i = 0; i < parsed.size(); ++i) {
        const long double number = std::strtold(items[i].c_str(), nullptr);
        read.Add(number == parsed[i] ? 0.0 : LastPlacesOff(parsed[i], number), [&] { return items[i]; });
      }
    }
  }
}

}  // namespace

void MeasureNumbers(const TMeasurement& Measurement) {
  Measurement.Table.Subject("Numbers");
  Measurement.Compare("SafeDiv", TMeasure::Ulp, kRoundedOnce,
                      [](TCase C) { return std::vector{SafeDiv(C.In[0], C.In[1], 1e-9)}; });
  Measurement.CompareAs("SafeDivXD", "SafeDiv", TMeasure::Ulp, kRoundedOnce,
                        [](TCase C) { return std::vector{SafeDivXD(C.In[0], C.In[1], 1e-9)}; });
  Measurement.Compare("DegToRad", TMeasure::Ulp, 1.5, [](TCase C) { return std::vector{DegToRad(C.In[0])}; });
  Measurement.CompareAs("TEulerAng, CreatebyDegree", "DegToRad", TMeasure::Ulp, 1.5,
                        [](TCase C) { return std::vector{TEulerAng::CreatebyDegree(0.0, C.In[0], 0.0).Ry}; });
  Measurement.Compare("RadToDeg", TMeasure::Ulp, 1.5, [](TCase C) { return std::vector{RadToDeg(C.In[0])}; });
  Measurement.Compare("ArcCos", TMeasure::Ulp, 1.0, [](TCase C) { return std::vector{ArcCos(C.In[0])}; });
  Measurement.CompareAll("StrToFloat1033, StrToFloat and TryStrToFloat", "StrToFloat1033", TMeasure::Ulp, kRoundedOnce,
                         {[](TCase C) { return std::vector{StrToFloat1033(C.Text)}; },
                          [](TCase C) { return std::vector{StrToFloat(C.Text)}; },
                          [](TCase C) {
                            double value = kNaN;
                            TryStrToFloat(C.Text, nf1033, value);
                            return std::vector{value};
                          }});
  MeasureTexts(Measurement);
  MeasureRows(Measurement);
  MeasureLogarithm(Measurement);
}

}  // namespace ZORBase::Test
