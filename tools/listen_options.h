#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "tav_event.h"
#include "tav_parameter.h"

// What the command line asks of ura_listen.
struct ListenOptions {
  std::uint32_t count = 0;  // datagrams to show; 0: no limit
  std::uint16_t port = tavon::tavEvent::Port;
  bool showTime = false;
  std::unique_ptr<tavon::tavIParameter> parameter;  // of the type to show values as, or null
};

// Reads the arguments of main. The result is the exit status when the program must end at once: help and
// version have been printed on standard output, or standard error says what is wrong with which argument.
std::optional<int> ReadListenOptions(int argc, char** argv, ListenOptions& o_options);
