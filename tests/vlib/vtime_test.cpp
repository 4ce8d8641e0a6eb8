#include "vtime.h"

#include <gtest/gtest.h>
#include <sys/time.h>

#include "test_clock.h"

TEST(VTime, KeepsThirtyTwoBitsOfMillisecondsAndSecondsAndAllMicroseconds) {
  struct ClockCase {
    timeval now;
    unsigned long long milliseconds, seconds, microseconds;
  };
  const ClockCase cases[] = {
      {{1417000000, 999999}, 3955760615, 1417000000, 1417000000999999},
      {{4294967, 295999}, 4294967295, 4294967, 4294967295999},
      {{4294967, 296000}, 0, 4294967, 4294967296000},  // one later: the difference, unsigned, is 1
      {{4294967301, 7}, 5000, 5, 4294967301000007},    // in the year 2106
  };
  for (const ClockCase& expected : cases) {
    const TestClock clock(std::chrono::seconds(expected.now.tv_sec) +
                          TestClock::Moment(expected.now.tv_usec));
    unsigned long seconds = 0;
    long microseconds = 0;
    VTime::Time(&seconds, nullptr);
    VTime::Time(nullptr, &microseconds);
    EXPECT_EQ(VTime::Time(), expected.milliseconds);
    EXPECT_EQ(seconds, expected.seconds);
    EXPECT_EQ(microseconds, expected.now.tv_usec);
    EXPECT_EQ(VTime::TimeUS(), expected.microseconds);
  }
}
