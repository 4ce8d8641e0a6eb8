// A week of the schedule, hour by hour, as its thread sees it on a real machine: each look comes a little
// late.
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <numeric>

#include "tav_parameterthermochronoweek.h"
#include "test_clock.h"

using std::chrono_literals::operator""us;
using std::chrono_literals::operator""s;
using std::chrono_literals::operator""min;

namespace tavon {
namespace {

constexpr int kHoursOfAWeek = 168;

// Its set-points are the hours of the week, counted from Monday.
struct CountingSchedule : tavParameterThermoChronoWeek {
  CountingSchedule() {
    tavString text = "1";
    for (int hour = 0; hour < kHoursOfAWeek; ++hour) text += "," + tavString::FromInt(hour);
    tavParameterThermoChronoWeek::SetDataFromString(this, text);
  }
  ~CountingSchedule() override { term_thread(); }
  void OnChangeTemperature() override { applied.push_back(GetCurrentTemperature()); }
  std::vector<float> applied;  // handed from thread to thread by the clock
};

// Lets time pass, and the schedule look at it.
void Pass(TestClock& clock, std::chrono::microseconds time) {
  TestClock::AwaitSleepers(1);
  clock.Advance(time);
  TestClock::AwaitSleepers(1);
}

TEST(ScheduleWeek, AppliesEveryHourExactlyOnceWithAnOffsetOfElevenHundredMilliseconds) {
  setenv("TZ", "UTC0", 1);
  constexpr auto kLook = 1s + 700us;
  constexpr int kLooksAroundTheHour = 6;
  TestClock clock(TestClock::Utc(2014, 4, 7, 0, 59, 57));  // a Monday
  CountingSchedule schedule;
  schedule.applied.clear();
  schedule.SetOffsetTime(1100);

  for (int hour = 0; hour < kHoursOfAWeek; ++hour) {
    for (int look = 0; look < kLooksAroundTheHour; ++look) Pass(clock, kLook);
    Pass(clock, 60min - kLooksAroundTheHour * kLook);
  }

  std::vector<float> everyHour(kHoursOfAWeek);
  std::iota(everyHour.begin(), everyHour.end() - 1, 1.0F);  // and Monday's first, 0, comes last
  EXPECT_EQ(schedule.applied, everyHour);
}

}  // namespace
}  // namespace tavon
