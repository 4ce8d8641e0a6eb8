#pragma once

#include "tav_byteparameter.h"

namespace tavon {

// A switch: off (0) or on (1).
class tavParameterSwitch : public tavOnOffParameter<tavParameterSwitch> {
 public:
  static constexpr tavEObject TypeId = tavObject_ParameterSwitch;
  static constexpr const char* TypeName = "ParameterSwitch";
  static constexpr tavReporter Report{"tav_parameterswitch"};

  // 0 if the low 8 bits of the number in the text are all zero, otherwise 1: "256" is off, "257" is on.
  static tavEError GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer);
};

}  // namespace tavon
