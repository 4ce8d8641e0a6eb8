#include "dro_osudpsocket.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <netdb.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <deque>
#include <optional>

#include "captured_output.h"
#include "has_report.h"

namespace {

// Sending as a test wants it: nothing leaves the program, the last datagram and its destination are kept.
struct Post {
  std::deque<int> errors;  // what the next calls fail with
  ssize_t shortBy = 0;     // what the successful ones leave unsent
  std::string datagram;
  std::string destination;  // "address:port"
};
std::optional<Post> post;
std::string lookedUp;

}  // namespace

extern "C" ssize_t sendto(int descriptor, const void* data, size_t length, int flags, const sockaddr* to,
                          socklen_t toLength) {
  if (!post) {
    iovec piece{const_cast<void*>(data), length};
    msghdr message{};
    message.msg_name = const_cast<sockaddr*>(to);
    message.msg_namelen = toLength;
    message.msg_iov = &piece;
    message.msg_iovlen = 1;
    return sendmsg(descriptor, &message, flags);
  }
  if (!post->errors.empty()) {
    errno = post->errors.front();
    post->errors.pop_front();
    return -1;
  }
  const auto& address = *reinterpret_cast<const sockaddr_in*>(to);
  post->datagram.assign(static_cast<const char*>(data), length);
  post->destination =
      std::string(inet_ntoa(address.sin_addr)) + ":" + std::to_string(ntohs(address.sin_port));
  return static_cast<ssize_t>(length) - post->shortBy;
}

// Knows one name, and the broadcast address as the C library does; asks nobody.
extern "C" hostent* gethostbyname(const char* name) {
  static in_addr address;
  static char* addresses[] = {reinterpret_cast<char*>(&address), nullptr};
  static hostent found{nullptr, nullptr, AF_INET, sizeof address, addresses};
  lookedUp = name;
  if (lookedUp != "myhost" && lookedUp != "255.255.255.255") return nullptr;
  inet_aton(lookedUp == "myhost" ? "10.1.2.3" : name, &address);
  return &found;
}

