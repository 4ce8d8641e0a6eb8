#include "tav_virtualitemparameter.h"

#include <algorithm>
#include <new>

namespace tavon {
namespace {

constexpr tavReporter kReport{"tav_virtualitemparameter"};

}  // namespace

tavEError tavVirtualItemParameter::SetParameter(tavIParameter* pPrm, const unsigned char* pBuffer,
                                                const unsigned int& size) {
  m_parameter = pPrm;
  m_data.reset();
  m_size = size;
  if (pPrm == nullptr || pBuffer == nullptr || size == 0) {
    return kReport(tavError_InvalidArgument, "!m_pPrm || !pBuffer || m_dwSize == 0", {28});
  }
  m_data.reset(new (std::nothrow) unsigned char[size]);
  if (!m_data) return kReport(tavError_OutOfMemory, "m_pData == 0", {34});
  std::copy_n(pBuffer, size, m_data.get());
  return tavError_NoError;
}

unsigned int tavVirtualItemParameter::Execute() {
  if (!m_data || m_parameter == nullptr || m_size == 0) {
    return kReport(tavError_InvalidArgument, "!m_pData || !m_pPrm || m_dwSize == 0", {44});
  }
  m_parameter->SetData(m_data.get(), m_size, 1);
  return tavError_NoError;
}

}  // namespace tavon
