#include <netinet/in.h>

#include <deque>

#include "application.h"
#include "fuzz_input.h"
#include "tav_commandline.h"
#include "tav_event.h"

// A whole run of ura_event. Its exit status tells what became of the event: after 0 one datagram has left and
// nothing was printed; after anything else none has left, and the last record printed has that code.
//
// Input: the arguments, each ended by a line feed or a zero byte, the program's name first. Nothing leaves
// the process: the target answers the calls that send and that open a file. Runs that only print are left
// out, since they end the process; any other run that does so is a finding.

namespace {

using tavon::tavCommandLine;
using tavon::tavString;

// What one run does to the world.
struct World {
  std::string printed;
  std::string logged;
  std::vector<std::string> datagrams;
};

// The world of the current run; null between runs, when the fuzzer itself makes some of these calls.
World* g_world = nullptr;

std::FILE* OpenText(std::string& text) {
  const auto append = [](void* target, const char* data, std::size_t size) {
    static_cast<std::string*>(target)->append(data, size);
    return static_cast<ssize_t>(size);
  };
  return fopencookie(&text, "w", {.read = nullptr, .write = append, .seek = nullptr, .close = nullptr});
}

}  // namespace

extern "C" {

std::FILE* __real_fopen(const char* name, const char* mode);
std::FILE* __wrap_fopen(const char* name, const char* mode) {
  return g_world == nullptr ? __real_fopen(name, mode) : OpenText(g_world->logged);
}

ssize_t __wrap_sendto(int, const void* data, size_t size, int, const sockaddr* target, socklen_t) {
  const auto& address = *reinterpret_cast<const sockaddr_in*>(target);
  RequireEqual(ntohl(address.sin_addr.s_addr), INADDR_LOOPBACK, "the address of the target");
  RequireEqual(ntohs(address.sin_port), tavon::tavEvent::Port, "the port of the target");
  g_world->datagrams.emplace_back(static_cast<const char*>(data), size);
  return static_cast<ssize_t>(size);
}

}  // extern "C"

namespace {

// The exit status of a run.
unsigned int Run(std::vector<char*> arguments, World& world) {
  tavon::tavError::Level = tavon::tavLogLevel_Console;
  tavon::tavError::CurrentLogFileSize = 0;
  std::FILE* const terminal = std::exchange(stdout, OpenText(world.printed));
  g_world = &world;
  Application application;
  unsigned int status = application.Init(static_cast<int>(arguments.size()), arguments.data());
  if (status == 0) status = application.Execute();
  g_world = nullptr;
  std::fclose(std::exchange(stdout, terminal));
  return status;
}

unsigned long CodeOfLastRecord(const std::string& printed) {
  const std::string start = "tavError Number : ";
  const std::size_t record = printed.rfind(start);
  Require(record != std::string::npos, "a failure has a record");
  return std::stoul(printed.substr(record + start.size()));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::deque<std::string> texts;
  std::vector<char*> arguments;
  for (FuzzInput input(data, size); !input.IsEmpty();) {
    arguments.push_back(texts.emplace_back(input.Field({"\n\0", 2})).data());
  }
  const tavCommandLine options(arguments.data(), static_cast<int>(arguments.size()));
  for (const char* printing : {"-h", "-version", "-fversion"}) {
    if (options.GetArgument(printing, nullptr)) return 0;
  }
  if (arguments.empty()) arguments.push_back(texts.emplace_back().data());  // a program has a name

  World world;
  const unsigned int status = Run(arguments, world);
  RequireEqual(world.datagrams.size(), status == 0 ? 1U : 0U, "the number of datagrams");
  RequireEqual(world.printed.empty(), status == 0, "whether nothing is printed");
  tavString logFile;
  options.GetArgument("-log", &logFile);
  RequireEqual(world.logged, logFile.empty() ? "" : world.printed, "what is logged");
  if (status == 0) {
    const std::string& datagram = world.datagrams[0];
    const auto* const bytes = reinterpret_cast<const unsigned char*>(datagram.data());
    Require(tavon::tavEvent::FromDatagram(bytes, static_cast<int>(datagram.size())).has_value(), "an event");
  } else {
    Require(status == 1 || status == 5 || status == 6, "the status is one of 0, 1, 5 and 6");
    RequireEqual(CodeOfLastRecord(world.printed), status, "the code of the last record");
  }
  return 0;
}
