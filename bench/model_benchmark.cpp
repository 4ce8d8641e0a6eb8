// The cost of the parameter model, operation by operation, beside the bare work that it cannot do without.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <vector>

#include "tav_parameterfactory.h"
#include "tav_parameterslider.h"
#include "tav_parameterswitch.h"
#include "tav_parameterthermochronoweek.h"
#include "tav_parametervrscene.h"

namespace {

using namespace tavon;

// A week of set-points with a fraction, "1,20.25,20.5,...".
tavString ScheduleText() {
  tavString text = "1";
  for (int hour = 0; hour < 168; ++hour) text += "," + tavString::FromDouble(15 + hour % 40 / 4.0, 2);
  return text;
}

void Encode(benchmark::State& state, tavEObject type, const char* text) {
  const tavString value = text;
  std::vector<unsigned char> data;
  for (auto _ : state) {
    tavParameterFactory::StringToData(type, value, &data);
    benchmark::DoNotOptimize(data.data());
  }
}
BENCHMARK_CAPTURE(Encode, Switch, tavObject_ParameterSwitch, "1");
BENCHMARK_CAPTURE(Encode, SwitchRelease, tavObject_ParameterSwitchRelease, "1");
BENCHMARK_CAPTURE(Encode, Slider, tavObject_ParameterSlider, "0.75");
BENCHMARK_CAPTURE(Encode, Color, tavObject_ParameterColor, "0x11223344");
BENCHMARK_CAPTURE(Encode, Info, tavObject_ParameterInfo, "Welcome");
BENCHMARK_CAPTURE(Encode, Shutter, tavObject_ParameterShutter, "3");
BENCHMARK_CAPTURE(Encode, Thermo, tavObject_ParameterThermo, "21.5");
BENCHMARK_CAPTURE(Encode, HDScene, tavObject_ParameterHDScene, "1");
BENCHMARK_CAPTURE(Encode, VRScene, tavObject_ParameterVRScene, "2");
BENCHMARK_CAPTURE(Encode, Alert, tavObject_ParameterAlert, "1");
BENCHMARK_CAPTURE(Encode, Byte, tavObject_ParameterByte, "200");
BENCHMARK_CAPTURE(Encode, Tuner, tavObject_ParameterTuner, "98.5");
BENCHMARK_CAPTURE(Encode, Camera, tavObject_ParameterCamera, "rtsp://camera/1");

void ScheduleFromText(benchmark::State& state) {
  const tavString text = ScheduleText();
  std::vector<unsigned char> data;
  for (auto _ : state) {
    tavParameterFactory::StringToData(tavObject_ParameterThermoChronoWeek, text, &data);
    benchmark::DoNotOptimize(data.data());
  }
}
BENCHMARK(ScheduleFromText);

// What reading the same text costs at least.
void ScheduleBareLoop(benchmark::State& state) {
  const tavString text = ScheduleText();
  std::vector<unsigned char> data(673);
  for (auto _ : state) {
    const char* next = text.c_str();
    char* end = nullptr;
    data[0] = static_cast<unsigned char>(std::strtol(next, &end, 10));
    for (std::size_t offset = 1; offset < data.size() && *end == ','; offset += sizeof(float)) {
      next = end + 1;
      const float value = std::strtof(next, &end);
      std::memcpy(data.data() + offset, &value, sizeof(value));
    }
    benchmark::DoNotOptimize(data.data());
  }
}
BENCHMARK(ScheduleBareLoop);

void ScheduleToText(benchmark::State& state) {
  tavParameterThermoChronoWeek schedule;
  schedule.SetDataFromString(ScheduleText());
  for (auto _ : state) benchmark::DoNotOptimize(schedule.ValueToString());
}
BENCHMARK(ScheduleToText);

void LockAndUnlock(benchmark::State& state) {
  vMutex mutex;
  for (auto _ : state) {
    mutex.Lock();
    mutex.UnLock();
  }
}
BENCHMARK(LockAndUnlock);

void SetDataWithoutChange(benchmark::State& state) {
  tavParameterSwitch parameter;
  const unsigned char off = 0;
  for (auto _ : state) parameter.SetData(&off, 1, 1);
}
BENCHMARK(SetDataWithoutChange);

void SetDataWithChange(benchmark::State& state) {
  tavParameterSwitch parameter;
  unsigned char value = 0;
  for (auto _ : state) {
    value ^= 1;
    parameter.SetData(&value, 1, 1);
  }
}
BENCHMARK(SetDataWithChange);

void Comparison(benchmark::State& state) {
  tavParameterSlider parameter;
  const unsigned char operand[4] = {0, 0, 0, 0x3F};
  for (auto _ : state) benchmark::DoNotOptimize(parameter.Comparison(tavCodeOperator_Less, operand, 4));
}
BENCHMARK(Comparison);

// A change is taken over and sets the driven target.
void DrivenLink(benchmark::State& state) {
  tavParameterSwitch driver;
  tavParameterSwitch target;
  const unsigned char off = 0;
  const unsigned char on = 1;
  driver.SetDrivenTarget(&target);
  driver.AddDrivenMapItem(tavCodeOperator_Equal, &on, 1, &off, 1);
  driver.AddDrivenMapItem(tavCodeOperator_Equal, &off, 1, &on, 1);
  unsigned char value = 0;
  for (auto _ : state) {
    value ^= 1;
    driver.SetData(&value, 1, 1);
    driver.IsDirty(false);
  }
}
BENCHMARK(DrivenLink);

void Xml(benchmark::State& state) {
  tavParameterSwitch parameter;
  parameter.SetUniqueID(12);
  parameter.SetName(L"Lamp");
  for (auto _ : state) benchmark::DoNotOptimize(parameter.SerializeAsXml());
}
BENCHMARK(Xml);

// Per item, whatever the size of the scene.
void BuildScene(benchmark::State& state) {
  tavParameterSwitch target;
  const unsigned char on = 1;
  const auto items = state.range(0);
  for (auto _ : state) {
    tavParameterVRScene scene;
    scene.BuildScene_Begin();
    for (auto i = items; i > 0; --i) scene.BuildScene_AddSetParameter(&target, &on, 1);
  }
  state.SetItemsProcessed(state.iterations() * items);
}
BENCHMARK(BuildScene)->Arg(100)->Arg(10000);

}  // namespace
