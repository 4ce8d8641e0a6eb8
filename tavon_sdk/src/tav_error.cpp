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

constexpr char kNumberFormat[] = "tavError Number : %i\n";

const char* TextOf(tavEError code) {
  const auto index = static_cast<std::uint32_t>(code);
  return index < kErrorTexts.size() ? kErrorTexts[index]
                                    : "tavError description not found. Update tavErrorToString function.!";
}

// Prints the record of a log file that cannot be cut, without memory, and returns its code.
tavEError PrintFault(vlib::LogFileFault fault) {
  const auto record = [](tavEError code, const char* message, int line) {
    std::printf(kNumberFormat, static_cast<int>(code));
    std::puts(TextOf(code));
    vlib::PrintMessageWithPlace(message, "tav_error", "tavErrorLog", line);
    return code;
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

static_assert(unsigned{tavLogLevel_Console} == vlib::LogLevel_Console);
static_assert(unsigned{tavLogLevel_File} == vlib::LogLevel_File);
static_assert(unsigned{tavLogLevel_Throw} == vlib::LogLevel_Throw);
static_assert(unsigned{tavLogLevel_CallBack} == vlib::LogLevel_CallBack);

}  // namespace

// The storage of tavError::LogFile.
vlib::LogFileName<tavString> logFile asm("_ZN5tavon8tavError7LogFileE") = "tav_system.log";

unsigned int tavError::Level = tavLogLevel_Console;
unsigned int tavError::LogFileSize = 512000;
unsigned int tavError::CurrentLogFileSize = 0;
void (*tavError::ShowErrorCallBack)(const tavError&) = nullptr;

tavError::tavError(const tavEError& code, const tavString& message) : m_code(code) {
  if (code != tavError_NoError) {
    m_description.AddFormat(128, kNumberFormat, static_cast<int>(code)).append(TextOf(code)).append("\n");
  } else {
    m_description.append("Info Message : ");
  }
  m_description.append(message).append("\n");
}

bool tavError::DeleteLog() { return VUtility::DelFile(LogFile); }

tavString tavErrorToString(const tavEError& code) { return TextOf(code); }

tavString tavErrorWindowsToString(int /*code*/) { return {}; }

tavError tavBuildErrorLocation(tavEError code, const tavString& message, const char* file,
                               const char* function, int line) {
  if (code == tavError_NoError) return {code, message};
  return {code, vlib::MessageWithPlace(message, file, function, line)};
}

tavEError tavErrorLog(const tavError& error) {
  const tavString& description = error.m_description;
  const auto print = [&] { std::fputs(description.c_str(), stdout); };
  return vlib::LogRecord(error, {description, description.size()}, tavError::CurrentLogFileSize, print,
                         PrintFault);
}

tavEError tavReporter::operator()(tavEError code, const tavString& message, vlib::Place place) const {
  return tavErrorLog(tavBuildErrorLocation(code, message, m_source, place.function, place.line));
}

}  // namespace tavon
