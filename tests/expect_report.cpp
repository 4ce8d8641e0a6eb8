#include "expect_report.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <ctime>

namespace {

// What both libraries call their errors, in the order of their codes.
constexpr std::array kTexts = {"The operation failed.", "Standard Library ", "Unknown error.",
                               "Invalid Pointer.",      "Out of memory.",    "Invalid Argument.",
                               "Out of Range.",         "Division By Zero.", "Network communication error."};
constexpr int kDroWarning = 1;

// The library prints them in colour, but for those of the log itself.
bool HasColour(const Report& report) { return report.function != "droErrorLog"; }

bool IsFromDro(const Report& report) { return report.source.starts_with("dro_"); }

bool IsWarning(const Report& report) { return IsFromDro(report) && report.code == kDroWarning; }

std::string TextOfCode(const Report& report) {
  // Code 1 of the OS library is a warning, which has no text: its failures begin with 2.
  const int first = IsFromDro(report) ? 2 : 1;
  const std::string text = kTexts.at(static_cast<std::size_t>(report.code - first));
  return text.back() == ' ' ? text + (IsFromDro(report) ? "droError." : "tavError.") : text;
}

constexpr const char* kAnyTime = "[TIME]";
constexpr const char* kAnyLine = "LINE";

// The record as it is printed, but for the time and for a line that is not published.
std::string TextOf(const Report& report) {
  const std::string line = report.line ? std::to_string(*report.line) : kAnyLine;
  std::string text;
  if (IsFromDro(report)) {
    if (HasColour(report)) text += IsWarning(report) ? "\x1B[33m" : "\x1B[31m";
    text += std::string(kAnyTime) + "\n";
  }
  if (IsWarning(report)) {
    text += "Warning : " + report.message + "[FILE:" + report.source + "][FUNCTION:" + report.function +
            "][LINE:" + line + "]\n";
  } else {
    text += IsFromDro(report) ? "droError" : "tavError";
    text += " Number : " + std::to_string(report.code) + "\n" + TextOfCode(report) +
            "\nFile ----------- : " + report.source + "\nFunction ------- : " + report.function +
            "\nLine Number ---- : " + line + "\nCustom Message - : " + report.message + "\n";
  }
  if (IsFromDro(report) && HasColour(report)) text += "\x1B[0m";
  return text;
}

// What was printed, without what TextOf leaves open.
std::string Comparable(std::string printed, const std::vector<Report>& reports) {
  for (std::size_t at = printed.find('['); at != std::string::npos; at = printed.find('[', at + 1)) {
    std::tm time{};
    const char* const behind = strptime(&printed[at], "[%a %b %e %H:%M:%S %Y]", &time);
    if (behind != nullptr) printed.replace(at, static_cast<std::size_t>(behind - &printed[at]), kAnyTime);
  }
  std::size_t line = 0;
  for (const Report& report : reports) {
    const std::string label = IsWarning(report) ? "[LINE:" : "\nLine Number ---- : ";
    line = printed.find(label, line);
    if (line == std::string::npos) break;
    line += label.size();
    const std::size_t end = printed.find_first_not_of("0123456789", line);
    const bool isNumber = end != line && printed[line] != '0';
    if (isNumber && !report.line) printed.replace(line, end - line, kAnyLine);
  }
  return printed;
}

}  // namespace

std::string WithSystemError(const std::string& message, int error) {
  return message + "\nStd Error " + std::to_string(error) + " " + std::strerror(error);
}

void ExpectReports(const std::string& printed, const std::vector<Report>& reports) {
  std::string expected;
  for (const Report& report : reports) expected += TextOf(report);
  EXPECT_EQ(Comparable(printed, reports), expected);
}

void ExpectReportOfEach(const std::vector<ReportedCall>& calls) {
  for (const ReportedCall& reported : calls) {
    SCOPED_TRACE(reported.report.function + ": " + reported.report.message);
    ExpectReport(reported.report, reported.result, [&] {
      errno = kErrorBefore;
      return reported.call();
    });
  }
}
