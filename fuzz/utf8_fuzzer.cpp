#include <utf8.h>

#include <algorithm>

#include "dro_string.h"
#include "fuzz_input.h"
#include "tav_string.h"

// UTF-8 to wide text and back, in both string classes: the round trip gives the text back, an exception comes
// for invalid text only, and no buffer is written beyond its end.
//
// Input: two bytes with the size of a buffer and of the part to convert, and a text up to its first zero
// byte.

namespace {

template <class Text>
void CheckText(const std::string& text) {
  const bool isValid = utf8::is_valid(text.begin(), text.end());
  try {
    const std::wstring wide = Text::FromUTF8(text.c_str());
    Require(isValid, "an exception for invalid text");
    RequireEqual<std::string>(Text::AsUTF8(wide.c_str()), text, "UTF-8 to wide text and back");
  } catch (const utf8::exception&) {
    Require(!isValid, "an exception for invalid text only");
  }
}

using Conversion = void (*)(wchar_t* out, unsigned int capacity, const char* in, unsigned int inLength);

// Converts into a buffer of exactly `capacity` characters, which then holds the start of the text.
void CheckBuffer(Conversion convert, const std::string& text, unsigned int capacity, unsigned int length) {
  std::vector<wchar_t> buffer(capacity, L'#');
  convert(buffer.data(), capacity, text.c_str(), length);
  const auto end = std::find(buffer.begin(), buffer.end(), L'\0');
  Require(end != buffer.end(), "a terminating zero");
  Require(std::all_of(end + 1, buffer.end(), [](wchar_t c) { return c == L'#'; }), "nothing behind that");
  const std::wstring expected = tavon::tavString::FromUTF8(text).substr(0, std::min(length, capacity - 1));
  Require(std::equal(buffer.begin(), end, expected.begin(), expected.end()), "the start of the text");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzInput input(data, size);
  const unsigned int capacity = 1 + input.Byte() % 63;
  const unsigned int length = input.Byte() % 64;
  const std::string text = input.Field({"\0", 1});
  CheckText<tavon::tavString>(text);
  CheckText<dro::droString>(text);
  if (utf8::is_valid(text.begin(), text.end())) {
    CheckBuffer(tavon::CharToWide, text, capacity, length);
    CheckBuffer(dro::CharToWide, text, capacity, length);
  }
  return 0;
}
