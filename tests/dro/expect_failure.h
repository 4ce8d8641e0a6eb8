#pragma once

#include <gmock/gmock.h>

#include "captured_output.h"

// Checks that the action reports a failure of this code from `function`; the message is a regular expression.
template <class Action>
void ExpectFailure(int code, const std::string& function, const std::string& message, Action action) {
  const std::string regex = "droError Number : " + std::to_string(code) +
                            "\n.*Function ------- : " + function + "\n.*Custom Message - : " + message + "\n";
  EXPECT_THAT(CapturedOutput(action), testing::ContainsRegex(regex));
}
