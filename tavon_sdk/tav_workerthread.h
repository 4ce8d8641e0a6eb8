#pragma once

#include <cxxabi.h>

#include <memory>

#include "vthread.h"

class vMutex;

namespace tavon {

// How the start of a worker thread went. A thread that failed to start stays with its owner.
enum class tavThreadStart { Started, NoMemory, Failed };

// The thread of a parameter that acts by itself: owns the thread and the request to end it, and guards the
// calls that the thread makes into hooks.
//
// It is a member of the parameter, whose lock guards the request, so that the thread can ask for it in one
// step with what else it reads. A parameter's thread is made once: after a request to end none is made again.
// The destructor ends the thread, but a parameter must do so itself before its own members go.
//
// A thread does not survive a fork(): the child's copy of the parameter has none, and destroying that copy
// may wait for ever.
class tavWorkerThread {
 public:
  // `ownersLock` must outlive this object.
  explicit tavWorkerThread(vMutex& ownersLock) : m_ownersLock(ownersLock) {}
  ~tavWorkerThread();
  tavWorkerThread(const tavWorkerThread&) = delete;
  tavWorkerThread& operator=(const tavWorkerThread&) = delete;

  // Makes the thread and lets it begin with work(thread, owner). The stack size is in bytes. The owner
  // reports what goes wrong.
  tavThreadStart Start(VThread::Work work, void* owner, unsigned long stackSize);

  // True once Start had the memory for a thread, whatever became of that thread.
  bool Exists() const { return m_thread != nullptr; }

  // True for the thread that Start made.
  bool Is(const VThread* thread) const { return m_thread.get() == thread; }

  // Asks the thread to end; there is no way back. False, without any effect, while there is no thread.
  bool AskToEnd();

  // True once the thread has been asked to end.
  bool MustEnd() const;

  // After AskToEnd: ends the thread's pause and waits for the end of its work. Does not wait when it is
  // called on that thread itself, from one of the hooks. The caller must not hold the owner's lock.
  void WaitForEnd();

  // Calls a hook, or anything else that a program may have overridden, on the thread. An exception ends the
  // call, is reported (code 1; a record that a log threw counts as reported), and goes no further: nobody is
  // there to catch it, and it would end the process. True when the call returned.
  template <class Call>
  static bool Guard(Call call) {
    try {
      call();
      return true;
    } catch (const abi::__forced_unwind&) {
      throw;  // the thread is being cancelled: no exception, and not to be stopped
    } catch (...) {
      ReportException();
      return false;
    }
  }

 private:
  static void ReportException();

  vMutex& m_ownersLock;
  bool m_mustEnd = false;
  std::unique_ptr<VThread> m_thread;
};

}  // namespace tavon
