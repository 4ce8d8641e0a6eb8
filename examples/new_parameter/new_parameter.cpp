// A parameter of one's own with a live value: a thermometer that reads its sensor whenever somebody asks.
//
// usage: new_parameter

#include <algorithm>
#include <cstdio>

#include "tav_floatbytes.h"
#include "tav_parameterswitch.h"
#include "tav_parameterthermo.h"

using namespace tavon;

// To programs it is a thermostat's set-point: type, casts and text are those of tavParameterThermo. Only
// where the bytes come from is its own: GetData, which comparisons and links go through, and what else tells
// the value.
class Thermometer : public tavParameterThermo {
 public:
  using Sensor = float (*)();

  explicit Thermometer(Sensor sensor) : m_sensor(sensor) {}

  const unsigned char* GetData() const override {
    const tavSMutex lock(&m_lock);
    StoreFloat(m_sensor(), m_reading);
    return m_reading;
  }
  void GetDataCopy(unsigned char* io_buffer) const override {
    const tavSMutex lock(&m_lock);
    std::copy_n(GetData(), GetDataSize(), io_buffer);
  }
  float GetValue() const {
    const tavSMutex lock(&m_lock);
    return LoadFloat(GetData());
  }
  tavString ValueToString() const override { return tavString::FromFloat(GetValue(), 1); }

  // Nobody sets a thermometer.
  void SetData(const unsigned char*, const unsigned int&, unsigned char) override {}

  // Tries the rules of its link, as if the value had just changed: they are tried when a dirty parameter is
  // made clean.
  void Poll() {
    IsDirty(true);
    IsDirty(false);
  }

 private:
  Sensor m_sensor;
  mutable unsigned char m_reading[kFloatSize] = {};
};

// What the sensor would tell.
static float roomTemperature = 20.0F;
static float ReadSensor() { return roomTemperature; }

// Adds the rule: when the thermometer's value compares so with a temperature, the heater is switched.
static void AddRule(Thermometer& thermometer, tavECodeOperator op, float temperature, unsigned char heat) {
  unsigned char bytes[kFloatSize];
  StoreFloat(temperature, bytes);
  thermometer.AddDrivenMapItem(op, bytes, kFloatSize, &heat, 1);
}

int main() {
  tavParameterSwitch heater;
  Thermometer thermometer(ReadSensor);
  thermometer.SetDrivenTarget(&heater);
  AddRule(thermometer, tavCodeOperator_Less, 19.0F, 1);
  AddRule(thermometer, tavCodeOperator_GreaterOrEqual, 21.0F, 0);

  for (const float temperature : {20.0F, 18.5F, 20.0F, 21.5F}) {
    roomTemperature = temperature;
    thermometer.Poll();
    std::printf("%s degrees: the heater is %s\n", thermometer.ValueToString().c_str(),
                heater.GetValue() != 0 ? "on" : "off");
  }
}
