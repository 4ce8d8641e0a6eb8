// What the model does when the system has no memory or no threads for it.
#include <optional>

#include "failing_allocation.h"
#include "model_test.h"
#include "system_calls.h"
#include "tav_virtualitemwait.h"

TEST(Shortage, OfMemoryForATextEmptiesIt) {
  tavParameterByte parameter;
  const auto expect = [&](const char* message, const char* function, int line,
                          void (tavIObject::*setText)(const wchar_t*)) {
    (parameter.*setText)(L"old");
    ExpectReport(5, message, "Object", function, line, [&] {
      const auto shortage = FailingAllocation::After(0);
      (parameter.*setText)(L"new");
    });
  };
  expect("Can not allocate memory for object name", "SetName", 46, &tavIObject::SetName);
  expect("Can not allocate memory for object prefix", "SetPrefix", 61, &tavIObject::SetPrefix);
  expect("Can not allocate memory for object suffix", "SetSuffix", 76, &tavIObject::SetSuffix);
  EXPECT_EQ(parameter.ToString(), ".ParameterByte");
}

TEST(Shortage, OfMemoryOrThreadsIsReportedAndOutlivedWhereverItComes) {
  tavParameterByte target;
  const auto useAll = [&target] {
    target.AddDrivenMapItem(Op(1), target.GetData(), 1, target.GetData(), 1);
    delete tavParameterFactory::CreateByType(tavObject_ParameterByte);
    static_cast<void>(tavParameterShutter());
    tavParameterSwitchRelease().SetSafeTime(1000);
    static_cast<void>(tavParameterThermoChronoWeek());
    tavParameterVRScene scene;
    scene.BuildScene_Begin();
    scene.BuildScene_AddWait(10);
    scene.BuildScene_AddSetParameter(&target, target.GetData(), 1);
    scene.BuildScene_End();
    tavVirtualItemWait().Execute();
    tavString::FromWide(L"longer than what needs no memory", 0);
  };
  tavString reports = CapturedOutput([&] {
    const auto use = [&] {
      try {
        useAll();
      } catch (const std::bad_alloc&) {
      }
    };
    {
      const auto noThreads = system_calls::pthread_attr_setstacksize.Returns(EAGAIN);
      use();
    }
    for (int count = 0;; ++count) {  // each of its allocations fails in turn
      const auto shortage = FailingAllocation::After(count);
      use();
      if (!shortage.HasHappened()) break;
    }
  });
  for (const char* label : {"\nFile ----------- : tav_",
                            "\nFunction ------- : ", "\nLine Number ---- : ", "\nCustom Message - : "})
    reports.FindAndReplaceAll(label, " ", false, false);
  for (const char* report : {
           "memory. tparameter LinkWithParameterData 72 m_pDriverData == 0\n",
           "memory. tparameter LinkWithParameterData 80 m_pDrivenData == 0\n",
           "memory. parameterfactory CreateByType 103 Can not created parameter 1011\n",
           "61 Can not create thread for BlackParameter_ThermoChronoWeek\n\n",
           "failed. parametershutter tavParameterShutter 67 Can not start thread for tavParameterShutter\n\n",
           "memory. parameterswitchrelease SetSafeTime 137 Can not create thread for tav",
           "failed. parameterswitchrelease SetSafeTime 143 Can not start thread for tav",
           "tavParameterThermoChronoWeek 123 Can not start thread for tavParameterThermoChronoWeek\n\n",
           "memory. parametervrscene BuildScene_AddWait 204 pWait == 0\n",
           "memory. parametervrscene BuildScene_AddSetParameter 218 pVprm == 0\n",
           "memory. virtualitemparameter SetParameter 34 m_pData == 0\n",
           "failed. parametervrscene BuildScene_AddSetParameter 220 Can not set parameter as virtual item\n",
           "memory. parametervrscene BuildScene_End 184 Can not create thread for tavParameterVRScene\n",
           "failed. parametervrscene BuildScene_End 189 Can not start thread for tavParameterVRScene\n",
           "memory. virtualitemwait Execute 33 Can not allocate tavSysEvent object\n",
           "memory. string FromWide 391 pBuffer == 0\n",
       })
    EXPECT_NE(reports.find(report), std::string::npos) << report;
}
