#pragma once

#include <array>

#include "tav_parameteralert.h"
#include "tav_parameterbyte.h"
#include "tav_parametercamera.h"
#include "tav_parametercolor.h"
#include "tav_parameterhdscene.h"
#include "tav_parameterinfo.h"
#include "tav_parametershutter.h"
#include "tav_parameterslider.h"
#include "tav_parameterswitch.h"
#include "tav_parameterswitchrelease.h"
#include "tav_parameterthermo.h"
#include "tav_parameterthermochronoweek.h"
#include "tav_parametertuner.h"
#include "tav_parametervrscene.h"

// The one list of all parameter types. The registry, the creation of objects and the tests that visit every
// type are made from it. Internal to the SDK.
namespace tavon {

template <class... Types>
struct tavTypeList {
  static constexpr std::size_t Count = sizeof...(Types);

  // An array with what `row` makes of each type, in the order of the list: row<Type>().
  template <class Row>
  static constexpr auto Table(Row row) {
    return std::array{row.template operator()<Types>()...};
  }
};

// In the order of the ids.
using tavParameterTypes =
    tavTypeList<tavParameterSwitch, tavParameterSwitchRelease, tavParameterSlider, tavParameterColor,
                tavParameterInfo, tavParameterShutter, tavParameterThermo, tavParameterThermoChronoWeek,
                tavParameterHDScene, tavParameterVRScene, tavParameterAlert, tavParameterByte,
                tavParameterTuner, tavParameterCamera>;

}  // namespace tavon
