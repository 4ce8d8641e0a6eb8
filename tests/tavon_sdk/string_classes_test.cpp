// The two string classes, tavString of the SDK and droString of the OS library: what both do alike, checked
// for each, and where their rules differ on purpose, side by side.
#include <gmock/gmock.h>

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

TYPED_TEST(BothStringClasses, FormatWholeTextsWhateverSizeIsGiven) {
  TypeParam text = "n=";
  EXPECT_EQ(text.AddFormat(4, "%i %s", 7, text.c_str()), "n=7 n=");
  EXPECT_EQ(text.SetFormat(0, "<%s>", text.c_str()), "<n=7 n=>");
}

TYPED_TEST(BothStringClasses, DropTrailingZerosOfRealNumbers) {
  EXPECT_EQ(TypeParam::FromDouble(-2.5, 2), "-2.5");
  EXPECT_EQ(TypeParam::FromDouble(21.0, 2), "21");
  EXPECT_EQ(TypeParam::FromDouble(100.4, 0), "1") << "without decimals those of the whole number, on purpose";
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

TEST(StringClassRules, GiveBackTheMemoryThatFromWideOnlyTests) {
  EXPECT_LT(tavString::FromWide(L"abc", 1000000).capacity(), 1000U);
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

}  // namespace
