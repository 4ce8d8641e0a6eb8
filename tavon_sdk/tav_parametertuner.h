#pragma once

#include "tav_floatparameter.h"

namespace tavon {

// The value of a tuner, without limits.
class tavParameterTuner : public tavFloatParameter<tavParameterTuner> {
 public:
  static constexpr tavEObject TypeId = tavObject_ParameterTuner;
  static constexpr const char* TypeName = "ParameterTuner";
  static constexpr tavReporter Report{"tav_parametertuner"};

  // Any number.
  void SetValue(float value) { SetFloat(value); }

  // Writes four bytes: the number in the text, little-endian single precision, any value. An empty text
  // writes nothing, a null buffer is reported, code 6.
  static tavEError GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer);
};

}  // namespace tavon
