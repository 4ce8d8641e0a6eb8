#include "tav_time.h"

#include <gtest/gtest.h>

#include "test_clock.h"

namespace tavon {
namespace {

struct TavTime : testing::Test {
  TavTime() { setenv("TZ", "UTC0", 1); }
  TestClock clock{TestClock::Utc(2014, 4, 8, 10, 15, 2) + std::chrono::microseconds(7)};  // a Tuesday
};

TEST_F(TavTime, IsTextWithALineFeed) { EXPECT_EQ(tavTime::GetDateTime(), "Tue Apr  8 10:15:02 2014\n"); }

TEST_F(TavTime, CountsTheMonthsFromZero) {
  int year = 0, yearDay = 0, month = 0, monthDay = 0, weekDay = 0, hour = 0, minute = 0, second = 0;
  tavTime::GetDateTime(&year, &yearDay, &month, &monthDay, &weekDay, &hour, &minute, &second);
  EXPECT_EQ(std::vector({year, yearDay, month, monthDay, weekDay, hour, minute, second}),
            std::vector({2014, 97, 3, 8, 2, 10, 15, 2}));
  tavTime::GetDateTime(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
}

TEST_F(TavTime, CountsTheMonthsOfACustomTimeFromOne) {
  EXPECT_EQ(tavTime::GetCustomTime(2014, 4, 8, 10, 15, 2), tavTime::GetCurrentTime());
}

TEST_F(TavTime, TakesSecondsApart) {
  unsigned long hours = 0;
  unsigned char minutes = 0;
  tavTime::FormatSeconds(604800 + 15 * 60 + 2, &hours, &minutes, nullptr);
  EXPECT_EQ(hours, 168UL);
  EXPECT_EQ(minutes, 15);
}

TEST_F(TavTime, LeavesOutThePartsThatNobodyAsksFor) {
  unsigned char seconds = 0;
  tavTime::FormatSeconds(62, nullptr, nullptr, &seconds);
  EXPECT_EQ(seconds, 2);
  tavTime::FormatSeconds(62, nullptr, nullptr, nullptr);
}

}  // namespace
}  // namespace tavon
