#include "dro_error.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "dro_time.h"
#include "shared/vcalendar.h"
#include "shared/verrorlog.h"

namespace dro {
namespace {

constexpr const char* kNoText = "droError description not found. Update droErrorToString function.!";

// In the order of the codes.
constexpr std::array kErrorTexts = {
    "The operation completed succefully.",
    kNoText,  // a warning: its record needs no text of the code
    "The operation failed.",
    "Standard Library droError.",
    "Unknown error.",
    "Invalid Pointer.",
    "Out of memory.",
    "Invalid Argument.",
    "Out of Range.",
    "Division By Zero.",
    "Network communication error.",
};

// The console's number for a colour.
int ColourOf(droEError code) {
  constexpr int white = 37;
  constexpr int yellow = 33;
  constexpr int red = 31;
  if (code == droError_NoError) return white;
  return code == droError_Warning ? yellow : red;
}

constexpr char kNumberFormat[] = "droError Number : %i\n";

const char* TextOf(droEError code) {
  const auto index = static_cast<std::uint32_t>(code);
  return index < kErrorTexts.size() ? kErrorTexts[index] : kNoText;
}

// Prints the record of a log file that cannot be cut, without memory, and returns its code.
droEError PrintFault(vlib::LogFileFault fault) {
  const auto record = [](droEError code, const char* message, vlib::Place place = {}) {
    std::printf("[%s]\n", vlib::LocalTimeText(droTime::GetCurrentTime()).data());
    std::printf(kNumberFormat, static_cast<int>(code));
    std::puts(TextOf(code));
    vlib::PrintMessageWithPlace(message, "dro_error", "droErrorLog", place.line);
    return code;
  };
  switch (fault) {
    case vlib::LogFileFault::OutOfMemory:
      return record(droError_OutOfMemory, "Can not allocate buffer for to rebuild log error file.");
    case vlib::LogFileFault::CannotWrite:
      return record(droError_InvalidPointer, "Can not write for to rebuild log error file.");
    default:
      return record(droError_InvalidPointer, "Can not rebuild log error file.");
  }
}

static_assert(unsigned{droLogLevel_Console} == vlib::LogLevel_Console);
static_assert(unsigned{droLogLevel_File} == vlib::LogLevel_File);
static_assert(unsigned{droLogLevel_Throw} == vlib::LogLevel_Throw);
static_assert(unsigned{droLogLevel_CallBack} == vlib::LogLevel_CallBack);

}  // namespace

// The storage of droError::LogFile.
vlib::LogFileName<droString> logFile asm("_ZN3dro8droError7LogFileE") = "dro_system.log";

unsigned int droError::Level = droLogLevel_Console;
unsigned int droError::LogFileSize = 512000;
void (*droError::ShowErrorCallBack)(const droError&) = nullptr;
unsigned int droError::_current_log_filesize = 0;

droError::droError(const droEError& code, const droString& message) : m_code(code) {
  m_description.append("[").append(droTime::GetDateTime()).append("]\n");
  if (code == droError_NoError) {
    m_description.append("Info : ");
  } else if (code == droError_Warning) {
    m_description.append("Warning : ");
  } else {
    m_description.AddFormat(128, kNumberFormat, static_cast<int>(code)).append(TextOf(code)).append("\n");
  }
  m_description.append(message).append("\n");
}

droString droErrorToString(const droEError& code) { return TextOf(code); }

droString droErrorStdToString(int error) {
  if (error == -1) error = errno;
  if (error == 0) return "0 No error";
  char buffer[256];
  return droString::FromInt(error).append(" ").append(strerror_r(error, buffer, sizeof buffer));
}

droString droErrorWindowsToString(int /*error*/) { return {}; }

droError droBuildErrorLocation(droEError code, const droString& message, const char* file,
                               const char* function, int line) {
  if (code != droError_NoError && code != droError_Warning) {
    return {code, vlib::MessageWithPlace(message, file, function, line)};
  }
  droString text = message;
  return {code, text.AddFormat(256, "[FILE:%s][FUNCTION:%s][LINE:%i]", file, function, line)};
}

droEError droErrorLog(const droError& error) {
  const droString& description = error.m_description;
  const auto print = [&] {
    std::printf("\033[%dm", ColourOf(error.GetError()));
    std::fputs(description.c_str(), stdout);
    std::fputs("\033[0m", stdout);
  };
  // The file's entry ends at a zero byte, as that of fputs does; the SDK writes its descriptions whole.
  return vlib::LogRecord(error, {description.c_str(), description.size()}, droError::_current_log_filesize,
                         print, PrintFault);
}

droEError droReporter::operator()(droEError code, const droString& message, vlib::Place place) const {
  return droErrorLog(droBuildErrorLocation(code, message, m_source, place.function, place.line));
}

droEError droReporter::System(droEError code, const droString& message, int systemError,
                              vlib::Place place) const {
  return (*this)(code, message + "\nStd Error " + droErrorStdToString(systemError), place);
}

}  // namespace dro
