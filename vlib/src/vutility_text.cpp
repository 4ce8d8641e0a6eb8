// Conversions between character sets, trimming, and letter case.

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <cwctype>
#include <memory>
#include <string>
#include <string_view>

#include "shared/vutf8.h"
#include "vutility.h"

namespace {

// Converts with mbstowcs or wcstombs. The buffer is zero before, so that the text is terminated whatever is
// written.
template <class Target, class Source>
Target* ConvertInLocale(const Source* text, std::size_t (*convert)(Target*, const Source*, std::size_t)) {
  if (text == nullptr) return nullptr;
  constexpr auto unconvertible = static_cast<std::size_t>(-1);
  std::size_t length = convert(nullptr, text, 0);
  if (length == unconvertible) length = 0;
  auto result = std::make_unique<Target[]>(length + 1);
  convert(result.get(), text, length);
  return result.release();
}

std::wstring TakeText(wchar_t* buffer) {
  const std::unique_ptr<wchar_t[]> owner(buffer);
  return buffer == nullptr ? std::wstring() : std::wstring(buffer);
}

// A copy of a text, with its terminator, in a buffer of `size` characters.
template <class Character>
Character* NewBuffer(const std::basic_string<Character>& text, std::size_t size) {
  auto buffer = std::make_unique_for_overwrite<Character[]>(size);
  std::copy_n(text.c_str(), text.size() + 1, buffer.get());
  return buffer.release();
}

template <class Character, class Converter>
void ConvertEach(Character* io_text, Converter convert) {
  if (io_text == nullptr) return;
  for (; *io_text != 0; ++io_text) *io_text = static_cast<Character>(convert(*io_text));
}

}  // namespace

wchar_t* VUtility::StringToWideChar(const char* text) {
  return ConvertInLocale<wchar_t, char>(text, std::mbstowcs);
}

char* VUtility::WideCharToCString(const wchar_t* text) {
  return ConvertInLocale<char, wchar_t>(text, std::wcstombs);
}

std::wstring VUtility::StringToWideString(const char* text) { return TakeText(StringToWideChar(text)); }

std::string VUtility::WideCharToString(const wchar_t* text) {
  const std::unique_ptr<char[]> narrow(WideCharToCString(text));
  return narrow.get();  // the string's own constructor rejects null
}

wchar_t* VUtility::UTF8ToWideChar(const char* text) {
  if (text == nullptr) return nullptr;
  return NewBuffer(vlib::DecodeTerminatedUtf8(text), std::strlen(text) + 1);
}

std::wstring VUtility::UTF8ToWideString(const char* text) {
  return text == nullptr ? std::wstring() : vlib::DecodeTerminatedUtf8(text);
}

char* VUtility::WideCharToUTF8(const wchar_t* text) {
  if (text == nullptr) return nullptr;
  return NewBuffer(vlib::EncodeUtf8(text), 4 * (std::wcslen(text) + 1));
}

std::string VUtility::TrimString(const char* text) {
  const std::string_view whole = text == nullptr ? "" : text;
  const std::size_t first = whole.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  const std::size_t last = whole.find_last_not_of(' ');
  return std::string(whole.substr(first, last - first + 1));
}

void VUtility::ToLowerCase(char* io_text) {
  ConvertEach(io_text, [](char c) { return std::tolower(static_cast<unsigned char>(c)); });
}

void VUtility::ToLowerCase(wchar_t* io_text) {
  ConvertEach(io_text, [](wchar_t c) { return std::towlower(static_cast<std::wint_t>(c)); });
}

void VUtility::ToUpperCase(char* io_text) {
  ConvertEach(io_text, [](char c) { return std::toupper(static_cast<unsigned char>(c)); });
}

void VUtility::ToUpperCase(wchar_t* io_text) {
  ConvertEach(io_text, [](wchar_t c) { return std::towupper(static_cast<std::wint_t>(c)); });
}

std::string VUtility::ToLowerCase(const std::string& text) {
  std::string copy = text;
  ToLowerCase(copy.data());
  return copy;
}

std::wstring VUtility::ToLowerCase(const std::wstring& text) {
  std::wstring copy = text;
  ToLowerCase(copy.data());
  return copy;
}

std::string VUtility::ToUpperCase(const std::string& text) {
  std::string copy = text;
  ToUpperCase(copy.data());
  return copy;
}

std::wstring VUtility::ToUpperCase(const std::wstring& text) {
  std::wstring copy = text;
  ToUpperCase(copy.data());
  return copy;
}
