#include "tav_systemutility.h"

#include "expect_report.h"
#include "stand_ins.h"
#include "system_calls.h"

namespace tavon {
namespace {

// What stands in for the commands of the system prints nothing.
struct TavSystemUtility : testing::Test {
  TavSystemUtility() {
    for (const char* name : {"chown", "killall"}) standIns.Add(name, "true");
  }
  StandIns standIns;
};

TEST_F(TavSystemUtility, PutsTheOwnerOfAFolderFirst) {
  EXPECT_EQ(tavSystemUtility::SetFolderOwner("folder", "user"), 1);
  EXPECT_EQ(standIns.Calls(), "chown user -R folder\n");
}

TEST_F(TavSystemUtility, PutsTheSignalForAProcessFirst) {
  EXPECT_EQ(tavSystemUtility::KillAll("name", "-9"), 0);
  EXPECT_EQ(standIns.Calls(), "killall -9 name\n");
}

TEST_F(TavSystemUtility, TakesPrintingForAFailureOfACommandThatIsSilentOnSuccess) {
  standIns.Add("chown", "echo no");
  EXPECT_EQ(tavSystemUtility::SetFolderOwner("folder", "user"), 0);
}

TEST_F(TavSystemUtility, ReportsThatItHasNoPipe) {
  const auto noPipe = system_calls::popen.FailsWith(EMFILE);
  ExpectReport({4, "tav_systemutility", "GetProcessID", "Can not open system pipe"}, -1,
               [] { return tavSystemUtility::GetProcessID("name"); });
}

TEST(TavSystemUtilityDescription, IsEmptyWhenTheSystemDoesNotTell) {
  const auto noNames = system_calls::uname.FailsWith(EFAULT);
  ExpectReport({1, "tav_systemutility", "GetDescription", "uname returned null structure."}, "",
               tavSystemUtility::GetDescription);
}

}  // namespace
}  // namespace tavon
