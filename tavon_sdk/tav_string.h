#pragma once

#include <deque>
#include <string>

#include "vstringbase.h"

namespace tavon {

// The list type of the SDK.
template <class T>
using tavArray = std::deque<T>;

// The wide text of the SDK; it adds nothing to the standard one.
class tavWString : public std::wstring {
 public:
  using std::wstring::wstring;
  tavWString() = default;
  // From a standard wide string.
  tavWString(const std::wstring& text) : std::wstring(text) {}
};

// The text of the SDK: every name, value, message and path is one. Bytes, UTF-8 where it matters. What it
// shares with the OS library's string (case, search, formatting, scrambling, most numbers) is in VStringBase.
class tavString : public VStringBase<tavString> {
 public:
  tavString() = default;
  // From other texts; a null pointer is not allowed.
  constexpr tavString(const char* text) : VStringBase(text) {}
  tavString(const std::string& text) : VStringBase(text) {}
  tavString(std::string&& text) noexcept : VStringBase(std::move(text)) {}

  // Removes the characters of a set from one end. Where all that is looked at belongs to the set, nothing is
  // removed: from the left that is the whole text, from the right all but the first character, which is never
  // looked at. So "xx" trimmed of "x" stays "xx" from both sides, and "axx" stays whole from the right.
  tavString& SetShrink(const tavString& characters, bool left);

  // Appends the pieces between the separators to `out`, empty ones included: "a,,b," gives "a", "", "b", "".
  // A text without separator is one piece. A null `out` or an empty separator does nothing.
  void GetSplit(tavArray<tavString>* out, const tavString& separator) const;

  // Read as a 32-bit `long` is: they stop at -2147483648 and 2147483647, text that is no number gives 0.
  static std::int32_t AsLong(const tavString& text, int base);
  static std::int32_t AsInt(const tavString& text, int base);

  // Scrambles or restores `length` bytes in place (see SetCrypt). A null buffer is reported with code 6.
  static void DataCrypt(unsigned char* io_buffer, unsigned int length, const tavString& key);
  static void DataDeCrypt(unsigned char* io_buffer, unsigned int length, const tavString& key);

  // Between UTF-8 and wide text; null gives an empty text. What cannot be converted (invalid UTF-8, a
  // character beyond U+10FFFF) raises the exceptions of the UTF-8 library (utf8::exception).
  static tavString AsUTF8(const wchar_t* text);
  static tavString AsUTF8(const std::wstring& text);
  static std::wstring FromUTF8(const char* text);
  static std::wstring FromUTF8(const tavString& text);

  // Narrow text, in the locale of the process, of a whole wide text. `length` (0: that of the text) plus 1
  // bytes are reserved first; without memory for them code 5 is reported and the result is empty. A null text
  // raises std::logic_error.
  static tavString FromWide(const wchar_t* text, unsigned int length);

  // Writes the wide form of UTF-8 text into a buffer of `capacity` characters, terminated, cut if need be. A
  // null buffer or a capacity of 0 is reported with code 6 and nothing is written.
  static void AsWide(const tavString& text, wchar_t* io_buffer, unsigned int capacity);
};

// Converts all of the UTF-8 text `in` and writes at most `inLength` wide characters of it, and at most
// `capacity` - 1, into `out`, followed by a terminating zero. Without room for that zero nothing is written.
void CharToWide(wchar_t* out, unsigned int capacity, const char* in, unsigned int inLength);

}  // namespace tavon
