#include <gmock/gmock.h>

#include <cerrno>

#include "dro_osutility.h"
#include "expect_report.h"
#include "system_calls.h"
#include "temporary_folder.h"

using namespace dro;

namespace {

constexpr ReportsOf kFailure{"dro_osutility", droError_OperationFailed};
constexpr ReportsOf kInvalid{"dro_osutility", droError_InvalidArgument};

struct DroOsFolder : testing::Test {
  std::vector<std::string> Names() {
    std::vector<std::string> names;
    for (folder.GetFirstFile(&entry); entry.IsValid(); folder.GetNextFile(&entry))
      names.push_back(entry.GetName() + (entry.IsDirectory() ? "/" : ""));
    return names;
  }
  const TemporaryFolder temporary;
  const std::string path = temporary.Path(".");
  droOsUtility::Folder folder;
  droOsUtility::FolderFile entry;
};

TEST_F(DroOsFolder, IsListedFromTheStartEachTime) {
  std::filesystem::create_directory(path + "/sub");
  WriteFile(path + "/file", "");
  EXPECT_EQ(droOsUtility::GetFolder(path, &folder), droError_NoError);
  EXPECT_THAT(Names(), testing::UnorderedElementsAre("./", "../", "sub/", "file"));
  EXPECT_THAT(Names(), testing::UnorderedElementsAre("./", "../", "sub/", "file"));
  EXPECT_EQ(folder.GetNextFile(&entry), droError_NoError) << "the end is no failure";
}

TEST_F(DroOsFolder, ThatCannotBeReadIsReported) {
  const std::string none = temporary.Path("none");
  const Report noFolder = kFailure("open", WithSystemError("Can not open directory " + none, ENOENT));
  ExpectReports({noFolder, kFailure("GetFolder", "Can not get folder " + none)}, droError_OperationFailed,
                [&] { return droOsUtility::GetFolder(none, &folder); });
  const auto noEntry = [](int error) {
    return kFailure("GetNextFile", WithSystemError("Can not get next file", error));
  };
  ExpectReportOfEach({
      {kInvalid("GetFirstFile", "io_pFolderFile == 0"), droError_InvalidArgument,
       [&] { return folder.GetFirstFile(nullptr); }},
      {kInvalid("GetNextFile", "io_pFolderFile == 0"), droError_InvalidArgument,
       [&] { return folder.GetNextFile(nullptr); }},
      {kInvalid("GetFolder", "io_pFolder == 0"), droError_InvalidArgument,
       [&] { return droOsUtility::GetFolder(path, nullptr); }},
      {noEntry(EBADF), droError_OperationFailed, [&] { return folder.GetFirstFile(&entry); }},
  });
  EXPECT_EQ(folder.close(), droError_NoError) << "there is nothing to close";
  folder.open(path);
  const auto broken = system_calls::readdir.FailsWith(EIO);
  ExpectReportOfEach({{noEntry(EIO), droError_OperationFailed, [&] { return folder.GetFirstFile(&entry); }}});
  EXPECT_EQ(entry.GetName(), "");
}

TEST_F(DroOsFolder, ThatCannotBeClosedIsReportedAndNoOtherOpened) {
  folder.open(path);
  const Report cannotClose = kFailure("close", WithSystemError("Can not close directory " + path, EIO));
  const auto broken = system_calls::closedir.ReplaceBy([](DIR* stream) {
    system_calls::closedir.Real(stream);
    errno = EIO;
    return -1;
  });
  ExpectReports({cannotClose, kFailure("open", "can not close directory ")}, droError_OperationFailed,
                [this] { return folder.open("/"); });
  EXPECT_FALSE(folder.IsValid());
  const auto lose = [this] { return droOsUtility::Folder().open(path); };
  ExpectReports({cannotClose, kFailure("~Folder", "can not close directory ")}, droError_NoError, lose);
}

// The test's folder in the place of the one that tells the network interfaces.
struct DroOsNetworkFolder : DroOsFolder {
  std::string Instead(std::string name) const {
    const std::string system = "/sys/class/net/";
    return name.starts_with(system) ? name.replace(0, system.size(), path + "/") : name;
  }
  const decltype(system_calls::opendir)::Replacement folders{
      system_calls::opendir,
      [this](const char* name) { return system_calls::opendir.Real(Instead(name).c_str()); }};
  droArray<droString> addresses{"kept"};
};

TEST_F(DroOsNetworkFolder, TellsTheAddressOfEachInterfaceButTheLoopback) {
  for (const char* interface : {"lo", "eth0", "usb0", "none"})
    std::filesystem::create_directory(path + "/" + interface);
  WriteFile(path + "/lo/address", "00:00:00:00:00:00\n");
  WriteFile(path + "/eth0/address", "02:00:5e:10:00:01\n");
  WriteFile(path + "/usb0/address", "02:00:5e:10:00:02");  // a line feed is no condition
  WriteFile(path + "/bonding_masters", "");                // which is no interface
  const auto files = system_calls::fopen.ReplaceBy([&](const char* name, const char* mode) {
    return system_calls::fopen.Real(Instead(name).c_str(), mode);
  });
  EXPECT_EQ(droOsUtility::GetMacAddress(&addresses), droError_NoError);
  EXPECT_THAT(addresses, testing::UnorderedElementsAre("kept", "02:00:5e:10:00:01", "02:00:5e:10:00:02"));
}

TEST_F(DroOsNetworkFolder, ThatCannotBeReadForWantOfDescriptorsIsReported) {
  std::filesystem::create_directory(path + "/eth0");
  const auto readAddresses = [this] {
    const auto shortage = system_calls::fopen.FailsWith(EMFILE);
    return droOsUtility::GetMacAddress(&addresses);
  };
  ExpectReport(ReportsOf{"dro_osfile", droError_OperationFailed}(
                   "Open", WithSystemError("tavFile handle is invalid, == 0", EMFILE)),
               droError_OperationFailed, readAddresses);
  EXPECT_THAT(addresses, testing::ElementsAre("kept"));
}

TEST_F(DroOsNetworkFolder, NeedsAListForTheAddresses) {
  ExpectReport(kInvalid("GetMacAddress", "o_aMacs == 0"), droError_InvalidArgument,
               [] { return droOsUtility::GetMacAddress(nullptr); });
}

}  // namespace
