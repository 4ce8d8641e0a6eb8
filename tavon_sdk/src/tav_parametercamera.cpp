#include "tav_parametercamera.h"

#include <algorithm>

#include "tav_error.h"
#include "tav_values.h"

namespace tavon {
namespace {

constexpr tavReporter kReport{"tav_parametercamera"};

}  // namespace

const tavParameterType tavParameterCamera::Type{.id = tavObject_ParameterCamera,
                                                .name = TypeName,
                                                .source = "tav_parametercamera",
                                                .size = 0,
                                                .encode = WritePresence,
                                                .syntax = {.form = tavValueForm_Text},
                                                .lines = {.noBuffer = 16}};

tavParameterCamera::tavParameterCamera() : tavTypedParameter(Type) {}

void tavParameterCamera::AddLocalNetwork(const tavString& prefix) {
  const tavSMutex lock(&m_lock);
  m_localNetworks.push_back(prefix);
}

tavString tavParameterCamera::GetUrl(const tavString& strIp) const {
  const std::size_t lastDot = strIp.rfind('.');
  if (lastDot == tavString::npos) {
    kReport(tavError_InvalidArgument, "strIp is not valid ip! " + strIp);
    return {};
  }
  const tavSMutex lock(&m_lock);
  tavString localUrl = m_localUrl.Get();
  tavString remoteUrl = m_remoteUrl.Get();
  if (remoteUrl.empty()) return localUrl;
  if (localUrl.empty()) return remoteUrl;
  const auto network = std::find(m_localNetworks.begin(), m_localNetworks.end(), strIp.substr(0, lastDot));
  return network != m_localNetworks.end() ? localUrl : remoteUrl;
}

void tavParameterCamera::GetDataCopy(unsigned char* io_buffer) const {
  if (io_buffer == nullptr) {
    kReport(tavError_InvalidArgument, "io_buffer == 0");
    return;
  }
  m_localUrl.GetDataCopy(io_buffer);
}

void tavParameterCamera::SetData(const unsigned char* data, const unsigned int& size,
                                 unsigned char /*flag*/) {
  m_localUrl.SetData(data, size);
}

bool tavParameterCamera::Comparison(const tavECodeOperator& /*op*/, const unsigned char* data,
                                    const unsigned int& size) const {
  if (data == nullptr || size == 0) return false;
  kReport(tavError_OperationFailed, "No comparison for tavParameterCamera!");
  return false;
}

tavEError tavParameterCamera::GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer) {
  return tavEncodeText(Type, text, o_pBuffer);
}

tavEError tavParameterCamera::SetDataFromString(tavIParameter* pPrm, const tavString& text) {
  return SetFromText(Type, pPrm, text);
}

}  // namespace tavon
