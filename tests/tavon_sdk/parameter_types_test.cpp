// What all types of parameters have in common.
#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <set>

#include "object_lock.h"
#include "src/tav_parametertypes.h"
#include "tav_parameterfactory.h"

namespace tavon {
namespace {

struct Type {
  tavEObject id;
  tavString name;
  std::function<const void*(tavIParameter&)> cast;
  tavEError (*setFromText)(tavIParameter*, const tavString&);
  std::string text;  // a value, printed as it is written
};

template <class Self>
Type Row(Self* (tavIParameter::*cast)(), const std::string& text) {
  return {Self::TypeId, Self::TypeName, std::mem_fn(cast), Self::SetDataFromString, text};
}

std::string WeekAt(const char* setPoint) {
  std::string text = "1";
  for (int hour = 0; hour < 7 * 24; ++hour) text.append(",").append(setPoint);
  return text;
}

const Type kTypes[] = {
    Row(&tavIParameter::GetParameterSwitchPtr, "1"),
    Row(&tavIParameter::GetParameterSwitchReleasePtr, "1"),
    Row(&tavIParameter::GetParameterSliderPtr, "0.75"),
    Row(&tavIParameter::GetParameterColorPtr, "0x0102E3F4"),
    Row(&tavIParameter::GetParameterInfoPtr, "a text"),
    Row(&tavIParameter::GetParameterShutterPtr, "3"),
    Row(&tavIParameter::GetParameterThermoPtr, "-0.13"),
    Row(&tavIParameter::GetParameterThermoChronoWeekPtr, WeekAt("20.25")),
    Row(&tavIParameter::GetParameterHDScenePtr, "1"),
    Row(&tavIParameter::GetParameterVRScenePtr, "200"),
    Row(&tavIParameter::GetParameterAlertPtr, "1"),
    Row(&tavIParameter::GetParameterBytePtr, "255"),
    Row(&tavIParameter::GetParameterTunerPtr, "1500"),
    Row(&tavIParameter::GetParameterCameraPtr, "\1"),  // all that a camera makes of a text
};

static_assert(std::size(kTypes) == tavParameterTypes::Count, "every type has a row");

struct ParameterTypes : testing::TestWithParam<Type> {
  const Type& type = GetParam();
  const std::unique_ptr<tavIParameter> parameter{tavParameterFactory::CreateByType(type.id)};
};
INSTANTIATE_TEST_SUITE_P(All, ParameterTypes, testing::ValuesIn(kTypes),
                         [](const auto& row) -> std::string { return row.param.name; });

TEST_P(ParameterTypes, AreCreatedAsWhatTheirNameSays) {
  EXPECT_EQ(tavParameterFactory::TypeNameToId(type.name.GetUpCase()), type.id) << "in any case";
  EXPECT_EQ(tavParameterFactory::IdToTypeName(type.id), type.name);
  EXPECT_EQ(parameter->GetType(), type.id);
  EXPECT_EQ(parameter->GetTypeName(), type.name);
  EXPECT_TRUE(parameter->IsValid());
}

TEST_P(ParameterTypes, CastToTheirOwnClassOnly) {
  for (const Type& other : kTypes) {
    const void* const expected = other.id == type.id ? dynamic_cast<void*>(parameter.get()) : nullptr;
    EXPECT_EQ(other.cast(*parameter), expected) << "to " << other.name;
  }
}

TEST_P(ParameterTypes, AreSetFromText) {
  EXPECT_EQ(type.setFromText(parameter.get(), type.text), tavError_NoError);
  EXPECT_EQ(parameter->ValueToString(), type.text);
  std::vector<unsigned char> copy(parameter->GetDataSize());
  parameter->GetDataCopy(copy.data());
  EXPECT_THAT(copy, testing::ElementsAreArray(parameter->GetData(), copy.size()));
  EXPECT_EQ(type.setFromText(nullptr, type.text), tavError_NoError) << "null is none of them";
}

TEST_P(ParameterTypes, AreLeftLockedByAnInvalidWriteUnlessTheirValueIsAText) {
  const bool isText =
      parameter->GetParameterInfoPtr() != nullptr || parameter->GetParameterCameraPtr() != nullptr;
  parameter->SetData(nullptr, 1, 1);
  parameter->SetData(parameter->GetData(), 0, 1);
  EXPECT_EQ(ObjectLock::IsFree(*parameter), isText);
  for (int write = 0; write < 2 && !isText; ++write) {
    EXPECT_TRUE(ObjectLock::Release(*parameter)) << "each of the writes has locked it once";
  }
  EXPECT_TRUE(ObjectLock::BecomesFree(*parameter));
}

struct ComparisonCase {
  tavEObject type;
  const char* value;
  const char* operand;
  std::set<int> holds;
};

constexpr int kGreater = tavCodeOperator_Greater;
constexpr int kGreaterOrEqual = tavCodeOperator_GreaterOrEqual;
constexpr int kLess = tavCodeOperator_Less;
constexpr int kLessOrEqual = tavCodeOperator_LessOrEqual;
constexpr int kEqual = tavCodeOperator_Equal;
constexpr int kNotEqual = tavCodeOperator_NotEqual;

TEST(ParameterComparison, HoldsForTheRightOperators) {
  const ComparisonCase cases[] = {
      {tavObject_ParameterByte, "127", "128", {kLess, kLessOrEqual, kNotEqual}},  // unsigned
      {tavObject_ParameterByte, "128", "127", {kGreater, kGreaterOrEqual, kNotEqual}},
      {tavObject_ParameterByte, "128", "128", {kGreaterOrEqual, kLessOrEqual, kEqual}},
      {tavObject_ParameterThermo, "-1", "-2.5", {kGreater, kGreaterOrEqual, kNotEqual}},
      // Whether numbers are equal is a matter of their bytes, on purpose.
      {tavObject_ParameterThermo, "0", "-0", {kGreaterOrEqual, kLessOrEqual, kNotEqual}},
      {tavObject_ParameterTuner, "nan", "nan", {kEqual}},
      // There is no order of colours and schedules.
      {tavObject_ParameterColor, "0x01020304", "0x01020304", {kEqual}},
      {tavObject_ParameterColor, "0x01020304", "0x01020305", {kNotEqual}},
      {tavObject_ParameterThermoChronoWeek, "1,20.25,0", "1,20.25", {kEqual}},
      {tavObject_ParameterThermoChronoWeek, "1,20.25", "1,20.5", {kNotEqual}},
  };
  for (const ComparisonCase& c : cases) {
    const std::unique_ptr<tavIParameter> left(tavParameterFactory::CreateByType(c.type));
    const std::unique_ptr<tavIParameter> right(tavParameterFactory::CreateByType(c.type));
    left->SetDataFromString(c.value);
    right->SetDataFromString(c.operand);
    std::set<int> holds;
    for (const int op : {kGreater, kGreaterOrEqual, kLess, kLessOrEqual, kEqual, kNotEqual}) {
      if (left->Comparison(static_cast<tavECodeOperator>(op), right->GetData(), right->GetDataSize()))
        holds.insert(op);
    }
    EXPECT_EQ(holds, c.holds) << left->GetTypeName() << " " << c.value << " with " << c.operand;
  }
}

}  // namespace
}  // namespace tavon
