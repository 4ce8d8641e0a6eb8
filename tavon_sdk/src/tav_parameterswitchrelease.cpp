#include "tav_parameterswitchrelease.h"

#include "tav_error.h"
#include "tav_time.h"
#include "tav_values.h"

namespace tavon {
namespace {

constexpr tavReporter kReport{"tav_parameterswitchrelease"};

constexpr unsigned int kShortestSafeTime = 1000;  // ms
constexpr unsigned int kPeriod = 250;             // ms
constexpr unsigned long kStackSize = 262144;

}  // namespace

const tavParameterType tavParameterSwitchRelease::Type{
    .id = tavObject_ParameterSwitchRelease,
    .name = TypeName,
    .source = "tav_parameterswitchrelease",
    .size = 1,
    .encode = WriteOnOff,
    .toText = ByteText,
    .compare = CompareBytes,
    .syntax = tavOnOffSyntax,
    .lines = {
        .noBuffer = 23, .setDataFromString = 38, .setDataValue = 85, .getDataValue = 89, .comparison = 99}};

tavParameterSwitchRelease::tavParameterSwitchRelease() : tavTypedParameter(Type) {}

tavParameterSwitchRelease::~tavParameterSwitchRelease() { term_thread(); }

void tavParameterSwitchRelease::SetSafeTime(const unsigned int& ms) {
  tavSMutex lock(&m_lock);
  m_safeTime = ms;
  if (ms < kShortestSafeTime) {
    lock.UnLock();
    term_thread();
    return;
  }
  switch (m_thread.Start(thread_procedure, this, kStackSize)) {
    case tavThreadStart::Started:
      break;
    case tavThreadStart::NoMemory:
      kReport(tavError_OutOfMemory, "Can not create thread for tavParameterSwitchRelease", {137});
      break;
    case tavThreadStart::Failed:
      kReport(tavError_OperationFailed, "Can not start thread for tavParameterSwitchRelease", {143});
      break;
  }
}

unsigned int tavParameterSwitchRelease::GetSafeTime() const {
  const tavSMutex lock(&m_lock);
  return m_safeTime;
}

void tavParameterSwitchRelease::SetValue(unsigned char value) { SetBytes({OnOff(value)}); }

void tavParameterSwitchRelease::IsInverted(bool inverted) {
  const tavSMutex lock(&m_lock);
  m_isInverted = inverted;
}

bool tavParameterSwitchRelease::IsInverted() const {
  const tavSMutex lock(&m_lock);
  return m_isInverted;
}

void tavParameterSwitchRelease::SetData(const unsigned char* data, const unsigned int& size,
                                        unsigned char flag) {
  const tavSMutex lock(&m_lock);
  tavTypedParameter::SetData(data, size, flag);
  const bool isActive = (GetData()[0] != 0) != m_isInverted;
  if (isActive) m_activationTime = static_cast<unsigned int>(tavTime::GetTime());
}

tavString tavParameterSwitchRelease::SerializeParametersAsXml() const {
  const tavSMutex lock(&m_lock);
  tavString xml = tavTypedParameter::SerializeParametersAsXml();
  xml.append("<invert>").append(m_isInverted ? "1" : "0").append("</invert>");
  xml.append("<ms_time>").append(tavString::FromULong(m_safeTime)).append("</ms_time>");
  return xml;
}

void tavParameterSwitchRelease::term_thread() {
  if (m_thread.AskToEnd()) m_thread.WaitForEnd();
}

bool tavParameterSwitchRelease::ReadState(unsigned char& o_value, unsigned int& o_age) const {
  const tavSMutex lock(&m_lock);
  o_value = Value()[0];
  // Unsigned arithmetic gives the right age even when the clock has wrapped.
  o_age = static_cast<unsigned int>(tavTime::GetTime()) - m_activationTime;
  return !m_thread.MustEnd();
}

void tavParameterSwitchRelease::thread_procedure(VThread* thread, void* parameter) {
  auto& self = *static_cast<tavParameterSwitchRelease*>(parameter);
  unsigned int safeTime = self.GetSafeTime();
  bool isInverted = self.IsInverted();
  unsigned char value = 0;
  unsigned int age = 0;
  while (self.ReadState(value, age)) {
    if (age >= safeTime) {
      const unsigned char rest = isInverted ? 1 : 0;
      if (value != rest) {
        tavWorkerThread::Guard([&] { self.SetBytes({rest}); });
        tavWorkerThread::Guard([&] { self.OnSafeValue(); });
      }
      isInverted = self.IsInverted();
      safeTime = self.GetSafeTime();
    }
    if (!thread->WaitContinue(kPeriod)) return;
  }
}

tavEError tavParameterSwitchRelease::GetBinaryDataFromString(const tavString& text,
                                                             unsigned char* o_pBuffer) {
  return tavEncodeText(Type, text, o_pBuffer);
}

tavEError tavParameterSwitchRelease::SetDataFromString(tavIParameter* pPrm, const tavString& text) {
  return SetFromText(Type, pPrm, text);
}

}  // namespace tavon
