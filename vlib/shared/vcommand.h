#pragma once

#include <cstdio>
#include <memory>
#include <string>

// The output of a shell command, for droOsUtility and tavSystemUtility.
namespace vlib {

// Runs a command through the shell and reads its standard output line by line; its standard error is that of
// this process.
//
// Owns the pipe. The destructor closes it and waits for the command to end; a command that is still printing
// is then ended by SIGPIPE, so that unwanted output is not waited for. Errors are reported by return value
// only. Several threads may run commands at the same time; read one output from one thread at a time. Between
// fork and exec the new process runs no code of this one, so other threads and their locks do not matter to
// it.
class CommandOutput {
 public:
  explicit CommandOutput(const std::string& command);

  // False when the system had no descriptor for the pipe or no process for the command, which was then not
  // run.
  bool IsOpen() const { return m_pipe != nullptr; }

  // The next line with its line feed, or the next 255 bytes of a longer one, as fgets reads it into a buffer
  // of 256 bytes. Zero bytes count like any other. False, with an empty text, when the output has ended.
  bool ReadLine(std::string& o_line);

 private:
  struct Closer {
    void operator()(std::FILE* pipe) const { pclose(pipe); }
  };
  std::unique_ptr<std::FILE, Closer> m_pipe;
};

}  // namespace vlib
