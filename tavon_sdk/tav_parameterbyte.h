#pragma once

#include "tav_error.h"
#include "tav_string.h"

namespace tavon {

// Any value from 0 to 255.
class tavParameterByte {
 public:
  static constexpr const char* TypeName = "ParameterByte";

  // Writes the value of a text: 1 byte: the low 8 bits of the number.
  // An empty text writes nothing. A null buffer is reported, code 6.
  static tavEError GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer);
};

}  // namespace tavon
