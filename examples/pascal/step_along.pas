{ From measured poses to evenly spaced ones, 1 mm apart along the curve through them, as 06_step_along.cpp does it. }
program step_along;

{$mode objfpc}{$H+}

uses
  ctypes, SysUtils, zorbase;

const
  Step = 1.0;   { mm }
  Shown = 1000; { every so many steps one is printed }

procedure Fit(const FileName: String; Curve: PZorbaseCurve);
var
  Measured: PZorbasePoses;
  Count: csize_t;
  CurveLength: Double;
begin
  ZorbaseCheck(zorbase_poses_create(Measured));
  try
    ZorbaseCheck(zorbase_poses_load(Measured, PChar(FileName)));
    ZorbaseCheck(zorbase_curve_fit(Curve, Measured, ZORBASE_CENTRIPETAL));
    ZorbaseCheck(zorbase_poses_get_all(Measured, nil, 0, @Count));
    ZorbaseCheck(zorbase_curve_length(Curve, CurveLength));
    WriteLn(Count, ' poses, a curve of ', ZorbaseNumberText(CurveLength, 6), ' mm');
  finally
    zorbase_poses_destroy(Measured);
  end;
end;

procedure Walk(Curve: PZorbaseCurve);
var
  CurveLength: Double;
  Lengths, Params: array of Double;
  Poses: array of TZorbasePose;
  I: SizeInt;
begin
  ZorbaseCheck(zorbase_curve_length(Curve, CurveLength));
  SetLength(Lengths, Trunc(CurveLength / Step) + 1);
  SetLength(Params, Length(Lengths));
  SetLength(Poses, Length(Lengths));

  for I := 0 to High(Lengths) do
    Lengths[I] := I * Step;
  ZorbaseCheck(zorbase_curve_params_of_lengths(Curve, @Lengths[0], Length(Lengths), @Params[0]));
  ZorbaseCheck(zorbase_curve_evaluate_many(Curve, @Params[0], Length(Params), @Poses[0]));
  for I := 0 to High(Poses) do
    if I mod Shown = 0 then
      WriteLn('at ', I, ' mm  ', ZorbasePoseText(Poses[I], 6));
end;

procedure FindClosest(Curve: PZorbaseCurve);
var
  Probe: TZorbasePose;
  Closest: TZorbaseClosest;
  PathLength: Double;
begin
  Probe := Default(TZorbasePose);
  Probe.C := 1;
  Closest := NewZorbaseClosest;
  ZorbaseCheck(zorbase_curve_closest(Curve, Probe, Closest));
  ZorbaseCheck(zorbase_curve_length_of_param(Curve, 0, Closest.Param, PathLength));
  WriteLn('closest to the origin: ', ZorbaseNumberText(Closest.Distance, 6), ' away, at ',
    ZorbaseNumberText(PathLength, 6), ' mm');
end;

procedure Run;
var
  Curve: PZorbaseCurve;
begin
  ZorbaseCheck(zorbase_start);
  try
    ZorbaseCheck(zorbase_curve_create(Curve));
    try
      Fit('data/swept-plane.poses.txt', Curve);
      Walk(Curve);
      FindClosest(Curve);
    finally
      zorbase_curve_destroy(Curve);
    end;
  finally
    ZorbaseCheck(zorbase_stop);
  end;
end;

begin
  try
    Run;
  except
    on Error: EZorbase do
    begin
      WriteLn(StdErr, Error.Message);
      Halt(1);
    end;
  end;
end.
