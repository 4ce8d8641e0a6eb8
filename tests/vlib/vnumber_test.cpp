#include "vnumber.h"

#include <gtest/gtest.h>

#include <array>
#include <clocale>
#include <cstdint>
#include <cstdlib>
#include <fstream>

#include "temporary_folder.h"

using vlib::PrintReal;
using vlib::ReadReal;

namespace {

// The numbers of a locale that writes "1.234,5", compiled as the C library reads it from a folder of locales.
struct NumericLocale {
  std::uint32_t magic = 0x20031115U ^ LC_NUMERIC;
  std::uint32_t count = 6;
  std::array<std::uint32_t, 6> positions = {32, 34, 36, 40, 44, 48};  // of the six fields that follow
  std::array<char, 2> point = {','};
  std::array<char, 2> thousands = {'.'};
  std::array<char, 4> grouping = {3, 3};
  std::uint32_t widePoint = ',';
  std::uint32_t wideThousands = '.';
  std::array<char, 16> characterSet = {"ANSI_X3.4-1968"};
};

}  // namespace

TEST(VNumber, HasAPointWhateverTheLocale) {
  const TemporaryFolder locales;
  std::filesystem::create_directory(locales.Path("comma"));
  const NumericLocale locale;
  std::ofstream(locales.Path("comma/LC_NUMERIC"), std::ios::binary)
      .write(reinterpret_cast<const char*>(&locale), sizeof locale);
  setenv("LOCPATH", locales.Path().c_str(), 1);  // the machine needs to have no such locale installed
  if (std::setlocale(LC_NUMERIC, "comma") == nullptr) GTEST_SKIP() << "the C library has other locales";
  EXPECT_EQ(std::strtod("1,5", nullptr), 1.5) << "the locale is not in force";
  EXPECT_EQ(ReadReal(" -21.5x"), -21.5);
  EXPECT_EQ(PrintReal(1234.75, 3), "1234.75");
  std::setlocale(LC_NUMERIC, "C");
  unsetenv("LOCPATH");
}
