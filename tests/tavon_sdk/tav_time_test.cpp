#include "tav_time.h"

#include <gtest/gtest.h>

using tavon::tavTime;

TEST(TavTime, CountsMonthsFromZeroWhenReadAndFromOneWhenGiven) {
  int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
  tavTime::GetDateTime(&year, nullptr, &month, &day, nullptr, &hour, &minute, &second);
  const std::time_t instant = tavTime::GetCustomTime(year, month + 1, day, hour, minute, second);
  EXPECT_NEAR(static_cast<double>(tavTime::GetCurrentTime() - instant), 0, 30);
  EXPECT_EQ(tavTime::GetDateTime().size(), 25u) << "the line feed included";
}
