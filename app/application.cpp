#include "application.h"

#include <nss.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <span>
#include <vector>

#include "dro_osudpsocket.h"
#include "tav_commandline.h"
#include "tav_parameterfactory.h"
#include "tav_time.h"

using tavon::tavString;

namespace {

constexpr tavon::tavReporter kReport{"Application"};

constexpr const char* kVersion = URA_VERSION;  // the project's
constexpr const char* kFrameVersion = "2.9.3";

// Where the server on this machine listens for events.
constexpr const char* kLoopbackHost = "localhost";
constexpr unsigned short kEventPort = 16549;

constexpr std::int32_t kDefaultServerPort = 16548;

constexpr const char* kHelp =
    "\n"
    "Event dispatcher for ura system Help\n"
    "-id parameterd sid ------ [e.g - 1]\n"
    "-val parameter value ---- [e.g - 1]\n"
    "-y   year of execution -- [e.g - 2100]\n"
    "-type parameterd type --- [e.g - SWITCH]\n"
    "-version version -------- [e.g - 1.0.0]\n"
    "-fversion frame version - [e.g - 1.0.0]\n"
    "-u parameter value ------ [e.g - user]\n"
    "-p parameter value ------ [e.g - password]\n"
    "-a ura address ---------- [e.g - 192.168.1.66]\n"
    "-ap ura port ------------ [e.g - 3050]\n"
    "-log log file name -------[file application log]\n";

[[noreturn]] void PrintAndExit(const tavString& text) {
  std::puts(text.c_str());
  std::exit(EXIT_SUCCESS);  // NOLINT(concurrency-mt-unsafe): the program has one thread
}

// The value of an option, or `absent` when the option is not given. An option with nothing after it has an
// empty value.
tavString ValueOr(const tavon::tavCommandLine& arguments, const char* option, const char* absent) {
  tavString value;
  return arguments.GetArgument(option, &value) ? value : tavString(absent);
}

bool IsCurrentYear(std::uint32_t wanted) {
  int year = 0;
  tavon::tavTime::GetDateTime(&year, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
  return wanted == static_cast<std::uint32_t>(year);
}

// "ParameterRGB" is an alias that only this program knows, not the SDK.
tavon::tavEObject TypeIdOf(const tavString& name) {
  return name.IsEqualNoCase("ParameterRGB") ? tavon::tavObject_ParameterColor
                                            : tavon::tavParameterFactory::TypeNameToId(name);
}

// Has host names looked up in /etc/hosts and then at name servers, whatever /etc/nsswitch.conf says: these
// two services are part of the C library. Any other is a shared object, which a statically linked program
// cannot reliably load.
void LookUpWithinTheCLibrary() {
  if (__nss_configure_lookup("hosts", "files dns") != 0) throw std::bad_alloc();  // it fails for nothing else
}

// The datagram of an event; see Application::Execute for its layout.
class EventDatagram {
 public:
  EventDatagram(std::uint32_t id, std::span<const unsigned char> value) {
    const auto length = static_cast<unsigned char>(value.size());
    for (unsigned int i = 0; i < kIdSize; ++i) m_bytes[i] = static_cast<unsigned char>(id >> (8 * i));
    m_bytes[kIdSize] = length;
    std::copy_n(value.begin(), length, m_bytes.begin() + kIdSize + 1);
    m_size = kIdSize + 1 + length;
  }

  const unsigned char* Data() const { return m_bytes.data(); }
  unsigned int Size() const { return m_size; }

 private:
  static constexpr unsigned int kIdSize = 4;

  std::array<unsigned char, kIdSize + 1 + 255> m_bytes;
  unsigned int m_size;
};

}  // namespace

tavString Application::GetName() const { return "tavon Ura event"; }

tavString Application::GetVersion() const { return kVersion; }

tavString Application::GetInfo() const {
  tavString info;
  info.append("\nName ---------- : ").append(GetName());
  info.append("\nVersion ------- : ").append(GetVersion());
  info.append("\nBuild --------- : ").append(__DATE__);
  info.append("\nDescription --- : Event dispatcher for ura system");
  info.append("\nMaker --------- : The Ura project");
  info.append("\nCopyright ----- : The Ura project");
  info.append("\nOwner --------- : The Ura project");
  info.append("\n");
  return info;
}

unsigned int Application::Init(int argc, char** argv) {
  tavApplication::Init(argc, argv);
  const tavon::tavCommandLine arguments(argv, argc);

  if (arguments.GetArgument("-h", nullptr)) PrintAndExit(kHelp);
  if (arguments.GetArgument("-version", nullptr)) PrintAndExit(GetVersion());
  if (arguments.GetArgument("-fversion", nullptr)) PrintAndExit(kFrameVersion);

  tavString value;
  if (arguments.GetArgument("-log", &value) && !value.empty()) {
    tavon::tavError::Level |= tavon::tavLogLevel_File;
    tavon::tavError::LogFile = value;
  }

  User = ValueOr(arguments, "-u", "__ura_event__");
  Password = ValueOr(arguments, "-p", "kalnor357");
  Address = ValueOr(arguments, "-a", kLoopbackHost);
  Port = arguments.GetArgument("-ap", &value) ? tavString::AsInt(value, 10) : kDefaultServerPort;

  if (!arguments.GetArgument("-id", &value)) {
    return kReport(tavon::tavError_InvalidArgument, "-id must be specified.", {113});
  }
  Id = tavString::AsULong(value, 10);
  if (!arguments.GetArgument("-val", &value)) {
    return kReport(tavon::tavError_InvalidArgument, "-val must be specified.", {117});
  }
  Value = value;
  if (!arguments.GetArgument("-type", &Type)) {
    return kReport(tavon::tavError_InvalidArgument, "-type must be specified.", {121});
  }
  if (arguments.GetArgument("-y", &value) && !IsCurrentYear(tavString::AsULong(value, 10))) {
    return kReport(tavon::tavError_OperationFailed, "Is not time to run event, wrong year", {129});
  }
  return tavon::tavError_NoError;
}

unsigned int Application::Execute() {
  if (Value.empty()) {
    return kReport(tavon::tavError_InvalidArgument, "Insalid Parameter Data", {137});
  }

  const tavon::tavEObject type = TypeIdOf(Type);
  std::vector<unsigned char> data;
  if (tavon::tavParameterFactory::StringToData(type, Value, &data) != tavon::tavError_NoError) {
    return kReport(tavon::tavError_OperationFailed, "Can not convert string data to buffer data", {151});
  }
  // A schedule without set-points switches the stored one on or off: only its active byte travels.
  if (type == tavon::tavObject_ParameterThermoChronoWeek && Value.find(',') == tavString::npos)
    data.resize(1);

  LookUpWithinTheCLibrary();
  dro::droOsUdpSocket socket;
  socket.SetTo(kLoopbackHost, kEventPort);
  const EventDatagram datagram(Id, data);
  if (socket.Send(datagram.Data(), datagram.Size()) != static_cast<int>(datagram.Size())) {
    return kReport(tavon::tavError_OperationFailed, "Can not send UDP Data", {187});
  }
  try {
    socket.Close();
  } catch (const std::bad_alloc&) {
    // There is no memory to report that closing failed. The event was sent all the same, and the status says
    // so.
  }
  return tavon::tavError_NoError;
}
