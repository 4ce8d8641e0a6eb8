// Any thread may call any operation of the model. Here one thread writes what another one reads, and the
// thread sanitizer tells of the side that does not take the lock.
#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <memory>

#include "src/tav_parametertypes.h"
#include "tav_parameterfactory.h"
#include "tav_workerthread.h"
#include "test_clock.h"
#include "write_and_read.h"

namespace tavon {
namespace {

// A number and a text for each round.
unsigned int NumberOf(int round) { return static_cast<unsigned int>(round); }
tavString TextOf(int round) { return tavString::FromInt(round); }

// Sets the value to bytes that are all alike, whatever its size.
void Fill(tavIParameter& parameter, int byte) {
  std::array<unsigned char, 673> data{};
  data.fill(static_cast<unsigned char>(byte));
  parameter.SetData(data.data(), data.size(), 1);
}

struct ManyThreads : testing::TestWithParam<const tavParameterType*> {
  const std::unique_ptr<tavIParameter> shared{tavParameterFactory::CreateByType(GetParam()->id)};
};
INSTANTIATE_TEST_SUITE_P(OfType, ManyThreads, testing::ValuesIn(tavParameterFactory::GetTypes()),
                         [](const auto& type) -> std::string { return type.param->name; });

TEST_P(ManyThreads, MayUseAnObject) {
  WriteAndRead([&](int round) { shared->SetUniqueID(NumberOf(round)); }, [&] { shared->GetUniqueID(); });
  WriteAndRead([&](int round) { shared->SetUniqueID(NumberOf(round)); }, [&] { shared->SerializeAsXml(); });
  WriteAndRead([&](int) { shared->SetName(L"name"); }, [&] { shared->GetName(); });
  WriteAndRead([&](int) { shared->SetFlags(0xF0); }, [&] { shared->GetFlags(); });
  WriteAndRead([&](int) { shared->AddFlags(2); }, [&] { shared->HasFlags(2); });
  WriteAndRead([&](int) { shared->RemoveFlags(2); }, [&] { shared->IsDirty(); });
  WriteAndRead([&](int) { shared->IsDirty(true); }, [&] { shared->GetFlags(); });
  WriteAndRead([&](int) { shared->SetUserData(nullptr); }, [&] { shared->GetUserData(); });
}

TEST_P(ManyThreads, MayUseAParameter) {
  tavArray<tavString> styles;
  tavString settings;
  tavParameterByte target;
  WriteAndRead([&](int round) { shared->SetUIStyle({TextOf(round)}); }, [&] { shared->GetUIStyle(&styles); });
  WriteAndRead([&](int round) { shared->AddUIStyle(TextOf(round)); }, [&] { shared->GetUIStyle(&styles); });
  WriteAndRead([&](int round) { shared->SetSettings(TextOf(round)); },
               [&] { shared->GetSettings(&settings); });
  WriteAndRead([&](int) { shared->SetDrivenTarget(&target); }, [&] { shared->GetDrivenTarget(); });
  WriteAndRead([&](int) { shared->SetDrivenTarget(nullptr); }, [&] { shared->OnDirty(); });
}

TEST_P(ManyThreads, MayUseItsValue) {
  std::array<unsigned char, 674> copy{};
  const auto change = [&](int round) { Fill(*shared, 1 + round); };
  WriteAndRead(change, [&] { shared->ValueToString(); });
  WriteAndRead(change, [&] { shared->GetDataSize(); });
  WriteAndRead(change, [&] { shared->GetDataCopy(copy.data()); });
  WriteAndRead(change, [&] { Fill(*shared, 100); });

  if (shared->GetParameterCameraPtr() != nullptr) return;  // which compares nothing
  const std::array<unsigned char, 673> operand{1};
  const auto op = tavCodeOperator_Equal;
  WriteAndRead(change, [&] { shared->Comparison(op, operand.data(), operand.size()); });
  tavParameterByte target;
  shared->SetDrivenTarget(&target);
  WriteAndRead([&](int) { shared->AddDrivenMapItem(op, operand.data(), operand.size(), operand.data(), 1); },
               [&] { shared->OnDirty(); });
}

TEST(ManyThreads, MayUseAnObjectThatIsNoParameter) {
  tavObject object;
  WriteAndRead([&](int) { object.SetFlags(0xF0); }, [&] { object.SerializeParametersAsXml(); });
}

TEST(ManyThreads, MayUseAnAlert) {
  tavParameterAlert alert;
  WriteAndRead([&](int round) { alert.IsInverted(round % 2 == 0); }, [&] { alert.IsInverted(); });
  WriteAndRead([&](int round) { alert.IsInverted(round % 2 == 0); }, [&] { alert.SetValue(1); });
  WriteAndRead([&](int) { alert.SetSeverity(tavSeverity_Alarm); }, [&] { alert.GetSeverity(); });
  WriteAndRead([&](int) { alert.SetSeverity(tavSeverity_Alarm); }, [&] { alert.SerializeParametersAsXml(); });
  WriteAndRead([&](int) { alert.SetMessage("smoke"); }, [&] { alert.GetMessage(); });
}

TEST(ManyThreads, MayUseACamera) {
  tavParameterCamera camera;
  camera.SetLocalUrl("local");
  WriteAndRead([&](int round) { camera.SetRemoteUrl(TextOf(round).c_str()); },
               [&] { camera.GetRemoteUrl(); });
  WriteAndRead([&](int) { camera.AddLocalNetwork("10.0.0"); }, [&] { camera.GetUrl("10.0.0.1"); });
}

TEST(ManyThreads, MayUseAColor) {
  tavParameterColor color;
  unsigned int number = 0;
  unsigned char component = 0;
  const auto change = [&](int round) { color.SetValue(NumberOf(round + 1)); };
  WriteAndRead(change, [&] { color.GetValue(&number); });
  WriteAndRead(change, [&] { color.GetValue(nullptr, nullptr, nullptr, &component); });
}

TEST(ManyThreads, MayUseAShutter) {
  tavParameterShutter shutter;
  WriteAndRead([&](int) { shutter.SetActionTime(1000); }, [&] { shutter.GetActionTime(); });
  WriteAndRead([&](int) { shutter.SetActionTime(1000); }, [&] { shutter.SerializeParametersAsXml(); });
  WriteAndRead([&](int) { shutter.SetValue(2); }, [&] { shutter.IsChangedByCallBack(); });
}

TEST(ManyThreads, MayUseASwitchWithRelease) {
  tavParameterSwitchRelease release;
  WriteAndRead([&](int) { release.IsInverted(true); }, [&] { release.IsInverted(); });
  WriteAndRead([&](int) { release.IsInverted(true); }, [&] { release.SetValue(1); });
  WriteAndRead([&](int) { release.SetSafeTime(500); }, [&] { release.GetSafeTime(); });
  WriteAndRead([&](int) { release.SetSafeTime(500); }, [&] { release.SerializeParametersAsXml(); });
}

TEST(ManyThreads, MayUseAWeeklySchedule) {
  tavParameterThermoChronoWeek schedule;
  float points[24] = {};
  const auto change = [&](int round) { Fill(schedule, 1 + round); };
  WriteAndRead(change, [&] { schedule.GetActive(); });
  WriteAndRead(change, [&] { schedule.GetDay(schedule.Days_Monday, points); });
  WriteAndRead(change, [&] { schedule.GetCurrentTemperature(); });
  WriteAndRead([&](int) { schedule.SetOffsetTime(1100); }, [&] { schedule.GetOffsetTime(); });
}

TEST(ManyThreads, MayUseAWorkerThread) {
  vMutex lock;
  tavWorkerThread worker(lock);
  const auto run = [&](int) {
    worker.Start([](VThread*, void*) {}, nullptr, 0);
    worker.AskToEnd();
    worker.WaitForEnd();
  };
  WriteAndRead(run, [&] { run(0); });
  WriteAndRead(run, [&] { worker.Is(nullptr); });
  WriteAndRead(run, [&] { worker.MustEnd(); });
  WriteAndRead(run, [&] { worker.WaitForEnd(); });
}

// The threads of the parameters themselves, which look four times a second.
struct ManyThreadsOfParameters : testing::Test {
  void LetItLook() {
    clock.Advance(std::chrono::milliseconds(250));
    clock.AwaitSleepers(1);
  }
  TestClock clock{TestClock::Utc(2014, 4, 8, 10, 0, 0)};
};

TEST_F(ManyThreadsOfParameters, MayReadAValueThatAnotherOneSets) {
  tavParameterSwitchRelease release;
  release.SetSafeTime(1000);
  clock.AwaitSleepers(1);
  WriteAndRead([&](int round) { release.SetValue(round % 2 == 0 ? 1 : 0); }, [&] { LetItLook(); });
}

TEST_F(ManyThreadsOfParameters, MayMakeAChangeThatAnotherOneAsksAbout) {
  tavParameterShutter shutter;
  shutter.SetValue(1);
  clock.AwaitSleepers(1);
  WriteAndRead([&](int) { LetItLook(); },
               [&] {
                 shutter.IsChangedByCallBack();
                 shutter.SetValue(1);
               });
}

}  // namespace
}  // namespace tavon
