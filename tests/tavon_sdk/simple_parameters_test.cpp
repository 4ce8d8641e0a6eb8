// What makes the types different that are a number, a colour, an alert or a text.
#include <gmock/gmock.h>

#include "expect_report.h"
#include "object_lock.h"
#include "tav_parameteralert.h"
#include "tav_parametercamera.h"
#include "tav_parametercolor.h"
#include "tav_parameterinfo.h"
#include "tav_parameterslider.h"

namespace tavon {
namespace {

using testing::ElementsAre;

TEST(TavParameterSlider, StopsAtItsEnds) {
  tavParameterSlider slider;
  slider.SetValue(1.5F);
  EXPECT_EQ(slider.GetValue(), 1.0F);
  slider.SetValue(-0.2F);
  EXPECT_EQ(slider.GetValue(), 0.0F);
  slider.SetValue(0.126F);
  EXPECT_EQ(slider.GetValue(), 0.126F);
  EXPECT_EQ(slider.ValueToString(), "0.13");
}

// Notes what its hook is told.
struct Color : tavParameterColor {
  void OnRGBValue(unsigned char on) override { calls.push_back(on); }
  std::vector<int> calls;
};

TEST(TavParameterColor, PacksItsFirstComponentHighest) {
  Color color;
  color.SetValue(0x112233FE);
  EXPECT_EQ(color.ValueToString(), "0x112233FE");
  unsigned int packed = 0;
  color.GetValue(&packed);
  EXPECT_EQ(packed, 0x112233FEU);
  unsigned char third = 0;
  color.GetValue(nullptr, nullptr, &third, nullptr);
  EXPECT_EQ(third, 0x33);
  // The record must be thrown: the null pointer would be written through.
  ExpectUnlockedAfterThrow(color, {6, "tav_parametercolor", "GetValue", "o_val == 0"},
                           [&] { color.GetValue(nullptr); });
}

TEST(TavParameterColor, TellsItsHookWhetherAnyOfTheFirstThreeComponentsIsOn) {
  Color color;
  for (const unsigned int value : {0x80U, 0x10000U, 0x1000000U, 0x100U}) color.SetValue(value);
  EXPECT_THAT(color.calls, ElementsAre(0, 1, 1, 1));
  color.IsDirty(false);
  color.SetValue(0x100);
  EXPECT_EQ(color.calls.size(), 4U) << "told nothing of a value that is known";
}

TEST(TavParameterColor, WritesNoMoreThanFourComponentsOfALongerText) {
  unsigned char bytes[] = {9, 9, 9, 9, 9};
  tavParameterColor::GetBinaryDataFromString("0x1122334455", bytes);
  EXPECT_THAT(bytes, ElementsAre(0x11, 0x22, 0x33, 0x44, 9));
}

// Counts its alerts.
struct Alert : tavParameterAlert {
  void OnAlert() override { ++alerts; }
  int alerts = 0;
};

TEST(TavParameterAlert, AlertsOnEveryActiveWrite) {
  Alert alert;
  alert.SetValue(128);
  EXPECT_EQ(alert.GetValue(), 1) << "on is stored as 1";
  alert.SetValue(1);
  alert.SetValue(0);
  EXPECT_EQ(alert.alerts, 2);
}

TEST(TavParameterAlert, AlertsOnZeroWhenItIsInverted) {
  Alert alert;
  alert.IsInverted(true);
  EXPECT_EQ(alert.GetValue(), 1) << "a change of its sense sets it inactive";
  EXPECT_EQ(alert.alerts, 0);
  alert.SetValue(0);
  EXPECT_EQ(alert.alerts, 1);
}

TEST(TavParameterAlert, SerializesWithItsMessageUnescaped) {
  Alert alert;
  alert.IsInverted(true);
  EXPECT_TRUE(alert.IsInverted());
  alert.SetFlags(0);
  alert.SetSeverity(tavSeverity_Alarm);
  alert.SetMessage(L"\u00E9<");
  EXPECT_EQ(alert.SerializeParametersAsXml(),
            "<flags>00000000</flags><value>1</value><invert>1</invert><severity>2</severity>"
            "<message>\u00E9<</message>");
}

struct TavParameterInfo : testing::Test {
  void Write(const char* data, unsigned int size) {
    info.SetData(reinterpret_cast<const unsigned char*>(data), size, 1);
  }
  bool Is(tavECodeOperator op, const char* operand, unsigned int size) const {
    return info.Comparison(op, reinterpret_cast<const unsigned char*>(operand), size);
  }
  tavParameterInfo info;
};

TEST_F(TavParameterInfo, IsDirtyAfterANewTextOnly) {
  info.SetValue(L"\u00E9");
  EXPECT_EQ(info.GetValue(), "\u00E9");
  info.IsDirty(false);
  info.SetValue("\u00E9");
  EXPECT_FALSE(info.IsDirty());
  info.SetValue("");
  EXPECT_FALSE(info.IsDirty()) << "it never becomes empty again";
  Write("\u00E9", 3);
  EXPECT_TRUE(info.IsDirty()) << "the zero is part of the text now";
}

TEST_F(TavParameterInfo, ComparesUpToTheZeroOfTheOperandForEquality) {
  info.SetValue("abc");
  EXPECT_TRUE(Is(tavCodeOperator_Equal, "abc", 1)) << "the size does not count";
  EXPECT_TRUE(Is(tavCodeOperator_NotEqual, "abcd", 3));
  Write("abc\0d", 5);
  EXPECT_TRUE(Is(tavCodeOperator_NotEqual, "abc", 5)) << "all of the value counts";
}

TEST(TavParameterCamera, GivesTheLocalUrlInALocalNetworkAndTheOnlyOneAnywhere) {
  tavParameterCamera camera;
  camera.SetRemoteUrl("far");
  camera.AddLocalNetwork("10.0.0");
  camera.AddLocalNetwork("192.168.1");
  EXPECT_EQ(camera.GetUrl("192.168.1.20"), "far");
  camera.SetLocalUrl("near");
  EXPECT_EQ(camera.GetUrl("192.168.1.20"), "near");
  camera.SetLocalUrl(L"\u00E9");
  EXPECT_EQ(camera.GetUrl("192.168.1.20"), "\u00E9");
  EXPECT_EQ(camera.GetUrl("192.168.10.1"), "far") << "a network is known by its whole prefix";
  camera.SetRemoteUrl(L"");
  EXPECT_EQ(camera.GetUrl("1.2.3.4"), "\u00E9");
  ExpectReport({6, "tav_parametercamera", "GetUrl", "strIp is not valid ip! host"}, "",
               [&] { return camera.GetUrl("host"); });
}

}  // namespace
}  // namespace tavon
