/* zorbase.h: the library for hosts that are not C++. C99, and C++.
 *
 *   base.h       statuses and the text of an error; version; start and stop
 *   poses.h      tool poses, lists of them, their text files
 *   curve.h      the smooth curve through poses: fit, evaluate, walk by arc length, closest place
 *   transform.h  transforms of poses; rotations and poses blended into each other
 *   solve.h      least squares, planes and lines through points, surfaces through heights
 *   signal.h     spectra and low-pass filters of sampled signals
 *
 * Conventions
 *
 *   Results       Every call does what the C++ class of the same subsystem does, bit for bit. It returns a status, and
 *                 gives its results through the pointers that stand last. Where it fails they are as they were, unless
 *                 it says otherwise; of an array some items may then have been written.
 *   Errors        zorbase_last_error() is the text of this thread's last call. No C++ exception leaves a call.
 *   No status     is returned by the calls that cannot fail: zorbase_last_error, the versions, and every _destroy.
 *   Objects       are made by a _create, which gives a null pointer where it fails, and freed by the _destroy of the
 *                 same name. That takes a null pointer as well. Nothing that the caller passes in is kept: it is
 *                 copied.
 *   Arrays        are a pointer and a count of items (size_t, at most 2^31 - 1). Where the count is 0 the pointer may
 *                 be null. An array of results and one of arguments must not overlap, unless the call says so.
 *   Room          A call that gives as many items as there are takes an array, its capacity and a count, which becomes
 *                 the number of items whether or not they fit. Items that do not fit are not written, and the status is
 *                 ZORBASE_BAD_ARGUMENT. With a null array and the capacity 0 it only tells the count, and all is well.
 *                 The count may be a null pointer. For texts the capacity has to include the byte 0 at the end, which
 *                 the count leaves out.
 *   Structs       of the mathematics (a pose, a matrix) stay as they are for good. Every other one begins with its own
 *                 size, which the caller sets to sizeof before the call, so that later versions can add fields at its
 *                 end: a library that knows more fields than the caller takes 0 for them, one that knows fewer wants
 *                 zeros there, and writes zeros.
 *   Texts         are UTF-8 and end with a byte 0. Numbers have a decimal point in every locale.
 *   Units         Lengths are in the caller's unit; the fixed tolerances suit millimetres. Angles are radians.
 *
 * Threads
 *
 *   Calls on different objects may run at the same time, and so may any calls on one object that all take it as const.
 *   A call that takes an object as not const must be the only one on it. zorbase_start and zorbase_stop are for one
 *   thread at a time.
 *
 * Control loops
 *
 *   These calls, when they end with ZORBASE_OK, allocate nothing and take no lock: evaluate, evaluate_many, derivatives,
 *   curvature, length, length_of_param, lengths_of_params, param_of_length and params_of_lengths of a curve; height and
 *   heights of a surface; step, batch, timed, clear, response and frequency_of of a filter; all of zorbase_matrix_,
 *   zorbase_quaternion_ and zorbase_pose_move. In a library that is loaded while the program runs, the first call on a
 *   thread makes room for the thread's error text.
 *
 * Floating point
 *
 *   A call expects the processor as C programs have it: rounding to nearest, no traps, the x87 unit at full precision.
 *   Run-time systems that trap on a division by zero or on an overflow (Pascal's does) have to mask these exceptions
 *   first.
 */
#pragma once

#include <ZORBase/capi/zorbase/base.h>
#include <ZORBase/capi/zorbase/curve.h>
#include <ZORBase/capi/zorbase/poses.h>
#include <ZORBase/capi/zorbase/signal.h>
#include <ZORBase/capi/zorbase/solve.h>
#include <ZORBase/capi/zorbase/transform.h>
