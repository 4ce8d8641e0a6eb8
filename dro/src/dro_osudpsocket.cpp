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
#include <span>
#include <utility>
#include <vector>

namespace dro {
namespace {

constexpr droReporter kReport{"dro_osudpsocket"};

// Results of Send and Receive other than the number of bytes.
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

// Makes the system call that moves one datagram of at most `length` bytes, and repeats it while it is
// interrupted.
template <class Call>
int Transfer(Call call, unsigned int length, const char* failure, vlib::Place place = {}) {
  for (;;) {
    const ssize_t count = call();
    if (count != -1) return static_cast<int>(count);
    const int error = errno;
    if (error == EAGAIN) return kWouldBlock;
    if (error != EINTR) {
      kReport.System(droError_Network, failure, error, place);
      return kFailed;
    }
    kReport(droError_Warning, "Std EINTR error continue...", place);
    if (length == 0) return kFailed;  // kept for compatibility: a transfer of no bytes is not repeated
  }
}

// True when the socket can be used; otherwise `message` is reported.
bool IsUsable(const droOsUdpSocket& socket, const char* message = "Socket is invalid.",
              vlib::Place place = {}) {
  if (socket.IsValid()) return true;
  kReport(droError_Network, message, place);
  return false;
}

enum class Readiness { ToReceive, ToSend };

// Waits at most so many milliseconds. False when the time ran out, and after a report when waiting failed.
bool WaitUntilReady(int descriptor, Readiness readiness, unsigned int milliseconds, vlib::Place place = {}) {
  int ready = -1;
  int error = EBADF;
  if (fcntl(descriptor, F_GETFD) != -1) {  // only an open descriptor has a place in a set
    // An fd_set ends at FD_SETSIZE, but a busy server has more descriptors. Only they need memory.
    const auto word = static_cast<std::size_t>(descriptor / NFDBITS);
    std::array<fd_mask, FD_SETSIZE / NFDBITS> few{};
    std::vector<fd_mask> many;
    if (word >= few.size()) many.resize(word + 1);
    const std::span<fd_mask> bits = many.empty() ? std::span<fd_mask>(few) : std::span<fd_mask>(many);
    bits[word] = static_cast<fd_mask>(1UL << (descriptor % NFDBITS));
    auto* const set = reinterpret_cast<fd_set*>(bits.data());
    const bool toReceive = readiness == Readiness::ToReceive;
    timeval timeOut = ToTimeval(milliseconds);
    ready = select(descriptor + 1, toReceive ? set : nullptr, toReceive ? nullptr : set, nullptr, &timeOut);
    error = errno;
  }
  if (ready == -1) kReport.System(droError_Network, "select(...) failed", error, place);
  return ready > 0;
}

// Sets an option of the kernel's socket level. False after a report when the kernel refuses.
template <class Value>
bool SetOption(int descriptor, int option, const Value& value, vlib::Place place = {}) {
  if (setsockopt(descriptor, SOL_SOCKET, option, &value, sizeof value) == 0) return true;
  const int error = errno;
  kReport.System(droError_Network, "setsockopt(...) failed", error, place);
  return false;
}

// The value of such an option, zero after a report when the kernel refuses.
template <class Value>
Value GetOption(int descriptor, int option, vlib::Place place = {}) {
  Value value{};
  socklen_t length = sizeof value;
  if (getsockopt(descriptor, SOL_SOCKET, option, &value, &length) == 0) return value;
  const int error = errno;
  kReport.System(droError_Network, "getsockopt(...) failed", error, place);
  return {};
}

// Reads host and port as SetTo takes them. An empty host has the address `emptyHost`, and INADDR_NONE stands
// for none. 0, or the reported code of an unknown host, whose address is INADDR_NONE.
droEError ReadAddress(const droString& host, unsigned short port, in_addr_t emptyHost, sockaddr_in& o_address,
                      vlib::Place place = {}) {
  droString name = host;
  droArray<droString> pieces;
  host.GetSplit(&pieces, ":");
  if (pieces.size() >= 2) {
    name = pieces[0].SetShrink(" ", true).SetShrink(" ", false);
    port = static_cast<unsigned short>(droString::AsULong(pieces[1], 10));
  }

  o_address = {};
  o_address.sin_family = AF_INET;
  o_address.sin_port = htons(port);
  o_address.sin_addr.s_addr = name.empty() ? emptyHost : inet_addr(name.c_str());
  // The limited-broadcast address is the value for "no address", so it is looked up like a name.
  if (o_address.sin_addr.s_addr != INADDR_NONE) return droError_NoError;
  // NOLINTNEXTLINE(concurrency-mt-unsafe): one thread at a time looks up a name, see the class
  const hostent* const found = gethostbyname(name.c_str());
  if (found == nullptr || found->h_addrtype != AF_INET || found->h_length != sizeof(in_addr) ||
      found->h_addr_list[0] == nullptr) {
    return kReport(droError_Network, "gethostbyname failed", place);
  }
  std::memcpy(&o_address.sin_addr, found->h_addr_list[0], sizeof(in_addr));
  return droError_NoError;
}

}  // namespace

droOsUdpSocket::droOsUdpSocket() : droOsUdpSocket(droOsSocketType_Udp) {
  if (Reset() != droError_NoError) kReport(droError_Network, "Can not reset socket");
}

droOsUdpSocket::droOsUdpSocket(const droEOsSocketType& type) : m_type(type) {}

droOsUdpSocket::droOsUdpSocket(const droEOsSocketType& type, int descriptor)
    : m_descriptor(descriptor), m_type(type) {
  if (descriptor == 0) kReport(droError_Network, "Socket is invalid");
}

droOsUdpSocket::~droOsUdpSocket() {
  try {
    if (droOsUdpSocket::Close() != droError_NoError) kReport(droError_Network, "Can not close socket");
  } catch (...) {
    // The log's level asks for exceptions, but none may leave a destructor. The descriptor is already closed.
  }
}

droEError droOsUdpSocket::Reset() {
  if (Close() != droError_NoError) return kReport(droError_Network, "Can not close socket");
  m_descriptor = socket(AF_INET, SOCK_DGRAM, IPPROTO_UDP);
  if (IsValid()) return droError_NoError;
  // The kernel gave out 0, as the program has no standard input. It stays taken, so that the next attempt
  // gets another number.
  return kReport(droError_Network, "Can not create socket");
}

droEError droOsUdpSocket::SetTo(const droString& host, unsigned short port) {
  return ReadAddress(host, port, INADDR_NONE, m_address);
}

// NOLINTNEXTLINE(readability-make-member-function-const): it changes the socket
droEError droOsUdpSocket::Bind(const droString& host, unsigned short port) {
  if (!IsValid()) return kReport(droError_Network, "Socket is invalid.");
  sockaddr_in address{};
  const droEError unknown = ReadAddress(host, port, INADDR_ANY, address);
  if (unknown != droError_NoError) return unknown;
  if (bind(m_descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0) {
    return droError_NoError;
  }
  const int error = errno;
  const droEError failure = kReport.System(droError_Network, "Can not bind socket", error);
  errno = error;
  return failure;
}

int droOsUdpSocket::Send(const void* data, unsigned int length) {
  if (!IsUsable(*this)) return kFailed;
  const auto send = [&] {
    return sendto(m_descriptor, data, length, MSG_NOSIGNAL, reinterpret_cast<const sockaddr*>(&m_address),
                  sizeof m_address);
  };
  return Transfer(send, length, "send error");
}

// NOLINTNEXTLINE(readability-make-member-function-const): it takes a datagram out of the socket
int droOsUdpSocket::Receive(void* o_data, unsigned int size, droString* o_address, unsigned short* o_port) {
  if (!IsUsable(*this, "Socket is invalid")) return kFailed;
  sockaddr_in source{};
  const auto receive = [&] {
    socklen_t sourceLength = sizeof source;
    return recvfrom(m_descriptor, o_data, size, 0, reinterpret_cast<sockaddr*>(&source), &sourceLength);
  };
  const int count = Transfer(receive, size, "recv error");
  if (count < 0) return count;

  if (o_address != nullptr) {
    char dotted[INET_ADDRSTRLEN];
    *o_address = inet_ntop(AF_INET, &source.sin_addr, dotted, sizeof dotted);
  }
  if (o_port != nullptr) *o_port = ntohs(source.sin_port);
  return count;
}

// NOLINTNEXTLINE(readability-make-member-function-const): it changes the socket
bool droOsUdpSocket::SetBroadcast(bool on) {
  return IsUsable(*this) && SetOption(m_descriptor, SO_BROADCAST, int{on});
}

bool droOsUdpSocket::IsReadyToReceive(unsigned int milliseconds) const {
  return IsUsable(*this, "Socket is not valid.") &&
         WaitUntilReady(m_descriptor, Readiness::ToReceive, milliseconds);
}

bool droOsUdpSocket::IsReadyToSend(unsigned int milliseconds) const {
  return IsUsable(*this, "Socket is not valid.") &&
         WaitUntilReady(m_descriptor, Readiness::ToSend, milliseconds);
}

bool droOsUdpSocket::SetReceiveTimeOut(const unsigned int& milliseconds) {
  return IsUsable(*this) && SetOption(m_descriptor, SO_RCVTIMEO, ToTimeval(milliseconds));
}

unsigned int droOsUdpSocket::GetReceiveTimeOut() const {
  return IsUsable(*this) ? ToMilliseconds(GetOption<timeval>(m_descriptor, SO_RCVTIMEO)) : 0;
}

bool droOsUdpSocket::SetSendTimeOut(const unsigned int& milliseconds) {
  return IsUsable(*this) && SetOption(m_descriptor, SO_SNDTIMEO, ToTimeval(milliseconds));
}

unsigned int droOsUdpSocket::GetSendTimeOut() const {
  return IsUsable(*this) ? ToMilliseconds(GetOption<timeval>(m_descriptor, SO_SNDTIMEO)) : 0;
}

unsigned int droOsUdpSocket::GetMaxMessageSize() const {
  return IsUsable(*this) ? static_cast<unsigned int>(GetOption<int>(m_descriptor, SO_SNDBUF)) : 0;
}

droEError droOsUdpSocket::Close() {
  if (m_descriptor == 0) return droError_NoError;
  // Everything is done before anything is reported: a log that throws must leave neither an open descriptor
  // behind nor a closed one in the object.
  const int descriptor = std::exchange(m_descriptor, 0);
  m_address = {};
  const int shutdownError = shutdown(descriptor, SHUT_RDWR) == 0 ? 0 : errno;
  const int closeError = close(descriptor) == 0 ? 0 : errno;

  droEError result = droError_NoError;
  if (shutdownError != 0 && shutdownError != ENOTCONN) {  // a datagram socket is not connected
    result = kReport.System(droError_Network, "shutdown(...) failed", shutdownError);
  }
  if (closeError != 0) result = kReport.System(droError_Network, "close(...) failed", closeError);
  return result;
}

droEError droOsUdpSocket::WakeOnLan(const unsigned char* mac, unsigned short port) {
  constexpr std::ptrdiff_t macLength = 6;
  std::array<unsigned char, 17 * macLength> packet;
  packet.fill(0xFF);
  for (auto copy = packet.begin() + macLength; copy != packet.end(); copy += macLength) {
    std::copy_n(mac, macLength, copy);
  }

  droOsUdpSocket socket;
  socket.SetBroadcast(true);
  socket.SetTo("255.255.255.255", port);
  if (socket.Send(packet.data(), packet.size()) == static_cast<int>(packet.size())) return droError_NoError;
  return kReport(droError_OperationFailed, "can not send all packet data");
}

}  // namespace dro
