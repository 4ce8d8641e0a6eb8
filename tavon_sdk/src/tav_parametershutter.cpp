#include "tav_parametershutter.h"

#include <algorithm>

#include "tav_parameterthread.h"
#include "tav_time.h"
#include "tav_valueencoding.h"

namespace tavon {
namespace {

constexpr unsigned char kThreadMustEnd = 1;
constexpr unsigned char kChangedByThread = 16;

constexpr unsigned char kOneWay = 1;
constexpr unsigned char kStop = 2;
constexpr unsigned char kOtherWay = 3;

constexpr unsigned int kPeriod = 250;  // ms
constexpr unsigned long kStackSize = 262144;

constexpr unsigned char Limit(unsigned char command) { return std::clamp(command, kOneWay, kOtherWay); }

unsigned int Now() { return static_cast<unsigned int>(tavTime::GetTime()); }

void WriteCommand(const tavString& text, unsigned char* target) { *target = Limit(LowByte(text)); }

}  // namespace

tavParameterShutter::tavParameterShutter() {
  SetValue(kStop);
  switch (StartParameterThread(m_thread, thread_procedure, this, kStackSize)) {
    case tavThreadStart::Started:
      break;
    case tavThreadStart::NoMemory:
      // The text names another type; it is known so to those who search their logs for it.
      Report(tavError_OutOfMemory, "Can not create thread for BlackParameter_ThermoChronoWeek\n", 61);
      break;
    case tavThreadStart::Failed:
      Report(tavError_OperationFailed, "Can not start thread for tavParameterShutter\n", 67);
      break;
  }
}

tavParameterShutter::~tavParameterShutter() { term_thread(); }

void tavParameterShutter::SetActionTime(const unsigned int& ms) {
  const tavSMutex lock(&m_lock);
  m_actionTime = ms;
}

unsigned int tavParameterShutter::GetActionTime() const {
  const tavSMutex lock(&m_lock);
  return m_actionTime;
}

void tavParameterShutter::SetValue(unsigned char value) { SetByte(Limit(value)); }

void tavParameterShutter::SetData(const unsigned char* data, const unsigned int& size, unsigned char flag) {
  const tavSMutex lock(&m_lock);
  tavByteParameter::SetData(data, size, flag);
  m_flags = static_cast<unsigned char>(m_flags & ~kChangedByThread);
  if (m_value[0] != kStop) m_wakeUp.Signal();
}

bool tavParameterShutter::IsChangedByCallBack() const { return HasShutterFlag(kChangedByThread); }

tavString tavParameterShutter::SerializeParametersAsXml() const {
  const tavSMutex lock(&m_lock);
  tavString xml = tavByteParameter::SerializeParametersAsXml();
  xml.append("<ms_time>").append(tavString::FromULong(m_actionTime)).append("</ms_time>");
  return xml;
}

void tavParameterShutter::term_thread() {
  {
    const tavSMutex lock(&m_lock);
    m_flags |= kThreadMustEnd;
  }
  m_wakeUp.Signal();
  if (m_thread) m_thread->Stop();
}

bool tavParameterShutter::HasShutterFlag(unsigned char flag) const {
  const tavSMutex lock(&m_lock);
  return (m_flags & flag) != 0;
}

void tavParameterShutter::thread_procedure(VThread* thread, void* parameter) {
  auto& self = *static_cast<tavParameterShutter*>(parameter);
  unsigned char lastSeen = 0;
  unsigned int startTime = 0;  // 0: no travel is timed. A clock that happens to read 0 counts as that, too.
  const unsigned int firstLook = Now();
  while (!self.HasShutterFlag(kThreadMustEnd)) {
    const unsigned char value = self.GetValue();
    const unsigned int now = Now();
    if (value != lastSeen && value >= kOneWay && value <= kOtherWay) {
      lastSeen = value;
      startTime = value == kStop ? 0 : now;
    }
    if (value != kStop && startTime != 0 && now - startTime >= self.GetActionTime()) {
      self.SetByte(kStop);
      {
        const tavSMutex lock(&self.m_lock);
        // Not when a command has come meanwhile: the last change is that one.
        if (self.m_value[0] == kStop) self.m_flags |= kChangedByThread;
      }
      self.OnStop();
    }
    unsigned int pause = kPeriod;
    if (startTime == 0) {
      // While no travel is timed there is nothing to see before the next command. The first look after it is
      // when it would have been with one every period, so a command is never acted on earlier than that. From
      // there a whole period is waited: a look a millisecond early would cost one more.
      self.m_wakeUp.Wait();
      self.m_wakeUp.Reset();
      pause -= (Now() - firstLook) % kPeriod;
    }
    if (!thread->WaitContinue(pause)) return;
  }
}

tavEError tavParameterShutter::GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer) {
  return EncodeValue(text, o_pBuffer, Report, 26, WriteCommand);
}

}  // namespace tavon
