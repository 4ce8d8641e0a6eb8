#include "dro_time.h"

#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/time.h>
#include <time.h>

#include <optional>

namespace {

// The instant that the clock functions of this program show; without one they show the time.
std::optional<timeval> shownTime;

timeval ShownTime() {
  if (shownTime) return *shownTime;
  timespec now{};
  clock_gettime(CLOCK_REALTIME, &now);
  return {now.tv_sec, static_cast<decltype(timeval::tv_usec)>(now.tv_nsec / 1000)};
}

}  // namespace

extern "C" int gettimeofday(timeval* o_now, void*) noexcept {
  *o_now = ShownTime();
  return 0;
}

extern "C" time_t time(time_t* o_now) noexcept {
  const time_t now = ShownTime().tv_sec;
  if (o_now != nullptr) *o_now = now;
  return now;
}

namespace dro {
namespace {

constexpr time_t kTenOClock = 1396951200;  // Tuesday, 8 April 2014

class DroTime : public testing::Test {
 protected:
  DroTime() { setenv("TZ", "UTC0", 1); }
  ~DroTime() override {
    unsetenv("TZ");
    shownTime.reset();
  }
};

TEST_F(DroTime, MillisecondsWrapAndExtendWithTheirSign) {
  unsigned long long extended = 0;
  shownTime = {1396952102, 123999};
  EXPECT_EQ(droTime::GetTime(), 1087730923U);
  droTime::GetHiResTime(&extended);
  EXPECT_EQ(extended, 1087730923U);
  shownTime = {1398152102, 123999};
  EXPECT_EQ(droTime::GetTime(), 2287730923U);
  droTime::GetHiResTime(&extended);
  EXPECT_EQ(extended, 18446744071702315243U);
  droTime::GetTimePerSecond(&extended);
  EXPECT_EQ(extended, 1000000U);
}

TEST_F(DroTime, DateCountsFromZeroInPartsAndFromOneInTheStructure) {
  shownTime = {kTenOClock + 902, 0};
  EXPECT_EQ(droTime::GetCurrentTime(), kTenOClock + 902);
  EXPECT_EQ(droTime::GetDateTime(), "Tue Apr  8 10:15:02 2014");

  int parts[8];
  droTime::GetDateTime(&parts[0], &parts[1], &parts[2], &parts[3], &parts[4], &parts[5], &parts[6],
                       &parts[7]);
  const int expected[] = {2014, 97, 3, 8, 2, 10, 15, 2};
  for (int i = 0; i < 8; ++i)
    EXPECT_EQ(parts[i], expected[i]) << i;
  droTime::GetDateTime(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);

  droTime::droDateTime now;
  droTime::GetDateTime(&now);
  EXPECT_EQ(now.dayOfYear, 98);
  EXPECT_EQ(now.month, 4);
  EXPECT_EQ(now.day, 8);
  EXPECT_EQ(now.dayOfWeek, 3);
  droTime::GetDateTime(nullptr);
}

TEST_F(DroTime, CustomTimeBeginsIn1900) {
  EXPECT_EQ(droTime::GetCustomTime(2014, 4, 8, 10, 0, 0), kTenOClock);
  EXPECT_EQ(droTime::GetCustomTime(1850, 1, 1, 0, 0, 0), droTime::GetCustomTime(1900, 1, 1, 0, 0, 0));
}

TEST_F(DroTime, RemainingTimeEndsAtTheNextStepOfTheClock) {
  const struct {
    int minute;
    int second;
    int step;
    unsigned long remaining;
  } rows[] = {{7, 30, 5, 150000}, {10, 0, 5, 300000},  {7, 0, 5, 180000},    {59, 59, 60, 1000},
              {7, 30, 7, 390000}, {57, 0, 7, 180000},  {7, 30, 61, 3150000}, {7, 30, 0, 30000},
              {7, 30, -5, 30000}, {0, 0, 60, 3600000}, {0, 0, 0, 60000}};
  for (const auto& row : rows) {
    shownTime = {kTenOClock + row.minute * 60 + row.second, 0};
    unsigned long remaining = 0;
    droTime::GetRemainingTimeWithClock(&remaining, static_cast<droTime::EMinutesStep>(row.step));
    EXPECT_EQ(remaining, row.remaining) << row.minute << ':' << row.second << " by " << row.step;
  }
  droTime::GetRemainingTimeWithClock(nullptr, droTime::MinutesStep_5);
}

TEST_F(DroTime, SecondsAreSplit) {
  unsigned int hours = 0;
  unsigned char minutes = 0;
  unsigned char seconds = 0;
  droTime::FormatSeconds(4294967295U, &hours, &minutes, &seconds);
  EXPECT_EQ(hours, 1193046U);
  EXPECT_EQ(minutes, 28);
  EXPECT_EQ(seconds, 15);
  droTime::FormatSeconds(1, nullptr, nullptr, nullptr);
}

}  // namespace
}  // namespace dro
