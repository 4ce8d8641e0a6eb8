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
  const auto convert = [&](const char* text, bool hasBuffer, int code) {
    const auto id = static_cast<tavEObject>(999);
    return [=, &data] { EXPECT_EQ(Factory::StringToData(id, text, hasBuffer ? &data : nullptr), code); };
  };
  ExpectReport(6, R"(strData == "")", "ParameterFactory", "StringToData", 112, convert("", false, 6));
  ExpectReport(6, "io_data == 0", "ParameterFactory", "StringToData", 113, convert("1", false, 6));
  ExpectReport(1, "Parameter id not found", "ParameterFactory", "StringToData", 173, convert("1", true, 1));
  EXPECT_EQ(data, std::vector<unsigned char>{7});
}
