#include "dro_error.h"

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <thread>

#include "captured_output.h"
#include "temporary_folder.h"

namespace dro {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

std::string WithoutTime(const std::string& description) {
  const std::size_t end = description.find("]\n");
  EXPECT_THAT(description.substr(0, end), testing::MatchesRegex("\\[[A-Z][a-z]+ .+:.+:.+ [0-9]+"));
  return description.substr(end + 2);
}

// Gives each test a log file of its own and puts the settings back.
class DroErrorLog : public testing::Test {
 protected:
  DroErrorLog() {
    droError::LogFile = m_folder.Path("log");
    droError::_current_log_filesize = 0;
  }
  ~DroErrorLog() override {
    droError::Level = 1;
    droError::LogFile = "dro_system.log";
    droError::ShowErrorCallBack = nullptr;
  }

  TemporaryFolder m_folder;
};

TEST(DroError, DescriptionsTellCodeAndPlace) {
  EXPECT_EQ(
      WithoutTime(
          droBuildErrorLocation(droError_Network, "no\nroute", "file", "Function", 12).GetDescription()),
      "droError Number : 10\nNetwork communication error.\nFile ----------- : file\n"
      "Function ------- : Function\nLine Number ---- : 12\nCustom Message - : no\nroute\n");
  EXPECT_EQ(
      WithoutTime(droBuildErrorLocation(droError_Warning, "slow", "file", "Function", 12).GetDescription()),
      "Warning : slow[FILE:file][FUNCTION:Function][LINE:12]\n");
  EXPECT_EQ(WithoutTime(droError(droError_NoError, "done").GetDescription()), "Info : done\n");
}

TEST(DroError, CodesHaveTexts) {
  const char* none = "droError description not found. Update droErrorToString function.!";
  EXPECT_EQ(droErrorToString(droError_NoError), "The operation completed succefully.");
  EXPECT_EQ(droErrorToString(droError_DivisionByZero), "Division By Zero.");
  for (const int code : {1, 11, -1})
    EXPECT_EQ(droErrorToString(static_cast<droEError>(code)), none) << code;
  EXPECT_EQ(droErrorWindowsToString(5), "");
}

TEST(DroError, SystemErrorsHaveNumberAndText) {
  EXPECT_EQ(droErrorStdToString(0), "0 No error");
  errno = ENOENT;
  EXPECT_EQ(droErrorStdToString(-1), "2 No such file or directory");
  EXPECT_EQ(droErrorStdToString(-7), "-7 Unknown error -7");
}

TEST_F(DroErrorLog, PrintsInTheColourOfTheCodeAndWritesNoFile) {
  const struct {
    droEError code;
    const char* colour;
  } rows[] = {{droError_NoError, "37"}, {droError_Warning, "33"}, {droError_OperationFailed, "31"}};
  for (const auto& row : rows) {
    const droError error(row.code, "message");
    EXPECT_EQ(CapturedOutput([&] { EXPECT_EQ(droErrorLog(error), row.code); }),
              std::string("\x1B[") + row.colour + "m" + error.GetDescription() + "\x1B[0m");
  }
  EXPECT_FALSE(std::filesystem::exists(m_folder.Path("log")));
}

TEST_F(DroErrorLog, ThrowsAfterWritingAndDoesNotCallBack) {
  static std::string called;
  called.clear();
  droError::ShowErrorCallBack = [](const droError& error) { called += error.GetDescription(); };
  const droError error(droError_OutOfRange, "far");
  droError::Level = 8;
  EXPECT_EQ(droErrorLog(error), droError_OutOfRange);
  EXPECT_EQ(called, error.GetDescription());
  droError::Level = 2 | 4 | 8;
  EXPECT_THROW(droErrorLog(error), droError);
  EXPECT_EQ(called, error.GetDescription());
  EXPECT_EQ(ReadFile(droError::LogFile), error.GetDescription());
}

TEST_F(DroErrorLog, CutsTheFileToItsLastHalf) {
  const droError error(droError_Unknown, "last");
  droError::Level = 2;
  WriteFile(droError::LogFile, std::string(300000, 'a') + std::string(255999, 'b'));
  droError::_current_log_filesize = 512000;
  droErrorLog(error);
  EXPECT_EQ(ReadFile(droError::LogFile), "a" + std::string(255999, 'b') + error.GetDescription());
  EXPECT_EQ(droError::_current_log_filesize, 256000U);
}

TEST_F(DroErrorLog, FileThatCannotBeCutIsReportedInsteadOfTheRecord) {
  droError::Level = 2 | 4;
  const auto logged = [](const char* message) {
    droError::_current_log_filesize = 512000;
    const auto log = [] { EXPECT_EQ(droErrorLog({droError_Unknown, "lost"}), droError_InvalidPointer); };
    EXPECT_THAT(WithoutTime(CapturedOutput(log)),
                testing::AllOf(HasSubstr("File ----------- : dro_error\nFunction ------- : droErrorLog\n"),
                               testing::EndsWith(std::string("Custom Message - : ") + message + "\n")));
  };
  logged("Can not rebuild log error file.");
  EXPECT_FALSE(std::filesystem::exists(m_folder.Path("log")));

  WriteFile(droError::LogFile, "old");
  chmod(droError::LogFile.c_str(), 0444);
  chmod(m_folder.Path().c_str(), 0755);
  const uid_t user = geteuid();
  if (user == 0 && seteuid(65534) != 0) GTEST_SKIP() << "root may write every file";
  logged("Can not write for to rebuild log error file.");
  ASSERT_EQ(seteuid(user), 0);
  EXPECT_EQ(ReadFile(droError::LogFile), "old");
}

TEST_F(DroErrorLog, CountsWhatThreadsWrite) {
  droError::Level = 2;
  const auto write = [] {
    for (int i = 0; i < 100; ++i)
      droErrorLog({droError_Unknown, "message"});
  };
  std::thread other(write);
  write();
  other.join();
  const std::size_t size = ReadFile(droError::LogFile).size();
  EXPECT_EQ(size, 200 * droError(droError_Unknown, "message").GetDescription().size());
  EXPECT_EQ(droError::_current_log_filesize, size);
}

TEST_F(DroErrorLog, DeleteLogTellsWhetherItDid) {
  WriteFile(droError::LogFile, "old");
  EXPECT_THAT(CapturedOutput([] { EXPECT_EQ(droError::DeleteLog(), droError_NoError); }), IsEmpty());
  EXPECT_FALSE(std::filesystem::exists(m_folder.Path("log")));
  EXPECT_THAT(CapturedOutput([] { EXPECT_EQ(droError::DeleteLog(), droError_OperationFailed); }),
              HasSubstr("Custom Message - : Can not delete file\n"));
}

}  // namespace
}  // namespace dro
