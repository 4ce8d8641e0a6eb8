#include "shared/vlogfile.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <new>

#include "shared/vfile.h"

namespace vlib {
namespace {

// Keeping less than this is not worth rewriting the file: it is left to grow.
constexpr unsigned int kSmallestHalf = 16000;

LogFileFault CutToLastHalf(const std::string& path, unsigned int half,
                           std::atomic_ref<unsigned int> written) {
  File source = OpenFile(path.c_str(), "rb");
  if (!source) return LogFileFault::CannotRead;
  const off_t size = SizeOf(source.get());
  if (size < 0) return LogFileFault::CannotRead;
  if (static_cast<std::uintmax_t>(size) > PTRDIFF_MAX) return LogFileFault::OutOfMemory;
  const std::unique_ptr<char[]> contents(new (std::nothrow) char[static_cast<std::size_t>(size)]);
  if (!contents) return LogFileFault::OutOfMemory;
  // Checked before reading, since such a file is past its limit at every entry.
  if (half <= kSmallestHalf) return LogFileFault::None;
  const std::size_t length = std::fread(contents.get(), 1, static_cast<std::size_t>(size), source.get());
  source.reset();

  const File target = OpenFile(path.c_str(), "wb");
  if (!target) return LogFileFault::CannotWrite;
  written = half;
  // Another program may have emptied the file, so that it is shorter than the count says: all of it is kept.
  const std::size_t kept = std::min<std::size_t>(length, half);
  std::fwrite(contents.get() + (length - kept), 1, kept, target.get());
  return LogFileFault::None;
}

}  // namespace

LogFileFault AppendToLogFile(const std::string& path, const LogEntry& entry, unsigned int limit,
                             unsigned int& io_written) {
  const std::atomic_ref written(io_written);
  const auto length = static_cast<unsigned int>(entry.length);
  const unsigned int total = written.fetch_add(length) + length;
  if (limit != 0 && total > limit) {
    const LogFileFault fault = CutToLastHalf(path, limit / 2, written);
    if (fault != LogFileFault::None) return fault;
  }
  if (const File file = OpenFile(path.c_str(), "a+")) {
    std::fwrite(entry.text.data(), 1, entry.text.size(), file.get());
  }
  return LogFileFault::None;
}

}  // namespace vlib
