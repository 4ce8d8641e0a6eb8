// What the texts of values become on the wire, type by type.
#include <gmock/gmock.h>

#include <cstring>
#include <sstream>

#include "tav_parameterfactory.h"

using namespace tavon;
using testing::Each;

namespace {

using Bytes = std::vector<unsigned char>;

Bytes Encode(const char* type, const tavString& text) {
  Bytes data;
  EXPECT_EQ(tavParameterFactory::StringToData(tavParameterFactory::TypeNameToId(type), text, &data), 0);
  return data;
}

TEST(Encoding, OfShortValues) {
  const struct {
    const char *type, *text;
    Bytes bytes;
  } cases[] = {
      // Of on and off only the low 8 bits count, of a number that stops at 32 bits. A slider stops at its
      // ends after narrowing: -1e-60 is -0.0. Of a colour's prefixes a small x wins over a capital one.
      {"ParameterSwitch", "abc", {0}},
      {"ParameterSwitch", "256", {0}},
      {"ParameterAlert", " +2x", {1}},
      {"ParameterAlert", "4294967296", {1}},
      {"ParameterByte", "511", {255}},
      {"ParameterVRScene", "-2", {254}},
      {"ParameterShutter", "0", {1}},
      {"ParameterShutter", "260", {3}},
      {"ParameterSlider", "1.00000000001", {0, 0, 0x80, 0x3F}},
      {"ParameterSlider", "-3", {0, 0, 0, 0}},
      {"ParameterSlider", "-1e-60", {0, 0, 0, 0x80}},
      {"ParameterSlider", "nan", {0, 0, 0xC0, 0x7F}},
      {"ParameterThermo", "21.5C", {0, 0, 0xAC, 0x41}},
      {"ParameterThermo", "0.1", {0xCD, 0xCC, 0xCC, 0x3D}},
      {"ParameterThermo", "1e39", {0, 0, 0x80, 0x7F}},
      {"ParameterTuner", "-0x1p-149", {1, 0, 0, 0x80}},
      {"ParameterInfo", "h\xC3\xA9", {'h', 0xC3, 0xA9}},
      {"ParameterCamera", "u", {'u'}},
      {"ParameterColor", "0xFF8000", {0xFF, 0x80, 0, 0}},
      {"ParameterColor", "0X1122334455", {0x11, 0x22, 0x33, 0x44}},
      {"ParameterColor", "aX01x02", {0x02, 0, 0, 0}},
      {"ParameterColor", "#12345", {0, 0x23, 0x45, 0}},
      {"ParameterColor", "0x12F", {0x12, 0, 0, 0}},
      {"ParameterColor", "x", {0, 0, 0, 0}}};
  for (const auto& c : cases) EXPECT_EQ(Encode(c.type, c.text), c.bytes) << c.type << " " << c.text;
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
  tavParameterFactory::StringToData(tavObject_ParameterThermoChronoWeek, "258", &data);
  EXPECT_EQ(data[0], 2);
  data.erase(data.begin());
  EXPECT_THAT(data, Each(9)) << "a text without comma says nothing about the set-points";
  tavParameterFactory::StringToData(tavObject_ParameterThermoChronoWeek, "1,20.5,,21", &data);
  EXPECT_TRUE(data.size() == 673 && data[0] == 1);
  EXPECT_TRUE(SetPoint(data, 0) == 20.5F && SetPoint(data, 1) == 0.0F && SetPoint(data, 2) == 21.0F);
  EXPECT_THAT(Bytes(data.begin() + 13, data.end()), Each(0)) << "a list says something about all of them";
  tavString list = "x";
  for (int i = 1; i <= 200; ++i) list += "," + tavString::FromInt(i);
  data = Encode("parameterthermochronoweek", list);
  EXPECT_TRUE(data.size() == 673 && data[0] == 0 && SetPoint(data, 167) == 168.0F);
}

}  // namespace
