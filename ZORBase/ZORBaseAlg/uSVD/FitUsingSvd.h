// FitUsingSvd: total least squares. The sum of the squared distances from the points, taken at right angles, is as small as
// it can be. The normal is a unit vector, whose sign is whatever the decomposition yields.
#pragma once

#include <ZORBase/common/BaseServices/TList.h>
#include <ZORBase/common/Export.h>

namespace ZORBase {

/// Fits the plane A x + B y + C z + D = 0, with the unit normal (A, B, C), to points in space.
/// \param AList   x, y, z of point after point, in one unit of length, which is that of D too
/// \param Ratio   how much stronger the second direction is than the normal one: SafeDiv(s2, s1, 1e-7) of the smallest
///                singular values s1 <= s2. Large where the points lie flat, near 1 where no plane stands out.
/// \return true. Fewer than 3 points give a normal of zeros and D = 0; of points on a line, any plane through it.
/// \throws the general error "FitPlaneUsingSvd Err: InputList AList Is Uninitialized" for a null list, and
///         "FitPlaneUsingSvd Err: Input Invalid MatA.Count = %d" for a count that is 0 or no multiple of 3, before anything
///         is changed.
/// Cost: linear in the points; work space of 3 numbers per point.
ZORBASE_API bool FitPlaneUsingSvd(const TDoubleList* AList, double& A, double& B, double& C, double& D, double& Ratio);
ZORBASE_API bool FitPlaneUsingSvd(const TDoubleList* AList, double& A, double& B, double& C, double& D);

/// The same fit; XList is cleared and receives A, B, C, D. It may be the same list as AList.
/// \throws the general error "FitPlaneUsingSvd Err: InputList Xlist Is Uninitialized" for a null XList; the errors above
///         come after XList is cleared.
ZORBASE_API bool FitPlaneUsingSvd(const TDoubleList* AList, TDoubleList* XList);

/// Fits the line A x + B y + C = 0, with the unit normal (A, B), to points of the plane.
/// \param AList  x, y of point after point, in one unit of length, which is that of C too
/// \return true. A single point gives a normal of zeros and C = 0.
/// \throws the general error "FitLineUsingSvd Err: InputList AList Is Uninitialized" for a null list, and
///         "FitPlaneUsingSvd Err: Input Invalid MatA.Count = %d", which does say Plane, for a count that is 0 or odd, before
///         anything is changed.
/// Cost: linear in the points; work space of 2 numbers per point.
ZORBASE_API bool FitLineUsingSvd(const TDoubleList* AList, double& A, double& B, double& C);

/// The same fit; XList is cleared and receives A, B, C. It may be the same list as AList.
/// \throws the general error "FitLineUsingSvd Err: InputList Xlist Is Uninitialized" for a null XList; the errors above come
///         after XList is cleared.
ZORBASE_API bool FitLineUsingSvd(const TDoubleList* AList, TDoubleList* XList);

}  // namespace ZORBase
