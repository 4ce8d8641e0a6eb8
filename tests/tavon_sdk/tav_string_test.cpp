#include "tav_string.h"

#include <gmock/gmock.h>
#include <utf8.h>

#include "captured_output.h"

using tavon::CharToWide;
using tavon::tavString;
using testing::HasSubstr;

namespace {

TEST(TavString, FoldsCaseOfAsciiOnly) {
  EXPECT_EQ(tavString("aZ\xC3\x89").GetUpCase(), "AZ\xC3\x89");
  EXPECT_EQ(tavString("aZ\xC3\x89").SetLowCase(), "az\xC3\x89");
  EXPECT_TRUE(tavString("ParameterSwitch").IsEqualNoCase("PARAMETERSWITCH"));
  EXPECT_FALSE(tavString("Parameter").IsEqualNoCase("ParameterS"));
  EXPECT_FALSE(tavString("[").IsEqualNoCase("{"));  // 32 apart like letters, but none
  EXPECT_EQ(tavString("abc").GetReverse(), "cba");
}

TEST(TavString, FindsFromEitherEnd) {
  const tavString text = "abcB";
  EXPECT_EQ(text.Find("b", 0, false, false), 1u);
  EXPECT_EQ(text.Find("b", 2, false, false), tavString::npos);
  EXPECT_EQ(text.Find("B", 2, true, false), 3u);
  EXPECT_EQ(text.Find("b", 0, true, true), 3u);
  EXPECT_EQ(text.Find("b", 2, true, true), 1u);   // the position counts back from the end
  EXPECT_EQ(text.Find("b", 99, true, true), 3u);  // and wraps to the end when it is beyond the start
  EXPECT_EQ(text.Find("b", 99, true, false), tavString::npos);
}

TEST(TavString, ReplacesWithoutSearchingWhatItInserted) {
  tavString text = "aaa";
  text.FindAndReplaceAll("a", "aa", false, false);
  EXPECT_EQ(text, "aaaaaa");
  text = "xAbaB-";
  text.FindAndReplaceAll("ab", "Ab", true, true);
  EXPECT_EQ(text, "xAbAb-");
  text.FindAndReplaceAll("", "never", false, false);
  EXPECT_EQ(text.FindAndReplace("AB", "", true, true, 0), 3u);
  EXPECT_EQ(text.FindAndReplace("AB", "", false, false, 0), tavString::npos);
  EXPECT_EQ(text, "xAb-");
}

TEST(TavString, FormatsWithinTheGivenSize) {
  tavString text = "n=";
  EXPECT_EQ(text.AddFormat(64, "%i %s", 7, text.c_str()), "n=7 n=");
  EXPECT_EQ(text.SetFormat(4, "%s", "abcdef"), "abc");
  EXPECT_EQ(text.AddFormat(0, "%s", "lost"), "abc");
}

TEST(TavString, ConvertsBetweenUtf8AndWide) {
  const std::wstring wide = L"a\u00E9\u20AC\U0001F600";
  const tavString bytes = "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80";
  EXPECT_EQ(tavString::AsUTF8(wide), bytes);
  EXPECT_EQ(tavString::FromUTF8(bytes), wide);
  EXPECT_EQ(tavString::AsUTF8(static_cast<const wchar_t*>(nullptr)), "");
  EXPECT_EQ(tavString::FromUTF8(static_cast<const char*>(nullptr)), L"");
  EXPECT_EQ(tavString::FromWide(L"abc", 1), "abc") << "the length only sizes the memory asked for";
  EXPECT_THROW(tavString::FromWide(nullptr, 4), std::logic_error);
  EXPECT_THROW(tavString::FromUTF8("\xC3"), utf8::exception);
  EXPECT_THROW(tavString::AsUTF8(std::wstring(1, static_cast<wchar_t>(0xD800))), utf8::exception);
}

TEST(TavString, CopiesWideTextWithinTheBuffer) {
  wchar_t buffer[] = L"????";
  CharToWide(buffer, 4,
             "\xC3\xA9"
             "bcd",
             99);
  EXPECT_EQ(buffer, std::wstring(L"\u00E9bc"));
  CharToWide(buffer, 3, "\xC3\xA9", 1);
  EXPECT_EQ(buffer, std::wstring(L"\u00E9"));
  CharToWide(buffer, 1, "a", 1);
  CharToWide(buffer, 0, "a", 1);
  EXPECT_EQ(std::wstring(buffer, 4), std::wstring(L"\0\0c\0", 4)) << "only terminators were written";
}

TEST(TavString, ReportsUnusableBuffers) {
  wchar_t untouched = L'?';
  EXPECT_THAT(
      CapturedOutput([&] { tavString::AsWide("a", &untouched, 0); }),
      HasSubstr("Number : 6\nInvalid Argument.\nFile ----------- : tav_string\nFunction ------- : AsWide\n"
                "Line Number ---- : 356\nCustom Message - : io_buffer or len_buffer == 0\n"));
  EXPECT_EQ(untouched, L'?');
  EXPECT_THAT(CapturedOutput([] { tavString::DataCrypt(nullptr, 10, ""); }),
              HasSubstr("DataCrypt\nLine Number ---- : 251\nCustom Message - : io_buffer == 0\n"));
  EXPECT_THAT(CapturedOutput([] { tavString::DataDeCrypt(nullptr, 10, ""); }), HasSubstr("DataDeCrypt\n"));
}

}  // namespace
