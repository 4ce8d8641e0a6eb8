#pragma once

#include "tav_error.h"
#include "tav_string.h"

namespace tavon {

// An alarm input.
class tavParameterAlert {
 public:
  static constexpr const char* TypeName = "ParameterAlert";

  // Writes the value of a text: 1 byte: 1 when the low 8 bits of the number are not all zero, else 0.
  // An empty text writes nothing. A null buffer is reported, code 6.
  static tavEError GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer);
};

}  // namespace tavon
