// Making parameter objects, apart from the rest of the factory: a program that only converts values links no
// objects and no threads.
#include <algorithm>
#include <array>
#include <new>

#include "tav_parameteralert.h"
#include "tav_parameterbyte.h"
#include "tav_parametercamera.h"
#include "tav_parametercolor.h"
#include "tav_parameterfactory.h"
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

namespace tavon {
namespace {

constexpr tavReporter kReport{"tav_parameterfactory"};

struct Creator {
  tavEObject id;
  tavIParameter* (*create)();
};

template <class Parameter>
constexpr Creator Row() {
  return {Parameter::TypeId, [] { return static_cast<tavIParameter*>(new Parameter); }};
}

constexpr std::array kCreators = {
    Row<tavParameterSwitch>(),  Row<tavParameterSwitchRelease>(),
    Row<tavParameterSlider>(),  Row<tavParameterColor>(),
    Row<tavParameterInfo>(),    Row<tavParameterShutter>(),
    Row<tavParameterThermo>(),  Row<tavParameterThermoChronoWeek>(),
    Row<tavParameterHDScene>(), Row<tavParameterVRScene>(),
    Row<tavParameterAlert>(),   Row<tavParameterByte>(),
    Row<tavParameterTuner>(),   Row<tavParameterCamera>(),
};

}  // namespace

tavIParameter* tavParameterFactory::CreateByType(tavEObject id) {
  const tavString message = "Can not created parameter " + tavString::FromInt(id);
  const auto row =
      std::find_if(kCreators.begin(), kCreators.end(), [id](const Creator& c) { return c.id == id; });
  if (row == kCreators.end()) {
    kReport(tavError_InvalidArgument, message, 98);
    return nullptr;
  }
  try {
    return row->create();
  } catch (const std::bad_alloc&) {
    kReport(tavError_OutOfMemory, message, 103);
    return nullptr;
  }
}

tavIParameter* tavParameterFactory::CreateByTypeName(const tavString& name) {
  return CreateByType(TypeNameToId(name));
}

}  // namespace tavon
