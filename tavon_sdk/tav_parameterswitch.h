#pragma once

#include "tav_error.h"
#include "tav_string.h"

namespace tavon {

// A switch: off or on.
class tavParameterSwitch {
 public:
  static constexpr const char* TypeName = "ParameterSwitch";

  // Writes the value of a text: 1 byte: 1 when the low 8 bits of the number are not all zero, else 0 ("257"
  // is on, "256" is off). An empty text writes nothing. A null buffer is reported, code 6.
  static tavEError GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer);
};

}  // namespace tavon
