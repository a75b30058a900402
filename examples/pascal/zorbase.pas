{ zorbase: the C interface of the library for Free Pascal. What each call does stands in ZORBase/capi/zorbase.h and the
  headers that it lists; names and the order of arguments are the same.

    C                                 here
    struct                            record; New... makes one with its size set
    T* of an object                   PZorbase...
    const T* of one struct            constref
    T* for one result                 out
    arrays                            a pointer to the first item; of a dynamic array, @Items[0]
    a count that may be null          PSizeUInt, nil when it is not wanted
    to, result                        target, made: both mean something else in Pascal

  The unit masks the floating-point exceptions of the thread that starts the program, as the library expects; further
  threads call MaskFloatingPointExceptions. }
unit zorbase;

{$mode objfpc}{$H+}
{$packrecords c}

interface

uses
  ctypes, Math, SysUtils;

const
  ZORBASE_OK = 0;
  ZORBASE_ERROR = 1;
  ZORBASE_BAD_ARGUMENT = 2;
  ZORBASE_NOT_POSSIBLE = 3;
  ZORBASE_NO_MEMORY = 4;
  ZORBASE_UNEXPECTED = 5;

  { The version of the interface that this unit declares; compare it with zorbase_interface_version. }
  ZorbaseUnitVersion = 1;

  ZORBASE_EQUALLY = 0;
  ZORBASE_CHORD = 1;
  ZORBASE_CENTRIPETAL = 2;

  ZORBASE_COLUMN_MAJOR = 0;
  ZORBASE_ROW_MAJOR = 1;

  ZORBASE_HAMMING = 0;
  ZORBASE_BLACKMAN = 1;
  ZORBASE_RECTANGLE = 2;
  ZORBASE_AVERAGE = 3;

type
  TZorbaseStatus = cint32;

  TZorbasePoint2 = record
    X, Y: Double;
  end;
  PZorbasePoint2 = ^TZorbasePoint2;

  TZorbasePoint = record
    X, Y, Z: Double;
  end;
  PZorbasePoint = ^TZorbasePoint;

  TZorbasePose = record
    X, Y, Z: Double;
    A, B, C: Double;
  end;
  PZorbasePose = ^TZorbasePose;

  TZorbaseEulerPose = record
    X, Y, Z: Double;
    Rx, Ry, Rz: Double;
  end;
  PZorbaseEulerPose = ^TZorbaseEulerPose;

  TZorbaseMatrix = record
    M: array[0..2, 0..3] of Double;
  end;
  PZorbaseMatrix = ^TZorbaseMatrix;

  TZorbaseQuaternion = record
    A, B, C, D: Double;
  end;
  PZorbaseQuaternion = ^TZorbaseQuaternion;

  TZorbaseClosest = record
    Size: csize_t;
    Param: Double;
    Distance: Double;
    Pose: TZorbasePose;
  end;

  TZorbasePlane = record
    Size: csize_t;
    A, B, C, D: Double;
    Ratio: Double;
  end;

  TZorbaseLine = record
    Size: csize_t;
    A, B, C: Double;
  end;

  TZorbaseFilterSettings = record
    Size: csize_t;
    Kind: cint32;
    Order: cint32;
    SampleFrequency: Double;
    CutoffFrequency: Double;
    InitialValue: Double;
  end;

  PZorbasePoses = ^TZorbasePoses;
  TZorbasePoses = record end;
  PZorbaseCurve = ^TZorbaseCurve;
  TZorbaseCurve = record end;
  PZorbaseSurface = ^TZorbaseSurface;
  TZorbaseSurface = record end;
  PZorbaseSpectrum = ^TZorbaseSpectrum;
  TZorbaseSpectrum = record end;
  PZorbaseFilter = ^TZorbaseFilter;
  TZorbaseFilter = record end;

  { Raised by ZorbaseCheck. }
  EZorbase = class(Exception);

{ Raises EZorbase with the text of the call when its status is not ZORBASE_OK. }
procedure ZorbaseCheck(Status: TZorbaseStatus);

