#include "tav_error.h"

#include <gmock/gmock.h>

#include "captured_output.h"
#include "temporary_folder.h"

using namespace tavon;

// Every test gets a log of its own.
struct TavErrorLog : testing::Test {
  TavErrorLog() {
    tavError::LogFile = m_folder.Path("test.log");
    tavError::CurrentLogFileSize = 0;
  }
  ~TavErrorLog() override { tavError::Level = tavLogLevel_Console; }

  // A notice whose description has the given length.
  static tavError Entry(std::size_t length, char filling) {
    return {tavError_NoError, std::string(length - std::string("Info Message : \n").size(), filling)};
  }
  static std::string Log() { return ReadFile(tavError::LogFile); }
  TemporaryFolder m_folder;
};

TEST(TavError, ComposesRecords) {
  EXPECT_EQ(tavBuildErrorLocation(tavError_InvalidArgument, "said", "file", "Init", 113).GetDescription(),
            "tavError Number : 6\nInvalid Argument.\nFile ----------- : file\nFunction ------- : Init\n"
            "Line Number ---- : 113\nCustom Message - : said\n");
  EXPECT_EQ(tavBuildErrorLocation({}, "told", "f", "g", 1).GetDescription(), "Info Message : told\n");
  EXPECT_EQ(tavErrorWindowsToString(5) + tavErrorToString({}), "The operation completed succefully.");
  EXPECT_EQ(tavErrorToString(tavError_SocketsTaskLimit),
            "Limit on the number of tasks supported by the Windows Sockets implementation has been reached.");
  for (const int unknown : {-1, 13})
    EXPECT_EQ(tavErrorToString(tavEError(unknown)).substr(0, 31), "tavError description not found.");
}

TEST_F(TavErrorLog, AppendsThrowsOrCallsBackAsTheLevelSays) {
  const tavError error(tavError_OutOfRange, "100%s");
  EXPECT_EQ(CapturedOutput([&] { EXPECT_EQ(tavErrorLog(error), 7); }), error.GetDescription());
  EXPECT_EQ(Log(), "") << "no file unless asked for";
  static unsigned int calls;
  calls = 0;
  tavError::ShowErrorCallBack = [](const tavError& shown) { calls += shown.GetError(); };
  tavError::Level = tavLogLevel_File | tavLogLevel_CallBack;
  EXPECT_EQ(CapturedOutput([&] { tavErrorLog(error); }), "");
  tavError::Level |= tavLogLevel_Throw;
  EXPECT_THROW(tavErrorLog(error), tavError);
  EXPECT_EQ(calls, tavError_OutOfRange) << "a thrown record is not passed on";
  EXPECT_EQ(Log(), error.GetDescription() + error.GetDescription());
  EXPECT_TRUE(tavError::DeleteLog() && !tavError::DeleteLog());
  tavError::Level = tavLogLevel_File;
  tavError::LogFile = m_folder.Path("missing/test.log");
  EXPECT_EQ(tavErrorLog(error), tavError_OutOfRange) << "an entry that cannot be stored is lost in silence";
}

TEST_F(TavErrorLog, CutsTheFileToItsLastHalf) {
  tavError::Level = tavLogLevel_File;
  tavError::LogFileSize = 40001;
  WriteFile(tavError::LogFile, std::string(50000, 'o'));  // what others wrote does not count
  tavErrorLog(Entry(40001, 'a'));
  EXPECT_EQ(Log().size(), 90001U) << "the limit itself is still allowed";
  const std::string before = Log();
  tavErrorLog(Entry(20, 'b'));
  EXPECT_EQ(Log(), before.substr(before.size() - 20000) + Entry(20, 'b').GetDescription());
  EXPECT_EQ(tavError::CurrentLogFileSize, 20000U) << "the entry after the cut is not counted";
  WriteFile(tavError::LogFile, "short");
  tavErrorLog(Entry(20002, 'c'));
  EXPECT_EQ(Log(), "short" + Entry(20002, 'c').GetDescription());
  for (const unsigned int limit : {0U, 32001U}) {
    tavError::LogFileSize = limit;
    tavErrorLog(Entry(32002, 'a'));
  }
  EXPECT_EQ(Log().size(), 84011U) << "small and unlimited files are not cut";
}

TEST_F(TavErrorLog, DropsTheEntryWhenTheFileCannotBeCut) {
  tavError::Level = tavLogLevel_File | tavLogLevel_Throw;
  tavError::LogFileSize = 40000;
  const std::pair<std::string, const char*> cases[] = {
      {m_folder.Path("none"), "206\nCustom Message - : Can not rebuild log error file.\n"},
      // Root can not write this file either. A folder may claim a size that no memory has.
      {"/sys/class/net/lo/address", "200\nCustom Message - : Can not write for to rebuild log error file.\n"},
      {m_folder.Path(), "to rebuild log error file.\n"}};
  for (const auto& [file, report] : cases) {
    tavError::LogFile = file;
    unsigned int code = 0;
    EXPECT_THAT(CapturedOutput([&] { code = tavErrorLog(Entry(40001, 'a')); }), testing::EndsWith(report));
    EXPECT_TRUE(code == tavError_InvalidPointer || (code == 5 && file == m_folder.Path())) << file << code;
  }
  EXPECT_FALSE(std::filesystem::exists(cases[0].first));
}
