#include "dro_osudpsocket.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <netdb.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cerrno>

#include "expect_report.h"
#include "system_calls.h"

using namespace dro;

static droArray<int> errors;  // what the next attempts to send fail with
static std::string datagram, destination, lookedUp;

// Keeps what would leave the machine.
static ssize_t Send(int descriptor, const void* data, size_t length, int flags, const sockaddr* to,
                    socklen_t toLength) {
  if (!errors.empty()) {
    errno = errors.front();
    errors.pop_front();
    return -1;
  }
  const auto* address = reinterpret_cast<const sockaddr_in*>(to);
  if (ntohl(address->sin_addr.s_addr) == INADDR_LOOPBACK)
    return system_calls::sendto.Real(descriptor, data, length, flags, to, toLength);
  datagram.assign(static_cast<const char*>(data), length);
  destination = inet_ntoa(address->sin_addr) + (":" + std::to_string(ntohs(address->sin_port)));
  return static_cast<ssize_t>(length);
}

// Knows one name, and the broadcast address as the real one does; asks nobody.
static hostent* Find(const char* name) {
  static in_addr address;
  static char* addresses[] = {reinterpret_cast<char*>(&address), nullptr};
  static hostent found{nullptr, nullptr, AF_INET, sizeof address, addresses};
  lookedUp = name;
  return inet_aton(lookedUp == "myhost" ? "10.1.2.3" : name, &address) != 0 ? &found : nullptr;
}

struct DroOsUdpSocket : testing::Test {
  const decltype(system_calls::sendto)::Replacement m_sending{system_calls::sendto, Send};
  const decltype(system_calls::gethostbyname)::Replacement m_names{system_calls::gethostbyname, Find};
};

TEST_F(DroOsUdpSocket, DestinationIsReadFromHostAndPort) {
  droOsUdpSocket socket;
  const auto sentTo = [&](const char* host) {
    lookedUp.clear();
    socket.SetTo(host, 99);
    EXPECT_EQ(socket.Send("x", 1), 1);
    return destination + " " + lookedUp;
  };
  EXPECT_EQ(sentTo("10.1.2.3:16549") + sentTo("10.1.2.3"), "10.1.2.3:16549 10.1.2.3:99 ");
  EXPECT_EQ(sentTo(" myhost :80:81"), "10.1.2.3:80 myhost");
  EXPECT_EQ(sentTo("255.255.255.255"), "255.255.255.255:99 255.255.255.255");
  ExpectFailure(10, "SetTo", "gethostbyname failed", [&] { EXPECT_EQ(socket.SetTo("nohost:80", 99), 10); });
  socket.Send("x", 1);
  EXPECT_EQ(destination + lookedUp, "255.255.255.255:80nohost");
}

TEST_F(DroOsUdpSocket, ExchangesDatagramsUnderTimeOuts) {
  const rlimit limit{4096, 4096};
  setrlimit(RLIMIT_NOFILE, &limit);
  const int low = socket(AF_INET, SOCK_DGRAM, 0);
  const int descriptor = fcntl(low, F_DUPFD, FD_SETSIZE * 2);  // where no fd_set reaches
  close(low);
  sockaddr_in own{AF_INET, 0, {htonl(INADDR_LOOPBACK)}, {}};
  socklen_t length = sizeof own;
  ASSERT_EQ(bind(descriptor, reinterpret_cast<sockaddr*>(&own), length), 0);
  getsockname(descriptor, reinterpret_cast<sockaddr*>(&own), &length);

  droOsUdpSocket socket(droOsSocketType_Udp, descriptor);
  socket.SetTo("127.0.0.1", ntohs(own.sin_port));
  EXPECT_TRUE(socket.IsReadyToSend(10000) && !socket.IsReadyToReceive(1));
  EXPECT_TRUE(socket.Send("ab\0cd", 5) + socket.Send(nullptr, 0) == 5 && socket.IsReadyToReceive(10000));
  char buffer[] = "------";
  droString source;
  unsigned short port = 0;
  EXPECT_EQ(socket.Receive(buffer, 4, &source, &port), 4) << "the rest of it is lost";
  EXPECT_EQ(std::string(buffer, 6), std::string("ab\0c--", 6));
  EXPECT_TRUE(source == "127.0.0.1" && port == ntohs(own.sin_port));
  EXPECT_EQ(socket.Receive(buffer, 4, nullptr, nullptr), 0);
  EXPECT_TRUE(socket.SetReceiveTimeOut(20) && socket.Receive(buffer, 4, nullptr, nullptr) == -2);
  EXPECT_TRUE(socket.SetReceiveTimeOut(1500) && socket.SetSendTimeOut(2500) && socket.SetBroadcast(true));
  EXPECT_NEAR(socket.GetReceiveTimeOut(), 1500, 10) << "the kernel rounds up";
  EXPECT_NEAR(socket.GetSendTimeOut(), 2500, 10);
  const int space = 5000;
  setsockopt(descriptor, SOL_SOCKET, SO_SNDBUF, &space, sizeof space);
  EXPECT_EQ(socket.GetMaxMessageSize(), 10000U) << "the kernel takes twice of it";
  EXPECT_EQ(socket.Close(), droError_NoError);
}

