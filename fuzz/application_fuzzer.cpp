#include <arpa/inet.h>
#include <netdb.h>
#include <sanitizer/lsan_interface.h>
#include <sys/socket.h>

#include <cerrno>
#include <csetjmp>
#include <cstring>
#include <ctime>
#include <memory>
#include <optional>
#include <utility>

#include "application.h"
#include "fuzz_input.h"
#include "reference.h"

// A whole run of ura_event: its exit status, what it prints, what it logs to a file, and the datagram that it
// sends, or does not send.
//
// Input: the arguments, each on a line or ended by a zero byte, the program's name first. Nothing of it
// leaves the process: the calls of the C library that would are answered here.

namespace {

constexpr int kSocket = 1000;
// An instant of 2026, in any time zone.
constexpr std::time_t kNow = 1782000000;
constexpr std::uint32_t kYear = 2026;

// What a run does to the world.
struct Outcome {
  unsigned int status = 0;
  std::string printed;
  std::optional<std::string> datagram;

  std::string logFile;  // name and content of the file that records are appended to
  std::string logged;
};

struct World {
  Outcome outcome;
  int openSockets = 0;
  std::jmp_buf exit;  // a jump: exit() is declared not to throw, so nothing would be unwound
};

// The world of the run that goes on, null between runs: the fuzzer itself makes some of the calls, too.
World* g_world = nullptr;

ssize_t Append(void* text, const char* data, std::size_t size) {
  static_cast<std::string*>(text)->append(data, size);
  return static_cast<ssize_t>(size);
}

std::FILE* OpenText(std::string& text) {
  return fopencookie(&text, "w", {.read = nullptr, .write = Append, .seek = nullptr, .close = nullptr});
}

std::FILE* OpenLog(const char* name, const char* mode) {
  Require(mode[0] == 'a', "a file is opened not to append to it");
  g_world->outcome.logFile = name;
  return OpenText(g_world->outcome.logged);
}

}  // namespace

extern "C" {

[[noreturn]] void __real_exit(int status);
[[noreturn]] void __wrap_exit(int status) {
  if (g_world == nullptr) __real_exit(status);
  g_world->outcome.status = static_cast<unsigned int>(status);
  std::longjmp(g_world->exit, 1);
}

std::time_t __real_time(std::time_t* o_now);
std::time_t __wrap_time(std::time_t* o_now) {
  if (g_world == nullptr) return __real_time(o_now);
  if (o_now != nullptr) *o_now = kNow;
  return kNow;
}

std::FILE* __real_fopen(const char* name, const char* mode);
std::FILE* __wrap_fopen(const char* name, const char* mode) {
  return g_world == nullptr ? __real_fopen(name, mode) : OpenLog(name, mode);
}

std::FILE* __real_fopen64(const char* name, const char* mode);
std::FILE* __wrap_fopen64(const char* name, const char* mode) {
  return g_world == nullptr ? __real_fopen64(name, mode) : OpenLog(name, mode);
}

hostent* __wrap_gethostbyname(const char* name) {
  RequireEqual<std::string>(name, "localhost", "the host that is looked up");
  static in_addr address{htonl(INADDR_LOOPBACK)};
  static char* addresses[] = {reinterpret_cast<char*>(&address), nullptr};
  static hostent host{};
  host.h_addrtype = AF_INET;
  host.h_length = sizeof(address);
  host.h_addr_list = addresses;
  return &host;
}

int __real_socket(int domain, int type, int protocol);
int __wrap_socket(int domain, int type, int protocol) {
  if (g_world == nullptr) return __real_socket(domain, type, protocol);
  ++g_world->openSockets;
  return kSocket;
}

ssize_t __wrap_sendto(int descriptor, const void* data, size_t size, int, const sockaddr* target, socklen_t) {
  const auto& address = *reinterpret_cast<const sockaddr_in*>(target);
  RequireEqual(descriptor, kSocket, "the socket that sends");
  RequireEqual(address.sin_family, AF_INET, "the family of the target");
  RequireEqual(ntohl(address.sin_addr.s_addr), INADDR_LOOPBACK, "the address of the target");
  RequireEqual(ntohs(address.sin_port), 16549, "the port of the target");
  Require(!g_world->outcome.datagram, "a second datagram");
  g_world->outcome.datagram.emplace(static_cast<const char*>(data), size);
  return static_cast<ssize_t>(size);
}

int __wrap_shutdown(int, int) {
  errno = ENOTCONN;
  return -1;
}

int __real_close(int descriptor);
int __wrap_close(int descriptor) {
  if (g_world == nullptr || descriptor != kSocket) return __real_close(descriptor);
  --g_world->openSockets;
  return 0;
}

}  // extern "C"

