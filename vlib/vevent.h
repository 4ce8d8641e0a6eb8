#pragma once

#include <memory>

struct timespec;

// A manual-reset event: once signalled it lets every waiter through until Reset().
//
// Any thread may signal, reset and ask at any time. Let one thread wait on an event at a time: of several, a
// Signal wakes one, and the others return when their time is over or at the next Reset. A thread that is
// waiting when another one signals and immediately resets always returns, with the event signalled; one that
// begins to wait only after that waits for the next Signal. A thread whose wait was ended by Signal may
// destroy the event at once, even before that Signal has returned. Otherwise do not destroy an event on which
// a thread waits.
//
// Errors are reported by return value only; nothing throws. An event that could not be created (EventInited()
// is false) is never signalled, and every wait on it fails at once. One that was created stays usable: a
// reset needs no resources.
//
// Times are those of the wall clock: setting it meanwhile makes a wait longer or shorter. They have 32 bits
// as everywhere in the system; a larger one counts as the largest of these.
//
// WaitRet and WaitUntilRet return a code, the other waits true for "signalled" and false for anything else:
//   0    the event is signalled
//   110  the time ran out (a Signal at that very moment is seen by the next wait, unless Reset came first)
//   111  the event is not usable, or the wait was refused
//   112  the wait was not permitted
// Any wake-up counts as the signal.
class VEvent {
 public:
  VEvent();
  ~VEvent();
  VEvent(const VEvent&) = delete;
  VEvent& operator=(const VEvent&) = delete;

  // False when the system had no resources for the event when it was constructed.
  bool EventInited() const;

  // True when the event became signalled; false when it already was, or when it is not usable.
  bool Signal();

  // Makes the event not signalled, and wakes every thread that still waits for the previous signal. Does
  // nothing when the event is not signalled.
  void Reset();

  // Without limit.
  bool Wait();
  int WaitRet();

  // At most `seconds` plus `microseconds` from now. Only one second is carried over from the microseconds,
  // which should be below 1000000: a time that is still invalid then fails at once.
  bool Wait(unsigned long seconds, unsigned long microseconds);
  int WaitRet(unsigned long seconds, unsigned long microseconds);
  bool Wait(unsigned long milliseconds);
  int WaitRet(unsigned long milliseconds);

  // Until the instant that many seconds plus microseconds after the start of 1970. Nothing is carried over:
  // 1000000 microseconds or more fail at once.
  bool WaitUntil(unsigned long seconds, unsigned long microseconds);
  int WaitUntilRet(unsigned long seconds, unsigned long microseconds);

  // The same in milliseconds. As 32 bits reach only into February 1970, that instant is always past: these
  // two return at once, and say whether the event is signalled.
  bool WaitUntil(unsigned long milliseconds);
  int WaitUntilRet(unsigned long milliseconds);

 private:
  class State;
  struct Outcome;

  static std::shared_ptr<State> MakeState();
  Outcome WaitOnce(const timespec* deadline) const;

  // Shared with the calls that are under way, as the object may be destroyed during one. Null when there was
  // no memory for it.
  const std::shared_ptr<State> m_state;
};
