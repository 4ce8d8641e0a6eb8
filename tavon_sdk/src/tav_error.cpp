#include "tav_error.h"

#include <array>
#include <cstdio>

#include "shared/verrorlog.h"
#include "vutility.h"

namespace tavon {
namespace {

// In the order of the codes. The spelling is known to those who search their logs for it.
constexpr std::array kErrorTexts = {
    "The operation completed succefully.",
    "The operation failed.",
    "Standard Library tavError.",
    "Unknown error.",
    "Invalid Pointer.",
    "Out of memory.",
    "Invalid Argument.",
    "Out of Range.",
    "Division By Zero.",
    "The underlying network subsystem is not ready for network communication.",
    "The version of Windows Sockets support requested is not provided by this particular Windows Sockets "
    "implementation.",
    "A blocking Windows Sockets 1.1 operation is in progress.",
    "Limit on the number of tasks supported by the Windows Sockets implementation has been reached.",
};

// The record of a log file that cannot be cut.
tavError FaultRecord(vlib::LogFileFault fault) {
  const auto record = [](tavEError code, const char* message, int line) {
    return tavBuildErrorLocation(code, message, "tav_error", "tavErrorLog", line);
  };
  switch (fault) {
    case vlib::LogFileFault::OutOfMemory:
      return record(tavError_OutOfMemory, "Can not allocate buffer for to rebuild log error file.", 182);
    case vlib::LogFileFault::CannotWrite:
      return record(tavError_InvalidPointer, "Can not write for to rebuild log error file.", 200);
    default:
      return record(tavError_InvalidPointer, "Can not rebuild log error file.", 206);
  }
}

}  // namespace

unsigned int tavError::Level = tavLogLevel_Console;
tavString tavError::LogFile = "tav_system.log";
unsigned int tavError::LogFileSize = 512000;
unsigned int tavError::CurrentLogFileSize = 0;
void (*tavError::ShowErrorCallBack)(const tavError&) = nullptr;

tavError::tavError(const tavEError& code, const tavString& message) : m_code(code) {
  if (code != tavError_NoError) {
    m_description.AddFormat(128, "tavError Number : %i\n", static_cast<int>(code));
    m_description.append(tavErrorToString(code)).append("\n");
  } else {
    m_description.append("Info Message : ");
  }
  m_description.append(message).append("\n");
}

bool tavError::DeleteLog() { return VUtility::DelFile(LogFile); }

tavString tavErrorToString(const tavEError& code) {
  const auto index = static_cast<std::uint32_t>(code);
  return index < kErrorTexts.size() ? kErrorTexts[index]
                                    : "tavError description not found. Update tavErrorToString function.!";
}

tavString tavErrorWindowsToString(int /*code*/) { return {}; }

tavError tavBuildErrorLocation(tavEError code, const tavString& message, const char* file,
                               const char* function, int line) {
  if (code == tavError_NoError) return {code, message};
  return {code, vlib::MessageWithPlace(message, file, function, line)};
}

tavEError tavErrorLog(const tavError& error) {
  const tavString description = error.GetDescription();
  const auto print = [&] { std::printf("%s", description.c_str()); };
  return vlib::LogRecord(error, description, tavError::CurrentLogFileSize, print, FaultRecord);
}

tavEError tavReporter::operator()(tavEError code, const tavString& message, vlib::Place place) const {
  return tavErrorLog(tavBuildErrorLocation(code, message, m_source, place.function, place.line));
}

}  // namespace tavon
