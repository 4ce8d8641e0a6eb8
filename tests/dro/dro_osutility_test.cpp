#include "dro_osutility.h"

#include <sys/wait.h>

#include <csignal>

#include "expect_report.h"
#include "resource_limit.h"
#include "stand_ins.h"
#include "system_calls.h"

using namespace dro;
using std::string_literals::operator""s;
using U = droOsUtility;

TEST(DroOsUtility, CommandsLoseNoOutputAndLeaveNoChild) {
  droString output = ">";
  const auto run = [&](auto text) { return [=, &output] { return U::ExecuteCommandLine(text, &output); }; };
  sysv_signal(SIGUSR1, [](int) {});  // interrupts the reading
  EXPECT_EQ(run("sleep 0.05; kill -USR1 $PPID; sleep 0.05; echo b")(), 0);
  EXPECT_EQ(run("head -c 3000000 /dev/zero | tr '\\0' x; echo")(), 0);
  EXPECT_EQ(run("printf 'a\\000b\\n\\000'; ls /none; kill -9 $$")(), 0);
  ExpectReport(5, "Can not open system pipe", [&] { return Without(RLIMIT_NOFILE, run("echo c")); });
  EXPECT_TRUE(output == ">b\n" + std::string(3000000, 'x') + "\na\0b\n\0"s) << output.size();
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
}

TEST(DroOsUtility, RunsTheSystemsCommandsAsTold) {
  StandIns standIns;
  standIns.Add("grep");
  standIns.Add("awk");
  standIns.Add("cat", R"(printf 'model: 1\nSerial\t: 00a7b\nSerial: 2\n')");
  standIns.Add("df", R"(printf '/dev/sda1 12345m 1M\n/dev/sda1 7M 1M\n/dev/sdb1 9M 1M\n')");
  standIns.Add("mv", "exit 3");
  EXPECT_EQ(U::GetCpuSerial(), "00a7b");
  EXPECT_EQ(standIns.Calls(), "cat /proc/cpuinfo\ngrep Serial\n");
  EXPECT_EQ(U::GetSourceSize("/dev/sda1"), 12345U);
  EXPECT_EQ(standIns.Calls(), "awk {print $2}\ndf -B M\ngrep /dev/sda1\n");
  ExpectReport(0, "Can not open system pipe",
               [] { return Without(RLIMIT_NOFILE, [] { return U::GetSourceSize("/dev/sda1"); }); });
  EXPECT_EQ(U::FileMove("a", "b"), 3 << 8);
  EXPECT_EQ(standIns.Calls(), "mv a b\n");
  standIns.Add("cat", "");
  EXPECT_EQ(U::GetCpuSerial(), "0000000000000000");
}

TEST(DroOsUtility, RunsScriptsThatCouldBeWritten) {
  const TemporaryFolder temporary;
  const std::string folder = temporary.Path("."), path = folder + "/tavon.sh";
  droString out;
  const auto run = [&](auto text) { return [=, &out] { return U::ExecuteScript(folder, text, &out); }; };
  EXPECT_TRUE(run("echo a long one\necho %s\n")() == 0 && run("#!/bin/sh\necho $0")() == 0);
  ExpectReport(2, "Can not write all data a", run("a\n\0b"s));
  signal(SIGXFSZ, SIG_IGN);  // the disk is full
  ExpectReport(2, "Can not close file handle", [&] { return Without(RLIMIT_FSIZE, run("echo a")); });
  std::filesystem::remove(path);
  std::filesystem::create_symlink("/proc/self/comm", path);  // which is nobody's to make executable
  ExpectReport(2, "Can not set chmod " + path + "\nStd Error 1 Operation not permitted", run("a"));
  EXPECT_EQ(out, "a long one\n%s\n" + path + "\n");
}

TEST(DroOsUtility, ListsFoldersUntilTheyEndOrVanish) {
  const TemporaryFolder temporary;
  const std::string path = temporary.Path("a"), file = path + "/file";
  std::filesystem::create_directories(path + "/sub");
  WriteFile(file, "");
  U::Folder folder;
  U::FolderFile entry;
  EXPECT_EQ(U::GetFolder(path, &folder), 0);
  droArray<std::string> names;
  for (int round = 0; round < 2; ++round)
    for (folder.GetFirstFile(&entry); entry.IsValid(); folder.GetNextFile(&entry))
      names.push_back(entry.GetName() + (entry.IsDirectory() ? "/" : ""));
  EXPECT_THAT(names, testing::UnorderedElementsAre("../", "../", "./", "./", "file", "file", "sub/", "sub/"));
  EXPECT_TRUE(U::FileExist(file.c_str()) && U::FolderExist(file.c_str()));
  EXPECT_EQ(U::FileDelete(file.c_str()), 0);
  ExpectReport(2, "Can not delete file", [&] { return U::FileDelete(file.c_str()); });
  std::filesystem::remove_all(path);
  EXPECT_TRUE(folder.GetFirstFile(&entry) == 0 && entry.GetName().empty());
  ExpectReport(2, "Can not get folder " + path, [&] { return U::GetFolder(path, &folder); });
  const auto openBroken = [](U::Folder& broken) {  // its descriptor is closed beneath it
    const int descriptor = dup(2);
    close(descriptor);
    return broken.open("/") == 0 && close(descriptor) == 0;
  };
  const std::string next = "Can not get next file\nStd Error 9 Bad file descriptor";
  ExpectReport(2, next, [&] { return openBroken(folder), folder.GetNextFile(&entry), folder.close(); });
  ExpectReport(2, next, [&] { return folder.GetFirstFile(&entry); });
  ExpectReport(2, "can not close directory ", [&] { return openBroken(folder), folder.open("/"); });
  ExpectReport(14, "io_pFolderFile == 0",
               [&] { return folder.GetFirstFile(nullptr) + folder.GetNextFile(nullptr); });
  const auto leave = [&] { return openBroken(*std::make_unique<U::Folder>()); };
  ExpectReport(1, "can not close directory ", leave);
  droError::Level = 4;
  leave();  // no exception leaves a destructor
  droError::Level = 1;
}

TEST(DroOsUtility, TellsAboutPathsAndTheMachine) {
  const std::string here = std::filesystem::current_path();
  EXPECT_EQ(U::GetFileNameWithExtension("a/b.c") + U::GetFileNameWithExtension("a/"), "b.c");
  EXPECT_EQ(U::GetModuleFullPath("../a"), U::GetParentFolder(here) + U::Separator + "a");
  droArray<droString> macs;
  droString found, all;
  U::ExecuteCommandLine("cd /sys/class/net; cat $(ls -U | sed s,$,/address,) | grep -v ^00:00:00", &all);
  const auto getMacs = [&] { return U::GetMacAddress(&macs); };
  // The real one may ask the network for this machine.
  const auto hostId = system_calls::gethostid.Returns(-7);
  ExpectReport(2, "Can not get folder", [&] { return Without(RLIMIT_NOFILE, getMacs); });
  EXPECT_TRUE(getMacs() == 0 && U::GetHostID() == -7);
  for (const droString& mac : macs) found += mac + "\n";
  EXPECT_EQ(found, all);
}
