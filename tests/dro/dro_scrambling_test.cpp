#include <gtest/gtest.h>

#include "dro_string.h"

using dro::droString;

TEST(DroScrambling, TakesTheTextItselfAsKey) {
  droString text = "house";
  text.SetCrypt(text);
  EXPECT_EQ(text, droString("house").GetCrypt("house"));
  EXPECT_EQ(text.GetDeCrypt("house"), "house");
}

TEST(DroScrambling, TakesAKeyThatStandsInTheBuffer) {
  droString key = "house";
  droString::DataCrypt(reinterpret_cast<unsigned char*>(key.data()), 5, key);
  EXPECT_EQ(key, droString("house").GetCrypt("house"));
}
