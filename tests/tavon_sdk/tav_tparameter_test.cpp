#include "model_test.h"

using Bytes = std::vector<unsigned char>;

static unsigned int AddRule(Prm& driver, int op, const Bytes& operand, const Bytes& value) {
  const auto size = static_cast<unsigned int>(value.size());
  return driver.AddDrivenMapItem(Op(op), operand.data(), static_cast<unsigned int>(operand.size()),
                                 value.data(), size);
}

TEST(TavTParameter, StoresBytesAndMarksChanges) {
  const std::string before = "0x00003344";
  const std::tuple<Bytes, unsigned char, std::string> cases[] = {
      {{0x11, 0x22}, 1, "0x11220000"},
      {{0x11, 0x22}, 0, "0x11223344"},
      {{0, 0}, 1, before},  // nothing is cleared without a change
      {{0, 0, 0x33, 0x44, 5}, 1, before},
      {{0, 0, 0x33, 9, 5}, 0, "0x00003309"},
  };
  for (const auto& [data, flag, after] : cases) {
    tavParameterColor color;
    color.SetDataFromString(before);
    color.IsDirty(false);
    color.SetData(data.data(), static_cast<unsigned int>(data.size()), flag);
    EXPECT_EQ(color.ValueToString(), after);
    EXPECT_EQ(color.IsDirty(), after != before);
  }
}

TEST(TavTParameter, KeepsStylesAndSettings) {
  tavParameterByte parameter;
  tavArray<tavString> styles{"old"};
  tavString settings;
  parameter.AddUIStyle("b");
  parameter.SetUIStyle({"c", "c"});
  for (const char* style : {"c", "a", "a"}) parameter.AddUIStyle(style);
  parameter.GetUIStyle(&styles);
  parameter.GetUIStyle(nullptr);
  parameter.SetSettings("a=1");
  parameter.GetSettings(&settings);
  parameter.GetSettings(nullptr);
  EXPECT_TRUE(styles == (tavArray<tavString>{"c", "c", "a"}) && settings == "a=1");
}

struct Driver : tavParameterInfo {
  void OnLinkedParameterChange() override { EXPECT_TRUE(++links > 0 && LockOf::IsFree(*this)); }
  std::string Take(const char* text) {  // takes over a value; the target's after that
    SetValue(text);
    IsDirty(false);
    return target.ValueToString();
  }
  struct : tavParameterColor {  // it knows its driver as its own target, for which it has no rules
    void OnRGBValue(unsigned char) override { EXPECT_TRUE(LockOf::IsHeld(*GetDrivenTarget())); }
  } target;
  int links = 0;
};

TEST(TavTParameter, DrivesItsTargetByTheFirstRuleThatHolds) {
  Driver driver;
  driver.target.SetDrivenTarget(&driver);
  driver.SetDrivenTarget(&driver.target);
  // A comparison with a text looks for a terminating zero, which the operand does not have.
  EXPECT_EQ(AddRule(driver, tavCodeOperator_Equal, {'a', 'b', 'c'}, {4, 3, 2, 1}), 0U);
  AddRule(driver, tavCodeOperator_Greater, {0, 0, 0}, {7});
  AddRule(driver, tavCodeOperator_Equal, {'a', 'b', 'c', 'd'}, {8});
  EXPECT_TRUE(driver.Take("ab") == "0x00000000" && driver.links == 0) << "no rule holds";
  EXPECT_EQ(driver.Take("abc"), "0x04030201");
  EXPECT_EQ(driver.Take("abcd"), "0x07000000") << "a shorter value clears the rest";
  AddRule(driver, 0, {1}, {1});
  AddRule(driver, tavCodeOperator_Less, {0, 0}, {2});
  ExpectReport(1, "UnKnown tavECodeOperator operator type", "ParameterInfo", "Comparison", kAnyLine,
               [&] { EXPECT_EQ(driver.Take("a"), "0x02000000"); });
  ExpectThrownReport(driver, [&] { driver.Take("b"); });
  driver.SetDrivenTarget(nullptr);
  EXPECT_TRUE(driver.Take("abc") == "0x02000000" && driver.links == 3);
}

TEST(TavTParameter, ReportsWhatItCannotDo) {
  tavParameterByte parameter;
  const auto expect = [](const char* message, const char* function, int line, auto operation) {
    ExpectReport(6, message, "TParameter", function, line, operation);
  };
  expect("io_buffer == 0", "GetDataCopy", 192, [&] { parameter.GetDataCopy(nullptr); });
  expect("dataDriver == 0 || sizeDriver == 0", "AddDrivenMapItem", 223,
         [&] { EXPECT_EQ(AddRule(parameter, 1, {}, {}), 6U); });
  expect("dataDriven == 0 || sizeDriven == 0", "AddDrivenMapItem", 224,
         [&] { EXPECT_EQ(AddRule(parameter, 1, {1}, {}), 6U); });
}
