#pragma once

#include "temporary_folder.h"

// Executables that stand on PATH before the system's own, for commands that must not run for real. Each
// records how it was called and then does what its body, a line of shell script, says.
class StandIns {
 public:
  StandIns() { setenv("PATH", (m_folder.Path(":") + m_systemPath).c_str(), 1); }
  ~StandIns() { setenv("PATH", m_systemPath.c_str(), 1); }
  // Without a body the system's own command is run with the same arguments.
  void Add(const std::string& name, const std::string& body = R"(exec "$@")") {
    const std::string record = "set -- " + name + R"( "$@"; echo "$*" >> )" + m_calls;
    WriteFile(m_folder.Path(name), "#!/bin/sh\n" + record + "\nPATH=" + m_systemPath + "\n" + body);
    std::filesystem::permissions(m_folder.Path(name), std::filesystem::perms::owner_all);
  }

  // The calls since the last question, each on a line as it would be typed, in alphabetical order.
  std::string Calls() {
    if (std::system(("LC_ALL=C sort -o " + m_calls + " " + m_calls).c_str()) != 0) return "unknown";
    std::string calls = ReadFile(m_calls);
    WriteFile(m_calls, "");
    return calls;
  }

 private:
  const std::string m_systemPath = getenv("PATH");
  TemporaryFolder m_folder;
  const std::string m_calls = m_folder.Path("calls");
};
