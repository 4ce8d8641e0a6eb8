#include "tav_error.h"

#include <gmock/gmock.h>

#include "expect_report.h"
#include "failing_allocation.h"
#include "system_calls.h"
#include "temporary_folder.h"

namespace tavon {
namespace {

TEST(TavErrorRecord, NamesTheCodeAndThePlaceOfAFailure) {
  EXPECT_EQ(tavBuildErrorLocation(tavError_InvalidArgument, "said", "file", "Init", 113).GetDescription(),
            "tavError Number : 6\nInvalid Argument.\nFile ----------- : file\nFunction ------- : Init\n"
            "Line Number ---- : 113\nCustom Message - : said\n");
}

// Every test has a log file of its own and the settings that a process starts with.
struct TavErrorLog : testing::Test {
  TavErrorLog() {
    tavError::LogFile = m_folder.Path("test.log");
    tavError::CurrentLogFileSize = 0;
  }
  ~TavErrorLog() override {
    tavError::Level = tavLogLevel_Console;
    tavError::LogFileSize = 512000;
    tavError::ShowErrorCallBack = nullptr;
  }

  // A notice whose description has the given length.
  static tavError Entry(std::size_t length, char filling) {
    return {tavError_NoError, std::string(length - std::string("Info Message : \n").size(), filling)};
  }
  // Logs an entry before which the file is to be cut.
  static tavEError LogPastTheLimit() {
    tavError::LogFileSize = 40000;
    return tavErrorLog(Entry(40001, 'a'));
  }
  static std::string Log() { return ReadFile(tavError::LogFile); }

  const tavError error{tavError_OutOfRange, "100%s"};
  TemporaryFolder m_folder;
};

TEST_F(TavErrorLog, ThrowsAfterWritingInPlaceOfCallingBack) {
  tavError::ShowErrorCallBack = [](const tavError&) { ADD_FAILURE() << "a thrown record is not passed on"; };
  tavError::Level = tavLogLevel_File | tavLogLevel_Throw | tavLogLevel_CallBack;
  EXPECT_THROW(tavErrorLog(error), tavError);
  EXPECT_EQ(Log(), error.GetDescription());
}

TEST_F(TavErrorLog, CutsTheFileToItsLastHalfBeforeAnEntryPastTheLimit) {
  tavError::Level = tavLogLevel_File;
  tavError::LogFileSize = 40001;
  WriteFile(tavError::LogFile, "not counted: somebody else wrote it");
  tavErrorLog(Entry(40001, 'a'));
  EXPECT_EQ(Log().size(), 40036U) << "the limit itself is allowed";
  tavErrorLog(Entry(20, 'b'));
  EXPECT_EQ(Log(), std::string(19999, 'a') + "\n" + Entry(20, 'b').GetDescription());
  EXPECT_EQ(tavError::CurrentLogFileSize, 20000U) << "half the limit; the entry after the cut is not counted";
}

// A file that cannot be cut is told about on the console whatever the level says, and the record is dropped.
struct TavErrorLogFault : TavErrorLog {
  TavErrorLogFault() {
    tavError::Level = tavLogLevel_File | tavLogLevel_Throw;
    WriteFile(tavError::LogFile, "old");
  }
  static void ExpectFault(tavEError code, const char* message, int line) {
    ExpectReport({static_cast<int>(code), "tav_error", "tavErrorLog", message, line}, code, LogPastTheLimit);
  }
};

TEST_F(TavErrorLogFault, OfAFileThatDoesNotOpenForWriting) {
  const auto readOnlyDisk = system_calls::fopen.ReplaceBy([](const char* path, const char* mode) {
    return mode[0] == 'r' ? system_calls::fopen.Real(path, mode) : nullptr;
  });
  ExpectFault(tavError_InvalidPointer, "Can not write for to rebuild log error file.", 200);
  EXPECT_EQ(Log(), "old");
}

TEST_F(TavErrorLogFault, OfAFileThatIsLargerThanMemory) {
  WriteFile(tavError::LogFile, std::string(1000000, 'o'));
  const auto shortage = FailingAllocation::OfAtLeast(1000000);
  ExpectFault(tavError_OutOfMemory, "Can not allocate buffer for to rebuild log error file.", 182);
}

}  // namespace
}  // namespace tavon
