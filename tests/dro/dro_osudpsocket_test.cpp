#include "dro_osudpsocket.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <stdexcept>
#include <utility>

#include "emulation.h"
#include "expect_report.h"
#include "failing_allocation.h"
#include "system_calls.h"

using namespace dro;
using Socket = droOsUdpSocket;

namespace {

constexpr ReportsOf kFailure{"dro_osudpsocket", droError_Network};
constexpr ReportsOf kWarning{"dro_osudpsocket", droError_Warning};
constexpr droEOsSocketType kType = droOsSocketType_Udp;
constexpr unsigned char kMac[] = {0x00, 0x11, 0x22, 0x33, 0x44, 0x55};

// A plain UDP socket bound to a free port of the loopback host.
class BoundSocket {
 public:
  BoundSocket() {
    sockaddr_in address{AF_INET, 0, {htonl(INADDR_LOOPBACK)}, {}};
    socklen_t size = sizeof address;
    if (bind(m_descriptor, reinterpret_cast<sockaddr*>(&address), size) != 0)
      throw std::runtime_error("bind");
    getsockname(m_descriptor, reinterpret_cast<sockaddr*>(&address), &size);
    m_port = ntohs(address.sin_port);
  }
  ~BoundSocket() { close(m_descriptor); }
  BoundSocket(const BoundSocket&) = delete;

  int Descriptor() const { return m_descriptor; }
  unsigned short Port() const { return m_port; }

 private:
  const int m_descriptor = socket(AF_INET, SOCK_DGRAM, 0);
  unsigned short m_port;
};

// A network that keeps what is sent and knows one name: nothing leaves the machine.
struct DroOsUdpSocketAway : testing::Test {
  ssize_t Send(int descriptor, const void* data, std::size_t length, const sockaddr* to) {
    socklen_t size = sizeof mayBroadcast;
    getsockopt(descriptor, SOL_SOCKET, SO_BROADCAST, &mayBroadcast, &size);
    datagram.assign(static_cast<const char*>(data), length);
    const auto* address = reinterpret_cast<const sockaddr_in*>(to);
    destination = inet_ntoa(address->sin_addr) + (":" + std::to_string(ntohs(address->sin_port)));
    return static_cast<ssize_t>(length);
  }
  hostent* Find(const char* name) {
    lookedUp = name;
    return inet_aton(lookedUp == "myhost" ? "10.1.2.3" : name, &found) != 0 ? &host : nullptr;
  }
  int mayBroadcast = 0;
  std::string datagram, destination, lookedUp;
  in_addr found{};
  char* addresses[2] = {reinterpret_cast<char*>(&found), nullptr};
  hostent host{nullptr, nullptr, AF_INET, sizeof found, addresses};
  const decltype(system_calls::sendto)::Replacement sending{
      system_calls::sendto,
      [this](int descriptor, const void* data, std::size_t length, int, const sockaddr* to, socklen_t) {
        return Send(descriptor, data, length, to);
      }};
  const decltype(system_calls::gethostbyname)::Replacement names{
      system_calls::gethostbyname, [this](const char* name) { return Find(name); }};
};

TEST_F(DroOsUdpSocketAway, DatagramsGoToTheHostAndPortOfTheText) {
  const struct {
    const char* host;
    const char* lookedUp;
    const char* destination;
  } cases[] = {
      {"10.1.2.3", "", "10.1.2.3:99"},
      {"10.1.2.3:16549", "", "10.1.2.3:16549"},
      {" myhost :80:81", "myhost", "10.1.2.3:80"},
      {"255.255.255.255", "255.255.255.255", "255.255.255.255:99"},  // which reads as if it were no address
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.host);
    lookedUp.clear();
    Socket socket;
    EXPECT_EQ(socket.SetTo(c.host, 99), droError_NoError);
    EXPECT_EQ(socket.Send("x", 1), 1);
    EXPECT_EQ(lookedUp, c.lookedUp);
    EXPECT_EQ(destination, c.destination);
  }
}

TEST_F(DroOsUdpSocketAway, UnknownHostIsReportedAndStandsForAllMachines) {
  Socket socket;
  ExpectReport(kFailure("SetTo", "gethostbyname failed"), droError_Network,
               [&] { return socket.SetTo("nohost:80", 99); });
  socket.Send("x", 1);
  EXPECT_EQ(destination, "255.255.255.255:80");
}

