#pragma once

#include "tav_floatparameter.h"

namespace tavon {

// A position between 0.0 and 1.0.
class tavParameterSlider : public tavFloatParameter<tavParameterSlider> {
 public:
  static constexpr tavEObject TypeId = tavObject_ParameterSlider;
  static constexpr const char* TypeName = "ParameterSlider";
  static constexpr tavReporter Report{"tav_parameterslider"};

  // Stops at 0.0 and 1.0; not-a-number is stored as it is.
  void SetValue(float value);

  // Writes four bytes: the number in the text, little-endian single precision, stopped at 0.0 and 1.0 after
  // it was narrowed; not-a-number passes. An empty text writes nothing, a null buffer is reported, code 6.
  static tavEError GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer);
};

}  // namespace tavon
