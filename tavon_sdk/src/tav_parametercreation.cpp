// The part of the factory that makes objects. It has a source of its own so that a program which only
// converts values links no objects and no threads.
#include <algorithm>
#include <new>

#include "tav_parameterfactory.h"
#include "tav_parametertypes.h"

namespace tavon {
namespace {

constexpr tavReporter kReport{"tav_parameterfactory"};

struct Creator {
  tavEObject id;
  tavIParameter* (*create)();
};

constexpr std::array kCreators = tavParameterTypes::Table([]<class Parameter>() {
  return Creator{Parameter::TypeId, [] { return static_cast<tavIParameter*>(new Parameter); }};
});

}  // namespace

tavIParameter* tavParameterFactory::CreateByType(tavEObject id) {
  const tavString message = "Can not created parameter " + tavString::FromInt(id);
  const auto row =
      std::find_if(kCreators.begin(), kCreators.end(), [id](const Creator& c) { return c.id == id; });
  if (row == kCreators.end()) {
    kReport(tavError_InvalidArgument, message, {98});
    return nullptr;
  }
  try {
    return row->create();
  } catch (const std::bad_alloc&) {
    kReport(tavError_OutOfMemory, message, {103});
    return nullptr;
  }
}

tavIParameter* tavParameterFactory::CreateByTypeName(const tavString& name) {
  return CreateByType(TypeNameToId(name));
}

}  // namespace tavon
