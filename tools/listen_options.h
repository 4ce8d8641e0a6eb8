#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>

#include "tav_event.h"
#include "tav_parameter.h"

// What the command line asks of ura_listen.
struct ListenOptions {
  std::uint32_t count = 0;  // datagrams to show; 0: no limit
  std::uint16_t port = tavon::tavEvent::Port;
  std::uint32_t timeout = 0;  // seconds to wait for a datagram to show; 0: no limit
  bool showTime = false;
  std::set<std::uint32_t> ids;                      // the parameters to show; empty: all
  std::unique_ptr<tavon::tavIParameter> parameter;  // of the type to show values as, or null
  std::map<std::uint32_t, std::unique_ptr<tavon::tavIParameter>> parameterOf;  // the same for single ids
};

// Reads the arguments of main. The result is the exit status when the program must end at once: help and
// version have been printed on standard output, or standard error says what is wrong with which argument.
std::optional<int> ReadListenOptions(int argc, char** argv, ListenOptions& o_options);
