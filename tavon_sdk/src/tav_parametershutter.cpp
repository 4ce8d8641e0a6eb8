#include "tav_parametershutter.h"

#include <algorithm>
#include <array>

#include "tav_error.h"
#include "tav_time.h"
#include "tav_values.h"

namespace tavon {
namespace {

constexpr tavReporter kReport{"tav_parametershutter"};

constexpr unsigned char kOneWay = 1;
constexpr unsigned char kStop = 2;
constexpr unsigned char kOtherWay = 3;

constexpr unsigned int kPeriod = 250;  // ms
constexpr unsigned long kStackSize = 262144;

constexpr unsigned char Limit(unsigned char command) { return std::clamp(command, kOneWay, kOtherWay); }

unsigned int Now() { return static_cast<unsigned int>(tavTime::GetTime()); }

constexpr std::array<tavValueWord, 4> kCommands = {{{"1", "1"}, {"stop", "2"}, {"2", "2"}, {"3", "3"}}};

void WriteCommand(const tavString& text, unsigned char* o_value) { *o_value = Limit(LowByte(text)); }

}  // namespace

const tavParameterType tavParameterShutter::Type{
    .id = tavObject_ParameterShutter,
    .name = TypeName,
    .source = "tav_parametershutter",
    .size = 1,
    .encode = WriteCommand,
    .toText = ByteText,
    .compare = CompareBytes,
    .syntax = {.form = tavValueForm_Words, .words = kCommands},
    .isCommand = true,
    .lines = {
        .noBuffer = 26, .setDataFromString = 43, .setDataValue = 84, .getDataValue = 88, .comparison = 99}};

tavParameterShutter::tavParameterShutter() : tavTypedParameter(Type) {
  SignalWhenStored(m_wakeUp);
  SetValue(kStop);
  switch (m_thread.Start(thread_procedure, this, kStackSize)) {
    case tavThreadStart::Started:
      break;
    case tavThreadStart::NoMemory:
      // The text names another type, which is kept because people search their logs for it.
      kReport(tavError_OutOfMemory, "Can not create thread for BlackParameter_ThermoChronoWeek\n", {61});
      break;
    case tavThreadStart::Failed:
      kReport(tavError_OperationFailed, "Can not start thread for tavParameterShutter\n", {67});
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

void tavParameterShutter::SetValue(unsigned char value) { SetBytes({Limit(value)}); }

void tavParameterShutter::SetData(const unsigned char* data, const unsigned int& size, unsigned char flag) {
  const tavSMutex lock(&m_lock);
  tavTypedParameter::SetData(data, size, flag);
  m_isChangedByThread = false;
}

bool tavParameterShutter::IsChangedByCallBack() const {
  const tavSMutex lock(&m_lock);
  return m_isChangedByThread;
}

tavString tavParameterShutter::SerializeParametersAsXml() const {
  const tavSMutex lock(&m_lock);
  tavString xml = tavTypedParameter::SerializeParametersAsXml();
  xml.append("<ms_time>").append(tavString::FromULong(m_actionTime)).append("</ms_time>");
  return xml;
}

void tavParameterShutter::term_thread() {
  if (!m_thread.AskToEnd()) return;
  m_wakeUp.Signal();
  m_thread.WaitForEnd();
}

void tavParameterShutter::thread_procedure(VThread* thread, void* parameter) {
  auto& self = *static_cast<tavParameterShutter*>(parameter);
  // Only this object's thread can be woken. Any other one looks every period, so that its Stop() works.
  const bool maySleep = self.m_thread.Is(thread);
  const unsigned int firstLook = Now();
  unsigned char lastSeen = 0;
  unsigned int startTime = 0;  // 0 while no travel is timed, even if the clock happens to read 0
  while (!self.m_thread.MustEnd()) {
    const unsigned char value = self.GetValue();
    const unsigned int now = Now();
    if (value != lastSeen && value >= kOneWay && value <= kOtherWay) {
      lastSeen = value;
      startTime = value == kStop ? 0 : now;
    }
    if (value != kStop && startTime != 0 && now - startTime >= self.GetActionTime()) {
      tavWorkerThread::Guard([&] { self.SetBytes({kStop}); });
      {
        const tavSMutex lock(&self.m_lock);
        self.m_isChangedByThread = true;
      }
      tavWorkerThread::Guard([&] { self.OnStop(); });
    }
    if (maySleep && startTime == 0) {
      self.m_wakeUp.Wait();
      self.m_wakeUp.Reset();
    }
    // Looks are whole periods after the first one. A thread that has slept thus sees a new command when it
    // would have seen it awake, and programs have time to set the action time after the command.
    if (!thread->WaitContinue(kPeriod - (Now() - firstLook) % kPeriod)) return;
  }
}

tavEError tavParameterShutter::GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer) {
  return tavEncodeText(Type, text, o_pBuffer);
}

tavEError tavParameterShutter::SetDataFromString(tavIParameter* pPrm, const tavString& text) {
  return SetFromText(Type, pPrm, text);
}

}  // namespace tavon
