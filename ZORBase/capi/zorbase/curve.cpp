#include <ZORBase/ZORGeometry/NurbsGeometry.h>
#include <ZORBase/capi/Call.h>
#include <ZORBase/capi/Handles.h>
#include <ZORBase/capi/Twins.h>

// C functions stand outside of every namespace. NOLINTBEGIN(google-build-using-namespace)
using namespace ZORBase;
using namespace ZORBase::capi;
// NOLINTEND(google-build-using-namespace)

struct zorbase_curve {
  TNurbs6D Value;
};

namespace {

TNurbs6D& CurveOf(zorbase_curve* Curve) { return Given(Curve, "curve").Value; }
const TNurbs6D& CurveOf(const zorbase_curve* Curve) { return Given(Curve, "curve").Value; }

void Fit(TNurbs6D& Curve, const TPoint6DList& Poses, int32_t Method) {
  if (Curve.CreateCross(&Poses, static_cast<TParalizeMethod>(Method))) return;
  Refuse(ZORBASE_NOT_POSSIBLE, "a curve needs at least 4 poses, and there are " + std::to_string(Poses.Count()));
}

}  // namespace

// ---------------------------------------------------------------------------------------------- making

zorbase_status zorbase_curve_create(zorbase_curve** curve) noexcept {
  return Call(__func__, [&] { CreateHandle(curve, "curve"); });
}

void zorbase_curve_destroy(zorbase_curve* curve) noexcept { delete curve; }

zorbase_status zorbase_curve_fit(zorbase_curve* curve, const zorbase_poses* poses, int32_t method) noexcept {
  return Call(__func__, [&] { Fit(CurveOf(curve), Given(poses, "poses").Value, method); });
}

zorbase_status zorbase_curve_fit_array(zorbase_curve* curve, const zorbase_pose* poses, size_t count,
                                       int32_t method) noexcept {
  return Call(__func__, [&] {
    TNurbs6D& place = CurveOf(curve);
    Fit(place, TPoint6DList{Twins(Items(poses, count, "poses"))}, method);
  });
}

zorbase_status zorbase_curve_set_control_points(zorbase_curve* curve, const double* knots, size_t knot_count,
                                                const zorbase_pose* points, size_t point_count) noexcept {
  return Call(__func__, [&] {
    TNurbs6D& place = CurveOf(curve);
    const auto given = Twins(Items(points, point_count, "points"));
    if (place.CreateByCtlPoints(Items(knots, knot_count, "knots"), given, static_cast<int>(point_count))) return;
    Refuse(ZORBASE_NOT_POSSIBLE, std::to_string(point_count) + " control points need 4 more knots, and there are " +
                                     std::to_string(knot_count));
  });
}

zorbase_status zorbase_curve_measure(zorbase_curve* curve) noexcept {
  return Call(__func__, [&] { CurveOf(curve).InitLengthByUArray(); });
}

zorbase_status zorbase_curve_reverse(zorbase_curve* curve) noexcept {
  return Call(__func__, [&] { CurveOf(curve).Reverse(); });
}

zorbase_status zorbase_curve_control_points(const zorbase_curve* curve, zorbase_pose* points, size_t capacity,
                                            size_t* count) noexcept {
  return Call(__func__, [&] { GiveItems(Twins(CurveOf(curve).pointArr()), points, capacity, count, "points"); });
}

zorbase_status zorbase_curve_knots(const zorbase_curve* curve, double* knots, size_t capacity, size_t* count) noexcept {
  return Call(__func__, [&] { GiveItems(CurveOf(curve).BasicFun().uArr(), knots, capacity, count, "knots"); });
}

// ---------------------------------------------------------------------------------------------- evaluating

zorbase_status zorbase_curve_evaluate(const zorbase_curve* curve, double param, zorbase_pose* pose) noexcept {
  return Call(__func__, [&] {
    zorbase_pose& place = Given(pose, "pose");
    place = Twin(CurveOf(curve).EvalPoint(param));
  });
}

zorbase_status zorbase_curve_evaluate_many(const zorbase_curve* curve, const double* params, size_t count,
                                           zorbase_pose* poses) noexcept {
  return Call(__func__,
              [&] { CurveOf(curve).EvalPoints(Items(params, count, "params"), Twins(Items(poses, count, "poses"))); });
}

zorbase_status zorbase_curve_derivatives(const zorbase_curve* curve, double param, zorbase_pose* derivatives) noexcept {
  return Call(__func__, [&] { CurveOf(curve).CurveDerivsAlg1(param, Twins(Items(derivatives, 4, "derivatives"))); });
}

zorbase_status zorbase_curve_curvature(const zorbase_curve* curve, double param, double* curvature) noexcept {
  return Call(__func__, [&] {
    double& place = Given(curvature, "curvature");
    place = CurveOf(curve).Curvature(param);
  });
}

zorbase_status zorbase_curve_closest(const zorbase_curve* curve, const zorbase_pose* pose,
                                     zorbase_closest* closest) noexcept {
  return Call(__func__, [&] {
    TGrowing place(closest, "closest");
    const auto found = CurveOf(curve).ClosestPoint(Twin(Given(pose, "pose")));
    place.Write({.size = 0, .param = found.Param, .distance = found.Distance, .pose = Twin(found.Point)});
  });
}

// ---------------------------------------------------------------------------------------------- arc length

zorbase_status zorbase_curve_length(const zorbase_curve* curve, double* length) noexcept {
  return Call(__func__, [&] {
    double& place = Given(length, "length");
    place = CurveOf(curve).CurveLength();
  });
}

zorbase_status zorbase_curve_length_of_param(const zorbase_curve* curve, double param_from, double param_to,
                                             double* length) noexcept {
  return Call(__func__, [&] {
    double& place = Given(length, "length");
    place = CurveOf(curve).LengthOfParam(param_from, param_to);
  });
}

zorbase_status zorbase_curve_param_of_length(const zorbase_curve* curve, double length, double* param) noexcept {
  return Call(__func__, [&] {
    double& place = Given(param, "param");
    place = CurveOf(curve).ParamOfLength(length);
  });
}

zorbase_status zorbase_curve_lengths_of_params(const zorbase_curve* curve, const double* params, size_t count,
                                               double* lengths) noexcept {
  return Call(__func__, [&] {
    CurveOf(curve).SUTable().GetSByU(Items(params, count, "params"), Items(lengths, count, "lengths"));
  });
}

zorbase_status zorbase_curve_params_of_lengths(const zorbase_curve* curve, const double* lengths, size_t count,
                                               double* params) noexcept {
  return Call(__func__,
              [&] { CurveOf(curve).ParamOfLength(Items(lengths, count, "lengths"), Items(params, count, "params")); });
}
