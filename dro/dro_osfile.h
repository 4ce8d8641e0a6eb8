#pragma once

#include <cstdio>
#include <memory>

#include "dro_error.h"
#include "dro_string.h"

namespace dro {

// A file opened as a standard stream, and operations on whole files.
//
// The object owns its stream, which its destructor closes. Every failure is reported to droErrorLog (source
// dro_osfile): code 2 when a stream fails, 7 for a null argument, 6 when memory is short. Operations on a
// closed object report that, with the current errno, and return what their comment says. Use an object from
// one thread at a time; the static operations may be called from any thread.
class droOsFile {
 public:
  // Closed.
  droOsFile() = default;
  // Opens the file; IsValid() is false if that failed.
  droOsFile(const droString& name, const droString& mode);
  virtual ~droOsFile();
  droOsFile(const droOsFile&) = delete;
  droOsFile& operator=(const droOsFile&) = delete;

  // Closes the file that is open and opens another one; the modes are those of fopen. 0 or the code of the
  // failure. When closing fails, the old file stays and no new one is opened.
  droEError Open(const droString& name, const droString& mode);

  // Writes what is buffered and closes. 0, also when nothing was open, or the code of the failure. After a
  // failure the file stays open and usable, though buffered data may be lost. Closing is tried with a copy of
  // the descriptor first; a file that only then fails to close is gone.
  droEError Close();

  // True when a file is open.
  bool IsValid() const { return m_file != nullptr; }

  // The stream, null when closed. It still belongs to the object: never close it.
  operator std::FILE*() const { return m_file.get(); }

  // Read or write `count` bytes and return how many were moved: fewer at the end of the file or after a
  // failure, -1 when closed or when the buffer is null. The result is an `int`, so 2147483647 bytes are the
  // most that one call can report.
  int Read(unsigned char* o_buffer, unsigned int count);
  int Write(const unsigned char* buffer, unsigned int count);

  // Prints printf-style and returns the number of bytes, or a negative number when that fails. A full disk
  // may show only when the file is closed. 2 when closed.
  int WriteText(const char* format, ...) __attribute__((format(printf, 2, 3)));

  // Reads up to the next line feed, which is left out. True when there was one; false at the end of the file,
  // when `o_line` holds what followed the last line feed, and when closed.
  bool ReadNextLine(droString* o_line);

  // True when reading has reached the end of the file, and when closed.
  bool IsEof() const;

  // The position in bytes from the start. -1 for a stream without positions and, where `long` has 32 bits,
  // beyond 2 GB; 2 when closed.
  long GetPosition() const;

  // Set the position: to the start, to the end, to `offset` bytes from the start, by `offset` bytes from
  // where it is. The results are inverted, which is kept for compatibility: 2 and a report when the position
  // was set, 0 without a report when it could not be set. 2 when closed, too.
  droEError SetToStart();
  droEError SetToEnd();
  droEError SetTo(long offset);
  droEError Advance(long offset);

  // --- Whole files ---
  //
  // These open and close the file themselves, so that one failure is one report.

  // The size of a file in bytes. 0, or the code of the failure, and then `o_size` is 0. Fails for a file of 4
  // GB or more, whose size does not fit.
  static droEError GetFileSize(const droString& name, unsigned int* o_size);

  // Reads a whole file in one piece. 0, or the code of the failure, and then `o_text` is unchanged: 2 when
  // the file does not open or does not yield as many bytes as its size says, 6 when there is not enough
  // memory for it.
  static droEError GetFileTextSource(const droString& name, droString* o_text);

  // Appends to a file, which is created if need be, and returns the same as WriteText. 2 when it does not
  // open.
  static int AppendToFile(const droString& name, const char* format, ...)
      __attribute__((format(printf, 2, 3)));

  // Copies a whole file in one piece over `to`. 0 or the code of the failure; a failure to write leaves what
  // was written so far. A file may be copied onto itself.
  static droEError CopyAndPaste(const droString& from, const droString& to);

 private:
  struct Closer {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };

  std::unique_ptr<std::FILE, Closer> m_file;
};

}  // namespace dro
