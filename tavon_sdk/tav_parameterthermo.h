#pragma once

#include "tav_typedparameter.h"

namespace tavon {

// The set-point of a thermostat, in degrees. It has no limits.
class tavParameterThermo : public tavTypedParameter<4> {
 public:
  static constexpr const char* TypeName = "ParameterThermo";
  static const tavParameterType Type;

  tavParameterThermo();
  tavParameterThermo* GetParameterThermoPtr() override { return this; }

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
