// The two string classes side by side: what they share gives the same, what differs differs on purpose.
#include <gmock/gmock.h>
#include <utf8.h>

#include "dro_string.h"
#include "tav_string.h"

using dro::droArray;
using dro::droString;
using tavon::tavArray;
using tavon::tavString;
using testing::ElementsAre;

TEST(StringClasses, TrimByTheirOwnRules) {
  const struct {
    const char* text;
    bool left;
    const char *tav, *dro;
  } cases[] = {
      {"xxab", true, "ab", "ab"},   {"xx", true, "xx", "xx"}, {"abxx", false, "ab", "ab"},
      {"axx", false, "axx", "a"},  // the SDK never looks at the first character and then removes nothing
      {"xx", false, "xx", "x"},    // the OS library takes one of exactly two
      {"xxx", false, "xxx", "xxx"}, {"x", false, "x", "x"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(tavString(c.text).SetShrink("x", c.left), c.tav) << c.text << c.left;
    EXPECT_EQ(droString(c.text).GetShrink("x", c.left), c.dro) << c.text << c.left;
  }
}

TEST(StringClasses, OnlyTheOsLibraryDropsEmptyPieces) {
  tavArray<tavString> tav{"kept"};
  tavString("a,,b,").GetSplit(&tav, ",");
  EXPECT_THAT(tav, ElementsAre("kept", "a", "", "b", ""));
  droArray<droString> dro{"kept"};
  droString("a,,b,").GetSplit(&dro, ",");
  EXPECT_THAT(dro, ElementsAre("kept", "a", "b", ""));

  tavString("").GetSplit(&tav, ", ");
  droString("").GetSplit(&dro, ", ");
  tavString("a").GetSplit(&tav, "");
  tavString("a").GetSplit(nullptr, ",");
  EXPECT_EQ(tav.size(), 6U) << "an empty text is one piece, an empty separator gives none";
  EXPECT_EQ(dro.size(), 5U);
}

TEST(StringClasses, ReadNumbersOfThirtyTwoBits) {
  const struct {
    const char* text;
    std::int32_t tavInt, droInt;
    std::uint32_t unsignedLong;
  } cases[] = {
      {" 12abc", 12, 12, 12},
      {"-1", -1, -1, 4294967295U},
      {"-4294967295", INT32_MIN, 1, 1},
      {"-4294967296", INT32_MIN, 0, 4294967295U},
      {"3000000000", INT32_MAX, -1294967296, 3000000000U},  // the OS library keeps the low 32 of 64 bits
      {"4294967296", INT32_MAX, 0, 4294967295U},
      {"99999999999999999999", INT32_MAX, -1, 4294967295U},
      {"-99999999999999999999", INT32_MIN, 0, 4294967295U},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(tavString::AsInt(c.text, 10), c.tavInt) << c.text;
    EXPECT_EQ(droString::AsInt(c.text, 10), c.droInt) << c.text;
    EXPECT_EQ(droString::AsULong(c.text, 10), c.unsignedLong) << c.text;
  }
  EXPECT_EQ(tavString::AsLong("-4294967296", 10) + tavString::AsLong("7fffffff", 16), -1);
}

TEST(StringClasses, PrintNumbersAlike) {
  const std::tuple<double, int, const char*> cases[] = {
      {100.4, 0, "1"},
      {0.4, 0, ""},                     // the zeros of the whole number go too: intended
      {2147483648.0, 2, "2147483648"},  // beyond an int: not a wrapped number
      {-2147483648.0, 2, "-2147483648"},
      {4294967296.5, 3, "4294967296.5"},
      {1e300 * 1e300, 2, "inf"},
      {21.0, 2, "21"},
      {-2.5, 2, "-2.5"},
      {-0.0, 2, "0"},
      {0.004, 2, "0"}};
  for (const auto& [value, precision, text] : cases) {
    EXPECT_EQ(tavString::FromDouble(value, precision), text);
    EXPECT_EQ(droString::FromDouble(value, precision), text);
  }
  EXPECT_EQ(tavString::FromFloat(0.1F, 3) + tavString::FromULong(4294967295UL), "0.14294967295");
  EXPECT_EQ(droString::FromLong(-5), "-5");
}

template <class String>
static void ExpectUtf8(void (*charToWide)(wchar_t*, unsigned int, const char*, unsigned int)) {
  EXPECT_EQ(String::FromUTF8("a\u00E9\u20AC\U0001F600"), L"a\u00E9\u20AC\U0001F600");
  EXPECT_EQ(String::AsUTF8(L"a\u00E9\u20AC\U0001F600"), "a\u00E9\u20AC\U0001F600");
  EXPECT_THROW(String::FromUTF8("a\xFF"), utf8::invalid_utf8);
  EXPECT_THROW(String::FromUTF8("a\xE2\x82"), utf8::exception);
  EXPECT_THROW(String::FromUTF8("\xED\xA0\x80"), utf8::invalid_code_point);
  EXPECT_THROW(String::AsUTF8(L"\x110000"), utf8::invalid_code_point);
  wchar_t buffer[] = L"????";
  String::AsWide("\u00E9bcd", buffer, 4);
  EXPECT_EQ(buffer, std::wstring(L"\u00E9bc"));
  charToWide(buffer, 3, "\u00E9yz", 1);
  EXPECT_EQ(buffer, std::wstring(L"\u00E9"));
  charToWide(buffer, 1, "a", 1);
  charToWide(buffer, 0, "a", 1);
  EXPECT_EQ(std::wstring(buffer, 4), std::wstring(L"\0\0c\0", 4)) << "nothing behind the capacity";
}

TEST(StringClasses, ConvertUtf8Alike) {
  ExpectUtf8<tavString>(tavon::CharToWide);
  ExpectUtf8<droString>(dro::CharToWide);
}

TEST(StringClasses, ScrambleAlike) {
  const tavString secret = std::string("A\0\xFFz", 4);
  EXPECT_EQ(tavString("AAA").SetCrypt("ab"), "BBB");
  EXPECT_EQ(secret.GetCrypt("key"), droString(secret).GetCrypt("key"));
  EXPECT_EQ(secret.GetCrypt("key").GetDeCrypt("key"), secret);
  EXPECT_NE(secret.GetCrypt("key"), secret);
  EXPECT_EQ(secret.GetCrypt(""), secret.GetCrypt("{7E21C9A4-5B3D-4f08-9C6E-2A7D41B05E93}"));

  unsigned char bytes[] = {'A', 0, 0xFF};
  tavString::DataCrypt(bytes, 2, "ab");
  EXPECT_THAT(bytes, ElementsAre('B', 3, 0xFF));
  droString::DataDeCrypt(bytes, 2, "ab");
  EXPECT_THAT(bytes, ElementsAre('A', 0, 0xFF));
}
