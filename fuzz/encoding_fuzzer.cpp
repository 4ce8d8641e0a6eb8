#include "fuzz_input.h"
#include "reference.h"
#include "tav_error.h"
#include "tav_parameterfactory.h"

// The encoders of all types: the bytes that the text of a value becomes, and what becomes of a buffer that is
// not empty before.
//
// Input: a byte that picks the type ('a' is the first, 'n' the last, 'o' none), a byte that picks how much
// the buffer holds before ('0' is nothing), and the text.

namespace {

using tavon::tavParameterFactory;

int TypeOf(unsigned char choice) { return reference::kFirstType - 1 + choice % 16; }

std::string HeldBefore(unsigned char choice) {
  constexpr std::size_t sizes[] = {0, 1, 2, 4, 5, 300, 673, 1000};
  return std::string(sizes[choice % 8], static_cast<char>(0xA5));
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  tavon::tavError::Level = 0;
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzInput input(data, size);
  const int type = TypeOf(input.Byte());
  const std::string before = HeldBefore(input.Byte());
  const std::string text = input.Rest();

  std::vector<unsigned char> value(before.begin(), before.end());
  const unsigned int status =
      tavParameterFactory::StringToData(static_cast<tavon::tavEObject>(type), text, &value);
  const std::string bytes(value.begin(), value.end());

  const bool isType = type >= reference::kFirstType && type <= reference::kLastType;
  const unsigned int expectedStatus = text.empty() ? 6 : isType ? 0 : 1;
  RequireEqual(status, expectedStatus, "the status");
  const std::string expected = expectedStatus != 0 ? before : reference::ValueBytes(type, text, before);
  RequireEqual(bytes, expected, "the bytes of the type", std::to_string(type));
  return 0;
}
