#include "fuzz_input.h"
#include "parameter_of_type.h"

// The encoders of all types: the bytes that the text of a value becomes, and the text of such bytes.
//
// Input: a byte that picks the type, and a text, whose bytes are also taken as a value of the type.

namespace {

using tavon::tavEObject;
using Bytes = std::vector<unsigned char>;

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

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tavon::tavError::Level = 0;
  FuzzInput input(data, size);
  const tavEObject type = TypeOf(input.Byte());
  const std::string text = input.Rest();
  tavon::tavIParameter* const parameter = ParameterOf(type);
  if (parameter == nullptr || text.empty()) {
    Bytes value = {1, 2, 3};
    const unsigned int status = tavon::tavParameterFactory::StringToData(type, text, &value);
    RequireEqual(status, text.empty() ? 6U : 1U, "the status of a refused conversion");
    Require(value == Bytes{1, 2, 3}, "a refused conversion changes nothing");
    return 0;
  }

  const Bytes value = Encoded(type, text);
  CheckText(type, value);
  const bool isText = type == tavon::tavObject_ParameterInfo || type == tavon::tavObject_ParameterCamera;
  RequireEqual(value.size(), isText ? text.size() : parameter->GetDataSize(), "the size of the type");
  // Types of one byte and the slider limit what they encode; the others encode any value.
  if (value.size() > 1 && parameter->GetParameterSliderPtr() == nullptr) {
    CheckText(type, Bytes(text.begin(), text.end()));
  }
  return 0;
}
