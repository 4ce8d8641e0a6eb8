#pragma once

#include <memory>

#include "vevent.h"

// Runs one work function on a thread of its own, and lets that function wait for the request to stop.
//
// The work function gets this object and its argument. It should call WaitContinue (or a sibling) in a loop
// with its period, and return as soon as that reports a stop, or whenever it is done. It must not throw or
// destroy the object. Leaving by pthread_exit counts as returning. Once it has returned the object is idle
// again and may be started anew.
//
// Any thread may call any operation, and several may do so at the same time. The object may be destroyed
// while Running() is false; destroying it earlier stops the thread and waits for its end, which its own work
// function must not do. An auto-release object is different: it is made with `new` and destroys itself when
// its work function returns. It belongs to its maker until the start that lets its work begin, and when that
// start fails; afterwards the maker may touch it only while the work cannot end by itself.
//
// A thread may be started suspended: it exists, but is held before its work until the next Start. Stop, and
// so the destructor, waits for a held thread as for any other, until another thread's Start lets it go.
// Nobody waits for the held thread of an auto-release object: unless it is let go, it stays forever.
//
// A thread that ends by itself need not be joined and frees all its resources. Stop() affects the current run
// only: one that comes just as the thread ends never stops the next run.
//
// An object with a thread belongs to the process that made it. In the child of a fork the thread is gone,
// though the object says otherwise: stopping or destroying it there waits forever. Such a child must exec or
// _exit.
//
// Errors are reported by return value only; nothing throws. An object that was made without memory has no
// thread and no work, whatever is called: Start reports it.
class VThread {
 public:
  // The work function: gets its thread and the argument given with it.
  using Work = void (*)(VThread* thread, void* argument);

  // Pause the calling thread for seconds, milliseconds or microseconds, of which the low 32 bits count. A
  // signal ends the pause. From 4294968 milliseconds (72 minutes) on the pause wraps to a short one: the
  // microseconds that it is made of have 32 bits as well.
  static void SleepS(unsigned long seconds);
  static void SleepM(unsigned long milliseconds);
  static void SleepU(unsigned long microseconds);

  // The calling thread, as GetThreadID and GetThreadHandle name it. Both return the same.
  static unsigned long GetCurrentThreadID();
  static unsigned long GetCurrentThreadHandle();
  static bool EqualThread(unsigned long left, unsigned long right) { return left == right; }

  VThread();
  // With `suspended` the thread is made at once, and held; Running() is false if it could not be.
  VThread(Work work, void* argument, bool suspended);
  ~VThread();
  VThread(const VThread&) = delete;
  VThread& operator=(const VThread&) = delete;

  // Sets what the next run does, or the current one if it is still held.
  void SetWork(Work work, void* argument);

  // Lets a held thread begin its work. Otherwise stops a running thread and makes a new one, with a stack of
  // that many bytes (0: the system's default). True on success. Fails without a work function, and when the
  // system has no resources.
  //
  // A work function that restarts its own thread cannot wait for its own end, and nobody waits for that of an
  // auto-release object. Their work is only asked to stop; the new thread is made at once and begins its work
  // when the old work has returned. An auto-release object then destroys itself after the last of its runs.
  bool Start(unsigned long stackSize);
  // The same; 0 on success, -2 without a work function, otherwise an error number of the system: EINVAL (22)
  // for a stack that is too small, EAGAIN (11) for too many threads, ENOMEM (12) for no memory, now or when
  // the object was made.
  int Start2(unsigned long stackSize);

  // Makes a thread that is held (true) or not (false); true on success. If a held one cannot be made, the
  // next Start makes a held one, too. Changes nothing and returns true when there is a thread already.
  bool CreateSuspended(bool suspended);

  // Makes the object destroy itself at the end of its work. Ignored when there is a thread already.
  void SetAutoRelease(bool on);

  // Asks the work to end, also that of a new thread which has not begun yet, and waits until it has. Only
  // asks when called by the work function itself, or for an auto-release object. Does nothing when there is
  // no thread.
  void Stop();

  // Sends the thread the interrupt signal (2), which ends the program unless it handles it. 0, also when
  // there is no thread, or the error number of the system.
  int Kill();

  // For the work function: wait for the given time, or until a stop is requested. True, or the code 110, when
  // no stop was requested and the work should go on; false, or 0, when one was. Arguments and further codes
  // are those of the waits of VEvent.
  bool WaitContinue(unsigned long milliseconds);
  bool WaitContinue(unsigned long seconds, unsigned long microseconds);
  int WaitContinueRet(unsigned long milliseconds);
  int WaitContinueRet(unsigned long seconds, unsigned long microseconds);
  bool WaitContinueUntil(unsigned long milliseconds);
  bool WaitContinueUntil(unsigned long seconds, unsigned long microseconds);
  int WaitContinueUntilRet(unsigned long milliseconds);
  int WaitContinueUntilRet(unsigned long seconds, unsigned long microseconds);

  // True while there is a thread, held or working.
  bool Running() const;
  // Of the latest thread; 0 when there is none. The thread itself sets its id when its turn has come, so that
  // it is known a moment later than the handle.
  unsigned long GetThreadHandle() const;
  unsigned long GetThreadID() const;

 private:
  class State;

  static std::shared_ptr<State> MakeState(VThread* object);
  static void* workStatic(void* argument);

  VEvent m_stopEvent;
  // Shared with the thread and with the calls that are under way. Null when there was no memory for it.
  const std::shared_ptr<State> m_state;
};
