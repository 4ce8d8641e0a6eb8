#pragma once

#include "tav_byteparameter.h"
#include "tav_workerthread.h"
#include "vevent.h"

namespace tavon {

// A roller shutter's command: 1 and 3 are the two directions of travel, 2 is stop. It turns itself into the
// stop command when the shutter has moved in one direction for the action time.
//
// The object owns a thread, from construction to destruction, that looks at the value every 250 ms and sleeps
// while there is nothing to see: a house has many shutters, and they hardly ever move. The thread takes the
// lock briefly and never while it waits, so nobody may hold the object's lock who destroys it.
//
// The hook OnStop and the virtual SetData are called on that thread, but not before the value was a
// direction: a class that derives from this one and overrides them must call term_thread() first thing in its
// own destructor.
class tavParameterShutter : public tavByteParameter<tavParameterShutter> {
 public:
  static constexpr tavEObject TypeId = tavObject_ParameterShutter;
  static constexpr const char* TypeName = "ParameterShutter";
  static constexpr tavReporter Report{"tav_parametershutter"};
  static constexpr tavPublishedLines Lines{
      .setDataFromString = 43, .setDataValue = 84, .getDataValue = 88, .comparison = 99};

  // The value is 2, and the object dirty: that is a change from 0. Reported: code 5 without memory for the
  // thread, code 1 when it does not start; the shutter then works without stopping itself.
  tavParameterShutter();
  ~tavParameterShutter() override;

  // Milliseconds of travel after which the shutter is stopped, at the next look of the thread. A command that
  // is set at the very moment of a stop may be overtaken by it, and one between two looks is not seen.
  void SetActionTime(const unsigned int& ms);
  unsigned int GetActionTime() const;

  // 0 becomes 1, and 4 and above become 3.
  void SetValue(unsigned char value);

  void SetData(const unsigned char* data, const unsigned int& size, unsigned char flag) override;

  // Wakes the thread: a value that changes is always marked dirty, whichever SetData stores it.
  void IsDirty(bool dirty) override;
  using tavByteParameter::IsDirty;

  // True when the thread made the last change.
  bool IsChangedByCallBack() const override;

  // With the element "ms_time", the action time.
  tavString SerializeParametersAsXml() const override;

  // Hook: called on the thread, without the lock, after it has stopped the shutter.
  virtual void OnStop() {}

  // Stops the thread and waits for its end.
  void term_thread();

  // The thread's work; its argument is the parameter.
  static void thread_procedure(VThread* thread, void* parameter);

  // Writes one byte: the low 8 bits of the number in the text; 0 gives 1, more than 3 gives 3 ("256" gives 1,
  // "260" gives 3). An empty text writes nothing, a null buffer is reported, code 6.
  static tavEError GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer);

 private:
  unsigned int WaitForChange(unsigned int firstLook);

  unsigned int m_actionTime = 0;
  bool m_isChangedByThread = false;
  VEvent m_wakeUp;  // the value may have changed, or the thread must end
  tavWorkerThread m_thread{m_lock};
};

}  // namespace tavon
