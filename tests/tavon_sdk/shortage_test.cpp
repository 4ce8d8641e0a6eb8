// What the model does when the system has no memory or no threads for it.
#include <gmock/gmock.h>

#include <functional>
#include <set>

#include "expect_report.h"
#include "failing_allocation.h"
#include "system_calls.h"
#include "tav_parameterbyte.h"
#include "tav_parametershutter.h"
#include "tav_parametervrscene.h"
#include "tav_virtualitemwait.h"

namespace tavon {
namespace {

const unsigned char kData[] = {1, 2};

void AddRule() { tavParameterByte().AddDrivenMapItem(tavCodeOperator_Equal, kData, 1, kData, 2); }
void BuildAScene() {
  tavParameterByte target;
  tavParameterVRScene scene;
  scene.BuildScene_Begin();
  scene.BuildScene_AddWait(10);
  scene.BuildScene_AddSetParameter(&target, kData, 1);
  scene.BuildScene_End();
}

struct Shortage {
  const char* function;
  const char* message;
  const char* source;
  int line;
  std::function<void()> use;
};
std::ostream& operator<<(std::ostream& out, const Shortage& shortage) { return out << shortage.message; }

struct MemoryShortage : testing::TestWithParam<Shortage> {};

// All that is reported when each allocation of an operation fails in turn.
std::set<std::string> ReportsOfEachFailure(const std::function<void()>& use) {
  std::set<std::string> reports;
  for (int count = 0;; ++count) {
    bool wasLast = false;
    reports.insert(CapturedOutput([&] {
      const auto shortage = FailingAllocation::After(count);
      try {
        use();
      } catch (const std::bad_alloc&) {  // which is how standard containers report
      }
      wasLast = !shortage.HasHappened();
    }));
    if (wasLast) return reports;
  }
}

INSTANTIATE_TEST_SUITE_P(
    Model, MemoryShortage,
    testing::Values(Shortage{"SetName", "Can not allocate memory for object name", "tav_object", 46,
                             [] { tavParameterByte().SetName(L"name"); }},
                    Shortage{"LinkWithParameterData", "m_pDriverData == 0", "tav_tparameter", 72, AddRule},
                    // The wording names another type; people know it so.
                    Shortage{"tavParameterShutter",
                             "Can not create thread for BlackParameter_ThermoChronoWeek\n",
                             "tav_parametershutter", 61, [] { tavParameterShutter shutter; }},
                    Shortage{"BuildScene_End", "Can not create thread for tavParameterVRScene",
                             "tav_parametervrscene", 184, BuildAScene},
                    Shortage{"Execute", "Can not allocate tavSysEvent object", "tav_virtualitemwait", 33,
                             [] { tavVirtualItemWait().Execute(); }}));

TEST_P(MemoryShortage, IsReportedAndOutlived) {
  const Shortage& missing = GetParam();
  const tavError report = tavBuildErrorLocation(tavError_OutOfMemory, missing.message, missing.source,
                                                missing.function, missing.line);
  EXPECT_THAT(ReportsOfEachFailure(missing.use), testing::Contains(report.GetDescription()));
}

TEST(ThreadShortage, IsReportedAndOutlived) {
  const auto noThreads = system_calls::pthread_attr_setstacksize.Returns(EAGAIN);
  ExpectReport({1, "tav_parametershutter", "tavParameterShutter",
                "Can not start thread for tavParameterShutter\n", 67},
               [] { tavParameterShutter shutter; });
}

}  // namespace
}  // namespace tavon
