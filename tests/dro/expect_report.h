#pragma once

#include <gmock/gmock.h>

#include "captured_output.h"

// Runs an operation of the library while errno is ENOENT: it must give `result` and report `message`.
template <class Operation>
void ExpectReport(long result, const std::string& message, Operation operation) {
  const auto run = [&] {
    errno = ENOENT;
    EXPECT_EQ(static_cast<long>(operation()), result) << message;
  };
  EXPECT_THAT(CapturedOutput(run), testing::HasSubstr("Custom Message - : " + message + "\n"));
}

// Checks that the action reports a failure of this code from `function`; the message is a regular expression.
template <class Action>
void ExpectFailure(int code, const std::string& function, const std::string& message, Action action) {
  const std::string regex = "droError Number : " + std::to_string(code) +
                            "\n.*Function ------- : " + function + "\n.*Custom Message - : " + message + "\n";
  EXPECT_THAT(CapturedOutput(action), testing::ContainsRegex(regex));
}
