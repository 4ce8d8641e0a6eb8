#pragma once

#include <cstdio>

#include "dro_error.h"
#include "dro_string.h"
#include "vfile.h"

namespace dro {

// A file opened as a standard stream, and operations on whole files.
//
// The object owns its stream, which its destructor closes. Every failure is reported to droErrorLog (source
// dro_osfile): code 2 when a stream fails, 7 for a null argument, 6 when memory is short. Operations on a
// closed object report that, with the current errno, and give the result that stands with them. One thread at
// a time uses an object; the static operations may be called from any thread.
class droOsFile {
 public:
  // Closed.
  droOsFile() = default;
  // Opens; IsValid tells whether it did.
  droOsFile(const droString& name, const droString& mode);
  virtual ~droOsFile();
  droOsFile(const droOsFile&) = delete;
  droOsFile& operator=(const droOsFile&) = delete;

  // Closes what is open and opens a file; the modes are those of fopen. 0 or the code of the failure. When
  // closing fails, the old file stays and no new one is opened.
  droEError Open(const droString& name, const droString& mode);

  // Writes what is buffered and closes. 0, also when nothing was open, or the code of the failure. The handle
  // of a failed attempt stays, open and usable, though what was buffered may be lost; only one that the
  // system refuses to close after all was written is gone.
  droEError Close();

  bool IsValid() const { return m_file != nullptr; }

  // The stream, null when closed. It remains the object's: never close it.
  operator std::FILE*() const { return m_file.get(); }

  // Move `count` bytes and return how many were moved, fewer at the end of the file or after a failure; -1
  // when closed or the buffer is null.
  int Read(unsigned char* o_buffer, unsigned int count);
  int Write(const unsigned char* buffer, unsigned int count);

  // Prints in the manner of printf and returns the count of bytes, or a negative number when that fails (a
  // full disk may also show only when the file is closed). 2 when closed.
  int WriteText(const char* format, ...) __attribute__((format(printf, 2, 3)));

  // Reads up to the next line feed, which is left out. True when there was one. At the end of the file the
  // result is false, and `o_line` holds what followed the last line feed.
  bool ReadNextLine(droString* o_line);

  // True when reading has met the end of the file, and when closed.
  bool IsEof() const;

  // In bytes from the start; -1 for a stream without positions, 2 when closed.
  long GetPosition() const;

  // Set the position: to the start, to the end, to `offset` from the start, by `offset` from where it is.
  // The results are inverted, and callers count on it: 2, and a report, when the position was set; 0 in
  // silence when it could not be. 2 as well when closed.
  droEError SetToStart();
  droEError SetToEnd();
  droEError SetTo(long offset);
  droEError Advance(long offset);

  // The size of a file in bytes. 0 or the code of the failure, `o_size` is 0 then. A file of 4 GB or more
  // has no size that fits and fails.
  static droEError GetFileSize(const droString& name, unsigned int* o_size);

  // Reads a whole file in one piece. 0 or the code of the failure, `o_text` is as it was then: 2 when it does
  // not open or does not give as many bytes as its size says, 6 when memory does not hold it.
  static droEError GetFileTextSource(const droString& name, droString* o_text);

  // Appends as WriteText writes, to a file that is made when it is not there. 2 when it does not open.
  static int AppendToFile(const droString& name, const char* format, ...)
      __attribute__((format(printf, 2, 3)));

  // Copies a whole file in one piece over `to`. 0 or the code of the failure; one in writing leaves what was
  // written so far. A file may be copied onto itself.
  static droEError CopyAndPaste(const droString& from, const droString& to);

 private:
  vlib::File m_file;
};

}  // namespace dro
