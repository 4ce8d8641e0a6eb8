#include "tav_time.h"

#include <gtest/gtest.h>

using tavon::tavTime;

TEST(TavTime, CountsMonthsFromZeroWhenReadAndFromOneWhenGiven) {
  int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
  tavTime::GetDateTime(&year, nullptr, &month, &day, nullptr, &hour, &minute, &second);
  const std::time_t instant = tavTime::GetCustomTime(year, month + 1, day, hour, minute, second);
  EXPECT_NEAR(static_cast<double>(tavTime::GetCurrentTime() - instant), 0, 30);
  EXPECT_EQ(tavTime::GetCustomTime(2040, 1, 2, 0, 0, 0) - tavTime::GetCustomTime(2040, 1, 1, 0, 0, 0), 86400)
      << "beyond 32-bit time";
  EXPECT_EQ(tavTime::GetDateTime().size(), 25u) << "the line feed included";
}

TEST(TavTime, ReadsTheClockOfVTime) {
  unsigned long seconds = 0, hours = 0;
  long microseconds = 0;
  const unsigned long before = tavTime::GetTime();
  tavTime::GetTime(&seconds, &microseconds);
  const auto passed = static_cast<std::uint32_t>(seconds * 1000 - before);
  EXPECT_LT(passed + 1000, 60000u) << "milliseconds that wrap at 32 bits";
  tavTime::FormatSeconds(363725, &hours, nullptr, nullptr);
  EXPECT_EQ(hours, 101u);
}
