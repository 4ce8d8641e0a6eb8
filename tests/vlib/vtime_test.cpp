#include "vtime.h"

#include <gtest/gtest.h>

#include "test_clock.h"

TEST(VTime, Keeps32BitsOfAllButMicroseconds) {
  const TestClock clock(TestClock::Moment(4294967301000007));  // in the year 2106
  EXPECT_EQ(VTime::Time(), 5000U);
  EXPECT_EQ(VTime::TimeUS(), 4294967301000007U);
  unsigned long seconds = 0;
  long microseconds = 0;
  VTime::Time(&seconds, nullptr);
  VTime::Time(nullptr, &microseconds);
  EXPECT_EQ(seconds, 5U);
  EXPECT_EQ(microseconds, 7);
}
