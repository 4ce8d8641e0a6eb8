// The types whose value is a text.
#include <gtest/gtest.h>

#include "tav_parametercamera.h"
#include "tav_parameterinfo.h"

namespace tavon {
namespace {

struct TavParameterInfo : testing::Test {
  void Write(const char* data, unsigned int size) {
    info.SetData(reinterpret_cast<const unsigned char*>(data), size, 1);
  }
  bool Is(tavECodeOperator op, const char* operand, unsigned int size) const {
    return info.Comparison(op, reinterpret_cast<const unsigned char*>(operand), size);
  }
  tavParameterInfo info;
};

TEST_F(TavParameterInfo, NeverBecomesEmptyAgain) {
  info.SetValue("abc");
  info.SetValue("");
  info.SetDataFromString("");
  Write("abc", 0);
  EXPECT_EQ(info.GetValue(), "abc");
}

TEST_F(TavParameterInfo, ComparesLengthsForOrder) {
  info.SetValue("abc");
  EXPECT_TRUE(Is(tavCodeOperator_Greater, "zz", 2));
  EXPECT_FALSE(Is(tavCodeOperator_Greater, "aaa", 3));
  EXPECT_TRUE(Is(tavCodeOperator_LessOrEqual, "aaa", 3));
  EXPECT_TRUE(Is(tavCodeOperator_Less, "aaaa", 4));
}

TEST_F(TavParameterInfo, ComparesUpToTheZeroOfTheOperandForEquality) {
  info.SetValue("abc");
  EXPECT_TRUE(Is(tavCodeOperator_Equal, "abc", 1)) << "the size does not count";
  EXPECT_TRUE(Is(tavCodeOperator_NotEqual, "abcd", 3));
  Write("abc\0d", 5);
  EXPECT_TRUE(Is(tavCodeOperator_NotEqual, "abc", 5)) << "all of the value counts";
}

TEST(TavParameterCamera, GivesAClientInALocalNetworkTheLocalUrl) {
  tavParameterCamera camera;
  camera.SetLocalUrl(L"\u00E9");
  camera.SetRemoteUrl("far");
  camera.AddLocalNetwork("10.0.0");
  camera.AddLocalNetwork("192.168.1");
  EXPECT_EQ(camera.GetUrl("192.168.1.20"), "\u00E9");
  EXPECT_EQ(camera.GetUrl("192.168.10.1"), "far") << "a network is known by its whole prefix";
}

TEST(TavParameterCamera, MakesOneByteOfATextThatSetsIt) {
  tavParameterCamera camera;
  camera.SetDataFromString("text");
  EXPECT_EQ(camera.GetLocalUrl(), "\1");
}

}  // namespace
}  // namespace tavon
