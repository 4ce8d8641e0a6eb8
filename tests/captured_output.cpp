#include "captured_output.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <stdexcept>

// A file in memory: it needs no folder, and printing never waits for a reader.
OutputCapture::OutputCapture()
    : m_capture(memfd_create("output", MFD_CLOEXEC)), m_before(dup(STDOUT_FILENO)) {
  std::fflush(stdout);
  if (dup2(m_capture, STDOUT_FILENO) == -1) throw std::runtime_error("cannot capture standard output");
}

OutputCapture::~OutputCapture() {
  std::fflush(stdout);
  dup2(m_before, STDOUT_FILENO);
  close(m_before);
  close(m_capture);
}

std::string OutputCapture::Take() {
  std::fflush(stdout);
  std::string text(static_cast<std::size_t>(lseek(m_capture, 0, SEEK_END)), '\0');
  const ssize_t count = pread(m_capture, text.data(), text.size(), 0);
  if (ftruncate(m_capture, 0) != 0 || count < 0) throw std::runtime_error("cannot read the captured output");
  lseek(m_capture, 0, SEEK_SET);
  return text;
}
