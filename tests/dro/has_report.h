#pragma once

#include <gmock/gmock.h>

#include <string>

// Matches console output with a report made by `function` that ends in `message`.
inline testing::Matcher<std::string> HasReport(const std::string& function, const std::string& message) {
  return testing::AllOf(testing::HasSubstr("Function ------- : " + function + "\n"),
                        testing::HasSubstr("Custom Message - : " + message + "\n"));
}
