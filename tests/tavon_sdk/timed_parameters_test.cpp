// The types that act on their own value after a time, under a clock that the test advances.
#include <gmock/gmock.h>

#include "object_lock.h"
#include "tav_parametershutter.h"
#include "tav_parameterswitchrelease.h"
#include "test_clock.h"

namespace tavon {
namespace {

using std::chrono::milliseconds;
using testing::AllOf;
using testing::EndsWith;
using testing::Ge;
using testing::Le;

struct TimedParameters : testing::Test {
  // Lets time pass while a parameter looks at its value four times a second.
  void Pass(milliseconds time) {
    const milliseconds step{50};
    for (clock.AwaitSleepers(1); time > milliseconds(0) && !HasFatalFailure(); time -= step) {
      clock.Advance(step);
      clock.AwaitSleepers(1);
    }
  }
  TestClock clock{TestClock::Utc(2014, 4, 8, 10, 0, 0)};
};

// Counts its stops.
struct Shutter : tavParameterShutter {
  ~Shutter() override { term_thread(); }
  void OnStop() override {
    EXPECT_EQ(GetValue(), 2) << "told when it has stopped";
    EXPECT_TRUE(ObjectLock::BecomesFree(*this)) << "told without the lock";
    ++stops;
  }
  int stops = 0;
};

struct TavParameterShutter : TimedParameters {
  // Commands the shutter to move. The milliseconds until it stops itself.
  milliseconds::rep TravelOf(unsigned char command) {
    const milliseconds step{50};
    milliseconds time{0};
    for (shutter.SetValue(command); shutter.GetValue() == command && !HasFatalFailure(); time += step)
      Pass(step);
    return time.count();
  }
  Shutter shutter;
};

TEST_F(TavParameterShutter, StopsAfterItsActionTime) {
  shutter.SetActionTime(2000);
  EXPECT_THAT(TravelOf(1), AllOf(Ge(2000), Le(2250)));
  EXPECT_EQ(shutter.GetValue(), 2);
  EXPECT_EQ(shutter.stops, 1);
  EXPECT_TRUE(shutter.IsChangedByCallBack());
  shutter.SetValue(2);
  EXPECT_FALSE(shutter.IsChangedByCallBack());
  EXPECT_THAT(shutter.SerializeParametersAsXml(), EndsWith("<value>2</value><ms_time>2000</ms_time>"));
}

TEST_F(TavParameterShutter, TravelsAnewAfterAChangeOfDirectionOnly) {
  shutter.SetActionTime(2000);
  shutter.SetValue(0);
  EXPECT_EQ(shutter.GetValue(), 1);
  Pass(milliseconds(1500));
  shutter.SetValue(9);
  EXPECT_EQ(shutter.GetValue(), 3);
  Pass(milliseconds(1500));
  EXPECT_THAT(TravelOf(3), AllOf(Ge(500), Le(750))) << "not prolonged by the same command";
}

TEST_F(TavParameterShutter, StopsAtOnceWithoutAnActionTime) { EXPECT_THAT(TravelOf(3), Le(250)); }

TEST_F(TavParameterShutter, StopsWhenTheCommandComesLongAfterItWasMade) {
  shutter.SetActionTime(2000);
  clock.AwaitSleepers(1);
  clock.Advance(milliseconds(630));
  clock.AwaitSleepers(0);  // a shutter that has nothing to do waits for no moment
  EXPECT_THAT(TravelOf(3), AllOf(Ge(2000), Le(2250)));
}

// Counts its releases.
struct SwitchRelease : tavParameterSwitchRelease {
  ~SwitchRelease() override { term_thread(); }
  void OnSafeValue() override {
    EXPECT_TRUE(ObjectLock::BecomesFree(*this)) << "told without the lock";
    ++releases;
  }
  int releases = 0;
};

struct TavParameterSwitchRelease : TimedParameters {
  SwitchRelease release;
};

TEST_F(TavParameterSwitchRelease, ReleasesAfterItsSafeTime) {
  release.SetSafeTime(2000);
  release.SetValue(1);
  Pass(milliseconds(500));
  release.SetValue(1);  // starts the time anew
  Pass(milliseconds(1950));
  EXPECT_EQ(release.GetValue(), 1);
  Pass(milliseconds(300));
  EXPECT_EQ(release.GetValue(), 0);
  EXPECT_EQ(release.releases, 1);
}

TEST_F(TavParameterSwitchRelease, ReleasesToOneWhenItIsInverted) {
  release.IsInverted(true);
  release.SetValue(0);  // before anything watches: a switch at rest since 1970 is released at once
  release.SetSafeTime(1000);
  Pass(milliseconds(1300));
  EXPECT_EQ(release.GetValue(), 1);
  EXPECT_EQ(release.releases, 1);
  EXPECT_TRUE(release.IsInverted());
  EXPECT_THAT(release.SerializeParametersAsXml(),
              EndsWith("<value>1</value><invert>1</invert><ms_time>1000</ms_time>"));
}

TEST_F(TavParameterSwitchRelease, NeverReleasesAgainOnceItWasStopped) {
  SwitchRelease stopped;
  stopped.SetSafeTime(1000);
  stopped.SetSafeTime(999);
  stopped.SetSafeTime(3000);
  stopped.SetValue(1);
  release.SetSafeTime(1000);
  Pass(milliseconds(4000));
  EXPECT_EQ(stopped.GetSafeTime(), 3000U);
  EXPECT_EQ(stopped.GetValue(), 1);
}

}  // namespace
}  // namespace tavon
