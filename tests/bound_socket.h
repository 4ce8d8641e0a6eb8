#pragma once

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <stdexcept>

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
