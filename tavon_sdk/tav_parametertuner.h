#pragma once

#include "tav_floatparameter.h"

namespace tavon {

// The value of a tuner. It has no limits.
class tavParameterTuner : public tavFloatParameter<tavParameterTuner> {
 public:
  static constexpr tavEObject TypeId = tavObject_ParameterTuner;
  static constexpr const char* TypeName = "ParameterTuner";
  static constexpr tavReporter Report{"tav_parametertuner"};

  // Any number.
  void SetValue(float value) { SetFloat(value); }

  // The number in the text, whatever its size.
  static tavEError GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer);
};

}  // namespace tavon
