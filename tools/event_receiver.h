#pragma once

#include <cstdint>

// What the kernel tells about the socket that receives the events of this machine.
struct ReceiverState {
  std::uint64_t socket = 0;   // tells sockets apart
  std::uint32_t unread = 0;   // memory of what waits to be read, in bytes
  std::uint32_t used = 0;     // the same, with what was read but not yet given back
  std::uint32_t limit = 0;    // of `used`: a datagram that does not fit any more is dropped
  std::uint32_t dropped = 0;  // datagrams so far; wraps
};

// Asks the kernel about that socket, as any user may.
class EventReceiver {
 public:
  enum class Answer { Known, Nobody, Unknown };

  EventReceiver();
  ~EventReceiver();
  EventReceiver(const EventReceiver&) = delete;
  EventReceiver& operator=(const EventReceiver&) = delete;

  // About the socket that gets what is sent to the event port from this port of the loopback address, to
  // which the caller's own socket is bound. Unknown: errno says why the kernel does not tell.
  Answer Ask(std::uint16_t ownPort, ReceiverState& o_state) const;

 private:
  // As Ask, for any two ports. Nobody may also mean that the kernel knows no UDP sockets at all.
  Answer AskFor(std::uint16_t sender, std::uint16_t receiver, ReceiverState& o_state) const;

  int m_descriptor;
  int m_error;  // why there is none
};