namespace {

using Arguments = std::vector<std::string>;

// The value of an option: what follows the first argument that is its name. Nothing when there is no such
// one.
std::optional<std::string> Option(const Arguments& arguments, const std::string& name) {
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    if (reference::LowerCase(arguments[i]) == name) return i + 1 < arguments.size() ? arguments[i + 1] : "";
  }
  return std::nullopt;
}

// An outcome that ends with records, each printed, and stored when there is a log file.
class Expectation {
 public:
  explicit Expectation(std::optional<std::string> logFile) : m_logFile(std::move(logFile)) {}

  void Report(int code, const char* source, const char* function, int line, const char* message) {
    const std::string text = code == 6 ? "Invalid Argument." : "The operation failed.";
    const std::string record = "tavError Number : " + std::to_string(code) + "\n" + text +
                               "\nFile ----------- : " + source + "\nFunction ------- : " + function +
                               "\nLine Number ---- : " + std::to_string(line) +
                               "\nCustom Message - : " + message + "\n";
    outcome.status = static_cast<unsigned int>(code);
    outcome.printed += record;
    if (!m_logFile || m_logFile->empty()) return;
    outcome.logFile = *m_logFile;
    outcome.logged += record;
  }

  Outcome outcome;

 private:
  std::optional<std::string> m_logFile;
};

constexpr const char* kHelp =
    R"(
Event dispatcher for ura system Help
-id parameterd sid ------ [e.g - 1]
-val parameter value ---- [e.g - 1]
-y   year of execution -- [e.g - 2100]
-type parameterd type --- [e.g - SWITCH]
-version version -------- [e.g - 1.0.0]
-fversion frame version - [e.g - 1.0.0]
-u parameter value ------ [e.g - user]
-p parameter value ------ [e.g - password]
-a ura address ---------- [e.g - 192.168.1.66]
-ap ura port ------------ [e.g - 3050]
-log log file name -------[file application log]

)";

std::string Datagram(std::uint32_t id, const std::string& value) {
  std::string datagram;
  for (int i = 0; i < 4; ++i, id /= 256) datagram += static_cast<char>(id % 256);
  const std::size_t length = value.size() % 256;
  return datagram + static_cast<char>(length) + value.substr(0, length);
}

int TypeOf(const std::string& name) {
  if (reference::LowerCase(name) == "parameterrgb") return reference::kColor;
  for (int type = reference::kFirstType; type <= reference::kLastType; ++type) {
    if (reference::LowerCase(reference::TypeName(type)) == reference::LowerCase(name)) return type;
  }
  return -1;
}

Outcome Expected(const Arguments& arguments) {
  Expectation expected(Option(arguments, "-log"));
  if (Option(arguments, "-h")) return {.printed = kHelp};
  if (Option(arguments, "-version")) return {.printed = "1.5.1\n"};
  if (Option(arguments, "-fversion")) return {.printed = "2.9.3\n"};

  const auto id = Option(arguments, "-id");
  const auto value = Option(arguments, "-val");
  const auto typeName = Option(arguments, "-type");
  const auto year = Option(arguments, "-y");
  if (!id) {
    expected.Report(6, "Application", "Init", 113, "-id must be specified.");
  } else if (!value) {
    expected.Report(6, "Application", "Init", 117, "-val must be specified.");
  } else if (!typeName) {
    expected.Report(6, "Application", "Init", 121, "-type must be specified.");
  } else if (year && reference::Unsigned32(*year, 10) != kYear) {
    expected.Report(1, "Application", "Init", 129, "Is not time to run event, wrong year");
  } else if (value->empty()) {
    expected.Report(6, "Application", "Execute", 137, "Insalid Parameter Data");
  } else if (const int type = TypeOf(*typeName); type == -1) {
    expected.Report(1, "tav_parameterfactory", "StringToData", 173, "Parameter id not found");
    expected.Report(1, "Application", "Execute", 151, "Can not convert string data to buffer data");
  } else {
    std::string bytes = reference::ValueBytes(type, *value);
    if (type == reference::kSchedule && value->find(',') == std::string::npos) bytes.resize(1);
    expected.outcome.datagram = Datagram(reference::Unsigned32(*id, 10), bytes);
  }
  return expected.outcome;
}

