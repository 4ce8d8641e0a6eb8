#include "expect_report.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <string_view>

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

// What follows the time at the beginning of a text, or null when there is none.
const char* BehindTime(const char* text) {
  std::tm time{};
  return strptime(text, "[%a %b %e %H:%M:%S %Y]", &time);
}

bool BeginsRecord(const std::string& printed, std::size_t at) {
  const std::string_view text = std::string_view(printed).substr(at);
  if (text.starts_with("tavError Number : ") || text.starts_with("\x1B[3")) return true;
  const bool hasColour = at != 0 && printed[at - 1] == 'm';  // with which the record has begun already
  return !hasColour && BehindTime(text.data()) != nullptr;
}

// The records in what was printed, each from its beginning to that of the next.
std::vector<std::string> RecordsIn(const std::string& printed) {
  std::vector<std::string> records;
  for (std::size_t i = 0; i < printed.size(); ++i) {
    if (i == 0 || BeginsRecord(printed, i)) records.emplace_back();
    records.back() += printed[i];
  }
  return records;
}

// The printed record without what TextOf leaves open.
std::string Comparable(std::string record, const Report& report) {
  if (IsFromDro(report)) {
    const std::size_t time = HasColour(report) ? std::strlen("\x1B[31m") : 0;
    const char* const behind = record.size() > time ? BehindTime(&record[time]) : nullptr;
    if (behind != nullptr) record.replace(time, static_cast<std::size_t>(behind - &record[time]), kAnyTime);
  }
  for (const std::string label : {"\nLine Number ---- : ", "[LINE:"}) {
    if (report.line || record.find(label) == std::string::npos) continue;
    const std::size_t line = record.find(label) + label.size();
    const std::size_t end = record.find_first_not_of("0123456789", line);
    if (end != line && record[line] != '0') record.replace(line, end - line, kAnyLine);
  }
  return record;
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
