// What hooks may do while a scene is played: rebuild, delete or play the scene that they belong to.
#include <gtest/gtest.h>

#include <atomic>
#include <functional>

#include "tav_parameterbyte.h"
#include "tav_parametervrscene.h"
#include "tav_virtualitemparameter.h"

namespace tavon {
namespace {

constexpr unsigned char kOn = 1;

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
    if (onFinish) onFinish();
  }
  const bool playsOnThread;
  tavParameterByte targets[2];
  std::function<void(tavIParameter*)> onSet;
  std::function<void()> onFinish;
  std::atomic<int> settings{0};
  std::atomic<int> finishes{0};
  VEvent started;
};

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

TEST_P(RebuiltScene, KeepsTheExecutingItemToItsEnd) {
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
}

}  // namespace
}  // namespace tavon
