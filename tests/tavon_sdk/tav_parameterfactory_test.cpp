#include "tav_parameterfactory.h"

#include <gmock/gmock.h>

#include "captured_output.h"

using namespace tavon;
using testing::HasSubstr;

namespace {

TEST(TavParameterFactory, KnowsFullNamesOnly) {
  for (const char* unknown : {"Switch", " ParameterSwitch", "ParameterSwitch ", "ParameterRGB", ""}) {
    EXPECT_EQ(CapturedOutput([&] { EXPECT_EQ(tavParameterFactory::TypeNameToId(unknown), -1) << unknown; }),
              "");
  }
  for (const int id : {999, 1014, -1}) {
    EXPECT_THAT(CapturedOutput(
                    [&] { EXPECT_EQ(tavParameterFactory::IdToTypeName(static_cast<tavEObject>(id)), ""); }),
                HasSubstr("Number : 6\nInvalid Argument.\nFile ----------- : tav_parameterfactory\n"
                          "Function ------- : IdToTypeName\nLine Number ---- : 40\n"
                          "Custom Message - : Can not get typen for " +
                          std::to_string(id) + "\n"));
  }
}

TEST(TavParameterFactory, RefusesToConvertWithoutTextBufferOrType) {
  std::vector<unsigned char> data{7};
  const auto report = [&](int id, const char* text, std::vector<unsigned char>* buffer, int expectedCode) {
    return CapturedOutput([&] {
      EXPECT_EQ(tavParameterFactory::StringToData(static_cast<tavEObject>(id), text, buffer), expectedCode);
    });
  };
  EXPECT_THAT(report(999, "", nullptr, 6),
              HasSubstr("StringToData\nLine Number ---- : 112\nCustom Message - : strData == \"\"\n"));
  EXPECT_THAT(report(999, "1", nullptr, 6),
              HasSubstr("StringToData\nLine Number ---- : 113\nCustom Message - : io_data == 0\n"));
  EXPECT_THAT(report(999, "1", &data, 1),
              HasSubstr("StringToData\nLine Number ---- : 173\nCustom Message - : Parameter id not found\n"));
  EXPECT_THAT(data, testing::ElementsAre(7));
}

}  // namespace
