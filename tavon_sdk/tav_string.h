#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <utility>

#include "vstringbase.h"

namespace tavon {

// The list type of the SDK.
template <class T>
using tavArray = std::deque<T>;

// The wide text of the SDK. It adds nothing to the standard string.
class tavWString : public std::wstring {
 public:
  using std::wstring::wstring;
  tavWString() = default;
  // From a standard wide string.
  tavWString(const std::wstring& text) : std::wstring(text) {}
};

// The text of the SDK: names, values, messages and paths are bytes, UTF-8 where it matters. Most operations
// (case, search, formatting, scrambling, numbers) come from VStringBase, which the OS library's string
// shares.
class tavString : public VStringBase<tavString> {
 public:
  tavString() = default;
  // From other texts; a null pointer is not allowed.
  constexpr tavString(const char* text) : VStringBase(text) {}
  tavString(const std::string& text) : VStringBase(text) {}
  tavString(std::string&& text) noexcept : VStringBase(std::move(text)) {}

  // Removes characters of a set from one end. From the left, a text made only of such characters stays whole.
  // From the right, the first character is not examined, and the text stays whole if all others are in the
  // set: trimming "x" leaves "xx" and, from the right, "axx" as they are.
  tavString& SetShrink(const tavString& characters, bool left);

  // Appends the pieces between separators to the list, empty ones included: "a,,b," gives "a", "", "b", "". A
  // text without a separator is one piece. A null list or an empty separator does nothing.
  void GetSplit(tavArray<tavString>* io_pieces, const tavString& separator) const;

  // Read like a 32-bit `long`: the result stops at -2147483648 and 2147483647. Non-numeric text reads as 0.
  static std::int32_t AsLong(const tavString& text, int base);
  static std::int32_t AsInt(const tavString& text, int base);

  // Scrambles or restores `length` bytes in place (see SetCrypt). A null buffer is reported with code 6.
  static void DataCrypt(unsigned char* io_buffer, unsigned int length, const tavString& key);
  static void DataDeCrypt(unsigned char* io_buffer, unsigned int length, const tavString& key);

  // Converts between UTF-8 and wide text. Null gives an empty text. Invalid UTF-8 (also a text that ends
  // in the middle of a character: utf8::invalid_utf8) and characters beyond U+10FFFF throw the UTF-8
  // library's exceptions (utf8::exception).
  static tavString AsUTF8(const wchar_t* text);
  static tavString AsUTF8(const std::wstring& text);
  static std::wstring FromUTF8(const char* text);
  static std::wstring FromUTF8(const tavString& text);

  // Converts a whole wide text to narrow text in the locale of the process. First makes sure that there is
  // memory for `length` + 1 bytes (0 stands for the text's own length); if not, reports code 5 and returns an
  // empty text. A null text throws std::logic_error.
  static tavString FromWide(const wchar_t* text, unsigned int length);

  // Writes UTF-8 text as wide text into a buffer of `capacity` characters, terminated, and cut if it does not
  // fit. A null buffer or a capacity of 0 is reported (code 6) and nothing is written.
  static void AsWide(const tavString& text, wchar_t* io_buffer, unsigned int capacity);
};

// Converts the UTF-8 text `in` and writes at most `inLength`, and at most `capacity` - 1, of its wide
// characters to `o_wide`, followed by a terminating zero. Writes nothing if there is no room for that zero.
void CharToWide(wchar_t* o_wide, unsigned int capacity, const char* in, unsigned int inLength);

}  // namespace tavon
