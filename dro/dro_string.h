#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <string>
#include <utility>

#include "vstringbase.h"

namespace dro {

// The list of the OS library.
template <class T>
using droArray = std::deque<T>;
// The map of the OS library.
template <class Key, class Value>
using droMap = std::map<Key, Value>;

// The text of the OS library: a byte string, UTF-8 where it matters, with the operations of VStringBase and
// those below.
//
// A null pointer, or an empty text where one is needed, is reported (code 7, source dro_string) and gives an
// empty result. Use a text from one thread at a time.
class droString : public VStringBase<droString> {
 public:
  droString() = default;
  constexpr droString(const char* text) : VStringBase(text) {}  // `text` must not be null
  // From a standard string.
  droString(const std::string& text) : VStringBase(text) {}
  droString(std::string&& text) noexcept : VStringBase(std::move(text)) {}

  // Makes the text empty.
  droString& Clear();

  // Remove `count` characters at one end, or the one at `position`. More characters than there are, or a
  // position past the end, throw std::out_of_range and leave the text unchanged.
  droString& EraseLastChars(const unsigned int& count);
  droString& EraseFirstChars(const unsigned int& count);
  droString& EraseCharAt(const unsigned int& position);

  // Removes the characters that occur in `characters` from the start (`left`) or from the end. A text that
  // consists only of such characters is unchanged, except that one of exactly two loses its last when trimmed
  // at the end.
  droString& SetShrink(const droString& characters, bool left);

  // How often a character occurs.
  std::size_t GetCharacterCount(char character) const;
  // True for the digits of hexadecimal numbers (either case), and of decimal numbers.
  static bool IsHexChar(char character);
  static bool IsDigit(char character);

  // Stores the text between two markers in `o_text` and returns the position of the begin marker. The search
  // for it begins at `start`, and that for the end marker `start` characters behind it. -1, with `o_text`
  // unchanged, when a marker is missing, nothing follows the begin marker, or `o_text` is null.
  int Extract(droString* o_text, const droString& beginMarker, const droString& endMarker, bool noCase,
              const unsigned int& start) const;

  // Appends the pieces between separators to `io_pieces`. Empty pieces are left out, except for the last one.
  // A null list or an empty separator does nothing.
  void GetSplit(droArray<droString>* io_pieces, const droString& separator) const;

  // Takes the non-empty pieces alternately as key and value, and inserts each pair whose key is not yet in
  // the map. A last key without a value is left out; a null map does nothing.
  void GetSplitAsMap(droMap<droString, droString>* io_map, const droString& separator) const;

  // The number at the start of a text, 0 when there is none. It stops at the limits of 64 bits.
  static std::int64_t AsLongLong(const droString& text, int base);
  // The low 32 bits of that number: "3000000000" reads as -1294967296.
  static std::int32_t AsLong(const droString& text, int base);
  static std::int32_t AsInt(const droString& text, int base);

  // Decimal text of a number of 64 bits.
  static droString FromLongLong(long long value);

  // UTF-8 to wide text, one wide character per code point, and back. Invalid text throws the utf8::exception
  // of UTF8-CPP that says why: utf8::not_enough_room for one that ends in the middle of a character.
  static std::wstring FromUTF8(const char* text);
  static droString AsUTF8(const wchar_t* text);

  // Wide text to text in the process's locale: the first `length` characters, or all of them when `length` is
  // 0. Empty when the locale cannot express a character.
  static droString FromWide(const wchar_t* text, unsigned int length);

  // Writes the wide form of a UTF-8 text into a buffer of `length` characters, see CharToWide.
  static void AsWide(const droString& text, wchar_t* o_buffer, unsigned int length);

  // Reads a serial number such as "01:A4:FF": each non-empty piece between separators is a
  // hexadecimal number, whose low 8 bits are appended to `io_data` as one byte. A non-numeric piece reads as
  // 0.
  static void SerialStringToData(droArray<unsigned char>* io_data, const droString& serial,
                                 const droString& separator);

  // Scramble or restore `length` bytes in place, as SetCrypt does with a text.
  static void DataCrypt(unsigned char* io_buffer, unsigned int length, const droString& key);
  static void DataDeCrypt(unsigned char* io_buffer, unsigned int length, const droString& key);
};

// Converts the UTF-8 text `in` and copies at most `inLength` wide characters of it, followed by a terminator,
// into the `capacity` characters at `o_wide`. Nothing is written without a buffer or without capacity.
// Invalid text throws as FromUTF8 does, and writes nothing. A null text is reported and counts as empty.
void CharToWide(wchar_t* o_wide, unsigned int capacity, const char* in, unsigned int inLength);

}  // namespace dro
