#pragma once

#include <cstdint>

#include "dro_string.h"
#include "vplace.h"

// How the OS library reports failures, warnings and notices: a record is built where the failure is found and
// handed to droErrorLog, which prints, writes, throws or passes it on as droError::Level says, and returns
// its code. droReporter does both in one line.
//
// Any thread may report at any time; records of several threads may interleave. Make the settings at
// start-up, before other threads report.
namespace dro {

// The codes of failures.
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

// What droErrorLog does with a record; add up the values in droError::Level.
enum droELogLevel : unsigned int {
  droLogLevel_Console = 1,   // print it in colour on standard output
  droLogLevel_File = 2,      // append it to droError::LogFile
  droLogLevel_Throw = 4,     // throw a copy of it
  droLogLevel_CallBack = 8,  // call droError::ShowErrorCallBack, unless the record is thrown
};

// One report: its code and the complete text that is printed and written.
class droError {
 public:
  // Puts the local date and time before the message, and then the code and its text, "Info : " (code 0) or
  // "Warning : " (code 1).
  droError(const droEError& code, const droString& message);

  // The code, and a copy of the complete text.
  droEError GetError() const { return m_code; }
  droString GetDescription() const { return m_description; }

  // Deletes the log file with droOsUtility::FileDelete and returns its result. Set _current_log_filesize to 0
  // afterwards, see LogFileSize.
  static droEError DeleteLog();

  // droELogLevel values, added; droLogLevel_Console unless set.
  static unsigned int Level;
  // Limit in bytes for what this process writes: when the count passes it, the log file is cut to its last
  // half and the count set to that; 512000 unless set. With a limit below 32002 the file is never cut; 0 is
  // no limit. A file that cannot be cut, for example because it was deleted, gets no further entry until the
  // count is set to 0.
  static unsigned int LogFileSize;
  // Path of the log file; "dro_system.log" unless set. Never destroyed: threads may report until the program
  // has ended.
  static droString LogFile;
  // Receives each record when the level asks for it; null unless set.
  static void (*ShowErrorCallBack)(const droError&);
  // Bytes that this process has appended to the log file or kept when it was cut last, not the file's real
  // size.
  static unsigned int _current_log_filesize;

 private:
  friend droEError droErrorLog(const droError& error);

  droEError m_code;
  droString m_description;
};

// The text of a code. Records with code 0 or 1 show no such text, which is why code 1 has none of its own.
droString droErrorToString(const droEError& code);

// Number and text of a system error, such as "2 No such file or directory"; 0 gives "0 No error". -1 stands
// for the current errno.
droString droErrorStdToString(int error);

// Always empty: this platform has no errors of that kind.
droString droErrorWindowsToString(int error);

// A record whose message includes the place of the failure: source file (its name without folder and
// extension), function and line.
droError droBuildErrorLocation(droEError code, const droString& message, const char* file,
                               const char* function, int line);

// Prints, writes, throws or passes on a record, and returns its code. When the log file must be cut and
// cannot be, that failure is printed, whatever the level, its code (5 or 6) is returned, and the record goes
// no further. Logging needs no memory unless the record is written or thrown.
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

  // Builds the record of a failure and hands it to droErrorLog.
  droEError operator()(droEError code, const droString& message, vlib::Place place = {}) const;

  // The same for a failed system call: number and text of `systemError` (an errno) follow the message.
  droEError System(droEError code, const droString& message, int systemError, vlib::Place place = {}) const;

 private:
  const char* m_source;
};

}  // namespace dro
