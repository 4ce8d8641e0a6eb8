#pragma once

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <span>
#include <string>

#include "event_receiver.h"

// Sends events to the receiver on this machine, no faster than it reads: never more than half of its queue is
// filled, so that no event is dropped and other senders find room. What became of them is known at the end.
//
// Where the kernel does not tell about the receiver, events are only handed to the network.
class EventSender {
 public:
  // At most `rate` events a second, 0 for any number. A receiver that reads nothing for `wait` has stopped.
  EventSender(std::uint32_t rate, std::chrono::seconds wait) : m_rate(rate), m_wait(wait) {}
  ~EventSender();
  EventSender(const EventSender&) = delete;
  EventSender& operator=(const EventSender&) = delete;

  // Looks for the receiver; to be called first. After false, here and below, nothing more can be sent, and
  // Failure says why.
  bool Open();
  bool Send(std::span<const unsigned char> datagram);
  // Makes sure that all events are in the receiver's queue.
  bool Finish();

  const std::string& Failure() const { return m_failure; }
  // Why the kernel does not tell; empty where it does.
  const std::string& Blindness() const { return m_blindness; }
  // Events that are in the receiver's queue or were read, and those that may be lost.
  std::uint64_t Arrived() const { return m_confirmed - std::min(m_dropped, m_confirmed); }
  std::uint64_t Doubtful() const { return m_handed - Arrived(); }

 private:
  using Clock = std::chrono::steady_clock;

  bool Fail(const std::string& failure);
  // Fails for the reason in errno.
  bool FailBySystem(const char* what);
  bool Transmit(std::span<const unsigned char> datagram, std::uint16_t port);
  // Waits until the network has delivered what was sent.
  bool Settle();
  // Confirms what was sent, and takes over what the kernel tells about the receiver.
  bool Ask();
  // Finds out how many events may follow: none if more than `eighths` of the queue are full.
  bool HasRoom(std::uint64_t eighths);
  bool AwaitRoom();
  void AwaitTurn();

  std::uint32_t m_rate;
  std::chrono::seconds m_wait;
  EventReceiver m_receiver;
  int m_socket = -1;
  std::uint16_t m_port = 0;  // of m_socket
  std::string m_failure, m_blindness;
  ReceiverState m_state;  // as last asked
  bool m_isThere = true;
  std::uint32_t m_room = 0;  // events that still fit before it must be asked again
  Clock::time_point m_asked, m_due;
  std::uint64_t m_handed = 0;     // events given to the network
  std::uint64_t m_confirmed = 0;  // of these, the ones that have found a receiver
  std::uint64_t m_dropped = 0;    // datagrams, of other senders as well
};
