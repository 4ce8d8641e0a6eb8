// What makes the types different that are a number, a colour or an alert.
#include <gmock/gmock.h>

#include "tav_parameteralert.h"
#include "tav_parametercolor.h"
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

TEST(TavParameterColor, TellsItsHookWhetherAnyOfTheFirstThreeComponentsIsOn) {
  Color color;
  for (const unsigned int value : {0x80U, 0x10000U, 0x1000000U, 0x100U}) color.SetValue(value);
  EXPECT_THAT(color.calls, ElementsAre(0, 1, 1, 1));
}

// Counts its alerts.
struct Alert : tavParameterAlert {
  void OnAlert() override { ++alerts; }
  int alerts = 0;
};

TEST(TavParameterAlert, AlertsOnEveryActiveWrite) {
  Alert alert;
  for (const bool value : {true, true, false}) alert.SetValue(value);
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

}  // namespace
}  // namespace tavon
