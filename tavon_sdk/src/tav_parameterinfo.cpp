#include "tav_parameterinfo.h"

#include <cstring>
#include <string_view>

#include "tav_error.h"
#include "tav_values.h"

namespace tavon {
namespace {

constexpr tavReporter kReport{"tav_parameterinfo"};

}  // namespace

const tavParameterType tavParameterInfo::Type{.id = tavObject_ParameterInfo,
                                              .name = TypeName,
                                              .source = "tav_parameterinfo",
                                              .size = 0,
                                              .encode = WritePresence,
                                              .syntax = {.form = tavValueForm_Text},
                                              .lines = {.noBuffer = 15}};

tavParameterInfo::tavParameterInfo() : tavTypedParameter(Type) {}

void tavParameterInfo::SetValue(const wchar_t* text) { SetValue(tavString::AsUTF8(text).c_str()); }

void tavParameterInfo::SetValue(const char* text) {
  const auto length = static_cast<unsigned int>(text == nullptr ? 0 : std::strlen(text));
  SetData(reinterpret_cast<const unsigned char*>(text), length, 1);
}

void tavParameterInfo::GetDataCopy(unsigned char* io_buffer) const {
  if (io_buffer == nullptr) {
    kReport(tavError_InvalidArgument, "io_buffer == 0");
    return;
  }
  m_text.GetDataCopy(io_buffer);
}

void tavParameterInfo::SetData(const unsigned char* data, const unsigned int& size, unsigned char /*flag*/) {
  m_text.SetData(data, size);
}

bool tavParameterInfo::Comparison(const tavECodeOperator& op, const unsigned char* data,
                                  const unsigned int& size) const {
  if (data == nullptr || size == 0) return false;
  if (!tavIsOperator(Type, op)) return false;
  const tavString text = m_text.Get();
  if (op == tavCodeOperator_Equal || op == tavCodeOperator_NotEqual) {
    return Compare<std::string_view>(op, text, reinterpret_cast<const char*>(data));
  }
  return Compare<std::size_t>(op, text.size(), size);
}

tavEError tavParameterInfo::GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer) {
  return tavEncodeText(Type, text, o_pBuffer);
}

tavEError tavParameterInfo::SetDataFromString(const tavString& text) { return SetDataFromString(this, text); }

tavEError tavParameterInfo::SetDataFromString(tavIParameter* pPrm, const tavString& text) {
  if (pPrm == nullptr) return tavError_NoError;
  if (!pPrm->IsObject(Type.id)) return tavReportOtherType(Type);
  if (text.empty()) return tavError_NoError;
  pPrm->SetData(reinterpret_cast<const unsigned char*>(text.data()), static_cast<unsigned int>(text.size()),
                1);
  return tavError_NoError;
}

}  // namespace tavon
