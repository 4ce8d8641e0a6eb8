// The two clock classes, tavTime of the SDK and droTime of the OS library: what both do alike, checked for
// each, and what only one of them knows; and VTime, which both read the machine's clock with.
#include <gmock/gmock.h>

#include <array>

#include "dro_time.h"
#include "tav_time.h"
#include "test_clock.h"
#include "vtime.h"

using dro::droTime;
using tavon::tavTime;
using testing::ElementsAre;

namespace {

// A Tuesday in summer time, at 10:15:02 local time.
template <class Library>
struct BothClocks : testing::Test {
  BothClocks() { setenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3", 1); }
  TestClock clock{TestClock::Utc(2014, 4, 8, 8, 15, 2) + TestClock::Moment(123999)};
};
using Libraries = testing::Types<tavTime, droTime>;
TYPED_TEST_SUITE(BothClocks, Libraries);
using Clocks = BothClocks<void>;

TYPED_TEST(BothClocks, CountTheMonthsOfTodayFromZero) {
  std::array<int, 8> parts{};
  auto& [year, yearDay, month, monthDay, weekDay, hour, minute, second] = parts;
  TypeParam::GetDateTime(&year, &yearDay, &month, &monthDay, &weekDay, &hour, &minute, &second);
  EXPECT_THAT(parts, ElementsAre(2014, 97, 3, 8, 2, 10, 15, 2));
  TypeParam::GetDateTime(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
}

TYPED_TEST(BothClocks, CountTheMonthsOfACustomTimeFromOne) {
  EXPECT_EQ(TypeParam::GetCustomTime(2014, 4, 8, 10, 15, 2), TypeParam::GetCurrentTime());
  EXPECT_EQ(TypeParam::GetCustomTime(1899, 1, 2, 0, 0, 0), TypeParam::GetCustomTime(1900, 1, 2, 0, 0, 0));
  EXPECT_LT(TypeParam::GetCustomTime(1900, 1, 2, 0, 0, 0), TypeParam::GetCustomTime(1901, 1, 2, 0, 0, 0));
}

TYPED_TEST(BothClocks, TakeSecondsApart) {
  std::conditional_t<std::is_same_v<TypeParam, tavTime>, unsigned long, unsigned int> hours = 0;
  unsigned char minutes = 0, seconds = 0;
  TypeParam::FormatSeconds(100000 * 3600 + 2 * 60 + 5, &hours, &minutes, &seconds);
  EXPECT_EQ(hours, 100000U);
  EXPECT_EQ(minutes, 2);
  EXPECT_EQ(seconds, 5);
  TypeParam::FormatSeconds(5, nullptr, nullptr, nullptr);
}

TEST_F(Clocks, EndTheirTextWithALineFeedInTheSdkOnly) {
  EXPECT_EQ(tavTime::GetDateTime(), "Tue Apr  8 10:15:02 2014\n");
  EXPECT_EQ(droTime::GetDateTime(), "Tue Apr  8 10:15:02 2014");
  clock.JumpTo(TestClock::Utc(10000, 1, 1, 0, 0, 0));
  EXPECT_EQ(droTime::GetDateTime(), "Sat Jan  1 01:00:00 10000") << "with all digits of the year";
}

TEST_F(Clocks, NameDaysAndMonthsInTheirText) {
  std::string names;
  for (int month = 1; month <= 12; ++month) {
    clock.JumpTo(TestClock::Utc(2014, month, 1, 12, 0, 0));
    names += tavTime::GetDateTime().substr(0, 8);
  }
  EXPECT_EQ(names,
            "Wed Jan Sat Feb Sat Mar Tue Apr Thu May Sun Jun "
            "Tue Jul Fri Aug Mon Sep Wed Oct Sat Nov Mon Dec ");
}

TEST_F(Clocks, CountFromOneInTheStructureOfTheOsLibrary) {
  droTime::droDateTime d;
  droTime::GetDateTime(&d);
  EXPECT_THAT((std::array{d.year, d.dayOfYear, d.month, d.day, d.dayOfWeek, d.hour, d.minute, d.second}),
              ElementsAre(2014, 98, 4, 8, 3, 10, 15, 2));
}

TEST_F(Clocks, WrapTheirMillisecondsAtThirtyTwoBits) {
  EXPECT_EQ(tavTime::GetTime(), 1080530923U);
  EXPECT_EQ(droTime::GetTime(), 1080530923U);
  clock.JumpTo(TestClock::Utc(2014, 4, 22, 7, 35, 2));
  unsigned long long milliseconds = 0, rate = 0;
  droTime::GetHiResTime(&milliseconds);
  EXPECT_EQ(milliseconds, 0xFFFFFFFF00000000 + 2287730800U) << "extended with their sign";
  droTime::GetTimePerSecond(&rate);
  EXPECT_EQ(rate, 1000000U) << "although it counts milliseconds: callers know both";
}

TEST_F(Clocks, WrapTheirSecondsAtThirtyTwoBits) {
  clock.JumpTo(TestClock::Moment(4294967301000007));  // in the year 2106
  EXPECT_EQ(VTime::Time(), 5000U);
  EXPECT_EQ(VTime::TimeUS(), 4294967301000007U);
  using Reading = void (*)(unsigned long* o_seconds, long* o_microseconds);
  for (const Reading time : {Reading{VTime::Time}, Reading{tavTime::GetTime}}) {
    unsigned long seconds = 0;
    long microseconds = 0;
    time(&seconds, nullptr);
    time(nullptr, &microseconds);
    EXPECT_EQ(seconds, 5U);
    EXPECT_EQ(microseconds, 7);
  }
}

TEST_F(Clocks, TellHowLongItIsToTheNextMultipleOfAStep) {
  const auto remaining = [this](int minute, int second, int step) {
    clock.JumpTo(TestClock::Utc(2014, 4, 8, 8, minute, second));
    unsigned long milliseconds = 0;
    droTime::GetRemainingTimeWithClock(&milliseconds, static_cast<droTime::EMinutesStep>(step));
    return milliseconds;
  };
  EXPECT_EQ(remaining(7, 30, droTime::MinutesStep_5), 150000U);
  EXPECT_EQ(remaining(56, 0, 7), 420000U) << "a whole step when one has just begun";
  EXPECT_EQ(remaining(57, 0, 7), 180000U) << "the full hour ends every step";
  EXPECT_EQ(remaining(7, 30, 61), 3150000U);
  EXPECT_EQ(remaining(7, 30, 0), 30000U);
}

}  // namespace
