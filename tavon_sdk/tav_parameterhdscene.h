#pragma once

#include "tav_byteparameter.h"

namespace tavon {

// A scene that is stored in a device: off (0) or on (1).
class tavParameterHDScene : public tavOnOffParameter<tavParameterHDScene> {
 public:
  static constexpr tavEObject TypeId = tavObject_ParameterHDScene;
  static constexpr const char* TypeName = "ParameterHDScene";
  static constexpr tavReporter Report{"tav_parameterhdscene"};

  // 0 if the low 8 bits of the number in the text are all zero, otherwise 1: "256" is off, "257" is on.
  static tavEError GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer);
};

}  // namespace tavon
