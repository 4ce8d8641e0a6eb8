#include <utf8.h>

#include <algorithm>
#include <functional>
#include <optional>

#include "dro_string.h"
#include "fuzz_input.h"
#include "tav_string.h"

// UTF-8 to wide text and back, in both string classes: the round trip gives the text back, an exception comes
// for invalid text only, and no buffer is written beyond its end.
//
// Input: two bytes with the sizes of the buffers, and a text. Its bytes are also taken as wide characters,
// four a character, most of which are no code points.

namespace {

// The result of a conversion; nothing when it throws.
template <class Result>
std::optional<Result> Attempt(const std::function<Result()>& convert) {
  try {
    return convert();
  } catch (const utf8::exception&) {
    return std::nullopt;
  }
}

template <class Text>
void CheckUtf8(const std::string& text) {
  const auto wide = Attempt<std::wstring>([&] { return Text::FromUTF8(text.c_str()); });
  Require(wide.has_value() == utf8::is_valid(text.begin(), text.end()), "an exception for invalid text only");
  if (wide) RequireEqual<std::string>(Text::AsUTF8(wide->c_str()), text, "UTF-8 to wide text and back");
}

template <class Text>
void CheckWide(const std::wstring& wide) {
  const bool isValid = std::all_of(wide.begin(), wide.end(), [](wchar_t c) {
    return c >= 0 && c <= 0x10FFFF && (c < 0xD800 || c > 0xDFFF);
  });
  const auto text = Attempt<std::string>([&] { return Text::AsUTF8(wide.c_str()); });
  Require(text.has_value() == isValid, "an exception for what is no code point only");
  if (text) Require(Text::FromUTF8(text->c_str()) == wide, "wide text to UTF-8 and back");
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
  FuzzInput characters = input;
  const std::string text = input.Field({"\0", 1});
  CheckUtf8<tavon::tavString>(text);
  CheckUtf8<dro::droString>(text);
  if (utf8::is_valid(text.begin(), text.end())) {
    CheckBuffer(tavon::CharToWide, text, capacity, length);
    CheckBuffer(dro::CharToWide, text, capacity, length);
  }

  std::wstring wide;
  while (!characters.IsEmpty()) {
    std::uint32_t character = 0;
    for (int i = 0; i < 4; ++i) character = character << 8 | characters.Byte();
    if (character != 0) wide += static_cast<wchar_t>(character);
  }
  CheckWide<tavon::tavString>(wide);
  CheckWide<dro::droString>(wide);
  return 0;
}
