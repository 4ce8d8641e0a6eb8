#include "vevent.h"

#include <gtest/gtest.h>
#include <pthread.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <fstream>
#include <future>
#include <memory>
#include <string>

#include "system_calls.h"
#include "vtime.h"

// What the wait of a thread comes to, which is known to sleep in it when this returns.
static std::future<bool> SleepingIn(const auto& wait) {
  std::atomic<pid_t> id{0};
  auto result = std::async(std::launch::async, [&id, wait] { return id = gettid(), wait(); });
  std::string number, address, operation;  // of its system call: this operation waits for a condition
  while (operation != "0x189" && result.wait_for(std::chrono::microseconds(50)) != std::future_status::ready)
    std::ifstream("/proc/self/task/" + std::to_string(id) + "/syscall") >> number >> address >> operation;
  return result;
}

TEST(VEvent, StaysSignalledUntilReset) {
  VEvent event;
  EXPECT_TRUE(event.EventInited() && !event.Wait(0) && event.Signal() && !event.Signal());
  EXPECT_TRUE(event.Wait() && event.Wait(0) && event.WaitUntil(0) && event.WaitUntil(0, 0));
  EXPECT_EQ(event.WaitRet() + event.WaitRet(0) + event.WaitUntilRet(0) + event.WaitUntilRet(0, 9999999), 0);
  event.Reset();
  EXPECT_FALSE(event.Wait(0));
}

static void ExpectUnusable(VEvent& event) {
  EXPECT_FALSE(event.EventInited());
  EXPECT_FALSE(event.Signal());
  EXPECT_FALSE(event.Wait());
  EXPECT_FALSE(event.Wait(60, 0));
  EXPECT_EQ(event.WaitRet(), 111);
  EXPECT_EQ(event.WaitRet(60), 111);
  EXPECT_EQ(event.WaitUntilRet(0), 111);
}

TEST(VEvent, IsUnusableWhenItsMutexCannotBeMade) {
  const auto noMutex = system_calls::pthread_mutex_init.Returns(EAGAIN);
  VEvent event;
  ExpectUnusable(event);
}

TEST(VEvent, IsUnusableWhenItsConditionCannotBeMade) {
  const auto noCondition = system_calls::pthread_cond_init.Returns(EAGAIN);
  VEvent event;
  ExpectUnusable(event);
}

TEST(VEvent, WaitsNotShorterThanAsked) {
  VEvent event;
  const unsigned long long begin = VTime::TimeUS(), next = begin / 1000000 + 1;
  const auto rest = static_cast<unsigned long>(next * 1000000 - begin);
  const auto second = static_cast<unsigned long>(next), acrossIt = rest < 990000 ? rest + 9999 : 999999;
  EXPECT_EQ(event.WaitRet(0, acrossIt), 110);
  EXPECT_GE(VTime::TimeUS() - begin, acrossIt);
  EXPECT_TRUE(!event.WaitUntil(second, 20000) && event.WaitUntilRet(second, 40000) == 110);
  EXPECT_TRUE(!event.Wait(20) && !event.Wait(0, 20000) && event.WaitRet(20) == 110);
  EXPECT_GE(VTime::TimeUS() - begin, rest + 100000);
}

TEST(VEvent, RefusesMicrosecondsBeyondOneSecondAndTakesMillisecondInstantsForPast) {
  VEvent event;
  for (const unsigned long microseconds : {2000000UL, 4294968UL, 2147483648UL, ~0UL})
    EXPECT_TRUE(!event.Wait(60, microseconds) && event.WaitRet(60, microseconds) == 111 &&
                event.WaitUntilRet(~0UL, microseconds / 2) == 111);
  for (const unsigned long long instant : {0ULL, VTime::TimeUS() / 1000 + 1000000, ~0ULL})
    EXPECT_EQ(event.WaitUntilRet(static_cast<unsigned long>(instant)), 110) << instant;
}

TEST(VEvent, EverySleepingWaiterComesOutWhenItIsSignalledAndAtOnceReset) {
  VEvent event;
  for (int round = 0; round < 50; ++round) {
    auto* const own = new VEvent;  // of the third waiter, who is done with it while Signal may still run
    std::future<bool> waiters[] = {SleepingIn([&] { return event.Wait(); }),
                                   SleepingIn([&] { return !event.WaitRet(~0UL, 0); }),
                                   SleepingIn([=] { return std::unique_ptr<VEvent>(own)->Wait(~0UL); })};
    event.Reset();  // not signalled: they sleep on
    EXPECT_EQ(waiters[0].wait_for(std::chrono::milliseconds(1)), std::future_status::timeout);
    EXPECT_TRUE(own->Signal() && event.Signal());
    event.Reset();
    EXPECT_TRUE(waiters[0].get() && waiters[1].get() && waiters[2].get() && !event.Wait(0));
  }
}

TEST(VEvent, SignalAndResetMayMeetAWaitAtAnyMoment) {
  VEvent event;
  const auto waiter = std::async(std::launch::async, [&] {
    int code = 0;
    for (unsigned long round = 0; round < 3000; round += code == 0)
      EXPECT_NE(code = round % 3 == 0 ? event.WaitRet() : event.WaitRet(0, round % 50), 111);
  });
  for (; waiter.wait_for(std::chrono::seconds(0)) != std::future_status::ready; event.Reset()) event.Signal();
}
