#include "tav_parameterinfo.h"

#include <cstring>
#include <string_view>

#include "tav_valueencoding.h"

namespace tavon {

void tavParameterInfo::SetValue(const wchar_t* text) { SetValue(tavString::AsUTF8(text).c_str()); }

void tavParameterInfo::SetValue(const char* text) {
  const auto length = static_cast<unsigned int>(text == nullptr ? 0 : std::strlen(text));
  SetData(reinterpret_cast<const unsigned char*>(text), length, 1);
}

tavEError tavParameterInfo::SetDataFromString(tavIParameter* pPrm, const tavString& text) {
  if (pPrm == nullptr) return tavError_NoError;
  if (!pPrm->IsObject(TypeId)) return ReportOtherType();
  if (text.empty()) return tavError_NoError;
  pPrm->SetData(reinterpret_cast<const unsigned char*>(text.data()), static_cast<unsigned int>(text.size()),
                1);
  return tavError_NoError;
}

bool tavParameterInfo::Comparison(const tavECodeOperator& op, const unsigned char* data,
                                  const unsigned int& size) const {
  if (data == nullptr || size == 0) return false;
  const tavSMutex lock(&m_lock);
  if (op == tavCodeOperator_Equal || op == tavCodeOperator_NotEqual) {
    return Compare<std::string_view>(op, m_text, reinterpret_cast<const char*>(data));
  }
  return Compare<std::size_t>(op, m_text.size(), size);
}

tavEError tavParameterInfo::GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer) {
  return EncodeValue(text, o_pBuffer, Report, WritePresence, {15});
}

}  // namespace tavon
