// What the texts of values become on the wire, type by type.
#include <gmock/gmock.h>

#include <cmath>
#include <cstring>
#include <sstream>

#include "captured_output.h"
#include "tav_parameteralert.h"
#include "tav_parameterbyte.h"
#include "tav_parametercamera.h"
#include "tav_parametercolor.h"
#include "tav_parameterfactory.h"
#include "tav_parameterhdscene.h"
#include "tav_parameterinfo.h"
#include "tav_parametershutter.h"
#include "tav_parameterslider.h"
#include "tav_parameterswitch.h"
#include "tav_parameterswitchrelease.h"
#include "tav_parameterthermo.h"
#include "tav_parameterthermochronoweek.h"
#include "tav_parametertuner.h"
#include "tav_parametervrscene.h"

using namespace tavon;
using testing::Each;
using testing::HasSubstr;

namespace {

using Bytes = std::vector<unsigned char>;

Bytes Encode(const char* type, const tavString& text) {
  Bytes data;
  EXPECT_EQ(tavParameterFactory::StringToData(tavParameterFactory::TypeNameToId(type), text, &data), 0);
  return data;
}

struct EncodingCase {
  const char* type;
  const char* text;
  Bytes bytes;
};

TEST(Encoding, OfShortValues) {
  const EncodingCase cases[] = {
      {"ParameterSwitch", "7", {1}},
      {"ParameterSwitch", "-1", {1}},
      {"ParameterSwitch", "abc", {0}},
      {"ParameterSwitch", "256", {0}},  // only the low 8 bits count
      {"ParameterSwitchRelease", "257", {1}},
      {"ParameterHDScene", "-256", {0}},
      {"ParameterAlert", " +2x", {1}},
      {"ParameterAlert", "4294967296", {1}},  // stops at the largest 32-bit number, whose low bits are set
      {"ParameterAlert", "-4294967295", {0}},
      {"ParameterByte", "511", {255}},
      {"ParameterVRScene", "-2", {254}},
      {"ParameterShutter", "0", {1}},
      {"ParameterShutter", "2", {2}},
      {"ParameterShutter", "9", {3}},
      {"ParameterShutter", "256", {1}},
      {"ParameterShutter", "260", {3}},
      {"ParameterSlider", "0.5", {0, 0, 0, 0x3F}},
      {"ParameterSlider", "1.7", {0, 0, 0x80, 0x3F}},
      {"ParameterSlider", "1.00000000001", {0, 0, 0x80, 0x3F}},
      {"ParameterSlider", "-3", {0, 0, 0, 0}},
      {"ParameterSlider", "-1e-60", {0, 0, 0, 0x80}},  // narrows to -0.0, which is not below 0
      {"ParameterSlider", "1e-60", {0, 0, 0, 0}},
      {"ParameterSlider", "nan", {0, 0, 0xC0, 0x7F}},
      {"ParameterSlider", "inf", {0, 0, 0x80, 0x3F}},
      {"ParameterThermo", "21.5C", {0, 0, 0xAC, 0x41}},
      {"ParameterThermo", "0.1", {0xCD, 0xCC, 0xCC, 0x3D}},
      {"ParameterThermo", "1e39", {0, 0, 0x80, 0x7F}},
      {"ParameterTuner", "-0x1p-149", {1, 0, 0, 0x80}},
      {"ParameterTuner", "none", {0, 0, 0, 0}},
      {"ParameterInfo", "h\xC3\xA9", {'h', 0xC3, 0xA9}},
      {"ParameterCamera", "u", {'u'}},
      {"ParameterColor", "0xFF8000", {0xFF, 0x80, 0, 0}},
      {"ParameterColor", "0X1122334455", {0x11, 0x22, 0x33, 0x44}},
      {"ParameterColor", "aX01x02", {0x02, 0, 0, 0}},  // a small x wins over a capital one before it
      {"ParameterColor", "#12345", {0, 0x23, 0x45, 0}},
      {"ParameterColor", "0x12F", {0x12, 0, 0, 0}},
      {"ParameterColor", "x", {0, 0, 0, 0}},
  };
  for (const EncodingCase& c : cases)
    EXPECT_EQ(Encode(c.type, c.text), c.bytes) << c.type << " " << c.text;
}

TEST(Encoding, ReadsColourPairsAsAnInputStreamDoes) {
  for (int pair = 0; pair < 0x10000; ++pair) {
    const std::string text{static_cast<char>(pair >> 8), static_cast<char>(pair)};
    if (text.find_first_of("xX") != std::string::npos) continue;  // would move the start; see below
    std::istringstream stream("0x" + text);
    unsigned short expected = 0;
    stream >> std::hex >> expected;
    ASSERT_EQ(Encode("ParameterColor", "x" + text)[0], expected & 0xFF) << std::hex << pair;
  }
  EXPECT_EQ(Encode("ParameterColor", "x0x1xxAAX"), (Bytes{0, 1, 0, 0xA}));
  Bytes kept{1, 2, 3, 4, 5};
  tavParameterFactory::StringToData(tavObject_ParameterColor, "xAA", &kept);
  EXPECT_EQ(kept, (Bytes{0xAA, 2, 3, 4})) << "bytes that the text does not reach stay";
}

// The float at a set-point of an encoded schedule.
float SetPoint(const Bytes& data, std::size_t hour) {
  float value = 0;
  std::memcpy(&value, &data.at(1 + 4 * hour), sizeof(value));
  return value;
}

TEST(Encoding, OfSchedules) {
  Bytes data(673, 9);
  EXPECT_EQ(tavParameterFactory::StringToData(tavObject_ParameterThermoChronoWeek, "258", &data), 0);
  EXPECT_EQ(data[0], 2);
  data.erase(data.begin());
  EXPECT_THAT(data, Each(9)) << "a text without comma says nothing about the set-points";

  EXPECT_EQ(tavParameterFactory::StringToData(tavObject_ParameterThermoChronoWeek, "1,20.5,,21", &data), 0);
  ASSERT_EQ(data.size(), 673u);
  EXPECT_EQ(data[0], 1);
  EXPECT_EQ(SetPoint(data, 0), 20.5F);
  EXPECT_EQ(SetPoint(data, 1), 0.0F);
  EXPECT_EQ(SetPoint(data, 2), 21.0F);
  EXPECT_THAT(Bytes(data.begin() + 13, data.end()), Each(0)) << "a list says something about all of them";

  tavString list = "x";
  for (int i = 1; i <= 200; ++i)
    list += "," + tavString::FromInt(i);
  data = Encode("parameterthermochronoweek", list);
  ASSERT_EQ(data.size(), 673u);
  EXPECT_EQ(data[0], 0);
  EXPECT_EQ(SetPoint(data, 167), 168.0F);
}

TEST(Encoding, ReportsNullBuffers) {
  const struct {
    tavEError (*encode)(const tavString&, unsigned char*);
    const char* source;
    int line;
  } cases[] = {
      {tavParameterSwitch::GetBinaryDataFromString, "switch", 17},
      {tavParameterSwitchRelease::GetBinaryDataFromString, "switchrelease", 23},
      {tavParameterHDScene::GetBinaryDataFromString, "hdscene", 17},
      {tavParameterAlert::GetBinaryDataFromString, "alert", 19},
      {tavParameterByte::GetBinaryDataFromString, "byte", 17},
      {tavParameterVRScene::GetBinaryDataFromString, "vrscene", 28},
      {tavParameterShutter::GetBinaryDataFromString, "shutter", 26},
      {tavParameterSlider::GetBinaryDataFromString, "slider", 18},
      {tavParameterThermo::GetBinaryDataFromString, "thermo", 17},
      {tavParameterTuner::GetBinaryDataFromString, "tuner", 17},
      {tavParameterColor::GetBinaryDataFromString, "color", 19},
      {tavParameterThermoChronoWeek::GetBinaryDataFromString, "thermochronoweek", 25},
      {tavParameterInfo::GetBinaryDataFromString, "info", 15},
      {tavParameterCamera::GetBinaryDataFromString, "camera", 16},
  };
  for (const auto& c : cases) {
    const tavError expected = tavBuildErrorLocation(tavError_InvalidArgument, "o_pBuffer == 0",
                                                    (std::string("tav_parameter") + c.source).c_str(),
                                                    "GetBinaryDataFromString", c.line);
    EXPECT_EQ(CapturedOutput([&] { EXPECT_EQ(c.encode("1", nullptr), 6); }), expected.GetDescription());
    EXPECT_EQ(CapturedOutput([&] { EXPECT_EQ(c.encode("", nullptr), 0); }), "") << "nothing to write";
  }
  unsigned char byte = 9;
  tavParameterCamera::GetBinaryDataFromString("0", &byte);
  EXPECT_EQ(byte, 1);
}

}  // namespace
