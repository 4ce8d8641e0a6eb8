#include "tav_parametercolor.h"

#include "tav_valueencoding.h"

namespace tavon {
namespace {

constexpr std::size_t kComponents = 4;

constexpr bool IsHexDigit(char c) {
  const char lower = vlib::LowerCase(c);
  return (c >= '0' && c <= '9') || (lower >= 'a' && lower <= 'f');
}

constexpr unsigned int HexDigit(char c) {
  return static_cast<unsigned int>(c <= '9' ? c - '0' : vlib::LowerCase(c) - 'a' + 10);
}

// Two characters as an input stream in hexadecimal mode reads "0x" followed by them: digits up to the first
// character that is none. No sign, blank or further "x" is taken, and no digit at all gives 0.
constexpr unsigned char ReadPair(char first, char second) {
  if (!IsHexDigit(first)) return 0;
  const unsigned int high = HexDigit(first);
  return static_cast<unsigned char>(IsHexDigit(second) ? high << 4 | HexDigit(second) : high);
}

void WriteComponents(const tavString& text, unsigned char* target) {
  std::size_t prefix = text.find('x');
  if (prefix == tavString::npos) prefix = text.find('X');
  const std::string_view digits = std::string_view(text).substr(prefix == tavString::npos ? 0 : prefix + 1);
  for (std::size_t i = 0; i < kComponents && 2 * i + 1 < digits.size(); ++i) {
    target[i] = ReadPair(digits[2 * i], digits[2 * i + 1]);
  }
}

}  // namespace

tavEError tavParameterColor::GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer) {
  return EncodeValue(text, o_pBuffer, "tav_parametercolor", 19, WriteComponents);
}

}  // namespace tavon
