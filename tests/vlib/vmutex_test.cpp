#include "vmutex.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <future>

namespace {

bool AnotherThreadGets(vMutex& mutex) {
  const auto lockAndUnlock = [&] { return mutex.TryLock() && mutex.UnLockB(); };
  return std::async(std::launch::async, lockAndUnlock).get();
}

TEST(VMutex, IsOwnedUntilUnlockedAsOftenAsLocked) {
  vMutex mutex;
  EXPECT_EQ(mutex.Lock(), 0);
  EXPECT_TRUE(mutex.LockB());
  mutex.LockTry();
  EXPECT_TRUE(mutex.TryLock());
  EXPECT_EQ(mutex.UnLock(), 0);
  EXPECT_TRUE(mutex.UnLockB());
  mutex.UnLockTry();
  EXPECT_FALSE(AnotherThreadGets(mutex));
  EXPECT_EQ(mutex.UnLock(), 0);
  EXPECT_TRUE(AnotherThreadGets(mutex));
}

TEST(VMutex, IsUnlockedByItsOwnerOnly) {
#ifdef __SANITIZE_THREAD__
  GTEST_SKIP() << "the thread sanitizer reports an unlock that fails, too";
#endif
  vMutex mutex;
  EXPECT_EQ(mutex.UnLock(), EPERM);
  EXPECT_FALSE(mutex.UnLockB());
  try {
    mutex.UnLockTry();
    FAIL() << "no exception";
  } catch (int error) {
    EXPECT_EQ(error, EPERM);
  }
}

}  // namespace
