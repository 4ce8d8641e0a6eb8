#include "vevent.h"

#include <gtest/gtest.h>

#include <functional>
#include <future>
#include <memory>

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
  EXPECT_TRUE(event.Wait(0));
  event.Reset();
  EXPECT_FALSE(event.Wait(0));
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

TEST(VEvent, MayGoAsSoonAsItsSleeperIsAwake) {
  const TestClock clock(1000s);
  for (int round = 0; round < 50; ++round) {
    auto* const event = new VEvent;
    auto woken = std::async(std::launch::async, [=] { return std::unique_ptr<VEvent>(event)->Wait(60, 0); });
    TestClock::AwaitSleepers(1);
    event->Signal();
    ASSERT_TRUE(woken.get());
  }
}

TEST(VEvent, MayBeSignalledAndResetAtAnyMomentOfAWait) {
  VEvent event;
  const auto waiter = std::async(std::launch::async, [&] {
    for (int signals = 0; signals < 1000;) signals += event.Wait() ? 1 : 0;
    for (int signals = 0; signals < 1000;) signals += event.WaitRet(0, 20) == 0 ? 1 : 0;
  });
  while (waiter.wait_for(0s) != std::future_status::ready) {
    event.Signal();
    event.Reset();
  }
}

}  // namespace
