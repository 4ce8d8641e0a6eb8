#include "dro_osfile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <stdexcept>
#include <utility>

#include "shared/vfile.h"

namespace dro {
namespace {

constexpr droReporter kReport{"dro_osfile"};

droEError ReportInvalidHandle(vlib::Place place = {}) {
  return kReport.System(droError_OperationFailed, "tavFile handle is invalid, == 0", errno, place);
}

droEError ReportNoMemory(vlib::Place place = {}) {
  return kReport(droError_OutOfMemory, "pData == 0", place);
}

// Passes on the result of printing to a stream; a negative one is reported with the system's `error`.
int Printed(int count, int error, vlib::Place place = {}) {
  if (count < 0) kReport.System(droError_OperationFailed, "can no write data to file", error, place);
  return count;
}

// Sets a position. Success is reported and has the code of a failure, and a failure is silent and has none:
// callers rely on these results.
droEError SetPosition(std::FILE* file, long offset, int origin, const droString& report,
                      vlib::Place place = {}) {
  if (file == nullptr) return ReportInvalidHandle(place);
  if (std::fseek(file, offset, origin) != 0) return droError_NoError;
  return kReport.System(droError_OperationFailed, report, errno, place);
}

// The contents of a file.
struct Contents {
  std::unique_ptr<char[]> bytes;
  std::size_t length = 0;
};

// Reads all of an open file in one piece. `what` says in a report what was being done.
droEError ReadContents(std::FILE* file, const droString& what, Contents& o_contents, vlib::Place place = {}) {
  const off_t size = vlib::SizeOf(file);
  int error = errno;
  std::size_t count = 0;
  if (size >= 0) {
    // A folder opens like a file and can claim a size that no memory has.
    if (std::cmp_greater(size, PTRDIFF_MAX)) return ReportNoMemory(place);
    o_contents.length = static_cast<std::size_t>(size);
    o_contents.bytes.reset(new (std::nothrow) char[o_contents.length]);
    if (!o_contents.bytes) return ReportNoMemory(place);
    errno = 0;  // the end of a file that has become shorter is no error of the system
    count = std::fread(o_contents.bytes.get(), 1, o_contents.length, file);
    error = errno;
  }
  if (std::cmp_equal(count, size)) return droError_NoError;
  const droString message = "result(" + std::to_string(count) + ") != iLen(" + std::to_string(size) + ") ";
  return kReport.System(droError_OperationFailed, message + what, error, place);
}

}  // namespace

droOsFile::droOsFile(const droString& name, const droString& mode) { Open(name, mode); }

droOsFile::~droOsFile() {
  try {
    if (Close() != droError_NoError) {
      kReport(droError_OperationFailed, "can not close the file handle");
    }
  } catch (...) {
    // The log's level asks for exceptions, but none may leave a destructor.
  }
  // The owner closes a stream that Close kept.
}

droEError droOsFile::Open(const droString& name, const droString& mode) {
  if (Close() != droError_NoError) {
    return kReport(droError_OperationFailed, "can not close the file handle");
  }
  m_file.reset(std::fopen(name.c_str(), mode.c_str()));
  return IsValid() ? droError_NoError : ReportInvalidHandle();
}

droEError droOsFile::Close() {
  if (!IsValid()) return droError_NoError;
  // fclose releases the stream even when it fails. What can fail is tried before that, so that a stream that
  // is kept can still be used: some file systems write when a descriptor is closed, also when it is a copy.
  bool canClose = std::fflush(m_file.get()) == 0;
  if (canClose) {
    const int copy = fcntl(fileno(m_file.get()), F_DUPFD_CLOEXEC, 0);
    canClose = copy != -1 ? close(copy) == 0 : errno != EBADF;  // none left is no reason to stay open
  }
  if (canClose && std::fclose(m_file.release()) == 0) return droError_NoError;
  return kReport(droError_OperationFailed, "Can not close file handle");
}

int droOsFile::Read(unsigned char* o_buffer, unsigned int count) {
  if (!IsValid()) {
    ReportInvalidHandle();
    return -1;
  }
  if (o_buffer == nullptr) {
    kReport(droError_InvalidArgument, "o_pBuffer pointer == 0");
    return -1;
  }
  return static_cast<int>(std::fread(o_buffer, 1, count, m_file.get()));
}

int droOsFile::Write(const unsigned char* buffer, unsigned int count) {
  if (!IsValid()) {
    ReportInvalidHandle();
    return -1;
  }
  if (buffer == nullptr) {
    kReport(droError_InvalidArgument, "pBuffer pointer == 0");
    return -1;
  }
  return static_cast<int>(std::fwrite(buffer, 1, count, m_file.get()));
}

int droOsFile::WriteText(const char* format, ...) {
  if (!IsValid()) return ReportInvalidHandle();
  std::va_list arguments;
  va_start(arguments, format);
  const int count = std::vfprintf(m_file.get(), format, arguments);
  const int error = errno;
  va_end(arguments);
  return Printed(count, error);
}

bool droOsFile::ReadNextLine(droString* o_line) {
  if (!IsValid()) {
    ReportInvalidHandle();
    return false;
  }
  if (o_line == nullptr) {
    kReport(droError_InvalidArgument, "io_size pointer == 0");
    return false;
  }
  o_line->Clear();
  while (std::feof(m_file.get()) == 0) {
    const int byte = std::getc(m_file.get());
    if (byte == EOF) break;  // a last line without a line feed stays in o_line
    if (byte == '\n') return true;
    o_line->push_back(static_cast<char>(byte));
  }
  return false;
}

bool droOsFile::IsEof() const {
  if (IsValid()) return std::feof(m_file.get()) != 0;
  ReportInvalidHandle();
  return true;
}

long droOsFile::GetPosition() const {
  if (!IsValid()) return ReportInvalidHandle();
  return std::ftell(m_file.get());
}

droEError droOsFile::SetToStart() {
  return SetPosition(m_file.get(), 0, SEEK_SET, "Setting pointer to start");
}

droEError droOsFile::SetToEnd() { return SetPosition(m_file.get(), 0, SEEK_END, "Setting pointer to end"); }

droEError droOsFile::SetTo(long offset) {
  return SetPosition(m_file.get(), offset, SEEK_SET, "Setting pointer to " + std::to_string(offset));
}

droEError droOsFile::Advance(long offset) {
  return SetPosition(m_file.get(), offset, SEEK_CUR, "Advanced pointer about " + std::to_string(offset));
}

droEError droOsFile::GetFileSize(const droString& name, unsigned int* o_size) {
  if (o_size == nullptr) return kReport(droError_InvalidArgument, "io_size pointer == 0");
  *o_size = 0;
  const vlib::File file = vlib::OpenFile(name.c_str(), "rb");
  const off_t size = file ? vlib::SizeOf(file.get()) : -1;
  if (size < 0 || std::cmp_greater(size, UINT_MAX)) return kReport(droError_OperationFailed, "Invalid file");
  *o_size = static_cast<unsigned int>(size);
  return droError_NoError;
}

droEError droOsFile::GetFileTextSource(const droString& name, droString* o_text) {
  if (o_text == nullptr) return kReport(droError_InvalidArgument, "io_source pointer == 0");
  const vlib::File file = vlib::OpenFile(name.c_str(), "rb");
  if (!file) return kReport(droError_OperationFailed, "Invalid file");
  Contents contents;
  const droEError result = ReadContents(file.get(), "Reading data from file : " + name, contents);
  if (result != droError_NoError) return result;
  // Touched only now that all has been read, so that a failure leaves the text as it was.
  try {
    o_text->assign(contents.bytes.get(), contents.length);
  } catch (const std::exception&) {  // no memory, or longer than any text
    return ReportNoMemory();
  }
  return droError_NoError;
}

int droOsFile::AppendToFile(const droString& name, const char* format, ...) {
  const vlib::File file = vlib::OpenFile(name.c_str(), "a");
  if (!file) return kReport(droError_OperationFailed, "Invalid file");
  std::va_list arguments;
  va_start(arguments, format);
  const int count = std::vfprintf(file.get(), format, arguments);
  const int error = errno;
  va_end(arguments);
  return Printed(count, error);
}

droEError droOsFile::CopyAndPaste(const droString& from, const droString& to) {
  vlib::File copy = vlib::OpenFile(from.c_str(), "rb");
  if (!copy) return kReport(droError_OperationFailed, "Invalid copy file: " + from);
  Contents contents;
  const droEError result = ReadContents(copy.get(), "Reading data from file copy: " + from, contents);
  if (result != droError_NoError) return result;
  if (std::fclose(copy.release()) != 0) {
    return kReport(droError_OperationFailed, "Can not close file copy: " + from);
  }

  vlib::File paste = vlib::OpenFile(to.c_str(), "wb");
  if (!paste) return kReport(droError_OperationFailed, "Invalid paste file: " + to);
  const bool written = std::fwrite(contents.bytes.get(), 1, contents.length, paste.get()) == contents.length;
  // Closing writes what the stream still holds; only then is it known that everything was written.
  if (written && std::fclose(paste.release()) == 0) return droError_NoError;
  const int error = errno;
  return kReport.System(droError_OperationFailed, "Writing data to file paste: " + to, error);
}

}  // namespace dro
