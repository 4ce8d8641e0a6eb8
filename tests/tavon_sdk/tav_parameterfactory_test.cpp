#include "tav_parameterfactory.h"

#include "expect_report.h"

namespace tavon {
namespace {

TEST(TavParameterFactory, KnowsFullNamesOnlyAndSaysNothingOfOthers) {
  for (const char* unknown : {"Switch", " ParameterSwitch", "ParameterSwitch ", "ParameterRGB", ""})
    EXPECT_EQ(tavParameterFactory::TypeNameToId(unknown), tavObject_None) << unknown;
}

TEST(TavParameterFactory, ReportsATypeThatHasNoName) {
  for (const int id : {999, 1014, -1}) {
    ExpectReport(
        {6, "tav_parameterfactory", "IdToTypeName", "Can not get typen for " + std::to_string(id), 40}, "",
        [=] { return tavParameterFactory::IdToTypeName(static_cast<tavEObject>(id)); });
  }
}

TEST(TavParameterFactory, ReportsATypeThatCannotBeCreated) {
  ExpectReport({6, "tav_parameterfactory", "CreateByType", "Can not created parameter -1", 98}, nullptr,
               [] { return tavParameterFactory::CreateByTypeName("Info"); });
}

TEST(TavParameterFactory, ConvertsNoEmptyText) {
  std::vector<unsigned char> data;
  ExpectReport({6, "tav_parameterfactory", "StringToData", R"(strData == "")", 112}, tavError_InvalidArgument,
               [&] { return tavParameterFactory::StringToData(tavObject_ParameterInfo, "", &data); });
}

TEST(TavParameterFactory, ConvertsNothingWithoutRoomForTheBytes) {
  ExpectReport({6, "tav_parameterfactory", "StringToData", "io_data == 0", 113}, tavError_InvalidArgument,
               [] { return tavParameterFactory::StringToData(tavObject_ParameterByte, "1", nullptr); });
}

TEST(TavParameterFactory, ConvertsNothingOfAnUnknownType) {
  std::vector<unsigned char> data{7};
  ExpectReport({1, "tav_parameterfactory", "StringToData", "Parameter id not found", 173},
               tavError_OperationFailed,
               [&] { return tavParameterFactory::StringToData(static_cast<tavEObject>(999), "1", &data); });
  EXPECT_EQ(data, std::vector<unsigned char>{7});
}

}  // namespace
}  // namespace tavon
