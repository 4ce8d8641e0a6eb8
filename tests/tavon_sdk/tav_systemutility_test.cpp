#include "tav_systemutility.h"

#include <sys/utsname.h>

#include <filesystem>
#include <functional>

#include "expect_report.h"
#include "stand_ins.h"
#include "system_calls.h"

namespace tavon {
namespace {

// An operation that runs commands, and what it makes of what the first of them prints.
struct CommandCase {
  const char* function;
  std::function<int()> run;
  const char* calls;  // in alphabetical order
  const char* output;
  int whenPrinting;
  int whenSilent;
  int withoutPipe;
};

std::ostream& operator<<(std::ostream& out, const CommandCase& command) { return out << command.function; }

const char* const kMounts = "/dev/sdz9 on /mnt type ext3\n/dev/sda1 on / type ext4\n";

const CommandCase kCommands[] = {
    {"FormatExt3", [] { return tavSystemUtility::FormatExt3("dz", 65535); }, "mkfs.ext3 dz -b 65535 -q\n",
     "1", 0, 1, -1},
    {"IsFormattedAs", [] { return tavSystemUtility::IsFormattedAs("dz", "t3"); }, "grep dz\ngrep t3\nmount\n",
     kMounts, 1, 0, -1},
    {"IsFormattedAs", [] { return tavSystemUtility::IsFormattedAs("dz", "t4"); }, "grep dz\ngrep t4\nmount\n",
     kMounts, 0, 0, -1},
    {"IsDeviceMounted", [] { return tavSystemUtility::IsDeviceMounted("dz"); }, "grep dz\nmount\n", kMounts,
     1, 0, -1},
    {"MountDevice", [] { return tavSystemUtility::MountDevice("dz", "/mnt"); }, "mount dz /mnt\n", "\n", 0, 1,
     -1},
    {"UnMountDevice", [] { return tavSystemUtility::UnMountDevice("dz"); }, "umount dz\n", "no\n", 0, 1, -1},
    {"CreateFolder", [] { return tavSystemUtility::CreateFolder("a/b"); }, "mkdir -p a/b\n", "no\n", 0, 1,
     -1},
    // The owner, which comes second, is the first argument of the command.
    {"SetFolderOwner", [] { return tavSystemUtility::SetFolderOwner("a", "user"); }, "chown user -R a\n",
     "no\n", 0, 1, -1},
    {"Ping", [] { return tavSystemUtility::Ping("host", 3); }, "grep ttl\nping host -c 3\n",
     "PING\nttl=64\nlost\nttl=64", 2, 0, 0},
    {"Arping", [] { return tavSystemUtility::Arping("host"); },
     "arp\narp -d host\ngrep ether\ngrep host\nping host -c 1\nwc -l\n",
     "7 other ether 02:00:5e:10:00:01\nhost ether 02:00:5e:10:00:02\n", 1, 0, 0},
    // The signal, which comes second, is the first argument of the command, whose output says nothing.
    {"KillAll", [] { return tavSystemUtility::KillAll("name", "-9"); }, "killall -9 name\n", "1\n", 0, 0, 0},
    {"GetProcessID", [] { return tavSystemUtility::GetProcessID("name"); }, "pidof name\n", "4711 12\n13\n",
     4711, 0, -1},
};

// No command of the system runs but grep and wc: what stands in for the others prints a file.
struct TavSystemUtility : testing::Test {
  TavSystemUtility() {
    for (const char* name :
         {"mkfs.ext3", "mount", "umount", "mkdir", "chown", "ping", "arp", "killall", "pidof", "rm"})
      standIns.Add(name, "cat " + folder.Path("output"));
    standIns.Add("grep");
    standIns.Add("wc");
    Print("");
  }
  void Print(const std::string& output) { WriteFile(folder.Path("output"), output); }

  TemporaryFolder folder;
  StandIns standIns;
};
struct TavSystemUtilityCommand : TavSystemUtility, testing::WithParamInterface<CommandCase> {};
INSTANTIATE_TEST_SUITE_P(All, TavSystemUtilityCommand, testing::ValuesIn(kCommands));

TEST_P(TavSystemUtilityCommand, RunsItsCommandAndReadsWhatItPrints) {
  Print(GetParam().output);
  EXPECT_EQ(GetParam().run(), GetParam().whenPrinting);
  EXPECT_EQ(standIns.Calls(), GetParam().calls);
}

TEST_P(TavSystemUtilityCommand, ReadsSilenceAsAnAnswer) {
  EXPECT_EQ(GetParam().run(), GetParam().whenSilent);
}

TEST_P(TavSystemUtilityCommand, ReportsThatItHasNoPipe) {
  const auto noPipe = system_calls::popen.FailsWith(EMFILE);
  ExpectReport({4, "tav_systemutility", GetParam().function, "Can not open system pipe"},
               GetParam().withoutPipe, GetParam().run);
}

TEST_F(TavSystemUtility, CountsALongLineOfAPingOnce) {
  Print("ttl=" + std::string(1000, '6') + "\nttl=64\n");
  EXPECT_EQ(tavSystemUtility::Ping("host", 2), 2);
}

TEST_F(TavSystemUtility, AsksTheAddressTableWhenAPingIsNotAnswered) {
  Print("ttl\n");
  EXPECT_EQ(tavSystemUtility::SuperPing("host"), 1);
  EXPECT_EQ(standIns.Calls(), "grep ttl\nping host -c 1\n");
  Print("host ether\nhost ether\n");
  EXPECT_EQ(tavSystemUtility::SuperPing("host"), 2);
}

TEST_F(TavSystemUtility, GivesTheWaitStatusOfARemoval) {
  standIns.Add("rm", "exit 3");
  EXPECT_EQ(tavSystemUtility::DeleteFileSystem("a"), 3 << 8);
  EXPECT_EQ(standIns.Calls(), "rm a\n");
}

TEST_F(TavSystemUtility, KnowsPaths) {
  EXPECT_EQ(tavSystemUtility::GetModuleFileFullName("./a"), std::filesystem::current_path().string() + "/a");
  EXPECT_EQ(tavSystemUtility::GetParentFolder("/a/b/c"), "/a/b");
  EXPECT_TRUE(tavSystemUtility::FolderExist(folder.Path()));
  EXPECT_FALSE(tavSystemUtility::FolderExist(folder.Path("none")));
}

TEST_F(TavSystemUtility, DescribesTheSystem) {
  const auto names = system_calls::uname.ReplaceBy([](utsname* o_names) {
    *o_names = {"Linux", "node", "5.10.0", "#1", "i686", "domain"};
    return 0;
  });
  EXPECT_EQ(tavSystemUtility::GetDescription(), "Linux 5.10.0 i686");
}

TEST_F(TavSystemUtility, ReportsASystemThatDoesNotTellItsName) {
  const auto noNames = system_calls::uname.FailsWith(EFAULT);
  ExpectReport({1, "tav_systemutility", "GetDescription", "uname returned null structure."}, "",
               tavSystemUtility::GetDescription);
}

}  // namespace
}  // namespace tavon
