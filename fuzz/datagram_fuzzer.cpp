#include <utf8.h>

#include "datagram_text.h"
#include "fuzz_input.h"
#include "parameter_of_type.h"
#include "tav_error.h"

// A received datagram as ura_listen shows it: one line that a terminal can be given, with all its bytes.
//
// Input: a byte that picks the type of the parameter that reads the value, and the datagram.

namespace {

// True when the text is UTF-8 without control characters.
bool IsPrintable(const std::string& text) {
  if (!utf8::is_valid(text.begin(), text.end())) return false;
  for (auto position = text.begin(); position != text.end();) {
    const std::uint32_t character = utf8::next(position, text.end());
    if (character < 0x20 || (character >= 0x7F && character <= 0x9F)) return false;
  }
  return true;
}

// The line tells the id and the length of an event, and lists all bytes behind them; of anything shorter it
// lists all bytes.
void CheckBytes(const std::string& line, const std::string& datagram) {
  unsigned int id = 0;
  unsigned int length = 0;
  int end = 5;  // of the word "bytes"
  std::string header;
  if (std::sscanf(line.c_str(), "id %u length %u value%n", &id, &length, &end) == 2) {
    for (int shift = 0; shift < 32; shift += 8) header += static_cast<char>(id >> shift);
    header += static_cast<char>(length);
  }
  Require(datagram.starts_with(header), "id and length are those of the datagram");
  std::string listed;
  for (const char byte : datagram.substr(header.size())) {
    char digits[4];
    std::snprintf(digits, sizeof(digits), " %02X", static_cast<unsigned char>(byte));
    listed += digits;
  }
  RequireEqual(line.substr(static_cast<std::size_t>(end), listed.size()), listed, "the listed bytes");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tavon::tavError::Level = 0;
  FuzzInput input(data, size);
  tavon::tavIParameter* const parameter = ParameterOf(TypeOf(input.Byte()));
  const std::string datagram = input.Rest();
  // A block of its own, so that the sanitizer sees a byte read beyond it.
  const std::vector<unsigned char> received(datagram.begin(), datagram.end());

  const std::string text = DatagramText(received, parameter);
  Require(IsPrintable(text), "a character that a terminal must not be given");
  CheckBytes(text, datagram);
  return 0;
}
