#pragma once

#include "tav_typedparameter.h"
#include "tav_workerthread.h"

namespace tavon {

// A switch that returns to its rest value when it has been active for its safe time. The rest value is 0, or
// 1 if the switch is inverted.
//
// The object owns a thread that examines the value every 250 ms, from the first safe time of 1000 ms or more
// until a shorter one, or until destruction. The thread takes the lock briefly and never while it waits. Do
// not destroy the object, or set a safe time below 1000 ms, while holding its lock.
//
// The thread calls the virtual SetData and the hook OnSafeValue; it has 256 KiB of stack. An exception that
// leaves them ends that call and is reported; the thread goes on. A derived class that overrides either must
// not set a safe time before it is fully constructed, and must call term_thread() at the beginning of its
// destructor.
//
// The object belongs to the process that made it, see tavWorkerThread.
class tavParameterSwitchRelease : public tavTypedParameter<1> {
 public:
  static constexpr const char* TypeName = "ParameterSwitchRelease";
  static const tavParameterType Type;

  tavParameterSwitchRelease* GetParameterSwitchReleasePtr() override { return this; }

  tavParameterSwitchRelease();
  ~tavParameterSwitchRelease() override;

  // Milliseconds after which an active value is released, up to 250 ms late. A time below 1000 ends the
  // thread, and nothing is released any more, whatever time is set later, which is kept for compatibility. A
  // value that is set at the very moment of a release may be lost.
  //
  // The safe time is measured with the wall clock: setting the clock forward releases early, setting it back
  // by an hour releases an hour later.
  //
  // If the thread cannot be made (reported with code 5) or started (code 1), nothing is released until the
  // next call can start it.
  void SetSafeTime(const unsigned int& ms);
  unsigned int GetSafeTime() const;

  // 0 stays; any other value is stored as 1.
  void SetValue(unsigned char value);
  unsigned char GetValue() const { return CopyBytes()[0]; }

  // Whether 1 is the rest value and 0 the active one.
  void IsInverted(bool inverted);
  bool IsInverted() const;

  // Also starts the safe time anew if the value is active afterwards, even if it did not change.
  void SetData(const unsigned char* data, const unsigned int& size, unsigned char flag) override;

  // Adds the elements "invert" and "ms_time", the safe time.
  tavString SerializeParametersAsXml() const override;

  // Hook: the thread has released the value. Called on the thread, without the lock.
  virtual void OnSafeValue() {}

  // Ends the thread, for good. In a hook on the thread itself it does not wait for that.
  void term_thread();

  // The work of the thread; its argument is the parameter.
  static void thread_procedure(VThread* thread, void* parameter);

  // 0 if the low 8 bits of the number in the text are all zero, otherwise 1: "256" is off, "257" is on.
  static tavEError GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer);
  // Sets a parameter known by its interface. Null does nothing; another type is reported (code 6).
  static tavEError SetDataFromString(tavIParameter* pPrm, const tavString& text);
  using tavTypedParameter::SetDataFromString;

 private:
  // Reads the value and the milliseconds since it was last set active, in one step, so that a new value never
  // seems as old as the one before. False if the thread must end.
  bool ReadState(unsigned char& o_value, unsigned int& o_age) const;

  unsigned int m_safeTime = 0;
  unsigned int m_activationTime = 0;
  bool m_isInverted = false;
  tavWorkerThread m_thread{m_lock};
};

}  // namespace tavon
