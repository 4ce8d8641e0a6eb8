#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <string>

#include "vstringbase.h"

namespace dro {

// The list and the map of the OS library.
template <class T>
using droArray = std::deque<T>;
template <class Key, class Value>
using droMap = std::map<Key, Value>;

// The text of the OS library: a byte string, UTF-8 where it matters, with the operations of VStringBase and
// those below.
//
// Operations that are given a null pointer or an empty text they can not use report it (code 7, source
// dro_string) and give an empty result. A text belongs to one thread at a time.
class droString : public VStringBase<droString> {
 public:
  droString() = default;
  constexpr droString(const char* text) : VStringBase(text) {}  // `text` must not be null
  droString(const std::string& text) : VStringBase(text) {}
  droString(std::string&& text) noexcept : VStringBase(std::move(text)) {}

  droString& Clear();

  // Remove `count` characters at an end, or the one at `position`. More than there are, or a position past
  // the end, throws std::out_of_range and leaves the text as it was.
  droString& EraseLastChars(const unsigned int& count);
  droString& EraseFirstChars(const unsigned int& count);
  droString& EraseCharAt(const unsigned int& position);

  // Removes the characters that occur in `characters` from the start (`left`) or the end. A text made of such
  // characters only stays whole; at the end, one of exactly two characters loses its last.
  droString& SetShrink(const droString& characters, bool left);

  std::size_t GetCharacterCount(char character) const;
  static bool IsHexChar(char character);
  static bool IsDigit(char character);

  // Puts the text between two markers into `o_text` and returns the position of the begin marker, which is
  // searched from `start` on. -1, with `o_text` untouched, when a marker is missing, nothing follows the
  // begin marker, or `o_text` is null. The end marker is searched `start` characters beyond the begin
  // marker's end.
  int Extract(droString* o_text, const droString& beginMarker, const droString& endMarker, bool noCase,
              const unsigned int& start) const;

  // Appends the pieces between separators to `io_pieces`, empty ones left out, except that the last piece is
  // appended even when empty. A null list or an empty separator does nothing.
  void GetSplit(droArray<droString>* io_pieces, const droString& separator) const;

  // Takes the pieces that are not empty in turn as key and value and inserts each pair whose key is not in
  // the map yet. A last key without value is left out; a null map does nothing.
  void GetSplitAsMap(droMap<droString, droString>* io_map, const droString& separator) const;

  // The number at the start of a text, 0 when there is none; stops at the limits of 64 bits.
  static std::int64_t AsLongLong(const droString& text, int base);
  // The low 32 bits of that number: "3000000000" reads as -1294967296.
  static std::int32_t AsLong(const droString& text, int base);
  static std::int32_t AsInt(const droString& text, int base);

  static droString FromLongLong(long long value);

  // UTF-8 to wide text, one wide character a code point, and back. Text that is not valid throws the
  // utf8::exception of UTF8-CPP that says why.
  static std::wstring FromUTF8(const char* text);
  static droString AsUTF8(const wchar_t* text);

  // Wide text to the multi-byte text of the process's locale: the first `length` characters, or all of them
  // when `length` is 0. What the locale can not express gives the empty text.
  static droString FromWide(const wchar_t* text, unsigned int length);

  // Writes the wide form of a UTF-8 text into a buffer of `length` characters, see CharToWide.
  static void AsWide(const droString& text, wchar_t* o_buffer, unsigned int length);

  // Reads a serial number such as "01:A4:FF": each piece between separators that is not empty is one
  // hexadecimal number, whose low 8 bits are appended to `io_data` as one byte. A piece that is no number
  // reads as 0.
  static void SerialStringToData(droArray<unsigned char>* io_data, const droString& serial,
                                 const droString& separator);

  // Scramble `length` bytes in place, as SetCrypt does with a text.
  static void DataCrypt(unsigned char* io_buffer, unsigned int length, const droString& key);
  static void DataDeCrypt(unsigned char* io_buffer, unsigned int length, const droString& key);
};

// Converts the UTF-8 text `in` and copies at most `inLength` wide characters of it into the `capacity`
// characters at `o_wide`, the terminator that follows them included. A null buffer or no capacity writes
// nothing; text that is not valid throws as FromUTF8 does and writes nothing; a null text is reported by
// FromUTF8 and counts as empty.
void CharToWide(wchar_t* o_wide, unsigned int capacity, const char* in, unsigned int inLength);

}  // namespace dro
