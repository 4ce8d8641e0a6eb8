#include "event_receiver.h"

#include <linux/inet_diag.h>
#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <linux/sock_diag.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

#include "tav_event.h"

namespace {

// In every network.
constexpr std::uint32_t kLoopbackInterface = 1;

struct Request {
  nlmsghdr header;
  inet_diag_req_v2 body;
};

Request RequestFor(std::uint16_t sender, std::uint16_t receiver) {
  Request request{};
  request.header.nlmsg_len = sizeof request;
  request.header.nlmsg_type = SOCK_DIAG_BY_FAMILY;
  request.header.nlmsg_flags = NLM_F_REQUEST;
  request.body.sdiag_family = AF_INET;  // finds sockets of IPv6 as well, if they receive from IPv4
  request.body.sdiag_protocol = IPPROTO_UDP;
  request.body.idiag_ext = 1 << (INET_DIAG_SKMEMINFO - 1);
  request.body.idiag_states = ~0U;
  // The kernel takes source and destination as those of a datagram, other than for TCP.
  request.body.id.idiag_src[0] = request.body.id.idiag_dst[0] = htonl(INADDR_LOOPBACK);
  request.body.id.idiag_sport = htons(sender);
  request.body.id.idiag_dport = htons(receiver);
  request.body.id.idiag_if = kLoopbackInterface;  // or sockets that are bound to it are not found
  request.body.id.idiag_cookie[0] = request.body.id.idiag_cookie[1] = INET_DIAG_NOCOOKIE;
  return request;
}

// Takes what is wanted out of an answer. False when it is not there.
bool ReadState(const unsigned char* answer, std::size_t size, ReceiverState& o_state) {
  inet_diag_msg message;
  if (size < NLMSG_HDRLEN + sizeof message) return false;
  std::memcpy(&message, answer + NLMSG_HDRLEN, sizeof message);
  o_state.socket = std::uint64_t{message.id.idiag_cookie[1]} << 32 | message.id.idiag_cookie[0];
  o_state.unread = message.idiag_rqueue;

  for (std::size_t at = NLMSG_HDRLEN + sizeof message; at + sizeof(rtattr) <= size;) {
    rtattr attribute;
    std::memcpy(&attribute, answer + at, sizeof attribute);
    std::array<std::uint32_t, SK_MEMINFO_DROPS + 1> numbers;
    if (attribute.rta_type == INET_DIAG_SKMEMINFO && attribute.rta_len >= RTA_LENGTH(sizeof numbers) &&
        at + attribute.rta_len <= size) {
      std::memcpy(numbers.data(), answer + at + RTA_LENGTH(0), sizeof numbers);
      o_state.used = numbers[SK_MEMINFO_RMEM_ALLOC];
      o_state.limit = numbers[SK_MEMINFO_RCVBUF];
      o_state.dropped = numbers[SK_MEMINFO_DROPS];
      return true;
    }
    if (attribute.rta_len < sizeof attribute) break;
    at += RTA_ALIGN(attribute.rta_len);
  }
  return false;
}

}  // namespace

EventReceiver::EventReceiver()
    : m_descriptor(socket(AF_NETLINK, SOCK_DGRAM | SOCK_CLOEXEC, NETLINK_SOCK_DIAG)),
      m_error(m_descriptor < 0 ? errno : 0) {}

EventReceiver::~EventReceiver() {
  if (m_descriptor >= 0) close(m_descriptor);
}

EventReceiver::Answer EventReceiver::Ask(std::uint16_t ownPort, ReceiverState& o_state) const {
  const Answer answer = AskFor(ownPort, tavon::tavEvent::Port, o_state);
  if (answer != Answer::Nobody) return answer;
  // A kernel that cannot tell does not find this program's own socket, either.
  ReceiverState own;
  if (AskFor(tavon::tavEvent::Port, ownPort, own) == Answer::Known) return Answer::Nobody;
  errno = EOPNOTSUPP;
  return Answer::Unknown;
}

EventReceiver::Answer EventReceiver::AskFor(std::uint16_t sender, std::uint16_t receiver,
                                            ReceiverState& o_state) const {
  if (m_error != 0) {
    errno = m_error;
    return Answer::Unknown;
  }
  const Request request = RequestFor(sender, receiver);
  alignas(nlmsghdr) std::array<unsigned char, 1024> answer;
  if (send(m_descriptor, &request, sizeof request, 0) < 0) return Answer::Unknown;
  // The kernel has answered before send returns.
  const ssize_t size = recv(m_descriptor, answer.data(), answer.size(), MSG_DONTWAIT);
  if (size < 0) return Answer::Unknown;

  nlmsghdr header{};
  std::memcpy(&header, answer.data(), std::min(sizeof header, static_cast<std::size_t>(size)));
  if (header.nlmsg_type == NLMSG_ERROR) {
    nlmsgerr error{};
    std::memcpy(&error, answer.data() + NLMSG_HDRLEN, sizeof error);
    errno = -error.error;
    return errno == ENOENT ? Answer::Nobody : Answer::Unknown;
  }
  if (ReadState(answer.data(), static_cast<std::size_t>(size), o_state)) return Answer::Known;
  errno = EBADMSG;
  return Answer::Unknown;
}
