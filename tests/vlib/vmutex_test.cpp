#include "vmutex.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <thread>

// To unlock what another thread owns is the point here: the thread sanitizer need not report it.
extern "C" const char* __tsan_default_suppressions() { return "mutex:VMutex_"; }

TEST(VMutex, BelongsToOneThreadUntilThatUnlocksItAsOftenAsItLockedIt) {
  vMutex mutex;
  EXPECT_TRUE(mutex.LockB());
  mutex.LockTry();
  EXPECT_TRUE(mutex.TryLock());
  EXPECT_TRUE(mutex.UnLockB());
  EXPECT_EQ(mutex.UnLock(), 0);
  std::thread([&] {
    EXPECT_FALSE(mutex.TryLock());
    EXPECT_EQ(mutex.UnLock(), EPERM);
    EXPECT_FALSE(mutex.UnLockB());
    EXPECT_THAT([&] { mutex.UnLockTry(); }, testing::Throws<int>(EPERM));
  }).join();
  mutex.UnLockTry();
  std::thread([&] {
    EXPECT_TRUE(mutex.TryLock());
    EXPECT_EQ(pthread_mutex_unlock(mutex.GetMutexHandle()), 0);
  }).join();
}
