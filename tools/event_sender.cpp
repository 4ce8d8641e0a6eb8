#include "event_sender.h"

#include <netinet/in.h>
#include <poll.h>
#include <sched.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <thread>

#include "tav_event.h"

using std::chrono::microseconds;
using std::chrono::milliseconds;
using std::chrono::nanoseconds;

namespace {

// The memory that a datagram of any event takes in a queue, at most: 832 to 1280 bytes were measured.
constexpr std::uint32_t kMemory = 1536;

// For how long an answer about the receiver holds: other senders fill the queue as well.
constexpr milliseconds kFresh{1};

// The network holds back 1000 datagrams of a busy processor, and drops the next.
constexpr std::uint32_t kLargestBatch = 256;

// Of the queue, in eighths.
constexpr std::uint64_t kHalf = 4;

constexpr const char* kGone = "the receiver is gone";

std::string SystemReason() {
  char text[128];
  return strerror_r(errno, text, sizeof text);
}

sockaddr_in Loopback(std::uint16_t port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

}  // namespace

EventSender::~EventSender() {
  if (m_socket >= 0) close(m_socket);
}

bool EventSender::Open() {
  m_socket = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
  if (m_socket < 0) return FailBySystem("no socket");
  sockaddr_in own = Loopback(0);
  socklen_t size = sizeof own;
  const int on = 1;
  if (bind(m_socket, reinterpret_cast<const sockaddr*>(&own), size) != 0 ||
      getsockname(m_socket, reinterpret_cast<sockaddr*>(&own), &size) != 0 ||
      // A receiver that is gone then makes the next call fail.
      setsockopt(m_socket, IPPROTO_IP, IP_RECVERR, &on, sizeof on) != 0) {
    return FailBySystem("no socket");
  }
  m_port = ntohs(own.sin_port);

  const EventReceiver::Answer answer = m_receiver.Ask(m_port, m_state);
  if (answer == EventReceiver::Answer::Nobody) {
    return Fail("nobody listens on UDP port " + std::to_string(tavon::tavEvent::Port) + " of this machine");
  }
  if (answer == EventReceiver::Answer::Unknown) {
    m_blindness = SystemReason();
    return true;
  }
  m_asked = Clock::now();
  HasRoom(kHalf);
  // What one processor sends arrives in order, see Settle. Without permission it hardly ever moves, either.
  cpu_set_t processor;
  CPU_ZERO(&processor);
  CPU_SET(static_cast<std::size_t>(std::max(sched_getcpu(), 0)), &processor);
  sched_setaffinity(0, sizeof processor, &processor);
  return true;
}

bool EventSender::Send(std::span<const unsigned char> datagram) {
  if (m_rate != 0) AwaitTurn();
  if (m_blindness.empty()) {
    const bool isStale = Clock::now() - m_asked > kFresh;
    if ((m_room == 0 || isStale) && !AwaitRoom()) return false;
    --m_room;
  }
  if (!Transmit(datagram, tavon::tavEvent::Port)) return false;
  ++m_handed;
  return true;
}

bool EventSender::Finish() {
  if (m_blindness.empty()) return Ask() && (m_dropped == 0 || Fail("the receiver has dropped datagrams"));
  if (!Settle() || !Settle()) return false;
  m_confirmed = m_handed;
  return true;
}

bool EventSender::Fail(const std::string& failure) {
  m_failure = failure;
  return false;
}

bool EventSender::FailBySystem(const char* what) {
  return Fail(errno == ECONNREFUSED ? kGone : std::string(what) + ": " + SystemReason());
}

bool EventSender::Transmit(std::span<const unsigned char> datagram, std::uint16_t port) {
  const sockaddr_in address = Loopback(port);
  const ssize_t sent = sendto(m_socket, datagram.data(), datagram.size(), MSG_NOSIGNAL,
                              reinterpret_cast<const sockaddr*>(&address), sizeof address);
  return sent == static_cast<ssize_t>(datagram.size()) || FailBySystem("cannot send");
}

// A busy system delivers some time after sendto has returned, but in order: when a datagram to this socket
// arrives that was sent last, all others have arrived. What nobody receives is answered then, and that answer
// comes before a second such datagram: the calls below fail for it.
bool EventSender::Settle() {
  std::array<unsigned char, sizeof m_handed> mark;
  std::memcpy(mark.data(), &m_handed, sizeof m_handed);
  if (!Transmit(mark, m_port)) return false;
  for (const auto end = Clock::now() + m_wait; Clock::now() < end;) {
    std::array<unsigned char, sizeof mark + 1> arrived;
    sockaddr_in from{};
    socklen_t size = sizeof from;
    const ssize_t length = recvfrom(m_socket, arrived.data(), arrived.size(), MSG_DONTWAIT,
                                    reinterpret_cast<sockaddr*>(&from), &size);
    const bool isMark = length == sizeof mark && std::equal(mark.begin(), mark.end(), arrived.begin());
    if (isMark && ntohs(from.sin_port) == m_port) return true;
    if (length >= 0 || errno == EINTR) continue;  // of another program
    if (errno != EAGAIN) return FailBySystem("cannot receive");
    pollfd awaited{m_socket, POLLIN, 0};
    poll(&awaited, 1, 100);
  }
  return Fail("the network of this machine does not deliver");
}

bool EventSender::Ask() {
  if (m_handed != m_confirmed && !Settle()) return false;
  ReceiverState state;
  const EventReceiver::Answer answer = m_receiver.Ask(m_port, state);
  if (answer == EventReceiver::Answer::Unknown) return FailBySystem("cannot ask about the receiver");
  m_isThere = answer == EventReceiver::Answer::Known;
  const bool isSame = m_isThere && state.socket == m_state.socket;
  // The receiver may be gone, or be another one, because it has read all that it wanted. What came too late
  // for it has been answered by then.
  if (!isSame && !Settle()) return false;
  m_dropped += state.dropped - (isSame ? m_state.dropped : 0);
  m_state = state;
  m_confirmed = m_handed;
  m_asked = Clock::now();
  return true;
}

bool EventSender::HasRoom(std::uint64_t eighths) {
  const bool hasRoom = m_state.used <= m_state.limit * eighths / 8;
  m_room = hasRoom ? std::clamp((m_state.limit / 2 - m_state.used) / kMemory, 1U, kLargestBatch) : 0;
  return hasRoom;
}

bool EventSender::AwaitRoom() {
  std::uint64_t eighths = kHalf;
  auto pause = microseconds(50);
  for (auto progress = Clock::now(); m_asked < progress + m_wait;) {
    const std::uint32_t unread = m_state.unread;
    if (!Ask()) return false;
    if (!m_isThere) return Fail(kGone);
    if (HasRoom(eighths)) return true;
    if (m_state.unread < unread) progress = m_asked;
    eighths = kHalf - 1;  // or there would be room for one event only, again and again
    std::this_thread::sleep_for(pause);
    pause = std::min(2 * pause, microseconds(20000));
  }
  return Fail("the receiver has read nothing for " + std::to_string(m_wait.count()) + " s");
}

// Events are due at equal distances. One that comes a little late does not delay those after it.
void EventSender::AwaitTurn() {
  constexpr milliseconds late{10};
  m_due = std::max(m_due + nanoseconds(1000000000 / m_rate), Clock::now() - late);
  std::this_thread::sleep_until(m_due);
}
