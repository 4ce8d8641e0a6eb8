#include <gmock/gmock.h>

#include <ctime>

#include "expect_report.h"
#include "loopback_receiver.h"
#include "program_run.h"
#include "temporary_folder.h"

using std::string_literals::operator""s;

namespace {

// A run of ura_event with arguments as they are typed, from its start to its end.
struct UraEvent {
  explicit UraEvent(const std::string& arguments) : UraEvent(ProgramRun(URA_EVENT " " + arguments)) {}

  const std::string printed;
  const int status;

 private:
  explicit UraEvent(ProgramRun run) : printed(run.Output()), status(run.Status()) {}
};

std::string ThisYear(int offset) {
  const std::time_t now = std::time(nullptr);
  return std::to_string(std::localtime(&now)->tm_year + 1900 + offset);
}

TEST(UraEventToEventPort, SendsOneDatagram) {
  const struct {
    const char* name;
    std::string arguments;
    std::string datagram;
  } cases[] = {
      {"a switch", "-id 305419896 -val 1 -type ParameterSwitch", "\x78\x56\x34\x12\1\1"},
      {"a colour, by the alias", "-TYPE parameterrgb -VAL 0xFF0000 -ID 1", "\1\0\0\0\4\xFF\0\0\0"s},
      // The server's address may be given, and does not count.
      {"another server", "-id 1 -val 1 -type ParameterByte -ap 9999 -a 192.0.2.1", "\1\0\0\0\1\1"s},
      {"this year", "-id 1 -val 1 -type ParameterByte -y " + ThisYear(0), "\1\0\0\0\1\1"s},
      // A schedule without set-points is switched on or off; one with them is cut to 673 modulo 256 bytes.
      {"a schedule's switch", "-id 1 -val 3 -type ParameterThermoChronoWeek", "\1\0\0\0\1\3"s},
      {"a schedule", "-id 1 -val 3, -type ParameterThermoChronoWeek",
       "\1\0\0\0\xA1\3"s + std::string(160, '\0')},
      {"the longest whole text", "-id 1 -type ParameterInfo -val " + std::string(255, 'i'),
       "\1\0\0\0\xFF"s + std::string(255, 'i')},
      {"a text cut to nothing", "-id 1 -type ParameterInfo -val " + std::string(256, 'i'), "\1\0\0\0\0"s},
      {"a huge text", "-id 1 -type ParameterCamera -val " + std::string(100300, 'c'),
       "\1\0\0\0\xCC"s + std::string(204, 'c')},
  };
  const LoopbackReceiver server(LoopbackReceiver::kEventPort);
  for (const auto& event : cases) {
    SCOPED_TRACE(event.name);
    const UraEvent run(event.arguments);
    EXPECT_EQ(run.printed, "");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(server.Receive(), event.datagram);
    EXPECT_FALSE(server.HasDatagram(0));
  }
}

TEST(UraEventWithoutServerEventPort, Succeeds) {
  const UraEvent run("-id 42 -val 1 -type ParameterSwitch");
  EXPECT_EQ(run.printed, "");
  EXPECT_EQ(run.status, 0);
}

Report From(const char* function, int code, const char* message, int line) {
  return {.code = code, .source = "Application", .function = function, .message = message, .line = line};
}

TEST(UraEventRefusalEventPort, IsReportedAndSendsNothing) {
  const Report unknownType = {.code = 1,
                              .source = "tav_parameterfactory",
                              .function = "StringToData",
                              .message = "Parameter id not found",
                              .line = 173};
  const struct {
    std::string arguments;
    std::vector<Report> records;  // the last one's code is the exit status
  } cases[] = {
      {"", {From("Init", 6, "-id must be specified.", 113)}},
      {"-id", {From("Init", 6, "-val must be specified.", 117)}},
      {"-id 1 -val 1", {From("Init", 6, "-type must be specified.", 121)}},
      {"-id 1 -val 1 -type ParameterByte -y " + ThisYear(-1),
       {From("Init", 1, "Is not time to run event, wrong year", 129)}},
      {"-id 1 -type ParameterByte -val", {From("Execute", 6, "Insalid Parameter Data", 137)}},
      {"-id 1 -val 1 -type SWITCH",
       {unknownType, From("Execute", 1, "Can not convert string data to buffer data", 151)}},
  };
  const LoopbackReceiver server(LoopbackReceiver::kEventPort);
  for (const auto& refusal : cases) {
    SCOPED_TRACE(refusal.arguments);
    const UraEvent run(refusal.arguments);
    ExpectReports(run.printed, refusal.records);
    EXPECT_EQ(run.status, refusal.records.back().code);
    EXPECT_FALSE(server.HasDatagram(0));
  }
}

// With standard input closed the socket gets descriptor 0, which stands for no socket.
TEST(UraEvent, SaysThatItCouldNotSend) {
  const UraEvent run("-id 1 -val 1 -type ParameterByte <&-");
  EXPECT_THAT(run.printed, testing::HasSubstr("Custom Message - : Socket is invalid.\n"));
  const std::size_t last = run.printed.rfind("tavError Number");
  ASSERT_NE(last, std::string::npos) << run.printed;
  ExpectReports(run.printed.substr(last), {From("Execute", 1, "Can not send UDP Data", 187)});
  EXPECT_EQ(run.status, 1);
}

constexpr const char* kHelp =
    "\nEvent dispatcher for ura system Help\n-id parameterd sid ------ [e.g - 1]\n"
    "-val parameter value ---- [e.g - 1]\n-y   year of execution -- [e.g - 2100]\n"
    "-type parameterd type --- [e.g - SWITCH]\n-version version -------- [e.g - 1.0.0]\n"
    "-fversion frame version - [e.g - 1.0.0]\n-u parameter value ------ [e.g - user]\n"
    "-p parameter value ------ [e.g - password]\n-a ura address ---------- [e.g - 192.168.1.66]\n"
    "-ap ura port ------------ [e.g - 3050]\n-log log file name -------[file application log]\n\n";

TEST(UraEventPrinting, ComesBeforeAnythingElse) {
  const struct {
    const char* arguments;
    const char* printed;
  } cases[] = {
      {"-fversion -version -H", kHelp}, {"-fversion -id -version", "1.5.1\n"}, {"-val -fversion", "2.9.3\n"}};
  for (const auto& printing : cases) {
    SCOPED_TRACE(printing.arguments);
    const UraEvent run(printing.arguments);
    EXPECT_EQ(run.printed, printing.printed);
    EXPECT_EQ(run.status, 0);
  }
}

TEST(UraEventLog, HasEveryRecordOfEveryRun) {
  const TemporaryFolder folder;
  const std::string log = folder.Path("ura.log");
  const UraEvent first("-log " + log), second("-id -log " + log);
  EXPECT_NE(first.printed, "");
  EXPECT_EQ(ReadFile(log), first.printed + second.printed);
}

}  // namespace
