#include "shared/vutf8.h"

#include <utf8.h>

#include <cstdint>
#include <cstring>
#include <iterator>

namespace vlib {

std::wstring DecodeUtf8(std::string_view text) {
  std::wstring wide;
  for (auto next = text.begin(); next != text.end();) {
    wide.push_back(static_cast<wchar_t>(utf8::next(next, text.end())));
  }
  return wide;
}

std::wstring DecodeTerminatedUtf8(const char* text) {
  std::wstring wide = DecodeUtf8({text, std::strlen(text) + 1});
  wide.pop_back();
  return wide;
}

std::string EncodeUtf8(const wchar_t* text) {
  std::string bytes;
  for (; *text != L'\0'; ++text) utf8::append(static_cast<std::uint32_t>(*text), std::back_inserter(bytes));
  return bytes;
}

}  // namespace vlib
