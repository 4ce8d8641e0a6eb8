#pragma once

#include "tav_floatparameter.h"

namespace tavon {

// The set-point of a thermostat, in degrees. It has no limits.
class tavParameterThermo : public tavFloatParameter<tavParameterThermo> {
 public:
  static constexpr tavEObject TypeId = tavObject_ParameterThermo;
  static constexpr const char* TypeName = "ParameterThermo";
  static constexpr tavReporter Report{"tav_parameterthermo"};

  // Any number.
  void SetValue(float value) { SetFloat(value); }

  // The number in the text, whatever its size.
  static tavEError GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer);
};

}  // namespace tavon
