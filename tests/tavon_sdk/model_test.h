#pragma once

#include <gtest/gtest.h>

#include <future>
#include <regex>

#include "captured_output.h"
#include "tav_parameteralert.h"
#include "tav_parameterbyte.h"
#include "tav_parametercamera.h"
#include "tav_parametercolor.h"
#include "tav_parameterfactory.h"
#include "tav_parameterhdscene.h"
#include "tav_parameterinfo.h"
#include "tav_parametershutter.h"
#include "tav_parameterslider.h"
#include "tav_parameterswitch.h"
#include "tav_parameterswitchrelease.h"
#include "tav_parameterthermo.h"
#include "tav_parameterthermochronoweek.h"
#include "tav_parametertuner.h"
#include "tav_parametervrscene.h"

using namespace tavon;
using Prm = tavIParameter;

inline tavECodeOperator Op(int number) { return static_cast<tavECodeOperator>(number); }

// The lock of an object, which is its own and of the classes derived from it.
struct LockOf : tavObject {
  static vMutex& Of(tavObject& object) { return object.*(&LockOf::m_lock); }
  static bool IsHeld(tavObject& object) {  // as other threads see it
    return !std::async(std::launch::async, [&] {
              return Of(object).TryLock() && Of(object).UnLockB();
            }).get();
  }
  static bool IsFree(tavObject& object) {  // an object's own thread may have the lock for moments
    int tries = 0;
    while (tries < 10000 && IsHeld(object)) ++tries;
    return tries < 10000;
  }
};

// For a record whose line is not published: it is that of today's source.
constexpr int kAnyLine = 0;

// Expects the report of the source file of a class; the class is told without its prefix.
template <class Operation>
void ExpectReport(int code, const tavString& message, const tavString& name, const char* function, int line,
                  Operation operation) {
  const tavString source = "tav_" + name.GetLowCase();
  const auto error = static_cast<tavEError>(code);
  const tavError report = tavBuildErrorLocation(error, message, source.c_str(), function, line);
  std::string output = CapturedOutput(operation);
  if (line == kAnyLine) output = std::regex_replace(output, std::regex("(Line Number ---- : )\\d+"), "$010");
  EXPECT_EQ(output, report.GetDescription());
}

// A report at a level of the log that throws leaves the object's lock free.
template <class Operation>
void ExpectThrownReport(tavObject& object, Operation operation) {
  tavError::Level = tavLogLevel_Throw;
  EXPECT_THROW(operation(), tavError);
  tavError::Level = tavLogLevel_Console;
  EXPECT_TRUE(LockOf::IsFree(object));
}
