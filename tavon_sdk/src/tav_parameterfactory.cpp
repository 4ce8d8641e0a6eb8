#include "tav_parameterfactory.h"

#include <algorithm>
#include <array>

#include "tav_parametertypes.h"
#include "vtext.h"

namespace tavon {
namespace {

constexpr tavReporter kReport{"tav_parameterfactory"};

// In the order of the ids. tav_parametercreation.cpp makes the objects.
constexpr std::array kTypes = {
    &tavParameterSwitch::Type,  &tavParameterSwitchRelease::Type,
    &tavParameterSlider::Type,  &tavParameterColor::Type,
    &tavParameterInfo::Type,    &tavParameterShutter::Type,
    &tavParameterThermo::Type,  &tavParameterThermoChronoWeek::Type,
    &tavParameterHDScene::Type, &tavParameterVRScene::Type,
    &tavParameterAlert::Type,   &tavParameterByte::Type,
    &tavParameterTuner::Type,   &tavParameterCamera::Type,
};

}  // namespace

std::span<const tavParameterType* const> tavParameterFactory::GetTypes() { return kTypes; }

const tavParameterType* tavParameterFactory::FindType(tavEObject id) {
  const auto found = std::ranges::find(kTypes, id, &tavParameterType::id);
  return found == kTypes.end() ? nullptr : *found;
}

tavEObject tavParameterFactory::TypeNameToId(const tavString& name) {
  const auto found = std::ranges::find_if(
      kTypes, [&name](const tavParameterType* type) { return vlib::EqualIgnoringCase(type->name, name); });
  return found == kTypes.end() ? tavObject_None : (*found)->id;
}

tavString tavParameterFactory::IdToTypeName(tavEObject id) {
  if (const tavParameterType* type = FindType(id)) return type->name;
  kReport(tavError_InvalidArgument, "Can not get typen for " + tavString::FromInt(id), {40});
  return {};
}

tavEError tavParameterFactory::StringToData(tavEObject id, const tavString& strData,
                                            std::vector<unsigned char>* io_data) {
  if (strData.empty()) return kReport(tavError_InvalidArgument, "strData == \"\"", {112});
  if (io_data == nullptr) return kReport(tavError_InvalidArgument, "io_data == 0", {113});
  const tavParameterType* type = FindType(id);
  if (type == nullptr) return kReport(tavError_OperationFailed, "Parameter id not found", {173});

  if (type->IsText()) {
    io_data->assign(strData.begin(), strData.end());
  } else {
    io_data->resize(type->size);
    type->encode(strData, io_data->data());
  }
  return tavError_NoError;
}

}  // namespace tavon
