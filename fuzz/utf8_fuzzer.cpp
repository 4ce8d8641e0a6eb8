#include <utf8.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <vector>

#include "dro_error.h"
#include "dro_string.h"
#include "fuzz_input.h"
#include "tav_error.h"
#include "tav_string.h"
#include "vutility.h"

// UTF-8 to wide text and back, in both libraries: what is valid comes out as its code points and comes back
// the same, what is not valid is refused, and no buffer is written beyond its end.
//
// Input: two bytes with the sizes of the buffers, and the text, up to its first zero byte. Its bytes in fours
// are also taken as wide characters, most of which are no code points.

namespace {

bool IsCodePoint(std::uint32_t c) { return c <= 0x10FFFF && (c < 0xD800 || c > 0xDFFF); }

// The bytes of one code point: as few as can hold it.
std::string Encoded(std::uint32_t c) {
  std::string bytes;
  const auto add = [&](std::uint32_t byte) { bytes += static_cast<char>(byte); };
  if (c < 0x80) {
    add(c);
  } else if (c < 0x800) {
    add(0xC0 + c / 0x40);
    add(0x80 + c % 0x40);
  } else if (c < 0x10000) {
    add(0xE0 + c / 0x1000);
    add(0x80 + c / 0x40 % 0x40);
    add(0x80 + c % 0x40);
  } else {
    add(0xF0 + c / 0x40000);
    add(0x80 + c / 0x1000 % 0x40);
    add(0x80 + c / 0x40 % 0x40);
    add(0x80 + c % 0x40);
  }
  return bytes;
}

// A whole text, one code point a character; nothing when it is not valid.
std::optional<std::wstring> Decoded(const std::string& text) {
  std::wstring wide;
  for (std::size_t i = 0; i < text.size();) {
    const auto first = static_cast<unsigned char>(text[i]);
    const std::size_t length = first < 0x80 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    std::uint32_t c = length == 1 ? first : first & (0x7F >> length);
    for (std::size_t k = 1; k < length && i + k < text.size(); ++k)
      c = c * 0x40 + (static_cast<unsigned char>(text[i + k]) & 0x3F);
    // A sequence that is cut short, too long, or no sequence at all is not what the code point is written as.
    if (!IsCodePoint(c) || text.compare(i, length, Encoded(c)) != 0) return std::nullopt;
    wide += static_cast<wchar_t>(c);
    i += length;
  }
  return wide;
}

std::optional<std::string> EncodedText(const std::wstring& wide) {
  std::string text;
  for (const wchar_t c : wide) {
    if (!IsCodePoint(static_cast<std::uint32_t>(c))) return std::nullopt;
    text += Encoded(static_cast<std::uint32_t>(c));
  }
  return text;
}

// The result of a conversion; nothing when it was refused.
template <class Conversion>
auto Attempt(Conversion convert) -> std::optional<decltype(convert())> {
  try {
    return convert();
  } catch (const utf8::exception&) {
    return std::nullopt;
  }
}

// What a conversion into a buffer writes. The buffer is of exactly its size; nothing is written when it has
// none.
template <class Write>
std::optional<std::wstring> Written(std::size_t capacity, Write write) {
  const std::vector<wchar_t> untouched(capacity, L'#');
  std::vector<wchar_t> buffer = untouched;
  if (!Attempt([&] { return write(buffer.data(), static_cast<unsigned int>(capacity)), true; })) {
    Require(buffer == untouched, "a refused text was written");
    return std::nullopt;
  }
  if (capacity == 0) return std::wstring();
  const std::wstring all(buffer.begin(), buffer.end());
  const std::size_t end = all.find(L'\0');
  Require(end != std::wstring::npos, "no terminating zero");
  Require(all.find_first_not_of(L'#', end + 1) == std::wstring::npos, "written behind the terminating zero");
  return all.substr(0, end);
}

void CheckToWide(const std::string& text, std::size_t capacity, std::size_t length) {
  const std::optional<std::wstring> wide = Decoded(text);
  const char* const bytes = text.c_str();
  Require(Attempt([&] { return tavon::tavString::FromUTF8(bytes); }) == wide, "tavString::FromUTF8");
  Require(Attempt([&] { return dro::droString::FromUTF8(bytes); }) == wide, "droString::FromUTF8");
  Require(Attempt([&] { return VUtility::UTF8ToWideString(text); }) == wide, "VUtility::UTF8ToWideString");
  if (wide) {
    RequireEqual<std::string>(tavon::tavString::AsUTF8(*wide), text, "tavString::AsUTF8 of FromUTF8");
    RequireEqual<std::string>(dro::droString::AsUTF8(wide->c_str()), text, "droString::AsUTF8 of FromUTF8");
  }

  std::optional<std::wstring> part = wide;
  if (part && capacity > 0) part->resize(std::min({part->size(), length, capacity - 1}));
  const auto inLength = static_cast<unsigned int>(length);
  const auto tavPart = Written(capacity, [&](wchar_t* buffer, unsigned int characters) {
    tavon::CharToWide(buffer, characters, bytes, inLength);
  });
  const auto droPart = Written(capacity, [&](wchar_t* buffer, unsigned int characters) {
    dro::CharToWide(buffer, characters, bytes, inLength);
  });
  const auto tavWhole = Written(capacity, [&](wchar_t* buffer, unsigned int characters) {
    tavon::tavString::AsWide(text, buffer, characters);
  });
  const auto droWhole = Written(capacity, [&](wchar_t* buffer, unsigned int characters) {
    dro::droString::AsWide(text, buffer, characters);
  });
  // Without a capacity the text is not looked at.
  if (capacity == 0) part = std::wstring();
  std::optional<std::wstring> whole = capacity == 0 ? part : wide;
  if (whole && capacity > 0) whole->resize(std::min(whole->size(), capacity - 1));
  Require(tavPart == part, "tavon::CharToWide");
  Require(droPart == part, "dro::CharToWide");
  Require(tavWhole == whole, "tavString::AsWide");
  Require(droWhole == whole, "droString::AsWide");
}

void CheckFromWide(const std::string& bytes) {
  std::wstring wide;
  for (std::size_t i = 0; i + 4 <= bytes.size(); i += 4) {
    std::uint32_t c = 0;
    for (std::size_t k = 0; k < 4; ++k) c = c * 256 + static_cast<unsigned char>(bytes[i + k]);
    if (c == 0) break;
    wide += static_cast<wchar_t>(c);
  }
  const std::optional<std::string> text = EncodedText(wide);
  const auto tavText = Attempt([&] { return std::string(tavon::tavString::AsUTF8(wide)); });
  const auto droText = Attempt([&] { return std::string(dro::droString::AsUTF8(wide.c_str())); });
  const auto utilityText = Attempt([&] {
    const std::unique_ptr<char[]> owner(VUtility::WideCharToUTF8(wide.c_str()));
    return std::string(owner.get());
  });
  Require(tavText == text, "tavString::AsUTF8");
  Require(droText == text, "droString::AsUTF8");
  Require(utilityText == text, "VUtility::WideCharToUTF8");

  // In the locale that a program starts in there is ASCII only.
  bool isAscii = true;
  for (const wchar_t c : wide) isAscii = isAscii && c > 0 && c < 0x80;
  const std::string tavNarrow = tavon::tavString::FromWide(wide.c_str(), 0);
  const std::string droNarrow = dro::droString::FromWide(wide.c_str(), 0);
  if (!isAscii) return;
  RequireEqual(tavNarrow, *text, "tavString::FromWide");
  RequireEqual(droNarrow, *text, "droString::FromWide");
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  tavon::tavError::Level = 0;
  dro::droError::Level = 0;
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzInput input(data, size);
  const std::size_t capacity = input.Byte() % 64;
  const std::size_t length = input.Byte() % 64;
  FuzzInput wideInput = input;
  CheckToWide(input.Field('\0'), capacity, length);
  CheckFromWide(wideInput.Rest());
  return 0;
}
