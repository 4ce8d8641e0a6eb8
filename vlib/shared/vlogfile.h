#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// The size-limited file that both error logs, tavErrorLog and droErrorLog, append to.
namespace vlib {

// Why a log file could not be cut to its last half.
enum class LogFileFault { None, CannotRead, OutOfMemory, CannotWrite };

// What a record adds to a log file.
struct LogEntry {
  // What is written.
  std::string_view text;
  // What is counted, in bytes.
  std::size_t length;
};

// Appends `entry` to the file at `path` and adds its length to `io_written`, which therefore knows only what
// this process wrote. When that count passes `limit` (0: no limit), the file is first cut to its last limit /
// 2 bytes and the count set to that; when half the limit is 16000 bytes or less, the file stays as it is.
//
// A fault while cutting drops the entry and is returned, for the caller to report in its own words. A file
// that cannot be opened for appending loses the entry silently: a program must not fail because its log does.
//
// Threads may append at the same time, in any order. The count is a plain number for the callers' sake; here
// it is read and written atomically.
LogFileFault AppendToLogFile(const std::string& path, const LogEntry& entry, unsigned int limit,
                             unsigned int& io_written);

}  // namespace vlib
