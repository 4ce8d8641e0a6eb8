#include <array>
#include <chrono>

#include "dro_time.h"
#include "model_test.h"
#include "tav_time.h"
#include "test_clock.h"

using std::chrono_literals::operator""ms;
using Moment = TestClock::Moment;

namespace {

// Its set-points are their day (0 is Monday) times 100 plus their hour.
struct Schedule : tavParameterThermoChronoWeek {
  Schedule() {
    tavString text = "0";
    for (int i = 0; i < 168; ++i) text += "," + tavString::FromInt(i / 24 * 100 + i % 24);
    tavParameterThermoChronoWeek::SetDataFromString(this, text);
  }
  ~Schedule() override { term_thread(); }
  void OnChangeTemperature() override { record.push_back(GetCurrentTemperature()); }
  // Sets the clock, lets the thread look at it, and tells whether this was applied since the last question.
  void ExpectAt(TestClock& clock, Moment moment, const std::vector<float>& applied) {
    TestClock::AwaitSleepers(1);
    clock.JumpTo(moment);
    TestClock::AwaitSleepers(1);
    EXPECT_EQ(std::exchange(record, {}), applied) << moment.count();
  }
  std::vector<float> record;  // handed from thread to thread by the clock
};

Moment At(int year, int month, int day, int hour, int minute, int second, int milliseconds = 0) {
  return TestClock::Utc(year, month, day, hour, minute, second) + std::chrono::milliseconds(milliseconds);
}

TEST(TavParameterThermoChronoWeek, AppliesTheNextHourASecondEarly) {
  setenv("TZ", "UTC0", 1);
  const struct {
    Moment start, due;
    unsigned int offset;
    float present, setPoint, next;
  } cases[] = {
      // In the second of lead the next hour is the one just applied, and comes again: intended.
      {At(2014, 4, 8, 10, 15, 30), At(2014, 4, 8, 10, 59, 59), 0, 110, 111, 111},  // a Tuesday
      {At(2014, 4, 8, 10, 59, 59), At(2014, 4, 8, 11, 59, 59), 0, 110, 111, 112},
      {At(2014, 4, 8, 10, 0, 0, 700), At(2014, 4, 8, 11, 0, 0, 700), 1000, 110, 111, 112},
      {At(2014, 4, 8, 22, 0, 0), At(2014, 4, 8, 22, 0, 0, 999), 0xFFFFFFFF - 3598000, 122, 123, 123},
      {At(2014, 4, 5, 23, 59, 58), At(2014, 4, 5, 23, 59, 59), 0, 523, 600, 600},    // to Sunday
      {At(2014, 4, 6, 23, 0, 0), At(2014, 4, 7, 0, 0, 4), 5000, 623, 0, 1},          // to Monday
      {At(2039, 12, 31, 23, 0, 0), At(2039, 12, 31, 23, 59, 59), 0, 523, 600, 600},  // beyond 32-bit time
  };
  for (const auto& c : cases) {
    TestClock clock(c.start);
    Schedule schedule;
    schedule.SetOffsetTime(c.offset);
    schedule.SetActive(1);
    schedule.ExpectAt(clock, c.start, {c.present});
    schedule.ExpectAt(clock, c.due - 1ms, {});
    schedule.ExpectAt(clock, c.due, {c.setPoint});
    schedule.ExpectAt(clock, c.due - 1ms, {c.next});  // a clock set back is taken for one that ran on
    schedule.SetActive(0);
    schedule.ExpectAt(clock, c.due + std::chrono::hours(24), {});
  }
}

TEST(TavParameterThermoChronoWeek, TellsTheSetPointsOfADay) {
  Schedule schedule;
  schedule.SetDataFromString("0");  // on or off: the set-points stay
  std::array<float, 24> points{};
  for (int day = 0; day < 9; ++day) {  // 0 and 8 are none
    schedule.GetDay(static_cast<Schedule::EDays>(1 << day), points.data());
    EXPECT_EQ(points[23], day == 0 ? 0 : day == 8 ? 623 : 100 * day - 77) << day;
  }
  ExpectThrownReport(schedule, [&] { schedule.GetDay(Schedule::Days_Monday, nullptr); });
}

TEST(Time, IsTakenApartAlike) {
  unsigned long seconds = 0, hours = 0;
  long microseconds = 0;
  unsigned int droHours = 0;
  unsigned char parts[4];
  const TestClock clock(At(2014, 4, 8, 10, 15, 2) + Moment(7));
  EXPECT_EQ(tavTime::GetDateTime(), "Tue Apr  8 10:15:02 2014\n") << "with its line feed: intended";
  tavTime::GetTime(&seconds, &microseconds);
  tavTime::FormatSeconds(seconds, &hours, &parts[0], &parts[1]);
  dro::droTime::FormatSeconds(1396952102, &droHours, &parts[2], &parts[3]);
  EXPECT_TRUE(hours == 388042 && droHours == hours && microseconds == 7);
  EXPECT_TRUE(parts[0] == 15 && parts[1] == 2 && parts[2] == 15 && parts[3] == 2);
}

}  // namespace
