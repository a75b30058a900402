#include "NistProblems.h"
#include "support/Numbers.h"

#include <ZORBase/common/BaseServices.h>

#include <map>

namespace ZORBase::Test {
namespace {

std::vector<double> NumbersOf(std::string_view Line) {
  std::vector<double> numbers;
  for (TDelimitedText items(Line); items.Next();) numbers.push_back(StrToFloat1033(items.Item()));
  return numbers;
}

template <class TModel>
TNistModel Model(TModel Formula) {
  return {[Formula](std::span<const double> b, std::span<const double> x) { return Formula(b, x); },
          [Formula](std::span<const TDual> b, std::span<const double> x) { return Formula(b, x); }};
}

// The formulas use the functions of the standard library or of TDual, as their parameters are.
using std::atan;
using std::cos;
using std::exp;
using std::pow;
using std::sin;

template <class T>
T Square(const T& Value) {
  return Value * Value;
}

const auto Saturation = [](auto b, auto x) { return b[0] * (1.0 - exp(-b[1] * x[0])); };
const auto Chwirut = [](auto b, auto x) { return exp(-b[0] * x[0]) / (b[1] + b[2] * x[0]); };
const auto TwoBells = [](auto b, auto x) {
  return b[0] * exp(-b[1] * x[0]) + b[2] * exp(-Square((x[0] - b[3]) / b[4])) +
         b[5] * exp(-Square((x[0] - b[6]) / b[7]));
};
const auto ThreeDecays = [](auto b, auto x) {
  return b[0] * exp(-b[1] * x[0]) + b[2] * exp(-b[3] * x[0]) + b[4] * exp(-b[5] * x[0]);
};
const auto CubicByCubic = [](auto b, auto x) {
  const double t = x[0];
  return (b[0] + t * (b[1] + t * (b[2] + t * b[3]))) / (1.0 + t * (b[4] + t * (b[5] + t * b[6])));
};
const auto ThreeCycles = [](auto b, auto x) {
  const double w = 2.0 * kPi * x[0];
  return b[0] + b[1] * cos(w / 12.0) + b[2] * sin(w / 12.0) + b[4] * cos(w / b[3]) + b[5] * sin(w / b[3]) +
         b[7] * cos(w / b[6]) + b[8] * sin(w / b[6]);
};

std::map<std::string, TNistModel> AllModels() {
  std::map<std::string, TNistModel> models;
  models["Bennett5"] = Model([](auto b, auto x) { return b[0] * pow(b[1] + x[0], -1.0 / b[2]); });
  models["BoxBOD"] = models["Misra1a"] = Model(Saturation);
  models["Chwirut1"] = models["Chwirut2"] = Model(Chwirut);
  models["DanWood"] = Model([](auto b, auto x) { return b[0] * pow(x[0], b[1]); });
  models["ENSO"] = Model(ThreeCycles);
  models["Eckerle4"] = Model([](auto b, auto x) { return b[0] / b[1] * exp(-0.5 * Square((x[0] - b[2]) / b[1])); });
  models["Gauss1"] = models["Gauss2"] = models["Gauss3"] = Model(TwoBells);
  models["Hahn1"] = models["Thurber"] = Model(CubicByCubic);
  models["Kirby2"] =
      Model([](auto b, auto x) { return (b[0] + x[0] * (b[1] + x[0] * b[2])) / (1.0 + x[0] * (b[3] + x[0] * b[4])); });
  models["Lanczos1"] = models["Lanczos2"] = models["Lanczos3"] = Model(ThreeDecays);
  models["MGH09"] = Model([](auto b, auto x) { return b[0] * (x[0] * (x[0] + b[1])) / (x[0] * (x[0] + b[2]) + b[3]); });
  models["MGH10"] = Model([](auto b, auto x) { return b[0] * exp(b[1] / (x[0] + b[2])); });
  models["MGH17"] = Model([](auto b, auto x) { return b[0] + b[1] * exp(-x[0] * b[3]) + b[2] * exp(-x[0] * b[4]); });
  models["Misra1b"] = Model([](auto b, auto x) { return b[0] * (1.0 - 1.0 / Square(1.0 + b[1] * x[0] / 2.0)); });
  models["Misra1c"] = Model([](auto b, auto x) { return b[0] * (1.0 - pow(1.0 + 2.0 * b[1] * x[0], -0.5)); });
  models["Misra1d"] = Model([](auto b, auto x) { return b[0] * b[1] * x[0] / (1.0 + b[1] * x[0]); });
  models["Nelson"] = Model([](auto b, auto x) { return b[0] - b[1] * x[0] * exp(-b[2] * x[1]); });
  models["Nelson"].IsLogResponse = true;
  models["Rat42"] = Model([](auto b, auto x) { return b[0] / (1.0 + exp(b[1] - b[2] * x[0])); });
  models["Rat43"] = Model([](auto b, auto x) { return b[0] / pow(1.0 + exp(b[1] - b[2] * x[0]), 1.0 / b[3]); });
  models["Roszman1"] = Model([](auto b, auto x) { return b[0] - b[1] * x[0] - atan(b[2] / (x[0] - b[3])) / kPi; });
  return models;
}

}  // namespace

TNistModel NistModel(const std::string& Name) {
  static const auto models = AllModels();
  return models.at(Name);
}

TNistData ReadNistData(const std::string& Name) {
  TTextFileReader file(std::string(ZORBASE_TEST_DATA) + "/nist/" + Name + ".txt");
  TNistData data;
  file.Next();
  const std::vector<double> head = NumbersOf(file.Line());
  data.ResidualSum = head.at(2);
  for (int i = 0; i < static_cast<int>(head[0]) && file.Next(); ++i) {
    const std::vector<double> param = NumbersOf(file.Line());
    data.Start1.push_back(param.at(0));
    data.Start2.push_back(param.at(1));
    data.Certified.push_back(param.at(2));
  }
  while (file.Next()) data.Rows.push_back(NumbersOf(file.Line()));
  if (data.Rows.size() != static_cast<std::size_t>(head[1])) RaiseGeneralError(Name + ": rows are missing");
  return data;
}

}  // namespace ZORBase::Test
