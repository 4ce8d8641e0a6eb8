#include "dro_osfile.h"

#include "expect_report.h"
#include "failing_allocation.h"
#include "temporary_folder.h"

using namespace dro;
using std::string_literals::operator""s;
using File = droOsFile;

struct DroOsFile : testing::Test {
  const TemporaryFolder folder;
  const std::string path = folder.Path("file"), other = folder.Path("other");
  const std::string noEntry = "\nStd Error 2 No such file or directory";  // as ExpectReport has it
};

TEST_F(DroOsFile, LastLineWithoutLineFeedIsReadButResultsInFalse) {
  WriteFile(path, "a\r\n\0b"s);
  File file(path, "r");
  droString line = "old";
  std::string read;
  for (int i = 0; i < 3; ++i) read += (file.ReadNextLine(&line) ? "true:" : "false:") + line;
  EXPECT_EQ(read, "true:a\rfalse:\0bfalse:"s);
}

TEST_F(DroOsFile, SettingThePositionResultsInAnErrorAndFailingInNone) {
  File file(path, "w+");
  unsigned char bytes[99] = {'8', '9'};
  EXPECT_TRUE(file.WriteText("%s%d", "012345", 67) == 8 && file.Write(bytes, 2) == 2 && !file.IsEof());
  ExpectReport(2, "Setting pointer to start" + noEntry, [&] { return file.SetToStart(); });
  EXPECT_TRUE(file.Read(bytes, 99) == 10 && bytes[9] == '9' && file.IsEof());
  ExpectReport(2, "Setting pointer to 5" + noEntry, [&] { return file.SetTo(5); });
  ExpectReport(2, "Advanced pointer about -3" + noEntry, [&] { return file.Advance(-3); });
  EXPECT_EQ(file.GetPosition(), 2);
  EXPECT_EQ(CapturedOutput([&] { EXPECT_EQ(file.SetTo(-1), 0); }), "");
  ExpectReport(2, "Setting pointer to end" + noEntry, [&] { return file.SetToEnd(); });
  EXPECT_EQ(file.GetPosition(), 10);
}

TEST_F(DroOsFile, ReportsWhatFails) {
  droString text = "kept";
  const auto read = [&](auto from) { return [=, &text] { return File::GetFileTextSource(from, &text); }; };
  const auto copy = [](auto from, auto to) { return [=] { return File::CopyAndPaste(from, to); }; };
  const auto invalid = "tavFile handle is invalid, == 0" + noEntry;
  const auto noSpace = "\nStd Error 28 No space left on device"s,
             print = "can no write data to file" + noSpace;
  File none, file("/dev/zero", "r");
  ExpectReport(-2, invalid, [&] { return none.Read({}, 1) + none.Write({}, 1); });
  ExpectReport(4, invalid, [&] { return none.WriteText("a") + none.SetToEnd(); });
  ExpectReport(1, invalid, [&] { return none.ReadNextLine({}) + none.IsEof(); });
  ExpectReport(-1, "o_pBuffer pointer == 0", [&] { return file.Read(nullptr, 1); });
  ExpectReport(-1, "pBuffer pointer == 0", [&] { return file.Write(nullptr, 1); });
  ExpectReport(0, "io_size pointer == 0", [&] { return file.ReadNextLine(nullptr); });
  ExpectReport(7, "io_source pointer == 0", [] { return File::GetFileTextSource("/", nullptr); });
  ExpectReport(-1, print, [] { return File::AppendToFile("/dev/full", "%99999d", 1); });
  ExpectReport(2, "Invalid copy file: " + path, copy(path, other));
  WriteFile(path, "a");
  ExpectReport(2, "Invalid paste file: /", copy(path, "/"));
  ExpectReport(2, "Writing data to file paste: /dev/full" + noSpace, copy(path, "/dev/full"));
  WriteFile(path, std::string(100000, 'a'));
  const auto withoutMemory = [](auto operation) {
    return [operation] {
      const auto shortage = FailingAllocation::OfAtLeast(100000);
      return operation();
    };
  };
  ExpectReport(6, "pData == 0", withoutMemory(copy(path, other)));
  ExpectReport(6, "pData == 0", withoutMemory(read(path)));
  // This file claims a size of 4096 bytes and gives 18, as one does that shrinks while it is read.
  const auto lo = "/sys/class/net/lo/address"s, reading = "result(18) != iLen(4096) Reading data from file "s;
  ExpectReport(2, reading + ": " + lo + "\nStd Error 0 No error", read(lo));
  ExpectReport(2, reading + "copy: " + lo + "\nStd Error 0 No error", copy(lo, other));
  EXPECT_EQ(text + ReadFile(other), "kept");
}

TEST_F(DroOsFile, FailedCloseKeepsALiveHandleThatIsFreedInTheEnd) {
  const int descriptor = fileno(File(path, "w"));
  droError::Level = 4;  // a log that throws
  const auto lose = [] { return File("/dev/full", "w").WriteText("lost"); };
  lose();
  droError::Level = 1;
  ExpectReport(4, "can not close the file handle", lose);
  EXPECT_EQ(fileno(File(path, "w")), descriptor);
  File file("/dev/full", "w");
  ExpectReport(2, "Can not close file handle", [&] { return file.WriteText("lost"), file.Close(); });
  ExpectReport(2, "can not close the file handle", [&] { return file.WriteText("a"), file.Open("", "w"); });
  dup2(fileno(File(path, "w")), fileno(file));
  EXPECT_TRUE(file.WriteText("kept") == 4 && file.Close() == 0);
  EXPECT_EQ(ReadFile(path), "kept");
}

TEST_F(DroOsFile, ReadsAndCopiesInOnePieceAndTellsSizes) {
  unsigned int size = 1;
  droString text;
  for (const std::string& contents : {""s, "\0a\n"s, std::string(20'000'000, 'x')}) {
    WriteFile(path, contents);
    EXPECT_TRUE(File::CopyAndPaste(path, other) == 0 && File::CopyAndPaste(other, other) == 0);
    EXPECT_EQ(File::GetFileTextSource(other, &text) + File::GetFileSize(other, &size), 0);
    EXPECT_TRUE(text == contents && size == contents.size()) << size;
  }
  std::filesystem::resize_file(path, 4294967294);
  EXPECT_TRUE(File::AppendToFile(path, "%s", "a") == 1 && File::GetFileSize(path, &size) == 0);
  EXPECT_EQ(size, 4294967295U);
  std::filesystem::resize_file(path, 4294967296);
  ExpectReport(0, "Invalid file", [&] { return File::GetFileSize(path, &size) == 2 ? size : 1; });
}
