#include "dro_error.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <thread>

#include "expect_report.h"
#include "failing_allocation.h"
#include "temporary_folder.h"
#include "test_clock.h"

using namespace dro;

struct DroErrorLog : testing::Test {
  DroErrorLog() { droError::LogFile = m_path; }
  ~DroErrorLog() override { droError::Level = droLogLevel_Console; }
  const TestClock m_clock{TestClock::Utc(2014, 4, 22, 7, 35, 2)};
  TemporaryFolder m_folder;
  const std::string m_path = m_folder.Path("log");
  const droError m_error = droBuildErrorLocation(droError_Network, "no\nroute", "dro_x", "Go", 12);
};

TEST_F(DroErrorLog, PrintsTimeCodeAndPlaceInColour) {
  const auto output = [](const droError& error) { return CapturedOutput([&] { droErrorLog(error); }); };
  EXPECT_EQ(output(m_error),
            "\x1B[31m[Tue Apr 22 07:35:02 2014]\ndroError Number : 10\nNetwork communication error.\n"
            "File ----------- : dro_x\nFunction ------- : Go\nLine Number ---- : 12\n"
            "Custom Message - : no\nroute\n\x1B[0m");
  EXPECT_EQ(output(droBuildErrorLocation(droError_Warning, "slow", "dro_x", "Go", 12)),
            "\x1B[33m[Tue Apr 22 07:35:02 2014]\nWarning : slow[FILE:dro_x][FUNCTION:Go][LINE:12]\n\x1B[0m");
  EXPECT_EQ(output({droError_NoError, "done"}), "\x1B[37m[Tue Apr 22 07:35:02 2014]\nInfo : done\n\x1B[0m");
  EXPECT_EQ(ReadFile(m_path), "") << "no file unless asked for";
  EXPECT_EQ(droErrorToString(droError_NoError), "The operation completed succefully.");
  for (const int code : {1, 11, -1})
    EXPECT_EQ(droErrorToString(droEError(code)).substr(0, 31), "droError description not found.") << code;
  errno = ENOENT;
  EXPECT_EQ(droErrorStdToString(-1), "2 No such file or directory");
  EXPECT_EQ(droErrorWindowsToString(5) + droErrorStdToString(0), "0 No error");
}

TEST_F(DroErrorLog, ThrowsAfterWritingOrCallsBack) {
  static int calls;
  calls = 0;
  droError::ShowErrorCallBack = [](const droError&) { ++calls; };
  droError::Level = droLogLevel_CallBack;
  EXPECT_EQ(droErrorLog(m_error), droError_Network);
  droError::Level = droLogLevel_File | droLogLevel_Throw | droLogLevel_CallBack;
  EXPECT_THROW(droErrorLog(m_error), droError);
  EXPECT_EQ(calls, 1);
  EXPECT_EQ(ReadFile(m_path), m_error.GetDescription());
  EXPECT_EQ(droError::DeleteLog(), droError_NoError);
  droError::Level = droLogLevel_Console;
  ExpectFailure(2, "DeleteLog", "Can not delete file", [] { EXPECT_EQ(droError::DeleteLog(), 2); });
}

TEST_F(DroErrorLog, CutsTheFileOrReportsThatItCannot) {
  droError::Level = droLogLevel_File;
  droError::_current_log_filesize = 512000;
  const auto log = [this] { EXPECT_EQ(droErrorLog(m_error), 5); };
  ExpectFailure(5, "droErrorLog", "Can not rebuild log error file.", log);
  droError::LogFile = "/sys/class/net/lo/address";  // which root can not write either
  ExpectFailure(5, "droErrorLog", "Can not write for to rebuild log error file.", log);
  const auto noMemory = [this] {
    const auto shortage = FailingAllocation::OfAtLeast(4096);
    EXPECT_EQ(droErrorLog(m_error), 6);
  };
  ExpectFailure(6, "droErrorLog", "Can not allocate buffer for to rebuild log error file.", noMemory);
  droError::LogFile = m_path;
  WriteFile(m_path, "old" + std::string(256000, 'n'));
  EXPECT_EQ(droErrorLog(m_error), droError_Network);
  EXPECT_EQ(ReadFile(m_path), std::string(256000, 'n') + m_error.GetDescription());
}

TEST_F(DroErrorLog, CountsWhatThreadsWrite) {
  droError::Level = droLogLevel_File;
  droError::_current_log_filesize = 0;
  const auto write = [] { droErrorLog(droError(droError_Unknown, "message")); };
  std::thread other(write);
  write();
  other.join();
  EXPECT_EQ(droError::_current_log_filesize, ReadFile(m_path).size());
}
