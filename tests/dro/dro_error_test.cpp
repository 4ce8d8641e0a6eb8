#include "dro_error.h"

#include <gtest/gtest.h>

#include <thread>

#include "expect_report.h"
#include "failing_allocation.h"
#include "system_calls.h"
#include "temporary_folder.h"
#include "test_clock.h"

using namespace dro;

namespace {

TEST(DroError, HasWordsForEveryCodeOfAFailure) {
  for (int code = droError_OperationFailed; code <= droError_Network; ++code) {
    const droError failure = droBuildErrorLocation(static_cast<droEError>(code), "m", "dro_x", "Go", 1);
    ExpectReport(ReportsOf{"dro_x", code}("Go", "m"), code, [&] { return droErrorLog(failure); });
  }
}

// Every test has a clock and a log file of its own.
struct DroErrorLog : testing::Test {
  DroErrorLog() {
    setenv("TZ", "UTC0", 1);
    droError::LogFile = path;
    droError::_current_log_filesize = 0;
  }
  ~DroErrorLog() override {
    droError::Level = droLogLevel_Console;
    droError::LogFileSize = 512000;
    droError::ShowErrorCallBack = nullptr;
  }
  const TestClock clock{TestClock::Utc(2014, 4, 22, 7, 35, 2)};
  const TemporaryFolder folder;
  const std::string path = folder.Path("log");
  const droError error = droBuildErrorLocation(droError_Network, "no\nroute", "dro_x", "Go", 12);
};

TEST_F(DroErrorLog, PrintsAFailureInRedWithItsTimeAndPlace) {
  EXPECT_EQ(CapturedOutput([&] { droErrorLog(error); }),
            "\x1B[31m[Tue Apr 22 07:35:02 2014]\ndroError Number : 10\nNetwork communication error.\n"
            "File ----------- : dro_x\nFunction ------- : Go\nLine Number ---- : 12\n"
            "Custom Message - : no\nroute\n\x1B[0m");
  EXPECT_FALSE(std::filesystem::exists(path)) << "no file unless asked for";
}

// A log whose file is too large: a fault is printed in place of the record, which goes nowhere.
struct DroErrorLogAtItsLimit : DroErrorLog {
  DroErrorLogAtItsLimit() {
    WriteFile(path, std::string(300000, 'o'));
    droError::Level = droLogLevel_File | droLogLevel_Throw;
    droError::_current_log_filesize = 512000;
  }
  void ExpectFault(int code, const char* message) {
    ExpectReport(ReportsOf{"dro_error", code}("droErrorLog", message), code,
                 [&] { return droErrorLog(error); });
  }
};

TEST_F(DroErrorLogAtItsLimit, ReportsAFileThatCannotBeRead) {
  std::filesystem::remove(path);
  ExpectFault(5, "Can not rebuild log error file.");
  EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(DroErrorLogAtItsLimit, ReportsAFileThatDoesNotFitIntoMemory) {
  const auto shortage = FailingAllocation::OfAtLeast(300000);
  ExpectFault(6, "Can not allocate buffer for to rebuild log error file.");
}

TEST_F(DroErrorLogAtItsLimit, ReportsAFileThatCannotBeWritten) {
  const auto readOnly = system_calls::fopen.ReplaceBy([](const char* name, const char* mode) -> FILE* {
    return *mode == 'r' ? system_calls::fopen.Real(name, mode) : nullptr;
  });
  ExpectFault(5, "Can not write for to rebuild log error file.");
}

TEST_F(DroErrorLog, CountsWhatThreadsWrite) {
  droError::Level = droLogLevel_File;
  const auto write = [&] { droErrorLog(error); };
  std::thread other(write);
  write();
  other.join();
  EXPECT_EQ(droError::_current_log_filesize, ReadFile(path).size());
}

}  // namespace
