#include "vtext.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace vlib {
namespace {

constexpr std::string_view kDefaultKey = "{7E21C9A4-5B3D-4f08-9C6E-2A7D41B05E93}";

std::string LowerCaseCopy(std::string text) {
  MakeLowerCase(text);
  return text;
}

}  // namespace

void MakeLowerCase(std::string& io_text) {
  std::transform(io_text.begin(), io_text.end(), io_text.begin(), LowerCase);
}

void MakeUpperCase(std::string& io_text) {
  std::transform(io_text.begin(), io_text.end(), io_text.begin(), UpperCase);
}

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

void ReplaceAll(std::string& io_text, const std::string& what, std::string_view with, bool ignoreCase) {
  if (what.empty()) return;
  const std::string searched = ignoreCase ? LowerCaseCopy(io_text) : io_text;
  const std::string sought = ignoreCase ? LowerCaseCopy(what) : what;

  std::string result;
  std::size_t copied = 0;
  std::size_t found = searched.find(sought);
  while (found != std::string::npos) {
    result.append(io_text, copied, found - copied).append(with);
    copied = found + sought.size();
    found = searched.find(sought, copied);
  }
  result.append(io_text, copied);
  io_text = std::move(result);
}

void TrimLeft(std::string& io_text, std::string_view characters) {
  const std::size_t first = io_text.find_first_not_of(characters);
  if (first != std::string::npos) io_text.erase(0, first);
}

std::string Format(const char* format, std::va_list arguments) {
  std::va_list again;
  va_copy(again, arguments);
  char buffer[256];  // most texts fit, and are then printed once
  const int length = std::vsnprintf(buffer, sizeof buffer, format, arguments);
  std::string text(static_cast<std::size_t>(std::max(length, 0)), '\0');
  if (text.size() < sizeof buffer) {
    text.assign(buffer, text.size());
  } else {
    std::vsnprintf(text.data(), text.size() + 1, format, again);
  }
  va_end(again);
  return text;
}

void Scramble(std::span<unsigned char> data, std::string key) {
  if (key.empty()) key = kDefaultKey;
  for (unsigned char& byte : data) {
    for (const char keyByte : key) byte = static_cast<unsigned char>(byte ^ keyByte);
  }
}

bool ScrambleBuffer(unsigned char* io_buffer, std::size_t length, std::string key) {
  if (io_buffer == nullptr) return false;
  Scramble({io_buffer, length}, std::move(key));
  return true;
}

}  // namespace vlib
