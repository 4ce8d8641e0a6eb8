#pragma once

#include <memory>

// Runs one work function on a thread of its own, and lets that function wait for the request to stop.
//
// The work function gets this object and its argument. It is to call WaitContinue (or a sibling) in a loop
// with its period, and to return as soon as that reports a stop, or whenever it is done. It must not throw,
// and must not destroy the object. Once it has returned the object is idle again and may be started anew.
//
// Any thread may call any operation, several at the same time too. The object may be destroyed when
// Running() is false, and at any time by Stop and destructor, except from its own work function: the
// destructor stops the thread and waits for its end. An auto-release object is another matter: it is made
// with `new` and destroys itself when its work function returns. Until the start that lets its work begin, or
// when that start fails, it belongs to its maker, who after that may touch it only while the work cannot end
// by itself.
//
// A thread may be started suspended: it exists, and is held before its work until the next Start. A Stop, and
// so the destructor, waits for a held thread like for any other, until another thread's Start lets it go. For
// that of an auto-release object nobody waits: it must be let go, or it is held for ever.
//
// A thread that ends on its own is joined by nobody and gives back all it had by itself. A stop is for the
// run that it meets: one that comes as the thread ends never stops the next run.
//
// Nothing here logs: the results tell.
class VThread {
 public:
  using Work = void (*)(VThread* thread, void* argument);

  // Pauses the calling thread for seconds, milliseconds, microseconds, of which the low 32 bits count. A
  // signal ends the pause. The milliseconds wrap at 4294968 (72 minutes) to a short pause: intended.
  static void SleepS(unsigned long seconds);
  static void SleepM(unsigned long milliseconds);
  static void SleepU(unsigned long microseconds);

  // The calling thread, as GetThreadID and GetThreadHandle name it. The two are the same.
  static unsigned long GetCurrentThreadID();
  static unsigned long GetCurrentThreadHandle();
  static bool EqualThread(unsigned long left, unsigned long right) { return left == right; }

  VThread();
  // With `suspended` the thread is made at once, and held; Running() tells whether it could be.
  VThread(Work work, void* argument, bool suspended);
  ~VThread();
  VThread(const VThread&) = delete;
  VThread& operator=(const VThread&) = delete;

  // What the next run does, and a held one too.
  void SetWork(Work work, void* argument);

  // Lets a held thread begin its work. Otherwise makes a thread, with a stack of that many bytes (0: that of
  // the system), after a running one has been stopped. True on success. Fails without a work function, when
  // the system makes no thread, and when the running thread cannot be waited for: a work function that
  // restarts itself only stops.
  bool Start(unsigned long stackSize);
  // The same; 0 on success, -2 without a work function, otherwise the error number of the system: EINVAL (22)
  // for a stack too small, EAGAIN (11) for too many threads or no memory, EDEADLK (35) when the running
  // thread cannot be waited for: from its own work, or that of an auto-release object.
  int Start2(unsigned long stackSize);

  // Makes a thread that is held (true) or not (false); true on success. The next Start makes a held one as
  // well if this one failed. Changes nothing and is true when there is a thread already.
  bool CreateSuspended(bool suspended);

  // Makes the object destroy itself at the end of its work. Ignored when there is a thread already.
  void SetAutoRelease(bool on);

  // Asks the work to end and waits for that. Only asks when it is called by the work function itself, or for
  // an auto-release object. Does nothing when there is no thread.
  void Stop();

  // Sends the thread the interrupt signal (2), whose default is to end the program. The error number of the
  // system, 0 also when there is no thread.
  int Kill();

  // For the work function: waits that a stop request ends at once. True, or the code 110 in place of 0, when
  // there was none and the work is to go on. The arguments, and all codes, are those of the waits of VEvent.
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
  // 0 when there is no thread. The id is known a moment later than the handle: the thread itself sets it.
  unsigned long GetThreadHandle() const;
  unsigned long GetThreadID() const;

 private:
  class State;

  static void* workStatic(void* state);

  const std::shared_ptr<State> m_state;
};
