#include "tav_parameterthermochronoweek.h"

#include <gmock/gmock.h>

#include <array>

#include "object_lock.h"
#include "test_clock.h"

namespace tavon {
namespace {

using std::chrono::hours;
using std::chrono::microseconds;
using std::chrono::seconds;
using testing::ElementsAre;

// A set-point tells its day (0 is Monday) and hour.
constexpr float SetPointOf(int day, int hour) { return static_cast<float>(day * 100 + hour); }

// Notes the set-points that are applied.
struct Schedule : tavParameterThermoChronoWeek {
  Schedule() {
    tavString text = "0";
    for (int hour = 0; hour < 7 * 24; ++hour)
      text += "," + tavString::FromFloat(SetPointOf(hour / 24, hour % 24), 2);
    SetDataFromString(text);
  }
  ~Schedule() override { term_thread(); }
  void OnChangeTemperature() override {
    EXPECT_TRUE(ObjectLock::BecomesFree(*this)) << "told without the lock";
    applied.push_back(GetCurrentTemperature());
  }
  std::vector<float> applied;
};

// Schedules that are made at a moment and look at a clock, once a second, that the test sets.
struct TavParameterThermoChronoWeek : testing::Test {
  TavParameterThermoChronoWeek() { setenv("TZ", "UTC0", 1); }
  void PassTo(microseconds moment) {
    clock.AwaitSleepers(1);
    clock.JumpTo(moment);
    clock.AwaitSleepers(1);
  }
  const microseconds start = TestClock::Utc(2014, 4, 8, 10, 15, 30);  // a Tuesday
  const microseconds lead = TestClock::Utc(2014, 4, 8, 10, 59, 59);   // the second before the next hour
  TestClock clock{start};
  Schedule schedule;
};

TEST_F(TavParameterThermoChronoWeek, AppliesTheNextHourASecondEarly) {
  schedule.SetActive(1);
  PassTo(lead - seconds(1));
  EXPECT_THAT(schedule.applied, ElementsAre(SetPointOf(1, 10)));
  PassTo(lead);
  EXPECT_THAT(schedule.applied, ElementsAre(SetPointOf(1, 10), SetPointOf(1, 11)));
}

TEST_F(TavParameterThermoChronoWeek, AppliesTheSameHourAgainAfterAFiringWithinTheSecondBeforeIt) {
  schedule.SetActive(1);
  PassTo(lead);
  PassTo(lead + hours(1) - seconds(1));
  PassTo(lead + hours(1));
  PassTo(lead + hours(2));
  EXPECT_THAT(schedule.applied,
              ElementsAre(SetPointOf(1, 10), SetPointOf(1, 11), SetPointOf(1, 11), SetPointOf(1, 12)));
}

TEST_F(TavParameterThermoChronoWeek, AppliesTheNextHourLaterByItsOffset) {
  schedule.SetOffsetTime(5000);
  schedule.SetActive(1);
  PassTo(lead + seconds(4));
  EXPECT_THAT(schedule.applied, ElementsAre(SetPointOf(1, 10)));
  PassTo(lead + seconds(5));
  EXPECT_THAT(schedule.applied, ElementsAre(SetPointOf(1, 10), SetPointOf(1, 11)));
}

TEST_F(TavParameterThermoChronoWeek, AppliesNothingWhileItIsOff) {
  PassTo(lead);
  schedule.SetDataFromString("0");
  PassTo(lead + hours(1));
  EXPECT_THAT(schedule.applied, ElementsAre());
  EXPECT_EQ(schedule.GetCurrentTemperature(), 0);
}

TEST_F(TavParameterThermoChronoWeek, AppliesThePresentHourWhenItIsSwitchedOn) {
  schedule.SetDataFromString("1");  // one number keeps the set-points
  EXPECT_THAT(schedule.applied, ElementsAre(SetPointOf(1, 10)));
}

TEST(TavParameterThermoChronoWeekText, HasZerosWithoutDecimals) {
  tavString text = "0";
  for (int hour = 0; hour < 7 * 24; ++hour) text += ",0";
  EXPECT_EQ(tavParameterThermoChronoWeek().ValueToString(), text);
}

TEST_F(TavParameterThermoChronoWeek, TellsTheSetPointsOfADay) {
  std::array<float, 24> points{};
  for (int day = 0; day < 7; ++day) {
    schedule.GetDay(static_cast<Schedule::EDays>(2 << day), points.data());
    for (int hour = 0; hour < 24; ++hour)
      EXPECT_EQ(points[static_cast<std::size_t>(hour)], SetPointOf(day, hour)) << "day " << day;
  }
}

TEST_F(TavParameterThermoChronoWeek, TellsNothingOfWhatIsNoDay) {
  float untouched = 7;
  for (const int noDay : {0, 1, 6, 256}) schedule.GetDay(static_cast<Schedule::EDays>(noDay), &untouched);
  EXPECT_EQ(untouched, 7);
}

TEST_F(TavParameterThermoChronoWeek, ReportsAMissingBufferForADay) {
  ExpectUnlockedAfterThrow(schedule, [&] { schedule.GetDay(Schedule::Days_Monday, nullptr); });
}

}  // namespace
}  // namespace tavon
