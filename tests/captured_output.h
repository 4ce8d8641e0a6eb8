#pragma once

#include <gtest/gtest.h>

#include <string>

// What a piece of code printed on standard output. Captures do not nest.
template <class Action>
std::string CapturedOutput(Action action) {
  testing::internal::CaptureStdout();
  action();
  return testing::internal::GetCapturedStdout();
}
