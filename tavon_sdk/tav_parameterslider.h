#pragma once

#include "tav_typedparameter.h"

namespace tavon {

// A position between 0.0 and 1.0.
class tavParameterSlider : public tavTypedParameter<4> {
 public:
  static constexpr const char* TypeName = "ParameterSlider";
  static const tavParameterType Type;

  tavParameterSlider();
  tavParameterSlider* GetParameterSliderPtr() override { return this; }

  // Limits the value to 0.0 and 1.0. Not-a-number is stored as it is.
  void SetValue(float value);
  float GetValue() const;

  // The number in the text, narrowed to single precision and then limited to 0.0 and 1.0. Not-a-number
  // passes.
  static tavEError GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer);
  // Sets a parameter known by its interface. Null does nothing; another type is reported (code 6).
  static tavEError SetDataFromString(tavIParameter* pPrm, const tavString& text);
  using tavTypedParameter::SetDataFromString;
};

}  // namespace tavon
