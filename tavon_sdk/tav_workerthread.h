#pragma once

#include <cxxabi.h>

#include <memory>

#include "vthread.h"

class vMutex;

namespace tavon {

// Result of starting a worker thread.
enum class tavThreadStart { Started, NoMemory, Failed };

// The worker thread of a parameter that acts by itself. This class owns the thread and the request to end it,
// and guards the calls that the thread makes into hooks.
//
// The parameter has it as a member and ends the thread in its destructor. The parameter's lock guards the
// request, so that the thread can read it together with the value, in one step. Once made, the request stays:
// after a stop the parameter may start a thread again, but that thread finds the request and ends at once.
//
// A hook on the thread may end its own thread. It must not call pthread_exit, and hooks of two parameters
// must not end each other's threads, because each would wait for the other.
//
// An object with a thread belongs to the process that made it: the child of a fork must neither use nor
// destroy its copy, see VThread.
class tavWorkerThread {
 public:
  // `ownersLock` is the parameter's lock.
  explicit tavWorkerThread(vMutex& ownersLock) : m_ownersLock(ownersLock) {}
  ~tavWorkerThread();
  tavWorkerThread(const tavWorkerThread&) = delete;
  tavWorkerThread& operator=(const tavWorkerThread&) = delete;

  // Makes a thread that calls work(thread, owner), unless one has been started. The stack size is in bytes.
  // The owner reports a failure; the next call tries again.
  tavThreadStart Start(VThread::Work work, void* owner, unsigned long stackSize);

  // True for this object's thread.
  bool Is(const VThread* thread) const;

  // Asks the thread to end, for good. False, without any effect, if there is no thread.
  bool AskToEnd();

  // True once a thread has been asked to end.
  bool MustEnd() const;

  // Call it after AskToEnd, without holding the lock: ends the thread's pause, waits until its work has
  // returned, and frees the thread. On the thread itself, that is in one of its hooks, it does neither wait
  // nor free.
  void WaitForEnd();

  // Makes a call on the thread into a hook or another virtual function. An exception that leaves it ends that
  // call, is reported (code 1, unless it is a record that a log threw after printing it), and goes no
  // further: it would end the process. True if the call returned.
  template <class Call>
  static bool Guard(Call call) {
    try {
      call();
      return true;
    } catch (const abi::__forced_unwind&) {
      throw;  // the thread is being cancelled, which must not be stopped
    } catch (...) {
      ReportException();
      return false;
    }
  }

 private:
  static void ReportException();

  // The owner's lock guards all members.
  vMutex& m_ownersLock;
  bool m_mustEnd = false;
  bool m_isStarted = false;
  std::shared_ptr<VThread> m_thread;  // several callers may wait for its end
};

}  // namespace tavon
