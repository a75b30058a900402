// ReferenceSet: the results that References.py has computed with 50 digits, and errors against them.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "ErrorTable.h"
#include "support/FunctionRef.h"

namespace ZORBase::Test {

/// A number as the nearest double and what is missing to it.
struct TReference {
  double Nearest = 0.0;
  double Rest = 0.0;

  /// \return the size of what Value is off; exact where Value is within a factor of 2, and very nearly so elsewhere.
  double ErrorOf(double Value) const;
};

std::vector<std::string> Split(const std::string& Text, char Separator);

/// Few numbers as a text that gives them back.
std::string Listed(const std::vector<double>& Numbers);

/// The distance from the size of Value to the next larger double.
double LastPlaceOf(double Value);

/// How far Value is off, in units of the last place of the exact result.
double LastPlacesOff(double Value, long double Exact);

/// A line of a reference set.
struct TReferenceCase {
  std::string Name;  ///< "1.5, 2" for a short input, otherwise "points.txt, case 17"
  std::string Text;  ///< the input as it stands
  std::vector<double> In;
  std::vector<TReference> Out;
  double Scale = 0.0;
};

/// What errors are counted in.
enum class TMeasure {
  Ulp,       ///< units of the last place of each reference number
  Eps,       ///< 2^-52 times the scale of the case
  Relative,  ///< parts of the scale of the case
  Absolute   ///< as they are
};

/// All reference sets of a folder.
class TReferenceSets {
 public:
  /// \throws std::runtime_error for a folder without sets, or a line that is no case.
  explicit TReferenceSets(const std::string& Folder);

  /// \throws std::runtime_error for an operation that has none.
  const std::vector<TReferenceCase>& Of(const std::string& Operation) const;

 private:
  void Read(const std::string& Folder, const std::string& Name);

  std::map<std::string, std::vector<TReferenceCase>> FCases;
};

/// Gives the results of an operation for the input of a case, as many as it has reference numbers.
using TOperation = TFunctionRef<std::vector<double>(const TReferenceCase&)>;

/// \return the largest error of the results.
double ErrorOf(const std::vector<double>& Results, const TReferenceCase& Case, TMeasure Measure);

/// The sign of -1 or 1 that brings Results nearer to those of the case: for what is known up to its sign.
std::vector<double> WithSignOf(const TReferenceCase& Case, std::vector<double> Results);

}  // namespace ZORBase::Test
