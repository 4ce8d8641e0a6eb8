#pragma once

#include <utility>

#include "vmutex.h"

namespace tavon {

// A lock held for a scope: locks on construction, unlocks on destruction, also when an exception leaves the
// scope. The mutex must outlive it.
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

  // The mutex stays locked after the scope, by the calling thread.
  void LeaveLocked() { m_mutex = nullptr; }

 private:
  vMutex* m_mutex;
};

}  // namespace tavon
