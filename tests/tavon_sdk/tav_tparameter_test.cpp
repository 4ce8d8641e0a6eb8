#include "tav_tparameter.h"

#include "expect_report.h"
#include "object_lock.h"
#include "tav_parametercolor.h"
#include "tav_parameterinfo.h"

namespace tavon {
namespace {

using Bytes = std::vector<unsigned char>;

struct WriteCase {
  const char* reason;
  Bytes data;
  unsigned char flag;
  const char* value;
  bool isDirty;
};

TEST(TavTParameter, StoresBytesAndMarksChanges) {
  const WriteCase cases[] = {
      {"fewer bytes with the flag clear the rest", {0x11, 0x22}, 1, "0x11220000", true},
      {"fewer bytes without the flag keep the rest", {0x11, 0x22}, 0, "0x11223344", true},
      {"equal bytes change nothing, not even the rest", {0, 0}, 1, "0x00003344", false},
      {"bytes beyond the value are ignored", {0, 0, 0x33, 0x44, 5}, 0, "0x00003344", false},
      {"every byte counts", {0, 0, 0x33, 0x45}, 0, "0x00003345", true},
  };
  for (const WriteCase& c : cases) {
    tavParameterColor color;
    color.SetDataFromString("0x00003344");
    color.IsDirty(false);
    color.SetData(c.data.data(), static_cast<unsigned int>(c.data.size()), c.flag);
    EXPECT_EQ(color.ValueToString(), c.value) << c.reason;
    EXPECT_EQ(color.IsDirty(), c.isDirty) << c.reason;
  }
}

TEST(TavTParameter, KeepsEachStyleOnce) {
  tavParameterColor color;
  color.SetUIStyle({"a", "b"});
  color.AddUIStyle("b");
  color.AddUIStyle("c");
  tavArray<tavString> styles{"old"};
  color.GetUIStyle(&styles);
  EXPECT_EQ(styles, (tavArray<tavString>{"a", "b", "c"}));
}

// A text that drives a colour.
struct TavTParameterLink : testing::Test {
  TavTParameterLink() {
    driver.SetDrivenTarget(&target);
    target.driver = &driver;
  }
  unsigned int AddRule(tavECodeOperator op, const Bytes& operand, const Bytes& value) {
    return driver.AddDrivenMapItem(op, operand.data(), static_cast<unsigned int>(operand.size()),
                                   value.data(), static_cast<unsigned int>(value.size()));
  }
  // Gives the driver a value and acknowledges that; what the target's value is then.
  std::string TargetAfter(const char* text) {
    driver.SetValue(text);
    driver.IsDirty(false);
    return target.ValueToString();
  }

  struct : tavParameterInfo {
    void OnLinkedParameterChange() override {
      ++changes;
      EXPECT_TRUE(ObjectLock::IsFree(*this)) << "told without the lock";
    }
    int changes = 0;
  } driver;
  struct : tavParameterColor {
    void OnRGBValue(unsigned char) override {
      EXPECT_FALSE(ObjectLock::IsFree(*driver)) << "locks are taken from driver to target";
    }
    tavObject* driver = nullptr;
  } target;
};

TEST_F(TavTParameterLink, SetsTheTargetByTheFirstRuleThatHolds) {
  AddRule(tavCodeOperator_Equal, {'n', 'o'}, {9, 9, 9, 9});
  AddRule(tavCodeOperator_Greater, {0, 0}, {4, 3, 2, 1});
  AddRule(tavCodeOperator_Greater, {0}, {8});
  EXPECT_EQ(TargetAfter("abc"), "0x04030201");
  EXPECT_EQ(driver.changes, 1);
  EXPECT_EQ(TargetAfter("x"), "0x04030201") << "no rule holds";
  EXPECT_EQ(driver.changes, 1);
  EXPECT_EQ(driver.GetDrivenTarget(), &target);
}

TEST_F(TavTParameterLink, ClearsWhatAShorterValueDoesNotReach) {
  AddRule(tavCodeOperator_Equal, {'a'}, {1, 2, 3, 4});
  AddRule(tavCodeOperator_Equal, {'a', 'b'}, {7});  // no zero ends this operand, and nothing behind it counts
  EXPECT_EQ(TargetAfter("a"), "0x01020304");
  EXPECT_EQ(TargetAfter("ab"), "0x07000000");
}

TEST_F(TavTParameterLink, GoesOnAfterARuleWithoutAnOperator) {
  AddRule(static_cast<tavECodeOperator>(0), {1}, {1});
  AddRule(tavCodeOperator_Equal, {'a'}, {2});
  const Report noOperator{1, "tav_parameterinfo", "Comparison", "UnKnown tavECodeOperator operator type"};
  ExpectReport(noOperator, "0x02000000", [&] { return TargetAfter("a"); });
  ExpectUnlockedAfterThrow(driver, noOperator, [&] { TargetAfter("b"); });
}

}  // namespace
}  // namespace tavon
