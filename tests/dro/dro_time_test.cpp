#include "dro_time.h"

#include <gmock/gmock.h>

#include "test_clock.h"

using dro::droTime;

static constexpr TestClock::Moment kStart{1398152102123999};  // Tuesday, 22 April 2014, 07:35:02
static const int zone = setenv("TZ", "UTC0", 1);

TEST(DroTime, MillisecondsAreExtendedWithTheirSign) {
  const TestClock clock(kStart);
  unsigned long long milliseconds = 0;
  droTime::GetHiResTime(&milliseconds);
  EXPECT_EQ(milliseconds, 18446744071702315243U);
  EXPECT_EQ(droTime::GetTime(), 2287730923U);
  droTime::GetTimePerSecond(&milliseconds);
  EXPECT_EQ(milliseconds, 1000000U) << "of another clock: intended";
}

TEST(DroTime, DateCountsFromZeroInPartsAndFromOneInTheStructure) {
  const TestClock clock(kStart);
  EXPECT_EQ(droTime::GetDateTime(), "Tue Apr 22 07:35:02 2014");
  EXPECT_EQ(droTime::GetCustomTime(2014, 4, 22, 7, 35, 2), droTime::GetCurrentTime());
  EXPECT_EQ(droTime::GetCustomTime(1850, 1, 1, 0, 0, 0), droTime::GetCustomTime(1900, 1, 1, 0, 0, 0));
  int yearDay = 0, month = 0, weekDay = 0;
  droTime::GetDateTime(nullptr, &yearDay, &month, nullptr, &weekDay, nullptr, nullptr, nullptr);
  EXPECT_TRUE(yearDay == 111 && month == 3 && weekDay == 2);
  droTime::droDateTime n;
  droTime::GetDateTime(&n);
  EXPECT_THAT((std::array{n.year, n.dayOfYear, n.month, n.day, n.dayOfWeek, n.hour, n.minute, n.second}),
              testing::ElementsAre(2014, 112, 4, 22, 3, 7, 35, 2));
}

TEST(DroTime, RemainingTimeEndsAtTheNextStepOfTheClock) {
  const auto remaining = [](int minute, int second, int step) {
    const TestClock clock(std::chrono::seconds(1396951200 + minute * 60 + second));
    unsigned long milliseconds = 0;
    droTime::GetRemainingTimeWithClock(&milliseconds, static_cast<droTime::EMinutesStep>(step));
    return milliseconds;
  };
  EXPECT_EQ(remaining(7, 30, 5), 150000U);
  EXPECT_EQ(remaining(56, 0, 7), 420000U) << "a whole step on the step itself";
  EXPECT_EQ(remaining(57, 0, 7), 180000U) << "the full hour is a step of every clock";
  EXPECT_EQ(remaining(7, 30, 61), 3150000U);
  EXPECT_EQ(remaining(7, 30, 0), 30000U);
}
