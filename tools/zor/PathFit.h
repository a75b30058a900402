#pragma once

#include <ZORBase/ZORGeometry/NurbsGeometry/TNurbs6D.h>
#include <zor/PoseInput.h>

namespace ZORBase::Tool {

/// The method of a subcommand that is not told one: it suits unevenly spaced poses.
inline constexpr TParalizeMethod kUsualMethod = mChord;

/// Fits a path through the poses of a file.
/// \throws the general error for poses that allow no fit; it names their lines and what to do.
TNurbs6D FitPath(const TPoseFile& File, TParalizeMethod Method);

/// \return the warning that the file looks like metres; an empty text when it does not.
std::string MetresWarning(const TPoint6DList& Poses);

}  // namespace ZORBase::Tool