TEST_F(DroOsUdpSocketAway, ClosingForgetsTheDestination) {
  Socket socket;
  socket.SetTo("10.1.2.3", 99);
  EXPECT_EQ(socket.Close(), droError_NoError);
  EXPECT_EQ(socket.Reset(), droError_NoError);
  socket.Send("x", 1);
  EXPECT_EQ(destination, "0.0.0.0:0");
}

TEST_F(DroOsUdpSocketAway, DestinationThatIsSetBeforeTheDescriptorIsOpenedStays) {
  Socket socket(kType);
  socket.SetTo("10.1.2.3", 99);
  EXPECT_EQ(socket.Reset(), droError_NoError);
  socket.Send("x", 1);
  EXPECT_EQ(destination, "10.1.2.3:99");
}

TEST_F(DroOsUdpSocketAway, WakeOnLanBroadcastsTheMagicPacket) {
  std::string packet(6, '\xFF');
  for (int i = 0; i < 16; ++i) packet.append(kMac, kMac + 6);
  EXPECT_EQ(Socket::WakeOnLan(kMac, 9), droError_NoError);
  EXPECT_EQ(datagram, packet);
  EXPECT_EQ(destination, "255.255.255.255:9");
  EXPECT_NE(mayBroadcast, 0);
  const auto cutting = system_calls::sendto.Returns(101);
  constexpr ReportsOf kCut{"dro_osudpsocket", droError_OperationFailed};
  ExpectReport(kCut("WakeOnLan", "can not send all packet data"), droError_OperationFailed,
               [] { return Socket::WakeOnLan(kMac, 9); });
}

// Where a socket is bound to, "127.0.0.1:80".
std::string BoundAddress(int descriptor) {
  sockaddr_in address{};
  socklen_t size = sizeof address;
  getsockname(descriptor, reinterpret_cast<sockaddr*>(&address), &size);
  return inet_ntoa(address.sin_addr) + (":" + std::to_string(ntohs(address.sin_port)));
}

TEST(DroOsUdpSocketBind, TakesHostAndPortAsTheyAreTakenForSending) {
  const unsigned short port = BoundSocket().Port();  // which is free again
  const struct {
    std::string host;
    unsigned short port;
    const char* boundHost;
  } cases[] = {
      {"127.0.0.1", port, "127.0.0.1"},
      {" localhost :" + std::to_string(port) + ":81", 1, "127.0.0.1"},
      {"", port, "0.0.0.0"},  // all addresses of this machine
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.host);
    const int descriptor = socket(AF_INET, SOCK_DGRAM, 0);
    Socket bound(kType, descriptor);
    EXPECT_EQ(bound.Bind(c.host, c.port), droError_NoError);
    EXPECT_EQ(BoundAddress(descriptor), c.boundHost + (":" + std::to_string(port)));
  }
}

TEST(DroOsUdpSocketBind, ReportsWhyItFails) {
  const BoundSocket taken;
  Socket socket;
  ExpectReport(kFailure("Bind", WithSystemError("Can not bind socket", EADDRINUSE)), droError_Network,
               [&] { return socket.Bind("127.0.0.1", taken.Port()); });
  EXPECT_EQ(errno, EADDRINUSE) << "for callers that say more about it";
  const auto noNames = system_calls::gethostbyname.Returns(nullptr);
  ExpectReport(kFailure("Bind", "gethostbyname failed"), droError_Network,
               [&] { return socket.Bind("nohost", 0); });
}

// A socket that receives what it sends.
struct DroOsUdpSocketHere : testing::Test {
  DroOsUdpSocketHere() { socket.SetTo("127.0.0.1", bound.Port()); }
  const BoundSocket bound;
  Socket socket{kType, dup(bound.Descriptor())};
  char buffer[8] = "-------";
};

TEST_F(DroOsUdpSocketHere, DatagramArrivesWithItsSenderCutToTheBuffer) {
  EXPECT_FALSE(socket.IsReadyToReceive(0));
  EXPECT_EQ(socket.Send("a\0bcd", 5), 5);
  EXPECT_TRUE(socket.IsReadyToReceive(10000));
  droString source;
  unsigned short sourcePort = 0;
  EXPECT_EQ(socket.Receive(buffer, 3, &source, &sourcePort), 3);
  EXPECT_EQ(std::string(buffer, 5), std::string("a\0b--", 5));
  EXPECT_EQ(source, "127.0.0.1");
  EXPECT_EQ(sourcePort, bound.Port());
}

