#include "tav_systemutility.h"

#include <functional>

#include "dro_osutility.h"
#include "model_test.h"
#include "resource_limit.h"
#include "stand_ins.h"

using U = tavSystemUtility;

struct TavSystemUtility : testing::Test {
  TavSystemUtility() {
    for (auto name : {"mkfs.ext3", "mount", "umount", "mkdir", "chown", "ping", "arp", "killall", "pidof"})
      standIns.Add(name, "cat " + folder.Path("output"));
    standIns.Add("grep");
    standIns.Add("wc");
  }

  // The results are those when the command prints `output`, when it prints nothing and when there is no pipe.
  void Expect(const char* name, const std::function<int()>& operation, const char* calls,
              const std::string& output, int whenPrinting, int whenSilent, int withoutPipe) {
    for (const auto& [text, result] : {std::pair(output, whenPrinting), {"", whenSilent}}) {
      WriteFile(folder.Path("output"), text);
      EXPECT_EQ(operation(), result) << name << text;
      EXPECT_EQ(standIns.Calls(), calls);
    }
    const auto run = [&] { EXPECT_EQ(Without(RLIMIT_NOFILE, operation), withoutPipe) << name; };
    ExpectReport(4, "Can not open system pipe", "SystemUtility", name, kAnyLine, run);
  }

  TemporaryFolder folder;
  StandIns standIns;
};

TEST_F(TavSystemUtility, RunsCommandsAsToldAndTakesTheirAnswers) {
  const auto bind = [](auto operation, auto... arguments) { return [=] { return operation(arguments...); }; };
  const auto mounts = "/dev/sdz9 on /mnt type ext3\n/dev/sda1 on / type ext4\n";
  const auto table = "7 other ether 02:00:5e:10:00:01\nhost ether 02:00:5e:10:00:02\n";
  const auto answers = "PING\nttl=64\nttl=" + std::string(1000, '6') + "\nlost\nttl=64";
  Expect(
      "FormatExt3", [] { return U::FormatExt3("d", 65535); }, "mkfs.ext3 d -b 65535 -q\n", "1", 0, 1, -1);
  Expect("IsFormattedAs", bind(U::IsFormattedAs, "dz", "t3"), "grep dz\ngrep t3\nmount\n", mounts, 1, 0, -1);
  Expect("IsFormattedAs", bind(U::IsFormattedAs, "dz", "t4"), "grep dz\ngrep t4\nmount\n", mounts, 0, 0, -1);
  Expect("IsDeviceMounted", bind(U::IsDeviceMounted, "dz"), "grep dz\nmount\n", mounts, 1, 0, -1);
  Expect("MountDevice", bind(U::MountDevice, "dz", "/mnt"), "mount dz /mnt\n", "\n", 0, 1, -1);
  Expect("UnMountDevice", bind(U::UnMountDevice, "dz"), "umount dz\n", {'\0'}, 0, 1, -1);
  Expect("CreateFolder", bind(U::CreateFolder, "a/b"), "mkdir -p a/b\n", "no\n", 0, 1, -1);
  Expect("SetFolderOwner", bind(U::SetFolderOwner, "a", "user"), "chown user -R a\n", "no\n", 0, 1, -1);
  Expect("Ping", bind(U::Ping, "host", 3), "grep ttl\nping host -c 3\n", answers, 3, 0, 0);
  Expect("Arping", bind(U::Arping, "host"),
         "arp\narp -d host\ngrep ether\ngrep host\nping host -c 1\nwc -l\n", table, 1, 0, 0);
  Expect("KillAll", bind(U::KillAll, "name", "-9"), "killall -9 name\n", "1\n", 0, 0, 0);
  Expect("GetProcessID", bind(U::GetProcessID, "name"), "pidof name\n", "4711 12\n13\n", 4711, 0, -1);
  standIns.Add("rm", "exit 3");
  EXPECT_EQ(U::DeleteFileSystem("a"), 3 << 8);
  EXPECT_EQ(standIns.Calls(), "rm a\n");
  standIns.Add("pidof", "exec tr '\\0' 1 < /dev/zero");  // ended in spite of all that it has to say
  EXPECT_EQ(U::GetProcessID("name"), 2147483647);
  // SuperPing looks into the address table only when the ping is not answered.
  WriteFile(folder.Path("output"), "ttl");
  EXPECT_EQ(U::SuperPing("host"), 1);
  WriteFile(folder.Path("output"), "host ether\nhost ether\n");
  EXPECT_EQ(U::SuperPing("host"), 2);
}

TEST_F(TavSystemUtility, TellsAboutPathsAndTheSystem) {
  const std::string here = std::filesystem::current_path();
  EXPECT_EQ(U::GetModuleFileFullName("../a"), U::GetParentFolder(here) + U::Separator + "a");
  EXPECT_TRUE(U::FolderExist(here) && !U::FolderExist(folder.Path("none")));
  dro::droString names;
  dro::droOsUtility::ExecuteCommandLine("uname -srm", &names);
  EXPECT_EQ(U::GetDescription() + "\n", names);
}
