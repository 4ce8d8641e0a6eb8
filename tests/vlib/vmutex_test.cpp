#include "vmutex.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <thread>

// To unlock what another thread owns is the point here: the thread sanitizer need not report it.
extern "C" const char* __tsan_default_suppressions() { return "mutex:VMutex_BelongsToItsOwner"; }

TEST(VMutex, BelongsToItsOwnerUntilUnlockedAsOftenAsLocked) {
  vMutex mutex;
  mutex.LockTry();
  EXPECT_TRUE(mutex.Lock() == 0 && mutex.LockB() && mutex.TryLock());
  EXPECT_TRUE(mutex.UnLock() == 0 && mutex.UnLockB() && pthread_mutex_unlock(mutex.GetMutexHandle()) == 0);
  std::thread([&] {
    EXPECT_TRUE(!mutex.TryLock() && !mutex.UnLockB() && mutex.UnLock() == EPERM);
    EXPECT_THROW(mutex.UnLockTry(), int);
  }).join();
  mutex.UnLockTry();
  std::thread([&] { EXPECT_TRUE(mutex.TryLock() && mutex.UnLockB()); }).join();
}
