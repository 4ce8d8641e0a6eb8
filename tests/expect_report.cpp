#include "expect_report.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <regex>

namespace {

// What both libraries call their errors, in the order of their codes.
constexpr std::array kTexts = {"The operation failed.", "Standard Library ", "Unknown error.",
                               "Invalid Pointer.",      "Out of memory.",    "Invalid Argument.",
                               "Out of Range.",         "Division By Zero.", "Network communication error."};
constexpr int kDroWarning = 1;

// The library prints them in colour, but for those of the log itself.
bool HasColour(const Report& report) { return report.function != "droErrorLog"; }

bool IsFromDro(const Report& report) { return report.source.starts_with("dro_"); }

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
  const bool isWarning = IsFromDro(report) && report.code == kDroWarning;
  std::string text;
  if (IsFromDro(report)) {
    if (HasColour(report)) text += isWarning ? "\x1B[33m" : "\x1B[31m";
    text += std::string(kAnyTime) + "\n";
  }
  if (isWarning) {
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

// The records in what was printed, each from its beginning to that of the next.
std::vector<std::string> RecordsIn(const std::string& printed) {
  const std::regex beginning("tavError Number : |(\x1B\\[3[0-9]m)?\\[[A-Z][a-z]{2} [A-Z][a-z]{2} ");
  std::vector<std::string> records;
  std::size_t start = 0;
  for (std::sregex_iterator found(printed.begin(), printed.end(), beginning), end; found != end; ++found) {
    const auto next = static_cast<std::size_t>(found->position());
    if (next != start) records.push_back(printed.substr(start, next - start));
    start = next;
  }
  if (start != printed.size()) records.push_back(printed.substr(start));
  return records;
}

// The printed record without what TextOf leaves open.
std::string Comparable(const std::string& record, const Report& report) {
  const std::regex time("\\[[A-Z][a-z]{2} [A-Z][a-z]{2} [ 1-3][0-9] [0-9:]{8} [0-9]{4}\\]");
  const std::regex line("(\nLine Number ---- : |\\[LINE:)[1-9][0-9]*");
  const std::string timeless = std::regex_replace(record, time, kAnyTime);
  return report.line ? timeless : std::regex_replace(timeless, line, std::string("$1") + kAnyLine);
}

}  // namespace

std::string WithSystemError(const std::string& message, int error) {
  return message + "\nStd Error " + std::to_string(error) + " " + std::strerror(error);
}

void ExpectReports(const std::string& printed, const std::vector<Report>& reports) {
  const std::vector<std::string> records = RecordsIn(printed);
  EXPECT_EQ(records.size(), reports.size()) << printed;
  for (std::size_t i = 0; i < std::min(records.size(), reports.size()); ++i) {
    EXPECT_EQ(Comparable(records[i], reports[i]), TextOf(reports[i])) << "record " << i;
  }
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
