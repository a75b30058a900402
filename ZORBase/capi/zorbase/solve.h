/* solve.h: least squares, planes and lines through points, surfaces through heights. */
#pragma once

#include <ZORBase/capi/zorbase/poses.h>

/* NOLINTBEGIN(modernize-*) */
ZORBASE_BEGIN_C

/* ---------------------------------------------------------------------------------------------- fits */

/** How a matrix lies in an array. */
enum {
  ZORBASE_COLUMN_MAJOR = 0, /**< column after column */
  ZORBASE_ROW_MAJOR = 1     /**< row after row */
};

/** Solves A x = b for the x that leaves the smallest sum of squares, by singular value decomposition.
 *  \param a       rows * columns numbers.
 *  \param b       as many numbers as there are rows.
 *  \param layout  ZORBASE_COLUMN_MAJOR, or row after row for any other value.
 *  \param x       as many places as there are columns.
 *  A singular system gives the shortest x; only singular values of exactly 0 count as such, so that conditioning is the
 *  caller's to judge. More columns than rows give zeros. ZORBASE_ERROR for no rows or no columns. */
ZORBASE_API zorbase_status zorbase_least_squares(const double* a, size_t rows, size_t columns, int32_t layout,
                                                 const double* b, double* x) ZORBASE_NOEXCEPT;

/** The plane a x + b y + c z + d = 0 with a unit normal, whose sign is left open. */
typedef struct zorbase_plane {
  size_t size;  /**< sizeof(zorbase_plane) */
  double a;     /**< the normal along X */
  double b;     /**< the normal along Y */
  double c;     /**< the normal along Z */
  double d;     /**< minus the distance of the origin along the normal */
  double ratio; /**< spread in the plane, in its lesser direction, over that across it; 1e7 for points exactly flat */
} zorbase_plane;

/** Fits the plane that leaves the smallest sum of squared distances, taken at right angles. Fewer than three points
 *  give zeros; of points on a line, any plane through it. ZORBASE_ERROR for no points. */
ZORBASE_API zorbase_status zorbase_fit_plane(const zorbase_point* points, size_t count,
                                             zorbase_plane* plane) ZORBASE_NOEXCEPT;

/** The line a x + b y + c = 0 of the plane z = 0, with a unit normal, whose sign is left open. */
typedef struct zorbase_line {
  size_t size; /**< sizeof(zorbase_line) */
  double a;    /**< the normal along X */
  double b;    /**< the normal along Y */
  double c;    /**< minus the distance of the origin along the normal */
} zorbase_line;

/** Fits the line that leaves the smallest sum of squared distances, taken at right angles. A single point gives zeros.
 *  ZORBASE_ERROR for no points. */
ZORBASE_API zorbase_status zorbase_fit_line(const zorbase_point2* points, size_t count,
                                            zorbase_line* line) ZORBASE_NOEXCEPT;

/* ---------------------------------------------------------------------------------------------- surfaces */

/** A smooth surface z(x, y) through scattered samples: add samples, solve once, read heights. ZORBASE_ERROR for a call
 *  out of this order. */
typedef struct zorbase_surface zorbase_surface;

ZORBASE_API zorbase_status zorbase_surface_create(zorbase_surface** surface) ZORBASE_NOEXCEPT;
ZORBASE_API void zorbase_surface_destroy(zorbase_surface* surface) ZORBASE_NOEXCEPT;

/** Adds samples, x and y and the height z there, or none of them when one is not finite: ZORBASE_ERROR. */
ZORBASE_API zorbase_status zorbase_surface_add(zorbase_surface* surface, const zorbase_point* samples,
                                               size_t count) ZORBASE_NOEXCEPT;

/** Computes the surface. ZORBASE_ERROR for two samples at one place, and for more than 11585 samples; the surface is
 *  then 0 everywhere. Cost: the cube of the number of samples, and memory for its square. */
ZORBASE_API zorbase_status zorbase_surface_solve(zorbase_surface* surface) ZORBASE_NOEXCEPT;

/** Gives the height at a place. Cost: in proportion to the number of samples. */
ZORBASE_API zorbase_status zorbase_surface_height(const zorbase_surface* surface, double x, double y,
                                                  double* z) ZORBASE_NOEXCEPT;

/** Gives the heights at many places, the same ones to the bit and faster. */
ZORBASE_API zorbase_status zorbase_surface_heights(const zorbase_surface* surface, const zorbase_point2* places,
                                                   size_t count, double* z) ZORBASE_NOEXCEPT;

ZORBASE_END_C
/* NOLINTEND(modernize-*) */
