#pragma once

#include <algorithm>
#include <cstdarg>
#include <cstdint>
#include <span>
#include <string>
#include <utility>

#include "vnumber.h"
#include "vtext.h"

// What the two string classes, tavString and droString, have in common: a standard byte string with editing
// in place, search, printf-style formatting, scrambling and numbers. It adds no data and no virtual
// functions.
//
// `Text` is the class that derives from it (VStringBase<tavString>). That class adds its own SetShrink and
// GetSplit, whose rules differ, and reports errors to its own log. Operations named Set... edit in
// place and return the text itself; their Get... forms return an edited copy. Only ASCII letters have a case.
//
// There is no lock: use a text from one thread at a time.
template <class Text>
class VStringBase : public std::string {
 public:
  // The position of what was not found.
  using std::string::npos;

  // The length in bytes.
  std::size_t GetLength() const { return size(); }

  // Change the letter case of all bytes, or reverse their order.
  Text& SetLowCase() {
    vlib::MakeLowerCase(*this);
    return Self();
  }
  Text& SetUpCase() {
    vlib::MakeUpperCase(*this);
    return Self();
  }
  Text& SetReverse() {
    std::reverse(begin(), end());
    return Self();
  }
  // The same in a copy.
  Text GetLowCase() const { return Copy().SetLowCase(); }
  Text GetUpCase() const { return Copy().SetUpCase(); }
  Text GetReverse() const { return Copy().SetReverse(); }
  // A copy, trimmed by the SetShrink of its class.
  Text GetShrink(const Text& characters, bool left) const { return Copy().SetShrink(characters, left); }

  // True when length and bytes are the same apart from letter case.
  bool IsEqualNoCase(const Text& other) const { return vlib::EqualIgnoringCase(*this, other); }

  // Position of `what`, or npos. Forward: the first occurrence at or after `position`. Reverse: the last one
  // that starts at or before (length - position), so the position counts back from the end.
  std::size_t Find(const Text& what, const unsigned int& position, bool noCase, bool reverse) const {
    return vlib::Find(*this, what, position, noCase, reverse);
  }

  // Replaces the one occurrence that Find finds. Returns its position, or npos with the text unchanged.
  std::size_t FindAndReplace(const Text& what, const Text& with, bool noCase, bool reverse,
                             const unsigned int& position) {
    const std::size_t found = Find(what, position, noCase, reverse);
    if (found != npos) replace(found, what.size(), with);
    return found;
  }

  // Replaces every occurrence, left to right, without searching what was inserted. An empty `what` changes
  // nothing. The last argument, there for symmetry with FindAndReplace, is ignored.
  void FindAndReplaceAll(const Text& what, const Text& with, bool noCase, bool /*reverse*/) {
    vlib::ReplaceAll(*this, what, with, noCase);
  }

  // Append (Add) or become (Set) a text printed printf-style. The text is never cut: `size`, the expected
  // number of bytes, is only a hint.
  Text& AddFormat(unsigned int /*size*/, const char* format, ...) __attribute__((format(printf, 3, 4))) {
    std::va_list arguments;
    va_start(arguments, format);
    append(vlib::Format(format, arguments));
    va_end(arguments);
    return Self();
  }
  Text& SetFormat(unsigned int /*size*/, const char* format, ...) __attribute__((format(printf, 3, 4))) {
    std::va_list arguments;
    va_start(arguments, format);
    std::string::operator=(vlib::Format(format, arguments));
    va_end(arguments);
    return Self();
  }

  // Obfuscate the bytes with a key, and restore them. Both are the same computation. An empty key means the
  // default key. This is no encryption.
  Text& SetCrypt(const Text& key) {
    vlib::Scramble({reinterpret_cast<unsigned char*>(data()), size()}, key);
    return Self();
  }
  Text& SetDeCrypt(const Text& key) { return SetCrypt(key); }
  Text GetCrypt(const Text& key) const { return Copy().SetCrypt(key); }
  Text GetDeCrypt(const Text& key) const { return Copy().SetCrypt(key); }

  // The number at the start of a text; what follows it is ignored, and non-numeric text reads as 0. A
  // magnitude beyond 32 bits gives 4294967295; a leading minus wraps.
  static std::uint32_t AsULong(const Text& text, int base) {
    return vlib::ReadUnsigned32(text.c_str(), base);
  }
  // The real number at the start of a text, 0 when there is none, as the "C" locale writes it ("21.5"),
  // whatever locale the process has set.
  static double AsDouble(const Text& text) { return vlib::ReadReal(text.c_str()); }

  // Decimal text of the low 32 bits of a number: `long` has 32 bits in this system.
  static Text FromInt(int value) { return std::to_string(value); }
  static Text FromLong(long value) { return std::to_string(static_cast<std::int32_t>(value)); }
  static Text FromULong(unsigned long value) { return std::to_string(static_cast<std::uint32_t>(value)); }

  // Text of a real number with at most `precision` decimals: trailing zeros go, and a number without fraction
  // is written as an integer ("21.5", "21"). Written as in the "C" locale, whatever the process has set. See
  // vlib::PrintReal for what a precision of 0 does.
  static Text FromDouble(double value, int precision) { return vlib::PrintReal(value, precision); }
  static Text FromFloat(float value, int precision) { return FromDouble(value, precision); }

 protected:
  VStringBase() = default;
  // From other texts; for the classes that derive from this one.
  constexpr VStringBase(const char* text) : std::string(text) {}
  VStringBase(const std::string& text) : std::string(text) {}
  VStringBase(std::string&& text) noexcept : std::string(std::move(text)) {}

 private:
  Text& Self() { return static_cast<Text&>(*this); }
  Text Copy() const { return static_cast<const Text&>(*this); }
};
