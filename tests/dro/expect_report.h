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
