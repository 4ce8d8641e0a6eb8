// Events and threads when the system has nothing left for them.
#include <gtest/gtest.h>

#include <cerrno>
#include <chrono>
#include <future>

#include "failing_allocation.h"
#include "system_calls.h"
#include "vevent.h"
#include "vthread.h"

namespace {

// Gets its thread's object and does nothing.
void ReturnAtOnce(VThread* /*thread*/, void* /*argument*/) {}

}  // namespace

TEST(VEventShortage, WithoutMemoryTheEventIsNotInited) {
  const auto shortage = FailingAllocation::After(0);
  VEvent event;
  EXPECT_FALSE(event.EventInited());
  EXPECT_FALSE(event.Signal());
  EXPECT_EQ(event.WaitRet(60000), 111);
  event.Reset();
}

TEST(VEventShortage, AResetNeedsNothing) {
  VEvent event;
  ASSERT_TRUE(event.Signal());
  {
    const auto shortage = FailingAllocation::After(0);
    const auto noMutex = system_calls::pthread_mutex_init.Returns(EAGAIN);
    event.Reset();
  }
  EXPECT_TRUE(event.EventInited());
  EXPECT_FALSE(event.Wait(0));
  EXPECT_TRUE(event.Signal());
  EXPECT_TRUE(event.Wait());
}

TEST(VEventShortage, ASignalThatCannotWakeAnybodyHoldsWaitersBackUntilReset) {
  VEvent event;
  {
    const auto broken = system_calls::pthread_cond_signal.Returns(EINVAL);
    EXPECT_FALSE(event.Signal());
  }
  auto waiter = std::async(std::launch::async, [&event] { return event.Wait(0); });
  EXPECT_EQ(waiter.wait_for(std::chrono::milliseconds(50)), std::future_status::timeout);
  event.Reset();
  EXPECT_TRUE(waiter.get()) << "it came to a signalled event";
  EXPECT_FALSE(event.Wait(0));
}

TEST(VThreadShortage, AThreadThatCouldNotBeStoppedIsNotStarted) {
  const auto noMutex = system_calls::pthread_mutex_init.Returns(EAGAIN);
  VThread thread(ReturnAtOnce, nullptr, false);
  EXPECT_EQ(thread.Start2(0), ENOMEM);
  EXPECT_FALSE(thread.Start(0));
  EXPECT_FALSE(thread.Running());
}
