#pragma once

#include <algorithm>
#include <string>
#include <string_view>

// UTF-8 and wide text, in both directions, for VUtility and the string classes tavString and droString.
//
// A wide character is one code point. Text that cannot be converted throws the exception of UTF8-CPP that
// says why: utf8::invalid_utf8 for bytes that are not UTF-8, utf8::not_enough_room for a text that ends in
// the middle of a character, utf8::invalid_code_point for a surrogate or a number beyond U+10FFFF. No pointer
// may be null unless a function says otherwise. Nothing keeps state, so any thread may call anything.
namespace vlib {

std::wstring DecodeUtf8(std::string_view text);
// Decodes the terminating zero as well, which it leaves out: where that cuts a character short, the text is
// not UTF-8.
std::wstring DecodeTerminatedUtf8(const char* text);
std::string EncodeUtf8(const wchar_t* text);

// Decodes all of `text` with decode(text) and copies at most `limit` wide characters of it into the
// `capacity` characters at `o_wide`, the terminator that follows them included. A null `text` counts as
// empty. False, with nothing decoded or written, when `o_wide` is null or `capacity` is 0.
template <class Decode>
bool CopyUtf8ToWide(wchar_t* o_wide, unsigned int capacity, const char* text, unsigned int limit,
                    Decode decode) {
  if (o_wide == nullptr || capacity == 0) return false;
  const std::wstring wide = decode(text == nullptr ? "" : text);
  const std::size_t copied = wide.copy(o_wide, std::min(limit, capacity - 1));
  o_wide[copied] = L'\0';
  return true;
}

}  // namespace vlib
