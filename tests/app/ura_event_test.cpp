#include <gmock/gmock.h>

#include <ctime>

#include "loopback_receiver.h"
#include "program_run.h"
#include "tav_error.h"
#include "temporary_folder.h"

using testing::EndsWith;
using testing::HasSubstr;

namespace {

using Arguments = std::vector<std::string>;
using Bytes = std::vector<unsigned char>;
using Input = ProgramRun::Input;

// What a run prints, and its exit status in brackets.
std::string UraEvent(const Arguments& arguments, Input input = Input::Inherited,
                     const char* output = nullptr) {
  ProgramRun run(URA_EVENT, arguments, input, output);
  const std::string printed = run.Output();
  return printed + "[" + std::to_string(run.Status()) + "]";
}

std::string Record(tavon::tavEError code, const char* message, const char* function, int line) {
  return tavon::tavBuildErrorLocation(code, message, "Application", function, line).GetDescription();
}

std::string ThisYear(int offset) {
  const std::time_t now = std::time(nullptr);
  return std::to_string(std::localtime(&now)->tm_year + 1900 + offset);
}

Bytes Datagram(Bytes start, const std::string& value) {
  start.insert(start.end(), value.begin(), value.end());
  return start;
}

TEST(UraEventEventPort, SendsEvents) {
  const std::pair<Arguments, Bytes> cases[] = {
      {{"-id", "42", "-val", "1", "-type", "ParameterSwitch"}, {0x2A, 0, 0, 0, 1, 1}},
      {{"-TYPE", "parameterrgb", "-VAL", "0xFF0000", "-ID", "305419896"},
       {0x78, 0x56, 0x34, 0x12, 4, 0xFF, 0, 0, 0}},
      {{"-id", "4294967296", "-val", "3000000000", "-type", "ParameterByte"}, {255, 255, 255, 255, 1, 255}},
      {{"-id", "-val", "5", "-type", "ParameterByte"}, {0, 0, 0, 0, 1, 5}},
      {{"-id", "1", "-val", "0", "-type", "ParameterSlider", "-ap", "9999", "-a", "192.0.2.1", "-y",
        ThisYear(0)},
       {1, 0, 0, 0, 4, 0, 0, 0, 0}},
      {{"-val", "3", "-type", "ParameterThermoChronoWeek", "-id", "1"}, {1, 0, 0, 0, 1, 3}},
      {{"-val", "3,", "-type", "ParameterThermoChronoWeek", "-id", "1"},
       Datagram({1, 0, 0, 0, 161, 3}, std::string(160, '\0'))},  // cut to 673 modulo 256 bytes
      {{"-id", "1", "-type", "ParameterInfo", "-val", std::string(255, 'i')},
       Datagram({1, 0, 0, 0, 255}, std::string(255, 'i'))},
      {{"-id", "1", "-type", "ParameterInfo", "-val", std::string(256, 'i')}, {1, 0, 0, 0, 0}},
      {{"-id", "1", "-type", "ParameterCamera", "-val", std::string(100300, 'c')},
       Datagram({1, 0, 0, 0, 100300 % 256}, std::string(100300 % 256, 'c'))},
  };
  const LoopbackReceiver server(LoopbackReceiver::kEventPort);
  for (const auto& [arguments, datagram] : cases) {
    EXPECT_EQ(UraEvent(arguments), "[0]") << testing::PrintToString(arguments);
    EXPECT_EQ(server.Receive(), datagram);
  }
  EXPECT_FALSE(server.HasDatagram(0)) << "one event, one datagram";
}

TEST(UraEventEventPort, SendsNothingAfterAnError) {
  const std::string notConverted =
      Record(tavon::tavError_OperationFailed, "Can not convert string data to buffer data", "Execute", 151);
  const std::pair<Arguments, std::string> cases[] = {
      {{}, Record(tavon::tavError_InvalidArgument, "-id must be specified.", "Init", 113)},
      {{"-id"}, Record(tavon::tavError_InvalidArgument, "-val must be specified.", "Init", 117)},
      {{"-id", "1", "-val", "1"},
       Record(tavon::tavError_InvalidArgument, "-type must be specified.", "Init", 121)},
      {{"-id", "1", "-type", "ParameterByte", "-val"},
       Record(tavon::tavError_InvalidArgument, "Insalid Parameter Data", "Execute", 137)},
      {{"-id", "1", "-type", "ParameterByte", "-val", "1", "-y", ThisYear(-1)},
       Record(tavon::tavError_OperationFailed, "Is not time to run event, wrong year", "Init", 129)},
      {{"-id", "1", "-type", "SWITCH", "-val", "1"},
       tavon::tavBuildErrorLocation(tavon::tavError_OperationFailed, "Parameter id not found",
                                    "tav_parameterfactory", "StringToData", 173)
               .GetDescription() +
           notConverted},
  };
  const LoopbackReceiver server(LoopbackReceiver::kEventPort);
  for (const auto& [arguments, record] : cases) {
    const char code = record[std::string("tavError Number : ").size()];
    EXPECT_EQ(UraEvent(arguments), record + "[" + code + "]") << "the code of the record";
  }
  EXPECT_FALSE(server.HasDatagram(50));
}

TEST(UraEventEventPort, DoesNotMindThatNobodyListens) {
  EXPECT_EQ(UraEvent({"-id", "1", "-val", "1", "-type", "ParameterByte"}), "[0]");
}

TEST(UraEvent, PrintsHelpAndVersionsBeforeAnythingElse) {
  const std::pair<Arguments, std::string> cases[] = {
      {{"-fversion", "-version", "-H"},
       "\nEvent dispatcher for ura system Help\n-id parameterd sid ------ [e.g - 1]\n"
       "-val parameter value ---- [e.g - 1]\n-y   year of execution -- [e.g - 2100]\n"
       "-type parameterd type --- [e.g - SWITCH]\n-version version -------- [e.g - 1.0.0]\n"
       "-fversion frame version - [e.g - 1.0.0]\n-u parameter value ------ [e.g - user]\n"
       "-p parameter value ------ [e.g - password]\n-a ura address ---------- [e.g - 192.168.1.66]\n"
       "-ap ura port ------------ [e.g - 3050]\n-log log file name -------[file application log]\n\n"},
      {{"-fversion", "-id", "-version"}, "1.5.1\n"},
      {{"-val", "-fversion"}, "2.9.3\n"}};
  for (const auto& [arguments, text] : cases) EXPECT_EQ(UraEvent(arguments), text + "[0]");
}

TEST(UraEvent, LogsToAFileWhenAskedTo) {
  const TemporaryFolder folder;
  const std::string log = folder.Path("ura.log");
  const std::string record = Record(tavon::tavError_InvalidArgument, "-id must be specified.", "Init", 113);
  for (int i = 0; i < 2; ++i) EXPECT_EQ(UraEvent({"-log", log}), record + "[6]");
  EXPECT_EQ(UraEvent({"-log", log}, Input::Inherited, "/dev/full"), "[6]");
  EXPECT_EQ(ReadFile(log), record + record + record);
  EXPECT_EQ(UraEvent({"-log", folder.Path("missing/ura.log")}), record + "[6]");
  EXPECT_EQ(UraEvent({"-log", ""}), record + "[6]");
}

// With its standard input closed, the program's first descriptor is 0, which stands for no socket.
TEST(UraEvent, SaysThatItCouldNotSend) {
  const std::string result = UraEvent({"-id", "1", "-val", "1", "-type", "ParameterByte"}, Input::Closed);
  EXPECT_THAT(result, HasSubstr("Network communication error.\nFile ----------- : dro_osudpsocket"));
  EXPECT_THAT(result, HasSubstr("Custom Message - : Socket is invalid.\n"));
  EXPECT_THAT(
      result,
      EndsWith(Record(tavon::tavError_OperationFailed, "Can not send UDP Data", "Execute", 187) + "[1]"));
}

}  // namespace
