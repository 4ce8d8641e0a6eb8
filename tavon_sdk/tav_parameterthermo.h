#pragma once

#include "tav_floatparameter.h"

namespace tavon {

// The set-point of a thermostat in degrees, without limits.
class tavParameterThermo : public tavFloatParameter<tavParameterThermo> {
 public:
  static constexpr tavEObject TypeId = tavObject_ParameterThermo;
  static constexpr const char* TypeName = "ParameterThermo";
  static constexpr tavReporter Report{"tav_parameterthermo"};

  // Any number.
  void SetValue(float value) { SetFloat(value); }

  // Writes four bytes: the number in the text, little-endian single precision, any value. An empty text
  // writes nothing, a null buffer is reported, code 6.
  static tavEError GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer);
};

}  // namespace tavon
