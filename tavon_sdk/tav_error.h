#pragma once

#include <cstdint>

#include "tav_string.h"

// Every failure in the SDK and in the dispatcher is reported here: the failing code builds a record with a
// code and a ready text, hands it to tavErrorLog, and returns the code that the log returns.
//
// The settings are those of the process. They are set at start-up, before other threads run. Any thread may
// report; there is no lock, so records of several threads may interleave.
namespace tavon {

// The codes of failures.
enum tavEError : std::uint32_t {
  tavError_NoError = 0,  // also the code of a mere notice
  tavError_OperationFailed = 1,
  tavError_StandardLibrary = 2,
  tavError_Unknown = 3,
  tavError_InvalidPointer = 4,
  tavError_OutOfMemory = 5,
  tavError_InvalidArgument = 6,
  tavError_OutOfRange = 7,
  tavError_DivisionByZero = 8,
  tavError_NetworkNotReady = 9,
  tavError_SocketsVersion = 10,
  tavError_SocketsInProgress = 11,
  tavError_SocketsTaskLimit = 12,
};

// What tavErrorLog does with a record: values to add up in tavError::Level.
enum tavELogLevel : unsigned int {
  tavLogLevel_Console = 1,   // print the description on standard output
  tavLogLevel_File = 2,      // append it to tavError::LogFile
  tavLogLevel_Throw = 4,     // throw a copy of the record
  tavLogLevel_CallBack = 8,  // call tavError::ShowErrorCallBack; not looked at when the record is thrown
};

// The record of one failure or notice.
class tavError {
 public:
  // Builds the description: "tavError Number : <code>" and the text of the code, each on a line ("Info
  // Message : " when the code is 0), then the message and a line feed.
  tavError(const tavEError& code, const tavString& message);

  // What the record holds.
  tavEError GetError() const { return m_code; }
  tavString GetDescription() const { return m_description; }

  // Deletes the file that LogFile names. True on success.
  static bool DeleteLog();

  // tavELogLevel values, added; tavLogLevel_Console at first.
  static unsigned int Level;
  // Path of the log file; "tav_system.log" at first.
  static tavString LogFile;
  // Size in bytes past which the file is cut to its last half; 0 is no limit. 512000 at first.
  static unsigned int LogFileSize;
  // Bytes that this process has appended to the file or kept when it was cut last, not the file's real size.
  static unsigned int CurrentLogFileSize;
  // Receives each record when the level asks for it; null at first.
  static void (*ShowErrorCallBack)(const tavError&);

 private:
  tavEError m_code;
  tavString m_description;
};

// The text of an error code.
tavString tavErrorToString(const tavEError& code);

// Windows error numbers have no text on this platform: always empty.
tavString tavErrorWindowsToString(int code);

// A record whose message names the place of the failure, four lines: file, function, line, message. A notice
// (code 0) keeps its message as it is.
tavError tavBuildErrorLocation(tavEError code, const tavString& message, const char* file,
                               const char* function, int line);

// Prints, stores, throws or passes on a record, as tavError::Level says, and returns its code. Only a log
// file that cannot be cut gives another one: 4 (not readable, not writable) or 5 (no memory); that failure is
// printed whatever the level, and the record goes no further.
tavEError tavErrorLog(const tavError& error);

// Reports the failures of one source file in one line each:
//
//   constexpr tavReporter kReport{"tav_object"};
//   if (size == 0) return kReport(tavError_InvalidArgument, "size == 0");
//
// Function and line are those of the call. Many records carry a published line instead: people search their
// logs for that number, so it is part of the record's identity and not a position in today's file. Such a
// number is passed; nobody writes any other. A lambda has no name of its own and passes the function, too.
class tavReporter {
 public:
  // `source` is the name of the file, without folder or extension.
  constexpr explicit tavReporter(const char* source) : m_source(source) {}

  // Returns what the log returns, which is `code` unless the log itself fails.
  tavEError operator()(tavEError code, const tavString& message, int line = __builtin_LINE(),
                       const char* function = __builtin_FUNCTION()) const {
    return tavErrorLog(tavBuildErrorLocation(code, message, m_source, function, line));
  }

 private:
  const char* m_source;
};

}  // namespace tavon
