// Cadtypes: the geometry primitives that everything else builds on.
//   TPoint2D, TPoint3D             points and vectors in the plane and in space
//   TLine3D, TBezierSegment2D      a line, a plane cubic Bezier segment
//   TMatrix2D, TMatrix3D           a plane transform, a rotation
//   TGeInterval, TNumeric          Gauss-Legendre quadrature over an interval
//   fEqual, ArcCos                 tolerant equality, the guarded arc cosine
//   DegToRad, RadToDeg             angles in degrees and in radians
//   SMatrixSigular                 the text of the error for a matrix without an inverse
#pragma once

#include <ZORBase/common/Cadtypes/Angles.h>
#include <ZORBase/common/Cadtypes/ArcCos.h>
#include <ZORBase/common/Cadtypes/SMatrixSigular.h>
#include <ZORBase/common/Cadtypes/TBezierSegment2D.h>
#include <ZORBase/common/Cadtypes/TLine3D.h>
#include <ZORBase/common/Cadtypes/TMatrix2D.h>
#include <ZORBase/common/Cadtypes/TMatrix3D.h>
#include <ZORBase/common/Cadtypes/TNumeric.h>
#include <ZORBase/common/Cadtypes/TPoint2D.h>
#include <ZORBase/common/Cadtypes/TPoint3D.h>
#include <ZORBase/common/Cadtypes/fEqual.h>
