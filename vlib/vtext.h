#pragma once

#include <cstdarg>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>

// Algorithms on byte strings: letter case, search, splitting, printing and scrambling. VStringBase offers
// most of them as operations of a string class.
//
// All functions work on bytes and take time linear in the length of their input. Ignoring case means folding
// the ASCII letters only, whatever the locale of the process. There is no state, so any thread may call
// anything.
namespace vlib {

// An ASCII letter in lower or upper case; any other character as it is.
constexpr char LowerCase(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }
constexpr char UpperCase(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

// True for a hexadecimal digit, in either case.
constexpr bool IsHexDigit(char c) {
  const char lower = LowerCase(c);
  return (c >= '0' && c <= '9') || (lower >= 'a' && lower <= 'f');
}
// The value of a hexadecimal digit, 0 to 15.
constexpr unsigned int HexDigit(char c) {
  return static_cast<unsigned int>(c <= '9' ? c - '0' : LowerCase(c) - 'a' + 10);
}

// LowerCase and UpperCase for a whole text.
void MakeLowerCase(std::string& io_text);
void MakeUpperCase(std::string& io_text);

// True when both texts have the same length and the same bytes after folding case.
bool EqualIgnoringCase(std::string_view left, std::string_view right);

// Position of `what` in `text`, or std::string::npos. Forward: the first occurrence at or after `position`.
// Reverse: the last occurrence that starts at or before the length of `text` minus `position`.
std::size_t Find(const std::string& text, const std::string& what, unsigned int position, bool ignoreCase,
                 bool reverse);

// Replaces every occurrence of `what`, left to right; inserted text is never searched again. An empty `what`
// changes nothing.
void ReplaceAll(std::string& io_text, const std::string& what, std::string_view with, bool ignoreCase);

// Removes the leading characters that occur in `characters`. A text that consists of such characters only
// stays whole.
void TrimLeft(std::string& io_text, std::string_view characters);

// Calls visit(piece, isLast) for each piece of `text` between separators, in order, empty pieces included.
// A text without the separator is one piece; an empty separator gives no piece at all.
template <class Visitor>
void ForEachPiece(std::string_view text, std::string_view separator, Visitor visit) {
  if (separator.empty()) return;
  for (;;) {
    const std::size_t end = text.find(separator);
    const bool isLast = end == std::string_view::npos;
    visit(text.substr(0, end), isLast);
    if (isLast) return;
    text.remove_prefix(end + separator.size());
  }
}

// Prints printf-style, in full. A failed conversion gives an empty text.
std::string Format(const char* format, std::va_list arguments) __attribute__((format(printf, 1, 0)));

// Obfuscates data, and restores it: every byte is combined (XOR) with each byte of the key in turn.
// An empty key stands for the default key of the system. This is not encryption. The key is a copy, so it may
// have been taken from the data themselves.
void Scramble(std::span<unsigned char> data, std::string key);

// The same for `length` bytes at `io_buffer`. False, with nothing done, when that is null.
bool ScrambleBuffer(unsigned char* io_buffer, std::size_t length, std::string key);

}  // namespace vlib
