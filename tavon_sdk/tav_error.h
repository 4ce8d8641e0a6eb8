#pragma once

#include <cstdint>

#include "tav_string.h"
#include "vplace.h"

// How the SDK and the dispatcher report failures: the failing code builds a record with a code and a complete
// text, hands it to tavErrorLog, and returns the code that the log returns. tavReporter does both in one
// line.
//
// The settings belong to the process. Set them at start-up, before other threads run. Any thread may report;
// there is no lock, so records of several threads may interleave.
namespace tavon {

// The codes of failures.
enum tavEError : std::uint32_t {
  // Also the code of a notice.
  tavError_NoError = 0,
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

// What tavErrorLog does with a record; tavError::Level is the sum of these values.
enum tavELogLevel : unsigned int {
  // Prints the description on standard output.
  tavLogLevel_Console = 1,
  // Appends it to tavError::LogFile.
  tavLogLevel_File = 2,
  // Throws a copy of the record.
  tavLogLevel_Throw = 4,
  // Calls tavError::ShowErrorCallBack, unless the record is thrown.
  tavLogLevel_CallBack = 8,
};

// The record of one failure or notice.
class tavError {
 public:
  // Builds the description: "tavError Number : <code>" and the text of the code, each on a line ("Info
  // Message : " when the code is 0), then the message and a line feed.
  tavError(const tavEError& code, const tavString& message);

  // The code and the complete text.
  tavEError GetError() const { return m_code; }
  tavString GetDescription() const { return m_description; }

  // Deletes the file that LogFile names. True on success. Set CurrentLogFileSize to 0 afterwards: a log that
  // has reached its size limit cannot be cut while its file is missing, see LogFileSize.
  static bool DeleteLog();

  // tavELogLevel values, added; tavLogLevel_Console unless set.
  static unsigned int Level;
  // Path of the log file; "tav_system.log" unless set. Never destroyed: threads may report until the program
  // has ended.
  static tavString LogFile;
  // Size in bytes past which the file is cut to its last half; 0 means no limit. 512000 unless set. Once the
  // limit is passed, every entry fails with the same record (code 4) while the file is missing, deleted by
  // DeleteLog or by somebody else. The log works again when the program sets CurrentLogFileSize to 0.
  static unsigned int LogFileSize;
  // Bytes that this process has appended to the file or kept when it was cut last, not the file's real size.
  static unsigned int CurrentLogFileSize;
  // Receives each record when the level asks for it; null unless set. It may run while the object that
  // reports holds its lock: set no parameter there that drives another.
  static void (*ShowErrorCallBack)(const tavError&);

 private:
  friend tavEError tavErrorLog(const tavError& error);

  tavEError m_code;
  tavString m_description;
};

// The text of an error code.
tavString tavErrorToString(const tavEError& code);

// Always empty: Windows error numbers have no text on this platform.
tavString tavErrorWindowsToString(int code);

// Builds a record whose message has four lines: file, function, line and message. A notice (code 0) keeps its
// message as it is.
tavError tavBuildErrorLocation(tavEError code, const tavString& message, const char* file,
                               const char* function, int line);

// Prints, stores, throws or passes on a record, as tavError::Level says, and returns its code. Only if the
// log file cannot be cut is the result another code: 4 (not readable or not writable) or 5 (no memory). That
// failure is printed whatever the level, and the record is not thrown or passed on. Logging needs no memory
// unless the record is written or thrown.
tavEError tavErrorLog(const tavError& error);

// Reports the failures of one source file in one line each:
//
//   constexpr tavReporter kReport{"tav_object"};
//   if (size == 0) return kReport(tavError_InvalidArgument, "size == 0");
//   if (data == 0) return kReport(tavError_InvalidArgument, "data == 0", {113});
//
// Function and line are those of the call. Many records carry a published line number instead: people search
// their logs for it, so it is part of the record's identity and not a position in today's file. Pass a line
// only if it is published. In a lambda, pass the function's name as well.
class tavReporter {
 public:
  // `source` is the name of the file, without folder or extension.
  constexpr explicit tavReporter(const char* source) : m_source(source) {}

  // Returns what the log returns, which is `code` unless the log itself fails.
  tavEError operator()(tavEError code, const tavString& message, vlib::Place place = {}) const;

 private:
  const char* m_source;
};

}  // namespace tavon
