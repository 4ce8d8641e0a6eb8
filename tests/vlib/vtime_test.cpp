#include "vtime.h"

#include <gtest/gtest.h>

#include "test_clock.h"

namespace {

struct ClockCase {
  const char* name;
  unsigned long long microseconds;  // since 1970, all of them
  unsigned long milliseconds, seconds;
  long microsecond;
};

TEST(VTime, Keeps32BitsOfAllButMicroseconds) {
  const ClockCase cases[] = {
      {"the millisecond that wraps", 4294967296000, 0, 4294967, 296000},
      {"the one before", 4294967295999, 4294967295, 4294967, 295999},
      {"in the year 2106", 4294967301000007, 5000, 5, 7},
  };
  for (const ClockCase& moment : cases) {
    SCOPED_TRACE(moment.name);
    const TestClock clock(TestClock::Moment(moment.microseconds));
    EXPECT_EQ(VTime::Time(), moment.milliseconds);
    EXPECT_EQ(VTime::TimeUS(), moment.microseconds);
    unsigned long seconds = 0;
    VTime::Time(&seconds, nullptr);
    EXPECT_EQ(seconds, moment.seconds);
    long microsecond = 0;
    VTime::Time(nullptr, &microsecond);
    EXPECT_EQ(microsecond, moment.microsecond);
  }
}

}  // namespace
