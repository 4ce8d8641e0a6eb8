#include <getopt.h>
#include <netinet/in.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "fuzz_input.h"
#include "tav_event.h"
#include "tav_parameterfactory.h"
#include "tav_parametertype.h"
#include "tav_valuecheck.h"
#include "vtext.h"

// A whole run of ura_send with any file. It ends with 0 or 2: after 2 nothing was sent, after 0 an event for
// each line, which says what the line says. The tests tell which bytes a value becomes; here all that comes
// before and behind it in a line, and the lines around it, must not change them.
//
// Input: the file. Nothing leaves the process: the target answers the call that sends to the event port, and
// keeps from the program what the kernel knows of a receiver.

int UraSendMain(int argc, char** argv);

using tavon::tavEvent;
using tavon::tavParameterFactory;

static std::vector<std::string> g_datagrams;

extern "C" {

int __real_socket(int family, int type, int protocol);
int __wrap_socket(int family, int type, int protocol) {
  if (family == AF_INET) return __real_socket(family, type, protocol);
  errno = EAFNOSUPPORT;
  return -1;
}

ssize_t __real_sendto(int, const void*, size_t, int, const sockaddr*, socklen_t);
ssize_t __wrap_sendto(int descriptor, const void* data, size_t size, int flags, const sockaddr* target,
                      socklen_t length) {
  const auto& address = *reinterpret_cast<const sockaddr_in*>(target);
  RequireEqual(ntohl(address.sin_addr.s_addr), INADDR_LOOPBACK, "the address of the target");
  if (ntohs(address.sin_port) != tavEvent::Port)
    return __real_sendto(descriptor, data, size, flags, target, length);
  g_datagrams.emplace_back(static_cast<const char*>(data), size);
  return static_cast<ssize_t>(size);
}

}  // extern "C"

// The event that the id, the type and the value of a line stand for.
static tavEvent EventOf(const std::string& id, std::string type, const std::string& value) {
  vlib::MakeLowerCase(type);
  if (!type.starts_with("parameter")) type.insert(0, "parameter");
  const auto* const record = tavParameterFactory::FindType(tavParameterFactory::TypeNameToId(type));
  Require(record != nullptr, "the type " + type);
  const auto text = tavon::tavCheckValue(*record, value);
  Require(text.has_value(), "the value of " + value);
  return tavEvent::FromText(static_cast<std::uint32_t>(std::stoul(id)), record->id, *text).value();
}

// Takes the first word off a line.
static std::string TakeWord(std::string& io_line) {
  io_line.erase(0, io_line.find_first_not_of(" \t"));
  std::string word = io_line.substr(0, io_line.find_first_of(" \t"));
  io_line.erase(0, word.size());
  io_line.erase(0, std::min(io_line.find_first_not_of(" \t"), io_line.size()));
  return word;
}

// Checks the datagrams against the lines of a file that was sent.
static void CheckEvents(FuzzInput file) {
  std::size_t count = 0;
  while (!file.IsEmpty()) {
    std::string line = file.Field();
    if (line.find_first_not_of(" \t") == std::string::npos) continue;
    const std::string id = TakeWord(line);
    if (id[0] == '#') continue;
    const std::string type = TakeWord(line);
    Require(count < g_datagrams.size(), "an event for each line");
    const std::string& datagram = g_datagrams[count++];
    const tavEvent event = EventOf(id, type, line);
    const auto bytes = event.GetDatagram();
    RequireEqual(datagram, std::string(bytes.begin(), bytes.end()), "the event of " + line);
    Require(!event.GetValue().empty(), "a value of " + line);
  }
  RequireEqual(g_datagrams.size(), count, "the number of events");
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const int file = memfd_create("events", 0);
  static const std::string name = "/proc/self/fd/" + std::to_string(file);
  static std::FILE* const nowhere = std::fopen("/dev/null", "w");
  Require(ftruncate(file, 0) == 0 && pwrite(file, data, size, 0) == static_cast<ssize_t>(size), "the file");
  std::string arguments[] = {"ura_send", "--file", name};
  char* argv[] = {arguments[0].data(), arguments[1].data(), arguments[2].data(), nullptr};

  g_datagrams.clear();
  optind = 0;  // getopt starts anew
  std::FILE* const terminal = std::exchange(stderr, nowhere);
  const int status = UraSendMain(3, argv);
  stderr = terminal;
  Require(status == 0 || status == 2, "the status is that of a file that can be read");
  if (status == 0) CheckEvents(FuzzInput(data, size));
  if (status == 2) RequireEqual(g_datagrams.size(), 0U, "the number of events after a mistake");
  return 0;
}
