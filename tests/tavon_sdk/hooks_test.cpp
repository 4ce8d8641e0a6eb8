// What a program's hooks may do on a parameter's own thread and while a scene is played: throw, and rebuild,
// delete or play the scene that they belong to.
#include <gmock/gmock.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <stdexcept>
#include <thread>

#include "captured_output.h"
#include "dro_error.h"
#include "object_lock.h"
#include "tav_parameterbyte.h"
#include "tav_parametershutter.h"
#include "tav_parameterswitchrelease.h"
#include "tav_parameterthermochronoweek.h"
#include "tav_parametervrscene.h"
#include "tav_virtualitemparameter.h"
#include "test_clock.h"

using std::chrono_literals::operator""ms;
using std::chrono_literals::operator""s;
using testing::HasSubstr;

namespace tavon {
namespace {

constexpr unsigned char kOn = 1;

struct ThrowingShutter : tavParameterShutter {
  ~ThrowingShutter() override { term_thread(); }
  void OnStop() override {
    stopped.Signal();
    throw std::runtime_error("no relay");
  }
  bool StopsAfter(unsigned char direction, TestClock& clock) {
    stopped.Reset();
    SetValue(direction);
    for (int look = 0; look < 5 && !stopped.Wait(0); ++look) {
      TestClock::AwaitSleepers(1);
      clock.Advance(250ms);
      TestClock::AwaitSleepers(1);
    }
    return stopped.Wait(0);
  }
  VEvent stopped;
};

TEST(Hooks, AnExceptionOnAThreadIsReportedAndTheThreadGoesOn) {
  TestClock clock(TestClock::Utc(2014, 4, 8, 10, 0, 0));
  const std::string printed = CapturedOutput([&clock] {
    ThrowingShutter shutter;
    EXPECT_TRUE(shutter.StopsAfter(1, clock));
    EXPECT_TRUE(shutter.StopsAfter(3, clock));
  });
  EXPECT_THAT(printed, HasSubstr("Exception on a parameter's thread: no relay\n"));
}

struct ThrowingRelease : tavParameterSwitchRelease {
  ~ThrowingRelease() override { term_thread(); }
  void OnSafeValue() override {
    released.Signal();
    tavErrorLog({tavError_OutOfRange, "thrown by the log"});
  }
  VEvent released;
};

TEST(Hooks, ARecordThatTheLogThrowsDoesNotEndTheThread) {
  TestClock clock(TestClock::Utc(2014, 4, 8, 10, 0, 0));
  tavError::Level = tavLogLevel_Throw;
  {
    ThrowingRelease release;
    release.SetValue(kOn);
    release.SetSafeTime(1000);
    for (int round = 0; round < 2; ++round) {
      release.SetValue(kOn);
      release.released.Reset();
      TestClock::AwaitSleepers(1);
      clock.Advance(1s);
      EXPECT_TRUE(release.released.Wait(10000)) << round;
    }
  }
  tavError::Level = tavLogLevel_Console;
}

// A scene that notes what it does, and does in its hooks what the test wants.
struct Scene : tavParameterVRScene {
  explicit Scene(bool onThread = false) : playsOnThread(onThread) {}
  ~Scene() override { delete_scene(); }
  void Build() {
    BuildScene_Begin();
    if (playsOnThread) BuildScene_AddWait(10);
    for (tavParameterByte& target : targets) BuildScene_AddSetParameter(&target, &kOn, 1);
    if (playsOnThread) BuildScene_End();
  }
  // Asks until the play has begun: a play thread that does not wait yet misses a request.
  void Play() {
    started.Reset();
    do SetValue(kOn);
    while (!started.Wait(20));
  }
  void OnParameterSet(tavIParameter* parameter) override {
    ++settings;
    if (onSet) onSet(parameter);
    started.Signal();
  }
  void OnPlayFinish() override {
    ++finishes;
    finished.Signal();
    if (onFinish) onFinish();
  }
  const bool playsOnThread;
  tavParameterByte targets[2];
  std::function<void(tavIParameter*)> onSet;
  std::function<void()> onFinish;
  std::atomic<int> settings{0};
  std::atomic<int> finishes{0};
  VEvent started, finished;
};

TEST(Hooks, ASceneOnItsThreadGoesOnAfterExceptionsOfItemsAndHooks) {
  struct FailingItem : tavVirtualItemParameter {
    unsigned int Execute() override { throw dro::droError(dro::droError_OperationFailed, "item"); }
  };
  const std::string printed = CapturedOutput([] {
    Scene scene(true);
    scene.Build();
    scene.add_as_last(new FailingItem);
    scene.onSet = [](tavIParameter*) { throw std::bad_alloc(); };
    scene.onFinish = [] { throw std::runtime_error("finish"); };
    for (int play = 1; play <= 2; ++play) {
      scene.finished.Reset();
      scene.settings = 0;
      while (scene.settings == 0) {
        scene.SetValue(kOn);
        std::this_thread::yield();
      }
      EXPECT_TRUE(scene.finished.Wait(10000)) << play;
      EXPECT_EQ(scene.settings, 2) << play;
    }
  });
  EXPECT_THAT(printed, HasSubstr("bad_alloc"));
  EXPECT_THAT(printed, HasSubstr("item"));
  EXPECT_THAT(printed, HasSubstr("thread: finish\n"));
}

class RebuiltScene : public testing::TestWithParam<bool> {};
INSTANTIATE_TEST_SUITE_P(AtOnceAndOnAThread, RebuiltScene, testing::Bool());

// Rebuilds the scene that executes it, and tells whether it is alive when that is done.
struct RebuildingItem : tavVirtualItemParameter {
  explicit RebuildingItem(Scene& owner) : scene(owner) {}
  ~RebuildingItem() override { *isAlive = false; }
  int GetType() const override { return 1; }
  unsigned int Execute() override {
    const std::shared_ptr<bool> alive = isAlive;
    scene.Build();
    EXPECT_TRUE(*alive);
    scene.started.Signal();
    return 0;
  }
  Scene& scene;
  std::shared_ptr<bool> isAlive = std::make_shared<bool>(true);
};

TEST_P(RebuiltScene, KeepsTheExecutingItemAndDropsTheRestOfThePlay) {
  Scene scene(GetParam());
  auto* const item = new RebuildingItem(scene);
  item->SetParameter(&scene.targets[0], &kOn, 1);
  const std::shared_ptr<bool> isAlive = item->isAlive;
  scene.BuildScene_Begin();
  if (GetParam()) scene.BuildScene_AddWait(10);
  scene.add_as_last(item);
  scene.BuildScene_AddSetParameter(&scene.targets[1], &kOn, 1);
  if (GetParam()) scene.BuildScene_End();

  scene.Play();
  scene.term_thread();  // waits for the play thread

  EXPECT_FALSE(*isAlive);
  EXPECT_EQ(scene.settings, 1) << "of the item that rebuilt the scene";
  EXPECT_EQ(scene.finishes, 0);
}

TEST(Hooks, APlayThatIsUnderWayIsNotStartedAgainByItsOwnThread) {
  Scene scene;
  scene.Build();
  scene.onFinish = [&scene] { scene.SetValue(kOn); };
  scene.SetValue(kOn);
  EXPECT_EQ(scene.finishes, 1);
  EXPECT_EQ(scene.GetValue(), kOn) << "a request that was missed, as one to a scene on a thread is";

  scene.onFinish = nullptr;
  scene.SetValue(kOn);
  EXPECT_EQ(scene.finishes, 2) << "afterwards it plays again";
}

TEST(Hooks, ASceneThatContainsItselfIsPlayedOnce) {
  Scene inner;
  Scene outer;
  outer.BuildScene_Begin();
  outer.BuildScene_AddSetParameter(&outer, &kOn, 1);
  outer.BuildScene_AddSetParameter(&inner, &kOn, 1);
  inner.BuildScene_Begin();
  inner.BuildScene_AddSetParameter(&outer, &kOn, 1);

  outer.SetValue(kOn);

  EXPECT_EQ(outer.finishes, 1);
  EXPECT_EQ(inner.finishes, 1);
}

TEST(Hooks, AnExceptionOfAPlayAtOnceIsTheCallersAndThenTheSceneMayBePlayedAgain) {
  Scene scene;
  scene.Build();
  scene.onSet = [](tavIParameter*) { throw std::bad_alloc(); };
  EXPECT_THROW(scene.SetValue(kOn), std::bad_alloc);
  EXPECT_TRUE(ObjectLock::IsFree(scene));
  scene.onSet = nullptr;
  scene.SetValue(kOn);
  EXPECT_EQ(scene.finishes, 1);
}

}  // namespace
}  // namespace tavon
