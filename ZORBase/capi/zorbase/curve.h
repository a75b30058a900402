/* curve.h: the smooth curve through measured poses. */
#pragma once

#include <ZORBase/capi/zorbase/poses.h>

/* NOLINTBEGIN(modernize-*) */
ZORBASE_BEGIN_C

/** The cubic B-spline curve through poses, on the parameters 0 to 1, and its arc-length table. Position and direction
 *  are blended alike, and all six components count in every distance and length. A call that needs a curve ends with
 *  ZORBASE_ERROR before there is one. */
typedef struct zorbase_curve zorbase_curve;

/** How a fit spreads the parameters of its poses. A method that is none of these counts as ZORBASE_CENTRIPETAL. */
enum {
  ZORBASE_EQUALLY = 0,    /**< the same step from pose to pose */
  ZORBASE_CHORD = 1,      /**< in proportion to the distances; suits unevenly spaced poses */
  ZORBASE_CENTRIPETAL = 2 /**< in proportion to their square roots; often stays closest to the poses */
};

/* ---------------------------------------------------------------------------------------------- making */

/** Makes a curve without control points. */
ZORBASE_API zorbase_status zorbase_curve_create(zorbase_curve** curve) ZORBASE_NOEXCEPT;
ZORBASE_API void zorbase_curve_destroy(zorbase_curve* curve) ZORBASE_NOEXCEPT;

/** Fits the curve through poses and measures it. ZORBASE_NOT_POSSIBLE with fewer than four; ZORBASE_ERROR where
 *  neighbours are closer than 1e-6 or than a millionth of the path, for a pose that is not finite or too far away, and
 *  for a curve too long to measure (64 million rows, one per 0.03 of length). The curve is then as it was. Cost: in
 *  proportion to the number of poses and to the length. */
ZORBASE_API zorbase_status zorbase_curve_fit(zorbase_curve* curve, const zorbase_poses* poses,
                                             int32_t method) ZORBASE_NOEXCEPT;
ZORBASE_API zorbase_status zorbase_curve_fit_array(zorbase_curve* curve, const zorbase_pose* poses, size_t count,
                                                   int32_t method) ZORBASE_NOEXCEPT;

/** Takes over control points and the knots, four more, that belong to them. Lengths are those of the curve before until
 *  zorbase_curve_measure. ZORBASE_NOT_POSSIBLE unless there are four more knots than points. */
ZORBASE_API zorbase_status zorbase_curve_set_control_points(zorbase_curve* curve, const double* knots,
                                                            size_t knot_count, const zorbase_pose* points,
                                                            size_t point_count) ZORBASE_NOEXCEPT;

/** Builds the arc-length table of the curve as it is; a fit does so by itself. ZORBASE_ERROR for knots that fall or a
 *  curve too long to measure; the table is then as it was. */
ZORBASE_API zorbase_status zorbase_curve_measure(zorbase_curve* curve) ZORBASE_NOEXCEPT;

/** Reverses the travel. With an even count of control points the middle pair keeps its order: A B C D gives D B C A. */
ZORBASE_API zorbase_status zorbase_curve_reverse(zorbase_curve* curve) ZORBASE_NOEXCEPT;

/** Give the control points and the knots, or only their counts; see "Room" in zorbase.h. */
ZORBASE_API zorbase_status zorbase_curve_control_points(const zorbase_curve* curve, zorbase_pose* points,
                                                        size_t capacity, size_t* count) ZORBASE_NOEXCEPT;
ZORBASE_API zorbase_status zorbase_curve_knots(const zorbase_curve* curve, double* knots, size_t capacity,
                                               size_t* count) ZORBASE_NOEXCEPT;

/* ---------------------------------------------------------------------------------------------- evaluating */

/** Gives the pose at a parameter: the last one for param >= 1, the first one for param <= 0 or NaN. Between the poses
 *  of a fit the direction is not exactly a unit vector. */
ZORBASE_API zorbase_status zorbase_curve_evaluate(const zorbase_curve* curve, double param,
                                                  zorbase_pose* pose) ZORBASE_NOEXCEPT;

/** Gives the poses at many parameters, the same ones to the bit; rising parameters are cheaper. */
ZORBASE_API zorbase_status zorbase_curve_evaluate_many(const zorbase_curve* curve, const double* params, size_t count,
                                                       zorbase_pose* poses) ZORBASE_NOEXCEPT;

/** Gives the pose and its first to third derivatives with respect to the parameter, clamped to 0..1, in four places. */
ZORBASE_API zorbase_status zorbase_curve_derivatives(const zorbase_curve* curve, double param,
                                                     zorbase_pose* derivatives) ZORBASE_NOEXCEPT;

/** Gives the curvature over all six components; NaN where the first derivative is 0. */
ZORBASE_API zorbase_status zorbase_curve_curvature(const zorbase_curve* curve, double param,
                                                   double* curvature) ZORBASE_NOEXCEPT;

/** The place of a curve that is closest to a pose. */
typedef struct zorbase_closest {
  size_t size;       /**< sizeof(zorbase_closest) */
  double param;      /**< of the place */
  double distance;   /**< over all six components */
  zorbase_pose pose; /**< at the place */
} zorbase_closest;

/** Finds the closest place, over all six components; of several that are equally close, up to rounding, that with the smallest
 *  parameter. ZORBASE_ERROR for a pose that is not finite, for a curve or a pose too far away for its distance to be measured (about
 *  1e150), and for knots that are not clamped on 0..1, as those of a fit are. Four equal inner knots break the curve; the end before
 *  them is found at the double below.
 *  Cost: in proportion to the number of knots. */
ZORBASE_API zorbase_status zorbase_curve_closest(const zorbase_curve* curve, const zorbase_pose* pose,
                                                 zorbase_closest* closest) ZORBASE_NOEXCEPT;

/* ---------------------------------------------------------------------------------------------- arc length */

/** Gives the length of the curve. */
ZORBASE_API zorbase_status zorbase_curve_length(const zorbase_curve* curve, double* length) ZORBASE_NOEXCEPT;

/** Gives the length from one parameter to another; negative when it runs back. */
ZORBASE_API zorbase_status zorbase_curve_length_of_param(const zorbase_curve* curve, double param_from, double param_to,
                                                         double* length) ZORBASE_NOEXCEPT;

/** Gives the parameter at a length from the start; a length off the curve counts as that of its end. */
ZORBASE_API zorbase_status zorbase_curve_param_of_length(const zorbase_curve* curve, double length,
                                                         double* param) ZORBASE_NOEXCEPT;

/** Both for many values, the same numbers to the bit; rising values are cheaper. Lengths count from the start of the
 *  curve. */
ZORBASE_API zorbase_status zorbase_curve_lengths_of_params(const zorbase_curve* curve, const double* params,
                                                           size_t count, double* lengths) ZORBASE_NOEXCEPT;
ZORBASE_API zorbase_status zorbase_curve_params_of_lengths(const zorbase_curve* curve, const double* lengths,
                                                           size_t count, double* params) ZORBASE_NOEXCEPT;

ZORBASE_END_C
/* NOLINTEND(modernize-*) */