// A call that is interrupted at first, and then fails for good.
auto InterruptedOnce() {
  return [error = EINTR](auto...) mutable -> ssize_t {
    errno = std::exchange(error, EPERM);
    return -1;
  };
}

TEST_F(DroOsUdpSocketHere, InterruptedTransferIsRepeatedWithAWarning) {
  const Report warning = kWarning("Send", "Std EINTR error continue...");
  const auto interrupted = system_calls::sendto.ReplaceBy(InterruptedOnce());
  ExpectReports({warning, kFailure("Send", WithSystemError("send error", EPERM))}, -1,
                [&] { return socket.Send("abc", 3); });
}

TEST_F(DroOsUdpSocketHere, InterruptedTransferOfNothingIsNotRepeatedOnPurpose) {
  const auto interrupted = system_calls::sendto.ReplaceBy(InterruptedOnce());
  ExpectReport(kWarning("Send", "Std EINTR error continue..."), -1, [&] { return socket.Send("", 0); });
}

TEST_F(DroOsUdpSocketHere, TransferThatRunsOutOfTimeIsToldByItsResultOnly) {
  fcntl(bound.Descriptor(), F_SETFL, O_NONBLOCK);
  const auto full = system_calls::sendto.FailsWith(EAGAIN);
  EXPECT_EQ(CapturedOutput([&] {
              EXPECT_EQ(socket.Receive(buffer, 7, nullptr, nullptr), -2);
              EXPECT_EQ(socket.Send("abc", 3), -2);
            }),
            "");
}

TEST_F(DroOsUdpSocketHere, WaitsWithoutMemory) {
  const auto shortage = FailingAllocation::OfAtLeast(1);
  EXPECT_TRUE(socket.IsReadyToSend(10000));
}

TEST_F(DroOsUdpSocketHere, TakesOverWhatIsSet) {
  if (kIsEmulated) GTEST_SKIP() << "qemu cuts the time-outs of 32-bit programs to whole seconds";
  EXPECT_TRUE(socket.SetReceiveTimeOut(1200));
  EXPECT_NEAR(socket.GetReceiveTimeOut(), 1200, 20) << "the kernel rounds";
  EXPECT_EQ(socket.Receive(buffer, 7, nullptr, nullptr), -2) << "nothing came within the time";
  EXPECT_TRUE(socket.SetSendTimeOut(3200));
  EXPECT_NEAR(socket.GetSendTimeOut(), 3200, 20);
  EXPECT_TRUE(socket.SetBroadcast(true));
  EXPECT_GT(socket.GetMaxMessageSize(), 0U);
}

TEST_F(DroOsUdpSocketHere, ReleasedDescriptorGoesOnReceiving) {
  const int descriptor = socket.Release();
  EXPECT_FALSE(socket.IsValid());
  EXPECT_EQ(socket.Close(), droError_NoError);
  Socket next(kType, descriptor);
  EXPECT_FALSE(next.IsReadyToReceive(0)) << "a socket that is shut down is always ready, and gives nothing";
  next.SetTo("127.0.0.1", bound.Port());
  EXPECT_EQ(next.Send("a", 1), 1);
  EXPECT_TRUE(next.IsReadyToReceive(10000));
}

TEST_F(DroOsUdpSocketHere, IsReadyBeyondTheEndOfAnFdSet) {
  if (kIsEmulated) GTEST_SKIP() << "qemu knows sets of FD_SETSIZE descriptors only";
  constexpr rlim_t wanted = FD_SETSIZE * 2 + 1;
  rlimit limit{};
  getrlimit(RLIMIT_NOFILE, &limit);
  limit = {std::max(limit.rlim_cur, wanted), std::max(limit.rlim_max, wanted)};
  if (setrlimit(RLIMIT_NOFILE, &limit) != 0) GTEST_SKIP() << "the system does not permit so many descriptors";
  Socket high(kType, fcntl(bound.Descriptor(), F_DUPFD, FD_SETSIZE * 2));
  EXPECT_TRUE(high.IsReadyToSend(10000));
}

