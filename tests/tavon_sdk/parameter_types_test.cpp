// What all types of parameters share.
#include <array>
#include <cstring>
#include <functional>
#include <memory>

#include "model_test.h"
#include "src/tav_parametertypes.h"

using Factory = tavParameterFactory;

struct Type {
  tavString name;
  std::function<const void*(Prm&)> cast;
  tavEError (*set)(Prm*, const tavString&);
  tavEError (*encode)(const tavString&, unsigned char*);
  std::array<int, 5> lines;  // of reports: text, SetDataValue, GetDataValue, comparison, no buffer
  std::string text, other;
  const char* relations;  // the operators, 1 to 6, that hold (1) or not (0) between the values of the texts
};

template <class Self>
static Type Row(Self* (Prm::*cast)(), std::array<int, 5> lines, const char* text, const char* other,
                const char* relations) {
  return {
      Self::TypeName, std::mem_fn(cast), Self::SetDataFromString, Self::GetBinaryDataFromString, lines, text,
      other,          relations};
}

static const Type kTypes[] = {
    Row(&Prm::GetParameterSwitchPtr, {0, 0, 0, 0, 17}, "0", "1", "001101"),
    Row(&Prm::GetParameterSwitchReleasePtr, {38, 85, 89, 99, 23}, "1", "0", "110001"),
    Row(&Prm::GetParameterSliderPtr, {0, 0, 0, 0, 18}, "0.75", "0.5", "110001"),
    Row(&Prm::GetParameterColorPtr, {0, 0, 0, 0, 19}, "0x01020304", "0x01020305", "000001"),
    Row(&Prm::GetParameterInfoPtr, {0, 0, 0, 0, 15}, "abc", "z", "110001"),
    Row(&Prm::GetParameterShutterPtr, {43, 84, 88, 99, 26}, "2", "2", "010110"),
    Row(&Prm::GetParameterThermoPtr, {0, 0, 0, 0, 17}, "0", "-0", "010101"),  // = is of bytes: intended
    Row(&Prm::GetParameterThermoChronoWeekPtr, {72, 98, 102, 211, 25}, "1,20.25,0,", "1,20.25", "000010"),
    Row(&Prm::GetParameterHDScenePtr, {0, 0, 0, 0, 17}, "1", "1", "010110"),
    Row(&Prm::GetParameterVRScenePtr, {44, 90, 94, 148, 28}, "200", "100", "110001"),
    Row(&Prm::GetParameterAlertPtr, {0, 0, 0, 0, 19}, "1", "0", "110001"),
    Row(&Prm::GetParameterBytePtr, {0, 0, 0, 0, 17}, "127", "128", "001101"),
    Row(&Prm::GetParameterTunerPtr, {0, 0, 0, 0, 17}, "nan", "nan", "000010"),
    Row(&Prm::GetParameterCameraPtr, {0, 0, 0, 0, 16}, "\1", "\1", "000000"),
};

struct ParameterTypes : testing::TestWithParam<int> {
  const Type& type = kTypes[GetParam()];
  const tavEObject id = static_cast<tavEObject>(1000 + GetParam());
  const bool isCamera = id == tavObject_ParameterCamera, isText = isCamera || id == tavObject_ParameterInfo;
  const std::unique_ptr<Prm> parameter{Factory::CreateByType(id)};
};
INSTANTIATE_TEST_SUITE_P(All, ParameterTypes, testing::Range(0, static_cast<int>(tavParameterTypes::Count)));

TEST_P(ParameterTypes, AreOfOneTypeAndSetFromTextByNoOther) {
  EXPECT_TRUE(parameter->IsObject(id) && parameter->GetTypeName() == type.name && parameter->IsValid());
  EXPECT_FALSE(parameter->IsChangedByCallBack());
  EXPECT_EQ(Factory::TypeNameToId(type.name.GetUpCase()), id);
  EXPECT_EQ(Factory::IdToTypeName(id), type.name);
  for (const Type& other : kTypes) {
    EXPECT_EQ(other.cast(*parameter), &other == &type ? dynamic_cast<void*>(parameter.get()) : nullptr);
    if (&other == &type) continue;
    ExpectReport(6, "pPrm != tavObject_" + other.name, other.name, "SetDataFromString", other.lines[0],
                 [&] { EXPECT_EQ(other.set(parameter.get(), other.text), 6); });
  }
  EXPECT_TRUE(type.set(nullptr, type.text) == 0 && type.set(parameter.get(), type.text) == 0);
  EXPECT_EQ(parameter->ValueToString().substr(0, type.text.size()), type.text);
  ExpectReport(6, "o_pBuffer == 0", type.name, "GetBinaryDataFromString", type.lines[4],
               [&] { EXPECT_EQ(type.encode("1", nullptr), 6); });
  EXPECT_EQ(CapturedOutput([&] { EXPECT_EQ(type.encode("", nullptr), 0); }), "") << "nothing to write";
  const char* const message = "MUST BE IMPLEMENTED";
  ExpectReport(1, message, type.name, "SetDataValue", type.lines[1], [&] { parameter->SetDataValue(1.0); });
  ExpectReport(1, message, type.name, "GetDataValue", type.lines[2], [&] { parameter->GetDataValue({}); });
}

TEST_P(ParameterTypes, CompareByOperator) {
  parameter->SetDataFromString(type.other);
  const unsigned int size = parameter->GetDataSize();
  std::vector<unsigned char> other(size);
  parameter->GetDataCopy(other.data());
  EXPECT_EQ(std::memcmp(parameter->GetData(), other.data(), size), 0);
  parameter->SetDataFromString(type.text);
  const auto expect = [&](int op, bool holds) {
    EXPECT_EQ(parameter->Comparison(Op(op), other.data(), size), holds) << op;
    const unsigned int less = isText ? 0 : size - 1;
    EXPECT_FALSE(parameter->Comparison(Op(op), {}, 9) || parameter->Comparison(Op(op), other.data(), less));
  };
  for (int op = 1; op <= 6 && !isCamera; ++op)
    EXPECT_EQ(CapturedOutput([&] { expect(op, type.relations[op - 1] == '1'); }), "");
  const char* const message =
      isCamera ? "No comparison for tavParameterCamera!" : "UnKnown tavECodeOperator operator type";
  for (const int op : {0, 7, -1, isCamera ? 5 : 0})
    ExpectReport(1, message, type.name, "Comparison", type.lines[3], [&] { expect(op, false); });
  ExpectThrownReport(*parameter, [&] { parameter->Comparison({}, other.data(), size); });
}

TEST_P(ParameterTypes, InvalidWriteLeavesTheObjectLockedUnlessItsValueIsAText) {
  parameter->SetData(nullptr, 1, 1);
  parameter->SetData(reinterpret_cast<const unsigned char*>("9"), 0, 1);
  for (int i = 0; i < 2 && !isText; ++i)
    EXPECT_TRUE(LockOf::IsHeld(*parameter) && LockOf::Of(*parameter).UnLockB());
  EXPECT_TRUE(LockOf::IsFree(*parameter));
}

TEST(ParameterCreation, GoesByNameInAnyCaseAndReportsUnknownOnes) {
  EXPECT_TRUE(std::unique_ptr<Prm>(Factory::CreateByTypeName("PARAMETERINFO"))->GetParameterInfoPtr());
  ExpectReport(6, "Can not created parameter -1", "ParameterFactory", "CreateByType", 98,
               [] { EXPECT_FALSE(Factory::CreateByTypeName("Info")); });
}
