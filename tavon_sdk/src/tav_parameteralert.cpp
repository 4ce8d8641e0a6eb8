#include "tav_parameteralert.h"

#include "tav_valueencoding.h"

namespace tavon {

void tavParameterAlert::IsInverted(bool inverted) {
  {
    const tavSMutex lock(&m_lock);
    m_inverted = inverted;
  }
  SetByte(inverted ? 1 : 0);
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
  tavOnOffParameter::SetData(data, size, flag);
  const tavSMutex lock(&m_lock);
  if ((m_value[0] != 0) != m_inverted) OnAlert();
}

tavString tavParameterAlert::SerializeParametersAsXml() const {
  const tavSMutex lock(&m_lock);
  tavString xml = tavOnOffParameter::SerializeParametersAsXml();
  xml.append("<invert>").append(m_inverted ? "1" : "0").append("</invert>");
  xml.append("<severity>").append(tavString::FromInt(m_severity)).append("</severity>");
  xml.append("<message>").append(m_message).append("</message>");
  return xml;
}

tavEError tavParameterAlert::GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer) {
  return EncodeValue(text, o_pBuffer, Report, WriteOnOff, {19});
}

}  // namespace tavon
