// ura_listen: shows the events sent on this machine while no server is running.
//
// Binds the event port of the loopback host and prints a line for each datagram, on standard output. All else
// goes to standard error: messages, reports of the libraries, and the summary at the end.

#include <linux/sock_diag.h>
#include <poll.h>
#include <sys/signalfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <limits>
#include <new>
#include <optional>
#include <span>
#include <string>
#include <utility>

#include "datagram_text.h"
#include "dro_error.h"
#include "dro_osudpsocket.h"
#include "listen_options.h"
#include "tav_error.h"
#include "tav_event.h"

namespace {

constexpr int kNothingCame = 3;

void PrintSystemError(const char* what) {
  char reason[128];
  std::fprintf(stderr, "ura_listen: %s: %s\n", what, strerror_r(errno, reason, sizeof reason));
}

// Binds the socket to a port of the loopback host; says why it cannot, and what to do.
bool Bind(dro::droOsUdpSocket& socket, std::uint16_t port) {
  const unsigned int level = std::exchange(dro::droError::Level, 0);  // instead of the library's report
  const bool isBound = socket.Bind("127.0.0.1", port) == dro::droError_NoError;
  dro::droError::Level = level;
  if (isBound) return true;
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

// The local date and time to the millisecond, and a blank: "2026-11-24 18:30:00.125 ".
std::string TimeStamp() {
  timespec now{};
  clock_gettime(CLOCK_REALTIME, &now);
  std::tm local{};
  localtime_r(&now.tv_sec, &local);
  char date[64];
  char milliseconds[32];
  std::strftime(date, sizeof date, "%Y-%m-%d %H:%M:%S", &local);
  std::snprintf(milliseconds, sizeof milliseconds, ".%03ld ", now.tv_nsec / 1000000);
  return std::string(date) + milliseconds;
}

// How many datagrams the kernel dropped because the receive buffer was full; 0 where it does not tell.
std::uint32_t DroppedDatagrams(int descriptor) {
  std::array<std::uint32_t, SK_MEMINFO_VARS> numbers{};
  socklen_t size = sizeof numbers;
  if (getsockopt(descriptor, SOL_SOCKET, SO_MEMINFO, numbers.data(), &size) != 0) return 0;
  return size == sizeof numbers ? numbers[SK_MEMINFO_DROPS] : 0;
}

void PrintSummary(std::uint64_t received, int descriptor) {
  std::fprintf(stderr, "ura_listen: %llu datagram%s received", static_cast<unsigned long long>(received),
               received == 1 ? "" : "s");
  if (const std::uint32_t dropped = DroppedDatagrams(descriptor)) {
    std::fprintf(stderr, ", %lu lost because the receive buffer was full",
                 static_cast<unsigned long>(dropped));
  }
  std::fputs("\n", stderr);
}

// When to stop waiting for a datagram. Without a limit there is always time.
class Deadline {
 public:
  explicit Deadline(std::uint32_t seconds) : m_seconds(seconds) { Restart(); }

  void Restart() { m_end = Clock::now() + std::chrono::seconds(m_seconds); }

  // Waits for one of the descriptors, in the way of poll; 0 when the time is over.
  int Poll(std::span<pollfd> awaited) const {
    const auto left = std::max(m_end - Clock::now(), Clock::duration::zero());
    const auto seconds = std::chrono::floor<std::chrono::seconds>(left);
    timespec time{};
    time.tv_sec = seconds.count();
    time.tv_nsec = static_cast<long>(std::chrono::nanoseconds(left - seconds).count());
    return ppoll(awaited.data(), awaited.size(), m_seconds == 0 ? nullptr : &time, nullptr);
  }

 private:
  using Clock = std::chrono::steady_clock;

  std::uint32_t m_seconds;  // 0: no limit
  Clock::time_point m_end;
};

// None for a datagram that is no event.
std::optional<std::uint32_t> IdOf(std::span<const unsigned char> datagram) {
  if (datagram.size() < tavon::tavEvent::SmallestDatagram) return std::nullopt;
  return tavon::tavEvent::IdOf(datagram);
}

bool IsToShow(const std::optional<std::uint32_t>& id, const ListenOptions& options) {
  return options.ids.empty() || (id && options.ids.contains(*id));
}

tavon::tavIParameter* ParameterFor(const std::optional<std::uint32_t>& id, const ListenOptions& options) {
  const auto own = id ? options.parameterOf.find(*id) : options.parameterOf.end();
  return own == options.parameterOf.end() ? options.parameter.get() : own->second.get();
}

// Prints datagrams until the count is reached, the time is over, a stop is requested, or something fails.
int Listen(dro::droOsUdpSocket& socket, int descriptor, const StopRequest& stop,
           const ListenOptions& options) {
  // No datagram is larger.
  static std::array<unsigned char, std::numeric_limits<std::uint16_t>::max()> buffer;
  std::array<pollfd, 2> awaited{{{stop.Descriptor(), POLLIN, 0}, {descriptor, POLLIN, 0}}};
  Deadline deadline(options.timeout);

  std::uint64_t shown = 0;
  while (options.count == 0 || shown < options.count) {
    const int ready = deadline.Poll(awaited);
    if (ready < 0) {
      if (errno == EINTR) continue;
      PrintSystemError("cannot wait for datagrams");
      return EXIT_FAILURE;
    }
    if (ready == 0) {
      PrintSummary(shown, descriptor);
      return kNothingCame;
    }
    if (awaited[0].revents != 0) break;

    const int size = socket.Receive(buffer.data(), buffer.size(), nullptr, nullptr);
    if (size == -1) return EXIT_FAILURE;
    if (size < 0) continue;  // nothing to read after all, such as a datagram with a wrong checksum
    const std::span datagram(buffer.data(), static_cast<std::size_t>(size));
    const std::optional<std::uint32_t> id = IdOf(datagram);
    if (!IsToShow(id, options)) continue;
    ++shown;
    deadline.Restart();
    const std::string time = options.showTime ? TimeStamp() : "";
    std::printf("%s%s\n", time.c_str(), DatagramText(datagram, ParameterFor(id, options)).c_str());
    if (std::fflush(stdout) != 0) {
      PrintSystemError("cannot print");
      return EXIT_FAILURE;
    }
  }
  PrintSummary(shown, descriptor);
  return EXIT_SUCCESS;
}

// Standard output is for datagrams: the reports of the libraries go to standard error.
void ReportToStandardError() {
  dro::droError::Level = dro::droLogLevel_CallBack;
  dro::droError::ShowErrorCallBack = [](const dro::droError& error) {
    std::fputs(error.GetDescription().c_str(), stderr);
  };
  tavon::tavError::Level = tavon::tavLogLevel_CallBack;
  tavon::tavError::ShowErrorCallBack = [](const tavon::tavError& error) {
    std::fputs(error.GetDescription().c_str(), stderr);
  };
}

int Run(int argc, char** argv) {
  ReportToStandardError();
  // Before there is a parameter: its threads take over which signals are blocked.
  const StopRequest stop;
  if (!stop.IsPossible()) {
    PrintSystemError("cannot wait for signals");
    return EXIT_FAILURE;
  }
  ListenOptions options;
  if (const std::optional<int> status = ReadListenOptions(argc, argv, options)) return *status;

  const int descriptor = ::socket(AF_INET, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
  if (descriptor < 0) {
    PrintSystemError("no socket");
    return EXIT_FAILURE;
  }
  dro::droOsUdpSocket socket(dro::droOsSocketType_Udp, descriptor);
  if (!Bind(socket, options.port)) return EXIT_FAILURE;
  std::fprintf(stderr, "ura_listen: waiting for events on UDP port %u of the loopback host\n", options.port);
  return Listen(socket, descriptor, stop, options);
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return Run(argc, argv);
  } catch (const std::bad_alloc&) {
    std::fputs("ura_listen: out of memory\n", stderr);
    return EXIT_FAILURE;
  }
}
