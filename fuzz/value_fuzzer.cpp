#include <utf8.h>

#include <algorithm>
#include <map>
#include <memory>

#include "datagram_text.h"
#include "fuzz_input.h"
#include "tav_event.h"
#include "tav_parameterfactory.h"
#include "tav_parametershutter.h"

// A value of any type: encoded from its text, shown as text, and shown by ura_listen as it arrives.
//
// Input: a byte that picks the type ('a' is the first, 'n' the last, 'o' none), and bytes that are taken as
// the text of a value, as a value, and as a whole datagram.

namespace {

using tavon::tavEObject;
using tavon::tavEvent;
using Bytes = std::vector<unsigned char>;

// The parameter of a type, null for none. There is one of each type for all inputs.
tavon::tavIParameter* ParameterOf(tavEObject type) {
  static std::map<tavEObject, std::unique_ptr<tavon::tavIParameter>> parameters;
  std::unique_ptr<tavon::tavIParameter>& parameter = parameters[type];
  if (parameter) return parameter.get();
  parameter.reset(tavon::tavParameterFactory::CreateByType(type));
  // Its thread would stop the shutter at a moment of its own.
  if (parameter && parameter->GetParameterShutterPtr() != nullptr) {
    parameter->GetParameterShutterPtr()->term_thread();
  }
  return parameter.get();
}

Bytes Encoded(tavEObject type, const std::string& text) {
  Bytes value;
  RequireEqual(tavon::tavParameterFactory::StringToData(type, text, &value), tavon::tavError_NoError, text);
  return value;
}

std::string TextOf(tavEObject type, const Bytes& value) {
  ParameterOf(type)->SetData(value.data(), static_cast<unsigned int>(value.size()), 1);
  return ParameterOf(type)->ValueToString();
}

// A value, its text, and what that encodes to: the same value, as far as its text tells.
void CheckText(tavEObject type, const Bytes& value) {
  const std::string text = TextOf(type, value);
  tavon::tavString expected = text + ',';
  tavon::tavString actual = TextOf(type, Encoded(type, text)) + ',';
  // A small negative number is shown as "-0", which is read as 0 and then shown as "0".
  expected.FindAndReplaceAll("-0,", "0,", false, false);
  actual.FindAndReplaceAll("-0,", "0,", false, false);
  RequireEqual<std::string>(actual, expected, "value to text to value");
}

void CheckEncoding(tavEObject type, const std::string& text) {
  tavon::tavIParameter* const parameter = ParameterOf(type);
  if (parameter == nullptr || text.empty()) {
    Bytes value = {1, 2, 3};
    const unsigned int status = tavon::tavParameterFactory::StringToData(type, text, &value);
    RequireEqual(status, text.empty() ? 6U : 1U, "the status of a refused conversion");
    Require(value == Bytes{1, 2, 3}, "a refused conversion changes nothing");
    return;
  }
  const Bytes value = Encoded(type, text);
  CheckText(type, value);
  const bool isText = type == tavon::tavObject_ParameterInfo || type == tavon::tavObject_ParameterCamera;
  RequireEqual(value.size(), isText ? text.size() : parameter->GetDataSize(), "the size of the type");
  // Types of one byte and the slider limit what they encode; the others encode any value.
  if (value.size() > 1 && parameter->GetParameterSliderPtr() == nullptr) {
    CheckText(type, Bytes(text.begin(), text.end()));
  }
}

// A datagram is one line that a terminal can be given. Its bytes are listed, those of an event behind its id
// and length.
void CheckDatagram(tavEObject type, const Bytes& datagram) {
  const std::string line = DatagramText(datagram, ParameterOf(type));
  Require(utf8::is_valid(line.begin(), line.end()), "a line of UTF-8");
  for (auto position = line.begin(); position != line.end();) {
    const std::uint32_t character = utf8::next(position, line.end());
    Require(character >= 0x20 && (character < 0x7F || character > 0x9F), "no control character");
  }
  std::string listed;
  const bool hasValue = datagram.size() >= tavEvent::SmallestDatagram;
  for (std::size_t i = hasValue ? tavEvent::SmallestDatagram : 0; i < datagram.size(); ++i) {
    char digits[4];
    std::snprintf(digits, sizeof(digits), " %02X", datagram[i]);
    listed += digits;
  }
  Require(line.find(listed) != std::string::npos, "the listed bytes");
  const auto event = tavEvent::FromDatagram(datagram.data(), static_cast<int>(datagram.size()));
  if (!event) return;
  const auto again = event->GetDatagram();
  Require(std::equal(again.begin(), again.end(), datagram.begin(), datagram.end()), "the datagram again");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tavon::tavError::Level = 0;
  FuzzInput input(data, size);
  const auto type = static_cast<tavEObject>(tavon::tavObject_ParameterSwitch - 1 + input.Byte() % 16);
  const std::string text = input.Rest();
  CheckEncoding(type, text);
  // A block of its own, so that the sanitizer sees a byte read beyond it.
  CheckDatagram(type, Bytes(text.begin(), text.end()));
  return 0;
}
