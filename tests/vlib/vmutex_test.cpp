#include "vmutex.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <thread>

// To unlock what another thread owns is the point here: the thread sanitizer need not report it.
extern "C" const char* __tsan_default_suppressions() { return "mutex:VMutex_CannotBeUnlockedByOthers"; }

namespace {

TEST(VMutex, CannotBeUnlockedByOthers) {
  vMutex mutex;
  mutex.LockTry();
  std::thread([&] {
    EXPECT_FALSE(mutex.TryLock());
    EXPECT_EQ(mutex.UnLock(), EPERM);
    EXPECT_FALSE(mutex.UnLockB());
    EXPECT_THAT([&] { mutex.UnLockTry(); }, testing::Throws<int>(EPERM));
  }).join();
  mutex.UnLockTry();
}

}  // namespace
