#include <gmock/gmock.h>

#include "loopback_receiver.h"
#include "program_run.h"

using testing::HasSubstr;
using testing::StartsWith;

namespace {

std::string FreePort() { return std::to_string(LoopbackReceiver().Port()); }

TEST(UraListenEventPort, ShowsEventsAsTheyAreSent) {
  ProgramRun listener(URA_LISTEN, {"-count", "2"});
  EXPECT_THAT(listener.ErrorLine(), HasSubstr("16549"));
  EXPECT_EQ(ProgramRun(URA_EVENT, {"-id", "42", "-val", "1", "-type", "ParameterSwitch"}).Status(), 0);
  EXPECT_EQ(ProgramRun(URA_EVENT, {"-id", "7", "-val", "0xFF8000", "-type", "ParameterColor"}).Status(), 0);
  EXPECT_EQ(listener.Output(), "id 42 length 1 value 01\nid 7 length 4 value FF 80 00 00\n");
  EXPECT_EQ(listener.Status(), 0);
}

TEST(UraListen, EndsCleanlyWhenToldTo) {
  for (const int signal : {SIGINT, SIGTERM}) {
    ProgramRun listener(URA_LISTEN, {"-port", FreePort()});
    EXPECT_THAT(listener.ErrorLine(), HasSubstr("waiting"));
    listener.Signal(signal);
    EXPECT_EQ(listener.Output() + std::to_string(listener.Status()), "0");
  }
}

TEST(UraListen, SaysThatThePortIsInUse) {
  const LoopbackReceiver holder;
  ProgramRun listener(URA_LISTEN, {"-port", std::to_string(holder.Port())});
  EXPECT_EQ(listener.Errors(), "ura_listen: UDP port " + std::to_string(holder.Port()) +
                                   " is in use (is the server running?); -port P listens elsewhere\n");
  EXPECT_EQ(listener.Output() + std::to_string(listener.Status()), "1");
}

TEST(UraListen, ExplainsItsOptions) {
  ProgramRun help(URA_LISTEN, {"-count", "1", "-h"});
  EXPECT_THAT(help.Output(), HasSubstr("usage: ura_listen [-count N] [-port P] [-type NAME]\n"));
  EXPECT_EQ(help.Status(), 0);
  const std::vector<std::string> unusable[] = {{"-count"},      {"-count", "0"},     {"-port", "65536"},
                                               {"-port", "1x"}, {"-type", "Switch"}, {"file"}};
  for (const std::vector<std::string>& wrong : unusable) {
    ProgramRun refused(URA_LISTEN, wrong);
    EXPECT_THAT(refused.Errors(), StartsWith("ura_listen: \"" + wrong[0]));
    EXPECT_EQ(refused.Status(), 2);
  }
}

}  // namespace
