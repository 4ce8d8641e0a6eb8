// The part of the factory that makes objects. It has a source of its own so that a program which only
// converts values links no objects and no threads.
#include <algorithm>
#include <array>
#include <new>

#include "tav_parameterfactory.h"
#include "tav_parametertypes.h"

namespace tavon {
namespace {

constexpr tavReporter kReport{"tav_parameterfactory"};

struct Creator {
  const tavParameterType& type;
  tavIParameter* (*create)();
};

template <class Parameter>
tavIParameter* Create() {
  return new Parameter;
}

constexpr std::array kCreators = {
    Creator{tavParameterSwitch::Type, Create<tavParameterSwitch>},
    Creator{tavParameterSwitchRelease::Type, Create<tavParameterSwitchRelease>},
    Creator{tavParameterSlider::Type, Create<tavParameterSlider>},
    Creator{tavParameterColor::Type, Create<tavParameterColor>},
    Creator{tavParameterInfo::Type, Create<tavParameterInfo>},
    Creator{tavParameterShutter::Type, Create<tavParameterShutter>},
    Creator{tavParameterThermo::Type, Create<tavParameterThermo>},
    Creator{tavParameterThermoChronoWeek::Type, Create<tavParameterThermoChronoWeek>},
    Creator{tavParameterHDScene::Type, Create<tavParameterHDScene>},
    Creator{tavParameterVRScene::Type, Create<tavParameterVRScene>},
    Creator{tavParameterAlert::Type, Create<tavParameterAlert>},
    Creator{tavParameterByte::Type, Create<tavParameterByte>},
    Creator{tavParameterTuner::Type, Create<tavParameterTuner>},
    Creator{tavParameterCamera::Type, Create<tavParameterCamera>},
};

tavIParameter* ReportFailure(tavEError code, tavEObject id, int line) {
  kReport(code, "Can not created parameter " + tavString::FromInt(id), {line, "CreateByType"});
  return nullptr;
}

}  // namespace

tavIParameter* tavParameterFactory::CreateByType(tavEObject id) {
  const auto row =
      std::ranges::find_if(kCreators, [id](const Creator& creator) { return creator.type.id == id; });
  if (row == kCreators.end()) return ReportFailure(tavError_InvalidArgument, id, 98);
  try {
    return row->create();
  } catch (const std::bad_alloc&) {
    return ReportFailure(tavError_OutOfMemory, id, 103);
  }
}

tavIParameter* tavParameterFactory::CreateByTypeName(const tavString& name) {
  return CreateByType(TypeNameToId(name));
}

}  // namespace tavon
