#include <gmock/gmock.h>

#include "dro_osutility.h"
#include "system_calls.h"
#include "temporary_folder.h"

using namespace dro;

namespace {

// A folder of the test in the place of the system's list of network interfaces.
struct DroMacAddress : testing::Test {
  std::string Redirected(std::string path) const {
    const std::string system = "/sys/class/net/";
    return path.starts_with(system) ? path.replace(0, system.size(), folder.Path()) : path;
  }
  void AddInterface(const std::string& name, const std::string& address) const {
    std::filesystem::create_directory(folder.Path(name));
    WriteFile(folder.Path(name + "/address"), address);
  }
  const TemporaryFolder folder;
};

TEST_F(DroMacAddress, IsThatOfEachInterfaceButTheLoopback) {
  AddInterface("lo", "00:00:00:00:00:00\n");
  AddInterface("eth0", "02:00:5e:10:00:01\n");
  AddInterface("usb0", "02:00:5e:10:00:02");  // a line feed is no condition
  std::filesystem::create_directory(folder.Path("without_address"));
  const auto folders = system_calls::opendir.ReplaceBy(
      [this](const char* path) { return system_calls::opendir.Real(Redirected(path).c_str()); });
  const auto files = system_calls::fopen.ReplaceBy([this](const char* path, const char* mode) {
    return system_calls::fopen.Real(Redirected(path).c_str(), mode);
  });
  droArray<droString> addresses{"kept"};
  EXPECT_EQ(droOsUtility::GetMacAddress(&addresses), droError_NoError);
  EXPECT_THAT(addresses, testing::UnorderedElementsAre("kept", "02:00:5e:10:00:01", "02:00:5e:10:00:02"));
}

}  // namespace
