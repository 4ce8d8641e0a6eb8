#pragma once

#include "tav_floatparameter.h"

namespace tavon {

// A position between 0.0 and 1.0.
class tavParameterSlider : public tavFloatParameter<tavParameterSlider> {
 public:
  static constexpr tavEObject TypeId = tavObject_ParameterSlider;
  static constexpr const char* TypeName = "ParameterSlider";
  static constexpr tavReporter Report{"tav_parameterslider"};

  // Limits the value to 0.0 and 1.0. Not-a-number is stored as it is.
  void SetValue(float value);

  // The number in the text, narrowed to single precision and then limited to 0.0 and 1.0. Not-a-number
  // passes.
  static tavEError GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer);
};

}  // namespace tavon
