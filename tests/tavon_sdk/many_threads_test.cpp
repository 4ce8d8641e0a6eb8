// Any thread may call any operation of the model. Two threads call them here at once: the thread sanitizer
// tells of one that does not take the lock.
#include <gtest/gtest.h>

#include <atomic>
#include <barrier>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "src/tav_parametertypes.h"
#include "tav_parameterfactory.h"
#include "tav_virtualitemwait.h"

namespace tavon {
namespace {

// Makes each call on two threads at once, again and again. They start each round together, and even where one
// then goes before the other, only a lock that both take puts their accesses in an order.
void CallOnTwoThreads(const std::vector<std::function<void()>>& calls) {
  for (const auto& call : calls) {
    std::barrier round(2);
    const auto callOften = [&] {
      for (int i = 0; i < 10; ++i) {
        round.arrive_and_wait();
        call();
      }
    };
    std::thread other(callOften);
    callOften();
    other.join();
  }
}

struct ManyThreads : testing::TestWithParam<int> {};
INSTANTIATE_TEST_SUITE_P(OfType, ManyThreads,
                         testing::Range<int>(tavObject_ParameterSwitch, tavObject_ParameterCamera),
                         [](const auto& type) -> std::string {
                           return tavParameterFactory::IdToTypeName(static_cast<tavEObject>(type.param));
                         });

// What each thread reads into.
thread_local tavString text;
thread_local tavArray<tavString> texts;
thread_local unsigned char bytes[673];
thread_local unsigned int number;
thread_local float points[24];

// Of any type but a camera, which compares nothing.
TEST_P(ManyThreads, MayUseAParameter) {
  const unsigned char operand[673] = {1};
  tavParameterByte target;
  const std::unique_ptr<tavIParameter> shared(
      tavParameterFactory::CreateByType(static_cast<tavEObject>(GetParam())));
  std::atomic<int> count{0};
  const auto change = [&] { shared->SetDataFromString("0" + tavString::FromInt(++count % 2)); };
  CallOnTwoThreads({
      [&] { shared->SetUniqueID(shared->GetUniqueID()); },
      [&] { shared->SetName(shared->GetName().c_str()); },
      [&] { shared->SetName(L"name"), shared->ToString(); },
      [&] { shared->SetFlags(shared->GetFlags()); },
      [&] { shared->SetFlags(1), shared->SerializeAsXml(); },
      [&] { shared->HasFlags(2) ? shared->RemoveFlags(2) : shared->AddFlags(2); },
      [&] { shared->IsDirty(!shared->IsDirty()); },
      [&] { shared->SetUserData(shared->GetUserData()); },
      [&] { shared->GetUIStyle(&texts), shared->SetUIStyle(texts); },
      [&] { shared->SetUIStyle({}), shared->AddUIStyle("style"); },
      [&] { shared->GetSettings(&text), shared->SetSettings(text); },
      [&] { change(), shared->ValueToString(); },
      [&] { change(), shared->GetDataCopy(bytes); },
      [&] { change(), shared->Comparison(tavCodeOperator_Equal, operand, shared->GetDataSize()); },
      [&] { shared->SetDrivenTarget(shared->GetDrivenTarget() == nullptr ? &target : nullptr); },
      [&] { shared->AddDrivenMapItem(tavCodeOperator_Equal, operand, 1, operand, 1); },
      [&] { change(), shared->IsDirty(false); },
  });
}

TEST(ManyThreads, MayUseWhatOnlySomeTypesHave) {
  tavParameterAlert alert;
  tavParameterCamera camera;
  tavParameterColor color;
  tavParameterShutter shutter;
  tavParameterSwitchRelease release;
  tavParameterThermoChronoWeek schedule;
  CallOnTwoThreads({
      [&] { alert.IsInverted(!alert.IsInverted()); },
      [&] { alert.SetSeverity(alert.GetSeverity()); },
      [&] { alert.SetSeverity(tavSeverity_Alarm), alert.SerializeParametersAsXml(); },
      [&] { alert.SetMessage(alert.GetMessage().empty() ? "smoke" : ""); },
      [&] { camera.SetRemoteUrl(camera.GetUrl("10.0.0.1") == "a" ? "b" : "a"); },
      [&] { camera.SetRemoteUrl(camera.GetRemoteUrl() == "a" ? "b" : "a"); },
      [&] { camera.AddLocalNetwork("10.0.0"); },
      [&] { color.GetValue(&number), color.SetValue(number + 1); },
      [&] { color.GetValue(bytes, nullptr, nullptr, nullptr), color.SetValue(++bytes[0], 0, 0, 0); },
      [&] { shutter.SetActionTime(shutter.GetActionTime()); },
      [&] { shutter.SetActionTime(1000), shutter.SerializeParametersAsXml(); },
      [&] { shutter.SetValue(shutter.IsChangedByCallBack() ? 1 : 2); },
      [&] { release.IsInverted(!release.IsInverted()); },
      [&] { release.SetSafeTime(release.GetSafeTime()); },
      [&] { release.SetSafeTime(500), release.SerializeParametersAsXml(); },
      [&] { release.SetValue(1); },
      [&] { schedule.SetOffsetTime(schedule.GetOffsetTime()); },
      [&] { schedule.SetActive(schedule.GetActive() == 0 ? 1 : 0), schedule.GetCurrentTemperature(); },
      [&] { schedule.GetDay(schedule.Days_Monday, points), schedule.SetDataFromString("1,20"); },
      [&] { schedule.SetDataFromString("1,21"), schedule.GetDay(schedule.Days_Monday, points); },
  });
}

TEST(ManyThreads, MayUseASceneThatOneBuilds) {
  const unsigned char value = 1;
  std::mutex building;
  tavParameterByte target;
  tavParameterVRScene scene;
  tavVirtualItemWait wait;
  const auto build = [&] {
    const std::lock_guard lock(building);
    scene.BuildScene_Begin();
    scene.BuildScene_AddSetParameter(&target, &value, 1);
    scene.BuildScene_AddWait(10);
  };
  CallOnTwoThreads({
      [&] { build(), scene.UseThread(); },
      [&] { build(), scene.SerializeParametersAsXml(); },
      [&] { build(), scene.SetValue(scene.GetValue() == 0 ? 1 : 0); },
      [&] { wait.Prepare(), wait.ExitExecute(); },
  });
}

}  // namespace
}  // namespace tavon
