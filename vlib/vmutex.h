#pragma once

#include <pthread.h>

// A recursive lock: the thread that owns it may lock it again, and must unlock it as often as it locked it.
//
// Any thread may lock it, only its owner may unlock it. It stays where it was made, and nobody may own it or
// wait for it when it is destroyed. Nothing here logs: the results tell, and only LockTry and UnLockTry
// throw.
//
// An error number is one of the system: 0 is success, and EPERM (1) answers an unlock by a thread that does
// not own the lock, which then stays as it was.
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

  // Waits until the lock is free; the error number.
  int Lock() { return pthread_mutex_lock(&m_mutex); }
  int UnLock() { return pthread_mutex_unlock(&m_mutex); }

  // The same with true for success.
  bool LockB() { return Lock() == 0; }
  bool UnLockB() { return UnLock() == 0; }

  // The same, throwing the error number as an `int` when it is not 0.
  void LockTry() { ThrowFailure(Lock()); }
  void UnLockTry() { ThrowFailure(UnLock()); }

  // Never waits: true when the lock was free, or already the caller's, and has been locked once more.
  bool TryLock() { return pthread_mutex_trylock(&m_mutex) == 0; }

  // For calls of the system that want the lock itself; it remains the property of this object.
  pthread_mutex_t* GetMutexHandle() { return &m_mutex; }

 private:
  static void ThrowFailure(int error) {
    if (error != 0) throw error;
  }

  pthread_mutex_t m_mutex{};
  pthread_mutexattr_t m_attributes{};
};
