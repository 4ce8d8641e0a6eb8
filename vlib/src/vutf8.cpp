#include "shared/vutf8.h"

#include <utf8.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <iterator>

namespace vlib {

std::wstring DecodeUtf8(const char* text) {
  std::wstring wide;
  // The terminator is decoded, too: a character that the end of the text cuts short is invalid then.
  const char* const end = text + std::strlen(text) + 1;
  while (text != end) wide.push_back(static_cast<wchar_t>(utf8::next(text, end)));
  wide.pop_back();
  return wide;
}

std::string EncodeUtf8(const wchar_t* text) {
  std::string bytes;
  for (; *text != L'\0'; ++text) utf8::append(static_cast<std::uint32_t>(*text), std::back_inserter(bytes));
  return bytes;
}

bool CopyUtf8ToWide(wchar_t* o_wide, unsigned int capacity, const char* text, unsigned int limit) {
  if (o_wide == nullptr || capacity == 0) return false;
  const std::wstring wide = DecodeUtf8(text == nullptr ? "" : text);
  const std::size_t copied = wide.copy(o_wide, std::min(limit, capacity - 1));
  o_wide[copied] = L'\0';
  return true;
}

}  // namespace vlib
