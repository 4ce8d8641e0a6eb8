#pragma once

#include <cstdio>
#include <memory>
#include <string>

// The output of a shell command. Internal to the libraries.
namespace vlib {

// Runs a command through the shell and reads what it prints on its standard output, line by line; its
// standard error is that of this process.
//
// Owns the pipe. The destructor closes it and waits for the command to end: one that still prints is ended by
// SIGPIPE then, so that nobody waits for output that nobody wants. Nothing here logs. Several threads may run
// commands at the same time, one thread reads one output.
class CommandOutput {
 public:
  explicit CommandOutput(const std::string& command);

  // False when there was no descriptor left for a pipe or no process for the command; it was not run then.
  bool IsOpen() const { return m_pipe != nullptr; }

  // The next line with its line feed, as fgets reads it into a buffer of 256 bytes: of a longer line the next
  // 255 bytes. Zero bytes are bytes like any other. False, and an empty text, when the output has ended.
  bool ReadLine(std::string& o_line);

 private:
  struct Closer {
    void operator()(std::FILE* pipe) const { pclose(pipe); }
  };
  std::unique_ptr<std::FILE, Closer> m_pipe;
};

}  // namespace vlib
