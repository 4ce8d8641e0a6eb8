#include <gmock/gmock.h>

#include <cstring>

#include "dro_osutility.h"
#include "system_calls.h"
#include "temporary_folder.h"

using namespace dro;

TEST(DroMacAddress, CountsALineWithoutALineFeed) {
  const TemporaryFolder folder;
  WriteFile(folder.Path("address"), "02:00:5e:10:00:01");
  const std::string address = folder.Path("address");
  // Every interface has the address in that file.
  const auto oneAddress = system_calls::fopen.ReplaceBy([&](const char* path, const char* mode) {
    return system_calls::fopen.Real(std::strstr(path, "/address") != nullptr ? address.c_str() : path, mode);
  });
  droArray<droString> addresses;
  EXPECT_EQ(droOsUtility::GetMacAddress(&addresses), droError_NoError);
  EXPECT_THAT(addresses, testing::Contains("02:00:5e:10:00:01"));
}