bool PrintsOnly(const Outcome& outcome) { return outcome.status == 0 && !outcome.printed.empty(); }

// Shows the options that have no effect on what is sent.
class OpenApplication : public Application {
 public:
  void CheckOptions(const Arguments& arguments) const {
    RequireEqual<std::string>(User, Option(arguments, "-u").value_or("__ura_event__"), "the user");
    RequireEqual<std::string>(Password, Option(arguments, "-p").value_or("kalnor357"), "the password");
    RequireEqual<std::string>(Address, Option(arguments, "-a").value_or("localhost"), "the address");
    RequireEqual(Port, reference::Signed32(Option(arguments, "-ap").value_or("16548"), 10), "the port");
  }
};

Outcome Run(const Arguments& arguments) {
  // The arguments are kept where the sanitizer sees a byte read beyond one.
  std::vector<std::unique_ptr<char[]>> texts;
  std::vector<char*> pointers;
  for (const std::string& argument : arguments) {
    texts.push_back(std::make_unique<char[]>(argument.size() + 1));
    pointers.push_back(texts.back().get());
    std::memcpy(pointers.back(), argument.c_str(), argument.size() + 1);
  }
  pointers.push_back(nullptr);

  tavon::tavError::Level = tavon::tavLogLevel_Console;
  tavon::tavError::LogFile = "tav_system.log";
  tavon::tavError::CurrentLogFileSize = 0;
  World world{};
  std::FILE* const terminal = std::exchange(stdout, OpenText(world.outcome.printed));
  g_world = &world;
  if (setjmp(world.exit) == 0) {
    OpenApplication application;
    world.outcome.status = application.Init(static_cast<int>(arguments.size()), pointers.data());
    application.CheckOptions(arguments);
    if (world.outcome.status == 0) world.outcome.status = application.Execute();
  }
  g_world = nullptr;
  std::fclose(std::exchange(stdout, terminal));
  RequireEqual(world.openSockets, 0, "sockets left open");
  return world.outcome;
}

Arguments Split(std::string text) {
  for (char& c : text) {
    if (c == '\n') c = '\0';
  }
  Arguments arguments;
  for (FuzzInput input(reinterpret_cast<const std::uint8_t*>(text.data()), text.size()); !input.IsEmpty();)
    arguments.push_back(input.Field('\0'));
  return arguments;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const Arguments arguments = Split(FuzzInput(data, size).Rest());
  const Outcome expected = Expected(arguments);
  std::optional<__lsan::ScopedDisabler> accepted;
  if (PrintsOnly(expected)) {
    // What the program holds when it exits, nobody releases. A few such runs are enough, more would fill the
    // memory.
    static int count = 0;
    if (++count > 100) return 0;
    accepted.emplace();
  }
  const Outcome actual = Run(arguments);
  accepted.reset();
  RequireEqual(actual.status, expected.status, "the exit status");
  RequireEqual(actual.printed, expected.printed, "what is printed");
  RequireEqual(actual.logFile, expected.logFile, "the log file");
  RequireEqual(actual.logged, expected.logged, "what is logged");
  RequireEqual(actual.datagram.has_value(), expected.datagram.has_value(), "whether a datagram is sent");
  if (actual.datagram) RequireEqual(*actual.datagram, *expected.datagram, "the datagram");
  return 0;
}
