// The two string classes, tavString of the SDK and droString of the OS library: what both do alike, checked
// for each, and where their rules differ on purpose, side by side.
#include <gmock/gmock.h>
#include <utf8.h>

#include <algorithm>
#include <clocale>

#include "dro_error.h"
#include "dro_string.h"
#include "expect_report.h"
#include "failing_allocation.h"
#include "tav_error.h"
#include "tav_string.h"

using dro::droString;
using tavon::tavString;
using testing::ElementsAre, testing::Pair;
using std::string_literals::operator""s;

namespace {

template <class String>
struct BothStringClasses : testing::Test {
  static constexpr bool isSdk = std::is_same_v<String, tavString>;
  static constexpr ReportsOf invalid = isSdk ? ReportsOf{"tav_string", tavon::tavError_InvalidArgument}
                                             : ReportsOf{"dro_string", dro::droError_InvalidArgument};
};
using StringClasses = testing::Types<tavString, droString>;
TYPED_TEST_SUITE(BothStringClasses, StringClasses);

TYPED_TEST(BothStringClasses, FoldTheCaseOfAsciiLettersOnly) {
  EXPECT_EQ(TypeParam("@aZ[`z{\u00C9").GetUpCase(), "@AZ[`Z{\u00C9");
  EXPECT_TRUE(TypeParam("@aZ[`zA{").IsEqualNoCase("@Az[`Za{"));
  EXPECT_FALSE(TypeParam("[\u00C9").IsEqualNoCase("{\u00E9"));
  EXPECT_FALSE(TypeParam("aZ").IsEqualNoCase("aZb"));
}

TYPED_TEST(BothStringClasses, FindFromEitherEnd) {
  EXPECT_EQ(TypeParam("abcB").Find("b", 1, false, false), 1U);
  EXPECT_EQ(TypeParam("abcB").Find("b", 2, false, false), TypeParam::npos);
  EXPECT_EQ(TypeParam("abcB").Find("b", 2, true, false), 3U) << "in any case";
  EXPECT_EQ(TypeParam("abcb").Find("b", 0, false, true), 3U);
  EXPECT_EQ(TypeParam("abcb").Find("b", 2, false, true), 1U) << "the position counts back from the end";
  EXPECT_EQ(TypeParam("abcb").Find("b", 9, false, true), 3U) << "which one beyond the text starts at";
}

TYPED_TEST(BothStringClasses, ReplaceWithoutSearchingWhatTheyInserted) {
  TypeParam text = "-aA-";
  text.FindAndReplaceAll("a", "aA", true, false);
  EXPECT_EQ(text, "-aAaA-");
  text.FindAndReplaceAll("a", "", false, false);
  EXPECT_EQ(text, "-AA-") << "with heed to the case";
  EXPECT_EQ(text.FindAndReplace("a", "xyz", true, true, 0), 2U) << "one of them, from the end";
  EXPECT_EQ(text, "-Axyz-");
}

TYPED_TEST(BothStringClasses, TrimOrReverseACopy) {
  EXPECT_EQ(TypeParam("abc").GetReverse(), "cba");
  EXPECT_EQ(TypeParam("xyabx").GetShrink("yx", true), "abx");
  EXPECT_EQ(TypeParam("xabxy").GetShrink("yx", false), "xab");
  EXPECT_EQ(TypeParam("xx").GetShrink("x", true), "xx") << "what would leave nothing changes nothing";
  EXPECT_EQ(TypeParam("xxx").GetShrink("x", false), "xxx");
}

TYPED_TEST(BothStringClasses, FormatWholeTextsWhateverSizeIsGiven) {
  TypeParam text = "n=";
  EXPECT_EQ(text.AddFormat(4, "%i %s", 7, text.c_str()), "n=7 n=");
  EXPECT_EQ(text.SetFormat(0, "<%s>", text.c_str()), "<n=7 n=>");
  EXPECT_EQ(text.SetFormat(1, "%1000s", ""), std::string(1000, ' '));
}

TYPED_TEST(BothStringClasses, PrintRealNumbersWithoutTrailingZeros) {
  EXPECT_EQ(TypeParam::FromDouble(-2.5, 2), "-2.5");
  EXPECT_EQ(TypeParam::FromDouble(21.0, 2), "21");
  EXPECT_EQ(TypeParam::FromDouble(100.0, 0), "100");
  EXPECT_EQ(TypeParam::FromDouble(100.4, 0), "1") << "without decimals those of the whole number, on purpose";
}

TYPED_TEST(BothStringClasses, ConvertBetweenUtf8AndWideText) {
  const std::wstring wide = L"a\u00E9\u20AC\U0001F3E0";
  const TypeParam text = "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x8F\xA0";
  EXPECT_EQ(TypeParam::AsUTF8(wide.c_str()), text);
  EXPECT_EQ(TypeParam::FromUTF8(text.c_str()), wide);
  wchar_t buffer[] = L"?????";
  TypeParam::AsWide(text, buffer, 3);
  EXPECT_EQ(std::wstring(buffer, 5), L"a\u00E9\0??"s);
}

TYPED_TEST(BothStringClasses, ScrambleWithAnyKeyEvenThemselves) {
  TypeParam text = "secret";
  EXPECT_EQ(text.SetCrypt(text), TypeParam("secret").GetCrypt("secret"));
  EXPECT_EQ(text.GetDeCrypt("secret"), "secret");
  EXPECT_EQ(text.GetCrypt(""), text.GetCrypt("{7E21C9A4-5B3D-4f08-9C6E-2A7D41B05E93}"));
}

TYPED_TEST(BothStringClasses, ScrambleEveryByteOfABufferWithEveryByteOfTheKey) {
  unsigned char bytes[] = {'A', 0, 0xFF};
  TypeParam::DataCrypt(bytes, 2, "ab");
  EXPECT_THAT(bytes, ElementsAre('B', 3, 0xFF));
  TypeParam::DataDeCrypt(bytes, 2, "ab");
  EXPECT_THAT(bytes, ElementsAre('A', 0, 0xFF));
}

TYPED_TEST(BothStringClasses, ReportAMissingBuffer) {
  ExpectReport(TestFixture::invalid("DataCrypt", "io_buffer == 0"),
               [] { TypeParam::DataCrypt(nullptr, 10, ""); });
  ExpectReport(TestFixture::invalid("DataDeCrypt", "io_buffer == 0"),
               [] { TypeParam::DataDeCrypt(nullptr, 10, ""); });
  ExpectReport(TestFixture::invalid("AsWide", "io_buffer or len_buffer == 0"),
               [] { TypeParam::AsWide("a", nullptr, 1); });
}

TEST(StringClassRules, CopyNoMoreWideCharactersThanAskedFor) {
  wchar_t buffer[] = L"?????";
  for (const auto convert : {tavon::CharToWide, dro::CharToWide}) {
    convert(buffer, 5, "\u00E9yz", 2);
    EXPECT_EQ(std::wstring(buffer, 5), L"\u00E9y\0??"s);
  }
  ExpectReport({tavon::tavError_InvalidArgument, "tav_string", "AsWide", "io_buffer or len_buffer == 0", 356},
               [&] { tavString::AsWide("a", buffer, 0); });
}

TEST(StringClassRules, SayInTheOsLibraryOnlyThatUtf8IsCutShort) {
  const char* const text = "a\xE2\x82";
  wchar_t buffer[5];
  EXPECT_THROW(droString::FromUTF8(text), utf8::not_enough_room);
  EXPECT_THROW(droString::AsWide(text, buffer, 5), utf8::not_enough_room);
  EXPECT_THROW(tavString::FromUTF8(text), utf8::invalid_utf8);
  EXPECT_THROW(tavString::AsWide(text, buffer, 5), utf8::invalid_utf8);
}

TEST(StringClassRules, ConvertWideTextAsTheLocaleSays) {
  ASSERT_NE(std::setlocale(LC_CTYPE, "C.UTF-8"), nullptr);
  EXPECT_EQ(tavString::FromWide(L"a\u20AC", 0), "a\xE2\x82\xAC");
  EXPECT_EQ(droString::FromWide(L"\u20AC\u20ACa", 2), "\xE2\x82\xAC\xE2\x82\xAC");
  std::setlocale(LC_CTYPE, "C");
}

TEST(StringClassRules, HeedTheLengthOfWideTextInTheOsLibraryOnly) {
  EXPECT_EQ(droString::FromWide(L"abc", 2), "ab");
  EXPECT_EQ(droString::FromWide(L"abc", 0), "abc");
  EXPECT_EQ(droString::FromWide(L"\u20AC", 0), "") << "which the locale cannot express";
  EXPECT_EQ(tavString::FromWide(L"abc", 2), "abc");
  EXPECT_LT(tavString::FromWide(L"abc", 1000000).capacity(), 1000U) << "the memory was only tested";
}

TEST(StringClassRules, TakeNoTextForEmptyTextInTheSdkOnly) {
  EXPECT_EQ(tavString::AsUTF8(nullptr), "");
  EXPECT_EQ(tavString::FromUTF8(nullptr), L"");
  constexpr ReportsOf invalid{"dro_string", dro::droError_InvalidArgument};
  ExpectReport(invalid("FromUTF8", "pBuffer == 0"), L"", [] { return droString::FromUTF8(nullptr); });
  ExpectReport(invalid("AsUTF8", "pBuffer == 0"), "", [] { return droString::AsUTF8(nullptr); });
  ExpectReport(invalid("FromWide", "pBuffer == 0"), "", [] { return droString::FromWide(nullptr, 3); });
}

TEST(StringClassRules, SplitWithEmptyPiecesInTheSdkOnly) {
  tavon::tavArray<tavString> tavPieces{"kept"};
  tavString("a,,b,").GetSplit(&tavPieces, ",");
  EXPECT_THAT(tavPieces, ElementsAre("kept", "a", "", "b", ""));
  dro::droArray<droString> droPieces{"kept"};
  droString("a,,b,").GetSplit(&droPieces, ",");
  EXPECT_THAT(droPieces, ElementsAre("kept", "a", "b", ""));
}

TEST(StringClassRules, TrimFromTheRightEachInItsWay) {
  EXPECT_EQ(tavString("axx").GetShrink("x", false), "axx") << "it never looks at the first character";
  EXPECT_EQ(droString("axx").GetShrink("x", false), "a");
  EXPECT_EQ(tavString("xx").GetShrink("x", false), "xx");
  EXPECT_EQ(droString("xx").GetShrink("x", false), "x") << "one of exactly two";
}

TEST(StringClassRules, ReadNumbersBeyondTheirLimitsEachInItsWay) {
  EXPECT_EQ(tavString::AsInt("3000000000", 10), INT32_MAX);
  EXPECT_EQ(tavString::AsInt("-3000000000", 10), INT32_MIN);
  EXPECT_EQ(droString::AsInt("3000000000", 10), -1294967296) << "the low 32 of 64 bits";
  EXPECT_EQ(tavString::AsULong("4294967296", 10), 4294967295);
  EXPECT_EQ(droString::AsULong("-1", 10), 4294967295);
  EXPECT_EQ(droString::AsULong("-4294967295", 10), 1) << "a negative number counts from the other end";
  EXPECT_EQ(droString::AsULong("-4294967296", 10), 4294967295) << "there is none so small";
}

TEST(StringClassRules, NeedMemoryForAllWideTextThatIsSpokenOfInTheSdkOnly) {
  const auto shortage = FailingAllocation::OfAtLeast(1000000);
  ExpectReport({tavon::tavError_OutOfMemory, "tav_string", "FromWide", "pBuffer == 0", 391}, "",
               [] { return tavString::FromWide(L"abc", 1000000); });
  EXPECT_EQ(droString::FromWide(L"abc", 1000000), "abc");
}

TEST(StringClassRules, TestTheMemoryForAShortWideTextToo) {
  ExpectReport({tavon::tavError_OutOfMemory, "tav_string", "FromWide", "pBuffer == 0", 391}, "", [] {
    const auto shortage = FailingAllocation::After(0);
    return tavString::FromWide(L"abc", 0);
  });
}

// What only the OS library can do.

TEST(DroString, ErasesAtEitherEndAndThrowsWhereThereIsLess) {
  droString text = "_abc_";
  EXPECT_EQ(text.EraseFirstChars(1).EraseLastChars(1), "abc");
  EXPECT_THROW(text.EraseFirstChars(4), std::out_of_range);
  EXPECT_THROW(text.EraseLastChars(4), std::out_of_range);
  EXPECT_EQ(text.EraseCharAt(2), "ab");
  EXPECT_EQ(text.Clear(), "");
}

TEST(DroString, PrintsNumbersOfSixtyFourBitsInFull) {
  EXPECT_EQ(droString::FromLongLong(INT64_MIN), "-9223372036854775808");
  EXPECT_EQ(droString::AsLongLong("-9223372036854775809", 10), INT64_MIN) << "where reading stops";
}

TEST(DroString, KnowsDigits) {
  EXPECT_TRUE(std::ranges::all_of("09"s, droString::IsDigit));
  EXPECT_TRUE(std::ranges::none_of("/:a"s, droString::IsDigit));
  EXPECT_TRUE(std::ranges::all_of("09AFaf"s, droString::IsHexChar));
  EXPECT_TRUE(std::ranges::none_of("/:@G`g"s, droString::IsHexChar));
  EXPECT_EQ(droString("abcb").GetCharacterCount('b'), 2U);
}

TEST(DroString, ReadsBytesAndPairsBetweenSeparators) {
  dro::droArray<unsigned char> bytes{1};
  droString::SerialStringToData(&bytes, "0A::fF:123", ":");
  EXPECT_THAT(bytes, ElementsAre(1, 0x0A, 0xFF, 0x23));
  dro::droMap<droString, droString> values;
  droString("a=1=b=2=c=").GetSplitAsMap(&values, "=");
  EXPECT_THAT(values, ElementsAre(Pair("a", "1"), Pair("b", "2"))) << "a key at the end has no value";
  dro::droMap<droString, droString> none;
  droString().GetSplitAsMap(&none, "=");
  droString("a=1").GetSplitAsMap(&none, "");
  EXPECT_THAT(none, testing::IsEmpty()) << "neither an empty text nor an empty separator gives pieces";
  constexpr ReportsOf invalid{"dro_string", dro::droError_InvalidArgument};
  ExpectReport(invalid("SerialStringToData", "strSerial == 0"),
               [&] { droString::SerialStringToData(&bytes, "", ":"); });
  ExpectReport(invalid("SerialStringToData", "o_data == 0"),
               [] { droString::SerialStringToData(nullptr, "1", ":"); });
}

TEST(DroString, ExtractsWhatStandsBetweenTwoMarkers) {
  droString found = "untouched";
  const auto extract = [&](const char* text, bool ignoresCase, unsigned int start) {
    return droString(text).Extract(&found, "Begin", ">", ignoresCase, start);
  };
  EXPECT_EQ(extract(".beginAb>", false, 0), -1);
  EXPECT_EQ(extract(".BeginAb", false, 0), -1) << "no end";
  EXPECT_EQ(extract(".Begin", false, 0), -1) << "nothing behind the begin";
  EXPECT_EQ(extract(".BeginAb>", false, 4294967295), -1);
  EXPECT_EQ(found, "untouched");
  EXPECT_EQ(extract(".beginAb>", true, 0), 1);
  EXPECT_EQ(found, "Ab");
  EXPECT_EQ(extract(".Begin>b>", false, 1), 1);
  EXPECT_EQ(found, ">b") << "the start counts again from the marker on, on purpose";
}

}  // namespace
