#include "dro_osutility.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>

#include "expect_report.h"
#include "system_calls.h"
#include "temporary_folder.h"

using namespace dro;
using std::string_literals::operator""s;

namespace {

constexpr ReportsOf kFailure{"dro_osutility", 2};

// What a command adds to "earlier ".
std::string OutputOf(const droString& command) {
  droString output = "earlier ";
  EXPECT_EQ(droOsUtility::ExecuteCommandLine(command, &output), droError_NoError);
  return output;
}

TEST(DroOsUtilityCommand, LosesNothingWhenASignalInterruptsTheReading) {
  sysv_signal(SIGUSR1, [](int) {});
  EXPECT_EQ(OutputOf("sleep 0.05; kill -USR1 $PPID; sleep 0.05; printf 'a\\000b'"), "earlier a\0b"s);
}

struct DroOsUtilityScript : testing::Test {
  auto Running(const std::string& script) {
    return [this, script] { return droOsUtility::ExecuteScript(folder.Path("."), script, &output); };
  }
  const TemporaryFolder folder;
  const std::string path = folder.Path(".") + "/tavon.sh";
  droString output;
};

TEST_F(DroOsUtilityScript, RunsAndAddsItsOutput) {
  EXPECT_EQ(Running("echo one\necho %s\n")(), droError_NoError);
  EXPECT_EQ(Running("#!/bin/sh\necho $0")(), droError_NoError);
  EXPECT_EQ(output, "one\n%s\n" + path + "\n");
}

TEST_F(DroOsUtilityScript, IsNotRunOnAFullDisk) {
  std::filesystem::create_symlink("/dev/full", path);
  ExpectReport(ReportsOf{"dro_osfile", 2}("Close", "Can not close file handle"), 2, Running("echo a"));
  EXPECT_EQ(output, "");
}

TEST_F(DroOsUtilityScript, IsNotRunWhenItCannotBeMadeExecutable) {
  const auto notPermitted = system_calls::chmod.FailsWith(EPERM);
  ExpectReport(kFailure("ExecuteScript", WithSystemError("Can not set chmod " + path, EPERM)), 2,
               Running("echo a"));
  EXPECT_EQ(output, "");
}

}  // namespace
