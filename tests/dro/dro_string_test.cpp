#include "dro_string.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "expect_report.h"

using namespace dro;

namespace {

TEST(DroString, ExtractsWhatStandsBetweenTwoMarkers) {
  const struct {
    const char* text;
    bool ignoresCase;
    unsigned int start;
    int position;
    const char* extracted;
  } cases[] = {
      {".BeginAb>", false, 0, 1, "Ab"},
      {".beginAb>", true, 0, 1, "Ab"},
      {".beginAb>", false, 0, -1, "untouched"},
      {".Begin>b>", false, 1, 1, ">b"},  // the start counts again from the marker on, on purpose
      {".BeginAb", false, 0, -1, "untouched"},
      {".Begin", false, 0, -1, "untouched"},
      {".BeginAb>", false, 4294967295, -1, "untouched"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    droString extracted("untouched");
    EXPECT_EQ(droString(c.text).Extract(&extracted, "Begin", ">", c.ignoresCase, c.start), c.position);
    EXPECT_EQ(extracted, c.extracted);
  }
}

TEST(DroString, UnusableArgumentsAreReported) {
  constexpr ReportsOf kInvalid{"dro_string", 7};
  ExpectReport(kInvalid("FromUTF8", "pBuffer == 0"), L"", [] { return droString::FromUTF8(nullptr); });
  ExpectReport(kInvalid("AsUTF8", "pBuffer == 0"), "", [] { return droString::AsUTF8(nullptr); });
  ExpectReport(kInvalid("FromWide", "pBuffer == 0"), "", [] { return droString::FromWide(nullptr, 3); });
  ExpectReport(kInvalid("AsWide", "io_buffer or len_buffer == 0"),
               [] { droString::AsWide("a", nullptr, 3); });
  ExpectReport(kInvalid("SerialStringToData", "strSerial == 0"),
               [] { droString::SerialStringToData({}, "", ":"); });
  ExpectReport(kInvalid("SerialStringToData", "o_data == 0"),
               [] { droString::SerialStringToData({}, "1", ":"); });
  ExpectReport(kInvalid("DataCrypt", "io_buffer == 0"), [] { droString::DataCrypt(nullptr, 10, "k"); });
  ExpectReport(kInvalid("DataDeCrypt", "io_buffer == 0"), [] { droString::DataDeCrypt(nullptr, 10, "k"); });
}

}  // namespace
