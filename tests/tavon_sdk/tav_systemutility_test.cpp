#include "tav_systemutility.h"

#include <gmock/gmock.h>

#include <functional>

#include "expect_report.h"
#include "stand_ins.h"
#include "system_calls.h"
#include "tav_error.h"
#include "vutility.h"

namespace tavon {
namespace {

using testing::HasSubstr;
using Utility = tavSystemUtility;

// No command of the system runs but grep and wc: what stands in for the others prints a file.
struct TavSystemUtility : testing::Test {
  TavSystemUtility() {
    for (const char* name :
         {"mkfs.ext3", "mount", "umount", "mkdir", "chown", "ping", "arp", "killall", "pidof"})
      standIns.Add(name, "cat " + output);
    for (const char* name : {"grep", "wc"}) standIns.Add(name);
    standIns.Add("rm", "exit 3");
  }
  const TemporaryFolder folder;
  const std::string output = folder.Path("output");
  StandIns standIns;
};

TEST_F(TavSystemUtility, RunsACommandAndReadsWhatItPrints) {
  const std::string mounts = "/dev/sdz9 on /mnt type ext3\n/dev/sda1 on / type ext4\n";
  const struct {
    const char* function;
    std::function<int()> run;
    const char* calls;  // in alphabetical order
    std::string output;
    int whenPrinting, whenSilent, withoutPipe;
  } cases[] = {
      {"FormatExt3", [] { return Utility::FormatExt3("dz", 65535); }, "mkfs.ext3 dz -b 65535 -q\n", "1", 0, 1,
       -1},
      {"IsFormattedAs", [] { return Utility::IsFormattedAs("dz", "t3"); }, "grep dz\ngrep t3\nmount\n",
       mounts, 1, 0, -1},
      {"IsDeviceMounted", [] { return Utility::IsDeviceMounted("dz"); }, "grep dz\nmount\n", mounts, 1, 0,
       -1},
      {"MountDevice", [] { return Utility::MountDevice("dz", "/mnt"); }, "mount dz /mnt\n", "\n", 0, 1, -1},
      {"UnMountDevice", [] { return Utility::UnMountDevice("dz"); }, "umount dz\n", "no\n", 0, 1, -1},
      {"CreateFolder", [] { return Utility::CreateFolder("a/b"); }, "mkdir -p a/b\n", "no\n", 0, 1, -1},
      // The owner, which comes second, is the first argument of the command.
      {"SetFolderOwner", [] { return Utility::SetFolderOwner("a", "user"); }, "chown user -R a\n", "no\n", 0,
       1, -1},
      // A long line is one answer.
      {"Ping", [] { return Utility::Ping("host", 3); }, "grep ttl\nping host -c 3\n",
       "PING\nttl=" + std::string(1000, '6') + "\nlost\nttl=64", 2, 0, 0},
      {"Arping", [] { return Utility::Arping("host"); },
       "arp\narp -d host\ngrep ether\ngrep host\nping host -c 1\nwc -l\n",
       "7 other ether 02:00:5e:10:00:01\nhost ether 02:00:5e:10:00:02\n", 1, 0, 0},
      // The signal, which comes second, is the first argument of the command, whose output says nothing.
      {"KillAll", [] { return Utility::KillAll("name", "-9"); }, "killall -9 name\n", "1\n", 0, 0, 0},
      {"GetProcessID", [] { return Utility::GetProcessID("name"); }, "pidof name\n", "4711 12\n13\n", 4711, 0,
       -1},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.function);
    WriteFile(output, c.output);
    EXPECT_EQ(c.run(), c.whenPrinting);
    EXPECT_EQ(standIns.Calls(), c.calls);
    WriteFile(output, "");
    EXPECT_EQ(c.run(), c.whenSilent);
    standIns.Calls();
    const auto noPipe = system_calls::popen.FailsWith(EMFILE);
    ExpectReport({tavError_InvalidPointer, "tav_systemutility", c.function, "Can not open system pipe"},
                 c.withoutPipe, c.run);
  }
}

TEST_F(TavSystemUtility, FindsAHostByItsHardwareAddressWhenItDoesNotAnswer) {
  WriteFile(output, "host ether 02:00:5e:10:00:02\n");
  EXPECT_EQ(Utility::SuperPing("host"), 1);
  EXPECT_THAT(standIns.Calls(), HasSubstr("arp -d host\n"));
  WriteFile(output, "ttl=64\n");
  EXPECT_EQ(Utility::SuperPing("host"), 1);
  EXPECT_EQ(standIns.Calls(), "grep ttl\nping host -c 1\n");
  WriteFile(output, "");
  EXPECT_EQ(Utility::SuperPing("host"), 0);
}

TEST_F(TavSystemUtility, TellsTheStatusOfADeletion) {
  EXPECT_EQ(Utility::DeleteFileSystem("a"), 3 << 8) << "as the system does; the exit status is 3";
  EXPECT_EQ(standIns.Calls(), "rm a\n");
}

TEST(TavSystemUtilityPaths, AreTakenApartMadeAbsoluteAndLookedFor) {
  const TemporaryFolder folder;
  EXPECT_TRUE(Utility::FolderExist(folder.Path()));
  EXPECT_FALSE(Utility::FolderExist(folder.Path("none")));
  EXPECT_EQ(Utility::GetParentFolder("/a/b.c"), "/a");
  EXPECT_EQ(Utility::GetParentFolder("plain"), "");
  EXPECT_EQ(Utility::GetModuleFileFullName("./x"), VUtility::GetCurrentDir() + "/x");
  EXPECT_EQ(Utility::GetModuleFileFullName("/usr/../x"), "/usr/../x");
}

TEST(TavSystemUtilityDescription, NamesTheSystemUnlessThatDoesNotTell) {
  const auto names = system_calls::uname.ReplaceBy([](utsname* o_names) {
    *o_names = {"Linux", "node", "5.10.0", "#1", "i686", "domain"};
    return 0;
  });
  EXPECT_EQ(Utility::GetDescription(), "Linux 5.10.0 i686");
  const auto noNames = system_calls::uname.FailsWith(EFAULT);
  ExpectReport(
      {tavError_OperationFailed, "tav_systemutility", "GetDescription", "uname returned null structure."}, "",
      Utility::GetDescription);
}

}  // namespace
}  // namespace tavon
