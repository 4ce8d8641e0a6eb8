#include "tav_parametercolor.h"

#include <algorithm>
#include <string_view>

#include "tav_error.h"
#include "tav_values.h"
#include "vtext.h"

namespace tavon {
namespace {

constexpr tavReporter kReport{"tav_parametercolor"};

constexpr unsigned int kComponents = 4;

// Reads two characters as an input stream in hexadecimal mode reads "0x" followed by them: up to the first
// character that is not a digit. There is no sign, blank or second "x", and without any digit the result is
// 0.
constexpr unsigned char ReadPair(char first, char second) {
  if (!vlib::IsHexDigit(first)) return 0;
  const unsigned int high = vlib::HexDigit(first);
  return static_cast<unsigned char>(vlib::IsHexDigit(second) ? high << 4 | vlib::HexDigit(second) : high);
}

void WriteComponents(const tavString& text, unsigned char* o_value) {
  std::size_t prefix = text.find('x');
  if (prefix == tavString::npos) prefix = text.find('X');
  const std::string_view digits = std::string_view(text).substr(prefix == tavString::npos ? 0 : prefix + 1);
  for (std::size_t i = 0; i < kComponents && 2 * i + 1 < digits.size(); ++i) {
    o_value[i] = ReadPair(digits[2 * i], digits[2 * i + 1]);
  }
}

tavString ComponentText(const unsigned char* value) {
  tavString text;
  text.SetFormat(64, "0x%.2X%.2X%.2X%.2X", value[0], value[1], value[2], value[3]);
  return text;
}

}  // namespace

const tavParameterType tavParameterColor::Type{.id = tavObject_ParameterColor,
                                               .name = TypeName,
                                               .source = "tav_parametercolor",
                                               .size = kComponents,
                                               .encode = WriteComponents,
                                               .toText = ComponentText,
                                               .compare = CompareUnordered<kComponents>,
                                               .syntax = {.form = tavValueForm_Colour},
                                               .lines = {.noBuffer = 19}};

tavParameterColor::tavParameterColor() : tavTypedParameter(Type) {}

void tavParameterColor::SetValue(const unsigned int& v) {
  SetValue(static_cast<unsigned char>(v >> 24), static_cast<unsigned char>(v >> 16),
           static_cast<unsigned char>(v >> 8), static_cast<unsigned char>(v));
}

void tavParameterColor::SetValue(unsigned char c0, unsigned char c1, unsigned char c2, unsigned char c3) {
  SetBytes({c0, c1, c2, c3});
}

void tavParameterColor::GetValue(unsigned int* o_val) const {
  if (o_val == nullptr) kReport(tavError_InvalidArgument, "o_val == 0");
  const tavSMutex lock(&m_lock);
  // NOLINTNEXTLINE(clang-analyzer-core.NullDereference): callers never pass null, unless the log throws
  *o_val = static_cast<unsigned int>(Value()[0]) << 24 | static_cast<unsigned int>(Value()[1]) << 16 |
           static_cast<unsigned int>(Value()[2]) << 8 | Value()[3];
}

void tavParameterColor::GetValue(unsigned char* o_c0, unsigned char* o_c1, unsigned char* o_c2,
                                 unsigned char* o_c3) const {
  const tavSMutex lock(&m_lock);
  unsigned char* const targets[] = {o_c0, o_c1, o_c2, o_c3};
  for (std::size_t i = 0; i < kComponents; ++i) {
    if (targets[i] != nullptr) *targets[i] = Value()[i];
  }
}

void tavParameterColor::SetData(const unsigned char* data, const unsigned int& size, unsigned char flag) {
  tavTypedParameter::SetData(data, size, flag);
  const tavSMutex lock(&m_lock);
  if (IsDirty()) OnRGBValue((Value()[0] | Value()[1] | Value()[2]) != 0 ? 1 : 0);
}

tavEError tavParameterColor::GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer) {
  return tavEncodeText(Type, text, o_pBuffer);
}

tavEError tavParameterColor::SetDataFromString(tavIParameter* pPrm, const tavString& text) {
  return SetFromText(Type, pPrm, text);
}

}  // namespace tavon
