#pragma once

#include "tav_typedparameter.h"

namespace tavon {

// A switch: off (0) or on (1).
class tavParameterSwitch : public tavTypedParameter<1> {
 public:
  static constexpr const char* TypeName = "ParameterSwitch";
  static const tavParameterType Type;

  tavParameterSwitch();
  tavParameterSwitch* GetParameterSwitchPtr() override { return this; }

  // 0 is off; any other value is on and stored as 1.
  void SetValue(unsigned char value);
  unsigned char GetValue() const { return CopyBytes()[0]; }

  // 0 if the low 8 bits of the number in the text are all zero, otherwise 1: "256" is off, "257" is on.
  static tavEError GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer);
  // Sets a parameter known by its interface. Null does nothing; another type is reported (code 6).
  static tavEError SetDataFromString(tavIParameter* pPrm, const tavString& text);
  using tavTypedParameter::SetDataFromString;
};

}  // namespace tavon
