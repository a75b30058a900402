#pragma once

#include <zor/PointInput.h>

namespace ZORBase::Tool {

/// The method of a subcommand that is not told one: it suits unevenly spaced points.
inline constexpr TParalizeMethod kUsualMethod = mChord;

/// \throws the general error that a path needs more points, for fewer than Fewest.
void RequireEnough(const std::string& Name, int Count, int Fewest, std::string_view Noun);

/// Fits a path through the points of a file.
/// \throws the general error for points that allow no fit; it names their lines and what to do.
template <class TPoint>
typename TPointKind<TPoint>::TCurve FitPath(const TPointFile<TPoint>& File, TParalizeMethod Method);

/// \return the warning that the file looks like metres; an empty text when it does not.
template <class TPoint>
std::string MetresWarning(const TPointFile<TPoint>& File);

}  // namespace ZORBase::Tool
