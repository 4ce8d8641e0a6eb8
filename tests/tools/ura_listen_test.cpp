#include <gmock/gmock.h>

#include "loopback_receiver.h"
#include "program_run.h"

using testing::HasSubstr;
using testing::StartsWith;

TEST(UraListenEventPort, ShowsEventsAsTheyAreSentOrWhyItCannot) {
  const auto send = [](const std::string& event) { EXPECT_EQ(ProgramRun(URA_EVENT + event).Status(), 0); };
  ProgramRun listener(URA_LISTEN " -count 2");
  EXPECT_THAT(listener.ErrorLine(), HasSubstr("16549"));
  send(" -id 42 -val 1 -type ParameterSwitch");
  send(" -id 7 -val 0xFF8000 -type ParameterColor");
  EXPECT_EQ(listener.Output(), "id 42 length 1 value 01\nid 7 length 4 value FF 80 00 00\n");
  EXPECT_EQ(listener.Status(), 0);
  ProgramRun blocked(URA_LISTEN " >/dev/full");
  EXPECT_THAT(blocked.ErrorLine(), HasSubstr("16549"));
  send(" -id 42 -val 1 -type ParameterSwitch");
  EXPECT_EQ(blocked.ErrorLine(), "ura_listen: cannot print: No space left on device\n");
  EXPECT_EQ(blocked.Status(), 1);
}

TEST(UraListen, EndsCleanlyWhenToldTo) {
  for (const int signal : {SIGINT, SIGTERM}) {
    const std::string port = std::to_string(LoopbackReceiver().Port());
    ProgramRun listener(URA_LISTEN " -type ParameterThermoChronoWeek -port " +
                        port);  // with a thread of its own
    EXPECT_THAT(listener.ErrorLine(), HasSubstr("waiting"));
    listener.Signal(signal);
    EXPECT_EQ(listener.Output() + std::to_string(listener.Status()), "0");
  }
}

TEST(UraListen, SaysThatThePortIsInUse) {
  const LoopbackReceiver holder;
  const std::string port = std::to_string(holder.Port());
  ProgramRun listener(URA_LISTEN " -port " + port);
  EXPECT_EQ(listener.Errors(), "ura_listen: UDP port " + port +
                                   " is in use (is the server running?); -port P listens elsewhere\n");
  EXPECT_EQ(listener.Output() + std::to_string(listener.Status()), "1");
}

TEST(UraListen, ExplainsItsOptions) {
  ProgramRun help(URA_LISTEN " -count 1 -h");
  EXPECT_THAT(help.Output(), HasSubstr("usage: ura_listen [-count N] [-port P] [-type NAME]\n"));
  EXPECT_EQ(help.Status(), 0);
  for (const std::string wrong : {"-count", "-count 0", "-port 65536", "-port 1x", "-type Switch", "file"}) {
    ProgramRun refused(URA_LISTEN " " + wrong);
    EXPECT_THAT(refused.Errors(), StartsWith("ura_listen: \"" + wrong));
    EXPECT_EQ(refused.Status(), 2);
  }
}
