#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <random>
#include <thread>

#include "tav_parameterfactory.h"
#include "tav_parametershutter.h"
#include "tav_parameterswitchrelease.h"
#include "tav_parametervrscene.h"
#include "test_clock.h"

using std::chrono_literals::operator""ms, std::chrono_literals::operator""s;

namespace tavon {
namespace {

std::atomic<unsigned int> houses{0}, uses{0}, stops{0}, releases{0}, settings{0}, plays{0};

template <class Parameter>
struct Counting : Parameter {
  ~Counting() { this->term_thread(); }
  void OnStop() { ++stops; }
  void OnSafeValue() { ++releases; }
  void OnParameterSet(tavIParameter*) { ++settings; }
  void OnPlayFinish() { ++plays, finished.Signal(); }
  VEvent finished;
};

// Makes parameters of all types, each driving the next, and what sets them; two threads use them at once.
void LiveInAHouse(unsigned int number) {
  std::vector<std::unique_ptr<tavIParameter>> parameters;
  Counting<tavParameterShutter> shutter;
  Counting<tavParameterSwitchRelease> release;
  Counting<tavParameterVRScene> onThread;
  tavParameterVRScene direct;
  const unsigned char data[] = {3, 1, 2, 4};
  for (int type = tavObject_ParameterSwitch; type <= tavObject_ParameterCamera; ++type) {
    parameters.emplace_back(tavParameterFactory::CreateByType(static_cast<tavEObject>(type)));
    tavIParameter& driver = type == tavObject_ParameterSwitch ? shutter : **(parameters.end() - 2);
    driver.AddDrivenMapItem(tavCodeOperator_NotEqual, &data[3], 1, data, 4);
    driver.SetDrivenTarget(parameters.back().get());
  }
  for (tavParameterVRScene* scene : {&direct, static_cast<tavParameterVRScene*>(&onThread)}) {
    scene->BuildScene_Begin();
    if (scene == &onThread) scene->BuildScene_AddWait(10);
    scene->BuildScene_AddSetParameter(parameters[0].get(), data, 1);
    scene->BuildScene_AddSetParameter(&shutter, data, 1);
  }
  onThread.BuildScene_End();
  const auto use = [&](unsigned int seed) {
    std::minstd_rand random(seed);
    for (int i = 0; i < 40; ++i, ++uses) {
      const auto any = static_cast<unsigned int>(random()) / 16;
      tavIParameter& parameter = *parameters[any % parameters.size()];
      parameter.SetDataFromString(tavString::FromULong(any % 3) + ",20");
      (any % 9 == 0 ? shutter : parameter).IsDirty(false);
      EXPECT_NE(parameter.SerializeAsXml(), parameter.ToString());
      if (any % 5 == 0) release.SetSafeTime(any % 500 == 0 ? 0 : 1000);
      if (any % 8 == 0) release.SetValue(1);
      shutter.SetValue(static_cast<unsigned char>(any % 3 + 1));
      (i % 2 == 0 ? onThread : direct).SetValue(static_cast<unsigned char>(any % 3));
    }
  };
  std::thread other(use, 2 * number);
  use(2 * number + 1);
  if (number % 2 == 0) onThread.BuildScene_Begin();
  other.join();
  for (onThread.finished.Reset(); number % 64 == 1 && !onThread.finished.Wait(5);) onThread.SetValue(1);
}

TEST(Model, IsMadeUsedPlayedAndDestroyedByManyThreads) {
  const char* const seconds = std::getenv("URA_STRESS_SECONDS");  // how long; one by default
  const auto limit = std::chrono::seconds(std::atoi(seconds != nullptr ? seconds : "1"));
  const auto end = std::chrono::steady_clock::now() + limit;
  const auto live = [end] {
    while (std::chrono::steady_clock::now() < end) {
      LiveInAHouse(++houses);
    }
  };
  TestClock clock(TestClock::Utc(2001, 9, 9, 1, 46, 40));
  std::atomic<int> living{2};
  const auto liveAndDie = [&] { live(), --living; };
  std::thread second(liveAndDie), third(liveAndDie);
  while (living != 0) {  // time flies
    clock.Advance(1s);
    std::this_thread::sleep_for(1ms);
  }
  second.join();
  third.join();
  std::fprintf(stderr, "%u objects in %u houses, %u uses, %u stops, %u releases, %u settings, %u plays\n",
               houses * 18, houses.load(), uses.load(), stops.load(), releases.load(), settings.load(),
               plays.load());
  EXPECT_GT(houses, 3U);
  EXPECT_GT(stops, 0U);
  EXPECT_GT(releases, 0U);
  EXPECT_GT(settings, 0U);
  EXPECT_GT(plays, 0U);
}

}  // namespace
}  // namespace tavon
