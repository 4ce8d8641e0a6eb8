#include "tav_house.h"

#include <gmock/gmock.h>

#include <atomic>
#include <cstring>
#include <filesystem>
#include <future>

#include "expect_report.h"
#include "object_lock.h"
#include "tav_floatbytes.h"
#include "tav_parameterbyte.h"
#include "tav_parametercolor.h"
#include "tav_parameterinfo.h"
#include "tav_parametershutter.h"
#include "tav_parameterslider.h"
#include "tav_parameterswitch.h"
#include "tav_parameterthermo.h"
#include "tav_parameterthermochronoweek.h"
#include "tav_parametervrscene.h"
#include "temporary_folder.h"
#include "vevent.h"
#include "vthread.h"
#include "write_and_read.h"

using namespace tavon;
using testing::ElementsAre;
using Result = tavHouse::Result;

namespace {

constexpr ReportsOf kInvalid{"tav_house", 6};
constexpr ReportsOf kFailed{"tav_house", 1};

std::vector<unsigned int> IdsOf(const tavHouse& house) {
  std::vector<unsigned int> ids;
  house.Visit([&ids](tavIParameter& parameter) { ids.push_back(parameter.GetUniqueID()); });
  return ids;
}

tavEvent Event(unsigned int id, std::vector<unsigned char> value) { return {id, value}; }

TEST(TavHouse, VisitsInTheOrderOfAddingAndFindsById) {
  tavHouse house;
  tavParameterByte elsewhere;
  elsewhere.SetUniqueID(3);
  const tavParameterSwitch* const lamp = house.Make<tavParameterSwitch>(7, L"Lamp");
  EXPECT_EQ(house.Add(elsewhere), tavError_NoError);
  house.Make<tavParameterSlider>(5, L"Dimmer");
  EXPECT_THAT(IdsOf(house), ElementsAre(7, 3, 5));
  EXPECT_EQ(house.Find(7).get(), lamp);
  EXPECT_EQ(lamp->GetName(), L"Lamp");
  EXPECT_EQ(house.Find(4), nullptr);

  EXPECT_EQ(house.Remove(3).get(), &elsewhere);
  EXPECT_EQ(house.Remove(3), nullptr);
  EXPECT_EQ(house.Find(3), nullptr);
  EXPECT_THAT(IdsOf(house), ElementsAre(7, 5));
}

TEST(TavHouse, RefusesAnIdThatIsTaken) {
  tavHouse house;
  house.Make<tavParameterSwitch>(7, L"Lamp");
  tavParameterByte other;
  other.SetUniqueID(7);
  ExpectReport(kInvalid("Add", "the house has a parameter 7"), 6, [&] { return house.Add(other); });
  ExpectReport(kInvalid("Add", "parameter == 0"), 6, [&] { return house.Add(nullptr); });
  EXPECT_STREQ(house.Find(7)->GetTypeName(), "ParameterSwitch");
  EXPECT_THAT(IdsOf(house), ElementsAre(7));
}

TEST(TavHouse, DestroysWhatWasAddedLastFirst) {
  static std::vector<unsigned int> destroyed;
  destroyed.clear();  // if the tests are repeated
  struct Mortal : tavParameterByte {
    ~Mortal() override { destroyed.push_back(GetUniqueID()); }
  };
  {
    Mortal elsewhere;
    elsewhere.SetUniqueID(4);
    tavHouse house;
    for (const unsigned int id : {3U, 1U, 2U}) house.Make<Mortal>(id, L"");
    house.Add(elsewhere);
  }
  EXPECT_THAT(destroyed, ElementsAre(2, 1, 3, 4));
}

// There must be neither a deadlock nor, for the sanitizers, a race or a parameter that goes in its own hook.
TEST(TavHouse, MayBeUsedByHooksWhileItIsDestroyed) {
  struct Curious : tavParameterShutter {
    Curious(tavHouse& lookedAt, VEvent& o_begun) : house(lookedAt), begun(o_begun) {}
    ~Curious() override { term_thread(); }
    void OnStop() override {
      begun.Signal();
      for (int i = 0; i < 1000; ++i) house.Visit([](tavIParameter& parameter) { parameter.IsDirty(); });
    }
    tavHouse& house;
    VEvent& begun;
  };
  VEvent begun;
  tavHouse house;
  house.Make<Curious>(1, L"Blind", house, begun)->SetValue(1);
  house.Make<tavParameterByte>(2, L"");
  begun.Wait();
}

TEST(TavHouse, TellsWhatBecameOfAnEvent) {
  tavHouse house;
  auto* const week = house.Make<tavParameterThermoChronoWeek>(6, L"Heating");
  week->SetDataFromString("0,17.5");
  EXPECT_EQ(house.Apply(Event(6, {1})), Result::Applied);
  EXPECT_THAT(week->ValueToString(), testing::StartsWith("1,17.5,")) << "the set-points stay";
  EXPECT_EQ(house.Apply(Event(7, {1})), Result::NoSuchParameter);
  EXPECT_EQ(house.Apply(Event(6, {})), Result::NoValue);
  EXPECT_TRUE(ObjectLock::BecomesFree(*week));
}

// A house in which a switch moves a slider.
struct TavHouseWithLink : testing::Test {
  TavHouseWithLink() {
    const unsigned char on = 1;
    lamp.SetDrivenTarget(&dimmer);
    lamp.AddDrivenMapItem(tavCodeOperator_Equal, &on, 1, full, 4);
  }
  tavHouse house;
  tavParameterSlider& dimmer = *house.Make<tavParameterSlider>(2, L"Dimmer");
  tavParameterSwitch& lamp = *house.Make<tavParameterSwitch>(1, L"Lamp");
  const unsigned char full[4] = {0, 0, 0x80, 0x3F};
};

TEST_F(TavHouseWithLink, TakesOverUntilLinksHaveNothingMoreToSay) {
  std::vector<tavString> changes;
  const auto note = [&](tavIParameter& changed) {
    EXPECT_TRUE(changed.IsDirty()) << "the call-back comes first";
    changes.emplace_back(changed.ToString() + "=" + changed.ValueToString());
  };
  house.Apply(Event(1, {1}));
  EXPECT_EQ(house.TakeOver(note), 1U);
  EXPECT_EQ(house.TakeOver(note), 1U);
  EXPECT_EQ(house.TakeOver(note), 0U);
  EXPECT_THAT(changes, ElementsAre("Lamp.ParameterSwitch=1", "Dimmer.ParameterSlider=1"));

  house.Apply(Event(1, {0}));
  EXPECT_EQ(house.TakeOver(), 1U) << "without a call-back";
  EXPECT_FALSE(lamp.IsDirty());
}

TEST_F(TavHouseWithLink, ShowsAValueThatChangesWhileItIsTakenOver) {
  std::vector<tavString> shown;
  lamp.SetValue(1);
  house.TakeOver([&](tavIParameter& changed) {
    shown.push_back(changed.ValueToString());
    lamp.SetValue(0);
  });
  EXPECT_THAT(shown, ElementsAre("1", "0"));
  EXPECT_FALSE(lamp.IsDirty());
}

TEST_F(TavHouseWithLink, MayBeUsedInItsCallBacksAndByOthersMeanwhile) {
  house.Visit([&](tavIParameter& visited) {
    EXPECT_EQ(std::async(std::launch::async, [&] { return house.Find(2); }).get().get(), &dimmer);
    house.Make<tavParameterByte>(visited.GetUniqueID() + 10, L"");
    house.Remove(1);  // this visit shows it all the same
  });
  EXPECT_THAT(IdsOf(house), ElementsAre(2, 12, 11));
}

// A scene that is played on its thread.
struct CountedScene : tavParameterVRScene {
  ~CountedScene() override { delete_scene(); }
  void Build(tavIParameter& target) {
    const unsigned char value = 1;
    BuildScene_Begin();
    BuildScene_AddSetParameter(&target, &value, 1);
    BuildScene_AddWait(10);
    BuildScene_End();
  }
  void OnPlayFinish() override {
    ++plays;
    finished.Signal();
  }
  std::atomic<int> plays{0};
  VEvent finished;
};

// The play thread misses a request just after the scene was built, and one just after a play.
TEST(TavHouse, RepeatsTheRequestOfASceneUntilItPlays) {
  tavHouse house;
  auto& lamp = *house.Make<tavParameterByte>(1, L"Lamp");
  auto& scene = *house.Make<CountedScene>(2, L"Evening");
  scene.Build(lamp);
  for (int play = 1; play <= 3; ++play) {
    scene.finished.Reset();
    house.Apply(Event(2, {1}));
    while (!scene.finished.Wait(10UL)) house.TakeOver();
    EXPECT_EQ(scene.plays, play) << "asked for again, but played once";
    EXPECT_EQ(scene.GetValue(), 0);
  }
}

TEST(TavHouse, RepeatsNoRequestThatHasBeenStopped) {
  tavHouse house;
  auto& lamp = *house.Make<tavParameterByte>(1, L"Lamp");
  auto& scene = *house.Make<CountedScene>(2, L"Evening");
  scene.Build(lamp);
  scene.SetValue(2);
  while (lamp.GetValue() == 0) {
    house.TakeOver();
    VThread::SleepM(1);
  }
  scene.SetValue(0);
  house.TakeOver();
  EXPECT_EQ(scene.GetValue(), 0);
  scene.finished.Reset();
  scene.SetValue(1);
  while (!scene.finished.Wait(10UL)) house.TakeOver();
  EXPECT_EQ(scene.plays, 1) << "the repeated play did not come to its end";
}

TEST(TavHouse, MayBeUsedByManyThreads) {
  tavHouse house;
  house.Make<tavParameterByte>(0, L"");
  const auto change = [&](int) {
    house.Make<tavParameterByte>(1, L"");
    house.Remove(1);
  };
  WriteAndRead(change, [&] { change(0); });
  WriteAndRead(change, [&] { house.Find(1); });
  WriteAndRead(change, [&] { house.TakeOver(); });
  EXPECT_THAT(IdsOf(house), ElementsAre(0));
}

// The dialogs of the example `house` specify the file, and how one that was edited is restored.
struct TavHouseFile : testing::Test {
  const TemporaryFolder folder;
  const std::string path = folder.Path("house.state");
};

// One third has no short text, and not-a-number none at all.
void Fill(tavHouse& house, bool withValues) {
  auto& week = *house.Make<tavParameterThermoChronoWeek>(6, L"Heating");
  auto& thermo = *house.Make<tavParameterThermo>(2, L"B\u00E4d \"1\"\\\n");
  auto& slider = *house.Make<tavParameterSlider>(3, L"");
  auto& info = *house.Make<tavParameterInfo>(4294967295U, L"Door");
  house.Make<tavParameterInfo>(5, L"Empty");
  auto& colour = *house.Make<tavParameterColor>(1, L"Colour");
  if (!withValues) return;
  week.SetDataFromString("0,17.5,0.333333");
  thermo.SetValue(1.0F / 3);
  const unsigned char notANumber[] = {1, 2, 0xC0, 0x7F};
  slider.SetData(notANumber, 4, 1);
  info.SetValue("say \"no\"\\\n\x7F\xFF # \xC3\xA4");
  colour.SetValue(0x11223344U);
}

TEST_F(TavHouseFile, BringsEachValueBackByteByByteAndClean) {
  tavHouse saved;
  Fill(saved, true);
  EXPECT_EQ(saved.Save(path), tavError_NoError);
  tavHouse restored;
  Fill(restored, false);
  EXPECT_EQ(restored.Restore(path), tavError_NoError);
  restored.Visit([&](tavIParameter& parameter) {
    SCOPED_TRACE(parameter.ToString());
    EXPECT_FALSE(parameter.IsDirty());
    const auto original = saved.Find(parameter.GetUniqueID());
    ASSERT_EQ(parameter.GetDataSize(), original->GetDataSize());
    EXPECT_EQ(std::memcmp(parameter.GetData(), original->GetData(), original->GetDataSize()), 0);
  });
  const std::string before = ReadFile(path);
  EXPECT_THAT(before, testing::HasSubstr("\n2 ParameterThermo \"B\u00E4d \\\"1\\\"\\\\\\x0A\" ABAAAA3E # "));
  EXPECT_EQ(restored.Save(path), tavError_NoError);
  EXPECT_EQ(ReadFile(path), before);
}

TEST_F(TavHouseFile, IsWrittenByOneThreadAtATime) {
  struct Watched : tavParameterByte {
    tavString ValueToString() const override {
      EXPECT_EQ(++saves, 1);
      VThread::SleepM(20);  // for a thread that does not wait until it may save
      --saves;
      return tavParameterByte::ValueToString();
    }
    mutable std::atomic<int> saves{0};
  };
  tavHouse house;
  house.Make<Watched>(1, L"");
  const auto other = std::async(std::launch::async, [&] { house.Save(path); });
  EXPECT_EQ(house.Save(path), tavError_NoError);
}

TEST_F(TavHouseFile, MayBeMissingButMustBeReadable) {
  tavHouse house;
  EXPECT_EQ(house.Restore(path), tavError_NoError);
  ExpectReport(kFailed("Restore", "Can not restore the house from " + folder.Path() + ": 21 Is a directory"),
               1, [&] { return house.Restore(folder.Path()); });
}

TEST_F(TavHouseFile, StaysAsItWasWhenSavingFails) {
  tavHouse house;
  house.Make<tavParameterByte>(1, L"");
  WriteFile(path, "old");
  std::filesystem::create_symlink("/dev/full", path + ".new");  // stands for a full disk
  ExpectReport(kFailed("Save", "Can not save the house in " + path + ": 28 No space left on device"), 1,
               [&] { return house.Save(path); });
  EXPECT_EQ(ReadFile(path), "old");
  EXPECT_FALSE(std::filesystem::is_symlink(path + ".new")) << "what was written is gone";

  const std::string nowhere = folder.Path("none/house.state");
  ExpectReport(kFailed("Save", "Can not save the house in " + nowhere + ": 2 No such file or directory"), 1,
               [&] { return house.Save(nowhere); });
  EXPECT_EQ(house.Save(path), tavError_NoError);
  EXPECT_NE(ReadFile(path), "old");
}

}  // namespace
