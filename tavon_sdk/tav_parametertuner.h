#pragma once

#include "tav_typedparameter.h"

namespace tavon {

// The value of a tuner. It has no limits.
class tavParameterTuner : public tavTypedParameter<4> {
 public:
  static constexpr const char* TypeName = "ParameterTuner";
  static const tavParameterType Type;

  tavParameterTuner();
  tavParameterTuner* GetParameterTunerPtr() override { return this; }

  // Any number.
  void SetValue(float value);
  float GetValue() const;

  // The number in the text, whatever its size.
  static tavEError GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer);
  // Sets a parameter known by its interface. Null does nothing; another type is reported (code 6).
  static tavEError SetDataFromString(tavIParameter* pPrm, const tavString& text);
  using tavTypedParameter::SetDataFromString;
};

}  // namespace tavon
