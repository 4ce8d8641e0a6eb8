// What only the SDK's string does; what it shares with the OS library's is in string_classes_test.cpp.
#include "tav_string.h"

#include "expect_report.h"

namespace tavon {
namespace {

TEST(TavString, GivesBackTheMemoryThatFromWideOnlyTested) {
  EXPECT_LT(tavString::FromWide(L"abc", 1000000).capacity(), 1000U);
}

TEST(TavString, WritesAtMostTheGivenLengthOfWideText) {
  wchar_t buffer[] = L"?????";
  CharToWide(buffer, 0, "abc", 3);
  EXPECT_EQ(buffer, std::wstring(L"?????")) << "no room for the terminator";
  CharToWide(buffer, 5, "\u00E9yz", 2);
  EXPECT_EQ(std::wstring(buffer, 5), std::wstring(L"\u00E9y\0??", 5));
}

TEST(TavString, ReportsAWideBufferWithoutRoom) {
  const Report report{6, "tav_string", "AsWide", "io_buffer or len_buffer == 0", 356};
  wchar_t buffer[] = L"?";
  ExpectReport(report, [&] { tavString::AsWide("a", buffer, 0); });
  EXPECT_EQ(buffer, std::wstring(L"?"));
  ExpectReport(report, [] { tavString::AsWide("a", nullptr, 1); });
}

TEST(TavString, ReportsAMissingBufferToScramble) {
  ExpectReport({6, "tav_string", "DataCrypt", "io_buffer == 0"},
               [] { tavString::DataCrypt(nullptr, 10, ""); });
  ExpectReport({6, "tav_string", "DataDeCrypt", "io_buffer == 0"},
               [] { tavString::DataDeCrypt(nullptr, 10, ""); });
}

}  // namespace
}  // namespace tavon
