// The bytes on the wire that the text of a value becomes, type by type.
#include <gmock/gmock.h>

#include "tav_parameterfactory.h"

namespace tavon {
namespace {

using testing::Each;
using testing::ElementsAre;

using Bytes = std::vector<unsigned char>;

// The bytes of a value, stored over those of an earlier one.
Bytes Encode(tavEObject type, const tavString& text, Bytes data = {}) {
  EXPECT_EQ(tavParameterFactory::StringToData(type, text, &data), tavError_NoError) << text;
  return data;
}

struct EncodingCase {
  const char* text;
  Bytes bytes;
};

void ExpectBytes(std::initializer_list<tavEObject> types, std::initializer_list<EncodingCase> cases) {
  for (const tavEObject type : types) {
    for (const EncodingCase& c : cases) EXPECT_EQ(Encode(type, c.text), c.bytes) << type << " " << c.text;
  }
}

TEST(ValueEncoding, OfOnOffTypesLooksAtTheLowEightBitsOfTheNumber) {
  ExpectBytes({tavObject_ParameterSwitch, tavObject_ParameterSwitchRelease, tavObject_ParameterHDScene,
               tavObject_ParameterAlert},
              {{"0", {0}},
               {"-1", {1}},
               {"128", {1}},
               {"abc", {0}},
               {"256", {0}},
               {"257", {1}},
               {" +2x", {1}},
               {"4294967296", {1}}});  // reading stops at 2147483647
}

TEST(ValueEncoding, OfByteTypesKeepsTheLowEightBitsOfTheNumber) {
  ExpectBytes({tavObject_ParameterByte, tavObject_ParameterVRScene},
              {{"7", {7}}, {"511", {255}}, {"-2", {254}}, {"x", {0}}});
}

TEST(ValueEncoding, OfAShutterLimitsTheLowEightBitsToItsCommands) {
  ExpectBytes({tavObject_ParameterShutter},
              {{"0", {1}}, {"1", {1}}, {"2", {2}}, {"3", {3}}, {"9", {3}}, {"256", {1}}, {"260", {3}}});
}

TEST(ValueEncoding, OfNumbersIsLittleEndianSinglePrecisionWithoutLimits) {
  ExpectBytes({tavObject_ParameterThermo, tavObject_ParameterTuner}, {{"21.5C", {0, 0, 0xAC, 0x41}},
                                                                      {"0.1", {0xCD, 0xCC, 0xCC, 0x3D}},
                                                                      {"warm", {0, 0, 0, 0}},
                                                                      {"1e39", {0, 0, 0x80, 0x7F}},
                                                                      {"-0x1p-149", {1, 0, 0, 0x80}}});
}

TEST(ValueEncoding, OfASliderStopsAtItsEnds) {
  ExpectBytes({tavObject_ParameterSlider},
              {{"0.5", {0, 0, 0, 0x3F}},
               {"1.7", {0, 0, 0x80, 0x3F}},
               {"1.00000000001", {0, 0, 0x80, 0x3F}},
               {"-3", {0, 0, 0, 0}},
               {"-1e-60", {0, 0, 0, 0x80}},  // narrowed to -0.0, which is not below 0.0
               {"nan", {0, 0, 0xC0, 0x7F}}});
}

TEST(ValueEncoding, OfAColourStartsBehindItsPrefix) {
  ExpectBytes({tavObject_ParameterColor},
              {{"0xFF8000", {0xFF, 0x80, 0, 0}},
               {"0X11223344", {0x11, 0x22, 0x33, 0x44}},
               {"0x1122334455", {0x11, 0x22, 0x33, 0x44}},
               {"0x112", {0x11, 0, 0, 0}},
               {"#12345", {0, 0x23, 0x45, 0}},  // no prefix: it spoils the first pair
               {"aX01x02", {0x02, 0, 0, 0}}});  // a small x is looked for first
}

TEST(ValueEncoding, OfAColourReadsPairsAsAnInputStreamReadsHexadecimalNumbers) {
  ExpectBytes({tavObject_ParameterColor}, {{"09afAF9g", {0x09, 0xAF, 0xAF, 0x09}},
                                           {"g1@1`1:1", {0, 0, 0, 0}},
                                           {"/1 1-1+1", {0, 0, 0, 0}},
                                           {"1 1-fG\u00E9", {0x01, 0x01, 0x0F, 0}}});
}

TEST(ValueEncoding, OfASingleNumberLeavesTheSetPointsOfASchedule) {
  const Bytes schedule = Encode(tavObject_ParameterThermoChronoWeek, "258", Bytes(673, 9));
  EXPECT_EQ(schedule[0], 2) << "the low 8 bits";
  EXPECT_THAT(Bytes(schedule.begin() + 1, schedule.end()), Each(9));
}

TEST(ValueEncoding, OfAListReplacesTheSetPointsOfASchedule) {
  const Bytes schedule = Encode(tavObject_ParameterThermoChronoWeek, "1,20.5,,21", Bytes(673, 9));
  EXPECT_THAT(Bytes(schedule.begin(), schedule.begin() + 13),
              ElementsAre(1, 0, 0, 0xA4, 0x41, 0, 0, 0, 0, 0, 0, 0xA8, 0x41));
  EXPECT_THAT(Bytes(schedule.begin() + 13, schedule.end()), Each(0));
}

TEST(ValueEncoding, OfAScheduleDropsWhatComesAfterTheWeek) {
  tavString list = "x";
  for (int setPoint = 1; setPoint <= 200; ++setPoint) list += "," + tavString::FromInt(setPoint);
  const Bytes schedule = Encode(tavObject_ParameterThermoChronoWeek, list);
  ASSERT_EQ(schedule.size(), 673U);
  EXPECT_THAT(Bytes(schedule.begin() + 669, schedule.end()), ElementsAre(0, 0, 0x28, 0x43)) << "168.0";
}

}  // namespace
}  // namespace tavon
