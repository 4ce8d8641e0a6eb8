#include "tav_error.h"

#include <array>
#include <cstdio>

#include "vlogfile.h"
#include "vutility.h"

namespace tavon {
namespace {

constexpr const char* kSource = "tav_error";

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

// A log that cannot be cut speaks on the console only: it could not store a record of its own either.
tavEError PrintLogFault(tavEError code, const char* message, int line) {
  std::printf("%s",
              tavBuildErrorLocation(code, message, kSource, "tavErrorLog", line).GetDescription().c_str());
  return code;
}

// Appends to the log file. Anything but tavError_NoError means that the file could not be cut.
tavEError Store(const tavString& description) {
  switch (vlib::AppendToLogFile(tavError::LogFile, description, tavError::LogFileSize,
                                tavError::CurrentLogFileSize)) {
    case vlib::LogFileFault::None:
      break;
    case vlib::LogFileFault::CannotRead:
      return PrintLogFault(tavError_InvalidPointer, "Can not rebuild log error file.", 206);
    case vlib::LogFileFault::OutOfMemory:
      return PrintLogFault(tavError_OutOfMemory, "Can not allocate buffer for to rebuild log error file.",
                           182);
    case vlib::LogFileFault::CannotWrite:
      return PrintLogFault(tavError_InvalidPointer, "Can not write for to rebuild log error file.", 200);
  }
  return tavError_NoError;
}

}  // namespace

unsigned int tavError::Level = tavLogLevel_Console;
tavString tavError::LogFile = "tav_system.log";
unsigned int tavError::LogFileSize = 512000;
std::atomic<unsigned int> tavError::CurrentLogFileSize = 0;
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
  tavString text;
  text.append("File ----------- : ").append(file).append("\n");
  text.append("Function ------- : ").append(function).append("\n");
  text.append("Line Number ---- : ");
  text.AddFormat(64, "%i\n", line);
  text.append("Custom Message - : ").append(message);
  return {code, text};
}

tavEError tavErrorLog(const tavError& error) {
  const unsigned int level = tavError::Level;
  const tavString description = error.GetDescription();

  if ((level & tavLogLevel_Console) != 0) std::printf("%s", description.c_str());
  if ((level & tavLogLevel_File) != 0) {
    const tavEError fault = Store(description);
    if (fault != tavError_NoError) return fault;
  }
  if ((level & tavLogLevel_Throw) != 0) throw tavError(error);
  if ((level & tavLogLevel_CallBack) != 0 && tavError::ShowErrorCallBack != nullptr) {
    tavError::ShowErrorCallBack(error);
  }
  return error.GetError();
}

}  // namespace tavon
