// What the model does when the system has no memory or no threads for it.
#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <set>

#include "captured_output.h"
#include "failing_allocation.h"
#include "system_calls.h"
#include "tav_parameterbyte.h"
#include "tav_parameterfactory.h"
#include "tav_parametershutter.h"
#include "tav_parameterswitchrelease.h"
#include "tav_parameterthermochronoweek.h"
#include "tav_parametervrscene.h"
#include "tav_virtualitemwait.h"

namespace tavon {
namespace {

const unsigned char kData[] = {1, 2};

void AddRule() { tavParameterByte().AddDrivenMapItem(tavCodeOperator_Equal, kData, 1, kData, 2); }
void SetSafeTime() { tavParameterSwitchRelease().SetSafeTime(1000); }
void AddAWait() {
  tavParameterVRScene scene;
  scene.BuildScene_Begin();
  scene.BuildScene_AddWait(10);
}
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

  std::string ReportOf(tavEError code) const {
    return tavBuildErrorLocation(code, message, source, function, line).GetDescription();
  }
};
std::ostream& operator<<(std::ostream& out, const Shortage& shortage) { return out << shortage.message; }

struct MemoryShortage : testing::TestWithParam<Shortage> {};
struct ThreadShortage : testing::TestWithParam<Shortage> {};

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
    testing::Values(
        Shortage{"SetName", "Can not allocate memory for object name", "tav_object", 46,
                 [] { tavParameterByte().SetName(L"name"); }},
        Shortage{"SetPrefix", "Can not allocate memory for object prefix", "tav_object", 61,
                 [] { tavParameterByte().SetPrefix(L"prefix"); }},
        Shortage{"SetSuffix", "Can not allocate memory for object suffix", "tav_object", 76,
                 [] { tavParameterByte().SetSuffix(L"suffix"); }},
        Shortage{"LinkWithParameterData", "m_pDriverData == 0", "tav_tparameter", 72, AddRule},
        Shortage{"LinkWithParameterData", "m_pDrivenData == 0", "tav_tparameter", 80, AddRule},
        Shortage{"CreateByType", "Can not created parameter 1011", "tav_parameterfactory", 103,
                 [] { delete tavParameterFactory::CreateByType(tavObject_ParameterByte); }},
        // The wording names another type; people know it so.
        Shortage{"tavParameterShutter", "Can not create thread for BlackParameter_ThermoChronoWeek\n",
                 "tav_parametershutter", 61, [] { tavParameterShutter shutter; }},
        Shortage{"SetSafeTime", "Can not create thread for tavParameterSwitchRelease",
                 "tav_parameterswitchrelease", 137, SetSafeTime},
        Shortage{"BuildScene_AddWait", "pWait == 0", "tav_parametervrscene", 204, AddAWait},
        Shortage{"BuildScene_AddSetParameter", "pVprm == 0", "tav_parametervrscene", 218, BuildAScene},
        Shortage{"BuildScene_End", "Can not create thread for tavParameterVRScene", "tav_parametervrscene",
                 184, BuildAScene},
        Shortage{"Execute", "Can not allocate tavSysEvent object", "tav_virtualitemwait", 33,
                 [] { tavVirtualItemWait().Execute(); }},
        Shortage{"FromWide", "pBuffer == 0", "tav_string", 391,
                 [] { tavString::FromWide(L"longer than what needs no memory", 0); }}));

TEST_P(MemoryShortage, IsReportedAndOutlived) {
  EXPECT_THAT(ReportsOfEachFailure(GetParam().use),
              testing::Contains(GetParam().ReportOf(tavError_OutOfMemory)));
}

INSTANTIATE_TEST_SUITE_P(
    Model, ThreadShortage,
    testing::Values(Shortage{"tavParameterShutter", "Can not start thread for tavParameterShutter\n",
                             "tav_parametershutter", 67, [] { tavParameterShutter shutter; }},
                    Shortage{"SetSafeTime", "Can not start thread for tavParameterSwitchRelease",
                             "tav_parameterswitchrelease", 143, SetSafeTime},
                    Shortage{"tavParameterThermoChronoWeek",
                             "Can not start thread for tavParameterThermoChronoWeek\n",
                             "tav_parameterthermochronoweek", 123,
                             [] { tavParameterThermoChronoWeek schedule; }},
                    Shortage{"BuildScene_End", "Can not start thread for tavParameterVRScene",
                             "tav_parametervrscene", 189, BuildAScene}));

TEST_P(ThreadShortage, IsReportedAndOutlived) {
  const auto noThreads = system_calls::pthread_attr_setstacksize.Returns(EAGAIN);
  EXPECT_EQ(CapturedOutput(GetParam().use), GetParam().ReportOf(tavError_OperationFailed));
}

TEST(MemoryShortageOfASetting, IsReportedOnTheWayUp) {
  const tavString item = tavBuildErrorLocation(tavError_OutOfMemory, "m_pData == 0",
                                               "tav_virtualitemparameter", "SetParameter", 34)
                             .GetDescription();
  const tavString scene =
      tavBuildErrorLocation(tavError_OperationFailed, "Can not set parameter as virtual item",
                            "tav_parametervrscene", "BuildScene_AddSetParameter", 220)
          .GetDescription();
  EXPECT_THAT(ReportsOfEachFailure(BuildAScene), testing::Contains(item + scene));
}

TEST(MemoryShortageOfAName, LeavesNone) {
  tavParameterByte parameter;
  parameter.SetName(L"old");
  CapturedOutput([&] {
    const auto shortage = FailingAllocation::After(0);
    parameter.SetName(L"new");
  });
  EXPECT_EQ(parameter.GetName(), L"");
}

}  // namespace
}  // namespace tavon