TEST_F(DroOsUdpSocket, InterruptedSendIsRepeatedUnlessEmpty) {
  droOsUdpSocket socket;
  const auto send = [&](const droArray<int>& failures, unsigned int length, int result) {
    errors = failures;
    EXPECT_EQ(socket.Send("abc", length), result);
  };
  const auto warning = testing::HasSubstr("Warning : Std EINTR error continue...[FILE:dro_osudpsocket]");
  EXPECT_THAT(CapturedOutput([&] { send({EINTR, EINTR}, 3, 3); }), warning);
  EXPECT_THAT(CapturedOutput([&] { send({EINTR}, 0, -1); }), warning);
  EXPECT_EQ(CapturedOutput([&] { send({EAGAIN}, 3, -2); }), "");
  ExpectFailure(10, "Send", "send error\nStd Error 1 Operation not permitted", [&] { send({EPERM}, 3, -1); });
}

TEST_F(DroOsUdpSocket, WithoutDescriptorEverythingIsRefused) {
  droOsUdpSocket none(static_cast<droEOsSocketType>(5));
  EXPECT_TRUE(none.GetType() == 5 && !none.IsValid() && none.Close() == droError_NoError);
  ExpectFailure(10, "Send", "Socket is invalid[.]", [&] { EXPECT_EQ(none.Send("x", 1), -1); });
  ExpectFailure(10, "Receive", "Socket is invalid", [&] { EXPECT_EQ(none.Receive({}, 0, {}, {}), -1); });
  ExpectFailure(10, "SetBroadcast", "Socket is invalid[.]", [&] { EXPECT_FALSE(none.SetBroadcast(true)); });
  ExpectFailure(10, "GetSendTimeOut", "Socket is invalid[.]", [&] { EXPECT_EQ(none.GetSendTimeOut(), 0U); });
  ExpectFailure(10, "IsReadyToSend", "Socket is not valid[.]", [&] { EXPECT_FALSE(none.IsReadyToSend(0)); });
}

// On purpose, 0 and nothing else is no socket.
TEST_F(DroOsUdpSocket, DescriptorZeroStaysTakenSoThatTheNextResetSucceeds) {
  const int standardInput = dup(0);
  droOsUdpSocket socket(droOsSocketType_Udp);
  ExpectFailure(10, "Reset", "Can not create socket", [&] {
    close(0);
    EXPECT_EQ(socket.Reset(), droError_Network);
  });
  EXPECT_FALSE(socket.IsValid());
  EXPECT_NE(fcntl(0, F_GETFD), -1);
  EXPECT_EQ(socket.Reset(), droError_NoError);
  EXPECT_TRUE(socket.IsValid());
  dup2(standardInput, 0);
  close(standardInput);
}

TEST_F(DroOsUdpSocket, AFailedDescriptorCountsAsValid) {
  const auto use = [] {
    droOsUdpSocket failed(droOsSocketType_Udp, -1);
    EXPECT_TRUE(failed.IsValid() && !failed.IsReadyToReceive(0) && !failed.SetBroadcast(true));
    EXPECT_EQ(failed.GetMaxMessageSize(), 0U);
  };
  for (const char* const function : {"IsReadyToReceive", "SetBroadcast", "GetMaxMessageSize"})
    ExpectFailure(10, function, "[gs]e.*\\(...\\) failed\nStd Error 9 Bad file descriptor", use);
}

TEST_F(DroOsUdpSocket, CloseForgetsTheDescriptorWhateverFails) {
  const auto reset = [] { EXPECT_EQ(droOsUdpSocket(droOsSocketType_Udp, 1 << 30).Reset(), 10); };
  ExpectFailure(10, "Close", "shutdown\\(...\\) failed\nStd Error 9 Bad file descriptor", reset);
  ExpectFailure(10, "Close", "close\\(...\\) failed\nStd Error 9 Bad file descriptor", reset);
  ExpectFailure(10, "Reset", "Can not close socket", reset);

  droError::Level = droLogLevel_Throw;
  const int file = open("/dev/null", O_RDONLY);
  droOsUdpSocket noSocket(droOsSocketType_Udp, file);
  EXPECT_THROW(noSocket.Close(), droError);
  EXPECT_TRUE(!noSocket.IsValid() && fcntl(file, F_GETFD) == -1);
  EXPECT_NO_THROW(droOsUdpSocket(droOsSocketType_Udp, file)) << "not from the destructor";
  droError::Level = droLogLevel_Console;
}

TEST_F(DroOsUdpSocket, WakeOnLanBroadcastsTheMagicPacket) {
  const unsigned char mac[] = {0x00, 0x11, 0x22, 0x33, 0x44, 0x55};
  std::string packet(6, '\xFF');
  for (int i = 0; i < 16; ++i) packet.append(mac, mac + 6);
  EXPECT_EQ(droOsUdpSocket::WakeOnLan(mac, 9), droError_NoError);
  EXPECT_EQ(datagram, packet);
  EXPECT_EQ(destination, "255.255.255.255:9");
  errors = {EAGAIN};
  ExpectFailure(2, "WakeOnLan", "can not send all packet data", [&] { droOsUdpSocket::WakeOnLan(mac, 9); });
}
