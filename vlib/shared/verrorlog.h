#pragma once

#include <string>

#include "shared/vlogfile.h"

// What the two error logs, tavErrorLog and droErrorLog, have in common.
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

// The storage of a log's file name, which is never destroyed: while the program ends, other threads may still
// report. g++ has no attribute for that, so the log's class only declares its static member, whose symbol is
// then given to an object of this type:
//
//   vlib::LogFileName<tavString> logFile asm("_ZN5tavon8tavError7LogFileE") = "tav_system.log";
//
// That object must not be in an unnamed namespace. Only the member is ever used.
template <class Text>
union LogFileName {
  constexpr LogFileName(const char* name) : text(name) {}
  // NOLINTNEXTLINE(modernize-use-equals-default): it would be deleted, as the text has a destructor
  constexpr ~LogFileName() {}
  Text text;
};

// A message preceded by the place of the failure: lines for the source file (its name without
// folder and extension), the function and the line number, and then the message without a line feed at its
// end.
std::string MessageWithPlace(const std::string& message, const char* file, const char* function, int line);

// Prints the same, with a line feed, on standard output. Needs no memory.
void PrintMessageWithPlace(const char* message, const char* file, const char* function, int line);

// Does with a record what the level of its log asks for, in this order: prints it with print(), appends
// `entry` to the log file, and throws a copy of it or else passes it to the call-back. Returns the code of
// the record. A record that is neither thrown nor written needs no memory.
//
// A log file that cannot be cut ends this early: printFault(fault) prints why, whatever the level, and its
// result is returned. It is not logged in turn, as the file would only fail again. It must need no memory,
// the lack of which may be the fault.
//
// `Record` is the error class of the log, with its settings as static members; `io_written` is the member
// that counts the bytes written.
template <class Record, class Print, class PrintFault>
auto LogRecord(const Record& record, const LogEntry& entry, unsigned int& io_written, Print print,
               PrintFault printFault) {
  const unsigned int level = Record::Level;
  if ((level & LogLevel_Console) != 0) print();
  if ((level & LogLevel_File) != 0) {
    const LogFileFault fault = AppendToLogFile(Record::LogFile, entry, Record::LogFileSize, io_written);
    if (fault != LogFileFault::None) return printFault(fault);
  }
  if ((level & LogLevel_Throw) != 0) throw Record(record);
  if ((level & LogLevel_CallBack) != 0 && Record::ShowErrorCallBack != nullptr) {
    Record::ShowErrorCallBack(record);
  }
  return record.GetError();
}

}  // namespace vlib
