#pragma once

#include "tav_error.h"
#include "tav_string.h"

namespace tavon {

// A position between 0.0 and 1.0.
class tavParameterSlider {
 public:
  static constexpr const char* TypeName = "ParameterSlider";

  // Writes the value of a text: 4 bytes, little-endian single precision. Numbers above 1 give 1.0, below 0
  // give 0.0; not-a-number passes. An empty text writes nothing. A null buffer is reported, code 6.
  static tavEError GetBinaryDataFromString(const tavString& text, unsigned char* o_pBuffer);
};

}  // namespace tavon
