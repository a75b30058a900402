#pragma once

#include <string_view>

namespace ZORBase {

/// The text of the error that is raised when a matrix without an inverse is to be inverted.
inline constexpr std::string_view SMatrixSigular = "The matrix is singular and has no inverse";

}  // namespace ZORBase
