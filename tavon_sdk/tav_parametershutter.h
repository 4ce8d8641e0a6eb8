#pragma once

#include "tav_error.h"
#include "tav_string.h"

namespace tavon {

// A roller shutter's command: 1 and 3 are the directions of travel, 2 is stop.
class tavParameterShutter {
 public:
  static constexpr const char* TypeName = "ParameterShutter";

  // Writes the value of a text: 1 byte: the low 8 bits of the number; 0 gives 1, more than 3 gives 3 ("256"
  // gives 1, "260" gives 3). An empty text writes nothing. A null buffer is reported, code 6.
  static tavEError GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer);
};

}  // namespace tavon
