#pragma once

#include <pthread.h>

// A recursive lock: the thread that owns it may lock it again, and must unlock it as often as it locked it.
//
// Any thread may lock it, but only its owner may unlock it. Do not destroy it while a thread owns it or waits
// for it. Errors are reported by return value only, except that LockTry and UnLockTry throw.
//
// Error numbers are those of the system: 0 is success; EPERM (1) is the result of an unlock by a thread that
// does not own the lock, which leaves it as it was.
class vMutex {
 public:
  vMutex() {
    pthread_mutexattr_init(&m_attributes);
    pthread_mutexattr_settype(&m_attributes, PTHREAD_MUTEX_RECURSIVE);
    pthread_mutex_init(&m_mutex, &m_attributes);
  }
  ~vMutex() {
    pthread_mutexattr_destroy(&m_attributes);
    pthread_mutex_destroy(&m_mutex);
  }
  vMutex(const vMutex&) = delete;
  vMutex& operator=(const vMutex&) = delete;

  // Lock() waits until the lock is free. Both return the error number.
  int Lock() { return pthread_mutex_lock(&m_mutex); }
  int UnLock() { return pthread_mutex_unlock(&m_mutex); }

  // The same; true on success.
  bool LockB() { return Lock() == 0; }
  bool UnLockB() { return UnLock() == 0; }

  // The same, but an error number other than 0 is thrown as an `int`.
  void LockTry() { ThrowFailure(Lock()); }
  void UnLockTry() { ThrowFailure(UnLock()); }

  // Locks without waiting; false when another thread owns the lock.
  bool TryLock() { return pthread_mutex_trylock(&m_mutex) == 0; }

  // For system calls that need the lock itself, which still belongs to this object.
  pthread_mutex_t* GetMutexHandle() { return &m_mutex; }

 private:
  static void ThrowFailure(int error) {
    if (error != 0) throw error;
  }

  pthread_mutex_t m_mutex{};
  pthread_mutexattr_t m_attributes{};
};
