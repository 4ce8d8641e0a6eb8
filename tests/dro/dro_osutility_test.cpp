#include "dro_osutility.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <csignal>

#include "expect_report.h"
#include "stand_ins.h"
#include "system_calls.h"
#include "vutility.h"

using namespace dro;
using std::string_literals::operator""s;

namespace {

constexpr ReportsOf kFailure{"dro_osutility", droError_OperationFailed};
constexpr ReportsOf kInvalid{"dro_osutility", droError_InvalidArgument};
constexpr ReportsOf kNoPipe{"dro_osutility", droError_InvalidPointer};
constexpr ReportsOf kFileFailure{"dro_osfile", droError_OperationFailed};

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
  ExpectReport(kFileFailure("Close", "Can not close file handle"), droError_OperationFailed,
               Running("echo a"));
  EXPECT_EQ(output, "earlier ");
}

TEST_F(DroOsUtility, ReportsAScriptThatItCannotRun) {
  ExpectReport(kInvalid("ExecuteScript", "o_pData == 0"), droError_InvalidArgument,
               [] { return droOsUtility::ExecuteScript("/", "echo a", nullptr); });
  ExpectReport(kInvalid("ExecuteCommandLine", "o_pData == 0"), droError_InvalidArgument,
               [] { return droOsUtility::ExecuteCommandLine("echo a", nullptr); });
  const auto noPipe = system_calls::popen.FailsWith(EMFILE);
  ExpectReport(kNoPipe("ExecuteScript", "Can not open system pipe"), droError_InvalidPointer,
               Running("echo a"));
  const auto notPermitted = system_calls::chmod.FailsWith(EPERM);
  ExpectReport(kFailure("ExecuteScript", WithSystemError("Can not set chmod " + scriptPath, EPERM)),
               droError_OperationFailed, Running("echo a"));
}

TEST_F(DroOsUtility, MovesAndDeletesAFile) {
  const std::string from = folder.Path("from"), to = folder.Path("to");
  WriteFile(from, "contents");
  EXPECT_EQ(droOsUtility::FileMove(from.c_str(), to.c_str()), 0);
  EXPECT_EQ(droOsUtility::FileMove(from.c_str(), nullptr), -1);
  ExpectReport(kFileFailure("Open", WithSystemError("tavFile handle is invalid, == 0", ENOENT)), false,
               [&] { return droOsUtility::FileExist(from.c_str()); });
  EXPECT_TRUE(droOsUtility::FileExist(to.c_str()));
  EXPECT_EQ(droOsUtility::FileDelete(to.c_str()), droError_NoError);
  EXPECT_FALSE(droOsUtility::FolderExist(to.c_str()));
  EXPECT_TRUE(droOsUtility::FolderExist("/"));
  for (const char* path : {to.c_str(), static_cast<const char*>(nullptr)})
    ExpectReport(kFailure("FileDelete", "Can not delete file"), droError_OperationFailed,
                 [&] { return droOsUtility::FileDelete(path); });
}

TEST_F(DroOsUtility, MakesAPathAbsoluteThatBeginsAtTheCurrentFolder) {
  const std::string before = VUtility::GetCurrentDir();
  const auto fullPath = [](const char* current, const char* path) {
    EXPECT_TRUE(VUtility::SetCurrentDir(current));
    return droOsUtility::GetModuleFullPath(path);
  };
  EXPECT_EQ(fullPath("/usr/lib", "./../bin/x"), "/usr/bin/x");
  EXPECT_EQ(fullPath("/", "./x"), "/x");
  EXPECT_EQ(fullPath("/usr", "../../x"), "/x") << "there is nothing above the root";
  EXPECT_EQ(fullPath("/usr", "bin/x"), "bin/x") << "such a program was found on the search path";
  EXPECT_TRUE(VUtility::SetCurrentDir(before));
}

TEST(DroOsUtilityPaths, AreTakenApartAtTheLastSeparator) {
  EXPECT_EQ(droOsUtility::GetParentFolder("/a/b.c"), "/a");
  EXPECT_EQ(droOsUtility::GetParentFolder("plain"), "");
  EXPECT_EQ(droOsUtility::GetFileNameWithExtension("/a/b.c"), "b.c");
  EXPECT_EQ(droOsUtility::GetFileNameWithExtension("plain"), "plain");
  EXPECT_EQ(droOsUtility::GetFileNameWithExtension("/a/"), "");
}

TEST(DroOsUtilityMachine, HasTheNumberThatTheSystemGives) {
  const auto number = system_calls::gethostid.Returns(0x0100007F);
  EXPECT_EQ(droOsUtility::GetHostID(), 0x0100007F);
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

}  // namespace
