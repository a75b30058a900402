// BaseServices: what every module stands on.
//   TGeneralError, RaiseGeneralError, RaiseAssertion   the one error type
//   TList, TDoubleList                                 ordered, growable, checked list of values
//   TPersistent                                        objects that take part in Assign
//   Extended                                           80-bit arithmetic, used exactly where it is asked for
//   NumberText                                         numbers as text, en-US and in the current locale
//   TDelimitedText, NumberRow                          items of a line, and rows of numbers built on them
//   TTextFileReader, TTextFileWriter, PointListFile    text files: lines in place, atomic saves, lists of points
#pragma once

#include <ZORBase/common/BaseServices/Extended.h>
#include <ZORBase/common/BaseServices/NumberRow.h>
#include <ZORBase/common/BaseServices/NumberText.h>
#include <ZORBase/common/BaseServices/PointListFile.h>
#include <ZORBase/common/BaseServices/TDelimitedText.h>
#include <ZORBase/common/BaseServices/TGeneralError.h>
#include <ZORBase/common/BaseServices/TList.h>
#include <ZORBase/common/BaseServices/TPersistent.h>
#include <ZORBase/common/BaseServices/TTextFileReader.h>
#include <ZORBase/common/BaseServices/TTextFileWriter.h>
