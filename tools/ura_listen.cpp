// ura_listen: shows the events sent on this machine while no server is running.
//
// Binds the event port of the loopback host and prints a line for each datagram.

#include <netinet/in.h>
#include <poll.h>
#include <sys/signalfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "datagram_text.h"
#include "dro_error.h"
#include "dro_osudpsocket.h"
#include "tav_parameterfactory.h"
#include "tav_parametershutter.h"

namespace {

constexpr int kUsageError = 2;

constexpr const char* kHelp =
    "ura_listen shows the events that ura_event sends, while no server is running.\n"
    "\n"
    "usage: ura_listen [-count N] [-port P] [-type NAME]\n"
    "\n"
    "  -count N    end after N datagrams (without it: at Ctrl-C)\n"
    "  -port P     listen on UDP port P of the loopback host instead of 16549\n"
    "  -type NAME  also show each value as a parameter of that type reads it\n"
    "  -h          print this text\n"
    "\n"
    "Each datagram is a line: parameter id, length byte, value bytes in hexadecimal.\n"
    "Exit status: 0 at the end or at Ctrl-C, 1 when listening fails, 2 for a wrong option.\n";

struct Options {
  std::uint32_t count = 0;  // 0: no limit
  std::uint16_t port = 16549;
  std::unique_ptr<tavon::tavIParameter> parameter;  // of the type to show values as, or null
};

// A whole text that is a decimal number from 1 to the limit of its type.
template <class Number>
bool ReadNumber(std::string_view text, Number& number) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size() && number != 0;
}

// A parameter that shows values; null when there is no such type. A shutter's thread is ended, or it would
// stop the shutter between two datagrams.
std::unique_ptr<tavon::tavIParameter> MakeParameter(const std::string& typeName) {
  const tavon::tavEObject type = tavon::tavParameterFactory::TypeNameToId(typeName);
  if (type == tavon::tavObject_None) return nullptr;
  std::unique_ptr<tavon::tavIParameter> parameter(tavon::tavParameterFactory::CreateByType(type));
  if (auto* const shutter = parameter->GetParameterShutterPtr()) shutter->term_thread();
  return parameter;
}

// Takes one option with its value; false when it is none or its value cannot be used.
bool ReadOption(std::string_view name, std::string_view value, Options& options) {
  if (name == "-count") return ReadNumber(value, options.count);
  if (name == "-port") return ReadNumber(value, options.port);
  if (name != "-type") return false;
  options.parameter = MakeParameter(std::string(value));
  return options.parameter != nullptr;
}

// The status to end with at once, when the arguments ask for help or cannot be followed.
std::optional<int> ReadOptions(int argc, char** argv, Options& options) {
  for (int i = 1; i < argc; ++i) {
    const std::string_view name = argv[i];
    const std::string_view value = i + 1 < argc ? argv[i + 1] : "";
    if (name == "-h") {
      std::fputs(kHelp, stdout);
      return EXIT_SUCCESS;
    }
    if (ReadOption(name, value, options)) {
      ++i;
      continue;
    }
    std::fprintf(stderr, "ura_listen: \"%s %s\" is no option with a value it can have; -h explains\n",
                 argv[i], std::string(value).c_str());
    return kUsageError;
  }
  return std::nullopt;
}

void PrintSystemError(const char* what) {
  char reason[128];
  std::fprintf(stderr, "ura_listen: %s: %s\n", what, strerror_r(errno, reason, sizeof reason));
}

// Binds a descriptor to a port of the loopback host; says why it cannot.
bool Bind(int descriptor, std::uint16_t port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  if (bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0) return true;
  if (errno == EADDRINUSE) {
    std::fprintf(stderr,
                 "ura_listen: UDP port %u is in use (is the server running?); -port P listens elsewhere\n",
                 port);
  } else {
    PrintSystemError("cannot listen");
  }
  return false;
}

// Becomes readable when Ctrl-C or the system asks the program to stop. A request never gets lost and waits
// its turn: the line being printed is printed whole.
class StopRequest {
 public:
  StopRequest() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    m_descriptor = signalfd(-1, &signals, SFD_CLOEXEC);
  }
  ~StopRequest() {
    if (IsPossible()) close(m_descriptor);
  }
  StopRequest(const StopRequest&) = delete;
  StopRequest& operator=(const StopRequest&) = delete;

  bool IsPossible() const { return m_descriptor >= 0; }
  int Descriptor() const { return m_descriptor; }

 private:
  int m_descriptor;
};

// Prints datagrams until the count is reached, a stop is requested, or something fails.
int Listen(dro::droOsUdpSocket& socket, int descriptor, const StopRequest& stop, const Options& options) {
  // No datagram is larger.
  static std::array<unsigned char, std::numeric_limits<std::uint16_t>::max()> buffer;
  std::array<pollfd, 2> awaited{{{stop.Descriptor(), POLLIN, 0}, {descriptor, POLLIN, 0}}};

  for (std::uint32_t received = 0; options.count == 0 || received < options.count;) {
    if (poll(awaited.data(), awaited.size(), -1) < 0) {
      if (errno == EINTR) continue;
      PrintSystemError("cannot wait for datagrams");
      return EXIT_FAILURE;
    }
    if (awaited[0].revents != 0) return EXIT_SUCCESS;

    const int size = socket.Receive(buffer.data(), buffer.size(), nullptr, nullptr);
    if (size == -1) return EXIT_FAILURE;
    if (size < 0) continue;  // nothing to read after all, such as a datagram with a wrong checksum
    ++received;
    std::puts(DatagramText({buffer.data(), static_cast<std::size_t>(size)}, options.parameter.get()).c_str());
    if (std::fflush(stdout) != 0) {
      PrintSystemError("cannot print");
      return EXIT_FAILURE;
    }
  }
  return EXIT_SUCCESS;
}

}  // namespace

int main(int argc, char** argv) {
  // First: the threads of a parameter take over which signals are blocked.
  const StopRequest stop;
  if (!stop.IsPossible()) {
    PrintSystemError("cannot wait for signals");
    return EXIT_FAILURE;
  }
  Options options;
  if (const std::optional<int> status = ReadOptions(argc, argv, options)) return *status;

  // Standard output is for datagrams: the library's reports go to standard error.
  dro::droError::Level = dro::droLogLevel_CallBack;
  dro::droError::ShowErrorCallBack = [](const dro::droError& error) {
    std::fputs(error.GetDescription().c_str(), stderr);
  };

  const int descriptor = ::socket(AF_INET, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
  if (descriptor < 0) {
    PrintSystemError("no socket");
    return EXIT_FAILURE;
  }
  dro::droOsUdpSocket socket(dro::droOsSocketType_Udp, descriptor);
  if (!Bind(descriptor, options.port)) return EXIT_FAILURE;
  std::fprintf(stderr, "ura_listen: waiting for events on UDP port %u of the loopback host\n", options.port);
  return Listen(socket, descriptor, stop, options);
}
