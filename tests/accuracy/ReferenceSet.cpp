#include "ReferenceSet.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "support/Numbers.h"

namespace ZORBase::Test {
namespace {

constexpr const char* kNames[] = {"numbers",  "points",  "rotations", "orientations", "curves",
                                  "segments", "solvers", "fits",      "interpolators"};
// An input of at most this many numbers is shown itself.
constexpr std::size_t kShortInput = 3;

// strtod also reads the hexadecimal form.
double Number(const std::string& Text) { return std::strtod(Text.c_str(), nullptr); }

TReference ReferenceOf(const std::string& Text) {
  const std::size_t colon = Text.find(':');
  if (colon == std::string::npos) throw std::runtime_error("no reference number: " + Text);
  return {Number(Text.substr(0, colon)), Number(Text.substr(colon + 1))};
}

TReferenceCase CaseOf(const std::vector<std::string>& Fields) {
  TReferenceCase result;
  result.Text = Fields[1];
  for (const std::string& number : Split(Fields[1], ' ')) result.In.push_back(Number(number));
  for (const std::string& number : Split(Fields[2], ' ')) result.Out.push_back(ReferenceOf(number));
  result.Scale = Number(Fields[3]);
  return result;
}

double UnitOf(const TReference& Reference, double Scale, TMeasure Measure) {
  switch (Measure) {
    case TMeasure::Ulp: return LastPlaceOf(Reference.Nearest);
    case TMeasure::Eps: return kEpsilon * Scale;
    case TMeasure::Relative: return Scale;
    default: return 1.0;
  }
}

}  // namespace

std::vector<std::string> Split(const std::string& Text, char Separator) {
  std::vector<std::string> items;
  std::istringstream stream(Text);
  for (std::string item; std::getline(stream, item, Separator);) items.push_back(item);
  return items;
}

std::string Listed(const std::vector<double>& Numbers) {
  std::string list;
  for (const double number : Numbers) {
    char text[32];
    std::snprintf(text, sizeof text, "%.17g", number);
    list += (list.empty() ? "" : ", ") + std::string(text);
  }
  return list;
}

double LastPlaceOf(double Value) {
  const double size = std::fabs(Value);
  return std::nextafter(size, kInfinity) - size;
}

double LastPlacesOff(double Value, long double Exact) {
  return static_cast<double>(std::fabs(Value - Exact)) / LastPlaceOf(static_cast<double>(Exact));
}

double TReference::ErrorOf(double Value) const { return std::fabs((Value - Nearest) - Rest); }

TReferenceSets::TReferenceSets(const std::string& Folder) {
  for (const char* const name : kNames) Read(Folder, std::string(name) + ".txt");
}

void TReferenceSets::Read(const std::string& Folder, const std::string& Name) {
  std::ifstream file(Folder + "/" + Name);
  if (!file) throw std::runtime_error("no reference set " + Folder + "/" + Name);
  std::size_t index = 0;
  for (std::string line; std::getline(file, line);) {
    if (line.starts_with("#")) continue;
    const std::vector<std::string> fields = Split(line, ';');
    if (fields.size() != 4) throw std::runtime_error("no case in " + Name + ": " + line);
    TReferenceCase item = CaseOf(fields);
    const bool isShort = item.In.size() <= kShortInput;
    ++index;
    item.Name = isShort ? Listed(item.In) : Name + ", case " + std::to_string(index);
    FCases[fields[0]].push_back(std::move(item));
  }
}

const std::vector<TReferenceCase>& TReferenceSets::Of(const std::string& Operation) const {
  const auto found = FCases.find(Operation);
  if (found == FCases.end()) throw std::runtime_error("no reference case of " + Operation);
  return found->second;
}

double ErrorOf(const std::vector<double>& Results, const TReferenceCase& Case, TMeasure Measure) {
  if (Results.size() != Case.Out.size()) throw std::runtime_error("another number of results: " + Case.Name);
  double largest = 0.0;
  for (std::size_t i = 0; i < Results.size(); ++i) {
    const double error = Case.Out[i].ErrorOf(Results[i]);
    if (error == 0.0) continue;
    largest = Worse(largest, error / UnitOf(Case.Out[i], Case.Scale, Measure));
  }
  return largest;
}

std::vector<double> WithSignOf(const TReferenceCase& Case, std::vector<double> Results) {
  double cosine = 0.0;
  for (std::size_t i = 0; i < Results.size(); ++i) cosine += Results[i] * Case.Out[i].Nearest;
  if (cosine < 0.0) {
    for (double& result : Results) result = -result;
  }
  return Results;
}

}  // namespace ZORBase::Test
