#include "reference.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <sstream>

// Plain readings of numbers, texts and values.
namespace reference {
namespace {

struct Type {
  const char* name;
  std::size_t size;
  enum { OnOff, Byte, Shutter, Slider, Real, Color, Schedule, Text } rule;
};

constexpr std::array<Type, kLastType - kFirstType + 1> kTypes = {{
    {"ParameterSwitch", 1, Type::OnOff},
    {"ParameterSwitchRelease", 1, Type::OnOff},
    {"ParameterSlider", 4, Type::Slider},
    {"ParameterColor", 4, Type::Color},
    {"ParameterInfo", 0, Type::Text},
    {"ParameterShutter", 1, Type::Shutter},
    {"ParameterThermo", 4, Type::Real},
    {"ParameterThermoChronoWeek", 673, Type::Schedule},
    {"ParameterHDScene", 1, Type::OnOff},
    {"ParameterVRScene", 1, Type::Byte},
    {"ParameterAlert", 1, Type::OnOff},
    {"ParameterByte", 1, Type::Byte},
    {"ParameterTuner", 4, Type::Real},
    {"ParameterCamera", 0, Type::Text},
}};

const Type& TypeOf(int id) { return kTypes.at(static_cast<std::size_t>(id - kFirstType)); }

int DigitValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'z') return c - 'a' + 10;
  if (c >= 'A' && c <= 'Z') return c - 'A' + 10;
  return std::numeric_limits<int>::max();
}

char LowByte(const std::string& text) {
  const Number number = ReadNumber(text, 10);
  // Only the limits have low bytes of their own: FF at the upper one, 00 at the lower one.
  if (!number.isNegative && number.magnitude > 0x7FFFFFFF) return static_cast<char>(0xFF);
  if (number.isNegative && number.magnitude > 0x80000000) return 0;
  const auto low = static_cast<unsigned int>(number.magnitude % 256);
  return static_cast<char>(number.isNegative ? (256 - low) % 256 : low);
}

float SingleReal(const std::string& text) { return static_cast<float>(std::strtod(text.c_str(), nullptr)); }

// The four bytes of a number, least significant first.
std::string SingleBytes(float value) {
  std::uint32_t bits;
  std::memcpy(&bits, &value, sizeof(bits));
  std::string bytes;
  for (int i = 0; i < 4; ++i, bits /= 256) bytes += static_cast<char>(bits % 256);
  return bytes;
}

float SingleAt(std::string_view bytes, std::size_t offset) {
  std::uint32_t bits = 0;
  for (std::size_t i = 4; i-- > 0;) bits = bits * 256 + static_cast<unsigned char>(bytes[offset + i]);
  float value;
  std::memcpy(&value, &bits, sizeof(value));
  return value;
}

// A pair of characters read as a hexadecimal number by an input stream.
char HexPair(const std::string& pair) {
  std::istringstream stream("0x" + pair);
  std::uint16_t number = 0;
  stream >> std::hex >> number;
  return static_cast<char>(stream.fail() ? 0 : number);
}

}  // namespace

std::string LowerCase(std::string text) {
  for (char& c : text) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
  }
  return text;
}

Number ReadNumber(const std::string& text, int base) {
  const char* at = text.c_str();
  while (*at == ' ' || (*at >= '\t' && *at <= '\r')) ++at;
  Number number;
  if (*at == '-' || *at == '+') number.isNegative = *at++ == '-';
  const bool hasPrefix = at[0] == '0' && (at[1] == 'x' || at[1] == 'X') && DigitValue(at[2]) < 16;
  if ((base == 0 || base == 16) && hasPrefix) {
    at += 2;
    base = 16;
  } else if (base == 0) {
    base = *at == '0' ? 8 : 10;
  }
  for (; DigitValue(*at) < base; ++at) {
    const auto digit = static_cast<std::uint64_t>(DigitValue(*at));
    const auto factor = static_cast<std::uint64_t>(base);
    const bool fits = number.magnitude <= (std::numeric_limits<std::uint64_t>::max() - digit) / factor;
    number.magnitude = fits ? number.magnitude * factor + digit : std::numeric_limits<std::uint64_t>::max();
    if (!fits) break;
  }
  return number;
}

std::uint32_t Unsigned32(const std::string& text, int base) {
  const Number number = ReadNumber(text, base);
  if (number.magnitude > 0xFFFFFFFF) return 0xFFFFFFFF;
  const auto value = static_cast<std::uint32_t>(number.magnitude);
  return number.isNegative ? 0 - value : value;
}

