#include "tav_parametercamera.h"

#include <algorithm>

#include "tav_valueencoding.h"

namespace tavon {

void tavParameterCamera::SetLocalUrl(const wchar_t* url) { ReplaceText(m_text, tavString::AsUTF8(url)); }

void tavParameterCamera::SetLocalUrl(const char* url) { ReplaceText(m_text, url == nullptr ? "" : url); }

void tavParameterCamera::SetRemoteUrl(const wchar_t* url) {
  ReplaceText(m_remoteUrl, tavString::AsUTF8(url));
}

void tavParameterCamera::SetRemoteUrl(const char* url) {
  ReplaceText(m_remoteUrl, url == nullptr ? "" : url);
}

tavString tavParameterCamera::GetRemoteUrl() const {
  const tavSMutex lock(&m_lock);
  return m_remoteUrl;
}

void tavParameterCamera::AddLocalNetwork(const tavString& prefix) {
  const tavSMutex lock(&m_lock);
  m_localNetworks.push_back(prefix);
}

tavString tavParameterCamera::GetUrl(const tavString& strIp) const {
  const std::size_t lastDot = strIp.rfind('.');
  if (lastDot == tavString::npos) {
    Report(tavError_InvalidArgument, "strIp is not valid ip! " + strIp);
    return {};
  }
  const tavSMutex lock(&m_lock);
  if (m_remoteUrl.empty()) return m_text;
  if (m_text.empty()) return m_remoteUrl;
  const auto network = std::find(m_localNetworks.begin(), m_localNetworks.end(), strIp.substr(0, lastDot));
  return network != m_localNetworks.end() ? m_text : m_remoteUrl;
}

bool tavParameterCamera::Comparison(const tavECodeOperator& /*op*/, const unsigned char* data,
                                    const unsigned int& size) const {
  if (data == nullptr || size == 0) return false;
  Report(tavError_OperationFailed, "No comparison for tavParameterCamera!");
  return false;
}

tavEError tavParameterCamera::GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer) {
  return EncodeValue(text, o_pBuffer, Report, WritePresence, {16});
}

}  // namespace tavon
