#pragma once

#include "tav_byteparameter.h"

namespace tavon {

// Any value from 0 to 255.
class tavParameterByte : public tavByteParameter<tavParameterByte> {
 public:
  static constexpr tavEObject TypeId = tavObject_ParameterByte;
  static constexpr const char* TypeName = "ParameterByte";
  static constexpr tavReporter Report{"tav_parameterbyte"};

  // Any number.
  void SetValue(unsigned char value) { SetByte(value); }

  // The low 8 bits of the number in the text.
  static tavEError GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer);
};

}  // namespace tavon
