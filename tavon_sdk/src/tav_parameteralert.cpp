#include "tav_parameteralert.h"

#include "tav_values.h"

namespace tavon {

const tavParameterType tavParameterAlert::Type{.id = tavObject_ParameterAlert,
                                               .name = TypeName,
                                               .source = "tav_parameteralert",
                                               .size = 1,
                                               .encode = WriteOnOff,
                                               .toText = ByteText,
                                               .compare = CompareBytes,
                                               .syntax = tavOnOffSyntax,
                                               .isCommand = true,
                                               .lines = {.noBuffer = 19}};

tavParameterAlert::tavParameterAlert() : tavTypedParameter(Type) {}

void tavParameterAlert::SetValue(unsigned char value) { SetBytes({OnOff(value)}); }

void tavParameterAlert::IsInverted(bool inverted) {
  {
    const tavSMutex lock(&m_lock);
    m_inverted = inverted;
  }
  SetValue(inverted ? 1 : 0);
}

bool tavParameterAlert::IsInverted() const {
  const tavSMutex lock(&m_lock);
  return m_inverted;
}

void tavParameterAlert::SetSeverity(tavESeverity severity) {
  const tavSMutex lock(&m_lock);
  m_severity = severity;
}

tavESeverity tavParameterAlert::GetSeverity() const {
  const tavSMutex lock(&m_lock);
  return m_severity;
}

void tavParameterAlert::SetMessage(const wchar_t* message) { SetMessage(tavString::AsUTF8(message).c_str()); }

void tavParameterAlert::SetMessage(const char* message) {
  const tavSMutex lock(&m_lock);
  m_message = message == nullptr ? "" : message;
}

tavString tavParameterAlert::GetMessage() const {
  const tavSMutex lock(&m_lock);
  return m_message;
}

void tavParameterAlert::SetData(const unsigned char* data, const unsigned int& size, unsigned char flag) {
  tavTypedParameter::SetData(data, size, flag);
  const tavSMutex lock(&m_lock);
  if ((Value()[0] != 0) != m_inverted) OnAlert();
}

tavString tavParameterAlert::SerializeParametersAsXml() const {
  const tavSMutex lock(&m_lock);
  tavString xml = tavTypedParameter::SerializeParametersAsXml();
  xml.append("<invert>").append(m_inverted ? "1" : "0").append("</invert>");
  xml.append("<severity>").append(tavString::FromInt(m_severity)).append("</severity>");
  xml.append("<message>").append(m_message).append("</message>");
  return xml;
}

tavEError tavParameterAlert::GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer) {
  return tavEncodeText(Type, text, o_pBuffer);
}

tavEError tavParameterAlert::SetDataFromString(tavIParameter* pPrm, const tavString& text) {
  return SetFromText(Type, pPrm, text);
}

}  // namespace tavon