TEST(DroOsUdpSocket, IsReportedByEveryUseWithoutDescriptor) {
  Socket none(static_cast<droEOsSocketType>(5));
  EXPECT_EQ(none.GetType(), 5);
  EXPECT_FALSE(none.IsValid());
  const auto refused = [](const char* function) { return kFailure(function, "Socket is invalid."); };
  const auto notReady = [](const char* function) { return kFailure(function, "Socket is not valid."); };
  ExpectReportOfEach({
      {refused("Send"), -1, [&] { return none.Send("x", 1); }},
      {refused("Bind"), droError_Network, [&] { return none.Bind("", 0); }},
      {kFailure("Receive", "Socket is invalid"), -1, [&] { return none.Receive(nullptr, 0, {}, {}); }},
      {refused("SetBroadcast"), 0, [&] { return none.SetBroadcast(true); }},
      {refused("SetReceiveTimeOut"), 0, [&] { return none.SetReceiveTimeOut(1); }},
      {refused("GetReceiveTimeOut"), 0, [&] { return none.GetReceiveTimeOut(); }},
      {refused("SetSendTimeOut"), 0, [&] { return none.SetSendTimeOut(1); }},
      {refused("GetSendTimeOut"), 0, [&] { return none.GetSendTimeOut(); }},
      {refused("GetMaxMessageSize"), 0, [&] { return none.GetMaxMessageSize(); }},
      {notReady("IsReadyToReceive"), 0, [&] { return none.IsReadyToReceive(0); }},
      {notReady("IsReadyToSend"), 0, [&] { return none.IsReadyToSend(0); }},
      {kFailure("droOsUdpSocket", "Socket is invalid"), 0, [] { return Socket(kType, 0).IsValid(); }},
  });
  EXPECT_EQ(none.Close(), droError_NoError);
}

// -1 is what a failed attempt to open a socket leaves.
TEST(DroOsUdpSocket, FailedDescriptorCountsAsValidOnPurposeAndIsReportedByItsUse) {
  Socket failed(kType, -1);
  EXPECT_TRUE(failed.IsValid());
  const auto broken = [](const char* function, const char* message) {
    return kFailure(function, WithSystemError(message, EBADF));
  };
  ExpectReportOfEach({
      {broken("Send", "send error"), -1, [&] { return failed.Send("x", 1); }},
      {broken("Receive", "recv error"), -1, [&] { return failed.Receive(nullptr, 0, {}, {}); }},
      {broken("SetBroadcast", "setsockopt(...) failed"), 0, [&] { return failed.SetBroadcast(true); }},
      {broken("GetSendTimeOut", "getsockopt(...) failed"), 0, [&] { return failed.GetSendTimeOut(); }},
      {broken("IsReadyToReceive", "select(...) failed"), 0, [&] { return failed.IsReadyToReceive(0); }},
  });
  CapturedOutput([&] { failed.Close(); });  // whose reports have a test of their own
}

TEST(DroOsUdpSocket, ThatCannotBeClosedIsReportedByWhoeverClosesIt) {
  const Report notShutDown = kFailure("Close", WithSystemError("shutdown(...) failed", EBADF));
  const Report notClosed = kFailure("Close", WithSystemError("close(...) failed", EBADF));
  Socket failed(kType, -1);
  ExpectReports({notShutDown, notClosed, kFailure("Reset", "Can not close socket")}, droError_Network,
                [&] { return failed.Reset(); });
  EXPECT_FALSE(failed.IsValid());
  const auto leave = [] { return Socket(kType, -1).IsValid(); };
  ExpectReports({notShutDown, notClosed, kFailure("~droOsUdpSocket", "Can not close socket")}, true, leave);
  droError::Level = droLogLevel_Throw;
  EXPECT_NO_THROW(leave()) << "the destructor";
  droError::Level = droLogLevel_Console;
}

TEST(DroOsUdpSocket, ConnectedDescriptorIsClosedLikeAnyOther) {
  int pair[2];
  ASSERT_EQ(socketpair(AF_UNIX, SOCK_DGRAM, 0, pair), 0);
  Socket connected(kType, pair[0]);
  errno = EINTR;  // of an earlier call
  EXPECT_EQ(connected.Close(), droError_NoError);
  close(pair[1]);
}

TEST(DroOsUdpSocket, ClosingOrLeavingItFreesItsDescriptor) {
  const auto isOpen = [](int descriptor) { return fcntl(descriptor, F_GETFD) != -1; };
  const int closed = socket(AF_INET, SOCK_DGRAM, 0);
  Socket socketToClose(kType, closed);
  EXPECT_EQ(socketToClose.Close(), droError_NoError);
  EXPECT_FALSE(isOpen(closed));
  EXPECT_FALSE(socketToClose.IsValid());
  const int left = socket(AF_INET, SOCK_DGRAM, 0);
  EXPECT_TRUE(Socket(kType, left).IsValid());
  EXPECT_FALSE(isOpen(left));
}

}  // namespace
