#pragma once

#include <cstdint>

#include "dro_string.h"

// How the OS library reports failures, warnings and notices: a record is built where the failure is found and
// handed to droErrorLog, which prints, writes, throws or passes it on as droError::Level says, and returns
// its code. droReporter does both in one line.
//
// Any thread may report at any time; what several threads print or write comes in any order. The settings
// are made at start-up, before other threads report.
namespace dro {

enum droEError : std::int32_t {
  droError_NoError = 0,  // an information notice
  droError_Warning = 1,
  droError_OperationFailed = 2,
  droError_StandardLibrary = 3,
  droError_Unknown = 4,
  droError_InvalidPointer = 5,
  droError_OutOfMemory = 6,
  droError_InvalidArgument = 7,
  droError_OutOfRange = 8,
  droError_DivisionByZero = 9,
  droError_Network = 10,
};

// What droErrorLog does with a record: values to add up in droError::Level.
enum droELogLevel : unsigned int {
  droLogLevel_Console = 1,   // print it in colour on standard output
  droLogLevel_File = 2,      // append it to droError::LogFile
  droLogLevel_Throw = 4,     // throw a copy of it
  droLogLevel_CallBack = 8,  // call droError::ShowErrorCallBack; not looked at when the record is thrown
};

// One report: its code and the complete text that is printed and written.
class droError {
 public:
  // Heads the message with the local date and time, and with the code and its text, or "Info : " (code 0) or
  // "Warning : " (code 1).
  droError(const droEError& code, const droString& message);

  droEError GetError() const { return m_code; }
  droString GetDescription() const { return m_description; }

  // Deletes the log file. 0, or the code of the report when that fails.
  static droEError DeleteLog();

  // droELogLevel values, added; droLogLevel_Console unless set.
  static unsigned int Level;
  // Size in bytes past which the log file is cut to its last half (see vlib::AppendToLogFile); 0 is no limit.
  static unsigned int LogFileSize;
  // Path of the log file, "dro_system.log" unless set.
  static droString LogFile;
  // Receives each record when the level asks for it; may be null.
  static void (*ShowErrorCallBack)(const droError&);
  // Bytes that this process has appended to the log file or kept when it was cut last, not the file's real
  // size.
  static unsigned int _current_log_filesize;

 private:
  droEError m_code;
  droString m_description;
};

// The text of a code. Codes 0 and 1 never appear with a text in a record: 1 has none of its own.
droString droErrorToString(const droEError& code);

// Number and text of a system error, such as "2 No such file or directory". -1 stands for the current errno,
// and no error gives "0 No error".
droString droErrorStdToString(int error);

// Empty: this platform has no errors of that kind.
droString droErrorWindowsToString(int error);

// A record whose message tells the place of the failure: source file (its name without folder and extension),
// function and line.
droError droBuildErrorLocation(droEError code, const droString& message, const char* file,
                               const char* function, int line);

// Prints, writes, throws or passes on a record, and returns its code. When the log file has grown past its
// limit and can not be cut, that is printed instead, whatever the level, and its code (5 or 6) returned.
droEError droErrorLog(const droError& error);

// Reports the failures of one source file: constexpr droReporter kReport{"dro_string"};
//
// Both calls return what droErrorLog returns. Line and function are those of the call unless given. A line
// that is given is a published one: people search their logs for it, so it is part of the record's identity
// and not a position in today's source. In a lambda the function must be given, as it would be called
// "operator()".
class droReporter {
 public:
  // `source` is the file's name without folder and extension.
  constexpr explicit droReporter(const char* source) : m_source(source) {}

  droEError operator()(droEError code, const droString& message, int line = __builtin_LINE(),
                       const char* function = __builtin_FUNCTION()) const;

  // The same for a failed system call: number and text of `systemError` (an errno) follow the message.
  droEError System(droEError code, const droString& message, int systemError, int line = __builtin_LINE(),
                   const char* function = __builtin_FUNCTION()) const;

 private:
  const char* m_source;
};

}  // namespace dro
