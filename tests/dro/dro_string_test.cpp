#include "dro_string.h"

#include <gmock/gmock.h>
#include <utf8.h>

#include <clocale>
#include <stdexcept>

#include "captured_output.h"
#include "dro_value.h"
#include "has_report.h"

namespace dro {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

TEST(DroString, ErasingMoreThanThereIsThrowsAndChangesNothing) {
  droString text("abcdef");
  EXPECT_EQ(text.EraseLastChars(1), "abcde");
  EXPECT_EQ(text.EraseFirstChars(1), "bcde");
  EXPECT_EQ(text.EraseCharAt(1), "bde");
  EXPECT_THROW(text.EraseLastChars(4), std::out_of_range);
  EXPECT_THROW(text.EraseFirstChars(4), std::out_of_range);
  EXPECT_THROW(text.EraseCharAt(4), std::out_of_range);
  EXPECT_EQ(text, "bde");
  EXPECT_EQ(text.EraseFirstChars(3), "");
}

TEST(DroString, ShrinkKeepsTextsOfSetCharactersOnlyButForTwoAtTheEnd) {
  const struct {
    const char* text;
    const char* left;
    const char* right;
  } rows[] = {{"", "", ""},        {" ", " ", " "},       {"  ", "  ", " "},
              {" .", " .", " "},   {"   ", "   ", "   "}, {" . a . ", "a . ", " . a"},
              {"a..", "a..", "a"}, {"ab", "ab", "ab"}};
  for (const auto& row : rows) {
    EXPECT_EQ(droString(row.text).SetShrink(" .", true), row.left) << row.text;
    EXPECT_EQ(droString(row.text).GetShrink(" .", false), row.right) << row.text;
  }
}

TEST(DroString, ExtractCountsTheStartTwiceForTheEndMarker) {
  const struct {
    const char* text;
    const char* begin;
    bool noCase;
    unsigned int start;
    int position;
    const char* extracted;
  } rows[] = {{"Serial: 00Ab\n", "SERIAL: ", true, 0, 0, "00Ab"},
              {"Serial: 00Ab\n", "SERIAL: ", false, 0, -1, "-"},
              {"x<a\nb\n", "<", false, 1, 1, "a"},
              {"x<\nb\n", "<", false, 1, 1, "\nb"},
              {"x<", "<", false, 0, -1, "-"},
              {"x<ab", "<", false, 0, -1, "-"},
              {"x<a\n", "<", false, 2, -1, "-"},
              {"x<a\n", "<", false, 4294967295U, -1, "-"}};
  for (const auto& row : rows) {
    droString extracted("-");
    EXPECT_EQ(droString(row.text).Extract(&extracted, row.begin, "\n", row.noCase, row.start), row.position);
    EXPECT_EQ(extracted, row.extracted) << row.text;
  }
  EXPECT_EQ(droString("<a>").Extract(nullptr, "<", ">", false, 0), -1);
}

TEST(DroString, SplitDropsEmptyPiecesButTheLast) {
  const auto split = [](const droString& text) {
    droArray<droString> pieces{"kept"};
    text.GetSplit(&pieces, "::");
    return pieces;
  };
  EXPECT_THAT(split("a::::b::"), ElementsAre("kept", "a", "b", ""));
  EXPECT_THAT(split("::a:b"), ElementsAre("kept", "a:b"));
  EXPECT_THAT(split(""), ElementsAre("kept", ""));

  droMap<droString, droString> pairs{{"b", "kept"}};
  droString("a=1==a=2=b=3=c=").GetSplitAsMap(&pairs, "=");
  EXPECT_THAT(pairs, ElementsAre(Pair("a", "1"), Pair("b", "kept")));
  droString("a=1").GetSplit(nullptr, "=");
  droString("a=1").GetSplitAsMap(nullptr, "=");
}

// Unlike in tavString, numbers beyond 32 bits are narrowed and do not stop at the limits.
TEST(DroString, LongAndIntAreTheLowBitsOfTheLongLong) {
  EXPECT_EQ(droString::AsLongLong(" -9223372036854775809", 10), INT64_MIN);
  EXPECT_EQ(droString::AsLong("3000000000", 10), -1294967296);
  EXPECT_EQ(droString::AsInt("-1FFFFFFFE", 16), 2);
  EXPECT_EQ(droString::AsInt("one", 10), 0);
  EXPECT_EQ(droString::FromLongLong(INT64_MIN), "-9223372036854775808");
}

TEST(DroString, CharactersAreCountedAndTold) {
  EXPECT_EQ(droString("a:b::").GetCharacterCount(':'), 3U);
  for (int c = -128; c < 128; ++c) {
    const char character = static_cast<char>(c);
    const bool isHex = c > 0 && std::string("0123456789abcdefABCDEF").find(character) != std::string::npos;
    EXPECT_EQ(droString::IsHexChar(character), isHex) << c;
    EXPECT_EQ(droString::IsDigit(character), c >= '0' && c <= '9') << c;
  }
}

TEST(DroString, Utf8ThatIsNotValidThrowsTheReason) {
  EXPECT_EQ(droString::FromUTF8("a\xC3\xA9\xF0\x9F\x98\x80"), L"a\u00E9\U0001F600");
  EXPECT_EQ(droString::AsUTF8(L"a\u00E9\U0001F600"), "a\xC3\xA9\xF0\x9F\x98\x80");
  EXPECT_THROW(droString::FromUTF8("a\xFF"), utf8::invalid_utf8);
  EXPECT_THROW(droString::FromUTF8("a\xE2\x82"), utf8::not_enough_room);
  EXPECT_THROW(droString::FromUTF8("\xED\xA0\x80"), utf8::invalid_code_point);
  const wchar_t beyond[] = {L'a', static_cast<wchar_t>(0x110000), L'\0'};
  EXPECT_THROW(droString::AsUTF8(beyond), utf8::invalid_code_point);
}

TEST(DroString, WideTextBecomesTextOfTheLocale) {
  const wchar_t unterminated[] = {L'a', L'b', L'c'};
  EXPECT_EQ(droString::FromWide(unterminated, 3), "abc");
  EXPECT_EQ(droString::FromWide(L"ab\0c", 4), "ab");
  EXPECT_EQ(droString::FromWide(L"abc", 0), "abc");
  EXPECT_EQ(droString::FromWide(L"a\u00E9", 0), "");
  ASSERT_NE(std::setlocale(LC_CTYPE, "C.UTF-8"), nullptr);
  EXPECT_EQ(droString::FromWide(L"\U0001F600\U0001F600", 0), "\xF0\x9F\x98\x80\xF0\x9F\x98\x80");
  std::setlocale(LC_CTYPE, "C");
}

TEST(DroString, CharToWideStopsAtTheFirstLimit) {
  const struct {
    unsigned int capacity;
    unsigned int length;
    const wchar_t* wide;
  } rows[] = {{9, 9, L"\u00E9bc"}, {3, 9, L"\u00E9b"}, {9, 1, L"\u00E9"},
              {9, 0, L""},         {1, 9, L""},        {0, 9, L"--"}};
  for (const auto& row : rows) {
    std::wstring buffer(row.capacity, L'-');
    buffer += L"--";  // must stay
    CharToWide(buffer.data(), row.capacity,
               "\xC3\xA9"
               "bc",
               row.length);
    EXPECT_STREQ(buffer.c_str(), row.wide) << row.capacity << ' ' << row.length;
    EXPECT_EQ(buffer.substr(row.capacity), L"--");
  }
  CharToWide(nullptr, 9, "abc", 3);
}

TEST(DroString, SerialNumbersAreHexadecimalPieces) {
  droArray<unsigned char> data{7};
  droString::SerialStringToData(&data, "01::fF:1A2:xy:", ":");
  EXPECT_THAT(data, ElementsAre(7, 0x01, 0xFF, 0xA2, 0x00));
}

TEST(DroString, ScramblingTwiceRestores) {
  unsigned char data[] = {'A', 0, 0xFF, 'x'};
  droString::DataCrypt(data, 3, "ab");
  EXPECT_THAT(data, ElementsAre('B', 3, 0xFC, 'x'));
  droString::DataDeCrypt(data, 3, "ab");
  EXPECT_THAT(data, ElementsAre('A', 0, 0xFF, 'x'));
}

TEST(DroString, UnusableArgumentsAreReported) {
  wchar_t wide = L'-';
  droArray<unsigned char> data;
  const auto reported = [](auto action, const char* function, const char* message) {
    const std::string output = CapturedOutput(action);
    EXPECT_THAT(output, HasReport(function, message));
    EXPECT_THAT(output, testing::HasSubstr("\nInvalid Argument.\nFile ----------- : dro_string\n"));
  };
  reported([] { EXPECT_EQ(droString::FromUTF8(nullptr), L""); }, "FromUTF8", "pBuffer == 0");
  reported([] { EXPECT_EQ(droString::AsUTF8(nullptr), ""); }, "AsUTF8", "pBuffer == 0");
  reported([] { EXPECT_EQ(droString::FromWide(nullptr, 3), ""); }, "FromWide", "pBuffer == 0");
  reported([] { droString::AsWide("a", nullptr, 3); }, "AsWide", "io_buffer or len_buffer == 0");
  reported([&] { droString::AsWide("a", &wide, 0); }, "AsWide", "io_buffer or len_buffer == 0");
  reported([&] { droString::SerialStringToData(&data, "", ":"); }, "SerialStringToData", "strSerial == 0");
  reported([] { droString::SerialStringToData(nullptr, "1", ":"); }, "SerialStringToData", "o_data == 0");
  reported([] { droString::DataCrypt(nullptr, 10, "k"); }, "DataCrypt", "io_buffer == 0");
  reported([] { droString::DataDeCrypt(nullptr, 10, "k"); }, "DataDeCrypt", "io_buffer == 0");
  EXPECT_EQ(wide, L'-');
  EXPECT_THAT(data, IsEmpty());
}

TEST(DroValue, IsOfOneKindAtATime) {
  EXPECT_TRUE(droValue().IsEmpty());
  EXPECT_EQ(droValue(7).GetDouble(), nullptr);
  const droValue text(droString("seven"));
  EXPECT_EQ(*text.GetString(), "seven");
}

}  // namespace
}  // namespace dro
