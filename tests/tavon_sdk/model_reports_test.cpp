// Every record of the model that is not about one type of parameter: of calls that are refused, and of what
// the system has no memory or no threads for. Users search their logs for these records, lines and all.
#include <gmock/gmock.h>

#include <functional>
#include <stdexcept>

#include "dro_error.h"
#include "expect_report.h"
#include "failing_allocation.h"
#include "src/tav_parametertypes.h"
#include "system_calls.h"
#include "tav_parameterfactory.h"
#include "tav_virtualitemparameter.h"
#include "tav_virtualitemwait.h"
#include "tav_workerthread.h"

namespace tavon {
namespace {

using testing::HasSubstr;

const unsigned char kData[] = {1, 2};

struct RefusedCall {
  Report report;
  std::function<unsigned int()> call;  // returns the code of the record
};

TEST(ModelReports, EveryRecordOfARefusedCall) {
  std::vector<unsigned char> data;
  tavParameterByte byte;
  tavVirtualItemParameter item;
  tavParameterVRScene closed;
  tavParameterVRScene scene;
  scene.BuildScene_Begin();
  const auto op = tavCodeOperator_Equal;
  const auto ofFactory = [](int code, const char* message, int line) {
    return Report{code, "tav_parameterfactory", "StringToData", message, line};
  };
  const auto ofScene = [](int code, const char* function, const char* message, int line) {
    return Report{code, "tav_parametervrscene", function, message, line};
  };
  const Report noOperand{6, "tav_tparameter", "AddDrivenMapItem", "dataDriver == 0 || sizeDriver == 0", 223};
  const Report noValue{6, "tav_tparameter", "AddDrivenMapItem", "dataDriven == 0 || sizeDriven == 0", 224};
  const Report noBuffer = ofScene(6, "BuildScene_AddSetParameter", "pBuffer == 0 || size == 0", 215);
  const Report noSetting{6, "tav_virtualitemparameter", "SetParameter",
                         "!m_pPrm || !pBuffer || m_dwSize == 0", 28};
  const RefusedCall calls[] = {
      {ofFactory(6, R"(strData == "")", 112),
       [&] { return tavParameterFactory::StringToData(tavObject_ParameterInfo, "", &data); }},
      {ofFactory(6, "io_data == 0", 113),
       [&] { return tavParameterFactory::StringToData(tavObject_ParameterInfo, "1", nullptr); }},
      {ofFactory(1, "Parameter id not found", 173),
       [&] { return tavParameterFactory::StringToData(tavObject_None, "1", &data); }},
      {noOperand, [&] { return byte.AddDrivenMapItem(op, nullptr, 1, kData, 1); }},
      {noOperand, [&] { return byte.AddDrivenMapItem(op, kData, 0, kData, 1); }},
      {noValue, [&] { return byte.AddDrivenMapItem(op, kData, 1, nullptr, 1); }},
      {noValue, [&] { return byte.AddDrivenMapItem(op, kData, 1, kData, 0); }},
      {ofScene(1, "BuildScene_AddWait", "You musy to call BuildScene_Begin", 200),
       [&] { return closed.BuildScene_AddWait(10); }},
      {ofScene(6, "BuildScene_AddWait", "The smallest wait time must be 10 ms", 201),
       [&] { return scene.BuildScene_AddWait(9); }},
      {ofScene(1, "BuildScene_AddSetParameter", "You musy to call BuildScene_Begin", 213),
       [&] { return closed.BuildScene_AddSetParameter(&byte, kData, 1); }},
      {ofScene(6, "BuildScene_AddSetParameter", "pPrm == 0", 214),
       [&] { return scene.BuildScene_AddSetParameter(nullptr, kData, 1); }},
      {noBuffer, [&] { return scene.BuildScene_AddSetParameter(&byte, nullptr, 1); }},
      {noBuffer, [&] { return scene.BuildScene_AddSetParameter(&byte, kData, 0); }},
      {noSetting, [&] { return item.SetParameter(nullptr, kData, 1); }},
      {noSetting, [&] { return item.SetParameter(&byte, nullptr, 1); }},
      {noSetting, [&] { return item.SetParameter(&byte, kData, 0); }},
      {{6, "tav_virtualitemparameter", "Execute", "!m_pData || !m_pPrm || m_dwSize == 0", 44},
       [&] { return item.Execute(); }},
  };
  for (const RefusedCall& c : calls) ExpectReport(c.report, static_cast<unsigned int>(c.report.code), c.call);
}

TEST(ModelReports, EveryRecordOfAnUnknownType) {
  EXPECT_EQ(tavParameterFactory::TypeNameToId(" ParameterSwitch"), tavObject_None) << "which is no failure";
  ExpectReport({6, "tav_parameterfactory", "CreateByType", "Can not created parameter -1", 98}, nullptr,
               [] { return tavParameterFactory::CreateByTypeName("Info"); });
  ExpectReport({6, "tav_parameterfactory", "IdToTypeName", "Can not get typen for 999", 40}, "",
               [] { return tavParameterFactory::IdToTypeName(static_cast<tavEObject>(999)); });
}

TEST(ModelReports, EveryRecordOfACopyWithoutABuffer) {
  ExpectReport({6, "tav_tparameter", "GetDataCopy", "io_buffer == 0", 192},
               [] { tavParameterByte().GetDataCopy(nullptr); });
  ExpectReport({6, "tav_parametercamera", "GetDataCopy", "io_buffer == 0"},
               [] { tavParameterCamera().GetDataCopy(nullptr); });
  ExpectReport({6, "tav_parameterinfo", "GetDataCopy", "io_buffer == 0"},
               [] { tavParameterInfo().GetDataCopy(nullptr); });
}

TEST(ModelReports, EveryRecordOfAnExceptionOnAThread) {
  const auto guard = [](auto exception) { return tavWorkerThread::Guard([&] { throw exception; }); };
  const Report unknown{1, "tav_workerthread", "ReportCurrentException", "Exception on a parameter's thread"};
  Report standard = unknown;
  standard.message += ": no relay";
  ExpectReport(unknown, false, [&] { return guard(1); });
  ExpectReport(standard, false, [&] { return guard(std::runtime_error("no relay")); });

  const tavError record = tavBuildErrorLocation(tavError_OutOfRange, "record", "source", "function", 1);
  EXPECT_EQ(CapturedOutput([&] { guard(record); }), record.GetDescription());
  const dro::droError droRecord(dro::droError_OperationFailed, "record of the OS library");
  EXPECT_THAT(CapturedOutput([&] { guard(droRecord); }), HasSubstr("record of the OS library"));
  tavError::Level = tavLogLevel_Console | tavLogLevel_Throw;
  EXPECT_FALSE(guard(record)) << "the log that threw it has printed it";
  tavError::Level = tavLogLevel_Console;
}

// Does everything once that may lack memory or a thread.
void UseTheModel() {
  tavParameterByte byte;
  byte.SetName(L"name");
  byte.SetPrefix(L"prefix");
  byte.SetSuffix(L"suffix");
  byte.AddDrivenMapItem(tavCodeOperator_Equal, kData, 1, kData, 2);
  delete tavParameterFactory::CreateByType(tavObject_ParameterByte);
  const tavParameterShutter shutter;
  tavParameterSwitchRelease().SetSafeTime(1000);
  const tavParameterThermoChronoWeek schedule;
  tavParameterVRScene scene;
  scene.BuildScene_Begin();
  scene.BuildScene_AddWait(10);
  scene.BuildScene_AddSetParameter(&byte, kData, 1);
  scene.BuildScene_End();
  tavVirtualItemWait().Execute();
}

TEST(ModelReports, EveryRecordOfAMemoryShortage) {
  std::string printed;
  bool hasHappened = true;
  for (int count = 0; hasHappened; ++count) {
    printed += CapturedOutput([&] {
      const auto shortage = FailingAllocation::After(count);
      try {
        UseTheModel();
      } catch (const std::bad_alloc&) {  // which is how standard containers report
      }
      hasHappened = shortage.HasHappened();
    });
  }
  const auto record = [](const char* message, const char* source, const char* function, int line) {
    return tavBuildErrorLocation(tavError_OutOfMemory, message, source, function, line);
  };
  const tavError records[] = {
      record("Can not allocate memory for object name", "tav_object", "SetName", 46),
      record("Can not allocate memory for object prefix", "tav_object", "SetPrefix", 61),
      record("Can not allocate memory for object suffix", "tav_object", "SetSuffix", 76),
      record("m_pDriverData == 0", "tav_tparameter", "LinkWithParameterData", 72),
      record("m_pDrivenData == 0", "tav_tparameter", "LinkWithParameterData", 80),
      record("Can not created parameter 1011", "tav_parameterfactory", "CreateByType", 103),
      // The wording names another type; people know it so.
      record("Can not create thread for BlackParameter_ThermoChronoWeek\n", "tav_parametershutter",
             "tavParameterShutter", 61),
      record("Can not create thread for tavParameterSwitchRelease", "tav_parameterswitchrelease",
             "SetSafeTime", 137),
      record("pWait == 0", "tav_parametervrscene", "BuildScene_AddWait", 204),
      record("pVprm == 0", "tav_parametervrscene", "BuildScene_AddSetParameter", 218),
      record("m_pData == 0", "tav_virtualitemparameter", "SetParameter", 34),
      tavBuildErrorLocation(tavError_OperationFailed, "Can not set parameter as virtual item",
                            "tav_parametervrscene", "BuildScene_AddSetParameter", 220),
      record("Can not create thread for tavParameterVRScene", "tav_parametervrscene", "BuildScene_End", 184),
      record("Can not allocate tavSysEvent object", "tav_virtualitemwait", "Execute", 33),
  };
  for (const tavError& expected : records) EXPECT_THAT(printed, HasSubstr(expected.GetDescription()));
  EXPECT_THAT(printed, HasSubstr("m_pDrivenMap == 0"));
}

TEST(ModelReports, AnObjectThatFindsNoMemoryAtAll) {
  ExpectReport({5, "tav_parameterfactory", "CreateByType", "Can not created parameter 1000", 103}, nullptr,
               [] {
                 const auto shortage = FailingAllocation::After(0);
                 return tavParameterFactory::CreateByType(tavObject_ParameterSwitch);
               });
}

TEST(ModelReports, AnOperandAsLargeAsNoMemory) {
  const auto shortage = FailingAllocation::OfAtLeast(0x80000000U);  // as in a process of 32 bits
  tavParameterByte byte;
  for (const unsigned int size : {0xFFFFFFFEU, 0xFFFFFFFFU}) {
    ExpectReport({5, "tav_tparameter", "LinkWithParameterData", "m_pDriverData == 0", 72}, 5U,
                 [&] { return byte.AddDrivenMapItem(tavCodeOperator_Equal, kData, size, kData, 1); });
  }
}

TEST(ModelReports, EveryRecordOfAThreadShortage) {
  const auto noThreads = system_calls::pthread_attr_setstacksize.Returns(EAGAIN);
  ExpectReports(
      CapturedOutput(UseTheModel),
      {{1, "tav_parametershutter", "tavParameterShutter", "Can not start thread for tavParameterShutter\n",
        67},
       {1, "tav_parameterswitchrelease", "SetSafeTime", "Can not start thread for tavParameterSwitchRelease",
        143},
       {1, "tav_parameterthermochronoweek", "tavParameterThermoChronoWeek",
        "Can not start thread for tavParameterThermoChronoWeek\n", 123},
       {1, "tav_parametervrscene", "BuildScene_End", "Can not start thread for tavParameterVRScene", 189}});
}

}  // namespace
}  // namespace tavon
