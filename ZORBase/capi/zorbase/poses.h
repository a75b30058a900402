/* poses.h: tool poses, lists of them, and their text files. */
#pragma once

#include <ZORBase/capi/zorbase/base.h>

/* NOLINTBEGIN(modernize-*) */
ZORBASE_BEGIN_C

/* ---------------------------------------------------------------------------------------------- poses */

/** A position in the plane, in the caller's length unit. */
typedef struct zorbase_point2 {
  double x; /**< along X */
  double y; /**< along Y */
} zorbase_point2;

/** A position in space. */
typedef struct zorbase_point {
  double x; /**< along X */
  double y; /**< along Y */
  double z; /**< along Z */
} zorbase_point;

/** A tool pose: position (x, y, z) and direction (a, b, c), which is a unit vector where nothing else is said. */
typedef struct zorbase_pose {
  double x; /**< position along X */
  double y; /**< position along Y */
  double z; /**< position along Z */
  double a; /**< direction along X */
  double b; /**< direction along Y */
  double c; /**< direction along Z */
} zorbase_pose;

/** A tool pose with rotation angles: R = Rz(rz) Ry(ry) Rx(rx). The tool points along the third column of R. */
typedef struct zorbase_euler_pose {
  double x;  /**< position along X */
  double y;  /**< position along Y */
  double z;  /**< position along Z */
  double rx; /**< turn about X, in radians */
  double ry; /**< turn about Y, in radians */
  double rz; /**< turn about Z, in radians */
} zorbase_euler_pose;

/** Gives the text "x,y,z,a,b,c" of a pose, as a line of a file has it.
 *  \param digits  decimals of each number, clamped to 0..12. */
ZORBASE_API zorbase_status zorbase_pose_to_text(const zorbase_pose* pose, int32_t digits, char* text, size_t capacity,
                                                size_t* count) ZORBASE_NOEXCEPT;

/** Reads six numbers that are parted by "," or blanks. ZORBASE_ERROR says what is wrong with the text. */
ZORBASE_API zorbase_status zorbase_pose_from_text(const char* text, zorbase_pose* pose) ZORBASE_NOEXCEPT;

/** Gives a number as text. The digits are those of its exact value, ties to even, in every locale.
 *  \param digits  decimals, 0 to 1074: a double has no more. */
ZORBASE_API zorbase_status zorbase_number_to_text(double value, int32_t digits, char* text, size_t capacity,
                                                  size_t* count) ZORBASE_NOEXCEPT;

/** Gives the poses with the tool directions of poses with angles; the turn about the tool's own axis is lost. */
ZORBASE_API zorbase_status zorbase_euler_to_poses(const zorbase_euler_pose* euler_poses, size_t count,
                                                  zorbase_pose* poses) ZORBASE_NOEXCEPT;

/* ---------------------------------------------------------------------------------------------- lists of poses */

/** An ordered list of poses that grows. */
typedef struct zorbase_poses zorbase_poses;

/** Makes an empty list. */
ZORBASE_API zorbase_status zorbase_poses_create(zorbase_poses** poses) ZORBASE_NOEXCEPT;
ZORBASE_API void zorbase_poses_destroy(zorbase_poses* poses) ZORBASE_NOEXCEPT;

/** Replaces the contents by the poses of a file: one per line, x,y,z,a,b,c. ZORBASE_ERROR names the file and the line
 *  that cannot be read, line 1 for a file that cannot be opened. The poses of the lines before it are then in the list.
 *  */
ZORBASE_API zorbase_status zorbase_poses_load(zorbase_poses* poses, const char* file_name) ZORBASE_NOEXCEPT;

/** The same from a file of poses with angles, x,y,z,rx,ry,rz, whose directions are taken; here a failure leaves the
 *  list as it was. */
ZORBASE_API zorbase_status zorbase_poses_load_euler(zorbase_poses* poses, const char* file_name) ZORBASE_NOEXCEPT;

/** Writes the text file, lines ended by CR LF. Where it cannot be written an existing file is as it was.
 *  \param digits  decimals of each number, clamped to 0..12. */
ZORBASE_API zorbase_status zorbase_poses_save(const zorbase_poses* poses, const char* file_name,
                                              int32_t digits) ZORBASE_NOEXCEPT;

/** Appends the poses of an array. */
ZORBASE_API zorbase_status zorbase_poses_append(zorbase_poses* poses, const zorbase_pose* items,
                                                size_t count) ZORBASE_NOEXCEPT;

/** Removes all poses. */
ZORBASE_API zorbase_status zorbase_poses_clear(zorbase_poses* poses) ZORBASE_NOEXCEPT;

/** Gives the pose at an index from 0 on. ZORBASE_ERROR outside of the list. */
ZORBASE_API zorbase_status zorbase_poses_get(const zorbase_poses* poses, int32_t index,
                                             zorbase_pose* pose) ZORBASE_NOEXCEPT;

/** Gives all poses, or only their count; see "Room" in zorbase.h. */
ZORBASE_API zorbase_status zorbase_poses_get_all(const zorbase_poses* poses, zorbase_pose* items, size_t capacity,
                                                 size_t* count) ZORBASE_NOEXCEPT;

ZORBASE_END_C
/* NOLINTEND(modernize-*) */
