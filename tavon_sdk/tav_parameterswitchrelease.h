#pragma once

#include "tav_byteparameter.h"
#include "tav_workerthread.h"

namespace tavon {

// A switch that falls back to its rest value when it has been active for its safe time. Rest is 0, or 1 when
// it is inverted.
//
// The object owns a thread that looks at the value every 250 ms, from the first safe time of a second or more
// until one below that, or until destruction. The thread takes the lock briefly and never while it waits, so
// nobody may hold the object's lock who destroys it or sets a safe time below a second.
//
// The hook OnSafeValue and the virtual SetData are called on that thread, from the first pass on: a class
// that derives from this one and overrides them sets no safe time before it is fully made, and must call
// term_thread() first thing in its own destructor.
class tavParameterSwitchRelease : public tavOnOffParameter<tavParameterSwitchRelease> {
 public:
  static constexpr tavEObject TypeId = tavObject_ParameterSwitchRelease;
  static constexpr const char* TypeName = "ParameterSwitchRelease";
  static constexpr tavReporter Report{"tav_parameterswitchrelease"};
  static constexpr tavPublishedLines Lines{
      .setDataFromString = 38, .setDataValue = 85, .getDataValue = 89, .comparison = 99};

  tavParameterSwitchRelease();
  ~tavParameterSwitchRelease() override;

  // Milliseconds after which the active value is released; below 1000 it never is. Once a thread was stopped
  // by a time below 1000 the object releases nothing any more, whatever is set later: intended. A value that
  // is set at the very moment of a release may be overtaken by it.
  //
  // Reported: code 5 without memory for the thread, code 1 when it does not start.
  void SetSafeTime(const unsigned int& ms);
  unsigned int GetSafeTime() const;

  // Whether 1 is the rest value and 0 the active one.
  void IsInverted(bool inverted);
  bool IsInverted() const;

  // As everywhere, and then the safe time starts anew when the value is active, changed or not.
  void SetData(const unsigned char* data, const unsigned int& size, unsigned char flag) override;

  // With the elements "invert" and "ms_time", the safe time.
  tavString SerializeParametersAsXml() const override;

  // Hook: called on the thread, without the lock, after it has released the value.
  virtual void OnSafeValue() {}

  // Stops the thread and waits for its end; on the thread itself, in the hook, it only stops.
  void term_thread();

  // The thread's work; its argument is the parameter.
  static void thread_procedure(VThread* thread, void* parameter);

  // Writes one byte: 1 when the low 8 bits of the number in the text are not all zero, else 0. An empty text
  // writes nothing, a null buffer is reported, code 6.
  static tavEError GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer);

 private:
  // What the thread looks at: the value and the milliseconds since it was last set active, of one moment, so
  // that a new value is never taken for as old as the one before. False when the thread must end.
  bool ReadState(unsigned char& o_value, unsigned int& o_age) const;

  unsigned int m_safeTime = 0;
  unsigned int m_activationTime = 0;
  bool m_isInverted = false;
  tavWorkerThread m_thread{m_lock};
};

}  // namespace tavon
