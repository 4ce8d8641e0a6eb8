#include "model_test.h"

using Factory = tavParameterFactory;

TEST(TavParameterFactory, KnowsFullNamesOnly) {
  for (const char* unknown : {"Switch", " ParameterSwitch", "ParameterSwitch ", "ParameterRGB", ""})
    EXPECT_EQ(CapturedOutput([&] { EXPECT_EQ(Factory::TypeNameToId(unknown), -1) << unknown; }), "");
  for (const int id : {999, 1014, -1}) {
    ExpectReport(6, "Can not get typen for " + tavString::FromInt(id), "ParameterFactory", "IdToTypeName", 40,
                 [&] { EXPECT_EQ(Factory::IdToTypeName(static_cast<tavEObject>(id)), ""); });
  }
}

TEST(TavParameterFactory, RefusesToConvertWithoutTextBufferOrType) {
  std::vector<unsigned char> data{7};
  const auto expect = [](int code, int line, const char* message, const char* text, auto* buffer) {
    ExpectReport(code, message, "ParameterFactory", "StringToData", line,
                 [&] { EXPECT_EQ(Factory::StringToData(static_cast<tavEObject>(999), text, buffer), code); });
  };
  expect(6, 112, "strData == \"\"", "", static_cast<std::vector<unsigned char>*>(nullptr));
  expect(6, 113, "io_data == 0", "1", static_cast<std::vector<unsigned char>*>(nullptr));
  expect(1, 173, "Parameter id not found", "1", &data);
  EXPECT_EQ(data, std::vector<unsigned char>{7});
}
