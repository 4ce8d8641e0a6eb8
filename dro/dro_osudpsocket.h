#pragma once

#include <netinet/in.h>

#include <cstdint>
#include <utility>

#include "dro_error.h"
#include "dro_string.h"

namespace dro {

// The type of a socket, which the socket only stores. Callers may use other values than this one.
enum droEOsSocketType : std::int32_t {
  droOsSocketType_Udp = 16,
};

// Interface of a datagram socket. See droOsUdpSocket for what the operations do.
class droIOsUdpSocket {
 public:
  virtual ~droIOsUdpSocket() = default;

  // See droOsUdpSocket.
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
// To send, set the destination with SetTo, and Send. To receive, Bind the socket to a port, or hand over a
// descriptor that is bound already.
//
// Failures are reported to droErrorLog (code 10, source dro_osudpsocket). Nothing is thrown unless the log's
// level asks for it, and the socket stays usable then. Operations that need a descriptor report its absence
// and return -1, false or 0. Use a socket from one thread at a time, and let only one thread of the program
// at a time look up a name with SetTo or Bind.
class droOsUdpSocket : public droIOsUdpSocket {
 public:
  // Opens a descriptor; the type is droOsSocketType_Udp.
  droOsUdpSocket();
  // No descriptor yet: Reset opens one.
  explicit droOsUdpSocket(const droEOsSocketType& type);
  // Takes over an open descriptor, bound or not: the destructor closes it. 0 is reported and counts as none.
  droOsUdpSocket(const droEOsSocketType& type, int descriptor);
  ~droOsUdpSocket() override;
  droOsUdpSocket(const droOsUdpSocket&) = delete;
  droOsUdpSocket& operator=(const droOsUdpSocket&) = delete;

  // Closes the descriptor, see Close, and opens a new one, without options or bound port. 0, or the code of
  // the failure; when closing fails, no new one is opened. Fails also when the system hands out descriptor 0,
  // as it does once while the program has no standard input; that one stays taken, so that the next Reset
  // succeeds.
  droEError Reset();

  // The type given to the constructor.
  droEOsSocketType GetType() const override { return m_type; }

  // True unless the descriptor is 0. -1, which remains when opening one failed, counts as valid: the next
  // operation that uses it reports the failure.
  bool IsValid() const override { return m_descriptor != 0; }

  // Sets the destination, with or without a descriptor: a dotted address, or a name, which is looked up. A
  // port after a colon ("localhost:16549", low 16 bits) replaces `port`. 0, or 10 when the name is unknown;
  // the destination is then 255.255.255.255.
  droEError SetTo(const droString& host, unsigned short port);

  // Binds the descriptor, so that it receives what is sent to the port. Host and port as for SetTo; an empty
  // host means all addresses of this machine, and port 0 any free port. 0, or 10 when the port is
  // taken or the name is unknown; after "Can not bind socket", errno is the system's reason.
  droEError Bind(const droString& host, unsigned short port);

  // Sends one datagram. The number of bytes sent, -2 when the time-out ran out, -1 when it failed. A call
  // that a signal interrupts is repeated after a warning, and its time-out starts afresh.
  int Send(const void* data, unsigned int length);

  // Receives one datagram, with the results of Send, and cuts it to `size` bytes. The sender's dotted address
  // and port (host byte order) are stored where the pointers are not null. Time-outs start afresh at every
  // interruption, too: signals that keep coming can keep this waiting forever.
  int Receive(void* o_data, unsigned int size, droString* o_address, unsigned short* o_port);

  // Allows or forbids sending to broadcast addresses. True on success.
  bool SetBroadcast(bool on);

  // Wait at most that long until a datagram has arrived, or one can be sent. False when the time ran out, and
  // after a report when the wait failed or was interrupted.
  bool IsReadyToReceive(unsigned int milliseconds) const override;
  bool IsReadyToSend(unsigned int milliseconds) const override;

  // How many milliseconds Receive and Send wait; 0 means no limit. The setters return true on success, the
  // getters 0 on failure.
  bool SetReceiveTimeOut(const unsigned int& milliseconds) override;
  unsigned int GetReceiveTimeOut() const override;
  bool SetSendTimeOut(const unsigned int& milliseconds) override;
  unsigned int GetSendTimeOut() const override;

  // The size of the kernel's send buffer in bytes, taken as that of the largest message; 0 on failure.
  unsigned int GetMaxMessageSize() const override;

  // Closes the descriptor and forgets it and the destination, whatever fails. 0, or the code of the last
  // failure. Without a descriptor nothing happens, and a destination that was set stays.
  droEError Close() override;

  // Gives the descriptor away: it stays open, the caller closes it, and the object has none any more. For one
  // that is shared, such as a service manager's: Close would end receiving for all who share it.
  int Release() { return std::exchange(m_descriptor, 0); }

  // Broadcasts the packet that wakes up a machine to port `port` of the local network. `mac` is the machine's
  // hardware address, six raw bytes. 0, or 2 when the packet was not sent in full.
  static droEError WakeOnLan(const unsigned char* mac, unsigned short port);

 private:
  std::int32_t m_descriptor = 0;  // 0 is none
  sockaddr_in m_address{};
  droEOsSocketType m_type;
};

}  // namespace dro
