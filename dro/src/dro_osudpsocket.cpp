#include "dro_osudpsocket.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netdb.h>
#include <sys/select.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <utility>
#include <vector>

namespace dro {
namespace {

constexpr droReporter kReport{"dro_osudpsocket"};

// Results of Send and Receive beside the count of bytes.
constexpr int kFailed = -1;
constexpr int kWouldBlock = -2;

timeval ToTimeval(unsigned int milliseconds) {
  timeval time{};
  time.tv_sec = milliseconds / 1000;
  time.tv_usec = milliseconds % 1000 * 1000L;
  return time;
}

unsigned int ToMilliseconds(const timeval& time) {
  return static_cast<unsigned int>(time.tv_sec) * 1000U + static_cast<unsigned int>(time.tv_usec / 1000);
}

// Makes the system call that moves one datagram of at most `length` bytes, again while it is interrupted.
template <class Call>
int Transfer(Call call, unsigned int length, const char* failure, const char* function) {
  for (;;) {
    const ssize_t count = call();
    if (count != -1) return static_cast<int>(count);
    const int error = errno;
    if (error == EAGAIN) return kWouldBlock;
    if (error != EINTR) {
      kReport.System(droError_Network, failure, error, function);
      return kFailed;
    }
    kReport(droError_Warning, "Std EINTR error continue...", function);
    if (length == 0) return kFailed;  // intended: a transfer without data is not worth repeating
  }
}

}  // namespace

droOsUdpSocket::droOsUdpSocket() : droOsUdpSocket(droOsSocketType_Udp) {
  if (Reset() != droError_NoError) kReport(droError_Network, "Can not reset socket", "droOsUdpSocket");
}

droOsUdpSocket::droOsUdpSocket(const droEOsSocketType& type) : m_type(type) {}

droOsUdpSocket::droOsUdpSocket(const droEOsSocketType& type, int descriptor)
    : m_descriptor(descriptor), m_type(type) {
  if (descriptor == 0) kReport(droError_Network, "Socket is invalid", "droOsUdpSocket");
}

droOsUdpSocket::~droOsUdpSocket() {
  try {
    if (droOsUdpSocket::Close() != droError_NoError)
      kReport(droError_Network, "Can not close socket", "~droOsUdpSocket");
  } catch (...) {
    // The log's level asks for exceptions, and none may leave a destructor. The descriptor is closed already.
  }
}

droEError droOsUdpSocket::Reset() {
  if (Close() != droError_NoError) return kReport(droError_Network, "Can not close socket", "Reset");
  m_descriptor = socket(AF_INET, SOCK_DGRAM, IPPROTO_UDP);
  if (IsValid()) return droError_NoError;
  // The kernel gives out 0 while the program has no standard input. It counts as no socket here and must not
  // stay open unseen.
  close(std::exchange(m_descriptor, 0));
  return kReport(droError_Network, "Can not create socket", "Reset");
}

droEError droOsUdpSocket::SetTo(const droString& host, unsigned short port) {
  droString name = host;
  droArray<droString> pieces;
  host.GetSplit(&pieces, ":");
  if (pieces.size() >= 2) {
    name = pieces[0].SetShrink(" ", true).SetShrink(" ", false);
    port = static_cast<unsigned short>(droString::AsULong(pieces[1], 10));
  }

  m_address = {};
  m_address.sin_family = AF_INET;
  m_address.sin_port = htons(port);
  m_address.sin_addr.s_addr = inet_addr(name.c_str());
  // The limited-broadcast address reads as if it were no address and takes the way of the names, too.
  if (m_address.sin_addr.s_addr != INADDR_NONE) return droError_NoError;
  // NOLINTNEXTLINE(concurrency-mt-unsafe): one thread at a time looks up a name, see the class
  const hostent* const found = gethostbyname(name.c_str());
  if (found == nullptr || found->h_addrtype != AF_INET || found->h_length != sizeof(in_addr) ||
      found->h_addr_list[0] == nullptr) {
    return kReport(droError_Network, "gethostbyname failed", "SetTo");
  }
  std::memcpy(&m_address.sin_addr, found->h_addr_list[0], sizeof(in_addr));
  return droError_NoError;
}

int droOsUdpSocket::Send(const void* data, unsigned int length) {
  if (!IsValid()) {
    kReport(droError_Network, "Socket is invalid.", "Send");
    return kFailed;
  }
  const auto send = [&] {
    return sendto(m_descriptor, data, length, MSG_NOSIGNAL, reinterpret_cast<const sockaddr*>(&m_address),
                  sizeof m_address);
  };
  return Transfer(send, length, "send error", "Send");
}

// NOLINTNEXTLINE(readability-make-member-function-const): it takes a datagram out of the socket
int droOsUdpSocket::Receive(void* o_data, unsigned int size, droString* o_address, unsigned short* o_port) {
  if (!IsValid()) {
    kReport(droError_Network, "Socket is invalid", "Receive");
    return kFailed;
  }
  sockaddr_in source{};
  const auto receive = [&] {
    socklen_t sourceLength = sizeof source;
    return recvfrom(m_descriptor, o_data, size, 0, reinterpret_cast<sockaddr*>(&source), &sourceLength);
  };
  const int count = Transfer(receive, size, "recv error", "Receive");
  if (count < 0) return count;

  if (o_address != nullptr) {
    char dotted[INET_ADDRSTRLEN];
    *o_address = inet_ntop(AF_INET, &source.sin_addr, dotted, sizeof dotted);
  }
  if (o_port != nullptr) *o_port = ntohs(source.sin_port);
  return count;
}

bool droOsUdpSocket::SetBroadcast(bool on) { return SetOption(SO_BROADCAST, int{on}, "SetBroadcast"); }

bool droOsUdpSocket::IsReadyToReceive(unsigned int milliseconds) const {
  return IsReady(true, milliseconds, "IsReadyToReceive");
}

bool droOsUdpSocket::IsReadyToSend(unsigned int milliseconds) const {
  return IsReady(false, milliseconds, "IsReadyToSend");
}

bool droOsUdpSocket::SetReceiveTimeOut(const unsigned int& milliseconds) {
  return SetOption(SO_RCVTIMEO, ToTimeval(milliseconds), "SetReceiveTimeOut");
}

unsigned int droOsUdpSocket::GetReceiveTimeOut() const {
  return ToMilliseconds(GetOption<timeval>(SO_RCVTIMEO, "GetReceiveTimeOut"));
}

bool droOsUdpSocket::SetSendTimeOut(const unsigned int& milliseconds) {
  return SetOption(SO_SNDTIMEO, ToTimeval(milliseconds), "SetSendTimeOut");
}

unsigned int droOsUdpSocket::GetSendTimeOut() const {
  return ToMilliseconds(GetOption<timeval>(SO_SNDTIMEO, "GetSendTimeOut"));
}

unsigned int droOsUdpSocket::GetMaxMessageSize() const {
  return static_cast<unsigned int>(GetOption<int>(SO_SNDBUF, "GetMaxMessageSize"));
}

droEError droOsUdpSocket::Close() {
  if (m_descriptor == 0) return droError_NoError;
  // Nothing is reported before all is done: a log that throws must not leave a descriptor open, nor a dead
  // one in the object.
  const int descriptor = std::exchange(m_descriptor, 0);
  m_address = {};
  const int shutdownError = shutdown(descriptor, SHUT_RDWR) == 0 ? 0 : errno;
  const int closeError = close(descriptor) == 0 ? 0 : errno;

  droEError result = droError_NoError;
  if (shutdownError != 0 && shutdownError != ENOTCONN)  // a datagram socket is not connected
    result = kReport.System(droError_Network, "shutdown(...) failed", shutdownError, "Close");
  if (closeError != 0) result = kReport.System(droError_Network, "close(...) failed", closeError, "Close");
  return result;
}

droEError droOsUdpSocket::WakeOnLan(const unsigned char* mac, unsigned short port) {
  constexpr std::ptrdiff_t macLength = 6;
  std::array<unsigned char, 17 * macLength> packet;
  packet.fill(0xFF);
  for (auto copy = packet.begin() + macLength; copy != packet.end(); copy += macLength)
    std::copy_n(mac, macLength, copy);

  droOsUdpSocket socket;
  socket.SetBroadcast(true);
  socket.SetTo("255.255.255.255", port);
  if (socket.Send(packet.data(), packet.size()) == static_cast<int>(packet.size())) return droError_NoError;
  return kReport(droError_OperationFailed, "can not send all packet data", "WakeOnLan");
}

bool droOsUdpSocket::IsReady(bool toReceive, unsigned int milliseconds, const char* function) const {
  if (!IsValid()) {
    kReport(droError_Network, "Socket is not valid.", function);
    return false;
  }
  int ready = -1;
  int error = EBADF;
  if (fcntl(m_descriptor, F_GETFD) != -1) {  // only an open descriptor has a place in a set
    // An fd_set ends at FD_SETSIZE, the descriptors of a busy server do not: the set is as long as it must
    // be.
    std::vector<fd_mask> bits(static_cast<std::size_t>(m_descriptor / NFDBITS) + 1);
    bits.back() = static_cast<fd_mask>(1UL << (m_descriptor % NFDBITS));
    auto* const set = reinterpret_cast<fd_set*>(bits.data());
    timeval timeOut = ToTimeval(milliseconds);
    ready = select(m_descriptor + 1, toReceive ? set : nullptr, toReceive ? nullptr : set, nullptr, &timeOut);
    error = errno;
  }
  if (ready == -1) kReport.System(droError_Network, "select(...) failed", error, function);
  return ready > 0;
}

template <class Value>
bool droOsUdpSocket::SetOption(int option, const Value& value, const char* function) {
  if (!IsValid()) {
    kReport(droError_Network, "Socket is invalid.", function);
    return false;
  }
  if (setsockopt(m_descriptor, SOL_SOCKET, option, &value, sizeof value) == 0) return true;
  const int error = errno;
  kReport.System(droError_Network, "setsockopt(...) failed", error, function);
  return false;
}

template <class Value>
Value droOsUdpSocket::GetOption(int option, const char* function) const {
  if (!IsValid()) {
    kReport(droError_Network, "Socket is invalid.", function);
    return {};
  }
  Value value{};
  socklen_t length = sizeof value;
  if (getsockopt(m_descriptor, SOL_SOCKET, option, &value, &length) == 0) return value;
  const int error = errno;
  kReport.System(droError_Network, "getsockopt(...) failed", error, function);
  return {};
}

}  // namespace dro
