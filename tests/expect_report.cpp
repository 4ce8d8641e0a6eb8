#include "expect_report.h"

#include <array>
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

// What was printed at a place where one record is as good as another: a time, or an unpublished line.
std::string Printed(const std::string& printed, std::size_t position, const char* characters) {
  if (position >= printed.size()) return "";
  return printed.substr(position, printed.find_first_not_of(characters, position) - position);
}

std::string TimePrinted(const std::string& printed, std::size_t position) {
  const std::string time = Printed(printed, position, "ADFJMNOSTWabcdeghilnoprtuvy 0123456789:");
  return time.size() == std::strlen("Tue Apr 22 07:35:02 2014") ? time : "the time";
}

std::string LineOf(const Report& report, const std::string& printed, std::size_t position) {
  if (report.line) return std::to_string(*report.line);
  const std::string line = Printed(printed, position, "0123456789");
  return line.empty() || line == "0" ? "a line" : line;
}

// Appends the record to `text`, which so far equals what was printed, or differs from it anyway.
void Append(std::string& text, const Report& report, const std::string& printed) {
  const bool isWarning = IsFromDro(report) && report.code == kDroWarning;
  if (IsFromDro(report)) {
    if (HasColour(report)) text += isWarning ? "\x1B[33m" : "\x1B[31m";
    text += "[";
    text += TimePrinted(printed, text.size()) + "]\n";
  }
  if (isWarning) {
    text += "Warning : " + report.message + "[FILE:" + report.source + "][FUNCTION:" + report.function +
            "][LINE:";
    text += LineOf(report, printed, text.size()) + "]\n";
  } else {
    text += IsFromDro(report) ? "droError" : "tavError";
    text += " Number : " + std::to_string(report.code) + "\n" + TextOf(report) + "\n";
    text += "File ----------- : " + report.source + "\n";
    text += "Function ------- : " + report.function + "\n";
    text += "Line Number ---- : ";
    text += LineOf(report, printed, text.size()) + "\n";
    text += "Custom Message - : " + report.message + "\n";
  }
  if (IsFromDro(report) && HasColour(report)) text += "\x1B[0m";
}

}  // namespace

std::string WithSystemError(const std::string& message, int error) {
  return message + "\nStd Error " + std::to_string(error) + " " + std::strerror(error);
}

void ExpectReports(const std::string& printed, const std::vector<Report>& reports) {
  std::string expected;
  for (const Report& report : reports) Append(expected, report, printed);
  EXPECT_EQ(printed, expected);
}