namespace dro {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class DroOsUdpSocket : public testing::Test {
 protected:
  ~DroOsUdpSocket() override {
    post.reset();
    droError::Level = 1;
  }
};

// A descriptor bound to a port of its own on the loopback address.
int BoundDescriptor(unsigned short* o_port) {
  const int descriptor = socket(AF_INET, SOCK_DGRAM, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t length = sizeof address;
  EXPECT_EQ(bind(descriptor, reinterpret_cast<sockaddr*>(&address), length), 0);
  EXPECT_EQ(getsockname(descriptor, reinterpret_cast<sockaddr*>(&address), &length), 0);
  *o_port = ntohs(address.sin_port);
  return descriptor;
}

TEST_F(DroOsUdpSocket, DestinationIsReadFromHostAndPort) {
  const struct {
    const char* host;
    const char* lookedUp;
    const char* destination;
  } rows[] = {{"127.0.0.1:16549", "", "127.0.0.1:16549"},
              {"127.0.0.1", "", "127.0.0.1:99"},
              {" myhost :80", "myhost", "10.1.2.3:80"},
              {"myhost:80:81", "myhost", "10.1.2.3:80"},
              {"127.0.0.1:65537", "", "127.0.0.1:1"},
              {"127.0.0.1:", "", "127.0.0.1:0"},
              {"255.255.255.255", "255.255.255.255", "255.255.255.255:99"}};
  droOsUdpSocket socket;
  post.emplace();
  for (const auto& row : rows) {
    lookedUp.clear();
    EXPECT_EQ(socket.SetTo(row.host, 99), droError_NoError) << row.host;
    EXPECT_EQ(socket.Send("x", 1), 1);
    EXPECT_EQ(post->destination, row.destination);
    EXPECT_EQ(lookedUp, row.lookedUp);
  }
  EXPECT_THAT(CapturedOutput([&] { EXPECT_EQ(socket.SetTo("nohost:80", 99), droError_Network); }),
              HasReport("SetTo", "gethostbyname failed"));
  socket.Send("x", 1);
  EXPECT_EQ(post->destination, "255.255.255.255:80");
}

TEST_F(DroOsUdpSocket, DatagramsArriveWithTheirSource) {
  unsigned short port = 0;
  unsigned short ownPort = 0;
  droOsUdpSocket receiver(droOsSocketType_Udp, BoundDescriptor(&port));
  droOsUdpSocket sender(droOsSocketType_Udp, BoundDescriptor(&ownPort));
  sender.SetTo("127.0.0.1", port);
  EXPECT_TRUE(sender.IsReadyToSend(10000));
  EXPECT_FALSE(receiver.IsReadyToReceive(0));
  EXPECT_EQ(sender.Send("ab\0cd", 5), 5);
  EXPECT_EQ(sender.Send("efgh", 4), 4);
  EXPECT_EQ(sender.Send(nullptr, 0), 0);
  EXPECT_TRUE(receiver.IsReadyToReceive(10000));

  char buffer[] = "------";
  droString address;
  unsigned short source = 0;
  EXPECT_EQ(receiver.Receive(buffer, 5, &address, &source), 5);
  EXPECT_EQ(std::string(buffer, 6), std::string("ab\0cd-", 6));
  EXPECT_EQ(address, "127.0.0.1");
  EXPECT_EQ(source, ownPort);
  EXPECT_EQ(receiver.Receive(buffer, 2, nullptr, nullptr), 2);  // the rest of it is lost
  EXPECT_EQ(receiver.Receive(buffer, 5, nullptr, nullptr), 0);
  EXPECT_EQ(std::string(buffer), "ef");
  EXPECT_TRUE(receiver.SetReceiveTimeOut(20));
  EXPECT_THAT(CapturedOutput([&] { EXPECT_EQ(receiver.Receive(buffer, 5, nullptr, nullptr), -2); }),
              IsEmpty());
}

TEST_F(DroOsUdpSocket, OptionsAreThoseOfTheKernel) {
  droOsUdpSocket socket;
  EXPECT_TRUE(socket.SetReceiveTimeOut(1500) && socket.SetSendTimeOut(2500));
  EXPECT_NEAR(socket.GetReceiveTimeOut(), 1500, 10);  // the kernel rounds up
  EXPECT_NEAR(socket.GetSendTimeOut(), 2500, 10);
  EXPECT_GT(socket.GetMaxMessageSize(), 1000U);
  EXPECT_TRUE(socket.SetBroadcast(true));
  EXPECT_EQ(socket.Reset(), droError_NoError);
  EXPECT_EQ(socket.GetReceiveTimeOut(), 0U);
}

TEST_F(DroOsUdpSocket, InterruptedSendIsRepeatedUnlessEmpty) {
  const std::string again = "Std EINTR error continue...[FILE:dro_osudpsocket][FUNCTION:Send]";
  const std::string failed = "Custom Message - : send error\nStd Error 1 Operation not permitted\n";
  const struct {
    std::deque<int> errors;
    unsigned int length;
    int result;
    testing::Matcher<std::string> output;
  } rows[] = {{{EINTR, EINTR}, 3, 3, AllOf(HasSubstr(again), Not(HasSubstr(failed)))},
              {{EINTR}, 0, -1, HasSubstr(again)},
              {{EINTR, EPERM}, 3, -1, AllOf(HasSubstr(again), HasSubstr(failed))},
              {{EAGAIN}, 3, -2, IsEmpty()}};
  droOsUdpSocket socket;
  for (const auto& row : rows) {
    post.emplace().errors = row.errors;
    EXPECT_THAT(CapturedOutput([&] { EXPECT_EQ(socket.Send("abc", row.length), row.result); }), row.output);
  }
}

TEST_F(DroOsUdpSocket, WithoutDescriptorEverythingIsRefused) {
  droOsUdpSocket socket(static_cast<droEOsSocketType>(5));
  EXPECT_EQ(socket.GetType(), 5);
  const auto refused = [](auto operation, const char* function, const char* message) {
    EXPECT_THAT(CapturedOutput([&] { EXPECT_LE(operation(), 0); }), HasReport(function, message));
  };
  refused([&] { return socket.Send("x", 1); }, "Send", "Socket is invalid.");
  refused([&] { return socket.Receive(nullptr, 0, nullptr, nullptr); }, "Receive", "Socket is invalid");
  refused([&] { return int{socket.SetBroadcast(true)}; }, "SetBroadcast", "Socket is invalid.");
  refused([&] { return int{socket.SetSendTimeOut(1)}; }, "SetSendTimeOut", "Socket is invalid.");
  refused([&] { return int(socket.GetReceiveTimeOut()); }, "GetReceiveTimeOut", "Socket is invalid.");
  refused([&] { return int(socket.GetMaxMessageSize()); }, "GetMaxMessageSize", "Socket is invalid.");
  refused([&] { return int{socket.IsReadyToReceive(0)}; }, "IsReadyToReceive", "Socket is not valid.");
  refused([&] { return int{socket.IsReadyToSend(0)}; }, "IsReadyToSend", "Socket is not valid.");
  EXPECT_EQ(socket.Close(), droError_NoError);
  EXPECT_THAT(CapturedOutput([] { droOsUdpSocket(droOsSocketType_Udp, 0); }),
              HasReport("droOsUdpSocket", "Socket is invalid"));
}

TEST_F(DroOsUdpSocket, CloseForgetsTheDescriptorWhateverFails) {
  droOsUdpSocket socket(droOsSocketType_Udp, 1 << 30);
  EXPECT_THAT(CapturedOutput([&] { EXPECT_EQ(socket.Close(), droError_Network); }),
              AllOf(HasReport("Close", "shutdown(...) failed\nStd Error 9 Bad file descriptor"),
                    HasReport("Close", "close(...) failed\nStd Error 9 Bad file descriptor")));
  EXPECT_EQ(socket.Close(), droError_NoError);
  EXPECT_THAT(CapturedOutput([] { droOsUdpSocket(droOsSocketType_Udp, 1 << 30); }),
              HasReport("~droOsUdpSocket", "Can not close socket"));

  droError::Level = 4;
  int pipeEnds[2];
  ASSERT_EQ(pipe(pipeEnds), 0);
  droOsUdpSocket noSocket(droOsSocketType_Udp, pipeEnds[0]);
  EXPECT_THROW(noSocket.Close(), droError);
  EXPECT_FALSE(noSocket.IsValid());
  EXPECT_EQ(fcntl(pipeEnds[0], F_GETFD), -1);
  EXPECT_NO_THROW(droOsUdpSocket(droOsSocketType_Udp, pipeEnds[0]));
  close(pipeEnds[1]);
}

TEST_F(DroOsUdpSocket, DescriptorZeroIsNoSocketAndDoesNotStayOpen) {
  const std::string output = CapturedOutput([] {
    const int standardInput = dup(0);
    close(0);
    EXPECT_FALSE(droOsUdpSocket().IsValid());
    EXPECT_EQ(fcntl(0, F_GETFD), -1);
    dup2(standardInput, 0);
    close(standardInput);
  });
  EXPECT_THAT(output, HasReport("Reset", "Can not create socket"));
  EXPECT_THAT(output, HasReport("droOsUdpSocket", "Can not reset socket"));
}

// Deliberate: only 0 is no socket. What is done with the descriptor then tells what is wrong.
TEST_F(DroOsUdpSocket, FailedDescriptorCountsAsValid) {
  rlimit limit{};
  getrlimit(RLIMIT_NOFILE, &limit);
  const rlimit none{0, limit.rlim_max};
  const std::string output = CapturedOutput([&] {
    setrlimit(RLIMIT_NOFILE, &none);
    droOsUdpSocket socket;
    setrlimit(RLIMIT_NOFILE, &limit);
    EXPECT_TRUE(socket.IsValid());
    EXPECT_FALSE(socket.IsReadyToSend(0));
  });
  EXPECT_THAT(output, HasReport("IsReadyToSend", "select(...) failed\nStd Error 9 Bad file descriptor"));
}

TEST_F(DroOsUdpSocket, DescriptorsBeyondAnFdSetCanBeWaitedFor) {
  rlimit limit{};
  getrlimit(RLIMIT_NOFILE, &limit);
  limit.rlim_cur = limit.rlim_max;
  setrlimit(RLIMIT_NOFILE, &limit);
  unsigned short port = 0;
  const int low = BoundDescriptor(&port);
  droOsUdpSocket socket(droOsSocketType_Udp, fcntl(low, F_DUPFD, FD_SETSIZE * 2));
  close(low);
  EXPECT_TRUE(socket.IsReadyToSend(10000));
  EXPECT_FALSE(socket.IsReadyToReceive(1));
}

TEST_F(DroOsUdpSocket, WakeOnLanBroadcastsTheMagicPacket) {
  const unsigned char mac[] = {0x00, 0x11, 0x22, 0x33, 0x44, 0x55};
  post.emplace();
  EXPECT_EQ(droOsUdpSocket::WakeOnLan(mac, 9), droError_NoError);
  std::string packet(6, '\xFF');
  for (int i = 0; i < 16; ++i)
    packet.append("\x00\x11\x22\x33\x44\x55", 6);
  EXPECT_EQ(post->datagram, packet);
  EXPECT_EQ(post->destination, "255.255.255.255:9");
  post->shortBy = 1;
  EXPECT_THAT(CapturedOutput([&] { EXPECT_EQ(droOsUdpSocket::WakeOnLan(mac, 9), droError_OperationFailed); }),
              HasReport("WakeOnLan", "can not send all packet data"));
}

}  // namespace
}  // namespace dro
