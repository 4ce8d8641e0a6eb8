#pragma once

#include <utility>

#include "vmutex.h"

namespace tavon {

// Holds a lock for a scope, and releases it when an exception leaves the scope, too. The mutex must outlive
// it.
class tavSMutex {
 public:
  // Waits until the mutex is free, and locks it.
  explicit tavSMutex(vMutex* mutex) : m_mutex(mutex) { m_mutex->Lock(); }
  ~tavSMutex() {
    if (m_mutex != nullptr) m_mutex->UnLock();
  }
  tavSMutex(const tavSMutex&) = delete;
  tavSMutex& operator=(const tavSMutex&) = delete;

  // Unlocks before the end of the scope.
  void UnLock() { std::exchange(m_mutex, nullptr)->UnLock(); }

  // Leaves the mutex locked by the calling thread when the scope ends.
  void LeaveLocked() { m_mutex = nullptr; }

 private:
  vMutex* m_mutex;
};

}  // namespace tavon
