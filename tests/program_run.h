#pragma once

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <stdexcept>
#include <string>

// A program started by a shell, as a user would start it, with its standard output and standard error read
// through pipes unless the command sends them elsewhere.
class ProgramRun {
 public:
  explicit ProgramRun(const std::string& command) {
    std::string shell = "sh", option = "-c", text = "exec " + command;
    char* argv[] = {shell.data(), option.data(), text.data(), nullptr};
    std::array<std::array<int, 2>, 2> pipes{};
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    for (std::size_t i = 0; i < pipes.size(); ++i) {
      if (pipe2(pipes[i].data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
      posix_spawn_file_actions_adddup2(&actions, pipes[i][1], static_cast<int>(i) + STDOUT_FILENO);
      m_ends[i] = pipes[i][0];
    }
    const int error = posix_spawn(&m_process, "/bin/sh", &actions, nullptr, argv, environ);
    posix_spawn_file_actions_destroy(&actions);
    for (const auto& ends : pipes) close(ends[1]);
    if (error != 0) throw std::runtime_error("cannot start " + command);
  }
  ~ProgramRun() {
    if (m_process > 0) {
      kill(m_process, SIGKILL);
      Status();
    }
    for (const int end : m_ends) close(end);
  }
  ProgramRun(const ProgramRun&) = delete;

  // What the program prints from now on until it ends, and the next line of its errors.
  std::string Output() { return Read(m_ends[0], false); }
  std::string Errors() { return Read(m_ends[1], false); }
  std::string ErrorLine() { return Read(m_ends[1], true); }
  void Signal(int number) const { kill(m_process, number); }
  pid_t Process() const { return m_process; }

  // Waits for the end. The exit status, or minus the signal that ended the program.
  int Status() {
    int status = 0;
    waitpid(m_process, &status, 0);
    m_process = 0;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
  }

 private:
  static std::string Read(int end, bool oneLine) {
    std::string text;
    for (char c; read(end, &c, 1) == 1;) {
      text.push_back(c);
      if (oneLine && c == '\n') break;
    }
    return text;
  }

  pid_t m_process = 0;
  std::array<int, 2> m_ends{};
};
