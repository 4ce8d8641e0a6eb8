#include "model_test.h"
#include "tav_virtualitemparameter.h"
#include "tav_virtualitemwait.h"
#include "vtime.h"

namespace {

constexpr unsigned char kValue = 7;

struct Failing : tavVirtualItemParameter {  // as at a level of the log that throws
  unsigned int Execute() override { throw tavError(tavError_Unknown, ""); }
};

struct StoppedWait : tavVirtualItemWait {  // the stop comes when it is about to begin
  explicit StoppedWait(tavParameterVRScene& owner) : scene(owner) { SetWaitTime(600000); }
  unsigned int Execute() override { return scene.SetValue(0), tavVirtualItemWait::Execute(); }
  tavParameterVRScene& scene;
};

// A scene that is being built, with two parameters to set.
struct Scene : tavParameterVRScene {
  Scene() { BuildScene_Begin(); }
  ~Scene() override { delete_scene(); }
  tavEError AddSet(int index) { return BuildScene_AddSetParameter(&targets[index], &kValue, 1); }

  // Asks until the event comes, for a play thread that does not wait yet misses requests; then lets it go on.
  void Ask(unsigned char play, VEvent& event) {
    for (finished.Reset(), event.Reset(); !event.Wait(20);) SetValue(play);
    finished.Wait(10);
  }
  void OnParameterSet(tavIParameter* parameter) override {
    times.push_back(VTime::TimeUS());
    record += parameter->ValueToString() + (parameter == &targets[0] ? "a" : "b");
    if (record.size() >= enough) set.Signal();
  }
  void OnPlayFinish() override {
    times.push_back(VTime::TimeUS());
    record += ValueToString() + "end";
    finished.Signal();
  }
  tavParameterByte targets[2];
  std::string record;
  std::vector<unsigned long long> times;
  std::size_t enough = 1;
  VEvent set, finished;
};

TEST(TavParameterVRScene, ReportsWhatCannotBeBuilt) {
  Scene scene;
  const auto expect = [](int code, int line, const char* function, const char* message, auto call) {
    ExpectReport(code, message, "ParameterVRScene", function, line, [&] { EXPECT_EQ(call(), code); });
  };
  const char* const addSet = "BuildScene_AddSetParameter";
  const auto wait = [&] { return scene.BuildScene_AddWait(9); };
  expect(6, 201, "BuildScene_AddWait", "The smallest wait time must be 10 ms", wait);
  expect(6, 214, addSet, "pPrm == 0", [&] { return scene.BuildScene_AddSetParameter(nullptr, &kValue, 1); });
  expect(6, 215, addSet, "pBuffer == 0 || size == 0",
         [&] { return scene.BuildScene_AddSetParameter(scene.targets, &kValue, 0); });
  expect(0, 193, "BuildScene_End", "tavParameterVRScene do not use Thread for play",
         [&] { return scene.BuildScene_End(); });
  expect(1, 200, "BuildScene_AddWait", "You musy to call BuildScene_Begin", wait);
  expect(1, 213, addSet, "You musy to call BuildScene_Begin", [&] { return scene.AddSet(0); });
  tavVirtualItemParameter item;
  ExpectReport(6, "!m_pPrm || !pBuffer || m_dwSize == 0", "VirtualItemParameter", "SetParameter", 28,
               [&] { EXPECT_EQ(item.SetParameter(scene.targets, nullptr, 1), 6); });
  ExpectReport(6, "!m_pData || !m_pPrm || m_dwSize == 0", "VirtualItemParameter", "Execute", 44,
               [&] { EXPECT_EQ(item.Execute(), 6U); });
  tavParameterColor wide;
  wide.SetValue(1, 2, 3, 4);
  EXPECT_TRUE(item.SetParameter(&wide, &kValue, 1) == 0 && item.Execute() == 0);
  EXPECT_EQ(wide.ValueToString(), "0x07000000") << "what the item does not reach is cleared";
  EXPECT_EQ(tavVirtualItemWait().Execute(), 0U) << "not woken";
}

TEST(TavParameterVRScene, PlaysFewSettingsAtOnceAndWaitsOnItsThread) {
  tavError::Level = 0;  // what the failing item throws is reported
  Scene scene;
  scene.SetValue(1);  // an empty scene is not played
  EXPECT_TRUE(scene.AddSet(1) == 0 && scene.AddSet(0) == 0);
  scene.SetValue(9);  // nor is one repeated without a thread
  EXPECT_TRUE(scene.GetValue() == 2 && scene.record.empty());
  scene.SetValue(1);
  EXPECT_TRUE(scene.record == "7b7a0end" && !scene.UseThread() && scene.AddSet(0) == 0 && scene.UseThread());
  scene.BuildScene_Begin();
  EXPECT_TRUE(scene.AddSet(0) == 0 && scene.BuildScene_AddWait(10) == 0);
  auto* const failing = new Failing;
  failing->SetNext(new tavVirtualItemWait);
  scene.add_as_last(failing);  // and what it brings
  scene.AddSet(1);
  scene.targets[1].SetUniqueID(42);
  scene.targets[1].SetValue(5);
  EXPECT_TRUE(scene.SerializeParametersAsXml().ends_with(
      "</value><scene><set id=\"0\" val=\"7\"></set><wait ms_time=\"10\"></wait>"
      "<wait ms_time=\"0\"></wait><set id=\"42\" val=\"5\"></set></scene>"));
  EXPECT_TRUE(scene.BuildScene_End() == 0 && scene.BuildScene_End() == 0);
  scene.Ask(1, scene.set);
  EXPECT_TRUE(scene.finished.Wait(20000));
  scene.set.Reset();
  scene.SetValue(1);
  const bool isPause = VTime::TimeUS() - scene.times.back() < 100000;
  EXPECT_FALSE((scene.set.Wait(250) || scene.GetValue() != 1) && isPause) << "missed: intended";
  scene.enough = 40;
  scene.Ask(2, scene.set);
  scene.delete_scene();
  EXPECT_TRUE(scene.record.starts_with("7b7a0end7a7b0end") &&
              scene.record.find("7a7b7a7b") != tavString::npos);
  EXPECT_GE(scene.times[4] - scene.times[3], 10000U);
  Scene threaded;
  Scene::NonThreadParametersCount = 0;
  EXPECT_TRUE(threaded.AddSet(0) == 0 && threaded.UseThread());
  Scene::NonThreadParametersCount = 2;
  tavError::Level = tavLogLevel_Console;
}

TEST(TavParameterVRScene, AStopEndsAWaitAndThePlay) {
  for (const int kind : {0, 1, 2}) {
    Scene scene;
    scene.AddSet(0);
    if (kind == 2) scene.add_as_last(new StoppedWait(scene));
    EXPECT_EQ(scene.BuildScene_AddWait(600000), 0);
    if (kind != 0) scene.AddSet(1);
    scene.BuildScene_End();
    scene.Ask(1, scene.set);
    if (kind != 2) scene.SetValue(0);
    scene.Ask(1, scene.set);
    scene.BuildScene_Begin();
    EXPECT_TRUE(scene.record == "7a7a" && scene.GetValue() == (kind == 2 ? 0 : 1)) << "not finished";
    scene.BuildScene_End();
    scene.SetValue(1);
    EXPECT_FALSE(scene.finished.Wait(20)) << "a rebuilt scene never plays on a thread: intended";
  }
}

}  // namespace
