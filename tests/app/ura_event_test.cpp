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

constexpr auto kName = [](const auto& instance) { return instance.param.name; };

struct EventCase {
  const char* name;
  std::string arguments;
  std::string datagram;
};
void PrintTo(const EventCase& event, std::ostream* o_stream) { *o_stream << event.name; }

class UraEventToEventPort : public testing::TestWithParam<EventCase> {};
TEST_P(UraEventToEventPort, SendsOneDatagram) {
  const LoopbackReceiver server(LoopbackReceiver::kEventPort);
  const UraEvent run(GetParam().arguments);
  EXPECT_EQ(run.printed, "");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(server.Receive(), GetParam().datagram);
  EXPECT_FALSE(server.HasDatagram(0));
}
INSTANTIATE_TEST_SUITE_P(
    Events, UraEventToEventPort,
    testing::Values(
        EventCase{"Switch", "-id 305419896 -val 1 -type ParameterSwitch", "\x78\x56\x34\x12\1\1"},
        EventCase{"ColourByItsAlias", "-TYPE parameterrgb -VAL 0xFF0000 -ID 1", "\1\0\0\0\4\xFF\0\0\0"s},
        // The server's address may be given, and does not count.
        EventCase{"OtherServer", "-id 1 -val 1 -type ParameterByte -ap 9999 -a 192.0.2.1", "\1\0\0\0\1\1"s},
        EventCase{"ThisYear", "-id 1 -val 1 -type ParameterByte -y " + ThisYear(0), "\1\0\0\0\1\1"s},
        // A schedule without set-points is switched on or off; one with them is cut to 673 modulo 256 bytes.
        EventCase{"ScheduleSwitch", "-id 1 -val 3 -type ParameterThermoChronoWeek", "\1\0\0\0\1\3"s},
        EventCase{"Schedule", "-id 1 -val 3, -type ParameterThermoChronoWeek",
                  "\1\0\0\0\xA1\3"s + std::string(160, '\0')},
        EventCase{"LongestWholeText", "-id 1 -type ParameterInfo -val " + std::string(255, 'i'),
                  "\1\0\0\0\xFF"s + std::string(255, 'i')},
        EventCase{"TextThatIsCutToNothing", "-id 1 -type ParameterInfo -val " + std::string(256, 'i'),
                  "\1\0\0\0\0"s},
        EventCase{"HugeText", "-id 1 -type ParameterCamera -val " + std::string(100300, 'c'),
                  "\1\0\0\0\xCC"s + std::string(204, 'c')}),
    kName);

TEST(UraEventWithoutServerEventPort, Succeeds) {
  const UraEvent run("-id 42 -val 1 -type ParameterSwitch");
  EXPECT_EQ(run.printed, "");
  EXPECT_EQ(run.status, 0);
}

struct RefusalCase {
  const char* name;
  std::string arguments;
  std::vector<Report> records;  // the last one's code is the exit status
};
void PrintTo(const RefusalCase& refusal, std::ostream* o_stream) { *o_stream << refusal.name; }

Report From(const char* function, int code, const char* message, int line) {
  return {.code = code, .source = "Application", .function = function, .message = message, .line = line};
}

class UraEventRefusalEventPort : public testing::TestWithParam<RefusalCase> {};
TEST_P(UraEventRefusalEventPort, IsReportedAndSendsNothing) {
  const LoopbackReceiver server(LoopbackReceiver::kEventPort);
  const UraEvent run(GetParam().arguments);
  ExpectReports(run.printed, GetParam().records);
  EXPECT_EQ(run.status, GetParam().records.back().code);
  EXPECT_FALSE(server.HasDatagram(0));
}
INSTANTIATE_TEST_SUITE_P(
    Arguments, UraEventRefusalEventPort,
    testing::Values(RefusalCase{"NoId", "", {From("Init", 6, "-id must be specified.", 113)}},
                    RefusalCase{"NoValue", "-id", {From("Init", 6, "-val must be specified.", 117)}},
                    RefusalCase{"NoType", "-id 1 -val 1", {From("Init", 6, "-type must be specified.", 121)}},
                    RefusalCase{"WrongYear",
                                "-id 1 -val 1 -type ParameterByte -y " + ThisYear(-1),
                                {From("Init", 1, "Is not time to run event, wrong year", 129)}},
                    RefusalCase{"EmptyValue",
                                "-id 1 -type ParameterByte -val",
                                {From("Execute", 6, "Insalid Parameter Data", 137)}},
                    RefusalCase{"UnknownType",
                                "-id 1 -val 1 -type SWITCH",
                                {{.code = 1,
                                  .source = "tav_parameterfactory",
                                  .function = "StringToData",
                                  .message = "Parameter id not found",
                                  .line = 173},
                                 From("Execute", 1, "Can not convert string data to buffer data", 151)}}),
    kName);

