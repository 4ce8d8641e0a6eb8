#pragma once

#include <memory>
#include <mutex>

struct timespec;

// A manual-reset event: once signalled it lets every waiter through until Reset().
//
// Any thread may signal, reset and ask at any time. One thread waits on an event at a time: of several, a
// Signal wakes one, and the others come out when their time is over or with the next Reset. A thread that
// waits when another signals and at once resets always comes out, with the event signalled; one that comes
// to the event only after that waits for the next Signal. A thread whose wait was ended by Signal may destroy
// the event at once, even before that Signal has returned.
//
// Nothing here logs or throws: the results tell. An event that could not be created (EventInited() is false)
// is never signalled, and every wait on it fails at once.
//
// Time is that of the wall clock: a wait becomes longer or shorter when that is set meanwhile. Times have 32
// bits as everywhere in the system, a larger one counts as the largest of these.
//
// Waits named WaitRet and WaitUntilRet give a code, the others true for signalled and false for all the rest:
//   0    the event is signalled
//   110  the time ran out (a Signal at that very moment is seen by the next wait, unless Reset came first)
//   111  the event is not usable, or the wait was refused
//   112  the wait was not permitted
// A wait waits once and takes any wake-up for the signal.
class VEvent {
 public:
  VEvent();
  ~VEvent();
  VEvent(const VEvent&) = delete;
  VEvent& operator=(const VEvent&) = delete;

  // False when the system had no resources for the event, at its construction or at the last Reset.
  bool EventInited() const;

  // True when the event became signalled; false when it already was, or when it is not usable.
  bool Signal();

  // Back to not signalled, and whoever still waits for what was signalled before is woken. Changes nothing
  // when the event is not signalled.
  void Reset();

  // Without limit.
  bool Wait();
  int WaitRet();

  // At most `seconds` plus `microseconds` from now. Only one second is carried over from the microseconds,
  // which are to stay below 1000000: a time that is none after that is refused at once.
  bool Wait(unsigned long seconds, unsigned long microseconds);
  int WaitRet(unsigned long seconds, unsigned long microseconds);
  bool Wait(unsigned long milliseconds);
  int WaitRet(unsigned long milliseconds);

  // Until the instant that many seconds plus microseconds after the start of 1970. Nothing is carried over:
  // microseconds from 1000000 on are refused at once.
  bool WaitUntil(unsigned long seconds, unsigned long microseconds);
  int WaitUntilRet(unsigned long seconds, unsigned long microseconds);

  // The same in milliseconds. With 32 bits that is an instant early in 1970, so these two always return at
  // once and tell whether the event is signalled: intended.
  bool WaitUntil(unsigned long milliseconds);
  int WaitUntilRet(unsigned long milliseconds);

 private:
  class Gate;
  struct Outcome;

  static std::shared_ptr<Gate> MakeGate();
  std::shared_ptr<Gate> CurrentGate() const;
  Outcome WaitOnce(const timespec* deadline) const;

  mutable std::mutex m_lock;  // guards the pointer only, and is never held during a wait
  std::shared_ptr<Gate> m_gate;
};
