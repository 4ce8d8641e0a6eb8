// What all types of parameters have in common.
#include <gmock/gmock.h>

#include <functional>
#include <memory>

#include "expect_report.h"
#include "object_lock.h"
#include "src/tav_parametertypes.h"
#include "tav_parameterfactory.h"

namespace tavon {
namespace {

struct Type {
  tavEObject id;
  tavString name;
  std::function<const void*(tavIParameter&)> cast;  // none for a type that came after the first fourteen
  tavEError (*setFromText)(tavIParameter*, const tavString&);
  tavEError (*encode)(const tavString&, unsigned char*);
  std::string text;  // a value, printed as it is written
  tavPublishedLines lines;

  Report ReportOf(int code, const char* function, const std::string& message, int line) const {
    const auto published = line != 0 ? std::optional(line) : std::nullopt;
    return {code, "tav_" + name.GetLowCase(), function, message, published};
  }
  friend void PrintTo(const Type& type, std::ostream* out) { *out << type.name; }
};

template <class Self>
Type Row(const std::string& text, const tavPublishedLines& lines) {
  return {.id = Self::Type.id,
          .name = Self::TypeName,
          .cast = nullptr,
          .setFromText = Self::SetDataFromString,
          .encode = Self::GetBinaryDataFromString,
          .text = text,
          .lines = lines};
}

template <class Self>
Type Row(Self* (tavIParameter::*cast)(), const std::string& text, const tavPublishedLines& lines) {
  Type row = Row<Self>(text, lines);
  row.cast = std::mem_fn(cast);
  return row;
}

std::string WeekAt(const char* setPoint) {
  std::string text = "1";
  for (int hour = 0; hour < 7 * 24; ++hour) text.append(",").append(setPoint);
  return text;
}

const Type kTypes[] = {
    Row(&tavIParameter::GetParameterSwitchPtr, "1", {.noBuffer = 17}),
    Row(&tavIParameter::GetParameterSwitchReleasePtr, "1",
        {.noBuffer = 23, .setDataFromString = 38, .setDataValue = 85, .getDataValue = 89, .comparison = 99}),
    Row(&tavIParameter::GetParameterSliderPtr, "0.75", {.noBuffer = 18}),
    Row(&tavIParameter::GetParameterColorPtr, "0x0102E3F4", {.noBuffer = 19}),
    Row(&tavIParameter::GetParameterInfoPtr, "a text", {.noBuffer = 15}),
    Row(&tavIParameter::GetParameterShutterPtr, "3",
        {.noBuffer = 26, .setDataFromString = 43, .setDataValue = 84, .getDataValue = 88, .comparison = 99}),
    Row(&tavIParameter::GetParameterThermoPtr, "-0.13", {.noBuffer = 17}),
    Row(&tavIParameter::GetParameterThermoChronoWeekPtr, WeekAt("20.25"),
        {.noBuffer = 25,
         .setDataFromString = 72,
         .setDataValue = 98,
         .getDataValue = 102,
         .comparison = 211}),
    Row(&tavIParameter::GetParameterHDScenePtr, "1", {.noBuffer = 17}),
    Row(&tavIParameter::GetParameterVRScenePtr, "200",
        {.noBuffer = 28, .setDataFromString = 44, .setDataValue = 90, .getDataValue = 94, .comparison = 148}),
    Row(&tavIParameter::GetParameterAlertPtr, "1", {.noBuffer = 19}),
    Row(&tavIParameter::GetParameterBytePtr, "255", {.noBuffer = 17}),
    Row(&tavIParameter::GetParameterTunerPtr, "1500", {.noBuffer = 17}),
    Row(&tavIParameter::GetParameterCameraPtr, "\1", {.noBuffer = 16}),  // all that a camera makes of a text
};

struct ParameterTypes : testing::TestWithParam<Type> {
  ParameterTypes() {
    // Or its thread might stop it at any moment.
    if (tavParameterShutter* shutter = parameter->GetParameterShutterPtr()) shutter->SetActionTime(3600000);
  }
  const Type& type = GetParam();
  const std::unique_ptr<tavIParameter> parameter{tavParameterFactory::CreateByType(type.id)};
};
INSTANTIATE_TEST_SUITE_P(All, ParameterTypes, testing::ValuesIn(kTypes),
                         [](const auto& row) -> std::string { return row.param.name; });

TEST(TavParameterFactory, HasTheTypesOfThisTest) {
  EXPECT_THAT(tavParameterFactory::GetTypes(), testing::SizeIs(std::size(kTypes)));
}

TEST_P(ParameterTypes, AreCreatedAsWhatTheirNameSays) {
  EXPECT_EQ(tavParameterFactory::TypeNameToId(type.name.GetUpCase()), type.id) << "in any case";
  EXPECT_EQ(tavParameterFactory::IdToTypeName(type.id), type.name);
  EXPECT_EQ(parameter->GetType(), type.id);
  EXPECT_EQ(parameter->GetTypeName(), type.name);
  EXPECT_TRUE(parameter->IsValid());
  const tavParameterType& record = *tavParameterFactory::FindType(type.id);
  EXPECT_EQ(parameter->GetDataSize(), record.IsText() ? 1 : record.size) << "an empty text ends with a zero";
}

TEST_P(ParameterTypes, CastToTheirOwnClassOnly) {
  for (const Type& other : kTypes) {
    if (!other.cast) continue;
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

TEST_P(ParameterTypes, AreEncodedIntoABufferOfAnySize) {
  type.setFromText(parameter.get(), type.text);
  const unsigned char* const data = parameter->GetData();
  std::vector<unsigned char> value(data, data + parameter->GetDataSize());
  const bool isText = tavParameterFactory::FindType(type.id)->IsText();
  if (isText) value.assign(type.text.begin(), type.text.end());
  for (const std::size_t sizeBefore : {0U, 1000U}) {
    std::vector<unsigned char> buffer(sizeBefore, 9);
    EXPECT_EQ(tavParameterFactory::StringToData(type.id, type.text, &buffer), tavError_NoError);
    EXPECT_THAT(buffer, testing::ElementsAreArray(value)) << sizeBefore;
  }
}

TEST_P(ParameterTypes, AreNotSetAsAnyOtherType) {
  for (const Type& other : kTypes) {
    if (other.id == type.id) continue;
    ExpectReport(other.ReportOf(6, "SetDataFromString", "pPrm != tavObject_" + other.name,
                                other.lines.setDataFromString),
                 tavError_InvalidArgument, [&] { return other.setFromText(parameter.get(), other.text); });
  }
}

TEST_P(ParameterTypes, ReportAMissingBufferAndDataValues) {
  ExpectReport(type.ReportOf(6, "GetBinaryDataFromString", "o_pBuffer == 0", type.lines.noBuffer),
               tavError_InvalidArgument, [this] { return type.encode("1", nullptr); });
  EXPECT_EQ(type.encode("", nullptr), tavError_NoError) << "an empty text has no bytes";
  ExpectReport(type.ReportOf(1, "SetDataValue", "MUST BE IMPLEMENTED", type.lines.setDataValue),
               [this] { parameter->SetDataValue(1.0); });
  ExpectReport(type.ReportOf(1, "GetDataValue", "MUST BE IMPLEMENTED", type.lines.getDataValue),
               [this] { parameter->GetDataValue(nullptr); });
}

TEST_P(ParameterTypes, NeedAnOperatorAndAWholeOperandToCompare) {
  const bool isCamera = type.id == tavObject_ParameterCamera;  // which knows none
  const char* const message =
      isCamera ? "No comparison for tavParameterCamera!" : "UnKnown tavECodeOperator operator type";
  const auto compare = [this](int op) {
    return parameter->Comparison(static_cast<tavECodeOperator>(op), parameter->GetData(),
                                 parameter->GetDataSize());
  };
  const Report refusal = type.ReportOf(1, "Comparison", message, type.lines.comparison);
  for (const int op : {-1, 0, 7}) ExpectReport(refusal, false, [&] { return compare(op); });
  ExpectUnlockedAfterThrow(*parameter, refusal, [&] { compare(0); });
  EXPECT_FALSE(parameter->Comparison(tavCodeOperator_NotEqual, nullptr, 673));
  EXPECT_FALSE(
      parameter->Comparison(tavCodeOperator_Equal, parameter->GetData(), parameter->GetDataSize() - 1));
}

TEST_P(ParameterTypes, AreLeftLockedByAnInvalidWriteUnlessTheirValueIsAText) {
  const bool isText = tavParameterFactory::FindType(type.id)->IsText();
  parameter->SetData(nullptr, 1, 1);
  parameter->SetData(parameter->GetData(), 0, 1);
  for (int writes = isText ? 0 : 2; writes > 0; --writes) EXPECT_TRUE(ObjectLock::Release(*parameter));
  EXPECT_TRUE(ObjectLock::BecomesFree(*parameter));
}

struct ComparisonCase {
  tavEObject type;
  const char* value;
  const char* operand;
  std::vector<std::string> holds;
};

TEST(ParameterComparison, HoldsForTheRightOperators) {
  const std::pair<tavECodeOperator, const char*> operators[] = {
      {tavCodeOperator_Greater, ">"}, {tavCodeOperator_GreaterOrEqual, ">="},
      {tavCodeOperator_Less, "<"},    {tavCodeOperator_LessOrEqual, "<="},
      {tavCodeOperator_Equal, "=="},  {tavCodeOperator_NotEqual, "!="}};
  const ComparisonCase cases[] = {
      {tavObject_ParameterByte, "127", "128", {"<", "<=", "!="}},  // unsigned
      {tavObject_ParameterByte, "128", "127", {">", ">=", "!="}},
      {tavObject_ParameterByte, "128", "128", {">=", "<=", "=="}},
      {tavObject_ParameterThermo, "-1", "-2.5", {">", ">=", "!="}},
      // Whether numbers are equal is a matter of their bytes, on purpose.
      {tavObject_ParameterThermo, "0", "-0", {">=", "<=", "!="}},
      {tavObject_ParameterTuner, "nan", "nan", {"=="}},
      // Texts are ordered by the size of the operand, which counts its zero.
      {tavObject_ParameterInfo, "abc", "zz", {">=", "<=", "!="}},
      {tavObject_ParameterInfo, "abc", "z", {">", ">=", "!="}},
      {tavObject_ParameterInfo, "abc", "abc", {"<", "<=", "=="}},
      // There is no order of colours and schedules.
      {tavObject_ParameterColor, "0x01020304", "0x01020304", {"=="}},
      {tavObject_ParameterColor, "0x01020304", "0x01020305", {"!="}},
      {tavObject_ParameterThermoChronoWeek, "1,20.25,0", "1,20.25", {"=="}},
      {tavObject_ParameterThermoChronoWeek, "1,20.25", "1,20.5", {"!="}},
  };
  for (const ComparisonCase& c : cases) {
    const std::unique_ptr<tavIParameter> left(tavParameterFactory::CreateByType(c.type));
    const std::unique_ptr<tavIParameter> right(tavParameterFactory::CreateByType(c.type));
    left->SetDataFromString(c.value);
    right->SetDataFromString(c.operand);
    std::vector<std::string> holds;
    for (const auto& [op, symbol] : operators) {
      if (left->Comparison(op, right->GetData(), right->GetDataSize())) holds.emplace_back(symbol);
    }
    EXPECT_EQ(holds, c.holds) << left->GetTypeName() << " " << c.value << " with " << c.operand;
  }
}

}  // namespace
}  // namespace tavon
