#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

// What the command line asks of ura_send: to send one event, or those of a file.
struct SendOptions {
  std::string_view id, type, value;  // of the one event
  const char* file = nullptr;        // "-" is standard input; null: there is the one event
  bool dryRun = false;
  bool verbose = false;
  std::uint32_t rate = 0;   // events a second at most; 0: no limit
  std::uint32_t wait = 10;  // seconds for which the receiver may read nothing
};

// Reads the arguments of main. The result is the exit status when the program must end at once: help and
// version have been printed on standard output, or standard error says in one line what is wrong.
std::optional<int> ReadSendOptions(int argc, char** argv, SendOptions& o_options);
