#include "tav_parametervrscene.h"

#include <gmock/gmock.h>

#include <barrier>
#include <functional>
#include <semaphore>
#include <stdexcept>
#include <thread>

#include "expect_report.h"
#include "failing_allocation.h"
#include "object_lock.h"
#include "system_calls.h"
#include "tav_parameterbyte.h"
#include "tav_virtualitemparameter.h"
#include "tav_virtualitemwait.h"
#include "test_clock.h"
#include "write_and_read.h"

namespace tavon {
namespace {

using std::chrono::milliseconds;
using testing::ContainsRegex;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr unsigned char kSeven = 7;

Report OfBuildEnd(int code, const char* message, int line) {
  return {code, "tav_parametervrscene", "BuildScene_End", message, line};
}

// An item that does what the test wants, and counts how often its wait is to end.
struct Item : tavVirtualItemParameter {
  int GetType() const override { return onGetType(); }
  unsigned int Execute() override {
    onExecute();
    return 0;
  }
  void ExitExecute() override {
    ++exits;
    onExit();
  }

  std::function<int()> onGetType = [] { return 2; };  // a kind of its own
  std::function<void()> onExecute = [] {};
  std::function<void()> onExit = [] {};
  int exits = 0;
};

// A scene that is being built, with two parameters to set to 7. It notes what its hooks are told, and then
// does what the test wants.
struct Scene : tavParameterVRScene {
  Scene() { BuildScene_Begin(); }
  ~Scene() override { delete_scene(); }

  void SetData(const unsigned char* data, const unsigned int& size, unsigned char flag) override {
    tavParameterVRScene::SetData(data, size, flag);
    onSetData();
  }
  void OnParameterSet(tavIParameter* parameter) override {
    events.push_back((parameter == &first ? "first " : "second ") + parameter->ValueToString());
    hasSet.release();
    onSet();
  }
  void OnPlayFinish() override {
    events.push_back("finish at " + ValueToString());
    onFinish();
  }

  tavEError AddSet(tavIParameter& target) { return BuildScene_AddSetParameter(&target, &kSeven, 1); }

  // Asks its thread to play until it does: a thread that does not wait for a request yet misses it. The first
  // item must set a parameter, and a wait must follow, so that the play does not end meanwhile.
  void Play(unsigned char value) {
    while (hasSet.try_acquire()) {
    }
    for (int tries = 0; tries < 2000; ++tries) {
      SetValue(value);
      if (hasSet.try_acquire_for(milliseconds(5))) return;
    }
    FAIL() << "the scene is not played";
  }

