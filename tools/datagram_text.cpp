#include "datagram_text.h"

#include <utf8.h>

#include <cstdint>

#include "tav_event.h"
#include "tav_parameterfactory.h"

using tavon::tavEvent;

namespace {

constexpr const char* kDigits = "0123456789ABCDEF";

// Each byte as a blank and two hexadecimal digits.
std::string HexBytes(std::span<const unsigned char> bytes) {
  std::string text;
  text.reserve(3 * bytes.size());
  for (const unsigned char byte : bytes) {
    text.push_back(' ');
    text.push_back(kDigits[byte >> 4]);
    text.push_back(kDigits[byte & 15]);
  }
  return text;
}

// Moves past the character at `position`. False when it must not reach a terminal: a control character, or a
// byte that is not UTF-8.
bool TakePrintable(std::string::const_iterator& position, std::string::const_iterator end) {
  const auto start = position;
  try {
    const std::uint32_t character = utf8::next(position, end);
    return character >= ' ' && (character < 0x7F || character > 0x9F);
  } catch (const utf8::exception&) {
    position = start + 1;
    return false;
  }
}

// What the value means to a parameter; empty when there are no bytes to set it to.
std::string Meaning(std::span<const unsigned char> value, tavon::tavIParameter& parameter) {
  if (value.empty()) return {};
  const bool isActiveByte = parameter.GetParameterThermoChronoWeekPtr() != nullptr && value.size() == 1;
  if (isActiveByte) return value[0] != 0 ? " means the schedule is on" : " means the schedule is off";
  const tavon::tavParameterType* const type = tavon::tavParameterFactory::FindType(parameter.GetType());
  const bool isText = type != nullptr && type->IsText();
  const std::size_t whole = isText ? value.size() : parameter.GetDataSize();
  if (value.size() < whole) {
    return " means the first " + std::to_string(value.size()) + " of " + std::to_string(whole) + " bytes";
  }
  parameter.SetData(value.data(), static_cast<unsigned int>(value.size()), 1);
  return " means " + Printable(parameter.ValueToString());
}

}  // namespace

std::string Printable(const std::string& text) {
  std::string printable;
  for (auto position = text.begin(); position != text.end();) {
    const auto start = position;
    if (TakePrintable(position, text.end())) {
      printable.append(start, position);
      continue;
    }
    for (const char c : std::string(start, position)) {
      const auto byte = static_cast<unsigned char>(c);
      printable += std::string("\\x") + kDigits[byte >> 4] + kDigits[byte & 15];
    }
  }
  return printable;
}

std::string DatagramText(std::span<const unsigned char> datagram, tavon::tavIParameter* parameter) {
  if (datagram.size() < tavEvent::SmallestDatagram) {
    return "bytes" + HexBytes(datagram) + " (no event: " + std::to_string(datagram.size()) +
           " bytes, at least " + std::to_string(tavEvent::SmallestDatagram) + " expected)";
  }
  const std::size_t length = tavEvent::LengthOf(datagram);
  const auto value = datagram.subspan(tavEvent::SmallestDatagram);
  std::string text = "id " + std::to_string(tavEvent::IdOf(datagram)) + " length " + std::to_string(length) +
                     " value" + HexBytes(value);
  if (parameter != nullptr) text += Meaning(value, *parameter);
  if (value.size() != length) text += " (carries " + std::to_string(value.size()) + " value bytes)";
  return text;
}
