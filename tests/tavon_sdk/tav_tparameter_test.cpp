#include <dlfcn.h>

#include <cstdlib>
#include <new>

#include "model_test.h"
#include "tav_virtualitemwait.h"

using Bytes = std::vector<unsigned char>;

// Takes the place of the C++ library's memory, to fail once after so many times; below 0 it never does.
static thread_local int allocationsLeft = -1;
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  const bool isTooLarge = size > PTRDIFF_MAX / 2;  // for any machine
  return isTooLarge || (allocationsLeft >= 0 && allocationsLeft-- == 0) ? nullptr : std::malloc(size);
}
void* operator new(std::size_t size) {
  if (void* const memory = ::operator new(size, std::nothrow)) return memory;
  throw std::bad_alloc();
}
void* operator new[](std::size_t size) { return ::operator new(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return ::operator new(size, std::nothrow);
}
// Not inlined, for the compiler takes free for the wrong end of what new gives.
[[gnu::noinline]] void operator delete(void* memory) noexcept { std::free(memory); }
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
[[gnu::noinline]] void operator delete[](void* memory) noexcept { std::free(memory); }
[[gnu::noinline]] void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }

// Between the library and the system, for a system that has no more threads.
static bool noThreads = false;
extern "C" int pthread_attr_setstacksize(pthread_attr_t* attributes, std::size_t size) noexcept {
  void* const real = dlsym(RTLD_NEXT, "pthread_attr_setstacksize");
  return noThreads ? EAGAIN : reinterpret_cast<decltype(&pthread_attr_setstacksize)>(real)(attributes, size);
}

static unsigned int AddRule(Prm& driver, int op, const Bytes& operand, const Bytes& value) {
  const auto size = static_cast<unsigned int>(value.size());
  return driver.AddDrivenMapItem(Op(op), operand.data(), static_cast<unsigned int>(operand.size()),
                                 value.data(), size);
}

TEST(TavTParameter, StoresBytesAndMarksChanges) {
  const std::string before = "0x00003344";
  const std::tuple<Bytes, unsigned char, std::string> cases[] = {
      {{0x11, 0x22}, 1, "0x11220000"},
      {{0x11, 0x22}, 0, "0x11223344"},
      {{0, 0}, 1, before},  // nothing is cleared without a change
      {{0, 0, 0x33, 0x44, 5}, 1, before},
      {{0, 0, 0x33, 9, 5}, 0, "0x00003309"},
  };
  for (const auto& [data, flag, after] : cases) {
    tavParameterColor color;
    color.SetDataFromString(before);
    color.IsDirty(false);
    color.SetData(data.data(), static_cast<unsigned int>(data.size()), flag);
    EXPECT_EQ(color.ValueToString(), after);
    EXPECT_EQ(color.IsDirty(), after != before);
  }
}

TEST(TavTParameter, KeepsStylesAndSettings) {
  tavParameterByte parameter;
  tavArray<tavString> styles{"old"};
  tavString settings;
  parameter.AddUIStyle("b");
  parameter.SetUIStyle({"c", "c"});
  for (const char* style : {"c", "a", "a"}) parameter.AddUIStyle(style);
  parameter.GetUIStyle(&styles);
  parameter.GetUIStyle(nullptr);
  parameter.SetSettings("a=1");
  parameter.GetSettings(&settings);
  parameter.GetSettings(nullptr);
  EXPECT_TRUE(styles == (tavArray<tavString>{"c", "c", "a"}) && settings == "a=1");
}

struct Driver : tavParameterInfo {
  void OnLinkedParameterChange() override { EXPECT_TRUE(++links > 0 && LockOf::IsFree(*this)); }
  std::string Take(const char* text) {  // takes over a value; the target's after that
    SetValue(text);
    IsDirty(false);
    return target.ValueToString();
  }
  struct : tavParameterColor {  // it knows its driver as its own target, for which it has no rules
    void OnRGBValue(unsigned char) override { EXPECT_TRUE(LockOf::IsHeld(*GetDrivenTarget())); }
  } target;
  int links = 0;
};

TEST(TavTParameter, DrivesItsTargetByTheFirstRuleThatHolds) {
  Driver driver;
  driver.target.SetDrivenTarget(&driver);
  driver.SetDrivenTarget(&driver.target);
  // A comparison with a text looks for a terminating zero, which the operand does not have.
  EXPECT_EQ(AddRule(driver, tavCodeOperator_Equal, {'a', 'b', 'c'}, {4, 3, 2, 1}), 0U);
  AddRule(driver, tavCodeOperator_Greater, {0, 0, 0}, {7});
  AddRule(driver, tavCodeOperator_Equal, {'a', 'b', 'c', 'd'}, {8});
  EXPECT_TRUE(driver.Take("ab") == "0x00000000" && driver.links == 0) << "no rule holds";
  EXPECT_EQ(driver.Take("abc"), "0x04030201");
  EXPECT_EQ(driver.Take("abcd"), "0x07000000") << "a shorter value clears the rest";
  AddRule(driver, 0, {1}, {1});
  AddRule(driver, tavCodeOperator_Less, {0, 0}, {2});
  ExpectReport(1, "UnKnown tavECodeOperator operator type", "ParameterInfo", "Comparison", 118,
               [&] { EXPECT_EQ(driver.Take("a"), "0x02000000"); });
  ExpectThrownReport(driver, [&] { driver.Take("b"); });
  driver.SetDrivenTarget(nullptr);
  EXPECT_TRUE(driver.Take("abc") == "0x02000000" && driver.links == 3);
}

TEST(TavTParameter, ReportsWhatItCannotDo) {
  tavParameterByte parameter;
  const auto expect = [](int code, const char* message, const char* function, int line, auto operation) {
    ExpectReport(code, message, *function == 'S' ? "Object" : "TParameter", function, line, operation);
  };
  const auto add = [&](const Bytes& operand, const Bytes& value, unsigned int code) {
    return [=, &parameter] { EXPECT_EQ(AddRule(parameter, 1, operand, value), code); };
  };
  const auto set = [&](void (tavIObject::*setText)(const wchar_t*)) {
    (parameter.*setText)(L"old");
    return [=, &parameter] { allocationsLeft = 0, (parameter.*setText)(L"new"); };
  };
  expect(6, "io_buffer == 0", "GetDataCopy", 192, [&] { parameter.GetDataCopy(nullptr); });
  expect(6, "dataDriver == 0 || sizeDriver == 0", "AddDrivenMapItem", 223, add({}, {}, 6));
  expect(6, "dataDriven == 0 || sizeDriven == 0", "AddDrivenMapItem", 224, add({1}, {}, 6));
  expect(5, "Can not allocate memory for object name", "SetName", 46, set(&tavIObject::SetName));
  expect(5, "Can not allocate memory for object prefix", "SetPrefix", 61, set(&tavIObject::SetPrefix));
  expect(5, "Can not allocate memory for object suffix", "SetSuffix", 76, set(&tavIObject::SetSuffix));
  EXPECT_EQ(parameter.ToString(), ".ParameterByte");
}

TEST(TavTParameter, ReportsEveryShortageAndOutlivesIt) {
  tavParameterByte target;
  const auto useAll = [&target] {
    AddRule(target, 1, {1}, {1});
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
    for (int count = -1; allocationsLeft < 0; ++count) try {  // then each of its allocations fails in turn
        noThreads = count < 0;
        allocationsLeft = count;
        useAll();
      } catch (const std::bad_alloc&) {
      }
    allocationsLeft = -1;
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
