// Strict reading of values: which texts are taken, as which text of the encoders, and which are refused.
#include <gtest/gtest.h>

#include "tav_parameterfactory.h"
#include "tav_valuecheck.h"

namespace tavon {
namespace {

struct TakenText {
  const char* given;
  const char* taken;
};

std::optional<tavString> Check(tavEObject type, const tavString& text) {
  return tavCheckValue(*tavParameterFactory::FindType(type), text);
}

void ExpectTaken(tavEObject type, std::initializer_list<TakenText> texts) {
  SCOPED_TRACE(type);
  for (const TakenText& text : texts) EXPECT_EQ(Check(type, text.given), text.taken) << text.given;
}

void ExpectRefused(tavEObject type, std::initializer_list<tavString> texts) {
  SCOPED_TRACE(type);
  for (const tavString& text : texts) EXPECT_EQ(Check(type, text), std::nullopt) << text;
}

// A text of `count` numbers with a comma before each.
tavString Numbers(unsigned int count) {
  tavString text;
  for (unsigned int i = 0; i < count; ++i) text += ",21.5";
  return text;
}

TEST(ValueCheck, OfOnOffTypesTakesTheirWords) {
  for (const tavEObject type : {tavObject_ParameterSwitch, tavObject_ParameterSwitchRelease,
                                tavObject_ParameterHDScene, tavObject_ParameterAlert}) {
    ExpectTaken(type, {{"on", "1"}, {"OFF", "0"}, {"True", "1"}, {"false", "0"}, {"1", "1"}, {"0", "0"}});
    ExpectRefused(type, {"", "2", "01", " on", "on ", "onn", "-type", std::string("on\0", 3)});
  }
}

TEST(ValueCheck, OfCommandsTakesWhatTheTypeKnows) {
  ExpectTaken(tavObject_ParameterShutter, {{"1", "1"}, {"2", "2"}, {"stop", "2"}, {"3", "3"}});
  ExpectRefused(tavObject_ParameterShutter, {"0", "4", "up", "on"});
  ExpectTaken(tavObject_ParameterVRScene, {{"stop", "0"}, {"once", "1"}, {"repeat", "2"}, {"2", "2"}});
  ExpectRefused(tavObject_ParameterVRScene, {"3", "play", "on"});
}

TEST(ValueCheck, OfWholeNumbersTakesDigitsInTheRange) {
  ExpectTaken(tavObject_ParameterByte, {{"0", "0"}, {"255", "255"}, {"007", "007"}});
  ExpectRefused(tavObject_ParameterByte,
                {"256", "-1", "+1", "1.0", "0x10", "1e2", " 1", "99999999999999999999"});
}

TEST(ValueCheck, OfRealNumbersTakesFiniteOnesWithAPoint) {
  for (const tavEObject type : {tavObject_ParameterThermo, tavObject_ParameterTuner}) {
    ExpectTaken(type, {{"21.5", "21.5"}, {"-3", "-3"}, {".5", ".5"}});
    ExpectRefused(type, {"21,5", "21.5C", "nan", "inf", "1e39", "+1", "1.2.3", ".", "-", "- 1", "--1", "0x1",
                         std::string(40, '9')});
  }
}

TEST(ValueCheck, OfASliderTakesPercentAsWell) {
  ExpectTaken(tavObject_ParameterSlider,
              {{"0", "0"}, {"0.75", "0.75"}, {"1.0", "1.0"}, {"75%", "75e-2"}, {"100%", "100e-2"}});
  ExpectRefused(tavObject_ParameterSlider, {"1.01", "-0", "101%", "-1%", "%", "5 %", "50%%", "75e-2"});
}

TEST(ValueCheck, OfAColourTakesThreeOrFourComponents) {
  ExpectTaken(tavObject_ParameterColor,
              {{"#FF8000", "0xFF8000"}, {"#ff8000Aa", "0xff8000Aa"}, {"0xFF8000", "0xFF8000"}});
  ExpectRefused(tavObject_ParameterColor,
                {"FF8000", "#FF800", "#FF80000", "#FF8000FF0", "#GG8000", "0x", "#0xFF8000", "orange"});
}

TEST(ValueCheck, OfAScheduleTakesTheSetPointsOfAnEventOrOfAWeek) {
  const tavEObject type = tavObject_ParameterThermoChronoWeek;
  ExpectTaken(type, {{"on", "1"}, {"off", "0"}});
  EXPECT_EQ(Check(type, "on" + Numbers(40)), "1" + Numbers(40));
  EXPECT_EQ(Check(type, "0" + Numbers(168)), "0" + Numbers(168));
  ExpectRefused(type, {"2", "on,", ",", "on" + Numbers(39), "on" + Numbers(41), "on" + Numbers(169),
                       Numbers(40), "on" + Numbers(39) + ",", "on" + Numbers(39) + ",warm"});
}

TEST(ValueCheck, OfTextsTakesUtf8ThatAnEventCanCarry) {
  for (const tavEObject type : {tavObject_ParameterInfo, tavObject_ParameterCamera}) {
    ExpectTaken(type, {{" Gr\u00FC\u00DFe, -h ", " Gr\u00FC\u00DFe, -h "}});
    EXPECT_EQ(Check(type, std::string(255, 'x')), std::string(255, 'x'));
    ExpectRefused(type, {"", std::string(256, 'x'), "\xFC", "\xC3"});
  }
}

// A type that says nothing about its texts leaves them to its encoder.
TEST(ValueCheck, OfATypeWithoutASyntaxTakesAnyText) {
  const tavParameterType type{.id = tavObject_None, .name = "", .source = "", .size = 1, .encode = nullptr};
  EXPECT_EQ(tavCheckValue(type, " 7x"), " 7x");
  EXPECT_EQ(tavCheckValue(type, ""), std::nullopt);
  EXPECT_EQ(tavPossibleValues(type), "any text");
}

// A new type must not forget to say what its texts are.
TEST(ValueCheck, KnowsTheSyntaxOfEveryType) {
  for (const tavParameterType* type : tavParameterFactory::GetTypes()) {
    EXPECT_NE(type->syntax.form, tavValueForm_Any) << type->name;
  }
}

}  // namespace
}  // namespace tavon
