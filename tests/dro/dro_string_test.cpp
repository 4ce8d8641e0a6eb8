#include "dro_string.h"

#include <gmock/gmock.h>

#include <clocale>
#include <stdexcept>

#include "dro_value.h"
#include "expect_report.h"

using namespace dro;

TEST(DroString, ErasingMoreThanThereIsThrowsAndChangesNothing) {
  droString text("abcdef");
  EXPECT_EQ(text.EraseLastChars(1).EraseFirstChars(1).EraseCharAt(1), "bde");
  EXPECT_THROW(text.EraseLastChars(4), std::out_of_range);
  EXPECT_THROW(text.EraseFirstChars(4), std::out_of_range);
  EXPECT_TRUE(text == "bde" && text.GetCharacterCount('b') == 1 && text.GetCharacterCount('e') == 1);
}

TEST(DroString, ExtractCountsTheStartTwiceForTheEndMarker) {
  const auto extract = [](const droString& text, bool noCase, unsigned int start) {
    droString extracted("-");
    const int position = text.Extract(&extracted, "Begin", ">", noCase, start);
    return extracted + droString::FromInt(position);
  };
  EXPECT_EQ(extract(".beginAb>", true, 0), "Ab1") << "found in any case, taken as it is";
  EXPECT_EQ(extract(".beginAb>", false, 0), "--1");
  EXPECT_EQ(extract(".Begin>b>", false, 1), ">b1") << "the mark right after the begin marker is skipped";
  EXPECT_EQ(extract(".BeginAb", false, 0), "--1");
  EXPECT_EQ(extract(".BeginAb>", false, 4294967295U), "--1");
}

TEST(DroString, ReadsPairsAndNumbers) {
  droMap<droString, droString> pairs{{"b", "kept"}};
  droString("a=1==a=2=b=3=c=").GetSplitAsMap(&pairs, "=");
  EXPECT_THAT(pairs, testing::ElementsAre(testing::Pair("a", "1"), testing::Pair("b", "kept")));
  droArray<unsigned char> data{7};
  droString::SerialStringToData(&data, "01::fF:1A2:xy:", ":");
  EXPECT_THAT(data, testing::ElementsAre(7, 0x01, 0xFF, 0xA2, 0x00));
  EXPECT_EQ(droString::AsLongLong(" -9223372036854775809", 10), INT64_MIN);
  EXPECT_EQ(droString::FromLongLong(INT64_MIN), "-9223372036854775808");
  EXPECT_FALSE(droString::IsHexChar('G') || droString::IsHexChar('@') || !droString::IsHexChar('f'));
}

TEST(DroString, ReadsWideTextInTheLocale) {
  const wchar_t unterminated[] = {L'a', static_cast<wchar_t>(0x110000)};
  EXPECT_EQ(droString::FromWide(unterminated, 1) + droString::FromWide(unterminated, 2), "a");
  ASSERT_NE(std::setlocale(LC_CTYPE, "C.UTF-8"), nullptr);
  EXPECT_EQ(droString::FromWide(std::wstring(2, L'\U0001F600').c_str(), 99), "\U0001F600\U0001F600");
  std::setlocale(LC_CTYPE, "C");
}

TEST(DroString, UnusableArgumentsAreReported) {
  ExpectFailure(7, "FromUTF8", "pBuffer == 0", [] { EXPECT_EQ(droString::FromUTF8(nullptr), L""); });
  ExpectFailure(7, "AsUTF8", "pBuffer == 0", [] { EXPECT_EQ(droString::AsUTF8(nullptr), ""); });
  ExpectFailure(7, "FromWide", "pBuffer == 0", [] { EXPECT_EQ(droString::FromWide(nullptr, 3), ""); });
  ExpectFailure(7, "AsWide", "io_buffer or len_buffer == 0", [] { droString::AsWide("a", nullptr, 3); });
  ExpectFailure(7, "SerialStringToData", "strSerial == 0",
                [] { droString::SerialStringToData({}, "", ":"); });
  ExpectFailure(7, "SerialStringToData", "o_data == 0", [] { droString::SerialStringToData({}, "1", ":"); });
  ExpectFailure(7, "DataCrypt", "io_buffer == 0", [] { droString::DataCrypt(nullptr, 10, "k"); });
  ExpectFailure(7, "DataDeCrypt", "io_buffer == 0", [] { droString::DataDeCrypt(nullptr, 10, "k"); });
}

TEST(DroValue, IsOfOneKindAtATime) { EXPECT_TRUE(droValue("7").GetString() && !droValue(7).GetDouble()); }
