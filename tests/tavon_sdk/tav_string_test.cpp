#include "tav_string.h"

#include "model_test.h"

TEST(TavString, FoldsCaseOfAsciiOnly) {
  EXPECT_EQ(tavString("aZ\xC3\x89").GetUpCase(), "AZ\xC3\x89");
  EXPECT_EQ(tavString("aZ\xC3\x89").SetLowCase(), "az\xC3\x89");
  EXPECT_TRUE(tavString("aZ").IsEqualNoCase("Az") && !tavString("aZ").IsEqualNoCase("aZb"));
  EXPECT_FALSE(tavString("[").IsEqualNoCase("{"));  // 32 apart like letters, but none
  EXPECT_EQ(tavString("abc").GetReverse(), "cba");
}

TEST(TavString, FindsFromEitherEnd) {
  const tavString text = "abcB";
  EXPECT_TRUE(text.Find("b", 0, false, false) == 1 && text.Find("b", 2, false, false) == text.npos);
  EXPECT_TRUE(text.Find("B", 2, true, false) == 3 && text.Find("b", 99, true, false) == text.npos);
  EXPECT_TRUE(text.Find("b", 0, true, true) == 3 && text.Find("b", 2, true, true) == 1) << "counts back";
  EXPECT_EQ(text.Find("b", 99, true, true), 3U) << "wraps to the end when it is beyond the start";
}

TEST(TavString, ReplacesWithoutSearchingWhatItInserted) {
  tavString text = "aaa";
  text.FindAndReplaceAll("a", "aa", false, false);
  EXPECT_EQ(text, "aaaaaa");
  text = "xAbaB-";
  text.FindAndReplaceAll("ab", "Ab", true, true);
  EXPECT_EQ(text, "xAbAb-");
  text.FindAndReplaceAll("", "never", false, false);
  EXPECT_EQ(text.FindAndReplace("AB", "", true, true, 0), 3U);
  EXPECT_EQ(text.FindAndReplace("AB", "", false, false, 0), tavString::npos);
  EXPECT_EQ(text, "xAb-");
}

TEST(TavString, FormatsTheWholeTextWhateverTheSize) {
  tavString text = "n=";
  EXPECT_EQ(text.AddFormat(64, "%i %s", 7, text.c_str()), "n=7 n=");
  EXPECT_EQ(text.SetFormat(4, "%s", "abcdef"), "abcdef");
  EXPECT_EQ(text.AddFormat(0, "%s", "gh"), "abcdefgh");
}

TEST(TavString, TakesNullForEmptyUtf8) {
  EXPECT_TRUE(tavString::AsUTF8(static_cast<const wchar_t*>(nullptr)).empty());
  EXPECT_EQ(tavString::FromUTF8(static_cast<const char*>(nullptr)) + tavString::FromUTF8(tavString("a")),
            L"a");
  EXPECT_EQ(tavString::FromWide(L"abc", 1), "abc") << "the length only sizes the memory asked for";
  EXPECT_THROW(tavString::FromWide(nullptr, 4), std::logic_error);
}

TEST(TavString, ReportsUnusableBuffers) {
  const char* const noBuffer = "io_buffer == 0";
  wchar_t untouched = L'?';
  ExpectReport(6, "io_buffer or len_buffer == 0", "String", "AsWide", 356,
               [&] { tavString::AsWide("a", &untouched, 0); });
  EXPECT_EQ(untouched, L'?');
  ExpectReport(6, noBuffer, "String", "DataCrypt", kAnyLine, [] { tavString::DataCrypt(nullptr, 10, ""); });
  ExpectReport(6, noBuffer, "String", "DataDeCrypt", kAnyLine,
               [] { tavString::DataDeCrypt(nullptr, 10, ""); });
}
