// The operations on whole files report one failure with one record.
#include <gtest/gtest.h>

#include "dro_osfile.h"
#include "../expect_report.h"
#include "temporary_folder.h"

using namespace dro;

namespace {

constexpr const char* kMissing = "/nonexistent/file";

Report Failure(const std::string& function, const std::string& message) {
  return {.code = 2, .source = "dro_osfile", .function = function, .message = message};
}

}  // namespace

TEST(DroWholeFile, SizeOfAMissingFileIsOneReport) {
  unsigned int size = 7;
  ExpectReport(Failure("GetFileSize", "Invalid file"), droError_OperationFailed,
               [&] { return droOsFile::GetFileSize(kMissing, &size); });
  EXPECT_EQ(size, 0U);
}

TEST(DroWholeFile, ReadingAMissingFileIsOneReport) {
  droString text = "kept";
  ExpectReport(Failure("GetFileTextSource", "Invalid file"), droError_OperationFailed,
               [&] { return droOsFile::GetFileTextSource(kMissing, &text); });
  EXPECT_EQ(text, "kept");
}

TEST(DroWholeFile, AppendingWhereNoFileCanBeIsOneReport) {
  ExpectReport(Failure("AppendToFile", "Invalid file"), 2,
               [] { return droOsFile::AppendToFile(kMissing, "%s", "text"); });
}

TEST(DroWholeFile, CopyingAMissingFileIsOneReport) {
  ExpectReport(Failure("CopyAndPaste", std::string("Invalid copy file: ") + kMissing),
               droError_OperationFailed, [] { return droOsFile::CopyAndPaste(kMissing, "/dev/null"); });
}

TEST(DroWholeFile, CopyingToWhereNoFileCanBeIsOneReport) {
  ExpectReport(Failure("CopyAndPaste", std::string("Invalid paste file: ") + kMissing),
               droError_OperationFailed, [] { return droOsFile::CopyAndPaste("/dev/null", kMissing); });
}

TEST(DroWholeFile, CopyingToAFullDiskIsOneReport) {
  const TemporaryFolder folder;
  WriteFile(folder.Path("source"), "text");
  ExpectReport(Failure("CopyAndPaste", WithSystemError("Writing data to file paste: /dev/full", ENOSPC)),
               droError_OperationFailed,
               [&] { return droOsFile::CopyAndPaste(folder.Path("source"), "/dev/full"); });
}
