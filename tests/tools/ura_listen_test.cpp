#include <gmock/gmock.h>
#include <linux/sock_diag.h>
#include <sys/resource.h>

#include "loopback_receiver.h"
#include "program_run.h"

namespace {

using testing::HasSubstr;
using testing::MatchesRegex;
using testing::StartsWith;

// A listener on a port of its own, started and ready.
class ReadyListener : public ProgramRun {
 public:
  explicit ReadyListener(const std::string& options = "", const std::string& port = FreePort())
      : ProgramRun(URA_LISTEN " -port " + port + " " + options), m_port(port) {
    EXPECT_EQ(ErrorLine(), "ura_listen: waiting for events on UDP port " + port + " of the loopback host\n");
  }

  // One datagram, as another program sends it: switches parameter 42 on.
  void Send() const {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(std::stoi(m_port)));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    constexpr char event[] = {42, 0, 0, 0, 1, 1};
    sendto(m_sender, event, sizeof event, 0, reinterpret_cast<sockaddr*>(&address), sizeof address);
  }

  ~ReadyListener() { close(m_sender); }

 private:
  static std::string FreePort() { return std::to_string(LoopbackReceiver().Port()); }

  const std::string m_port;
  const int m_sender = socket(AF_INET, SOCK_DGRAM, 0);
};

TEST(UraListenEventPort, ShowsWhatUraEventSends) {
  ProgramRun listener(URA_LISTEN " -count 2");
  EXPECT_THAT(listener.ErrorLine(), HasSubstr("16549"));
  EXPECT_EQ(ProgramRun(URA_EVENT " -id 42 -val 1 -type ParameterSwitch").Status(), 0);
  EXPECT_EQ(ProgramRun(URA_EVENT " -id 7 -val 0xFF8000 -type ParameterColor").Status(), 0);
  EXPECT_EQ(listener.Output(), "id 42 length 1 value 01\nid 7 length 4 value FF 80 00 00\n");
  EXPECT_EQ(listener.Status(), 0);
}

TEST(UraListen, TellsAtTheEndHowManyDatagramsItReceived) {
  ReadyListener listener("-count 1");
  listener.Send();
  EXPECT_EQ(listener.Errors(), "ura_listen: 1 datagram received\n");
}

TEST(UraListen, TellsHowManyDatagramsTheKernelDropped) {
  std::array<std::uint32_t, SK_MEMINFO_VARS> numbers;
  socklen_t size = sizeof numbers;
  const int asked = socket(AF_INET, SOCK_DGRAM, 0);
  getsockopt(asked, SOL_SOCKET, SO_MEMINFO, numbers.data(), &size);
  close(asked);
  if (size != sizeof numbers) GTEST_SKIP() << "the system does not count them";

  ReadyListener listener("-count 1");
  listener.Signal(SIGSTOP);
  ASSERT_EQ(waitpid(listener.Process(), nullptr, WUNTRACED), listener.Process());
  for (int i = 0; i < 20000; ++i) listener.Send();  // more than any usual receive buffer holds
  listener.Signal(SIGCONT);
  EXPECT_THAT(listener.Errors(),
              MatchesRegex("ura_listen: 1 datagram received, [1-9][0-9]+ lost because the receive buffer was "
                           "full\n"));
}

TEST(UraListen, BeginsLinesWithTheLocalTimeWhenAsked) {
  ReadyListener listener("-time -count 1");
  listener.Send();
  EXPECT_THAT(listener.Output(),
              MatchesRegex("[0-9]{4}-[0-9]{2}-[0-9]{2} [0-9]{2}:[0-9]{2}:[0-9]{2}\\.[0-9]{3} "
                           "id 42 length 1 value 01\n"));
}

class UraListenSignal : public testing::TestWithParam<int> {};
TEST_P(UraListenSignal, EndsItCleanly) {
  ReadyListener listener("-type ParameterThermoChronoWeek");  // which has a thread of its own
  listener.Signal(GetParam());
  EXPECT_EQ(listener.Errors(), "ura_listen: 0 datagrams received\n");
  EXPECT_EQ(listener.Status(), 0);
}
INSTANTIATE_TEST_SUITE_P(Signals, UraListenSignal, testing::Values(SIGINT, SIGTERM));

TEST(UraListen, EndsWhenItCannotPrint) {
  ReadyListener listener(">/dev/full");
  listener.Send();
  EXPECT_EQ(listener.Errors(), "ura_listen: cannot print: No space left on device\n");
  EXPECT_EQ(listener.Status(), 1);
}

TEST(UraListen, EndsWhenItCannotWaitForDatagrams) {
  ReadyListener listener;
  // Waiting on two descriptors is refused when a process may have one; the wait under way goes on.
  const rlimit oneDescriptor{1, 1};
  ASSERT_EQ(prlimit(listener.Process(), RLIMIT_NOFILE, &oneDescriptor, nullptr), 0);
  listener.Send();
  EXPECT_EQ(listener.Errors(), "ura_listen: cannot wait for datagrams: Invalid argument\n");
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

struct PrintingCase {
  const char* option;
  const char* start;
};
void PrintTo(const PrintingCase& printing, std::ostream* o_stream) { *o_stream << printing.option; }

class UraListenPrinting : public testing::TestWithParam<PrintingCase> {};
TEST_P(UraListenPrinting, PrintsAndEnds) {
  ProgramRun run(URA_LISTEN " -count 1 " + std::string(GetParam().option));
  EXPECT_THAT(run.Output(), StartsWith(GetParam().start));
  EXPECT_EQ(run.Status(), 0);
}
INSTANTIATE_TEST_SUITE_P(Options, UraListenPrinting,
                         testing::Values(PrintingCase{"-h", "ura_listen shows"},
                                         PrintingCase{"--help", "ura_listen shows"},
                                         PrintingCase{"-version", "1.5.1\n"},
                                         PrintingCase{"--version", "1.5.1\n"}));

struct RefusedCase {
  const char* arguments;
  const char* message;
};
void PrintTo(const RefusedCase& refused, std::ostream* o_stream) { *o_stream << refused.arguments; }

class UraListenRefused : public testing::TestWithParam<RefusedCase> {};
TEST_P(UraListenRefused, ArgumentsAreExplained) {
  ProgramRun run(URA_LISTEN " " + std::string(GetParam().arguments));
  EXPECT_THAT(run.Errors(), StartsWith(std::string("ura_listen: ") + GetParam().message));
  EXPECT_EQ(run.Status(), 2);
}
INSTANTIATE_TEST_SUITE_P(
    Arguments, UraListenRefused,
    testing::Values(RefusedCase{"file", "there is no option \"file\"; --help lists the options\n"},
                    RefusedCase{"-count", "the value of -count is missing"},
                    RefusedCase{"-count 0", "-count takes a number from 1 to 4294967295, not \"0\"\n"},
                    RefusedCase{"-port 65536", "-port takes a number from 1 to 65535, not \"65536\"\n"},
                    RefusedCase{"-port 1x", "-port takes a number from 1 to 65535, not \"1x\"\n"},
                    RefusedCase{"-type Switch",
                                "there is no type \"Switch\"; the types are ParameterSwitch, "}));

}  // namespace
