#pragma once

#include "tav_typedparameter.h"
#include "tav_workerthread.h"
#include "vevent.h"

namespace tavon {

// The command of a roller shutter: 1 and 3 are the two directions of travel, 2 is stop. It turns into the
// stop command by itself when the shutter has moved in one direction for the action time.
//
// The object owns a thread from construction to destruction. It examines the value every 250 ms, and sleeps
// until the value changes while the shutter stands: a house has many shutters, and they hardly ever move. The
// thread takes the lock briefly and never while it waits. Do not destroy the object while holding its lock.
//
// The thread calls the virtual SetData and the hook OnStop once the value has been a direction; it has 256
// KiB of stack. An exception that leaves them ends that call and is reported; the thread goes on. A derived
// class that overrides either must call term_thread() at the beginning of its destructor.
//
// The object belongs to the process that made it, see tavWorkerThread.
class tavParameterShutter : public tavTypedParameter<1> {
 public:
  static constexpr const char* TypeName = "ParameterShutter";
  static const tavParameterType Type;

  tavParameterShutter* GetParameterShutterPtr() override { return this; }

  // The value is 2, and the object is dirty, as that is a change from 0. If the thread cannot be made
  // (reported with code 5) or started (code 1), the shutter works but does not stop by itself.
  tavParameterShutter();
  ~tavParameterShutter() override;

  // Milliseconds of travel after which the thread stops the shutter, up to 250 ms late. A command that
  // arrives at the very moment of the stop may be lost. The thread does not see a value that is replaced
  // before it looks. So a command in the same direction within 250 ms after its own stop does not begin a new
  // travel: the next look stops it.
  //
  // Travel is measured with the wall clock: setting the clock forward ends it early, setting the clock back
  // by an hour lets it go on for an hour longer.
  void SetActionTime(const unsigned int& ms);
  unsigned int GetActionTime() const;

  // 0 becomes 1; 4 and above become 3.
  void SetValue(unsigned char value);
  unsigned char GetValue() const { return CopyBytes()[0]; }

  void SetData(const unsigned char* data, const unsigned int& size, unsigned char flag) override;

  // True from a stop by the thread to the next SetData.
  bool IsChangedByCallBack() const override;

  // Adds the element "ms_time", the action time.
  tavString SerializeParametersAsXml() const override;

  // Hook: the thread has stopped the shutter. Called on the thread, without the lock.
  virtual void OnStop() {}

  // Ends the thread, for good. In a hook on the thread itself it does not wait for that.
  void term_thread();

  // The work of the thread; its argument is the parameter. On any other thread it looks every 250 ms, so that
  // Stop() of that thread works.
  static void thread_procedure(VThread* thread, void* parameter);

  // The low 8 bits of the number in the text; 0 gives 1, more than 3 gives 3. So "256" gives 1, "260"
  // gives 3.
  static tavEError GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer);
  // Sets a parameter known by its interface. Null does nothing; another type is reported (code 6).
  static tavEError SetDataFromString(tavIParameter* pPrm, const tavString& text);
  using tavTypedParameter::SetDataFromString;

 private:
  unsigned int m_actionTime = 0;
  bool m_isChangedByThread = false;
  VEvent m_wakeUp;  // ends the sleep of the thread: a new value has been stored, or the thread must end
  tavWorkerThread m_thread{m_lock};
};

}  // namespace tavon
