/* From measured poses to evenly spaced ones, 1 mm apart along the curve through them, as 06_step_along.cpp does it. */
#include <ZORBase/capi/zorbase.h>
#include <stdio.h>
#include <stdlib.h>

#define POSE_TEXT_BYTES 128

static const double step = 1.0;   /* mm */
static const size_t shown = 1000; /* every so many steps one is printed */

static void* allocated(size_t count, size_t size) {
  void* memory = calloc(count, size);
  if (!memory) exit(EXIT_FAILURE);
  return memory;
}

/* Ends the program when a call has failed. The system takes back what the program holds. */
static void check(zorbase_status status) {
  if (status == ZORBASE_OK) return;
  fprintf(stderr, "%s\n", zorbase_last_error());
  exit(EXIT_FAILURE);
}

static void fit(const char* file_name, zorbase_curve* curve) {
  zorbase_poses* measured;
  size_t count;
  double length;
  check(zorbase_poses_create(&measured));
  check(zorbase_poses_load(measured, file_name));
  check(zorbase_curve_fit(curve, measured, ZORBASE_CENTRIPETAL));
  check(zorbase_poses_get_all(measured, NULL, 0, &count));
  check(zorbase_curve_length(curve, &length));
  printf("%u poses, a curve of %.6f mm\n", (unsigned)count, length);
  zorbase_poses_destroy(measured);
}

static void print_pose(size_t length, const zorbase_pose* pose) {
  char text[POSE_TEXT_BYTES];
  check(zorbase_pose_to_text(pose, 6, text, sizeof text, NULL));
  printf("at %u mm  %s\n", (unsigned)length, text);
}

/* [walk] */
static void walk(const zorbase_curve* curve) {
  double length;
  check(zorbase_curve_length(curve, &length));
  const size_t count = (size_t)(length / step) + 1;
  double* lengths = allocated(count, sizeof *lengths);
  double* params = allocated(count, sizeof *params);
  zorbase_pose* poses = allocated(count, sizeof *poses);

  for (size_t i = 0; i < count; ++i) lengths[i] = (double)i * step;
  check(zorbase_curve_params_of_lengths(curve, lengths, count, params));
  check(zorbase_curve_evaluate_many(curve, params, count, poses));
  for (size_t i = 0; i < count; i += shown) print_pose(i, &poses[i]);

  free(poses);
  free(params);
  free(lengths);
}
/* [walk] */

static void find_closest(const zorbase_curve* curve) {
  const zorbase_pose probe = {0, 0, 0, 0, 0, 1};
  zorbase_closest closest = {.size = sizeof closest};
  double length;
  check(zorbase_curve_closest(curve, &probe, &closest));
  check(zorbase_curve_length_of_param(curve, 0, closest.param, &length));
  printf("closest to the origin: %.6f away, at %.6f mm\n", closest.distance, length);
}

int main(void) {
  zorbase_curve* curve;
  check(zorbase_start());
  check(zorbase_curve_create(&curve));
  fit("data/swept-plane.poses.txt", curve);
  walk(curve);
  find_closest(curve);
  zorbase_curve_destroy(curve);
  check(zorbase_stop());
  return EXIT_SUCCESS;
}
