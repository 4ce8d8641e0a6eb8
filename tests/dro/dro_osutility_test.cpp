#include "dro_osutility.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <csignal>

#include "expect_report.h"
#include "stand_ins.h"
#include "system_calls.h"

using namespace dro;
using std::string_literals::operator""s;

namespace {

constexpr ReportsOf kFailure{"dro_osutility", 2};
constexpr ReportsOf kNoPipe{"dro_osutility", 5};

struct DroOsUtility : testing::Test {
  auto Running(const std::string& script) {
    return [this, script] { return droOsUtility::ExecuteScript(folder.Path("."), script, &output); };
  }
  const TemporaryFolder folder;
  const std::string scriptPath = folder.Path(".") + "/tavon.sh";
  droString output = "earlier ";
};

TEST_F(DroOsUtility, ReadsAllThatACommandPrintsEvenIfASignalInterruptsIt) {
  sysv_signal(SIGUSR1, [](int) {});
  const char* const command = "sleep 0.05; kill -USR1 $PPID; sleep 0.05; printf 'a\\000b'";
  EXPECT_EQ(droOsUtility::ExecuteCommandLine(command, &output), droError_NoError);
  EXPECT_EQ(output, "earlier a\0b"s);
}

TEST_F(DroOsUtility, RunsAScriptAndAddsItsOutput) {
  EXPECT_EQ(Running("echo one\necho %s\n")(), droError_NoError);
  EXPECT_EQ(Running("#!/bin/sh\necho $0")(), droError_NoError);
  EXPECT_EQ(output, "earlier one\n%s\n" + scriptPath + "\n");
}

TEST_F(DroOsUtility, DoesNotRunAScriptOnAFullDisk) {
  std::filesystem::create_symlink("/dev/full", scriptPath);
  ExpectReport(ReportsOf{"dro_osfile", 2}("Close", "Can not close file handle"), 2, Running("echo a"));
  EXPECT_EQ(output, "earlier ");
}

TEST_F(DroOsUtility, ReportsAScriptThatItCannotRun) {
  ExpectReport(ReportsOf{"dro_osutility", 7}("ExecuteScript", "o_pData == 0"), 7,
               [] { return droOsUtility::ExecuteScript("/", "echo a", nullptr); });
  const auto noPipe = system_calls::popen.FailsWith(EMFILE);
  ExpectReport(kNoPipe("ExecuteScript", "Can not open system pipe"), 5, Running("echo a"));
  const auto notPermitted = system_calls::chmod.FailsWith(EPERM);
  ExpectReport(kFailure("ExecuteScript", WithSystemError("Can not set chmod " + scriptPath, EPERM)), 2,
               Running("echo a"));
}

TEST_F(DroOsUtility, MovesAndDeletesFiles) {
  const std::string target = folder.Path("target");
  WriteFile(folder.Path("source"), "x");
  EXPECT_EQ(droOsUtility::FileMove(folder.Path("source").c_str(), target.c_str()), 0);
  EXPECT_EQ(droOsUtility::FileDelete(target.c_str()), droError_NoError);
  ExpectReport(kFailure("FileDelete", "Can not delete file"), 2,
               [&] { return droOsUtility::FileDelete(target.c_str()); });
}

TEST(DroOsUtilityMachine, TellsWhatItsCommandsPrint) {
  StandIns standIns;
  standIns.Add("df", "echo Filesystem 1M-blocks; echo /dev/sda1 7310M 5M; echo /dev/sda2 1M 1M");
  EXPECT_EQ(droOsUtility::GetSourceSize("sda"), 7310U);
  standIns.Add("cat", "printf 'Serial: 0abc\\n'");
  EXPECT_EQ(droOsUtility::GetCpuSerial(), "0abc");
  EXPECT_EQ(standIns.Calls(), "cat /proc/cpuinfo\ndf -B M\n");
  const auto noPipe = system_calls::popen.FailsWith(EMFILE);
  ExpectReport(kNoPipe("GetCpuSerial", "Can not open system pipe"), "0000000000000000",
               droOsUtility::GetCpuSerial);
  ExpectReport(kNoPipe("GetSourceSize", "Can not open system pipe"), 0U,
               [] { return droOsUtility::GetSourceSize("sda"); });
}

// A folder of the test takes the place of the system's list of network interfaces.
TEST_F(DroOsUtility, TellsTheAddressOfEachNetworkInterfaceButTheLoopback) {
  const auto redirected = [this](std::string path) {
    const std::string system = "/sys/class/net/";
    return path.starts_with(system) ? path.replace(0, system.size(), folder.Path()) : path;
  };
  const auto folders = system_calls::opendir.ReplaceBy(
      [&](const char* path) { return system_calls::opendir.Real(redirected(path).c_str()); });
  const auto files = system_calls::fopen.ReplaceBy([&](const char* path, const char* mode) {
    return system_calls::fopen.Real(redirected(path).c_str(), mode);
  });
  for (const char* name : {"lo", "eth0", "usb0", "none"})
    std::filesystem::create_directory(folder.Path(name));
  WriteFile(folder.Path("lo/address"), "00:00:00:00:00:00\n");
  WriteFile(folder.Path("eth0/address"), "02:00:5e:10:00:01\n");
  WriteFile(folder.Path("usb0/address"), "02:00:5e:10:00:02");  // a line feed is no condition
  droArray<droString> addresses{"kept"};
  EXPECT_EQ(droOsUtility::GetMacAddress(&addresses), droError_NoError);
  EXPECT_THAT(addresses, testing::UnorderedElementsAre("kept", "02:00:5e:10:00:01", "02:00:5e:10:00:02"));
}

}  // namespace
