// NumberRow: several numbers on one line, as the text forms of points and the lines of their files have them.
#pragma once

#include <ZORBase/common/BaseServices/NumberText.h>
#include <ZORBase/common/Export.h>

#include <span>
#include <string>
#include <string_view>

namespace ZORBase {

/// Points are written with at most this many decimals; more are taken for as many.
inline constexpr int kMaxRowDecimals = 12;

/// Appends the values with Decimals digits each, parted by "," without blanks.
ZORBASE_API void AppendNumberRow(std::string& Text, std::span<const double> Values, int Decimals, TNumberForm Form);

/// Reads exactly as many items as Values has places (TDelimitedText) and converts them. What Values holds after a failure is
/// not settled: read into a scratch.
/// \throws the general error "TypeName Parse from string Failed(Text). Reason", where Reason is "Error Item Number: N" for
///         N items that are not the right number, or that of the first item that is no number. A very long Text is
///         given with its beginning only.
ZORBASE_API void ParseNumberRow(std::string_view Text, std::span<double> Values, TNumberForm Form,
                                std::string_view TypeName);

}  // namespace ZORBase
