#pragma once

#include <cstdint>

namespace tavon {

// The types of objects. The numbers are stored and travel between programs.
enum tavEObject : std::int32_t {
  tavObject_None = -1,  // no type: what an unknown type name gives
  tavObject_ParameterSwitch = 1000,
  tavObject_ParameterSwitchRelease = 1001,
  tavObject_ParameterSlider = 1002,
  tavObject_ParameterColor = 1003,
  tavObject_ParameterInfo = 1004,
  tavObject_ParameterShutter = 1005,
  tavObject_ParameterThermo = 1006,
  tavObject_ParameterThermoChronoWeek = 1007,
  tavObject_ParameterHDScene = 1008,
  tavObject_ParameterVRScene = 1009,
  tavObject_ParameterAlert = 1010,
  tavObject_ParameterByte = 1011,
  tavObject_ParameterTuner = 1012,
  tavObject_ParameterCamera = 1013,
};

}  // namespace tavon
