#include "expect_report.h"

#include <gmock/gmock.h>

#include <array>
#include <cerrno>
#include <cstring>

namespace {

// What both libraries call their errors, in the order of their codes.
constexpr std::array kTexts = {"The operation failed.", "Standard Library ", "Unknown error.",
                               "Invalid Pointer.",      "Out of memory.",    "Invalid Argument.",
                               "Out of Range.",         "Division By Zero.", "Network communication error."};
constexpr int kDroWarning = 1;

// The library prints them in colour, but for those of the log itself.
bool HasColour(const Report& report) { return report.function != "droErrorLog"; }

bool IsFromDro(const Report& report) { return report.source.starts_with("dro_"); }

std::string TextOf(const Report& report) {
  // Code 1 of the OS library is a warning, which has no text: its failures begin with 2.
  const int first = IsFromDro(report) ? 2 : 1;
  const std::string text = kTexts.at(static_cast<std::size_t>(report.code - first));
  return text.back() == ' ' ? text + (IsFromDro(report) ? "droError." : "tavError.") : text;
}

// A regular expression for exactly this text.
std::string Exactly(const std::string& text) {
  std::string pattern;
  for (const char c : text) {
    if (std::strchr("(){}[].*+?^$|\\", c) != nullptr) pattern += '\\';
    pattern += c;
  }
  return pattern;
}

// A regular expression for the record as it is printed.
std::string PatternOf(const Report& report) {
  const std::string line = report.line ? std::to_string(*report.line) : "[1-9][0-9]*";
  const bool isWarning = IsFromDro(report) && report.code == kDroWarning;
  std::string pattern;
  if (IsFromDro(report)) {
    if (HasColour(report)) pattern += isWarning ? "\x1B\\[33m" : "\x1B\\[31m";
    pattern += "\\[[A-Z][a-z]{2} [A-Z][a-z]{2} [ 1-3][0-9] [0-9:]{8} [0-9]{4}\\]\n";
  }
  if (isWarning) {
    pattern += Exactly("Warning : " + report.message + "[FILE:" + report.source +
                       "][FUNCTION:" + report.function + "][LINE:") +
               line + "\\]\n";
  } else {
    pattern += IsFromDro(report) ? "droError" : "tavError";
    pattern += Exactly(" Number : " + std::to_string(report.code) + "\n" + TextOf(report) +
                       "\nFile ----------- : " + report.source + "\nFunction ------- : " + report.function +
                       "\nLine Number ---- : ") +
               line + Exactly("\nCustom Message - : " + report.message + "\n");
  }
  if (IsFromDro(report) && HasColour(report)) pattern += "\x1B\\[0m";
  return pattern;
}

}  // namespace

std::string WithSystemError(const std::string& message, int error) {
  return message + "\nStd Error " + std::to_string(error) + " " + std::strerror(error);
}

void ExpectReports(const std::string& printed, const std::vector<Report>& reports) {
  std::string pattern;
  for (const Report& report : reports) pattern += PatternOf(report);
  EXPECT_THAT(printed, testing::MatchesRegex(pattern));
}

void ExpectReportOfEach(const std::vector<ReportedCall>& calls) {
  for (const ReportedCall& reported : calls) {
    ExpectReport(reported.report, reported.result, [&] {
      errno = EINTR;
      return reported.call();
    });
  }
}
