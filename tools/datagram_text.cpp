#include "datagram_text.h"

#include <cstdint>

namespace {

constexpr std::size_t kIdSize = 4;
constexpr std::size_t kHeaderSize = kIdSize + 1;

// Each byte as a blank and two hexadecimal digits.
std::string HexBytes(std::span<const unsigned char> bytes) {
  constexpr const char* digits = "0123456789ABCDEF";
  std::string text;
  text.reserve(3 * bytes.size());
  for (const unsigned char byte : bytes) {
    text.push_back(' ');
    text.push_back(digits[byte >> 4]);
    text.push_back(digits[byte & 15]);
  }
  return text;
}

std::uint32_t ReadId(std::span<const unsigned char> datagram) {
  std::uint32_t id = 0;
  for (std::size_t i = kIdSize; i-- > 0;)
    id = id << 8 | datagram[i];
  return id;
}

}  // namespace

std::string DatagramText(std::span<const unsigned char> datagram) {
  if (datagram.size() < kHeaderSize) {
    return "bytes" + HexBytes(datagram) + " (no event: " + std::to_string(datagram.size()) +
           " bytes, at least " + std::to_string(kHeaderSize) + " expected)";
  }
  const std::size_t length = datagram[kIdSize];
  const auto value = datagram.subspan(kHeaderSize);
  std::string text = "id " + std::to_string(ReadId(datagram)) + " length " + std::to_string(length) +
                     " value" + HexBytes(value);
  if (value.size() != length) text += " (carries " + std::to_string(value.size()) + " value bytes)";
  return text;
}
