#include <atomic>
#include <chrono>

#include "model_test.h"
#include "test_clock.h"
#include "vtime.h"

using std::chrono_literals::operator""s;

namespace {

// Notes when its thread has acted.
template <class Parameter>
struct Watched : Parameter {
  ~Watched() { this->term_thread(); }
  void OnStop() {
    EXPECT_TRUE(LockOf::IsFree(*this)) << "hooks are called without the lock";
    actedAt = VTime::Time();
    acted.Signal();
  }
  void OnSafeValue() {
    this->SetSafeTime(7);  // a hook may end its own thread
    OnStop();
  }
  bool HasActedAfter(unsigned int time, unsigned long since, unsigned char value) {
    return acted.Wait(20000) && this->GetValue() == value && static_cast<unsigned>(actedAt - since) >= time;
  }
  std::atomic<unsigned long> actedAt{0};
  VEvent acted;
};

TEST(TimedParameters, ActByThemselvesWhenTheirTimeIsOver) {
  Watched<tavParameterSwitchRelease> plain, inverted, restarted, stopped, tooShort;
  Watched<tavParameterShutter> moving, turning;
  turning.SetActionTime(100000);
  for (const auto& [command, value] : {std::pair{2, 2}, {0, 1}, {4, 3}, {255, 3}, {1, 1}}) {
    turning.SetValue(static_cast<unsigned char>(command));
    EXPECT_TRUE(turning.GetValue() == value && moving.GetValue() == 2);
  }
  moving.SetActionTime(500);
  const unsigned long start = VTime::Time();
  inverted.IsInverted(true);
  for (auto* release : {&plain, &inverted, &restarted, &stopped, &tooShort}) {
    release->SetValue(release == &inverted ? 0 : 1);
    release->SetSafeTime(release == &tooShort ? 999 : release == &restarted ? 2000 : 1000);
  }
  stopped.SetSafeTime(999);
  stopped.SetSafeTime(1000);  // once stopped it never releases again: intended
  do {
    moving.SetValue(1);  // a repeated command does not prolong the travel
  } while (!moving.acted.Wait(20));
  EXPECT_TRUE(moving.HasActedAfter(500, start, moving.GetValue()));
  const unsigned long restart = VTime::Time();
  restarted.SetValue(1);
  turning.SetValue(3);
  turning.SetActionTime(500);
  EXPECT_TRUE(turning.HasActedAfter(500, restart, 2) && turning.IsChangedByCallBack());
  turning.SetValue(2);
  EXPECT_TRUE(plain.HasActedAfter(1000, start, 0) && inverted.HasActedAfter(1000, start, 1));
  EXPECT_TRUE(restarted.HasActedAfter(2000, restart, 0) && !turning.IsChangedByCallBack());
  EXPECT_TRUE(stopped.GetValue() == 1 && tooShort.GetValue() == 1 && stopped.GetSafeTime() == 1000);
  EXPECT_TRUE(turning.SerializeParametersAsXml().ends_with("<value>2</value><ms_time>500</ms_time>"));
  EXPECT_TRUE(
      inverted.SerializeParametersAsXml().ends_with("</value><invert>1</invert><ms_time>7</ms_time>"));
}

TEST(TimedParameters, NeverTakeANewValueForAnOldOne) {
  tavParameterSwitchRelease release;
  release.SetSafeTime(1000);
  const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(200);
  for (TestClock clock(1000s); std::chrono::steady_clock::now() < end; clock.Advance(1s)) {
    release.SetValue(1);
    EXPECT_EQ(release.GetValue(), 1);
    release.SetValue(0);
  }
  TestClock clock(1000s);
  for (release.SetValue(1); release.GetValue() != 0;) clock.Advance(1s);
  for (release.IsInverted(true); release.GetValue() != 1;) clock.Advance(1s);
}

}  // namespace
