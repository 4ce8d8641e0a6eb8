#include "vevent.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cerrno>
#include <functional>
#include <future>

#include "await.h"
#include "failing_allocation.h"
#include "system_calls.h"
#include "test_clock.h"
#include "vtime.h"

using namespace std::chrono_literals;

namespace {

TEST(VEvent, StaysSignalledUntilReset) {
  VEvent event;
  EXPECT_FALSE(event.Wait(0));
  EXPECT_TRUE(event.Signal());
  EXPECT_TRUE(event.Wait(0));
  EXPECT_FALSE(event.Signal()) << "it is";
  EXPECT_TRUE(event.Wait());
  EXPECT_EQ(event.WaitRet(), 0);
  EXPECT_TRUE(event.WaitUntil(1000));
  event.Reset();
  EXPECT_FALSE(event.Wait(0));
  // On purpose: 32 bits of milliseconds name a moment in 1970.
  EXPECT_FALSE(event.WaitUntil(0xFFFFFFFF));
  EXPECT_EQ(event.WaitUntilRet(0xFFFFFFFF), 110);
}

TEST(VEvent, WaitEndsNeitherEarlierNorLaterThanAsked) {
  struct LimitCase {
    const char* name;
    TestClock::Moment now, end;
    std::function<int(VEvent&)> wait;
  };
  const LimitCase cases[] = {
      {"milliseconds", 1000s, 1002345ms, [](VEvent& event) { return event.WaitRet(2345); }},
      {"microseconds", 1000s, 1002000345us, [](VEvent& event) { return event.WaitRet(2, 345); }},
      {"across a second", 1000700ms, 1003s, [](VEvent& event) { return event.WaitRet(2, 300000); }},
      {"until a moment", 1000s, 1002000345us, [](VEvent& event) { return event.WaitUntilRet(1002, 345); }},
  };
  for (const LimitCase& limit : cases) {
    SCOPED_TRACE(limit.name);
    VEvent event;
    std::future<int> code;
    TestClock clock(limit.now);  // whose end lets a thread out that still sleeps
    code = std::async(std::launch::async, limit.wait, std::ref(event));
    TestClock::AwaitSleepers(1);
    clock.Advance(limit.end - limit.now - 1us);
    TestClock::AwaitSleepers(1);
    clock.Advance(1us);
    TestClock::AwaitSleepers(0);
    EXPECT_EQ(code.get(), 110);
  }
}

TEST(VEvent, CarriesOneSecondOfMicrosecondsOnly) {
  const TestClock clock(1000s + 600000us);
  VEvent event;
  EXPECT_FALSE(event.Wait(60, 1400000));
  EXPECT_EQ(event.WaitRet(60, 1400000), 111);
  EXPECT_EQ(event.WaitUntilRet(2000, 1000000), 111);
}

TEST(VEvent, SignalReachesASleeperEvenWhenItIsResetAtOnce) {
  const TestClock clock(1000s);
  VEvent event;
  for (int round = 0; round < 50; ++round) {
    auto code = std::async(std::launch::async, [&] { return event.WaitRet(60, 0); });
    TestClock::AwaitSleepers(1);
    event.Signal();
    event.Reset();
    ASSERT_EQ(code.get(), 0);
  }
}

TEST(VEvent, SignalThatComesWhileAWaitRunsOutIsNotForgotten) {
  TestClock clock(1000s);
  VEvent event;
  auto isSignalled = std::async(std::launch::async, [&] { return event.Wait(60, 0); });
  TestClock::AwaitSleepers(1);
  // The waiter's time is over before the signal reaches it, but it cannot come out while Signal is under way.
  std::future<void> minute;
  const auto tooLate = system_calls::pthread_cond_signal.ReplaceBy([&](pthread_cond_t*) {
    minute = std::async(std::launch::async, [&] { clock.Advance(60s); });
    Await([] { return VTime::TimeUS() == 1060000000; });
    return 0;
  });
  EXPECT_TRUE(event.Signal());
  EXPECT_TRUE(isSignalled.get());
}

TEST(VEvent, WaitWithoutLimitEndsWithASignalOrAnError) {
  VEvent event;
  std::atomic<bool> isWaiting{false};
  {
    const auto watch = system_calls::pthread_cond_wait.ReplaceBy([&](auto* condition, auto* mutex) {
      isWaiting = true;
      return system_calls::pthread_cond_wait.Real(condition, mutex);
    });
    auto code = std::async(std::launch::async, [&] { return event.WaitRet(); });
    Await([&] { return isWaiting.load(); });
    EXPECT_TRUE(event.Signal());
    EXPECT_EQ(code.get(), 0);
  }
  event.Reset();
  const auto notPermitted = system_calls::pthread_cond_wait.Returns(EPERM);
  EXPECT_FALSE(event.Wait());
  EXPECT_EQ(event.WaitRet(), 112);
}

TEST(VEvent, WithoutMemoryOrLockIsNotInited) {
  const auto expectNone = [](VEvent& event) {
    EXPECT_FALSE(event.EventInited());
    EXPECT_FALSE(event.Signal());
    EXPECT_FALSE(event.Wait());
    EXPECT_EQ(event.WaitRet(60000), 111);
    event.Reset();
  };
  const auto noLock = system_calls::pthread_mutex_init.Returns(EAGAIN);
  VEvent withoutLock;
  expectNone(withoutLock);
  const auto shortage = FailingAllocation::After(0);
  VEvent withoutMemory;
  expectNone(withoutMemory);
}

TEST(VEvent, ThatCannotWakeAnybodyHoldsWaitersBackUntilReset) {
  VEvent event;
  {
    const auto broken = system_calls::pthread_cond_signal.Returns(EINVAL);
    EXPECT_FALSE(event.Signal());
  }
  std::atomic<bool> isHeldBack{false};
  const auto watch = system_calls::pthread_cond_wait.ReplaceBy([&](auto* condition, auto* mutex) {
    isHeldBack = true;
    return system_calls::pthread_cond_wait.Real(condition, mutex);
  });
  auto waiter = std::async(std::launch::async, [&event] { return event.Wait(0); });
  Await([&] { return isHeldBack.load(); });
  event.Reset();
  EXPECT_TRUE(waiter.get()) << "it came to a signalled event";
  EXPECT_FALSE(event.Wait(0));
}

}  // namespace
