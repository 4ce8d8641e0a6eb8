#pragma once

#include <cstdio>
#include <string>
#include <string_view>

#include "shared/vlogfile.h"

// What the two error logs, tavErrorLog and droErrorLog, do alike.
//
// There is no lock: any thread may report, and records of several threads may interleave. The settings of a
// log are made at start-up, before other threads report.
namespace vlib {

// What a log does with a record: the values that make up its Level.
enum LogLevel : unsigned int {
  LogLevel_Console = 1,
  LogLevel_File = 2,
  LogLevel_Throw = 4,
  LogLevel_CallBack = 8,
};

// A message preceded by the place of the failure: lines for the source file (its name without
// folder and extension), the function and the line number, and then the message without a line feed at its
// end.
std::string MessageWithPlace(const std::string& message, const char* file, const char* function, int line);

// Does with a record what the level of its log asks for, in this order: prints it with print(), appends
// `text` to the log file, and throws a copy of it or else passes it to the call-back. Returns the code of the
// record.
//
// A log file that cannot be cut ends this early: faultRecord(fault) is printed in place of the record,
// whatever the level, and its code returned. It is not logged in turn, as the file would only fail again.
//
// `Record` is the error class of the log, with its settings as static members; `io_written` is the member
// that counts the bytes written.
template <class Record, class Print, class FaultRecord>
auto LogRecord(const Record& record, std::string_view text, unsigned int& io_written, Print print,
               FaultRecord faultRecord) {
  const unsigned int level = Record::Level;
  if ((level & LogLevel_Console) != 0) print();
  if ((level & LogLevel_File) != 0) {
    const LogFileFault fault = AppendToLogFile(Record::LogFile, text, Record::LogFileSize, io_written);
    if (fault != LogFileFault::None) {
      const Record failure = faultRecord(fault);
      std::printf("%s", failure.GetDescription().c_str());
      return failure.GetError();
    }
  }
  if ((level & LogLevel_Throw) != 0) throw Record(record);
  if ((level & LogLevel_CallBack) != 0 && Record::ShowErrorCallBack != nullptr) {
    Record::ShowErrorCallBack(record);
  }
  return record.GetError();
}

}  // namespace vlib
