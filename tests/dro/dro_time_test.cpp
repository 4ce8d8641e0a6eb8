#include "dro_time.h"

#include <gmock/gmock.h>

#include <array>

#include "test_clock.h"

using dro::droTime;
using testing::ElementsAre;

namespace {

struct DroTime : testing::Test {
  DroTime() { setenv("TZ", "UTC0", 1); }
  TestClock clock{TestClock::Utc(2014, 4, 22, 7, 35, 2) + TestClock::Moment(123999)};
};

TEST_F(DroTime, ExtendsTheMillisecondsWithTheirSign) {
  unsigned long long milliseconds = 0;
  droTime::GetHiResTime(&milliseconds);
  EXPECT_EQ(milliseconds, 0xFFFFFFFF00000000 + 2287730923U);
}

TEST_F(DroTime, StepEndsAtTheNextMultipleOfItsMinutes) {
  const struct {
    const char* name;
    int minute, second, step;
    unsigned long seconds;
  } cases[] = {
      {"within a step", 7, 30, 5, 150},    {"on the step itself", 56, 0, 7, 420},
      {"at the full hour", 57, 0, 7, 180}, {"longer than an hour", 7, 30, 61, 3150},
      {"of no minutes", 7, 30, 0, 30},
  };
  for (const auto& c : cases) {
    clock.JumpTo(TestClock::Utc(2014, 4, 22, 7, c.minute, c.second));
    unsigned long milliseconds = 0;
    droTime::GetRemainingTimeWithClock(&milliseconds, static_cast<droTime::EMinutesStep>(c.step));
    EXPECT_EQ(milliseconds, c.seconds * 1000) << c.name;
  }
}

TEST_F(DroTime, TakesSecondsApartIntoWhatIsWanted) {
  unsigned int hours = 0;
  unsigned char minutes = 0, seconds = 0;
  droTime::FormatSeconds(100 * 3600 + 2 * 60 + 5, &hours, nullptr, nullptr);
  droTime::FormatSeconds(100 * 3600 + 2 * 60 + 5, nullptr, &minutes, nullptr);
  droTime::FormatSeconds(100 * 3600 + 2 * 60 + 5, nullptr, nullptr, &seconds);
  EXPECT_EQ(hours, 100U);
  EXPECT_EQ(minutes, 2);
  EXPECT_EQ(seconds, 5);
}

}  // namespace
