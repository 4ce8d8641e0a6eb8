// Hooks that throw, rebuild, stop and restart what they belong to, while other threads use it.
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <memory>
#include <random>
#include <stdexcept>
#include <thread>

#include "tav_parameterbyte.h"
#include "tav_parameterfactory.h"
#include "tav_parametershutter.h"
#include "tav_parameterswitchrelease.h"
#include "tav_parameterthermochronoweek.h"
#include "tav_parametervrscene.h"
#include "test_clock.h"

using std::chrono_literals::operator""ms, std::chrono_literals::operator""s;

namespace tavon {
namespace {

constexpr unsigned char kOn = 1;

std::atomic<unsigned int> calls{0};

// What a hook does next: each thing now and then, in a fixed order.
enum class Mischief { Nothing, Throw, Stop, Set, Rebuild, Delete };
Mischief Next() { return static_cast<Mischief>(calls++ % 6); }

// Has the hooks of all types; each type calls those that it knows.
template <class Parameter>
struct Wild : Parameter {
  using Parameter::Parameter;
  ~Wild() { this->term_thread(); }
  void OnStop() { Act(); }
  void OnSafeValue() { Act(); }
  void OnChangeTemperature() { Act(); }
  void OnParameterSet(tavIParameter*) { Act(); }
  void OnPlayFinish() { Act(); }
  void Act() {
    switch (Next()) {
      case Mischief::Throw:
        throw std::runtime_error("hook");
      case Mischief::Stop:
        return this->term_thread();
      // NOLINTNEXTLINE(bugprone-branch-clone): without a scene this and the next do nothing
      case Mischief::Rebuild:
        if constexpr (requires { this->Build(); }) this->Build();
        return;
      case Mischief::Delete:
        if constexpr (requires { this->delete_scene(); }) this->delete_scene();
        return;
      case Mischief::Set:
        this->SetDataFromString("1");
        return;
      case Mischief::Nothing:
        return;
    }
  }
};

struct BuiltScene : tavParameterVRScene {
  explicit BuiltScene(bool onThread) : playsOnThread(onThread) { Build(); }
  void Build() {
    BuildScene_Begin();
    if (playsOnThread) BuildScene_AddWait(10);
    for (int i = 0; i < 2; ++i) BuildScene_AddSetParameter(&target, &kOn, 1);
    if (playsOnThread) BuildScene_End();
  }
  const bool playsOnThread;
  tavParameterByte target;
};

// An exception of a hook that this thread called itself is this thread's.
template <class Use>
void Survive(Use use) {
  try {
    use();
  } catch (const std::runtime_error&) {
  }
}

void LiveWithWildHooks(unsigned int seed) {
  Wild<tavParameterShutter> shutter;
  Wild<tavParameterSwitchRelease> release;
  Wild<tavParameterThermoChronoWeek> schedule;
  Wild<BuiltScene> onThread(true);
  Wild<BuiltScene> atOnce(false);
  release.SetSafeTime(1000);
  // One parameter of each type, each driving the next.
  std::vector<std::unique_ptr<tavIParameter>> parameters;
  for (int id = tavObject_ParameterSwitch; id <= tavObject_ParameterCamera; ++id) {
    parameters.emplace_back(tavParameterFactory::CreateByType(static_cast<tavEObject>(id)));
    tavIParameter& driver = id == tavObject_ParameterSwitch ? shutter : **(parameters.end() - 2);
    driver.AddDrivenMapItem(tavCodeOperator_NotEqual, &kOn, 1, &kOn, 1);
    driver.SetDrivenTarget(parameters.back().get());
  }
  const auto use = [&](unsigned int start) {
    std::minstd_rand random(start);
    for (int i = 0; i < 40; ++i) {
      const auto any = static_cast<unsigned char>(random() / 16);
      tavIParameter& parameter = *parameters[any % parameters.size()];
      parameter.SetDataFromString(tavString::FromInt(any % 3) + ",20");
      parameter.IsDirty(false);
      EXPECT_NE(parameter.SerializeAsXml(), parameter.ToString());
      shutter.SetValue(any % 3 + 1);
      release.SetValue(any % 2);
      Survive([&] { schedule.SetActive(any % 2); });
      onThread.SetValue(any % 3);
      Survive([&] { atOnce.SetValue(any % 3); });
      std::this_thread::sleep_for(1ms);
    }
  };
  std::thread other(use, 2 * seed);
  use(2 * seed + 1);
  if (seed % 2 == 0) onThread.term_thread();
  other.join();
}

TEST(HooksStress, WildHooksHarmNobody) {
  const char* const seconds = std::getenv("URA_STRESS_SECONDS");  // how long; one by default
  const auto limit = std::chrono::seconds(std::atoi(seconds != nullptr ? seconds : "1"));
  const auto end = std::chrono::steady_clock::now() + limit;
  TestClock clock(TestClock::Utc(2001, 9, 9, 1, 46, 40));
  std::atomic<int> living{2};
  std::atomic<unsigned int> houses{0};
  const auto live = [&] {
    do LiveWithWildHooks(++houses);
    while (std::chrono::steady_clock::now() < end);
    --living;
  };
  // The reports of exceptions are told to nobody: their number has no bounds.
  tavError::Level = tavLogLevel_CallBack;
  std::thread second(live);
  std::thread third(live);
  while (living != 0) {  // time flies
    clock.Advance(1s);
    std::this_thread::sleep_for(1ms);
  }
  second.join();
  third.join();
  tavError::Level = tavLogLevel_Console;
  std::fprintf(stderr, "%u calls of hooks in %u houses\n", calls.load(), houses.load());
  EXPECT_GT(calls, 12U);
}

}  // namespace
}  // namespace tavon
