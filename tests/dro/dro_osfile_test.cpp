#include "dro_osfile.h"

#include <unistd.h>

#include <cerrno>
#include <cstdint>

#include "expect_report.h"
#include "failing_allocation.h"
#include "system_calls.h"
#include "temporary_folder.h"

using namespace dro;
using File = droOsFile;
using std::string_literals::operator""s;

namespace {

constexpr ReportsOf kFailure{"dro_osfile", droError_OperationFailed};
constexpr ReportsOf kNoMemory{"dro_osfile", droError_OutOfMemory};
constexpr ReportsOf kInvalid{"dro_osfile", droError_InvalidArgument};

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

// The results of setting a position are inverted on purpose: what was done has the code of a failure and is
// reported, with whatever error there was.
TEST_F(DroOsFile, PositionIsSetWithAReport) {
  WriteFile(path, "0123456789");
  File file(path, "r");
  const auto done = [](const char* function, const char* message) {
    return kFailure(function, WithSystemError(message, kErrorBefore));
  };
  ExpectReportOfEach({{done("SetToEnd", "Setting pointer to end"), droError_OperationFailed,
                       [&] { return file.SetToEnd(); }}});
  EXPECT_EQ(file.GetPosition(), 10);
  ExpectReportOfEach(
      {{done("SetTo", "Setting pointer to 7"), droError_OperationFailed, [&] { return file.SetTo(7); }},
       {done("Advance", "Advanced pointer about -3"), droError_OperationFailed,
        [&] { return file.Advance(-3); }}});
  EXPECT_EQ(file.GetPosition(), 4);
  ExpectReportOfEach({{done("SetToStart", "Setting pointer to start"), droError_OperationFailed,
                       [&] { return file.SetToStart(); }}});
  EXPECT_EQ(file.GetPosition(), 0);
  EXPECT_EQ(file.SetTo(-1), droError_NoError) << "it cannot be set there";
}

TEST_F(DroOsFile, ClosedItReportsEveryOperation) {
  File file;
  const auto closed = [](const char* function) {
    return kFailure(function, WithSystemError("tavFile handle is invalid, == 0", kErrorBefore));
  };
  ExpectReportOfEach({
      {closed("Read"), -1, [&] { return file.Read(nullptr, 1); }},
      {closed("Write"), -1, [&] { return file.Write(nullptr, 1); }},
      {closed("WriteText"), droError_OperationFailed, [&] { return file.WriteText("a"); }},
      {closed("ReadNextLine"), false, [&] { return file.ReadNextLine(nullptr); }},
      {closed("IsEof"), true, [&] { return file.IsEof(); }},
      {closed("GetPosition"), droError_OperationFailed, [&] { return file.GetPosition(); }},
      {closed("SetToStart"), droError_OperationFailed, [&] { return file.SetToStart(); }},
      {closed("SetToEnd"), droError_OperationFailed, [&] { return file.SetToEnd(); }},
      {closed("SetTo"), droError_OperationFailed, [&] { return file.SetTo(0); }},
      {closed("Advance"), droError_OperationFailed, [&] { return file.Advance(0); }},
  });
}

TEST_F(DroOsFile, OperationThatFailsIsOneReport) {
  const std::string none = folder.Path("none/file");
  const std::string notFound = WithSystemError("tavFile handle is invalid, == 0", ENOENT);
  const std::string noWrite = WithSystemError("can no write data to file", EBADF);
  const std::string diskIsFull = WithSystemError("Writing data to file paste: /dev/full", ENOSPC);
  WriteFile(path, "a");
  File file(path, "r");
  unsigned int size = 7;
  droString text = "kept";
  ExpectReportOfEach({
      {kFailure("Open", notFound), droError_OperationFailed, [&] { return File().Open(none, "r"); }},
      {kInvalid("Read", "o_pBuffer pointer == 0"), -1, [&] { return file.Read(nullptr, 1); }},
      {kInvalid("Write", "pBuffer pointer == 0"), -1, [&] { return file.Write(nullptr, 1); }},
      {kInvalid("ReadNextLine", "io_size pointer == 0"), 0, [&] { return file.ReadNextLine(nullptr); }},
      {kFailure("WriteText", noWrite), -1, [&] { return file.WriteText("a"); }},
      {kInvalid("GetFileSize", "io_size pointer == 0"), droError_InvalidArgument,
       [&] { return File::GetFileSize(path, nullptr); }},
      {kFailure("GetFileSize", "Invalid file"), droError_OperationFailed,
       [&] { return File::GetFileSize(none, &size); }},
      {kInvalid("GetFileTextSource", "io_source pointer == 0"), droError_InvalidArgument,
       [&] { return File::GetFileTextSource(path, nullptr); }},
      {kFailure("GetFileTextSource", "Invalid file"), droError_OperationFailed,
       [&] { return File::GetFileTextSource(none, &text); }},
      {kFailure("AppendToFile", "Invalid file"), droError_OperationFailed,
       [&] { return File::AppendToFile(none, "a"); }},
      {kFailure("CopyAndPaste", "Invalid copy file: " + none), droError_OperationFailed,
       [&] { return File::CopyAndPaste(none, path); }},
      {kFailure("CopyAndPaste", "Invalid paste file: " + none), droError_OperationFailed,
       [&] { return File::CopyAndPaste(path, none); }},
      {kFailure("CopyAndPaste", diskIsFull), droError_OperationFailed,
       [&] { return File::CopyAndPaste(path, "/dev/full"); }},
  });
  EXPECT_EQ(size, 0U);
  EXPECT_EQ(text, "kept");
}

TEST_F(DroOsFile, HandleThatCannotBeClosedStaysInUse) {
  droOsFile file("/dev/full", "w");
  const Report cannotClose = kFailure("Close", "Can not close file handle");
  ExpectReports({cannotClose, kFailure("Open", "can not close the file handle")}, droError_OperationFailed,
                [&] {
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

TEST_F(DroOsFile, ThatTheSystemRefusesToCloseStaysOpen) {
  File file(path, "w");
  {
    // As file systems do that write to another machine: the descriptor is gone all the same.
    const auto refusing = system_calls::close.ReplaceBy([](int descriptor) {
      system_calls::close.Real(descriptor);
      errno = EIO;
      return -1;
    });
    ExpectReport(kFailure("Close", "Can not close file handle"), droError_OperationFailed, [&] {
      file.WriteText("a");
      return file.Close();
    });
  }
  EXPECT_EQ(file.WriteText("b"), 1);
  EXPECT_EQ(file.Close(), droError_NoError);
  EXPECT_EQ(ReadFile(path), "ab");
}

TEST_F(DroOsFile, AppendingKeepsWhatIsThere) {
  EXPECT_EQ(droOsFile::AppendToFile(path, "%s%d", "n", 12), 3) << "to a new file";
  EXPECT_EQ(droOsFile::AppendToFile(path, "."), 1);
  EXPECT_EQ(ReadFile(path), "n12.");
}

TEST_F(DroOsFile, HasASizeUpToFourGigabytes) {
  WriteFile(path, "");
  unsigned int size = 0;
  std::filesystem::resize_file(path, UINT32_MAX);  // most of it a hole, which takes no room
  EXPECT_EQ(droOsFile::GetFileSize(path, &size), droError_NoError);
  EXPECT_EQ(size, UINT32_MAX);
  std::filesystem::resize_file(path, UINT32_MAX + std::uintmax_t{1});
  ExpectReport(kFailure("GetFileSize", "Invalid file"), droError_OperationFailed,
               [&] { return droOsFile::GetFileSize(path, &size); });
  EXPECT_EQ(size, 0U);
}

TEST_F(DroOsFile, ThatYieldsLessThanItsSizeIsReported) {
  WriteFile(path, std::string(100000, 'a'));
  // It shrinks when its size is known.
  const auto shrinking = system_calls::new_array_or_null.ReplaceBy([&](std::size_t bytes, auto noThrow) {
    std::filesystem::resize_file(path, 1);
    return system_calls::new_array_or_null.Real(bytes, noThrow);
  });
  droString text("kept");
  const std::string less =
      "result(1) != iLen(100000) Reading data from file : " + path + "\nStd Error 0 No error";
  ExpectReport(kFailure("GetFileTextSource", less), droError_OperationFailed,
               [&] { return droOsFile::GetFileTextSource(path, &text); });
  EXPECT_EQ(text, "kept");
}

TEST_F(DroOsFile, IsWrittenAndRead) {
  WriteFile(path, "n12");
  droOsFile file(path, "r+");
  const unsigned char bytes[] = {'a', 0};
  EXPECT_EQ(file.Write(bytes, 2), 2);
  file.Open(path, "r");
  unsigned char read[4] = {};
  EXPECT_FALSE(file.IsEof());
  EXPECT_EQ(file.Read(read, 4), 3);
  EXPECT_TRUE(file.IsEof());
  EXPECT_EQ(std::string(read, read + 3), "a\0002"s);
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

TEST_F(DroOsFile, FileThatDoesNotFitIntoMemoryIsReported) {
  WriteFile(path, std::string(100000, 'a'));
  const auto shortage = FailingAllocation::OfAtLeast(100000);
  droString text("kept");
  ExpectReportOfEach({
      {kNoMemory("GetFileTextSource", "pData == 0"), droError_OutOfMemory,
       [&] { return File::GetFileTextSource(path, &text); }},
      {kNoMemory("CopyAndPaste", "pData == 0"), droError_OutOfMemory,
       [&] { return File::CopyAndPaste(path, other); }},
  });
  EXPECT_EQ(text, "kept");
  EXPECT_FALSE(std::filesystem::exists(other));
}

}  // namespace
