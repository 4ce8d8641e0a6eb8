#pragma once

#include "tav_typedparameter.h"

namespace tavon {

// Any value from 0 to 255.
class tavParameterByte : public tavTypedParameter<1> {
 public:
  static constexpr const char* TypeName = "ParameterByte";
  static const tavParameterType Type;

  tavParameterByte();
  tavParameterByte* GetParameterBytePtr() override { return this; }

  // Any number.
  void SetValue(unsigned char value);
  unsigned char GetValue() const { return CopyBytes()[0]; }

  // The low 8 bits of the number in the text.
  static tavEError GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer);
  // Sets a parameter known by its interface. Null does nothing; another type is reported (code 6).
  static tavEError SetDataFromString(tavIParameter* pPrm, const tavString& text);
  using tavTypedParameter::SetDataFromString;
};

}  // namespace tavon
