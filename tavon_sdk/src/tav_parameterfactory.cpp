#include "tav_parameterfactory.h"

#include <algorithm>
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

namespace tavon {
namespace {

constexpr tavReporter kReport{"tav_parameterfactory"};

// The size of a value that is the text itself.
constexpr std::size_t kTextLength = 0;

struct ParameterType {
  tavEObject id;
  const char* name;
  std::size_t size;  // of the value in bytes, or kTextLength
  tavEError (*encode)(const tavString& text, unsigned char* o_pBuffer);
};

template <class Parameter>
constexpr ParameterType Row(std::size_t size) {
  return {Parameter::TypeId, Parameter::TypeName, size, Parameter::GetBinaryDataFromString};
}

// In the order of the ids, which have no gaps.
constexpr std::array kTypes = {
    Row<tavParameterSwitch>(1),         Row<tavParameterSwitchRelease>(1),
    Row<tavParameterSlider>(4),         Row<tavParameterColor>(4),
    Row<tavParameterInfo>(kTextLength), Row<tavParameterShutter>(1),
    Row<tavParameterThermo>(4),         Row<tavParameterThermoChronoWeek>(673),
    Row<tavParameterHDScene>(1),        Row<tavParameterVRScene>(1),
    Row<tavParameterAlert>(1),          Row<tavParameterByte>(1),
    Row<tavParameterTuner>(4),          Row<tavParameterCamera>(kTextLength),
};

// The row of a type, or null.
const ParameterType* FindType(tavEObject id) {
  const auto row =
      std::find_if(kTypes.begin(), kTypes.end(), [id](const auto& type) { return type.id == id; });
  return row == kTypes.end() ? nullptr : &*row;
}

}  // namespace

tavEObject tavParameterFactory::TypeNameToId(const tavString& name) {
  const auto row = std::find_if(kTypes.begin(), kTypes.end(), [&name](const auto& type) {
    return vlib::EqualIgnoringCase(type.name, name);
  });
  return row == kTypes.end() ? tavObject_None : row->id;
}

tavString tavParameterFactory::IdToTypeName(tavEObject id) {
  if (const ParameterType* type = FindType(id)) return type->name;
  kReport(tavError_InvalidArgument, "Can not get typen for " + tavString::FromInt(id), 40);
  return {};
}

tavEError tavParameterFactory::StringToData(tavEObject id, const tavString& strData,
                                            std::vector<unsigned char>* io_data) {
  if (strData.empty()) return kReport(tavError_InvalidArgument, "strData == \"\"", 112);
  if (io_data == nullptr) return kReport(tavError_InvalidArgument, "io_data == 0", 113);
  const ParameterType* type = FindType(id);
  if (type == nullptr) return kReport(tavError_OperationFailed, "Parameter id not found", 173);

  if (type->size == kTextLength) {
    io_data->assign(strData.begin(), strData.end());
  } else {
    io_data->resize(type->size);
    type->encode(strData, io_data->data());
  }
  return tavError_NoError;
}

}  // namespace tavon