{ The text of a number, and of a pose, with the library's digits. }
function ZorbaseNumberText(Value: Double; Digits: cint32): String;
function ZorbasePoseText(constref Pose: TZorbasePose; Digits: cint32): String;

{ Structs with their size set and everything else 0. }
function NewZorbaseClosest: TZorbaseClosest;
function NewZorbasePlane: TZorbasePlane;
function NewZorbaseLine: TZorbaseLine;
function NewZorbaseFilterSettings: TZorbaseFilterSettings;

procedure MaskFloatingPointExceptions;

const
  ZorbaseLibrary = 'ZORBase';

{ base.h }

function zorbase_last_error: PChar; cdecl; external ZorbaseLibrary;
function zorbase_interface_version: cint32; cdecl; external ZorbaseLibrary;
function zorbase_version: PChar; cdecl; external ZorbaseLibrary;
function zorbase_start: TZorbaseStatus; cdecl; external ZorbaseLibrary;
function zorbase_stop: TZorbaseStatus; cdecl; external ZorbaseLibrary;
function zorbase_set_log_enabled(enabled: cint32): TZorbaseStatus; cdecl; external ZorbaseLibrary;

{ poses.h }

function zorbase_pose_to_text(constref pose: TZorbasePose; digits: cint32; text: PChar; capacity: csize_t;
  count: PSizeUInt): TZorbaseStatus; cdecl; external ZorbaseLibrary;
function zorbase_pose_from_text(text: PChar; out pose: TZorbasePose): TZorbaseStatus; cdecl; external ZorbaseLibrary;
function zorbase_number_to_text(value: Double; digits: cint32; text: PChar; capacity: csize_t;
  count: PSizeUInt): TZorbaseStatus; cdecl; external ZorbaseLibrary;
function zorbase_euler_to_poses(euler_poses: PZorbaseEulerPose; count: csize_t; poses: PZorbasePose): TZorbaseStatus;
  cdecl; external ZorbaseLibrary;
function zorbase_poses_create(out poses: PZorbasePoses): TZorbaseStatus; cdecl; external ZorbaseLibrary;
procedure zorbase_poses_destroy(poses: PZorbasePoses); cdecl; external ZorbaseLibrary;
function zorbase_poses_load(poses: PZorbasePoses; file_name: PChar): TZorbaseStatus; cdecl; external ZorbaseLibrary;
function zorbase_poses_load_euler(poses: PZorbasePoses; file_name: PChar): TZorbaseStatus;
  cdecl; external ZorbaseLibrary;
function zorbase_poses_save(poses: PZorbasePoses; file_name: PChar; digits: cint32): TZorbaseStatus;
  cdecl; external ZorbaseLibrary;
function zorbase_poses_append(poses: PZorbasePoses; items: PZorbasePose; count: csize_t): TZorbaseStatus;
  cdecl; external ZorbaseLibrary;
function zorbase_poses_clear(poses: PZorbasePoses): TZorbaseStatus; cdecl; external ZorbaseLibrary;
function zorbase_poses_get(poses: PZorbasePoses; index: cint32; out pose: TZorbasePose): TZorbaseStatus;
  cdecl; external ZorbaseLibrary;
function zorbase_poses_get_all(poses: PZorbasePoses; items: PZorbasePose; capacity: csize_t;
  count: PSizeUInt): TZorbaseStatus; cdecl; external ZorbaseLibrary;

{ curve.h }

function zorbase_curve_create(out curve: PZorbaseCurve): TZorbaseStatus; cdecl; external ZorbaseLibrary;
procedure zorbase_curve_destroy(curve: PZorbaseCurve); cdecl; external ZorbaseLibrary;
function zorbase_curve_fit(curve: PZorbaseCurve; poses: PZorbasePoses; method: cint32): TZorbaseStatus;
  cdecl; external ZorbaseLibrary;
function zorbase_curve_fit_array(curve: PZorbaseCurve; poses: PZorbasePose; count: csize_t;
  method: cint32): TZorbaseStatus; cdecl; external ZorbaseLibrary;
function zorbase_curve_set_control_points(curve: PZorbaseCurve; knots: PDouble; knot_count: csize_t;
  points: PZorbasePose; point_count: csize_t): TZorbaseStatus; cdecl; external ZorbaseLibrary;
function zorbase_curve_measure(curve: PZorbaseCurve): TZorbaseStatus; cdecl; external ZorbaseLibrary;
function zorbase_curve_reverse(curve: PZorbaseCurve): TZorbaseStatus; cdecl; external ZorbaseLibrary;
function zorbase_curve_control_points(curve: PZorbaseCurve; points: PZorbasePose; capacity: csize_t;
  count: PSizeUInt): TZorbaseStatus; cdecl; external ZorbaseLibrary;
function zorbase_curve_knots(curve: PZorbaseCurve; knots: PDouble; capacity: csize_t;
  count: PSizeUInt): TZorbaseStatus; cdecl; external ZorbaseLibrary;
function zorbase_curve_evaluate(curve: PZorbaseCurve; param: Double; out pose: TZorbasePose): TZorbaseStatus;
  cdecl; external ZorbaseLibrary;
function zorbase_curve_evaluate_many(curve: PZorbaseCurve; params: PDouble; count: csize_t;
  poses: PZorbasePose): TZorbaseStatus; cdecl; external ZorbaseLibrary;
function zorbase_curve_derivatives(curve: PZorbaseCurve; param: Double; derivatives: PZorbasePose): TZorbaseStatus;
  cdecl; external ZorbaseLibrary;
function zorbase_curve_curvature(curve: PZorbaseCurve; param: Double; out curvature: Double): TZorbaseStatus;
  cdecl; external ZorbaseLibrary;
function zorbase_curve_closest(curve: PZorbaseCurve; constref pose: TZorbasePose;
  var closest: TZorbaseClosest): TZorbaseStatus; cdecl; external ZorbaseLibrary;
function zorbase_curve_length(curve: PZorbaseCurve; out length: Double): TZorbaseStatus;
  cdecl; external ZorbaseLibrary;
function zorbase_curve_length_of_param(curve: PZorbaseCurve; param_from, param_to: Double;
  out length: Double): TZorbaseStatus; cdecl; external ZorbaseLibrary;
function zorbase_curve_param_of_length(curve: PZorbaseCurve; length: Double; out param: Double): TZorbaseStatus;
  cdecl; external ZorbaseLibrary;
function zorbase_curve_lengths_of_params(curve: PZorbaseCurve; params: PDouble; count: csize_t;
  lengths: PDouble): TZorbaseStatus; cdecl; external ZorbaseLibrary;
function zorbase_curve_params_of_lengths(curve: PZorbaseCurve; lengths: PDouble; count: csize_t;
  params: PDouble): TZorbaseStatus; cdecl; external ZorbaseLibrary;

{ transform.h }

function zorbase_matrix_identity(out made: TZorbaseMatrix): TZorbaseStatus; cdecl; external ZorbaseLibrary;
function zorbase_matrix_from_angles_xyz(constref angles: TZorbaseEulerPose; out made: TZorbaseMatrix): TZorbaseStatus;
  cdecl; external ZorbaseLibrary;
function zorbase_matrix_from_angles_zyx(constref angles: TZorbaseEulerPose; out made: TZorbaseMatrix): TZorbaseStatus;
  cdecl; external ZorbaseLibrary;
function zorbase_matrix_to_angles_xyz(constref matrix: TZorbaseMatrix; out angles: TZorbaseEulerPose): TZorbaseStatus;
  cdecl; external ZorbaseLibrary;
function zorbase_matrix_to_angles_zyx(constref matrix: TZorbaseMatrix; out angles: TZorbaseEulerPose): TZorbaseStatus;
  cdecl; external ZorbaseLibrary;
function zorbase_matrix_from_axis_angle(constref axis: TZorbasePoint; angle: Double;
  out made: TZorbaseMatrix): TZorbaseStatus; cdecl; external ZorbaseLibrary;
function zorbase_matrix_from_vectors(constref from, target: TZorbasePoint; out made: TZorbaseMatrix): TZorbaseStatus;
  cdecl; external ZorbaseLibrary;
function zorbase_matrix_multiply(constref left, right: TZorbaseMatrix; out made: TZorbaseMatrix): TZorbaseStatus;
  cdecl; external ZorbaseLibrary;
function zorbase_matrix_invert(constref matrix: TZorbaseMatrix; out made: TZorbaseMatrix): TZorbaseStatus;
  cdecl; external ZorbaseLibrary;
function zorbase_matrix_transform_points(constref matrix: TZorbaseMatrix; points: PZorbasePoint; count: csize_t;
  results: PZorbasePoint): TZorbaseStatus; cdecl; external ZorbaseLibrary;
function zorbase_matrix_transform_directions(constref matrix: TZorbaseMatrix; directions: PZorbasePoint;
  count: csize_t; results: PZorbasePoint): TZorbaseStatus; cdecl; external ZorbaseLibrary;
function zorbase_matrix_transform_poses(constref matrix: TZorbaseMatrix; poses: PZorbasePose; count: csize_t;
  results: PZorbasePose): TZorbaseStatus; cdecl; external ZorbaseLibrary;
function zorbase_matrix_angle(constref from, target: TZorbaseMatrix; out angle: Double): TZorbaseStatus;
  cdecl; external ZorbaseLibrary;
function zorbase_quaternion_from_matrix(constref matrix: TZorbaseMatrix;
  out made: TZorbaseQuaternion): TZorbaseStatus; cdecl; external ZorbaseLibrary;
function zorbase_quaternion_to_matrix(constref quaternion: TZorbaseQuaternion;
  out made: TZorbaseMatrix): TZorbaseStatus; cdecl; external ZorbaseLibrary;
function zorbase_quaternion_multiply(constref left, right: TZorbaseQuaternion;
  out made: TZorbaseQuaternion): TZorbaseStatus; cdecl; external ZorbaseLibrary;
function zorbase_quaternion_angle(constref from, target: TZorbaseQuaternion; out angle: Double): TZorbaseStatus;
  cdecl; external ZorbaseLibrary;
function zorbase_quaternion_nlerp(t: Double; constref q1, q2: TZorbaseQuaternion;
  out made: TZorbaseQuaternion): TZorbaseStatus; cdecl; external ZorbaseLibrary;
function zorbase_quaternion_slerp(t: Double; constref q1, q2: TZorbaseQuaternion;
  out made: TZorbaseQuaternion): TZorbaseStatus; cdecl; external ZorbaseLibrary;
function zorbase_quaternion_squad(t: Double; constref q0, q1, q2, q3: TZorbaseQuaternion;
  out made: TZorbaseQuaternion): TZorbaseStatus; cdecl; external ZorbaseLibrary;
function zorbase_quaternion_slerp_many(t: PDouble; count: csize_t; constref q1, q2: TZorbaseQuaternion;
  results: PZorbaseQuaternion): TZorbaseStatus; cdecl; external ZorbaseLibrary;
function zorbase_matrix_nlerp(t: Double; constref m1, m2: TZorbaseMatrix; out made: TZorbaseMatrix): TZorbaseStatus;
  cdecl; external ZorbaseLibrary;
function zorbase_matrix_slerp(t: Double; constref m1, m2: TZorbaseMatrix; out made: TZorbaseMatrix): TZorbaseStatus;
  cdecl; external ZorbaseLibrary;
function zorbase_matrix_squad(t: Double; constref m0, m1, m2, m3: TZorbaseMatrix;
  out made: TZorbaseMatrix): TZorbaseStatus; cdecl; external ZorbaseLibrary;
function zorbase_matrix_slerp_many(t: PDouble; count: csize_t; constref m1, m2: TZorbaseMatrix;
  results: PZorbaseMatrix): TZorbaseStatus; cdecl; external ZorbaseLibrary;
function zorbase_pose_move(t: PDouble; count: csize_t; constref from, target: TZorbasePose;
  results: PZorbasePose): TZorbaseStatus; cdecl; external ZorbaseLibrary;

{ solve.h }

function zorbase_least_squares(a: PDouble; rows, columns: csize_t; layout: cint32; b, x: PDouble): TZorbaseStatus;
  cdecl; external ZorbaseLibrary;
function zorbase_fit_plane(points: PZorbasePoint; count: csize_t; var plane: TZorbasePlane): TZorbaseStatus;
  cdecl; external ZorbaseLibrary;
function zorbase_fit_line(points: PZorbasePoint2; count: csize_t; var line: TZorbaseLine): TZorbaseStatus;
  cdecl; external ZorbaseLibrary;
function zorbase_surface_create(out surface: PZorbaseSurface): TZorbaseStatus; cdecl; external ZorbaseLibrary;
procedure zorbase_surface_destroy(surface: PZorbaseSurface); cdecl; external ZorbaseLibrary;
function zorbase_surface_add(surface: PZorbaseSurface; samples: PZorbasePoint; count: csize_t): TZorbaseStatus;
  cdecl; external ZorbaseLibrary;
function zorbase_surface_solve(surface: PZorbaseSurface): TZorbaseStatus; cdecl; external ZorbaseLibrary;
function zorbase_surface_height(surface: PZorbaseSurface; x, y: Double; out z: Double): TZorbaseStatus;
  cdecl; external ZorbaseLibrary;
function zorbase_surface_heights(surface: PZorbaseSurface; places: PZorbasePoint2; count: csize_t; z: PDouble):
  TZorbaseStatus; cdecl; external ZorbaseLibrary;

{ signal.h }

function zorbase_spectrum_create(out spectrum: PZorbaseSpectrum): TZorbaseStatus; cdecl; external ZorbaseLibrary;
procedure zorbase_spectrum_destroy(spectrum: PZorbaseSpectrum); cdecl; external ZorbaseLibrary;
function zorbase_spectrum_transform(spectrum: PZorbaseSpectrum; samples: PDouble; count: csize_t;
  time_step: Double): TZorbaseStatus; cdecl; external ZorbaseLibrary;
function zorbase_spectrum_amplitudes(spectrum: PZorbaseSpectrum; amplitudes: PDouble; capacity: csize_t;
  count: PSizeUInt): TZorbaseStatus; cdecl; external ZorbaseLibrary;
function zorbase_spectrum_phases(spectrum: PZorbaseSpectrum; phases: PDouble; capacity: csize_t;
  count: PSizeUInt): TZorbaseStatus; cdecl; external ZorbaseLibrary;
function zorbase_spectrum_frequencies(spectrum: PZorbaseSpectrum; frequencies: PDouble; capacity: csize_t;
  count: PSizeUInt): TZorbaseStatus; cdecl; external ZorbaseLibrary;
function zorbase_filter_create(constref settings: TZorbaseFilterSettings; out filter: PZorbaseFilter): TZorbaseStatus;
  cdecl; external ZorbaseLibrary;
procedure zorbase_filter_destroy(filter: PZorbaseFilter); cdecl; external ZorbaseLibrary;
function zorbase_filter_step(filter: PZorbaseFilter; sample: Double; out output: Double): TZorbaseStatus;
  cdecl; external ZorbaseLibrary;
function zorbase_filter_batch(filter: PZorbaseFilter; samples: PDouble; count: csize_t;
  outputs: PDouble): TZorbaseStatus; cdecl; external ZorbaseLibrary;
function zorbase_filter_timed(filter: PZorbaseFilter; sample, delta_time: Double; outputs: PDouble; capacity: csize_t;
  out count: csize_t): TZorbaseStatus; cdecl; external ZorbaseLibrary;
function zorbase_filter_clear(filter: PZorbaseFilter; initial_value: Double): TZorbaseStatus;
  cdecl; external ZorbaseLibrary;
function zorbase_filter_weights(filter: PZorbaseFilter; weights: PDouble; capacity: csize_t;
  count: PSizeUInt): TZorbaseStatus; cdecl; external ZorbaseLibrary;
function zorbase_filter_response(filter: PZorbaseFilter; frequency: Double; out magnitude: Double): TZorbaseStatus;
  cdecl; external ZorbaseLibrary;
function zorbase_filter_frequency_of(filter: PZorbaseFilter; magnitude: Double;
  out frequency: Double): TZorbaseStatus; cdecl; external ZorbaseLibrary;

implementation

procedure ZorbaseCheck(Status: TZorbaseStatus);
begin
  if Status <> ZORBASE_OK then
    raise EZorbase.Create(zorbase_last_error);
end;

function ZorbaseNumberText(Value: Double; Digits: cint32): String;
var
  Count: csize_t;
begin
  ZorbaseCheck(zorbase_number_to_text(Value, Digits, nil, 0, @Count));
  SetLength(Result, Count);
  { A Pascal string has a byte 0 behind its end. }
  ZorbaseCheck(zorbase_number_to_text(Value, Digits, PChar(Result), Count + 1, nil));
end;

function ZorbasePoseText(constref Pose: TZorbasePose; Digits: cint32): String;
var
  Count: csize_t;
begin
  ZorbaseCheck(zorbase_pose_to_text(Pose, Digits, nil, 0, @Count));
  SetLength(Result, Count);
  ZorbaseCheck(zorbase_pose_to_text(Pose, Digits, PChar(Result), Count + 1, nil));
end;

function NewZorbaseClosest: TZorbaseClosest;
begin
  Result := Default(TZorbaseClosest);
  Result.Size := SizeOf(Result);
end;

function NewZorbasePlane: TZorbasePlane;
begin
  Result := Default(TZorbasePlane);
  Result.Size := SizeOf(Result);
end;

function NewZorbaseLine: TZorbaseLine;
begin
  Result := Default(TZorbaseLine);
  Result.Size := SizeOf(Result);
end;

function NewZorbaseFilterSettings: TZorbaseFilterSettings;
begin
  Result := Default(TZorbaseFilterSettings);
  Result.Size := SizeOf(Result);
end;

procedure MaskFloatingPointExceptions;
begin
  SetExceptionMask([exInvalidOp, exDenormalized, exZeroDivide, exOverflow, exUnderflow, exPrecision]);
end;

initialization
  MaskFloatingPointExceptions;
end.
