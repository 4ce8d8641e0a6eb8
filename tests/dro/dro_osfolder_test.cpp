#include <gmock/gmock.h>

#include <cerrno>

#include "dro_osutility.h"
#include "expect_report.h"
#include "system_calls.h"
#include "temporary_folder.h"

using namespace dro;

namespace {

constexpr ReportsOf kFailure{"dro_osutility", 2};
constexpr ReportsOf kInvalid{"dro_osutility", 7};

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
  ExpectReports({noFolder, kFailure("GetFolder", "Can not get folder " + none)}, 2,
                [&] { return droOsUtility::GetFolder(none, &folder); });
  const auto noEntry = [](int error) {
    return kFailure("GetNextFile", WithSystemError("Can not get next file", error));
  };
  ExpectReportOfEach({
      {kInvalid("GetFirstFile", "io_pFolderFile == 0"), 7, [&] { return folder.GetFirstFile(nullptr); }},
      {kInvalid("GetNextFile", "io_pFolderFile == 0"), 7, [&] { return folder.GetNextFile(nullptr); }},
      {kInvalid("GetFolder", "io_pFolder == 0"), 7, [&] { return droOsUtility::GetFolder(path, nullptr); }},
      {noEntry(EBADF), 2, [&] { return folder.GetFirstFile(&entry); }},
  });
  EXPECT_EQ(folder.close(), droError_NoError) << "there is nothing to close";
  folder.open(path);
  const auto broken = system_calls::readdir.FailsWith(EIO);
  ExpectReportOfEach({{noEntry(EIO), 2, [&] { return folder.GetFirstFile(&entry); }}});
  EXPECT_EQ(entry.GetName(), "");
}

}  // namespace
