// The two string classes, tavString of the SDK and droString of the OS library: what both do alike, checked
// for each, and where their rules differ on purpose, side by side.
#include <gmock/gmock.h>
#include <utf8.h>

#include "dro_string.h"
#include "tav_string.h"

using dro::droString;
using tavon::tavString;
using testing::ElementsAre;

namespace {

template <class String>
struct BothStringClasses : testing::Test {};
using StringClasses = testing::Types<tavString, droString>;
TYPED_TEST_SUITE(BothStringClasses, StringClasses);

TYPED_TEST(BothStringClasses, CompareWholeTextsWithoutCase) {
  EXPECT_TRUE(TypeParam("aZ").IsEqualNoCase("Az"));
  EXPECT_FALSE(TypeParam("aZ").IsEqualNoCase("aZb"));
  EXPECT_FALSE(TypeParam("[\u00C9").IsEqualNoCase("{\u00E9")) << "only ASCII letters have two cases";
}

TYPED_TEST(BothStringClasses, FindFromEitherEnd) {
  EXPECT_EQ(TypeParam("abcB").Find("b", 1, false, false), 1U);
  EXPECT_EQ(TypeParam("abcB").Find("b", 2, false, false), TypeParam::npos);
  EXPECT_EQ(TypeParam("abcB").Find("b", 2, true, false), 3U) << "in any case";
  EXPECT_EQ(TypeParam("abcb").Find("b", 0, false, true), 3U);
  EXPECT_EQ(TypeParam("abcb").Find("b", 2, false, true), 1U) << "the position counts back from the end";
}

TYPED_TEST(BothStringClasses, ReplaceAllWithoutSearchingWhatTheyInserted) {
  TypeParam text = "-aA-";
  text.FindAndReplaceAll("a", "aA", true, false);
  EXPECT_EQ(text, "-aAaA-");
}

TYPED_TEST(BothStringClasses, FormatWholeTextsWhateverSizeIsGiven) {
  TypeParam text = "n=";
  EXPECT_EQ(text.AddFormat(4, "%i %s", 7, text.c_str()), "n=7 n=");
  EXPECT_EQ(text.SetFormat(0, "<%s>", text.c_str()), "<n=7 n=>");
}

struct PrintedNumber {
  double value;
  int precision;
  const char* text;
};

TYPED_TEST(BothStringClasses, PrintRealNumbersWithoutTrailingZeros) {
  const PrintedNumber cases[] = {
      {21.5, 1, "21.5"}, {-2.5, 2, "-2.5"},
      {21.0, 2, "21"},   {-0.0, 2, "0"},
      {0.004, 2, "0"},   {2147483648.0, 2, "2147483648"},  // one more than a 32-bit integer holds
      {100.4, 0, "1"}  // without decimals the zeros of the whole number go, on purpose
  };
  for (const PrintedNumber& c : cases) EXPECT_EQ(TypeParam::FromDouble(c.value, c.precision), c.text);
}

TYPED_TEST(BothStringClasses, ThrowOnWhatIsNoText) {
  EXPECT_THROW(TypeParam::FromUTF8("a\xFF"), utf8::exception);
  EXPECT_THROW(TypeParam::FromUTF8("a\xE2\x82"), utf8::exception) << "cut within a character";
  EXPECT_THROW(TypeParam::FromUTF8("\xED\xA0\x80"), utf8::exception) << "a surrogate";
  EXPECT_THROW(TypeParam::AsUTF8(L"\x110000"), utf8::exception) << "beyond the last character";
}

TYPED_TEST(BothStringClasses, ScrambleWithThemselvesAsWithACopy) {
  TypeParam text = "secret";
  EXPECT_EQ(text.SetCrypt(text), TypeParam("secret").GetCrypt("secret"));
  EXPECT_EQ(text.GetDeCrypt("secret"), "secret");
}

TYPED_TEST(BothStringClasses, ScrambleEveryByteOfABufferWithEveryByteOfTheKey) {
  unsigned char bytes[] = {'A', 0, 0xFF};
  TypeParam::DataCrypt(bytes, 2, "ab");
  EXPECT_THAT(bytes, ElementsAre('B', 3, 0xFF));
  TypeParam::DataDeCrypt(bytes, 2, "ab");
  EXPECT_THAT(bytes, ElementsAre('A', 0, 0xFF));
}

TEST(StringClassRules, SplitWithEmptyPiecesInTheSdkOnly) {
  tavon::tavArray<tavString> tavPieces{"kept"};
  tavString("a,,b,").GetSplit(&tavPieces, ",");
  EXPECT_THAT(tavPieces, ElementsAre("kept", "a", "", "b", ""));
  dro::droArray<droString> droPieces{"kept"};
  droString("a,,b,").GetSplit(&droPieces, ",");
  EXPECT_THAT(droPieces, ElementsAre("kept", "a", "b", ""));
}

struct ShrinkCase {
  const char* text;
  bool left;
  const char* tavResult;
  const char* droResult;
};

TEST(StringClassRules, TrimEachInItsWay) {
  const ShrinkCase cases[] = {
      {"xxab", true, "ab", "ab"},  {"xx", true, "xx", "xx"},  // what would leave nothing changes nothing
      {"abxx", false, "ab", "ab"}, {"xxx", false, "xxx", "xxx"},
      {"axx", false, "axx", "a"},  // the SDK never looks at the first character and then removes nothing
      {"xx", false, "xx", "x"}};   // the OS library takes one of exactly two
  for (const ShrinkCase& c : cases) {
    EXPECT_EQ(tavString(c.text).GetShrink("x", c.left), c.tavResult) << c.text;
    EXPECT_EQ(droString(c.text).GetShrink("x", c.left), c.droResult) << c.text;
  }
}

struct NumberCase {
  const char* text;
  std::int32_t tavSigned;
  std::int32_t droSigned;
  std::uint32_t bothUnsigned;
};

TEST(StringClassRules, ReadNumbersOfThirtyTwoBitsEachWithItsLimits) {
  const NumberCase cases[] = {
      {"abc", 0, 0, 0},
      {" 12abc", 12, 12, 12},
      {"-1", -1, -1, 4294967295U},
      {"3000000000", INT32_MAX, -1294967296, 3000000000U},  // the OS library keeps the low 32 of 64 bits
      {"-4294967295", INT32_MIN, 1, 1},
      {"4294967296", INT32_MAX, 0, 4294967295U},
      {"-99999999999999999999", INT32_MIN, 0, 4294967295U}};
  for (const NumberCase& c : cases) {
    EXPECT_EQ(tavString::AsInt(c.text, 10), c.tavSigned) << c.text;
    EXPECT_EQ(droString::AsInt(c.text, 10), c.droSigned) << c.text;
    EXPECT_EQ(tavString::AsULong(c.text, 10), c.bothUnsigned) << c.text;
    EXPECT_EQ(droString::AsULong(c.text, 10), c.bothUnsigned) << c.text;
  }
}

}  // namespace