std::int64_t Signed64(const std::string& text, int base) {
  constexpr std::uint64_t limit = 0x7FFFFFFFFFFFFFFF;
  const Number number = ReadNumber(text, base);
  if (!number.isNegative)
    return static_cast<std::int64_t>(number.magnitude > limit ? limit : number.magnitude);
  if (number.magnitude > limit) return std::numeric_limits<std::int64_t>::min();
  return -static_cast<std::int64_t>(number.magnitude);
}

std::int32_t Signed32(const std::string& text, int base) {
  const std::int64_t value = Signed64(text, base);
  if (value > 0x7FFFFFFF) return 0x7FFFFFFF;
  if (value < -0x7FFFFFFF) return -0x7FFFFFFF - 1;
  return static_cast<std::int32_t>(value);
}

std::string RealText(double value, int decimals) {
  const bool fits = value > -2147483649.0 && value < 2147483648.0;
  if (fits && value - static_cast<double>(static_cast<std::int32_t>(value)) == 0.0)
    return std::to_string(static_cast<std::int32_t>(value));
  // The longest number has 309 digits before its point.
  char buffer[400];
  std::snprintf(buffer, sizeof(buffer), ("%." + std::to_string(decimals) + "f").c_str(), value);
  std::string text = buffer;
  while (!text.empty() && text.back() == '0') text.pop_back();
  if (!text.empty() && text.back() == '.') text.pop_back();
  return text;
}

std::vector<std::string> Pieces(const std::string& text, const std::string& separator) {
  std::vector<std::string> pieces(1);
  for (std::size_t i = 0; i < text.size();) {
    if (text.compare(i, separator.size(), separator) == 0) {
      pieces.emplace_back();
      i += separator.size();
    } else {
      pieces.back() += text[i++];
    }
  }
  return pieces;
}

const char* TypeName(int type) { return TypeOf(type).name; }

std::size_t ValueSize(int type) { return TypeOf(type).size; }

std::string ValueBytes(int type, const std::string& text, std::string bytes) {
  const Type& row = TypeOf(type);
  bytes.resize(row.rule == Type::Text ? text.size() : row.size);
  switch (row.rule) {
    case Type::OnOff:
      return {static_cast<char>(LowByte(text) != 0 ? 1 : 0)};
    case Type::Byte:
      return {LowByte(text)};
    case Type::Shutter: {
      const auto command = static_cast<unsigned char>(LowByte(text));
      if (command == 0) return "\1";
      return command > 3 ? "\3" : std::string(1, static_cast<char>(command));
    }
    case Type::Slider: {
      const float position = SingleReal(text);
      if (position > 1.0F) return SingleBytes(1.0F);
      return SingleBytes(position < 0.0F ? 0.0F : position);
    }
    case Type::Real:
      return SingleBytes(SingleReal(text));
    case Type::Color: {
      std::size_t x = text.find('x');
      if (x == std::string::npos) x = text.find('X');
      std::string digits = x == std::string::npos ? text : text.substr(x + 1);
      for (std::size_t i = 0; i < 4 && digits.size() >= 2; ++i, digits.erase(0, 2))
        bytes[i] = HexPair(digits.substr(0, 2));
      return bytes;
    }
    case Type::Schedule: {
      const std::vector<std::string> pieces = Pieces(text, ",");
      if (pieces.size() > 1) bytes.assign(row.size, '\0');
      bytes[0] = LowByte(pieces[0]);
      for (std::size_t i = 1; i < pieces.size() && i <= 168; ++i)
        bytes.replace(1 + 4 * (i - 1), 4, SingleBytes(SingleReal(pieces[i])));
      return bytes;
    }
    case Type::Text:
      return text;
  }
  std::abort();
}

std::string ValueText(int type, std::string_view bytes) {
  switch (TypeOf(type).rule) {
    case Type::OnOff:
    case Type::Byte:
    case Type::Shutter:
      return std::to_string(static_cast<unsigned char>(bytes[0]));
    case Type::Slider:
    case Type::Real:
      return RealText(SingleAt(bytes, 0), 2);
    case Type::Color: {
      std::string text = "0x";
      for (std::size_t i = 0; i < 4; ++i) {
        char pair[3];
        std::snprintf(pair, sizeof(pair), "%02X", static_cast<unsigned char>(bytes[i]));
        text += pair;
      }
      return text;
    }
    case Type::Schedule: {
      std::string text = std::to_string(static_cast<unsigned char>(bytes[0]));
      for (std::size_t i = 0; i < 168; ++i) text += "," + RealText(SingleAt(bytes, 1 + 4 * i), 2);
      return text;
    }
    case Type::Text:
      return std::string(bytes);
  }
  std::abort();
}

}  // namespace reference
