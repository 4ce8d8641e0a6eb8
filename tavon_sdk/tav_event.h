#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "tav_object.h"
#include "tav_string.h"

namespace tavon {

// An event: the id of a parameter and the bytes of the value that it is to be set to, as one datagram.
//
// The datagram is the id (32 bits, the lowest byte first), one length byte, and that many bytes of the value.
// The server reads events from a UDP port of the loopback host.
//
// An event is a plain value without a lock. Making, copying and reading one needs no memory and throws
// nothing, except to report.
class tavEvent {
 public:
  // The UDP port of the server.
  static constexpr std::uint16_t Port = 16549;
  // Sizes in bytes: of the largest value, and of the smallest and the largest datagram.
  static constexpr std::size_t LargestValue = 255;
  static constexpr std::size_t SmallestDatagram = 5;
  static constexpr std::size_t LargestDatagram = SmallestDatagram + LargestValue;

  // Room for receiving a datagram. It has one byte more than an event can have: with less, a longer datagram
  // would be cut to a valid event.
  using Buffer = std::array<unsigned char, LargestDatagram + 1>;

  // The event with the id 0 and no value.
  tavEvent() = default;

  // The length byte is the size of the value modulo 256, and only that many of its bytes travel: a value of
  // 256 bytes or more is cut to the remainder (673 bytes to 161). The server expects this.
  tavEvent(std::uint32_t id, std::span<const unsigned char> value);

  // The event for a value that is written as text, as for ura_event. The text of a weekly schedule without a
  // comma switches the stored schedule on or off: only its active byte travels. Invalid text is not an error.
  //
  // Nothing after a report: code 6 for an empty text, code 1 for an unknown type.
  static std::optional<tavEvent> FromText(std::uint32_t id, tavEObject type, const tavString& text);

  // The event in a datagram that was received into a buffer; `size` is the result of
  // droOsUdpSocket::Receive. Nothing for a failure, and for a datagram that is not exactly one event.
  static std::optional<tavEvent> FromDatagram(const unsigned char* datagram, int size);

  // The id of the parameter.
  std::uint32_t GetId() const { return IdOf(m_datagram); }
  // Empty for an event without a value, which no parameter can take. The bytes live as long as the event.
  std::span<const unsigned char> GetValue() const { return GetDatagram().subspan(SmallestDatagram); }
  // What travels.
  std::span<const unsigned char> GetDatagram() const {
    return std::span(m_datagram).first(SmallestDatagram + LengthOf(m_datagram));
  }

  // What a datagram of at least SmallestDatagram bytes says, whether or not it is exactly one event: its id,
  // and how many bytes of a value it claims to carry. For programs that show what arrives.
  static std::uint32_t IdOf(std::span<const unsigned char> datagram);
  static std::size_t LengthOf(std::span<const unsigned char> datagram) { return datagram[kIdSize]; }

 private:
  static constexpr std::size_t kIdSize = SmallestDatagram - 1;

  std::array<unsigned char, LargestDatagram> m_datagram{};
};

}  // namespace tavon
