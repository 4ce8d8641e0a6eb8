#pragma once

#include <atomic>
#include <string>
#include <string_view>

// The size-limited file that both error logs append to. Internal to the libraries.
namespace vlib {

// Why a log file could not be cut to its last half.
enum class LogFileFault { None, CannotRead, OutOfMemory, CannotWrite };

// Appends `entry` to the file at `path` and counts its bytes in `written`, which thus knows only what this
// process wrote. When the count passes `limit` (0: no limit), the file is first cut to its last limit / 2
// bytes and the count set to that; a half of 16000 bytes or less leaves the file as it is.
//
// A fault while cutting drops the entry and is returned, for the caller to report in its own words. A file
// that cannot be opened for appending loses the entry without a word: a program must not fail because its log
// does. Threads may append at the same time; entries then come in any order.
LogFileFault AppendToLogFile(const std::string& path, std::string_view entry, unsigned int limit,
                             std::atomic<unsigned int>& written);

}  // namespace vlib
