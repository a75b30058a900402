#include <ZORBase/kernels/Logarithm.h>

#include <cmath>

#include "Corpus.h"
#include "support/PortableRandom.h"

namespace ZORBase::Test {
namespace {

constexpr int kNumberCases = 2000;

// All magnitudes, as likely as each other.
double AnySize(TPortableRandom& Random, int Exponents) {
  const double mantissa = Random.Signed(1.0);
  return std::ldexp(mantissa, Random.Below(2 * Exponents) - Exponents);
}

void AddDivisions(TCorpus& Corpus) {
  Corpus.Exact("SafeDiv, SafeDivXD", [](TResults& Result) {
    TPortableRandom random(101);
    for (int i = 0; i < kNumberCases; ++i) {
      const double numerator = AnySize(random, 60);
      const double denominator = AnySize(random, 60);
      Result(SafeDiv(numerator, denominator, 1e-9), SafeDivXD(numerator, denominator, 1e-12));
    }
  });
  Corpus.Exact("DegToRad, RadToDeg", [](TResults& Result) {
    TPortableRandom random(102);
    for (int i = 0; i < kNumberCases; ++i) {
      const double angle = random.Signed(720.0);
      Result(DegToRad(angle), RadToDeg(angle));
    }
  });
  Corpus.Exact("the library's own logarithm", [](TResults& Result) {
    TPortableRandom random(103);
    for (int i = 0; i < kNumberCases; ++i) {
      const double anywhere = std::fabs(AnySize(random, 1000));
      Result(Ln(anywhere), Ln(random.Within(0.5, 2.0)));
    }
  });
  Corpus.Inherited("ArcCos", [](TResults& Result) {
    TPortableRandom random(104);
    for (int i = 0; i < kNumberCases; ++i) Result(ArcCos(random.Signed(1.0)));
  });
}

void AddTexts(TCorpus& Corpus) {
  Corpus.Exact("AppendFixed, Format1033, FloatToStr", [](TResults& Result) {
    TPortableRandom random(105);
    for (int i = 0; i < kNumberCases; ++i) {
      const double value = AnySize(random, 90);
      std::string text;
      AppendFixed(text, value, i % 18);
      Result(text, FloatToStr(value), Format1033("%.6f", value));
    }
  });
  Corpus.Exact("StrToFloat1033", [](TResults& Result) {
    TPortableRandom random(106);
    for (int i = 0; i < kNumberCases; ++i) {
      std::string digits = i % 2 == 0 ? "-" : "";
      const int count = 1 + random.Below(25);
      for (int k = 0; k < count; ++k) digits += static_cast<char>('0' + random.Below(10));
      Result(StrToFloat1033(digits + "e" + std::to_string(random.Below(500) - 270)),
             StrToFloat1033("0." + digits.substr(i % 2 == 0)));
    }
  });
}

}  // namespace

void AddNumbers(TCorpus& Corpus) {
  AddDivisions(Corpus);
  AddTexts(Corpus);
}

}  // namespace ZORBase::Test