  tavParameterByte first;
  tavParameterByte second;
  std::vector<std::string> events;
  std::function<void()> onSetData = [] {};
  std::function<void()> onSet = [] {};
  std::function<void()> onFinish = [] {};
  std::counting_semaphore<> hasSet{0};
};

struct TavParameterVRScene : testing::Test {
  Scene scene;
};

TEST_F(TavParameterVRScene, PlaysTwoSettingsAtOnceInOrder) {
  scene.AddSet(scene.second);
  scene.AddSet(scene.first);
  scene.SetValue(1);
  EXPECT_THAT(scene.events, ElementsAre("second 7", "first 7", "finish at 0"));
  EXPECT_EQ(scene.GetValue(), 0);
}

TEST_F(TavParameterVRScene, NoticesThatItNeedsNoThread) {
  scene.AddSet(scene.first);
  const tavError notice =
      tavBuildErrorLocation(tavError_NoError, "tavParameterVRScene do not use Thread for play",
                            "tav_parametervrscene", "BuildScene_End", 193);
  EXPECT_EQ(CapturedOutput([this] { EXPECT_EQ(scene.BuildScene_End(), tavError_NoError); }),
            notice.GetDescription());
}

TEST_F(TavParameterVRScene, NeedsAThreadToRepeatAPlayAndForMoreThanTwoSettings) {
  scene.AddSet(scene.first);
  scene.AddSet(scene.second);
  scene.SetValue(9);
  EXPECT_EQ(scene.GetValue(), 2);
  EXPECT_THAT(scene.events, ElementsAre());
  EXPECT_FALSE(scene.UseThread());
  scene.AddSet(scene.first);
  EXPECT_TRUE(scene.UseThread());
}

TEST_F(TavParameterVRScene, SerializesItsItemsWithTheirPresentValues) {
  scene.second.SetUniqueID(42);
  scene.second.SetValue(5);
  scene.BuildScene_AddWait(500);
  scene.AddSet(scene.second);
  EXPECT_EQ(scene.SerializeParametersAsXml(),
            "<flags>00000000</flags><value>0</value><scene><wait ms_time=\"500\"></wait>"
            "<set id=\"42\" val=\"5\"></set></scene>");
  scene.BuildScene_Begin();
  EXPECT_THAT(scene.SerializeParametersAsXml(), HasSubstr("<scene></scene>")) << "a new scene";
}

TEST_F(TavParameterVRScene, AppendsWithoutMemoryBehindTheItemsThatAnItemBroughtWithIt) {
  auto* const item = new tavVirtualItemWait;
  item->SetNext(new tavVirtualItemWait);
  auto* const last = new tavVirtualItemWait;
  {
    const auto noMemory = FailingAllocation::OfAtLeast(1);
    scene.add_as_last(item);
    scene.add_as_last(last);
  }
  EXPECT_THAT(scene.SerializeParametersAsXml(),
              ContainsRegex("<scene>(<wait ms_time=.[0-9]+.></wait>){3}</scene>"));
}

// On purpose: what an item is to the scene is settled when it has been executed.
TEST_F(TavParameterVRScene, AsksAnItemForItsTypeOnceItHasBeenExecuted) {
  std::vector<std::string> calls;
  auto* const item = new Item;
  item->SetParameter(&scene.first, &kSeven, 1);
  item->onExecute = [&] { calls.emplace_back("Execute"); };
  item->onGetType = [&]() -> int {
    calls.emplace_back("GetType");
    return tavVirtualItem_SetParameter;
  };
  scene.add_as_last(item);
  scene.SetValue(1);
  EXPECT_THAT(calls, ElementsAre("Execute", "GetType"));
  EXPECT_THAT(scene.events, ElementsAre("first 0", "finish at 0"));
}

TEST_F(TavParameterVRScene, LeavesItsItemsAloneWhenThereIsNoThreadToEnd) {
  Item* const item = new Item;
  scene.add_as_last(item);
  scene.term_thread();
  EXPECT_EQ(item->exits, 0) << "never had a thread";
  scene.BuildScene_AddWait(10);
  scene.BuildScene_End();
  scene.term_thread();
  scene.term_thread();
  EXPECT_EQ(item->exits, 1) << "the thread has ended";
}

TEST_F(TavParameterVRScene, IsNotPlayedAgainByAnItemOfThePlay) {
  scene.AddSet(scene.first);
  scene.onSet = [this] { scene.SetValue(1); };
  scene.SetValue(1);
  EXPECT_THAT(scene.events, ElementsAre("first 7", "finish at 0"));
}

TEST_F(TavParameterVRScene, MayBePlayedAgainWhenAPlayHasFinished) {
  scene.AddSet(scene.first);
  scene.onFinish = [this] {
    if (scene.events.size() < 4) scene.SetValue(1);
  };
  scene.SetValue(1);
  EXPECT_THAT(scene.events, ElementsAre("first 7", "finish at 0", "first 7", "finish at 0"));
}

// The new thread waits for the scene's lock, which the play at once holds: ending it must not wait for it.
TEST_F(TavParameterVRScene, MayBeRebuiltAndClearedInHooksOfAPlayAtOnce) {
  const auto rebuild = [](Scene& played) {
    for (int i = 0; i < 2; ++i) {
      played.BuildScene_Begin();
      played.BuildScene_AddWait(10);
      played.BuildScene_End();
    }
    played.term_thread();
    played.delete_scene();
  };
  scene.AddSet(scene.first);
  scene.AddSet(scene.second);
  scene.onSet = [&] { rebuild(scene); };
  scene.SetValue(1);
  EXPECT_THAT(scene.events, ElementsAre("first 7")) << "the rest of the play is dropped";

  Scene other;
  other.AddSet(other.first);
  other.onFinish = [&] { rebuild(other); };
  other.SetValue(1);
  EXPECT_THAT(other.events, ElementsAre("first 7", "finish at 0"));
}

TEST_F(TavParameterVRScene, MayBePlayedAgainAfterAHookThatThrows) {
  scene.AddSet(scene.first);
  scene.onSet = [] { throw std::runtime_error("hook"); };
  EXPECT_THROW(scene.SetValue(1), std::runtime_error) << "on the thread that plays it at once";
  EXPECT_TRUE(ObjectLock::IsFree(scene));
  scene.onSet = [] {};
  scene.SetValue(1);
  EXPECT_THAT(scene.events, ElementsAre("first 7", "first 7", "finish at 0"));
}

TEST_F(TavParameterVRScene, DropsTheRestOfAPlayOnItsThreadWhenAHookDeletesItsItems) {
  scene.AddSet(scene.second);
  scene.AddSet(scene.first);
  scene.BuildScene_AddWait(10);
  scene.BuildScene_End();
  scene.onSet = [this] { scene.delete_scene(); };
  scene.Play(1);
  scene.term_thread();  // waits for the play thread
  EXPECT_THAT(scene.events, ElementsAre("second 7"));
}

TEST_F(TavParameterVRScene, ReportsEveryMemoryShortageOfItsThreadAndTriesAgain) {
  scene.AddSet(scene.first);
  scene.BuildScene_AddWait(60000);
  bool hasHappened = true;
  for (int count = 0; hasHappened; ++count) {
    tavEError result = tavError_NoError;
    const std::string printed = CapturedOutput([&] {
      const auto shortage = FailingAllocation::After(count);
      result = scene.BuildScene_End();
      hasHappened = shortage.HasHappened();
    });
    if (!hasHappened) break;
    EXPECT_EQ(result, tavError_OutOfMemory) << "at allocation " << count;
    ExpectReports(printed, {OfBuildEnd(5, "Can not create thread for tavParameterVRScene", 184)});
  }
  scene.Play(1);
}

TEST_F(TavParameterVRScene, ReportsThatItsThreadDidNotStart) {
  scene.BuildScene_AddWait(60000);
  const auto noThreads = system_calls::pthread_attr_setstacksize.Returns(EAGAIN);
  ExpectReport(OfBuildEnd(1, "Can not start thread for tavParameterVRScene", 189), tavError_OperationFailed,
               [this] { return scene.BuildScene_End(); });
}

TEST(TavVirtualItemWait, ReportsThatItCannotWaitAndTriesAgain) {
  tavVirtualItemWait wait;
  {
    const auto noState = system_calls::pthread_mutex_init.Returns(ENOMEM);
    ExpectReport({5, "tav_virtualitemwait", "Execute", "Can not allocate tavSysEvent object", 33}, 0U,
                 [&] { return wait.Execute(); });
  }
  EXPECT_EQ(wait.Execute(), 0U);
}

// A wait of a minute in a scene, which tells when it has ended.
struct Wait : tavVirtualItemWait {
  Wait() { SetWaitTime(60000); }
  unsigned int Execute() override {
    const unsigned int result = tavVirtualItemWait::Execute();
    hasEnded.release();
    return result;
  }
  void ExpectEnd() {
    EXPECT_TRUE(hasEnded.try_acquire_for(std::chrono::seconds(10))) << "the wait does not end";
  }

