#include <algorithm>
#include <map>
#include <memory>

#include "datagram_text.h"
#include "fuzz_input.h"
#include "reference.h"
#include "tav_error.h"
#include "tav_parameterfactory.h"
#include "tav_parametershutter.h"

// A received datagram as ura_listen shows it, read by a parameter of each type or by none.
//
// Input: a byte that picks the type ('a' is the first, 'n' the last, 'o' none), and the datagram.

namespace {

// One parameter a type receives all datagrams, as in ura_listen.
tavon::tavIParameter* ParameterOf(int type) {
  static std::map<int, std::unique_ptr<tavon::tavIParameter>> parameters;
  if (type < reference::kFirstType || type > reference::kLastType) return nullptr;
  std::unique_ptr<tavon::tavIParameter>& parameter = parameters[type];
  if (parameter) return parameter.get();
  parameter.reset(tavon::tavParameterFactory::CreateByType(static_cast<tavon::tavEObject>(type)));
  // Its thread would stop the shutter at an instant of its own.
  if (auto* shutter = parameter->GetParameterShutterPtr()) shutter->term_thread();
  return parameter.get();
}

std::string Hex(std::string_view bytes, const char* before) {
  std::string text;
  for (const char byte : bytes) {
    char digits[3];
    std::snprintf(digits, sizeof(digits), "%02X", static_cast<unsigned char>(byte));
    text += before + std::string(digits);
  }
  return text;
}

bool IsControl(char c) { return (c >= 0 && c < ' ') || c == 0x7F; }

// The length of the character at the start of a text that a terminal may be given, 0 when it may not.
std::size_t PrintableLength(std::string_view text) {
  const auto byteAt = [&](std::size_t i) -> unsigned {
    return i < text.size() ? static_cast<unsigned char>(text[i]) : 0;
  };
  const auto isContinuation = [&](std::size_t i) { return byteAt(i) >= 0x80 && byteAt(i) <= 0xBF; };
  const unsigned first = byteAt(0);
  if (first < 0x80) return IsControl(text[0]) ? 0 : 1;
  if (first < 0xC2 || first > 0xF4 || !isContinuation(1)) return 0;
  if (first < 0xE0) return first == 0xC2 && byteAt(1) < 0xA0 ? 0 : 2;  // C2 80 to C2 9F are controls, too
  if (!isContinuation(2)) return 0;
  if (first < 0xF0) {
    const bool isOverlong = first == 0xE0 && byteAt(1) < 0xA0;
    const bool isSurrogate = first == 0xED && byteAt(1) > 0x9F;
    return isOverlong || isSurrogate ? 0 : 3;
  }
  const bool isInRange = !(first == 0xF0 && byteAt(1) < 0x90) && !(first == 0xF4 && byteAt(1) > 0x8F);
  return isInRange && isContinuation(3) ? 4 : 0;
}

// The control character at the start of a text is escaped with all its bytes, what is no character byte by
// byte.
std::size_t EscapedLength(std::string_view text) {
  return text.size() > 1 && text[0] == '\xC2' && static_cast<unsigned char>(text[1]) >= 0x80 &&
                 static_cast<unsigned char>(text[1]) < 0xA0
             ? 2
             : 1;
}

std::string Meaning(int type, std::string_view value) {
  const std::size_t size = reference::ValueSize(type);
  if (value.empty()) return {};
  if (type == reference::kSchedule && value.size() == 1)
    return value[0] == 0 ? " means the schedule is off" : " means the schedule is on";
  if (value.size() < size) {
    std::ostringstream text;
    text << " means the first " << value.size() << " of " << size << " bytes";
    return text.str();
  }
  std::string text = " means ";
  const std::string shown = reference::ValueText(type, value);
  for (std::string_view rest = shown; !rest.empty();) {
    const std::size_t length = PrintableLength(rest);
    const std::size_t taken = length != 0 ? length : EscapedLength(rest);
    text += length != 0 ? std::string(rest.substr(0, taken)) : Hex(rest.substr(0, taken), "\\x");
    rest.remove_prefix(taken);
  }
  return text;
}

std::string ExpectedText(std::string_view datagram, int type) {
  std::ostringstream text;
  if (datagram.size() < 5) {
    text << "bytes" << Hex(datagram, " ") << " (no event: " << datagram.size()
         << " bytes, at least 5 expected)";
    return text.str();
  }
  const auto byteAt = [&](std::size_t i) {
    return static_cast<unsigned long>(static_cast<unsigned char>(datagram[i]));
  };
  const std::string_view value = datagram.substr(5);
  text << "id " << byteAt(0) + 256 * byteAt(1) + 65536 * byteAt(2) + 16777216 * byteAt(3);
  text << " length " << byteAt(4) << " value" << Hex(value, " ");
  if (type >= reference::kFirstType && type <= reference::kLastType) text << Meaning(type, value);
  if (value.size() != byteAt(4)) text << " (carries " << value.size() << " value bytes)";
  return text.str();
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  tavon::tavError::Level = 0;
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzInput input(data, size);
  const int type = reference::kFirstType - 1 + input.Byte() % 16;
  const std::string datagram = input.Rest();
  // A block of its own size, so that a byte read beyond it is seen.
  const std::vector<unsigned char> received(datagram.begin(), datagram.end());

  const std::string text = DatagramText(received, ParameterOf(type));
  RequireEqual(text, ExpectedText(datagram, type), "the text");
  Require(std::none_of(text.begin(), text.end(), IsControl), "there is a control character");
  return 0;
}
