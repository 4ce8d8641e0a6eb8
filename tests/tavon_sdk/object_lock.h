#pragma once

#include <gtest/gtest.h>
#include <pthread.h>

#include <ctime>
#include <future>

#include "expect_report.h"
#include "tav_error.h"
#include "tav_object.h"

// The lock of an object as other threads see it.
struct ObjectLock : tavon::tavObject {
  // True when a thread other than the calling one can take it.
  static bool IsFree(tavon::tavObject& object) {
    return std::async(std::launch::async,
                      [&object] {
                        vMutex& lock = object.*(&ObjectLock::m_lock);
                        return lock.TryLock() && lock.UnLockB();
                      })
        .get();
  }

  // The same where a thread of the object's own may have it for a moment: waits for it up to half a minute.
  static bool BecomesFree(tavon::tavObject& object) {
    return std::async(std::launch::async,
                      [&object] {
                        vMutex& lock = object.*(&ObjectLock::m_lock);
                        timespec end{};
                        clock_gettime(CLOCK_REALTIME, &end);
                        end.tv_sec += 30;
                        return pthread_mutex_timedlock(lock.GetMutexHandle(), &end) == 0 && lock.UnLockB();
                      })
        .get();
  }

  // Takes back one level of what the calling thread holds; false when it holds none.
  static bool Release(tavon::tavObject& object) { return (object.*(&ObjectLock::m_lock)).UnLockB(); }
};

// Expects an operation of the object to give this report to a log that throws, and to leave the object
// unlocked.
template <class Operation>
void ExpectUnlockedAfterThrow(tavon::tavObject& object, const Report& report, Operation operation) {
  tavon::tavError::Level = tavon::tavLogLevel_Console | tavon::tavLogLevel_Throw;
  ExpectReport(report, [&] { EXPECT_THROW(operation(), tavon::tavError); });
  tavon::tavError::Level = tavon::tavLogLevel_Console;
  EXPECT_TRUE(ObjectLock::BecomesFree(object));
}
