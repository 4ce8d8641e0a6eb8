#include <gmock/gmock.h>

#include <csignal>

#include "dro_osudpsocket.h"
#include "loopback_receiver.h"
#include "program_run.h"

namespace {

using testing::HasSubstr, testing::MatchesRegex, testing::StartsWith;

unsigned short FreePort() { return LoopbackReceiver().Port(); }

// A listener on a port of its own, started and ready.
class ReadyListener : public ProgramRun {
 public:
  explicit ReadyListener(const std::string& options = "", unsigned short port = FreePort())
      : ProgramRun(URA_LISTEN " -port " + std::to_string(port) + " " + options) {
    EXPECT_THAT(ErrorLine(), HasSubstr(std::to_string(port)));
    m_sender.SetTo("127.0.0.1", port);
  }

  // One event, as another program sends it: switches parameter 42 on.
  void Send() { m_sender.Send("\x2A\0\0\0\1\1", 6); }

 private:
  dro::droOsUdpSocket m_sender;
};

TEST(UraListenEventPort, ShowsWhatUraEventSends) {
  ProgramRun listener(URA_LISTEN " -count 2 -type ParameterColor");
  EXPECT_THAT(listener.ErrorLine(), HasSubstr("16549"));
  EXPECT_EQ(ProgramRun(URA_EVENT " -id 42 -val 1 -type ParameterSwitch").Status(), 0);
  EXPECT_EQ(ProgramRun(URA_EVENT " -id 7 -val 0xFF8000 -type ParameterColor").Status(), 0);
  EXPECT_EQ(listener.Output(),
            "id 42 length 1 value 01 means the first 1 of 4 bytes\n"
            "id 7 length 4 value FF 80 00 00 means 0xFF800000\n");
  EXPECT_EQ(listener.Status(), 0);
}

TEST(UraListen, BeginsLinesWithTheLocalTimeWhenAskedAndCountsThem) {
  ReadyListener listener("-time -count 1");
  listener.Send();
  EXPECT_EQ(listener.Errors(), "ura_listen: 1 datagram received\n");
  EXPECT_THAT(listener.Output(),
              MatchesRegex("[0-9]{4}-[0-9]{2}-[0-9]{2} [0-9]{2}:[0-9]{2}:[0-9]{2}\\.[0-9]{3} "
                           "id 42 length 1 value 01\n"));
}

TEST(UraListen, EndsCleanlyAtASignal) {
  for (const int number : {SIGINT, SIGTERM}) {
    ReadyListener listener("-type ParameterThermoChronoWeek");  // which has a thread of its own
    listener.Signal(number);
    EXPECT_EQ(listener.Errors(), "ura_listen: 0 datagrams received\n") << number;
    EXPECT_EQ(listener.Status(), 0) << number;
  }
}

TEST(UraListen, EndsWhenItCannotPrint) {
  ReadyListener listener(">/dev/full");
  listener.Send();
  EXPECT_EQ(listener.Errors(), "ura_listen: cannot print: No space left on device\n");
  EXPECT_EQ(listener.Status(), 1);
}

TEST(UraListen, SaysThatThePortIsInUse) {
  const LoopbackReceiver holder;
  const std::string port = std::to_string(holder.Port());
  ProgramRun listener(URA_LISTEN " -port " + port);
  EXPECT_EQ(listener.Errors(), "ura_listen: UDP port " + port +
                                   " is in use (is the server running?); -port P listens elsewhere\n");
  EXPECT_EQ(listener.Status(), 1);
}

TEST(UraListen, ExplainsWhatIsWrongWithItsArguments) {
  const struct {
    const char* arguments;
    const char* message;
  } cases[] = {{"file", "there is no option \"file\"; --help lists the options\n"},
               {"-count", "the value of -count is missing"},
               {"-count 0", "-count takes a number from 1 to 4294967295, not \"0\"\n"},
               {"-port 65536", "-port takes a number from 1 to 65535, not \"65536\"\n"},
               {"-port 1x", "-port takes a number from 1 to 65535, not \"1x\"\n"},
               {"-type Switch", "there is no type \"Switch\"; the types are ParameterSwitch, "}};
  for (const auto& refused : cases) {
    ProgramRun run(URA_LISTEN " " + std::string(refused.arguments));
    EXPECT_THAT(run.Errors(), StartsWith("ura_listen: " + std::string(refused.message)));
    EXPECT_EQ(run.Status(), 2) << refused.arguments;
  }
}

}  // namespace
