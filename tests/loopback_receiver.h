#pragma once

#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <stdexcept>
#include <string>

// A plain socket bound to a UDP port of the loopback host (0: any free one), for what a program sends there.
class LoopbackReceiver {
 public:
  static constexpr unsigned short kEventPort = 16549;

  explicit LoopbackReceiver(unsigned short port = 0) : m_descriptor(socket(AF_INET, SOCK_DGRAM, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (bind(m_descriptor, reinterpret_cast<sockaddr*>(&address), sizeof(address)) != 0) {
      close(m_descriptor);
      throw std::runtime_error("UDP port " + std::to_string(port) + " is taken");
    }
  }
  ~LoopbackReceiver() { close(m_descriptor); }
  LoopbackReceiver(const LoopbackReceiver&) = delete;

  unsigned short Port() const {
    sockaddr_in address{};
    socklen_t size = sizeof(address);
    getsockname(m_descriptor, reinterpret_cast<sockaddr*>(&address), &size);
    return ntohs(address.sin_port);
  }

  bool HasDatagram(int milliseconds) const {
    pollfd readable{m_descriptor, POLLIN, 0};
    return poll(&readable, 1, milliseconds) == 1;
  }

  // The next datagram; empty when none comes within ten seconds.
  std::string Receive() const {
    std::string datagram(65536, '\0');
    if (!HasDatagram(10000)) return {};
    datagram.resize(static_cast<std::size_t>(recv(m_descriptor, datagram.data(), datagram.size(), 0)));
    return datagram;
  }

 private:
  int m_descriptor;
};
