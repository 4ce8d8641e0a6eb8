#include "tav_parameterfactory.h"

#include <algorithm>

#include "tav_parametertypes.h"

namespace tavon {
namespace {

constexpr tavReporter kReport{"tav_parameterfactory"};

struct ParameterType {
  tavEObject id;
  const char* name;
  std::size_t size;  // of the value in bytes; 0 for a value that is the text itself
  tavEError (*encode)(const tavString& text, unsigned char* o_pBuffer);
};

constexpr std::array kTypes = tavParameterTypes::Table([]<class Parameter>() {
  return ParameterType{Parameter::TypeId, Parameter::TypeName, Parameter::ValueSize,
                       Parameter::GetBinaryDataFromString};
});

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
  kReport(tavError_InvalidArgument, "Can not get typen for " + tavString::FromInt(id), {40});
  return {};
}

tavEError tavParameterFactory::StringToData(tavEObject id, const tavString& strData,
                                            std::vector<unsigned char>* io_data) {
  if (strData.empty()) return kReport(tavError_InvalidArgument, "strData == \"\"", {112});
  if (io_data == nullptr) return kReport(tavError_InvalidArgument, "io_data == 0", {113});
  const ParameterType* type = FindType(id);
  if (type == nullptr) return kReport(tavError_OperationFailed, "Parameter id not found", {173});

  if (type->size == 0) {
    io_data->assign(strData.begin(), strData.end());
  } else {
    io_data->resize(type->size);
    type->encode(strData, io_data->data());
  }
  return tavError_NoError;
}

}  // namespace tavon
