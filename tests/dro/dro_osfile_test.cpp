#include "dro_osfile.h"

#include <unistd.h>

#include <cerrno>

#include "expect_report.h"
#include "failing_allocation.h"
#include "temporary_folder.h"

using namespace dro;
using std::string_literals::operator""s;

namespace {

constexpr ReportsOf kFailure{"dro_osfile", 2};
constexpr ReportsOf kNoMemory{"dro_osfile", 6};
constexpr ReportsOf kInvalid{"dro_osfile", 7};

struct DroOsFile : testing::Test {
  const TemporaryFolder folder;
  const std::string path = folder.Path("file"), other = folder.Path("other");
};

TEST_F(DroOsFile, LastLineIsReadButResultsInFalseWithoutALineFeed) {
  WriteFile(path, "a\r\n\0b"s);
  droOsFile file(path, "r");
  droString line;
  EXPECT_TRUE(file.ReadNextLine(&line));
  EXPECT_EQ(line, "a\r");
  EXPECT_FALSE(file.ReadNextLine(&line));
  EXPECT_EQ(line, "\0b"s);
  EXPECT_FALSE(file.ReadNextLine(&line));
  EXPECT_EQ(line, "");
}

// The results of setting a position are inverted on purpose: done is 2 and reported, with whatever error
// there was.
TEST_F(DroOsFile, PositionIsSetWithAReport) {
  WriteFile(path, "0123456789");
  droOsFile file(path, "r");
  const auto expect = [&](const char* function, const char* message, auto operation, long position) {
    ExpectReport(kFailure(function, WithSystemError(message, EINTR)), 2, [&] {
      errno = EINTR;
      return operation();
    });
    EXPECT_EQ(file.GetPosition(), position);
  };
  expect(
      "SetToEnd", "Setting pointer to end", [&] { return file.SetToEnd(); }, 10);
  expect(
      "SetTo", "Setting pointer to 7", [&] { return file.SetTo(7); }, 7);
  expect(
      "Advance", "Advanced pointer about -3", [&] { return file.Advance(-3); }, 4);
  expect(
      "SetToStart", "Setting pointer to start", [&] { return file.SetToStart(); }, 0);
}

TEST_F(DroOsFile, ClosedItReportsEveryOperation) {
  droOsFile file;
  const auto expect = [](const char* function, auto result, auto operation) {
    const std::string message = WithSystemError("tavFile handle is invalid, == 0", EINTR);
    ExpectReport(kFailure(function, message), result, [&] {
      errno = EINTR;
      return operation();
    });
  };
  expect("Read", -1, [&] { return file.Read(nullptr, 1); });
  expect("Write", -1, [&] { return file.Write(nullptr, 1); });
  expect("WriteText", 2, [&] { return file.WriteText("a"); });
  expect("ReadNextLine", false, [&] { return file.ReadNextLine(nullptr); });
  expect("IsEof", true, [&] { return file.IsEof(); });
  expect("GetPosition", 2, [&] { return file.GetPosition(); });
  expect("SetToStart", 2, [&] { return file.SetToStart(); });
  expect("SetToEnd", 2, [&] { return file.SetToEnd(); });
  expect("SetTo", 2, [&] { return file.SetTo(0); });
  expect("Advance", 2, [&] { return file.Advance(0); });
}

TEST_F(DroOsFile, NullPointersAreReported) {
  droOsFile file(path, "w+");
  ExpectReport(kInvalid("Read", "o_pBuffer pointer == 0"), -1, [&] { return file.Read(nullptr, 1); });
  ExpectReport(kInvalid("Write", "pBuffer pointer == 0"), -1, [&] { return file.Write(nullptr, 1); });
  ExpectReport(kInvalid("ReadNextLine", "io_size pointer == 0"), false,
               [&] { return file.ReadNextLine(nullptr); });
  ExpectReport(kInvalid("GetFileSize", "io_size pointer == 0"), 7,
               [&] { return droOsFile::GetFileSize(path, nullptr); });
  ExpectReport(kInvalid("GetFileTextSource", "io_source pointer == 0"), 7,
               [&] { return droOsFile::GetFileTextSource(path, nullptr); });
}

TEST_F(DroOsFile, HandleThatCannotBeClosedStaysInUse) {
  droOsFile file("/dev/full", "w");
  const Report cannotClose = kFailure("Close", "Can not close file handle");
  ExpectReports({cannotClose, kFailure("Open", "can not close the file handle")}, 2, [&] {
    file.WriteText("lost");
    return file.Open(other, "w");
  });
  dup2(fileno(droOsFile(path, "w")), fileno(file));  // now the disk has room
  EXPECT_EQ(file.WriteText("kept"), 4);
  EXPECT_EQ(file.Close(), droError_NoError);
  EXPECT_EQ(ReadFile(path), "kept");
  const auto lose = [] { return droOsFile("/dev/full", "w").WriteText("lost"); };
  ExpectReports({cannotClose, kFailure("~droOsFile", "can not close the file handle")}, 4, lose);
  droError::Level = droLogLevel_Throw;
  EXPECT_NO_THROW(lose()) << "the destructor";
  droError::Level = droLogLevel_Console;
}

TEST_F(DroOsFile, IsWrittenReadAndAppendedTo) {
  EXPECT_EQ(droOsFile::AppendToFile(path, "%s%d", "n", 12), 3);
  droOsFile file(path, "r+");
  const unsigned char bytes[] = {'a', 0};
  EXPECT_EQ(file.Write(bytes, 2), 2);
  file.Open(path, "r");
  unsigned char read[4] = {};
  EXPECT_FALSE(file.IsEof());
  EXPECT_EQ(file.Read(read, 4), 3);
  EXPECT_TRUE(file.IsEof());
  EXPECT_EQ(std::string(read, read + 3), "a\0002"s);
  unsigned int size = 0;
  EXPECT_EQ(droOsFile::GetFileSize(path, &size), droError_NoError);
  EXPECT_EQ(size, 3U);
}

TEST_F(DroOsFile, IsReadAndCopiedWhole) {
  for (const std::string& contents : {""s, "\0a\n"s, std::string(20'000'000, 'x')}) {
    SCOPED_TRACE(contents.size());
    WriteFile(path, contents);
    WriteFile(other, "old");
    EXPECT_EQ(droOsFile::CopyAndPaste(path, other), droError_NoError);
    droString text("old");
    EXPECT_EQ(droOsFile::GetFileTextSource(other, &text), droError_NoError);
    EXPECT_TRUE(text == contents);  // without printing all of it
  }
}

TEST_F(DroOsFile, WholeFileOperationThatFailsIsOneReport) {
  const std::string none = folder.Path("none/file");
  WriteFile(path, "a");
  unsigned int size = 7;
  ExpectReport(kFailure("GetFileSize", "Invalid file"), 2,
               [&] { return droOsFile::GetFileSize(none, &size); });
  EXPECT_EQ(size, 0U);
  droString text = "kept";
  ExpectReport(kFailure("GetFileTextSource", "Invalid file"), 2,
               [&] { return droOsFile::GetFileTextSource(none, &text); });
  EXPECT_EQ(text, "kept");
  ExpectReport(kFailure("AppendToFile", "Invalid file"), 2,
               [&] { return droOsFile::AppendToFile(none, "a"); });
  droOsFile readOnly(path, "r");
  ExpectReport(kFailure("WriteText", WithSystemError("can no write data to file", EBADF)), -1,
               [&] { return readOnly.WriteText("a"); });
  ExpectReport(kFailure("CopyAndPaste", "Invalid copy file: " + none), 2,
               [&] { return droOsFile::CopyAndPaste(none, path); });
  ExpectReport(kFailure("CopyAndPaste", "Invalid paste file: " + none), 2,
               [&] { return droOsFile::CopyAndPaste(path, none); });
  ExpectReport(kFailure("CopyAndPaste", WithSystemError("Writing data to file paste: /dev/full", ENOSPC)), 2,
               [&] { return droOsFile::CopyAndPaste(path, "/dev/full"); });
}

TEST_F(DroOsFile, FileTooLargeForMemoryIsReported) {
  WriteFile(path, std::string(100000, 'a'));
  const auto shortage = FailingAllocation::OfAtLeast(100000);
  droString text("kept");
  ExpectReport(kNoMemory("CopyAndPaste", "pData == 0"), 6,
               [&] { return droOsFile::CopyAndPaste(path, other); });
  ExpectReport(kNoMemory("GetFileTextSource", "pData == 0"), 6,
               [&] { return droOsFile::GetFileTextSource(path, &text); });
  EXPECT_EQ(text, "kept");
}

// This one says that it has a page of memory, and has a few bytes.
TEST_F(DroOsFile, FileThatIsShorterThanItsSizeIsReported) {
  const std::string cpus = "/sys/devices/system/cpu/online";
  const std::string counts = "result(" + std::to_string(ReadFile(cpus).size()) + ") != iLen(" +
                             std::to_string(sysconf(_SC_PAGESIZE)) + ") Reading data from file ";
  const std::string error = "\nStd Error 0 No error";
  droString text("kept");
  ExpectReport(kFailure("GetFileTextSource", counts + ": " + cpus + error), 2,
               [&] { return droOsFile::GetFileTextSource(cpus, &text); });
  EXPECT_EQ(text, "kept");
  ExpectReport(kFailure("CopyAndPaste", counts + "copy: " + cpus + error), 2,
               [&] { return droOsFile::CopyAndPaste(cpus, other); });
  EXPECT_FALSE(std::filesystem::exists(other));
}

}  // namespace
