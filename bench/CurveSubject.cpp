#include "CurveSubject.h"

#include <cmath>
#include <map>
#include <random>
#include <stdexcept>

namespace ZORBase::Bench {

TPoint6DList WavyPath(int Count) {
  TPoint6DList poses;
  for (int i = 0; i < Count; ++i) {
    poses.Add(i + 0.2 * std::sin(1.7 * i), 5 * std::sin(0.2 * i), 3 * std::cos(0.13 * i), 0.1 * std::sin(0.3 * i),
              0.1 * std::cos(0.21 * i), 0.99);
  }
  return poses;
}

const TCurveSubject& CurveSubject(int Spans) {
  static std::map<int, TCurveSubject> subjects;
  const auto [place, isNew] = subjects.try_emplace(Spans);
  TCurveSubject& subject = place->second;
  if (!isNew) return subject;
  subject.Poses = WavyPath(Spans + 1);
  subject.Curve.CreateCross(&subject.Poses, mChord);
  subject.Plain = Test::PlainFit(subject.Poses, mChord);
  for (const double u : RandomParameters()) {
    if (subject.Curve.EvalPoint(u).ToArray() == subject.Plain.EvalPoint(u)) continue;
    throw std::logic_error("the plain curve is another one");
  }
  return subject;
}

const std::vector<double>& RandomParameters() {
  static const std::vector<double> parameters = [] {
    std::mt19937_64 random(1);
    std::vector<double> values(kParameters);
    for (double& value : values) value = static_cast<double>(random() >> 11U) * 0x1p-53;
    return values;
  }();
  return parameters;
}

const std::vector<double>& RisingParameters() {
  static const std::vector<double> parameters = [] {
    std::vector<double> values(kParameters);
    for (std::size_t i = 0; i < kParameters; ++i) values[i] = static_cast<double>(i) / static_cast<double>(kParameters);
    return values;
  }();
  return parameters;
}

std::string CurveBenchmarkName(const std::string& Kernel, int Size, const std::string& Who) {
  return Kernel + std::to_string(Size) + "/" + Who;
}

}  // namespace ZORBase::Bench