// With standard input closed the socket gets descriptor 0, which stands for no socket.
TEST(UraEvent, SaysThatItCouldNotSend) {
  const UraEvent run("-id 1 -val 1 -type ParameterByte <&-");
  EXPECT_THAT(run.printed, testing::HasSubstr("Custom Message - : Socket is invalid.\n"));
  const std::size_t last = run.printed.rfind("tavError Number");
  ASSERT_NE(last, std::string::npos) << run.printed;
  ExpectReports(run.printed.substr(last), {From("Execute", 1, "Can not send UDP Data", 187)});
  EXPECT_EQ(run.status, 1);
}

struct PrintingCase {
  const char* name;
  const char* arguments;
  const char* printed;
};
void PrintTo(const PrintingCase& printing, std::ostream* o_stream) { *o_stream << printing.name; }

constexpr const char* kHelp =
    "\nEvent dispatcher for ura system Help\n-id parameterd sid ------ [e.g - 1]\n"
    "-val parameter value ---- [e.g - 1]\n-y   year of execution -- [e.g - 2100]\n"
    "-type parameterd type --- [e.g - SWITCH]\n-version version -------- [e.g - 1.0.0]\n"
    "-fversion frame version - [e.g - 1.0.0]\n-u parameter value ------ [e.g - user]\n"
    "-p parameter value ------ [e.g - password]\n-a ura address ---------- [e.g - 192.168.1.66]\n"
    "-ap ura port ------------ [e.g - 3050]\n-log log file name -------[file application log]\n\n";

class UraEventPrinting : public testing::TestWithParam<PrintingCase> {};
TEST_P(UraEventPrinting, ComesBeforeAnythingElse) {
  const UraEvent run(GetParam().arguments);
  EXPECT_EQ(run.printed, GetParam().printed);
  EXPECT_EQ(run.status, 0);
}
INSTANTIATE_TEST_SUITE_P(Options, UraEventPrinting,
                         testing::Values(PrintingCase{"Help", "-fversion -version -H", kHelp},
                                         PrintingCase{"Version", "-fversion -id -version", "1.5.1\n"},
                                         PrintingCase{"FrameVersion", "-val -fversion", "2.9.3\n"}),
                         kName);

TEST(UraEventLog, HasEveryRecordOfEveryRun) {
  const TemporaryFolder folder;
  const std::string log = folder.Path("ura.log");
  const UraEvent first("-log " + log), second("-id -log " + log);
  EXPECT_EQ(ReadFile(log), first.printed + second.printed);
}

TEST(UraEventLog, HasTheRecordThatCannotBePrinted) {
  const TemporaryFolder folder;
  const UraEvent run("-log " + folder.Path("ura.log") + " >/dev/full");
  ExpectReports(ReadFile(folder.Path("ura.log")), {From("Init", 6, "-id must be specified.", 113)});
  EXPECT_EQ(run.status, 6);
}

class UraEventWithoutLog : public testing::TestWithParam<const char*> {};
TEST_P(UraEventWithoutLog, PrintsItsRecordAllTheSame) {
  const UraEvent run("-log " + std::string(GetParam()));
  ExpectReports(run.printed, {From("Init", 6, "-id must be specified.", 113)});
  EXPECT_EQ(run.status, 6);
}
INSTANTIATE_TEST_SUITE_P(Files, UraEventWithoutLog, testing::Values("/nowhere/ura.log", "''"));

}  // namespace
