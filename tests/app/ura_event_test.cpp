#include <gmock/gmock.h>

#include <ctime>

#include "loopback_receiver.h"
#include "program_run.h"
#include "tav_error.h"
#include "temporary_folder.h"

using namespace tavon;
using std::string_literals::operator""s;
using testing::HasSubstr;

namespace {

// What a run prints, and its exit status in brackets. The arguments are as they are typed.
std::string UraEvent(const std::string& arguments) {
  ProgramRun run(URA_EVENT " " + arguments);
  const std::string printed = run.Output();
  return printed + "[" + std::to_string(run.Status()) + "]";
}

std::string Record(int code, const char* message, const char* function, int line,
                   const char* file = "Application") {
  return tavBuildErrorLocation(static_cast<tavEError>(code), message, file, function, line).GetDescription();
}

std::string ThisYear(int offset) {
  const std::time_t now = std::time(nullptr);
  return std::to_string(std::localtime(&now)->tm_year + 1900 + offset);
}

TEST(UraEventEventPort, SendsEvents) {
  const std::string info = "-id 1 -type ParameterInfo -val ", camera = "-id 1 -type ParameterCamera -val ";
  const std::string schedule = "-type ParameterThermoChronoWeek -id 1 -val ";
  const std::pair<std::string, std::string> cases[] = {
      {"-id 42 -val 1 -type ParameterSwitch", "\x2A\0\0\0\1\1"s},
      {"-TYPE parameterrgb -VAL 0xFF0000 -ID 305419896", "\x78\x56\x34\x12\4\xFF\0\0\0"s},
      {"-id 4294967296 -val 3000000000 -type ParameterByte", "\xFF\xFF\xFF\xFF\1\xFF"},
      {"-id -val 5 -type ParameterByte", "\0\0\0\0\1\5"s},
      {"-id 1 -val 0 -type ParameterSlider -ap 9999 -a 192.0.2.1 -y " + ThisYear(0), "\1\0\0\0\4\0\0\0\0"s},
      {schedule + "3", "\1\0\0\0\1\3"s},
      {schedule + "3,", "\1\0\0\0\xA1\3"s + std::string(160, '\0')},  // cut to 673 modulo 256 bytes
      {info + std::string(255, 'i'), "\1\0\0\0\xFF"s + std::string(255, 'i')},
      {info + std::string(256, 'i'), "\1\0\0\0\0"s},
      {camera + std::string(100300, 'c'), "\1\0\0\0\xCC"s + std::string(204, 'c')},
  };
  EXPECT_EQ(UraEvent(cases[0].first), "[0]") << "nobody listens";
  const LoopbackReceiver server(LoopbackReceiver::kEventPort);
  for (const auto& [arguments, datagram] : cases) {
    EXPECT_EQ(UraEvent(arguments), "[0]") << arguments;
    EXPECT_EQ(server.Receive(), datagram);
  }
  EXPECT_FALSE(server.HasDatagram(0)) << "one event, one datagram";
}

TEST(UraEventEventPort, SendsNothingAfterAnError) {
  const std::pair<std::string, std::string> cases[] = {
      {"", Record(6, "-id must be specified.", "Init", 113)},
      {"-id", Record(6, "-val must be specified.", "Init", 117)},
      {"-id 1 -val 1", Record(6, "-type must be specified.", "Init", 121)},
      {"-id 1 -type ParameterByte -val", Record(6, "Insalid Parameter Data", "Execute", 137)},
      {"-id 1 -type ParameterByte -val 1 -y " + ThisYear(-1),
       Record(1, "Is not time to run event, wrong year", "Init", 129)},
      {"-id 1 -type SWITCH -val 1",
       Record(1, "Parameter id not found", "StringToData", 173, "tav_parameterfactory") +
           Record(1, "Can not convert string data to buffer data", "Execute", 151)},
  };
  const LoopbackReceiver server(LoopbackReceiver::kEventPort);
  for (const auto& [arguments, record] : cases) {
    const char code = record[std::string("tavError Number : ").size()];
    EXPECT_EQ(UraEvent(arguments), record + "[" + code + "]") << "the code of the record";
  }
  EXPECT_FALSE(server.HasDatagram(50));
}

TEST(UraEvent, PrintsHelpAndVersionsBeforeAnythingElse) {
  EXPECT_EQ(
      UraEvent("-fversion -version -H"),
      "\nEvent dispatcher for ura system Help\n-id parameterd sid ------ [e.g - 1]\n"
      "-val parameter value ---- [e.g - 1]\n-y   year of execution -- [e.g - 2100]\n"
      "-type parameterd type --- [e.g - SWITCH]\n-version version -------- [e.g - 1.0.0]\n"
      "-fversion frame version - [e.g - 1.0.0]\n-u parameter value ------ [e.g - user]\n"
      "-p parameter value ------ [e.g - password]\n-a ura address ---------- [e.g - 192.168.1.66]\n"
      "-ap ura port ------------ [e.g - 3050]\n-log log file name -------[file application log]\n\n[0]");
  EXPECT_EQ(UraEvent("-fversion -id -version") + UraEvent("-val -fversion"), "1.5.1\n[0]2.9.3\n[0]");
}

TEST(UraEvent, LogsToAFileWhenAskedTo) {
  const TemporaryFolder folder;
  const std::string log = folder.Path("ura.log");
  const std::string record = Record(6, "-id must be specified.", "Init", 113);
  EXPECT_EQ(UraEvent("-log " + log) + UraEvent("-log " + log + " >/dev/full"), record + "[6][6]");
  EXPECT_EQ(ReadFile(log), record + record);
  for (const std::string& lost : {folder.Path("missing/ura.log"), std::string("''")})
    EXPECT_EQ(UraEvent("-log " + lost), record + "[6]");
}

// With its standard input closed, the program's first descriptor is 0, which stands for no socket.
TEST(UraEvent, SaysThatItCouldNotSend) {
  const std::string result = UraEvent("-id 1 -val 1 -type ParameterByte <&-");
  EXPECT_THAT(result, HasSubstr("Network communication error.\nFile ----------- : dro_osudpsocket"));
  EXPECT_THAT(result, HasSubstr("Custom Message - : Socket is invalid.\n"));
  const std::string record = Record(1, "Can not send UDP Data", "Execute", 187);
  EXPECT_THAT(result, testing::EndsWith(record + "[1]"));
}

}  // namespace
