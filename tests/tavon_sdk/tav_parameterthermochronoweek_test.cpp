#include "tav_parameterthermochronoweek.h"

#include <gmock/gmock.h>

#include <climits>
#include <functional>
#include <stdexcept>

#include "captured_output.h"
#include "object_lock.h"
#include "tav_parameterfactory.h"
#include "test_clock.h"

namespace tavon {
namespace {

using std::chrono::hours;
using std::chrono::microseconds;
using std::chrono::seconds;
using testing::Each;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;

// A set-point tells its day (0 is Monday) and hour.
constexpr float SetPointOf(int day, int hour) { return static_cast<float>(day * 100 + hour); }

// Notes the set-points that are applied, and then does what the test wants.
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
    onChange();
  }
  std::vector<float> applied;
  std::function<void()> onChange = [] {};
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

TEST_F(TavParameterThermoChronoWeek, AppliesTheSameHourAgainAfterAFiringWithinTheSecondBeforeIt) {
  schedule.SetActive(1);
  PassTo(lead - seconds(1));
  EXPECT_THAT(schedule.applied, ElementsAre(SetPointOf(1, 10)));
  PassTo(lead);
  PassTo(lead + hours(1) - seconds(1));
  PassTo(lead + hours(1));
  PassTo(lead + hours(2));
  EXPECT_THAT(schedule.applied,
              ElementsAre(SetPointOf(1, 10), SetPointOf(1, 11), SetPointOf(1, 11), SetPointOf(1, 12)));
}

TEST_F(TavParameterThermoChronoWeek, AppliesEveryHourOfAWeekOnceWithAnOffsetOfElevenHundredMilliseconds) {
  schedule.SetOffsetTime(1100);
  EXPECT_EQ(schedule.GetOffsetTime(), 1100U);
  schedule.SetDataFromString("1");
  std::vector<float> everyHour{SetPointOf(1, 10)};
  for (int hour = 35; hour < 35 + 7 * 24; ++hour) {  // of the week, from Tuesday at 11 o'clock on
    everyHour.push_back(SetPointOf(hour / 24 % 7, hour % 24));
    const microseconds begin = lead + hours(hour - 35) - seconds(1);
    // The looks of its thread drift: each is a little more than a second after the one before.
    for (int look = 0; look < 6; ++look) PassTo(begin + look * microseconds(1000700));
  }
  EXPECT_THAT(schedule.applied, ElementsAreArray(everyHour));
}

// On purpose: it takes the time that it waits for from the clock once an hour.
TEST_F(TavParameterThermoChronoWeek, AppliesTheHourItWaitedForWhenTheClockIsSetForwardPastIt) {
  schedule.SetActive(1);
  PassTo(start + hours(2));
  EXPECT_THAT(schedule.applied, ElementsAre(SetPointOf(1, 10), SetPointOf(1, 11)));
  PassTo(lead + hours(2));
  EXPECT_THAT(schedule.applied, ElementsAre(SetPointOf(1, 10), SetPointOf(1, 11), SetPointOf(1, 13)));
}

TEST_F(TavParameterThermoChronoWeek, GoesOnAfterAHookThatThrows) {
  schedule.SetActive(1);
  schedule.onChange = [] { throw std::runtime_error("hook"); };
  const std::string printed = CapturedOutput([this] {
    PassTo(lead);
    PassTo(lead + hours(1));
  });
  EXPECT_THAT(schedule.applied, testing::SizeIs(3));
  EXPECT_THAT(printed, HasSubstr("Exception on a parameter's thread: hook\n"));
}

TEST_F(TavParameterThermoChronoWeek, CountsHoursOnFromTheBeginningOfTheirDay) {
  schedule.SetActive(1);
  schedule.update_temperature(0, 25);
  EXPECT_EQ(schedule.GetCurrentTemperature(), SetPointOf(1, 1));
  schedule.update_temperature(6, -1);
  EXPECT_EQ(schedule.GetCurrentTemperature(), SetPointOf(5, 23));
  schedule.applied.clear();
  schedule.update_temperature(6, 24);
  schedule.update_temperature(0, -1);
  schedule.update_temperature(INT_MAX, INT_MAX);
  EXPECT_THAT(schedule.applied, ElementsAre()) << "hours that no week has";
}

TEST_F(TavParameterThermoChronoWeek, TellsTheSetPointsOfADay) {
  float points[24] = {};
  for (int day = 0; day < 7; ++day) {
    schedule.GetDay(static_cast<Schedule::EDays>(2 << day), points);
    for (int hour = 0; hour < 24; ++hour) EXPECT_EQ(points[hour], SetPointOf(day, hour)) << "day " << day;
  }
  for (const int noDay : {0, 1, 6, 256}) schedule.GetDay(static_cast<Schedule::EDays>(noDay), points);
  EXPECT_EQ(points[0], SetPointOf(6, 0)) << "untouched";
  // The record must be thrown: the null pointer would be written through.
  ExpectUnlockedAfterThrow(schedule,
                           {6, "tav_parameterthermochronoweek", "GetDay", "o_float_buffer_24 == 0", 241},
                           [this] { schedule.GetDay(Schedule::Days_Monday, nullptr); });
}

TEST_F(TavParameterThermoChronoWeek, AppliesNothingWhileItIsOff) {
  PassTo(lead);
  schedule.SetDataFromString("0");
  PassTo(lead + hours(1));
  EXPECT_THAT(schedule.applied, ElementsAre());
  EXPECT_EQ(schedule.GetCurrentTemperature(), 0);
}

using Bytes = std::vector<unsigned char>;

constexpr std::size_t kWeekSize = 673;

// The bytes of a schedule, stored over those of an earlier one.
Bytes Encode(const tavString& text) {
  Bytes schedule(kWeekSize, 9);
  tavParameterFactory::StringToData(tavObject_ParameterThermoChronoWeek, text, &schedule);
  return schedule;
}

TEST(EncodedWeek, KeepsItsSetPointsWhenTheTextIsASingleNumber) {
  const Bytes schedule = Encode("1");
  EXPECT_EQ(schedule[0], 1);
  EXPECT_THAT(Bytes(schedule.begin() + 1, schedule.end()), Each(9));
}

TEST(EncodedWeek, LosesAllSetPointsWhenTheTextIsAList) {
  const Bytes schedule = Encode("1,,");
  EXPECT_EQ(schedule[0], 1);
  EXPECT_THAT(Bytes(schedule.begin() + 1, schedule.end()), Each(0));
}

TEST(EncodedWeek, HasAllSetPointsOfTheWeekAndDropsWhatComesAfterThem) {
  tavString list = "x";
  for (int setPoint = 1; setPoint <= 200; ++setPoint) list += "," + tavString::FromInt(setPoint);
  Bytes bytes(kWeekSize + 1, 9);
  tavParameterThermoChronoWeek::GetBinaryDataFromString(list, bytes.data());
  EXPECT_THAT(Bytes(bytes.end() - 5, bytes.end()), ElementsAre(0, 0, 0x28, 0x43, 9))
      << "168.0, and untouched";
}

}  // namespace
}  // namespace tavon
