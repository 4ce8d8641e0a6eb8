// The types that act on their own value after a time, under a clock that the test advances.
#include <gmock/gmock.h>

#include <cerrno>
#include <functional>
#include <future>
#include <stdexcept>

#include "captured_output.h"
#include "expect_report.h"
#include "object_lock.h"
#include "system_calls.h"
#include "tav_parametershutter.h"
#include "tav_parameterswitchrelease.h"
#include "test_clock.h"

namespace tavon {
namespace {

using std::chrono::milliseconds;
using testing::AllOf;
using testing::EndsWith;
using testing::Ge;
using testing::HasSubstr;
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
  // A second before the milliseconds of the clock wrap, in May 2014; no look is at their 0.
  TestClock clock{milliseconds((326LL << 32) - 1010)};
};

// Counts its stops, and then does what the test wants, as it does when it has been set.
struct Shutter : tavParameterShutter {
  ~Shutter() override { term_thread(); }
  void SetData(const unsigned char* data, const unsigned int& size, unsigned char flag) override {
    tavParameterShutter::SetData(data, size, flag);
    onSetData();
  }
  void OnStop() override {
    EXPECT_EQ(GetValue(), 2) << "told when it has stopped";
    EXPECT_TRUE(ObjectLock::BecomesFree(*this)) << "told without the lock";
    ++stops;
    onStop();
  }
  int stops = 0;
  std::function<void()> onSetData = [] {}, onStop = [] {};
};

struct TavParameterShutter : TimedParameters {
  // A shutter that stands looks once more and then waits for no moment.
  void FallAsleep() {
    clock.AwaitSleepers(1);
    clock.Advance(milliseconds(630));
    clock.AwaitSleepers(0);
  }
  // Commands the shutter to move. The milliseconds until it stops itself.
  milliseconds::rep TravelOf(tavParameterShutter& shutter, unsigned char command) {
    const milliseconds step{50};
    milliseconds time{0};
    for (shutter.SetValue(command); shutter.GetValue() == command && !HasFatalFailure(); time += step)
      Pass(step);
    return time.count();
  }
};

TEST_F(TavParameterShutter, StopsAfterItsActionTime) {
  Shutter shutter;
  shutter.SetActionTime(2000);
  EXPECT_THAT(TravelOf(shutter, 1), AllOf(Ge(2000), Le(2250)));
  EXPECT_EQ(shutter.GetValue(), 2);
  EXPECT_EQ(shutter.stops, 1);
  EXPECT_TRUE(shutter.IsChangedByCallBack());
  shutter.SetValue(2);
  EXPECT_FALSE(shutter.IsChangedByCallBack());
  EXPECT_THAT(shutter.SerializeParametersAsXml(), EndsWith("<value>2</value><ms_time>2000</ms_time>"));
}

TEST_F(TavParameterShutter, TravelsAnewAfterAChangeOfDirectionOnly) {
  Shutter shutter;
  shutter.SetActionTime(2000);
  shutter.SetValue(0);
  EXPECT_EQ(shutter.GetValue(), 1);
  Pass(milliseconds(1500));
  shutter.SetValue(9);
  EXPECT_EQ(shutter.GetValue(), 3);
  Pass(milliseconds(1500));
  EXPECT_THAT(TravelOf(shutter, 3), AllOf(Ge(500), Le(750))) << "not prolonged by the same command";
}

// On purpose: its thread has not seen yet that it stands.
TEST_F(TavParameterShutter, StopsTheSameDirectionAtTheNextLookAfterItsOwnStop) {
  Shutter shutter;
  shutter.SetActionTime(2000);
  TravelOf(shutter, 1);
  EXPECT_THAT(TravelOf(shutter, 1), Le(250));
  Pass(milliseconds(250));
  EXPECT_THAT(TravelOf(shutter, 1), Ge(2000));
}

TEST_F(TavParameterShutter, StopsWhateverItsClassOverrides) {
  struct : Shutter {
    void IsDirty(bool dirty) override { tavObject::IsDirty(dirty); }
    bool IsDirty() const override { return tavObject::IsDirty(); }
    void SetData(const unsigned char* data, const unsigned int& size, unsigned char flag) override {
      // NOLINTNEXTLINE(bugprone-parent-virtual-call): whatever lies between is left out
      tavTParameter::SetData(data, size, flag);
    }
  } shutter;
  shutter.SetActionTime(2000);
  FallAsleep();
  EXPECT_THAT(TravelOf(shutter, 3), AllOf(Ge(2000), Le(2250)));
  shutter.term_thread();
}

TEST_F(TavParameterShutter, HasMadeTheChangeInOnStopEvenIfItsClassStoresNoStop) {
  struct : tavParameterShutter {
    void SetData(const unsigned char*, const unsigned int& size, unsigned char flag) override {
      const unsigned char direction = 3;
      tavParameterShutter::SetData(&direction, size, flag);
    }
    void OnStop() override { isChangedByThread = IsChangedByCallBack(); }
    bool isChangedByThread = false;
  } shutter;
  shutter.SetValue(3);
  Pass(milliseconds(300));
  shutter.term_thread();
  EXPECT_TRUE(shutter.isChangedByThread);
}

TEST_F(TavParameterShutter, GoesOnAfterAHookThatThrows) {
  Shutter shutter;
  shutter.onSetData = [&] {
    if (shutter.GetValue() == 2) throw std::runtime_error("set");
  };
  shutter.onStop = [] { throw std::runtime_error("hook"); };
  const std::string printed = CapturedOutput([&] {
    TravelOf(shutter, 1);
    TravelOf(shutter, 3);
  });
  EXPECT_EQ(shutter.stops, 2);
  EXPECT_THAT(printed, HasSubstr("Exception on a parameter's thread: set\n"));
  EXPECT_THAT(printed, HasSubstr("Exception on a parameter's thread: hook\n"));
}

TEST_F(TavParameterShutter, EndsItsThreadWhileThatSleeps) {
  Shutter shutter;
  FallAsleep();
  const auto ended = std::async(std::launch::async, [&] { shutter.term_thread(); });
  EXPECT_EQ(ended.wait_for(std::chrono::seconds(30)), std::future_status::ready) << "it still sleeps";
  shutter.SetValue(1);  // wakes it if nothing else has
}

// Counts its releases, and then does what the test wants, as it does when it has been set.
struct SwitchRelease : tavParameterSwitchRelease {
  ~SwitchRelease() override { term_thread(); }
  void SetData(const unsigned char* data, const unsigned int& size, unsigned char flag) override {
    tavParameterSwitchRelease::SetData(data, size, flag);
    onSetData();
  }
  void OnSafeValue() override {
    EXPECT_TRUE(ObjectLock::BecomesFree(*this)) << "told without the lock";
    ++releases;
    onSafeValue();
  }
  int releases = 0;
  std::function<void()> onSetData = [] {}, onSafeValue = [] {};
};

struct TavParameterSwitchRelease : TimedParameters {
  SwitchRelease release;
};

TEST_F(TavParameterSwitchRelease, ReleasesAfterItsSafeTime) {
  EXPECT_EQ(release.GetSafeTime(), 0U) << "which is never";
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

TEST_F(TavParameterSwitchRelease, ReleasesToOneAfterItsSafeTimeWhenItIsInverted) {
  release.IsInverted(true);
  release.SetValue(0);  // before anything watches: a switch at rest since 1970 is released at once
  release.SetSafeTime(1000);
  Pass(milliseconds(950));
  EXPECT_EQ(release.GetValue(), 0);
  Pass(milliseconds(300));
  EXPECT_EQ(release.GetValue(), 1);
  EXPECT_EQ(release.releases, 1);
  EXPECT_TRUE(release.IsInverted());
  EXPECT_THAT(release.SerializeParametersAsXml(),
              EndsWith("<value>1</value><invert>1</invert><ms_time>1000</ms_time>"));
}

TEST_F(TavParameterSwitchRelease, PicksUpThatItIsInvertedNow) {
  release.SetSafeTime(1000);
  Pass(milliseconds(300));
  release.IsInverted(true);
  Pass(milliseconds(550));
  EXPECT_EQ(release.GetValue(), 1);
}

TEST_F(TavParameterSwitchRelease, PicksUpANewSafeTime) {
  release.SetSafeTime(1000);
  Pass(milliseconds(300));
  release.SetSafeTime(2000);
  Pass(milliseconds(300));
  release.SetValue(1);
  Pass(milliseconds(1950));
  EXPECT_EQ(release.GetValue(), 1);
  Pass(milliseconds(300));
  EXPECT_EQ(release.GetValue(), 0);
}

TEST_F(TavParameterSwitchRelease, GoesOnAfterAHookThatThrows) {
  release.onSetData = [&] {
    if (release.GetValue() == 0) throw std::runtime_error("set");
  };
  release.onSafeValue = [] { throw std::runtime_error("hook"); };
  release.SetSafeTime(1000);
  const std::string printed = CapturedOutput([&] {
    for (int i = 0; i < 2; ++i) {
      release.SetValue(1);
      Pass(milliseconds(1300));
    }
  });
  EXPECT_EQ(release.releases, 2);
  EXPECT_THAT(printed, HasSubstr("Exception on a parameter's thread: set\n"));
  EXPECT_THAT(printed, HasSubstr("Exception on a parameter's thread: hook\n"));
}

TEST_F(TavParameterSwitchRelease, LeavesItsHookTheLockWhileItIsStopped) {
  VEvent isInHook;
  release.onSafeValue = [&] {
    isInHook.Signal();
    VThread::SleepM(20);  // by then it is being stopped
    EXPECT_TRUE(ObjectLock::BecomesFree(release));
  };
  release.SetSafeTime(1000);
  release.SetValue(1);
  clock.Advance(milliseconds(1300));
  isInHook.Wait();
  release.SetSafeTime(999);
  EXPECT_EQ(release.releases, 1);
}

TEST_F(TavParameterSwitchRelease, TriesAgainAfterItsThreadDidNotStartAndAfterAStop) {
  const auto expectNoThread = [this] {
    const auto noThreads = system_calls::pthread_attr_setstacksize.Returns(EAGAIN);
    ExpectReport({1, "tav_parameterswitchrelease", "SetSafeTime",
                  "Can not start thread for tavParameterSwitchRelease", 143},
                 [this] { release.SetSafeTime(1000); });
  };
  expectNoThread();
  expectNoThread();
  release.SetSafeTime(1000);
  release.SetValue(1);
  Pass(milliseconds(1300));
  EXPECT_EQ(release.GetValue(), 0);
  release.SetSafeTime(999);
  expectNoThread();
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
