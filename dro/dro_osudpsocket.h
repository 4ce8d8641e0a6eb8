#pragma once

#include <netinet/in.h>

#include <cstdint>

#include "dro_error.h"
#include "dro_string.h"

namespace dro {

// The kind of a socket, kept for its user: other values than this one are passed through.
enum droEOsSocketType : std::int32_t {
  droOsSocketType_Udp = 16,
};

// What every kind of datagram socket offers. See droOsUdpSocket for what the operations do.
class droIOsUdpSocket {
 public:
  virtual ~droIOsUdpSocket() = default;

  virtual droEOsSocketType GetType() const = 0;
  virtual bool IsValid() const = 0;
  virtual bool IsReadyToReceive(unsigned int milliseconds) const = 0;
  virtual bool IsReadyToSend(unsigned int milliseconds) const = 0;
  virtual bool SetReceiveTimeOut(const unsigned int& milliseconds) = 0;
  virtual unsigned int GetReceiveTimeOut() const = 0;
  virtual bool SetSendTimeOut(const unsigned int& milliseconds) = 0;
  virtual unsigned int GetSendTimeOut() const = 0;
  virtual unsigned int GetMaxMessageSize() const = 0;
  virtual droEError Close() = 0;
};

// An IPv4 datagram socket: owns one descriptor, which its destructor closes, and one destination address.
//
// Failures are reported to droErrorLog (code 10, source dro_osudpsocket); nothing is thrown unless the log's
// level asks for it, and then the socket stays in order. Operations that need a descriptor report its absence
// and give -1, false or 0. One thread at a time uses a socket, and one thread at a time of the whole program
// gives SetTo a name to look up.
class droOsUdpSocket : public droIOsUdpSocket {
 public:
  // Opens a descriptor, of type droOsSocketType_Udp.
  droOsUdpSocket();
  // No descriptor yet: Reset opens one.
  explicit droOsUdpSocket(const droEOsSocketType& type);
  // Takes over an open descriptor and will close it; 0 is reported and counts as none.
  droOsUdpSocket(const droEOsSocketType& type, int descriptor);
  ~droOsUdpSocket() override;
  droOsUdpSocket(const droOsUdpSocket&) = delete;
  droOsUdpSocket& operator=(const droOsUdpSocket&) = delete;

  // Closes and opens a new descriptor without any option or destination. 0, or the code of the failure; when
  // closing fails, no new one is opened.
  droEError Reset();

  droEOsSocketType GetType() const override { return m_type; }

  // A descriptor of -1, which is what a failed attempt to open one leaves, counts as valid: the operation
  // that uses it next reports why it can not.
  bool IsValid() const override { return m_descriptor != 0; }

  // Sets the destination, with or without a descriptor: a dotted address or a name, which is looked up. A
  // port after a colon ("localhost:16549", low 16 bits) takes the place of `port`. 0, or 10 when the name is
  // unknown; the destination is then 255.255.255.255.
  droEError SetTo(const droString& host, unsigned short port);

  // Sends one datagram. The count of bytes sent, -2 when it would have to wait longer than the time-out, -1
  // when it failed. An interrupted call is repeated after a warning.
  int Send(const void* data, unsigned int length);

  // Receives one datagram, as Send sends one; what is longer than `size` is cut. The sender's dotted address
  // and port (host byte order) are stored where the pointers are not null.
  int Receive(void* o_data, unsigned int size, droString* o_address, unsigned short* o_port);

  // Allows or forbids sending to broadcast addresses. True when done.
  bool SetBroadcast(bool on);

  // Wait at most so many milliseconds until a datagram is there, or one can be sent. False when the time ran
  // out, and after a report when waiting failed or was interrupted.
  bool IsReadyToReceive(unsigned int milliseconds) const override;
  bool IsReadyToSend(unsigned int milliseconds) const override;

  // How many milliseconds Receive and Send wait; 0 is without end. The setters return true when done, the
  // getters 0 when they failed.
  bool SetReceiveTimeOut(const unsigned int& milliseconds) override;
  unsigned int GetReceiveTimeOut() const override;
  bool SetSendTimeOut(const unsigned int& milliseconds) override;
  unsigned int GetSendTimeOut() const override;

  // The size in bytes of the kernel's send buffer, meant as the bound of a message's size; 0 when it failed.
  unsigned int GetMaxMessageSize() const override;

  // Closes the descriptor, if there is one, and forgets it and the destination, whatever fails. 0, or the
  // code of the last failure.
  droEError Close() override;

  // Sends the packet that wakes the machine with the hardware address of six raw bytes at `mac` to every
  // machine of the local network. 0, or 2 when it was not sent whole.
  static droEError WakeOnLan(const unsigned char* mac, unsigned short port);

 private:
  std::int32_t m_descriptor = 0;  // 0 is none
  sockaddr_in m_address{};
  droEOsSocketType m_type;
};

}  // namespace dro