  std::counting_semaphore<> hasEnded{0};
};

// A scene of "first", an item, a wait and "second", played on its thread under a clock that the test
// advances.
struct TavParameterVRSceneOnAThread : testing::Test {
  TavParameterVRSceneOnAThread() {
    scene.AddSet(scene.first);
    scene.add_as_last(item);
    scene.add_as_last(wait);
    scene.AddSet(scene.second);
    EXPECT_EQ(scene.BuildScene_End(), tavError_NoError);
  }
  void PlayUpToTheWait(unsigned char value) {
    scene.Play(value);
    clock.AwaitSleepers(1);
  }
  // Plays on, up to the next wait or to the pause that follows a play.
  void PassTheWait() {
    clock.Advance(milliseconds(60000));
    wait->ExpectEnd();
    clock.AwaitSleepers(1);
  }
  void PassThePause() { clock.Advance(milliseconds(100)); }

  TestClock clock{TestClock::Utc(2014, 4, 8, 10, 0, 0)};
  Scene scene;
  Item* const item = new Item;  // the scene's, as is the wait
  Wait* const wait = new Wait;
};

TEST_F(TavParameterVRSceneOnAThread, PlaysInOrderAndWaits) {
  PlayUpToTheWait(1);
  EXPECT_THAT(scene.events, ElementsAre("first 7"));
  PassTheWait();
  EXPECT_THAT(scene.events, ElementsAre("first 7", "second 7", "finish at 0"));
}

TEST_F(TavParameterVRSceneOnAThread, RepeatsAPlay) {
  PlayUpToTheWait(2);
  PassTheWait();
  EXPECT_THAT(scene.events, ElementsAre("first 7", "second 7", "first 7"));
}

TEST_F(TavParameterVRSceneOnAThread, GoesOnAfterHooksThatThrow) {
  scene.onSet = [] { throw std::runtime_error("set"); };
  scene.onFinish = [] { throw std::runtime_error("finish"); };
  scene.onSetData = [this] {
    if (scene.GetValue() == 0) throw std::runtime_error("end");
  };
  const std::string printed = CapturedOutput([this] {
    PlayUpToTheWait(1);
    PassTheWait();
    PassThePause();
    PlayUpToTheWait(1);
  });
  EXPECT_THAT(scene.events, ElementsAre("first 7", "second 7", "finish at 0", "first 7"));
  EXPECT_THAT(printed, HasSubstr("Exception on a parameter's thread: end\n"));
  EXPECT_THAT(printed, HasSubstr("Exception on a parameter's thread: finish\n"));
}

TEST_F(TavParameterVRSceneOnAThread, EndsTheWaitAndThePlayWhenItIsStopped) {
  PlayUpToTheWait(1);
  scene.SetValue(0);
  wait->ExpectEnd();
  clock.AwaitSleepers(1);
  EXPECT_THAT(scene.events, ElementsAre("first 7"));
  PassThePause();
  PlayUpToTheWait(1);
  EXPECT_THAT(scene.events, ElementsAre("first 7", "first 7")) << "the next play starts anew";
}

// The request that follows comes while the thread is not waiting for one: it is missed.
TEST_F(TavParameterVRSceneOnAThread, EndsAPlayThatIsStoppedAndRequestedAgainAtOnce) {
  PlayUpToTheWait(1);
  scene.SetValue(0);
  scene.SetValue(1);
  wait->ExpectEnd();
  clock.AwaitSleepers(1);
  EXPECT_THAT(scene.events, ElementsAre("first 7"));
  EXPECT_EQ(scene.GetValue(), 1);
}

TEST_F(TavParameterVRSceneOnAThread, EndsItsWaitsEvenIfAnItemThrowsWhenItIsToEnd) {
  item->onExit = [this] {
    EXPECT_FALSE(ObjectLock::IsFree(scene)) << "no item may be added or discarded meanwhile";
    throw std::runtime_error("exit");
  };
  PlayUpToTheWait(1);
  const std::string printed = CapturedOutput([this] {
    EXPECT_NO_THROW(scene.SetValue(0));
    scene.term_thread();
  });
  wait->ExpectEnd();
  EXPECT_THAT(printed, HasSubstr("Exception on a parameter's thread: exit\n"));
  item->onExit = [] {};
}

TEST_F(TavParameterVRSceneOnAThread, TellsOfASettingThatThrew) {
  item->SetParameter(&scene.second, &kSeven, 1);
  item->onGetType = [] { return tavVirtualItem_SetParameter; };
  item->onExecute = [] { throw std::runtime_error("stuck"); };
  const std::string printed = CapturedOutput([this] { PlayUpToTheWait(1); });
  EXPECT_THAT(scene.events, ElementsAre("first 7", "second 0"));
  EXPECT_THAT(printed, HasSubstr("Exception on a parameter's thread: stuck\n"));
}

TEST_F(TavParameterVRSceneOnAThread, MissesARequestInThePauseAfterAPlay) {
  PlayUpToTheWait(1);
  PassTheWait();
  while (scene.hasSet.try_acquire()) {
  }
  scene.SetValue(1);
  scene.RepeatRequest();
  PassThePause();
  EXPECT_FALSE(scene.hasSet.try_acquire_for(milliseconds(50)));
  EXPECT_EQ(scene.GetValue(), 1);
}

TEST_F(TavParameterVRSceneOnAThread, NeverPlaysOnAThreadAgainOnceItIsRebuilt) {
  PlayUpToTheWait(1);
  scene.BuildScene_Begin();
  EXPECT_THAT(scene.events, ElementsAre("first 7")) << "the wait has ended, and the play with it";
  scene.AddSet(scene.first);
  scene.BuildScene_AddWait(60000);
  EXPECT_EQ(scene.BuildScene_End(), tavError_NoError);
  ExpectReport({1, "tav_parametervrscene", "BuildScene_AddWait", "You musy to call BuildScene_Begin", 200},
               tavError_OperationFailed, [this] { return scene.BuildScene_AddWait(10); });
  scene.SetValue(1);
  EXPECT_FALSE(scene.hasSet.try_acquire_for(milliseconds(50)));
}

// Locks: one thread writes what another one reads, and the thread sanitizer tells of the side without a lock.

TEST(TavParameterVRSceneOnManyThreads, IsBegunByOneAndBuiltByAnother) {
  Scene scene;
  const auto begin = [&](int) { scene.BuildScene_Begin(); };
  WriteAndRead(begin, [&] { scene.BuildScene_AddWait(10); });
  WriteAndRead(begin, [&] { scene.AddSet(scene.first); });
  WriteAndRead(begin, [&] { scene.BuildScene_End(); });
  EXPECT_TRUE(scene.UseThread());
}

TEST(TavParameterVRSceneOnManyThreads, IsBuiltByOneAndUsedByAnother) {
  Scene scene;
  const auto build = [&](int) {
    scene.BuildScene_Begin();
    scene.BuildScene_AddWait(10);
  };
  WriteAndRead(build, [&] { scene.UseThread(); });
  WriteAndRead(build, [&] { scene.RepeatRequest(); });
  WriteAndRead(build, [&] { scene.SerializeParametersAsXml(); });
  WriteAndRead(build, [&] { scene.add_as_last(new tavVirtualItemWait); });
}

TEST(TavParameterVRSceneOnManyThreads, IsPlayedByOneAndStoppedByAnother) {
  Scene scene;
  WriteAndRead([&](int) { scene.SetValue(2); }, [&] { scene.SetValue(0); });
}

TEST(TavParameterVRSceneOnManyThreads, IsPlayedByItsThreadAndSetByAnother) {
  constexpr int kSettings = 300;
  std::barrier setting(2);  // after each, one thread looks for the next item and the other sets the scene
  Scene scene;
  scene.onSet = [&] { setting.arrive_and_wait(); };
  for (int i = 0; i < kSettings; ++i) scene.AddSet(scene.first);
  scene.BuildScene_End();
  scene.Play(2);
  for (int i = 0; i < kSettings; ++i) {
    setting.arrive_and_wait();
    scene.SetValue(i % 2 == 0 ? 1 : 2);
  }
  setting.arrive_and_drop();
}

TEST(TavVirtualItemWait, IsExecutedByOneThreadAndEndedByAnother) {
  tavVirtualItemWait wait;
  WriteAndRead([&](int) { wait.Execute(); }, [&] { wait.ExitExecute(); });
}

}  // namespace
}  // namespace tavon
