#include "vtext.h"

#include <algorithm>
#include <cstdio>

namespace vlib {
namespace {

constexpr std::string_view kDefaultKey = "{7E21C9A4-5B3D-4f08-9C6E-2A7D41B05E93}";

std::string LowerCaseCopy(std::string text) {
  MakeLowerCase(text);
  return text;
}

}  // namespace

void MakeLowerCase(std::string& text) { std::transform(text.begin(), text.end(), text.begin(), LowerCase); }

void MakeUpperCase(std::string& text) { std::transform(text.begin(), text.end(), text.begin(), UpperCase); }

bool EqualIgnoringCase(std::string_view left, std::string_view right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](char a, char b) { return LowerCase(a) == LowerCase(b); });
}

std::size_t Find(const std::string& text, const std::string& what, unsigned int position, bool ignoreCase,
                 bool reverse) {
  if (ignoreCase) return Find(LowerCaseCopy(text), LowerCaseCopy(what), position, false, reverse);
  // A position beyond the length wraps to a huge start, which reverse search takes as "from the end".
  return reverse ? text.rfind(what, text.size() - position) : text.find(what, position);
}

void ReplaceAll(std::string& text, const std::string& what, std::string_view with, bool ignoreCase) {
  if (what.empty()) return;
  const std::string searched = ignoreCase ? LowerCaseCopy(text) : text;
  const std::string sought = ignoreCase ? LowerCaseCopy(what) : what;

  std::string result;
  std::size_t copied = 0;
  for (std::size_t found; (found = searched.find(sought, copied)) != std::string::npos;
       copied = found + sought.size()) {
    result.append(text, copied, found - copied).append(with);
  }
  result.append(text, copied);
  text = std::move(result);
}

void TrimLeft(std::string& text, std::string_view characters) {
  const std::size_t first = text.find_first_not_of(characters);
  if (first != std::string::npos) text.erase(0, first);
}

std::string Format(unsigned int size, const char* format, std::va_list arguments) {
  std::va_list again;
  va_copy(again, arguments);
  const int length = std::vsnprintf(nullptr, 0, format, arguments);
  std::string text;
  if (length > 0 && size > 0) {
    text.resize(std::min(static_cast<unsigned int>(length), size - 1));
    std::vsnprintf(text.data(), text.size() + 1, format, again);
  }
  va_end(again);
  return text;
}

void Scramble(std::span<unsigned char> data, std::string_view key) {
  if (key.empty()) key = kDefaultKey;
  for (unsigned char& byte : data) {
    for (const char keyByte : key) byte = static_cast<unsigned char>(byte ^ keyByte);
  }
}

bool ScrambleBuffer(unsigned char* io_buffer, std::size_t length, std::string_view key) {
  if (io_buffer == nullptr) return false;
  Scramble({io_buffer, length}, key);
  return true;
}

}  // namespace vlib
