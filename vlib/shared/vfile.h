#pragma once

#include <dirent.h>
#include <sys/types.h>

#include <cstdio>
#include <memory>

// Open streams of files and folders that close themselves, for the sources of all libraries.
namespace vlib {

// Closes a stream for its owner.
struct FileCloser {
  // Closes it.
  void operator()(std::FILE* file) const { std::fclose(file); }
};

// A stream that closes itself.
using File = std::unique_ptr<std::FILE, FileCloser>;

// Empty when the file does not open.
inline File OpenFile(const char* path, const char* mode) { return File(std::fopen(path, mode)); }

// Closes a folder for its owner.
struct FolderCloser {
  // Closes it.
  void operator()(DIR* folder) const { closedir(folder); }
};

// A folder that closes itself.
using Folder = std::unique_ptr<DIR, FolderCloser>;

// The size of an open file in bytes; -1 when it is unknown. The position is then the start of the file.
inline off_t SizeOf(std::FILE* file) {
  if (fseeko(file, 0, SEEK_END) != 0) return -1;
  const off_t size = ftello(file);
  return fseeko(file, 0, SEEK_SET) == 0 ? size : -1;
}

}  // namespace vlib
