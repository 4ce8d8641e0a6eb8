// The types whose value is a text.
#include "expect_report.h"
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

TEST_F(TavParameterInfo, IsDirtyAfterANewTextOnly) {
  info.SetValue(L"\u00E9");
  EXPECT_EQ(info.GetValue(), "\u00E9");
  info.IsDirty(false);
  info.SetValue("\u00E9");
  EXPECT_FALSE(info.IsDirty());
  Write("\u00E9", 3);
  EXPECT_TRUE(info.IsDirty()) << "the zero is part of the text now";
}

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

TEST(TavParameterCamera, GivesEveryClientTheOnlyUrl) {
  tavParameterCamera camera;
  camera.SetRemoteUrl(L"far");
  camera.AddLocalNetwork("10.0.0");
  EXPECT_EQ(camera.GetUrl("10.0.0.1"), "far");
  EXPECT_EQ(camera.GetRemoteUrl(), "far");
  camera.SetRemoteUrl("");
  camera.SetLocalUrl("near");
  EXPECT_EQ(camera.GetUrl("1.2.3.4"), "near");
  ExpectReport({6, "tav_parametercamera", "GetUrl", "strIp is not valid ip! host"}, "",
               [&] { return camera.GetUrl("host"); });
}

}  // namespace
}  // namespace tavon
