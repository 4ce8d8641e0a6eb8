// A parameter type of one's own: the meter that counts the energy of a house.
//
// usage: new_parameter

#include <cinttypes>
#include <cstdio>

#include "tav_parameterswitch.h"
#include "tav_typedparameter.h"
#include "tav_values.h"

using namespace tavon;

// What the type is. Ids below 10000 are the SDK's; names have to differ from the SDK's own.
constexpr auto kEnergyMeter = static_cast<tavEObject>(10001);

// The value: watt-hours as 8 bytes, the lowest first, as all values are.
using Energy = std::uint64_t;
constexpr unsigned int kEnergySize = 8;

static Energy LoadEnergy(const unsigned char* value) {
  Energy wattHours = 0;
  for (unsigned int i = kEnergySize; i-- > 0;) wattHours = wattHours << 8 | value[i];
  return wattHours;
}

static void StoreEnergy(Energy wattHours, unsigned char* o_value) {
  for (unsigned int i = 0; i < kEnergySize; ++i) o_value[i] = static_cast<unsigned char>(wattHours >> 8 * i);
}

static void WriteEnergy(const tavString& text, unsigned char* o_value) {
  StoreEnergy(std::strtoull(text.c_str(), nullptr, 10), o_value);
}

static tavString EnergyText(const unsigned char* value) { return std::to_string(LoadEnergy(value)); }

static bool CompareEnergies(tavECodeOperator op, const unsigned char* value, const unsigned char* operand) {
  return Compare(op, LoadEnergy(value), LoadEnergy(operand));
}

// The class: the record, and typed functions.
class EnergyMeter : public tavTypedParameter<kEnergySize> {
 public:
  static const tavParameterType Type;

  EnergyMeter() : tavTypedParameter(Type) {}

  void SetValue(Energy wattHours) {
    std::array<unsigned char, kEnergySize> value;
    StoreEnergy(wattHours, value.data());
    SetBytes(value);
  }
  Energy GetValue() const { return LoadEnergy(CopyBytes().data()); }
};

const tavParameterType EnergyMeter::Type{.id = kEnergyMeter,
                                         .name = "EnergyMeter",
                                         .source = "new_parameter",
                                         .size = kEnergySize,
                                         .encode = WriteEnergy,
                                         .toText = EnergyText,
                                         .compare = CompareEnergies};

int main() {
  // Links, texts and XML work as with the SDK's types: from 5 kWh on, the meter switches the heater off.
  tavParameterSwitch heater;
  heater.SetValue(1);
  EnergyMeter meter;
  meter.SetName(L"House");
  meter.SetDrivenTarget(&heater);
  unsigned char limit[kEnergySize];
  StoreEnergy(5000, limit);
  const unsigned char off = 0;
  meter.AddDrivenMapItem(tavCodeOperator_GreaterOrEqual, limit, kEnergySize, &off, 1);

  for (const char* reading : {"4999", "5000", "123456789012345"}) {
    meter.SetDataFromString(reading);
    meter.IsDirty(false);  // the change is acknowledged, and the rule is tried
    std::printf("%" PRIu64 " Wh: the heater is %s\n", meter.GetValue(),
                heater.GetValue() != 0 ? "on" : "off");
  }
  std::printf("%s\n", meter.SerializeAsXml().c_str());
}
