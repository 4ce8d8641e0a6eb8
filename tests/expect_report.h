#pragma once

#include <gtest/gtest.h>

#include <cerrno>
#include <functional>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

#include "captured_output.h"

// The record of a failure, as it stands on the console. The source tells which library it comes from:
// "dro_..." is the OS library, whose records have a time and a colour, and anything else the SDK.
struct Report {
  int code = 0;
  std::string source;    // the source file that reports, without folder and extension
  std::string function;  // of which only the name is told
  std::string message;
  // Where a line is published it belongs to the record. Without one here, any line will do.
  std::optional<int> line = std::nullopt;
};

// Makes the reports of one source file that have one code:
//
//   constexpr ReportsOf kFailure{"dro_osfile", 2};
//   ... kFailure("Open", "Invalid file") ...
struct ReportsOf {
  const char* source;
  int code;
  Report operator()(const char* function, const std::string& message) const {
    return {.code = code, .source = source, .function = function, .message = message};
  }
};

// A message with the system error that follows it in records of failed system calls.
std::string WithSystemError(const std::string& message, int error);

// Expects that exactly these records were printed, each whole, one after the other.
void ExpectReports(const std::string& printed, const std::vector<Report>& reports);

// Expects that an operation gives `result` and prints exactly these records:
//
//   ExpectReports({{.code = 7, .source = "dro_string", .function = "FromUTF8", .message = "pBuffer == 0"}},
//                 L"", [] { return droString::FromUTF8(nullptr); });
template <class Result, class Operation>
void ExpectReports(const std::vector<Report>& reports, const Result& result, Operation operation) {
  std::optional<std::invoke_result_t<Operation>> given;
  ExpectReports(CapturedOutput([&] { given.emplace(operation()); }), reports);
  EXPECT_EQ(*given, result);
}

// The same for the one record that most failures have.
template <class Result, class Operation>
void ExpectReport(const Report& report, const Result& result, Operation operation) {
  ExpectReports({report}, result, operation);
}

// The same for an operation without a result.
template <class Operation>
void ExpectReport(const Report& report, Operation operation) {
  ExpectReports(CapturedOutput(operation), {report});
}

// errno when a ReportedCall starts: records show it where no call of the system failed.
inline constexpr int kErrorBefore = EINTR;

// A call that causes one record.
struct ReportedCall {
  Report report;
  long result;
  std::function<long()> call;
};

// Expects the record and the result of each call.
void ExpectReportOfEach(const std::vector<ReportedCall>& calls);
