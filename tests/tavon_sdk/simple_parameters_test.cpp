// What makes each simple type of parameter different.
#include "model_test.h"

static const unsigned char* Bytes(const char* bytes) { return reinterpret_cast<const unsigned char*>(bytes); }

TEST(SimpleParameters, LimitAndPrintTheirValues) {
  tavParameterByte byte;
  byte.SetValue(128);
  tavParameterSlider slider;
  tavParameterThermo thermo;
  for (const auto& [value, position, text] : {std::tuple{1.5F, 1.0F, "1.5"}, {-0.126F, 0.0F, "-0.13"}}) {
    slider.SetValue(value);
    thermo.SetValue(value);
    EXPECT_TRUE(slider.GetValue() == position && thermo.ValueToString() == text && byte.GetValue() == 128);
  }
}

struct Color : tavParameterColor {
  void OnRGBValue(unsigned char on) override { calls += tavString::FromInt(on); }
  std::string calls;
};

TEST(TavParameterColor, PacksItsComponentsAndCallsItsHookWhileDirty) {
  Color color;
  for (const unsigned int value : {0x80U, 0x10000U, 0x10000U})  // the change before is not taken over yet
    color.SetValue(value);
  color.IsDirty(false);
  color.SetValue(0, 1, 0, 0);
  EXPECT_EQ(color.calls, "011");
  color.SetValue(0x112233FE);
  unsigned int packed = 0;
  unsigned char third = 0;
  color.GetValue(&packed);
  color.GetValue(nullptr, nullptr, &third, nullptr);
  EXPECT_TRUE(packed == 0x112233FE && third == 0x33 && color.ValueToString() == "0x112233FE");
  ExpectThrownReport(color, [&] { color.GetValue(nullptr); });
}

struct Alert : tavParameterAlert {
  void OnAlert() override { ++alerts; }
  int alerts = 0;
};

TEST(TavParameterAlert, CallsItsHookOnEveryActiveWriteInEitherSense) {
  Alert alert;
  for (const bool value : {true, true, false}) alert.SetValue(value);
  alert.IsInverted(true);
  EXPECT_TRUE(alert.GetValue() == 1 && alert.alerts == 2) << "set to what is inactive now: intended";
  alert.SetValue(0);
  alert.SetSeverity(tavSeverity_Alarm);
  alert.SetMessage(L"\u00E9<");
  EXPECT_TRUE(alert.IsInverted() && alert.GetSeverity() == 2 && alert.GetMessage() == "\xC3\xA9<");
  EXPECT_EQ(alert.SerializeParametersAsXml(),
            "<flags>00000001</flags><value>0</value><invert>1</invert><severity>2</severity>"
            "<message>\xC3\xA9<</message>");
  alert.IsInverted(false);
  EXPECT_TRUE(alert.GetValue() == 0 && alert.alerts == 3);
}

TEST(TavParameterCamera, ChoosesTheUrlForAClient) {
  tavParameterCamera camera;
  camera.SetRemoteUrl("far");
  camera.IsDirty(false);
  camera.SetRemoteUrl(L"far");
  camera.SetLocalUrl("");
  EXPECT_TRUE(!camera.IsDirty() && camera.GetUrl("10.0.0.1") == "far") << "the only one";
  camera.SetLocalUrl(L"\u00E9");
  camera.AddLocalNetwork("192.168.1");
  EXPECT_TRUE(camera.GetUrl("192.168.1.20") == "\xC3\xA9" && camera.GetUrl("192.168.10.1") == "far");
  ExpectReport(6, "strIp is not valid ip! host", "ParameterCamera", "GetUrl", kAnyLine,
               [&] { EXPECT_EQ(camera.GetUrl("host"), ""); });
  camera.SetRemoteUrl("");
  EXPECT_TRUE(camera.IsDirty() && camera.GetRemoteUrl().empty() && camera.GetUrl("1.2.3.4") == "\xC3\xA9");
  camera.SetDataFromString("text");
  EXPECT_EQ(camera.GetLocalUrl(), "\1") << "all that its encoder says of a text: intended";
}

TEST(TavParameterInfo, IsItsText) {
  tavParameterInfo info;
  unsigned char copy[] = {9, 9};
  info.GetDataCopy(copy);
  EXPECT_TRUE(copy[0] == 0 && copy[1] == 9 && info.GetDataSize() == 1);
  ExpectReport(6, "io_buffer == 0", "ParameterInfo", "GetDataCopy", kAnyLine,
               [&] { info.GetDataCopy(nullptr); });
  const auto is = [&](int op, auto data, unsigned size) {
    return info.Comparison(Op(op), Bytes(data), size);
  };
  info.SetValue(L"\u00E9");
  info.IsDirty(false);
  info.SetData(Bytes("\xC3\xA9+"), 2, 0);
  info.SetValue("");
  info.SetDataFromString("");
  EXPECT_TRUE(!info.IsDirty() && info.GetValue() == "\xC3\xA9") << "never empty again: intended";
  EXPECT_TRUE(is(5, "\xC3\xA9", 99) && is(6, "\xC3\xA9+", 2)) << "up to the operand's zero: intended";
  info.SetData(Bytes("a\0b"), 4, 1);
  EXPECT_TRUE(is(6, "a", 4) && info.GetData()[2] == 'b') << "what follows the zero counts in the value";
  EXPECT_TRUE(is(1, "zzzz", 3) && is(4, "z", 4) && is(3, "", 5)) << "lengths only: intended";
}
